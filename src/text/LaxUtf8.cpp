#include "text/LaxUtf8.hpp"

#include "text/CodePointIterator.hpp"
#include "text/SameUnits.hpp"
#include "text/Utf.hpp"
#include "text/WellFormed.hpp"

#include <algorithm>

namespace foundation::network::text {

namespace {

    std::size_t lengthOf(char32_t element) noexcept
    {
        return 1U + unsigned{element >= 0x80} + unsigned{element >= 0x800}
               + unsigned{element >= 0x10000} + unsigned{element >= 0x200000}
               + unsigned{element >= 0x4000000} + unsigned{element >= 0x80000000};
    }

    // Writes one element; gives the place behind it.
    char* put(char* out, char32_t element) noexcept
    {
        const std::size_t length = lengthOf(element);
        if (length == 1) {
            *out = static_cast<char>(element);
            return out + 1;
        }
        for (std::size_t i = length - 1; i > 0; --i) {
            out[i] = static_cast<char>(0x80U | (element & 0x3FU));
            element >>= 6;
        }
        // As many leading ones as there are bytes, a zero, and the highest bits.
        out[0] = static_cast<char>((0xFF00U >> length) | element);
        return out + length;
    }

} // namespace

std::string toLaxUtf8(std::u32string_view elements)
{
    if (isAllBelow(0x80, elements))
        return copyUnits<std::string>(elements);
    std::size_t size = 0;
    for (const char32_t element : elements)
        size += lengthOf(element);
    std::string lax(size, '\0');
    char* out = lax.data();
    for (const char32_t element : elements)
        out = put(out, element);
    return lax;
}

std::u32string fromLaxUtf8(std::string_view lax)
{
    if (isAllAscii(lax))
        return widenAscii(lax);
    std::u32string elements(codePointCount(lax), U'\0');
    const LaxUtf8View view(lax);
    std::copy(view.begin(), view.end(), elements.begin());
    return elements;
}

bool exceedsUnicode(std::string_view lax) noexcept
{
    // U+10FFFF is F4 8F BF BF. Hardly a text has a byte above F3, which is looked for at once.
    unsigned char highest = 0;
    for (const char& c : lax)
        highest = std::max(highest, byteAt(&c));
    if (highest < 0xF4)
        return false;
    for (std::size_t i = 0; i < lax.size(); ++i) {
        const unsigned char byte = byteAt(lax.data() + i);
        if (byte > 0xF4 || (byte == 0xF4 && byteAt(lax.data() + i + 1) > 0x8F))
            return true;
    }
    return false;
}

std::string laxToUtf8(std::string_view lax)
{
    return exceedsUnicode(lax) ? toUtf8(fromLaxUtf8(lax)) : std::string(lax);
}

std::u16string laxToUtf16(std::string_view lax)
{
    return isAllAscii(lax) ? copyUnits<std::u16string>(lax) : toUtf16(fromLaxUtf8(lax));
}

} // namespace foundation::network::text
