#pragma once

#include "build/NaiveBag.hpp"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>
#include <string>

namespace foundation::network::tests {

/// How many cases to generate where @p usual ones are usual: so many times as many as the
/// environment variable ZKFLNETWORK_TEST_FACTOR says.
std::size_t caseCount(std::size_t usual);

/// Makes what bags are filled with; the same for the same seed.
class BagGenerator {
public:
    explicit BagGenerator(std::uint32_t seed)
        : random_(seed)
    {
    }

    std::uint32_t below(std::size_t limit) { return static_cast<std::uint32_t>(random_() % limit); }

    bool oneIn(std::size_t count) { return below(count) == 0; }

    template <class Choices>
    const auto& oneOf(const Choices& choices)
    {
        return std::data(choices)[below(std::size(choices))];
    }

    /// A text of what the encodings treat specially; now and then of units that are no characters.
    Text text();

    /// A text of characters, for both UTF-8 and UTF-16.
    Text characters();

    /// A scheme that is mostly allowed, of the letters that the naive bag knows.
    Text scheme();

    /// A text for a component; paths mostly begin with "/".
    Text textFor(Field field);

    /// Mostly the digits of a port, or something like them.
    Text digits();

    /// Mostly the bytes of a text for a component, otherwise no UTF-8.
    std::string utf8(Field field);

    /// Mostly the units of such a text, otherwise no UTF-16.
    std::u16string utf16(Field field);

    /// The text of an IRI reference; its components do not always decode.
    std::string iri();

private:
    Text charactersFor(Field field);
    Text piece(bool charactersOnly);
    Text repeated(std::size_t longest, bool charactersOnly);

    std::mt19937 random_;
};

} // namespace foundation::network::tests
