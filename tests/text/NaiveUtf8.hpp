#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Second, slow readings of the rules of UTF-8 that the library follows.
namespace foundation::network::tests {

/// How many one bits a byte begins with.
inline int leadingOnes(unsigned char byte)
{
    int ones = 0;
    for (unsigned mask = 0x80; mask != 0 && (byte & mask) != 0; mask >>= 1)
        ++ones;
    return ones;
}

/// Reads UTF-8 byte by byte; nothing if it has a defect. A lead from F8 up counts as a lead of four
/// bytes, of which the mask keeps three bits. The end of the text reads as a zero byte.
inline std::optional<std::u32string> readUtf8(std::string_view bytes)
{
    constexpr std::uint32_t masks[] = {0x7F, 0x7FF, 0xFFFF, 0x1FFFFF};
    const auto byteAt = [bytes](std::size_t index) {
        return static_cast<unsigned char>(index < bytes.size() ? bytes[index] : '\0');
    };
    std::u32string result;
    for (std::size_t at = 0; at < bytes.size();) {
        const unsigned char lead = byteAt(at);
        const int ones = leadingOnes(lead) > 4 ? 4 : leadingOnes(lead);
        if (ones == 1)
            return std::nullopt;
        const std::size_t continuations = ones == 0 ? 0 : static_cast<std::size_t>(ones) - 1;
        std::uint32_t value = lead;
        for (std::size_t i = 1; i <= continuations; ++i) {
            const unsigned char byte = byteAt(at + i);
            if (leadingOnes(byte) != 1)
                return std::nullopt;
            value = value * 64 + byte % 64;
        }
        value &= masks[continuations];
        if (value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF))
            return std::nullopt;
        if (continuations > 0 && value <= masks[continuations - 1])
            return std::nullopt;
        result.push_back(value);
        at += continuations + 1;
    }
    return result;
}

/// The bytes of a code point up to U+10FFFF, surrogates included (RFC 3629, 3).
inline std::string writeUtf8(char32_t c)
{
    const auto byte = [](std::uint32_t value) { return static_cast<char>(value); };
    if (c <= 0x7F)
        return {byte(c)};
    if (c <= 0x7FF)
        return {byte(0xC0 + c / 64), byte(0x80 + c % 64)};
    if (c <= 0xFFFF)
        return {byte(0xE0 + c / 4096), byte(0x80 + c / 64 % 64), byte(0x80 + c % 64)};
    return {byte(0xF0 + c / 262144), byte(0x80 + c / 4096 % 64), byte(0x80 + c / 64 % 64),
            byte(0x80 + c % 64)};
}

} // namespace foundation::network::tests
