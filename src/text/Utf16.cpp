#include "text/Utf.hpp"

#include "except/Throw.hpp"
#include "text/CodePointIterator.hpp"
#include "text/InvalidCodePoint.hpp"

#include <algorithm>
#include <cstddef>

namespace foundation::network::text {

namespace {

    constexpr char32_t FIRST_SUPPLEMENTARY = 0x10000;

    [[noreturn]] void throwMisplacedSurrogate(char16_t unit)
    {
        core::except::throwOutOfRange("Misplaced UTF-16 surrogate U+" + toHexadecimal(unit)
                                      + " encountered while trying to encode UTF-32 sequence");
    }

} // namespace

std::optional<char16_t> decodeUtf16(std::u16string_view utf16, std::u32string& result)
{
    // The units that lead no pair are at least as many as the code points.
    const auto leads =
        std::count_if(utf16.begin(), utf16.end(), [](char16_t u) { return !isLowSurrogate(u); });
    result.clear();
    result.reserve(static_cast<std::size_t>(leads));

    for (auto at = utf16.begin(); at != utf16.end(); ++at) {
        const char16_t unit = *at;
        if (!isSurrogate(unit)) {
            result.push_back(unit);
            continue;
        }
        if (isLowSurrogate(unit))
            return unit;
        const bool atEnd = at + 1 == utf16.end();
        const char16_t next = atEnd ? u'\0' : *++at;
        if (!isLowSurrogate(next))
            return next;
        result.push_back(((char32_t{unit} - 0xD7C0) << 10) | (next & 0x3FFU));
    }
    return std::nullopt;
}

std::u32string toUtf32(std::u16string_view utf16)
{
    std::u32string result;
    if (const std::optional<char16_t> misplaced = decodeUtf16(utf16, result))
        throwMisplacedSurrogate(*misplaced);
    return result;
}

std::u16string toUtf16(std::u32string_view utf32)
{
    std::u16string result;
    result.reserve(utf32.size());
    for (const char32_t codePoint : utf32) {
        if (codePoint > MAX_CODE_POINT || isSurrogate(codePoint))
            throwInvalidCodePoint(codePoint);
        if (codePoint < FIRST_SUPPLEMENTARY) {
            result.push_back(static_cast<char16_t>(codePoint));
            continue;
        }
        result.push_back(static_cast<char16_t>(0xD7C0 + (codePoint >> 10)));
        result.push_back(static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF)));
    }
    return result;
}

} // namespace foundation::network::text
