#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/// Comparing texts in lax UTF-8 by their bytes, which is comparing them by their code points.
namespace foundation::network::text {

inline bool areEqual(std::string_view left, std::string_view right) noexcept
{
    if (left.size() != right.size())
        return false;
    constexpr std::size_t SHORT = 8; // for which a call would cost more, as for schemes
    if (left.size() > SHORT)
        return std::memcmp(left.data(), right.data(), left.size()) == 0;
    for (std::size_t i = 0; i < left.size(); ++i)
        if (left[i] != right[i])
            return false;
    return true;
}

/// The index of the first byte in which two texts of at least that length differ; that length if
/// there is none.
inline std::size_t findDifference(const char* left, const char* right, std::size_t size) noexcept
{
    constexpr std::size_t STEP = sizeof(std::uint64_t);
    const auto wordAt = [](const char* at) {
        std::uint64_t word = 0;
        std::memcpy(&word, at, STEP);
        return word;
    };
    std::size_t index = 0;
    while (size - index >= STEP && wordAt(left + index) == wordAt(right + index))
        index += STEP;
    while (index != size && left[index] == right[index])
        ++index;
    return index;
}

/// Whether a text comes before another in the order of code points.
inline bool isLess(std::string_view left, std::string_view right) noexcept
{
    return left < right; // as unsigned bytes, says std::char_traits
}

} // namespace foundation::network::text
