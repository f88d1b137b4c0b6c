#pragma once

#include "text/CodePointIterator.hpp"

#include <algorithm>
#include <cstddef>
#include <string_view>

/// Where a text has a defect of its encoding, which is what the strict crossings refuse.
namespace foundation::network::text {

/// How much of a text is ASCII, from the front; of UTF-8 in steps of eight bytes, and of UTF-16 not
/// looked for.
inline std::size_t asciiLength(std::string_view utf8) noexcept
{
    constexpr std::size_t STEP = 8;
    std::size_t index = 0;
    while (utf8.size() - index >= STEP && isAllAscii({utf8.data() + index, STEP}))
        index += STEP;
    return index;
}

inline std::size_t asciiLength(std::u16string_view) noexcept
{
    return 0;
}

/// How much of a text is well-formed, from the front: all of it, if it has no defect.
template <class Unit>
std::size_t wellFormedLength(std::basic_string_view<Unit> text) noexcept
{
    std::size_t index = asciiLength(text);
    while (index < text.size()) {
        const Unit* const at = text.data() + index;
        const std::size_t length = sequenceLength(at);
        if (length > text.size() - index || codePointAt(at) == NO_CODE_POINT)
            break;
        index += length;
    }
    return index;
}

/// @{
/// How many units belong to the defect that a text begins with: a lead byte with all the bytes that
/// go on behind it as it announces; one unit of UTF-16.
inline std::size_t defectLength(std::string_view utf8) noexcept
{
    const std::string_view rest = utf8.substr(1, sequenceLength(utf8.data()) - 1);
    const auto end = std::find_if_not(rest.begin(), rest.end(), [](char c) {
        return isContinuation(static_cast<unsigned char>(c));
    });
    return 1 + static_cast<std::size_t>(end - rest.begin());
}

inline std::size_t defectLength(std::u16string_view) noexcept
{
    return 1;
}
/// @}

/// @{
/// The number of code points of a well-formed text.
inline std::size_t codePointCount(std::string_view utf8) noexcept
{
    return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char c) {
        return !isContinuation(static_cast<unsigned char>(c));
    }));
}

inline std::size_t codePointCount(std::u16string_view utf16) noexcept
{
    return static_cast<std::size_t>(
        std::count_if(utf16.begin(), utf16.end(), [](char16_t c) { return !isLowSurrogate(c); }));
}
/// @}

} // namespace foundation::network::text
