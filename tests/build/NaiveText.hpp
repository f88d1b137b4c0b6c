#pragma once

#include "text/NaiveUtf8.hpp"

#include <foundation/core/except/Exception.hpp>

#include <boost/throw_exception.hpp>

#include <cstddef>
#include <cstdio>
#include <stdexcept>
#include <string>

/// The crossings between the encodings, one character after the other, with their failures.
namespace foundation::network::tests {

using Text = std::u32string;

[[noreturn]] inline void throwPlainly(const std::string& text)
{
    throw core::except::AnonymousInternalException<std::exception>(std::runtime_error(text));
}

inline std::string inHexadecimal(char32_t value)
{
    char shown[16];
    std::snprintf(shown, sizeof shown, value == 0 ? "%x" : "0x%x", static_cast<unsigned>(value));
    return shown;
}

inline Text fromUtf8(const std::string& utf8)
{
    const auto text = readUtf8(utf8);
    if (!text)
        throwPlainly("Invalid UTF-8 sequence encountered while trying to encode UTF-32 character");
    return *text;
}

/// A text that ends in the first half of a pair is followed by a zero.
inline Text fromUtf16(const std::u16string& utf16)
{
    const auto fail = [](char16_t unit) {
        boost::throw_exception(std::out_of_range("Misplaced UTF-16 surrogate U+"
                                                 + inHexadecimal(unit)
                                                 + " encountered while trying to encode UTF-32 "
                                                   "sequence"));
    };
    Text result;
    for (std::size_t i = 0; i < utf16.size(); ++i) {
        const char32_t unit = utf16[i];
        if (unit >= 0xDC00 && unit <= 0xDFFF)
            fail(utf16[i]);
        if (unit < 0xD800 || unit > 0xDFFF) {
            result.push_back(unit);
            continue;
        }
        ++i;
        const char16_t second = i < utf16.size() ? utf16[i] : u'\0';
        if (second < 0xDC00 || second > 0xDFFF)
            fail(second);
        result.push_back(0x10000 + (unit - 0xD800) * 0x400 + (second - 0xDC00));
    }
    return result;
}

[[noreturn]] inline void refuseCodePoint(char32_t c)
{
    boost::throw_exception(
        std::out_of_range("Invalid UTF-32 code point U+" + inHexadecimal(c)
                          + " encountered while trying to encode UTF-16 sequence"));
}

/// A surrogate is written as three bytes.
inline std::string toUtf8(const Text& text)
{
    std::string result;
    for (const char32_t c : text) {
        if (c > 0x10FFFF)
            refuseCodePoint(c);
        result += writeUtf8(c);
    }
    return result;
}

/// A surrogate is refused.
inline std::u16string toUtf16(const Text& text)
{
    std::u16string result;
    for (const char32_t c : text) {
        if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF))
            refuseCodePoint(c);
        if (c < 0x10000) {
            result.push_back(static_cast<char16_t>(c));
        } else {
            result.push_back(static_cast<char16_t>(0xD800 + (c - 0x10000) / 0x400));
            result.push_back(static_cast<char16_t>(0xDC00 + (c - 0x10000) % 0x400));
        }
    }
    return result;
}

} // namespace foundation::network::tests
