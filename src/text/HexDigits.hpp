#pragma once

#include <cstddef>
#include <string_view>
#include <type_traits>

/// The hexadecimal digits of percent escapes (RFC 3986, 2.1) and of addresses, which are ASCII only.
namespace foundation::network::text {

constexpr bool isHexDigit(char32_t c) noexcept
{
    return (c >= U'0' && c <= U'9') || (c >= U'A' && c <= U'F') || (c >= U'a' && c <= U'f');
}

/// The value of a character for which `isHexDigit` holds.
constexpr char32_t hexDigitValue(char32_t c) noexcept
{
    return c <= U'9' ? c - U'0' : (c | 0x20U) - U'a' + 10;
}

/// Whether two digits follow the "%" that stands at an index.
/// @tparam Unit  `char` or `char32_t`
template <class Unit>
constexpr bool isEscapeAt(std::basic_string_view<Unit> text, std::size_t index) noexcept
{
    const auto isDigit = [text](std::size_t at) {
        return isHexDigit(static_cast<std::make_unsigned_t<Unit>>(text[at]));
    };
    return text.size() - index > 2 && isDigit(index + 1) && isDigit(index + 2);
}

/// The digit of a value below 16, in upper case.
constexpr char hexDigit(unsigned value) noexcept
{
    return "0123456789ABCDEF"[value];
}

/// The digit of a value below 16, in lower case.
constexpr char lowerHexDigit(unsigned value) noexcept
{
    return "0123456789abcdef"[value];
}

} // namespace foundation::network::text
