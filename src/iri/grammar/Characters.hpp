#pragma once

#include "iri/grammar/Cursor.hpp"
#include "iri/grammar/UnicodeClasses.hpp"
#include "text/CodePointIterator.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

/// The productions of single characters: a table of bits for ASCII, range tests above it.
namespace foundation::network::iri::grammar {

/// One bit for each set of ASCII characters; the productions below are unions of them.
enum AsciiClass : std::uint16_t {
    ALPHA = 1 << 0,
    DIGIT = 1 << 1,
    XDIGIT = 1 << 2,
    MARK = 1 << 3,        ///< "-._~", the rest of unreserved
    SUB_DELIMS = 1 << 4,  ///< "!$&'()*+,;="
    SCHEME_MARK = 1 << 5, ///< "+.-"
    COLON = 1 << 6,
    AT = 1 << 7,
    PERCENT = 1 << 8,
    SLASH = 1 << 9,
    QUESTION = 1 << 10,
    BRACKET_OR_HASH = 1 << 11, ///< "#[]", the rest of gen-delims
};

/// RFC 3986, 2.3: unreserved
inline constexpr unsigned UNRESERVED = ALPHA | DIGIT | MARK;
/// RFC 3987, 2.2: ipchar, as far as it is ASCII
inline constexpr unsigned IPCHAR = UNRESERVED | SUB_DELIMS | COLON | AT | PERCENT;
/// RFC 3986, 2.2: gen-delims
inline constexpr unsigned GEN_DELIMS = COLON | AT | SLASH | QUESTION | BRACKET_OR_HASH;

namespace detail {

    constexpr std::array<std::uint16_t, 128> makeAsciiClasses()
    {
        std::array<std::uint16_t, 128> classes{};
        const auto add = [&classes](const char* characters, unsigned bits) {
            for (; *characters != '\0'; ++characters) {
                auto& entry = classes[static_cast<unsigned char>(*characters)];
                entry = static_cast<std::uint16_t>(entry | bits);
            }
        };
        add("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz", ALPHA);
        add("0123456789", DIGIT | XDIGIT);
        add("ABCDEFabcdef", XDIGIT);
        add("-._~", MARK);
        add("!$&'()*+,;=", SUB_DELIMS);
        add("+.-", SCHEME_MARK);
        add(":", COLON);
        add("@", AT);
        add("%", PERCENT);
        add("/", SLASH);
        add("?", QUESTION);
        add("#[]", BRACKET_OR_HASH);
        return classes;
    }

