#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

namespace reference {

/// Invents texts that lie near the borders of the grammars: many are IRIs, many are one slip away.
///
/// The same seed gives the same texts in the same order on every machine.
class TextGenerator {
public:
    explicit TextGenerator(std::uint64_t seed);

    /// A text that is, resembles or was once an IRI reference.
    std::u32string reference();

    /// A path, or nearly one, with slashes doubled here and there.
    std::u32string path();

    /// A text full of percent escapes, whole and broken ones.
    std::u32string escaped();

    /// Digits, mostly few.
    std::u32string port();

    /// Letters, digits and marks.
    std::u32string scheme();

private:
    std::size_t below(std::size_t bound); // 0 to bound - 1
    bool oneIn(std::size_t count);
    char32_t oneOf(const std::u32string& characters);

    char32_t unusual();
    std::u32string escape();
    std::u32string character();
    std::u32string characters(std::size_t most);
    std::u32string decimal();
    std::u32string hexadecimal();
    std::u32string dottedQuad();
    std::u32string ipLiteral();
    std::u32string host();
    std::u32string assembled();
    void damage(std::u32string& text);

    std::mt19937_64 engine_;
};

} // namespace reference
