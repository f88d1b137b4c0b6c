#pragma once

#include <cstdint>
#include <string>

namespace foundation::network::text {

/// A value as the messages show it: "0x" and lower-case hexadecimal digits, but zero as "0".
std::string toHexadecimal(std::uint32_t value);

/// @throws boost::wrapexcept<std::out_of_range> "Invalid UTF-32 code point U+0x110000 encountered
///         while trying to encode UTF-16 sequence"; it names UTF-16 whatever the target is
[[noreturn]] void throwInvalidCodePoint(char32_t codePoint);

} // namespace foundation::network::text