    inline constexpr std::array<std::uint16_t, 128> asciiClasses = makeAsciiClasses();

} // namespace detail

constexpr bool isAscii(char32_t c) noexcept
{
    return c < 0x80;
}

/// Whether the character is ASCII and in one of the @p classes.
constexpr bool isAsciiOf(char32_t c, unsigned classes) noexcept
{
    return isAscii(c) && (detail::asciiClasses[c] & classes) != 0;
}

/// Whether the character is one of those ASCII @p classes, or outside ASCII and in `ucschar`.
constexpr bool ucscharOr(char32_t c, unsigned classes) noexcept;

// RFC 5234, B.1:  ALPHA = %x41-5A / %x61-7A
// Departure: every character with the Unicode property Alphabetic.
inline bool alpha(char32_t c) noexcept
{
    return isAscii(c) ? isAsciiOf(c, ALPHA) : isUnicodeAlphabetic(c);
}

// RFC 5234, B.1:  DIGIT = %x30-39
// Departure: every decimal digit of Unicode (category Nd).
inline bool digit(char32_t c) noexcept
{
    return isAscii(c) ? isAsciiOf(c, DIGIT) : isUnicodeDecimalDigit(c);
}

// RFC 5234, B.1:  HEXDIG = DIGIT / "A" / "B" / "C" / "D" / "E" / "F"
// Departure: the full-width forms too (the Unicode property Hex_Digit).
inline bool xdigit(char32_t c) noexcept
{
    return isAscii(c) ? isAsciiOf(c, XDIGIT) : isUnicodeHexDigit(c);
}

inline bool alnum(char32_t c) noexcept
{
    return alpha(c) || digit(c);
}

// RFC 3987, 2.2:  ipchar = iunreserved / pct-encoded / sub-delims / ":" / "@"
// Departure: the bare "%" is a member. So pct-encoded decides nothing here: each of its three
// characters is an ipchar by itself.
constexpr bool ipchar(char32_t c) noexcept
{
    return ucscharOr(c, IPCHAR);
}

// RFC 3987, 2.2:  iunreserved = ALPHA / DIGIT / "-" / "." / "_" / "~" / ucschar
// Departure: letters and digits are those of Unicode; outside ASCII all of them are in ucschar.
constexpr bool iunreserved(char32_t c) noexcept
{
    return ucscharOr(c, UNRESERVED);
}

// RFC 3987, 2.2:  ucschar = %xA0-D7FF / %xF900-FDCF / %xFDF0-FFEF
//                         / %x10000-1FFFD / ... / %xD0000-DFFFD / %xE1000-EFFFD
constexpr bool ucschar(char32_t c) noexcept
{
    if (c < 0x10000)
        return (c >= 0xA0 && c <= 0xD7FF) || (c >= 0xF900 && c <= 0xFDCF)
               || (c >= 0xFDF0 && c <= 0xFFEF);
    const bool endOfPlane = (c & 0xFFFF) >= 0xFFFE;
    const bool tag = c >= 0xE0000 && c <= 0xE0FFF;
    return c <= 0xEFFFD && !endOfPlane && !tag;
}

constexpr bool ucscharOr(char32_t c, unsigned classes) noexcept
{
    return isAscii(c) ? isAsciiOf(c, classes) : ucschar(c);
}

// RFC 3987, 2.2:  iprivate = %xE000-F8FF / %xF0000-FFFFD / %x100000-10FFFD
// Departure: %xE0000-E0FFF, which the RFC leaves out of both ucschar and iprivate, belongs here.
constexpr bool iprivate(char32_t c) noexcept
{
    return (c >= 0xE000 && c <= 0xF8FF) || (c >= 0xE0000 && c <= 0xE0FFF)
           || (c >= 0xF0000 && c <= 0xFFFFD) || (c >= 0x100000 && c <= 0x10FFFD);
}

// RFC 3986, 2.1:  pct-encoded = "%" HEXDIG HEXDIG
template <class It>
bool pct_encoded(Cursor<It>& at)
{
    const It start = at.position();
    if (at.take(U'%') && at.takeIf(xdigit) && at.takeIf(xdigit))
        return true;
    at.reset(start);
    return false;
}

// RFC 3986, 2.2:  reserved = gen-delims / sub-delims
constexpr bool reserved(char32_t c) noexcept
{
    return isAsciiOf(c, GEN_DELIMS | SUB_DELIMS);
}

// RFC 3986, 2.2:  gen-delims = ":" / "/" / "?" / "#" / "[" / "]" / "@"
constexpr bool gen_delims(char32_t c) noexcept
{
    return isAsciiOf(c, GEN_DELIMS);
}

// RFC 3986, 2.2:  sub-delims = "!" / "$" / "&" / "'" / "(" / ")" / "*" / "+" / "," / ";" / "="
constexpr bool sub_delims(char32_t c) noexcept
{
    return isAsciiOf(c, SUB_DELIMS);
}

namespace detail {

    template <unsigned CLASSES>
    constexpr std::array<std::uint8_t, 256> makeMembers()
    {
        std::array<std::uint8_t, 256> members{};
        for (std::size_t c = 0; c < asciiClasses.size(); ++c)
            members[c] = (asciiClasses[c] & CLASSES) != 0 ? 1 : 0;
        return members;
    }

    /// Which bytes are ASCII characters in a union of classes, a byte each.
    template <unsigned CLASSES>
    inline constexpr std::array<std::uint8_t, 256> asciiMembers = makeMembers<CLASSES>();

