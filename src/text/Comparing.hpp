#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

/// Comparing UTF-32 texts by their code points. The standard operators look at one character at a
/// time.
namespace foundation::network::text {

inline bool areEqual(std::u32string_view left, std::u32string_view right) noexcept
{
    if (left.size() != right.size())
        return false;
    constexpr std::size_t SHORT = 8; // for which a call would cost more, as for schemes
    if (left.size() > SHORT)
        return std::memcmp(left.data(), right.data(), 4 * left.size()) == 0;
    char32_t bits = 0;
    for (std::size_t i = 0; i < left.size(); ++i)
        bits |= left[i] ^ right[i];
    return bits == 0;
}

/// The index of the first character in which two texts of at least that length differ; that length
/// if there is none.
inline std::size_t findDifference(const char32_t* left, const char32_t* right,
                                  std::size_t size) noexcept
{
    constexpr std::size_t STEP = 8;
    std::size_t index = 0;
    for (; size - index >= STEP; index += STEP) {
        char32_t bits = 0;
        for (std::size_t i = 0; i < STEP; ++i)
            bits |= left[index + i] ^ right[index + i];
        if (bits != 0)
            break;
    }
    while (index != size && left[index] == right[index])
        ++index;
    return index;
}

/// Whether a text comes before another in the order of code points.
inline bool isLess(std::u32string_view left, std::u32string_view right) noexcept
{
    const std::size_t shorter = std::min(left.size(), right.size());
    const std::size_t index = findDifference(left.data(), right.data(), shorter);
    return index == shorter ? left.size() < right.size() : left[index] < right[index];
}

} // namespace foundation::network::text
