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

/// The largest value that fits behind a lead byte with so many continuation bytes.
inline constexpr char32_t utf8ValueMasks[] = {0x7F, 0x7FF, 0xFFFF, 0x1FFFFF};

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
    if (isContinuation(lead))
        return false;
    value = lead;
    for (std::size_t i = 1; i <= count; ++i) {
        const unsigned char byte = byteAt(at + i);
        if (!isContinuation(byte))
            return false;
        value = (value << 6) | (byte & 0x3FU);
    }
    value &= utf8ValueMasks[count]; // takes away the marker bits of the lead
    const bool overlong = value <= utf8ValueMasks[count - 1];
    const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
    return !overlong && !surrogate && value <= 0x10FFFF;
}

} // namespace foundation::network::text
