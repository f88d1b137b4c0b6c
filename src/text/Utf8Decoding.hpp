#pragma once

#include <cstddef>

/// How one sequence of UTF-8 is read, wherever UTF-8 is read.
namespace foundation::network::text {

constexpr unsigned char byteAt(const char* at) noexcept
{
    return static_cast<unsigned char>(*at);
}

constexpr bool isContinuation(unsigned char byte) noexcept
{
    return (byte & 0xC0) == 0x80;
}

/// As many continuation bytes as the lead of more than one byte announces; a lead from F8 up counts
/// as one of four bytes.
constexpr std::size_t continuationCount(unsigned char lead) noexcept
{
    return lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
}

/// Decodes a sequence whose first byte is not ASCII and announces @p count more, all of which can
/// be read. False if it has a defect.
constexpr bool decodeSequence(const char* at, std::size_t count, char32_t& value) noexcept
{
    const unsigned char lead = byteAt(at);
    // The low six bits are those of a continuation; what lies above tells whether it is one.
    const auto payload = [at](std::size_t i) { return char32_t{byteAt(at + i)} ^ 0x80U; };
    const char32_t first = payload(1);
    if (count == 1) {
        value = ((lead & 0x1FU) << 6) | first;
        return !isContinuation(lead) && first < 0x40 && value >= 0x80;
    }
    const char32_t second = payload(2);
    if (count == 2) {
        value = ((lead & 0x0FU) << 12) | (first << 6) | second;
        return (first | second) < 0x40 && value >= 0x800 && (value & 0xFFFFF800U) != 0xD800;
    }
    const char32_t third = payload(3);
    value = ((lead & 0x07U) << 18) | (first << 12) | (second << 6) | third;
    return (first | second | third) < 0x40 && value >= 0x10000 && value <= 0x10FFFF;
}

} // namespace foundation::network::text
