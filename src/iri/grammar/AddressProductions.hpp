#pragma once

#include "iri/grammar/Characters.hpp"

/// The productions of RFC 3986, 3.2.2 for addresses in the place of a host, in the RFC's order.
///
/// Each production is tried in full before the next; once one has matched it is not reconsidered.
namespace foundation::network::iri::grammar {

template <class It>
bool IPvFuture(Cursor<It>& at);
template <class It>
bool IPv6address(Cursor<It>& at);
template <class It>
bool h16(Cursor<It>& at);
template <class It>
bool ls32(Cursor<It>& at);
template <class It>
bool IPv4address(Cursor<It>& at);
template <class It>
bool dec_octet(Cursor<It>& at);

// RFC 3986, 3.2.2:  IP-literal = "[" ( IPv6address / IPvFuture ) "]"
template <class It>
bool IP_literal(Cursor<It>& at)
{
    const It start = at.position();
    if (at.take(U'[') && (IPv6address(at) || IPvFuture(at)) && at.take(U']'))
        return true;
    at.reset(start);
    return false;
}

// RFC 3986, 3.2.2:  IPvFuture = "v" 1*HEXDIG "." 1*( unreserved / sub-delims / ":" )
// Departure: iunreserved in the place of unreserved; the "v" is lower case only.
template <class It>
bool IPvFuture(Cursor<It>& at)
{
    const auto isAddressCharacter = [](char32_t c) {
        return ucscharOr(c, UNRESERVED | SUB_DELIMS | COLON);
    };
    const It start = at.position();
    if (at.take(U'v') && at.is(xdigit)) {
        at.skipWhile(xdigit);
        if (at.take(U'.') && at.is(isAddressCharacter)) {
            at.skipWhile(isAddressCharacter);
            return true;
        }
    }
    at.reset(start);
    return false;
}

// h16 ":"
template <class It>
bool h16Colon(Cursor<It>& at)
{
    const It start = at.position();
    if (h16(at) && at.take(U':'))
        return true;
    at.reset(start);
    return false;
}

// h16 ":" where the colon is not the first of "::", so that no group swallows the h16 before it.
template <class It>
bool leadingGroup(Cursor<It>& at)
{
    const It start = at.position();
    if (h16Colon(at) && !at.is([](char32_t c) { return c == U':'; }))
        return true;
    at.reset(start);
    return false;
}

// count( h16 ":" ); if it fails, IPv6address puts the cursor back.
template <class It>
bool groups(Cursor<It>& at, int count)
{
    while (count > 0 && h16Colon(at))
        --count;
    return count == 0;
}

// [ *leading( h16 ":" ) h16 ] "::"; if it fails, IPv6address puts the cursor back.
template <class It>
bool upToDoubleColon(Cursor<It>& at, int leading)
{
    while (leading > 0 && leadingGroup(at))
        --leading;
    h16(at);
    return at.take(U':', U':');
}

// RFC 3986, 3.2.2:
//   IPv6address =                            6( h16 ":" ) ls32
//               /                       "::" 5( h16 ":" ) ls32
//               / [               h16 ] "::" 4( h16 ":" ) ls32
//               / [ *1( h16 ":" ) h16 ] "::" 3( h16 ":" ) ls32
//               / [ *2( h16 ":" ) h16 ] "::" 2( h16 ":" ) ls32
//               / [ *3( h16 ":" ) h16 ] "::"    h16 ":"   ls32
//               / [ *4( h16 ":" ) h16 ] "::"              ls32
//               / [ *5( h16 ":" ) h16 ] "::"              h16
//               / [ *6( h16 ":" ) h16 ] "::"
// From the most groups behind the "::" to the fewest: the first that matches is the longest.
template <class It>
bool IPv6address(Cursor<It>& at)
{
    const It start = at.position();
    const auto matches = [&at, start](auto alternative) {
        if (alternative())
            return true;
        at.reset(start);
        return false;
    };
    if (matches([&] { return groups(at, 6) && ls32(at); }))
        return true;
    if (matches([&] { return at.take(U':', U':') && groups(at, 5) && ls32(at); }))
        return true;
    for (int leading = 0; leading <= 4; ++leading)
        if (matches([&] {
                return upToDoubleColon(at, leading) && groups(at, 4 - leading) && ls32(at);
            }))
            return true;
    return matches([&] { return upToDoubleColon(at, 5) && h16(at); })
           || matches([&] { return upToDoubleColon(at, 6); });
}

// RFC 3986, 3.2.2:  h16 = 1*4HEXDIG
template <class It>
bool h16(Cursor<It>& at)
{
    int digits = 0;
    while (digits < 4 && at.takeIf(xdigit))
        ++digits;
    return digits > 0;
}

// RFC 3986, 3.2.2:  ls32 = ( h16 ":" h16 ) / IPv4address
template <class It>
bool ls32(Cursor<It>& at)
{
    const It start = at.position();
    if (h16Colon(at) && h16(at))
        return true;
    at.reset(start);
    return IPv4address(at);
}

// RFC 3986, 3.2.2:  IPv4address = dec-octet "." dec-octet "." dec-octet "." dec-octet
template <class It>
bool IPv4address(Cursor<It>& at)
{
    const It start = at.position();
    bool matched = dec_octet(at);
    for (int i = 0; i < 3; ++i)
        matched = matched && at.take(U'.') && dec_octet(at);
    if (!matched)
        at.reset(start);
    return matched;
}

// RFC 3986, 3.2.2:  dec-octet = DIGIT                 ; 0-9
//                             / %x31-39 DIGIT         ; 10-99
//                             / "1" 2DIGIT            ; 100-199
//                             / "2" %x30-34 DIGIT     ; 200-249
//                             / "25" %x30-35          ; 250-255
// Read as up to three ASCII digits of value 0 to 255 without a leading zero: more digits are never
// given back, so "256" is no dec-octet, not a "25" with a "6" behind it.
template <class It>
bool dec_octet(Cursor<It>& at)
{
    const It start = at.position();
    if (at.take(U'0') && at.is(digit)) {
        at.reset(start);
        return false;
    }
    at.reset(start);
    unsigned value = 0;
    const auto addDigit = [&value](char32_t c) {
        if (!isAsciiOf(c, DIGIT))
            return false;
        value = value * 10 + static_cast<unsigned>(c - U'0');
        return true;
    };
    int digits = 0;
    while (digits < 3 && at.takeIf(addDigit))
        ++digits;
    if (digits > 0 && value <= 255)
        return true;
    at.reset(start);
    return false;
}

} // namespace foundation::network::iri::grammar
