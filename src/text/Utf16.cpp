#include "text/Utf.hpp"

#include "except/Throw.hpp"
#include "text/CodePointIterator.hpp"
#include "text/InvalidCodePoint.hpp"
#include "text/SameUnits.hpp"
#include "text/WellFormed.hpp"

#include <algorithm>
#include <cstddef>

namespace foundation::network::text {

namespace {

    constexpr char32_t FIRST_SUPPLEMENTARY = 0x10000;

    // Below, there are no surrogates, and a code point is a unit. It is a power of two.
    constexpr char32_t SAME_IN_ALL = 0x8000;

    // Copies the units at the front that are the same in UTF-16 and UTF-32 and lie below the
    // surrogates, eight at a time, and moves both positions past them.
    template <class From, class To>
    void copyRun(const From*& at, const From* end, To*& out) noexcept
    {
        constexpr std::ptrdiff_t STEP = 8;
        constexpr From FIRST_SURROGATE = 0xD800;
        while (end - at >= STEP) {
            bool areBelow = true;
            for (std::ptrdiff_t i = 0; i < STEP; ++i)
                areBelow &= at[i] < FIRST_SURROGATE;
            if (!areBelow)
                break;
            for (std::ptrdiff_t i = 0; i < STEP; ++i)
                out[i] = static_cast<To>(at[i]);
            at += STEP;
            out += STEP;
        }
        while (at != end && *at < FIRST_SURROGATE)
            *out++ = static_cast<To>(*at++);
    }

    [[noreturn]] void throwMisplacedSurrogate(char16_t unit)
    {
        core::except::throwOutOfRange("Misplaced UTF-16 surrogate U+" + toHexadecimal(unit)
                                      + " encountered while trying to encode UTF-32 sequence");
    }

} // namespace

std::optional<char16_t> decodeUtf16(std::u16string_view utf16, std::u32string& result)
{
    if (isAllBelow(SAME_IN_ALL, utf16)) {
        result = copyUnits<std::u32string>(utf16);
        return std::nullopt;
    }
    // The units that lead no pair are at least as many as the code points.
    const auto leads =
        std::count_if(utf16.begin(), utf16.end(), [](char16_t u) { return !isLowSurrogate(u); });
    result.resize(static_cast<std::size_t>(leads));

    const char16_t* at = utf16.data();
    const char16_t* const end = at + utf16.size();
    char32_t* out = result.data();
    for (;;) {
        copyRun(at, end, out);
        if (at == end)
            return std::nullopt;
        const char16_t unit = *at++;
        if (!isSurrogate(unit)) {
            *out++ = unit;
            continue;
        }
        if (isLowSurrogate(unit))
            return unit;
        const char16_t next = at == end ? u'\0' : *at++;
        if (!isLowSurrogate(next))
            return next;
        *out++ = ((char32_t{unit} - 0xD7C0) << 10) | (next & 0x3FFU);
    }
}

std::u32string toUtf32(std::u16string_view utf16)
{
    std::u32string result;
    if (const std::optional<char16_t> misplaced = decodeUtf16(utf16, result))
        throwMisplacedSurrogate(*misplaced);
    return result;
}

void requireWellFormed(std::u16string_view utf16)
{
    // The defect, and the unit behind it, which may be the one that is told.
    const std::u16string_view rest = utf16.substr(wellFormedLength(utf16));
    static_cast<void>(toUtf32(rest.substr(0, 2)));
}

std::u16string toUtf16(std::u32string_view utf32)
{
    if (isAllBelow(SAME_IN_ALL, utf32))
        return copyUnits<std::u16string>(utf32);
    const auto supplementary = std::count_if(utf32.begin(), utf32.end(),
                                             [](char32_t c) { return c >= FIRST_SUPPLEMENTARY; });
    std::u16string result(utf32.size() + static_cast<std::size_t>(supplementary), u'\0');
    char16_t* out = result.data();
    const char32_t* at = utf32.data();
    const char32_t* const end = at + utf32.size();
    for (;;) {
        copyRun(at, end, out);
        if (at == end)
            return result;
        const char32_t codePoint = *at++;
        if (codePoint > MAX_CODE_POINT || isSurrogate(codePoint))
            throwInvalidCodePoint(codePoint);
        if (codePoint < FIRST_SUPPLEMENTARY) {
            *out++ = static_cast<char16_t>(codePoint);
            continue;
        }
        *out++ = static_cast<char16_t>(0xD7C0 + (codePoint >> 10));
        *out++ = static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF));
    }
}

} // namespace foundation::network::text
