#pragma once

namespace reference {

/// Whether the code point has the Unicode property Alphabetic.
bool isAlphabetic(char32_t c);

/// Whether the general category of the code point is Nd.
bool isDecimalDigit(char32_t c);

/// Whether the code point has the Unicode property Hex_Digit.
bool isHexDigit(char32_t c);

} // namespace reference
