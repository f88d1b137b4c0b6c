#pragma once

/// The Unicode properties that the grammar asks for. False for every value above U+10FFFF.
namespace foundation::network::iri::grammar {

/// Whether the code point has the property Alphabetic.
bool isUnicodeAlphabetic(char32_t codePoint) noexcept;

/// Whether the code point is of the general category Nd (decimal number).
bool isUnicodeDecimalDigit(char32_t codePoint) noexcept;

/// Whether the code point has the property Hex_Digit: the ASCII digits and their full-width forms.
bool isUnicodeHexDigit(char32_t codePoint) noexcept;

} // namespace foundation::network::iri::grammar
