#include "iri/grammar/UnicodeClasses.hpp"

#include <unicode/uchar.h>

namespace foundation::network::iri::grammar {

// ICU takes a signed code point and answers false for what lies outside Unicode.

bool isUnicodeAlphabetic(char32_t codePoint) noexcept
{
    return u_hasBinaryProperty(static_cast<UChar32>(codePoint), UCHAR_ALPHABETIC) != 0;
}

bool isUnicodeDecimalDigit(char32_t codePoint) noexcept
{
    return u_charType(static_cast<UChar32>(codePoint)) == U_DECIMAL_DIGIT_NUMBER;
}

bool isUnicodeHexDigit(char32_t codePoint) noexcept
{
    return u_hasBinaryProperty(static_cast<UChar32>(codePoint), UCHAR_HEX_DIGIT) != 0;
}

} // namespace foundation::network::iri::grammar