    /// For which of the first code points `ucscharOr` holds, a byte each. What holds for the last
    /// one holds for all behind it that lie below the surrogates.
    template <unsigned CLASSES>
    inline constexpr std::array<std::uint8_t, 256> firstMembers = [] {
        std::array<std::uint8_t, 256> members{};
        for (char32_t c = 0; c < members.size(); ++c)
            members[c] = ucscharOr(c, CLASSES) ? 1 : 0;
        return members;
    }();

} // namespace detail

/// Moves past all characters for which `ucscharOr` holds.
template <unsigned CLASSES, class It>
void skipCharacters(Cursor<It>& at)
{
    at.skipWhile([](char32_t c) { return ucscharOr(c, CLASSES); });
}

/// The same where all is ASCII: eight characters at a time, whose look-ups wait for nothing.
template <unsigned CLASSES>
void skipCharacters(Cursor<text::AsciiIterator>& at)
{
    const auto isMember = [](const char* c) {
        return detail::asciiMembers<CLASSES>[text::byteAt(c)];
    };
    constexpr std::ptrdiff_t STEP = 8;

    const char* here = at.position().base();
    const char* const last = at.last().base();
    while (last - here >= STEP) {
        unsigned areMembers = 1;
        for (std::ptrdiff_t i = 0; i < STEP; ++i)
            areMembers &= isMember(here + i);
        if (areMembers == 0)
            break;
        here += STEP;
    }
    while (here != last && isMember(here) != 0)
        ++here;
    at.reset(text::AsciiIterator(here));
}

/// The same in UTF-8: letters of two and three bytes, which most scripts are written in, are known
/// by their leads, of which all that is well-formed behind them is in `ucschar`.
template <unsigned CLASSES>
void skipCharacters(Cursor<text::Utf8Iterator>& at)
{
    const auto goesOn = [](const char* c) { return text::isContinuation(text::byteAt(c)); };

    const char* here = at.position().base();
    const char* const last = at.last().base();
    while (here != last) {
        const unsigned char lead = text::byteAt(here);
        if (isAscii(lead)) {
            if (detail::asciiMembers<CLASSES>[lead] == 0)
                break;
            ++here;
        } else if (lead >= 0xC3 && lead <= 0xDF && goesOn(here + 1)) {
            here += 2; // U+00C0 to U+07FF
        } else if (lead >= 0xE1 && lead <= 0xEC && goesOn(here + 1) && goesOn(here + 2)) {
            here += 3; // U+1000 to U+CFFF
        } else if (ucschar(text::codePointAt(here))) {
            here += text::sequenceLength(here);
        } else {
            break;
        }
    }
    at.reset(text::Utf8Iterator(here));
}

/// The same where code points lie side by side: without a branch that asks for the script, since
/// texts change between scripts all the time.
template <unsigned CLASSES>
void skipCharacters(Cursor<std::u32string::const_iterator>& at)
{
    constexpr char32_t FIRST_SURROGATE = 0xD800;
    const auto isMember = [](char32_t c) {
        const char32_t last = detail::firstMembers<CLASSES>.size() - 1;
        return unsigned{detail::firstMembers<CLASSES>[std::min(c, last)]}
               & unsigned{c < FIRST_SURROGATE};
    };
    constexpr std::ptrdiff_t STEP = 8;

    auto here = at.position();
    const auto last = at.last();
    while (last - here >= STEP) {
        unsigned areMembers = 1;
        for (std::ptrdiff_t i = 0; i < STEP; ++i)
            areMembers &= isMember(here[i]);
        if (areMembers == 0)
            break;
        here += STEP;
    }
    while (here != last && isMember(*here) != 0)
        ++here;
    at.reset(here);
    if (here != last && *here >= FIRST_SURROGATE)
        at.skipWhile([](char32_t c) { return ucscharOr(c, CLASSES); });
}

// *( iunreserved / pct-encoded / sub-delims / more ), the body of iuserinfo and ireg-name, where
// "more" names further ASCII classes. Here a "%" counts only where an escape begins.
template <unsigned MORE, class It>
void skipRegisteredCharacters(Cursor<It>& at)
{
    do
        skipCharacters<UNRESERVED | SUB_DELIMS | MORE>(at);
    while (pct_encoded(at));
}

} // namespace foundation::network::iri::grammar
