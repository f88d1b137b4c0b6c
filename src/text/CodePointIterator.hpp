#pragma once

#include "text/ElementIterator.hpp"
#include "text/Utf8Decoding.hpp"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/// UTF-8 and UTF-16 read as code points where they lie, without a copy.
namespace foundation::network::text {

/// What a `CodePointIterator` shows where the text has a defect. It is in no class of characters.
inline constexpr char32_t NO_CODE_POINT = 0xFFFFFFFF;

constexpr bool isHighSurrogate(char32_t unit) noexcept
{
    return (unit & 0xFFFFFC00U) == 0xD800;
}

constexpr bool isLowSurrogate(char32_t unit) noexcept
{
    return (unit & 0xFFFFFC00U) == 0xDC00;
}

constexpr bool isSurrogate(char32_t unit) noexcept
{
    return (unit & 0xFFFFF800U) == 0xD800;
}

/// @{
/// How many units the one that stands here announces, itself included.
constexpr std::size_t sequenceLength(const char* at) noexcept
{
    const unsigned char lead = byteAt(at);
    return lead < 0xC0 ? 1 : continuationCount(lead) + 1;
}

constexpr std::size_t sequenceLength(const char16_t* at) noexcept
{
    return isHighSurrogate(*at) ? 2 : 1;
}
/// @}

/// @{
/// The code point that begins here, or NO_CODE_POINT. As many units as are announced can be read.
constexpr char32_t codePointAt(const char* at) noexcept
{
    const unsigned char lead = byteAt(at);
    if (lead < 0x80)
        return lead;
    if (isContinuation(lead)) // announces nothing: what stands behind it may be the end
        return NO_CODE_POINT;
    char32_t value = 0;
    return decodeSequence(at, continuationCount(lead), value) ? value : NO_CODE_POINT;
}

constexpr char32_t codePointAt(const char16_t* at) noexcept
{
    if (!isSurrogate(*at))
        return *at;
    if (isLowSurrogate(*at) || !isLowSurrogate(at[1]))
        return NO_CODE_POINT;
    return ((char32_t{*at} - 0xD7C0) << 10) | (at[1] & 0x3FFU);
}
/// @}

/// Whether the text ends before the units that its last sequence announces: a defect that has to
/// be ruled out before the text is walked, since nothing looks for its end later.
template <class Unit>
constexpr bool endsInsideSequence(std::basic_string_view<Unit> text) noexcept
{
    constexpr std::size_t LONGEST = sizeof(Unit) == 1 ? 4 : 2;
    for (std::size_t behind = 1; behind < LONGEST && behind <= text.size(); ++behind)
        if (sequenceLength(text.data() + (text.size() - behind)) > behind)
            return true;
    return false;
}

/// Whether all characters are ASCII.
inline bool isAllAscii(std::string_view text) noexcept
{
    constexpr std::size_t STEP = sizeof(std::uint64_t);
    const auto wordAt = [&text](std::size_t index) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + index, STEP);
        return word;
    };
    std::uint64_t seen = 0;
    if (text.size() < STEP) {
        for (const char& c : text)
            seen |= byteAt(&c);
    } else {
        for (std::size_t index = 0; index < text.size() - STEP; index += STEP)
            seen |= wordAt(index);
        seen |= wordAt(text.size() - STEP); // some of it for the second time
    }
    return (seen & 0x8080808080808080U) == 0;
}

/// How well-formed UTF-8 and UTF-16 are read.
struct CodePointReading {
    template <class Unit>
    static constexpr char32_t elementAt(const Unit* at) noexcept
    {
        return codePointAt(at);
    }

    template <class Unit>
    static constexpr std::size_t lengthAt(const Unit* at) noexcept
    {
        return sequenceLength(at);
    }
};

/// How ASCII is read.
struct AsciiReading {
    // The mask takes nothing away; it tells the compiler what there is.
    static constexpr char32_t elementAt(const char* at) noexcept { return byteAt(at) & 0x7FU; }

    static constexpr std::size_t lengthAt(const char*) noexcept { return 1; }
};

/// Over the code points of a text that does not end inside of a sequence. It is not moved past a
/// defect.
///
/// @tparam Unit  `char` for UTF-8, `char16_t` for UTF-16
template <class Unit>
using CodePointIterator = ElementIterator<Unit, CodePointReading>;

/// The same over a text that is all ASCII, which is most of them, where a program can be spared
/// every look at anything else.
using AsciiIterator = ElementIterator<char, AsciiReading>;

using Utf8Iterator = CodePointIterator<char>;
using Utf16Iterator = CodePointIterator<char16_t>;

} // namespace foundation::network::text
