#pragma once

#include "build/NaiveBag.hpp"

#include <foundation/network/iri/Encoding.hpp>

#include <cstdint>
#include <string>

namespace foundation::network::tests {

/// What a bag builds: its components, from which each text is put together anew when it is asked
/// for. It fails as the library does.
class NaiveBuilt {
public:
    explicit NaiveBuilt(const NaiveBag& bag);

    const NaiveComponents& components() const { return components_; }

    /// The predicates, one letter for each that holds, in the order of the class.
    std::string predicates() const;

    bool isEmpty() const;

    /// The whole text. The second form, another one than the first only if the strict text was read
    /// before, is that of the authority.
    Text text(iri::Encoding form, iri::Encoding authorityForm) const;
    Text text(iri::Encoding form) const { return text(form, form); }

    // What the readers answer.
    Text scheme() const;
    Text port() const;
    Text component(Field field, iri::Encoding form) const;
    Text authority(iri::Encoding form) const;
    Text schemeSpecificPart(iri::Encoding form) const;

    std::uint64_t hash() const;

    bool equals(const NaiveBuilt& other) const;
    bool isLess(const NaiveBuilt& other) const;

private:
    bool has(Field field) const { return components_.texts[field].has_value(); }
    Text converted(Field field, iri::Encoding form) const;

    NaiveComponents components_;
};

/// 64-bit FNV-1a over the code points, four bytes each with the low byte first.
std::uint64_t hashOf(const Text& text);

} // namespace foundation::network::tests
