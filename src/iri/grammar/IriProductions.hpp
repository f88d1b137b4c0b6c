#pragma once

#include "iri/grammar/AddressProductions.hpp"
#include "iri/grammar/Characters.hpp"
#include "iri/grammar/SchemeGrammar.hpp"

#include <foundation/network/iri/detail/Parts.hpp>

/// The productions of RFC 3987, 2.2 that give an IRI its structure, in the RFC's order.
///
/// Choices are ordered: each alternative is tried in full before the next, and once one has matched
/// it is not reconsidered, whatever fails later. No production recurses on the length of the text,
/// and none allocates. Those that cannot fail return nothing.
namespace foundation::network::iri::grammar {

template <class It>
bool IRI(Cursor<It>& at, iri::detail::Parts<It>& parts);
template <class It>
void ihier_part(Cursor<It>& at, iri::detail::HierarchicalPart<It>& part);
template <class It>
void irelative_ref(Cursor<It>& at, iri::detail::Parts<It>& parts);
template <class It>
void irelative_part(Cursor<It>& at, iri::detail::HierarchicalPart<It>& part);
template <class It>
bool iauthority(Cursor<It>& at, iri::detail::HierarchicalPart<It>& part);
template <class It>
void iuserinfo(Cursor<It>& at);
template <class It>
void ihost(Cursor<It>& at);
template <class It>
void ireg_name(Cursor<It>& at);
template <class It>
void port(Cursor<It>& at);
template <class It>
void ipath_abempty(Cursor<It>& at);
template <class It>
bool ipath_absolute(Cursor<It>& at);
template <class It>
bool ipath_noscheme(Cursor<It>& at);
template <class It>
bool ipath_rootless(Cursor<It>& at);
template <class It>
void isegment(Cursor<It>& at);
template <class It>
bool isegment_nz(Cursor<It>& at);
template <class It>
bool isegment_nz_nc(Cursor<It>& at);
template <class It>
void iquery(Cursor<It>& at);
template <class It>
void ifragment(Cursor<It>& at);

// [ "?" iquery ] [ "#" ifragment ]
template <class It>
void queryAndFragment(Cursor<It>& at, iri::detail::Parts<It>& parts)
{
    if (at.take(U'?')) {
        const It start = at.position();
        iquery(at);
        parts.query = at.from(start);
    }
    if (at.take(U'#')) {
        const It start = at.position();
        ifragment(at);
        parts.fragment = at.from(start);
    }
}

// RFC 3987, 2.2:  IRI = scheme ":" ihier-part [ "?" iquery ] [ "#" ifragment ]
template <class It>
bool IRI(Cursor<It>& at, iri::detail::Parts<It>& parts)
{
    const It start = at.position();
    if (!scheme(at))
        return false;
    const auto matched = at.from(start);
    if (!at.take(U':')) {
        at.reset(start);
        return false;
    }
    parts.scheme = matched;
    ihier_part(at, parts.hierarchicalPart);
    queryAndFragment(at, parts);
    return true;
}

// RFC 3987, 2.2:  ihier-part = "//" iauthority ipath-abempty
//                            / ipath-absolute / ipath-rootless / ipath-empty
template <class It>
void ihier_part(Cursor<It>& at, iri::detail::HierarchicalPart<It>& part)
{
    const bool hasAuthority = iauthority(at, part);
    const It start = at.position();
    if (hasAuthority)
        ipath_abempty(at);
    else if (!ipath_absolute(at))
        ipath_rootless(at); // or else ipath-empty
    part.path = at.from(start);
}

// RFC 3987, 2.2:  IRI-reference = IRI / irelative-ref
//
// Never fails: irelative-ref matches the empty text. What the grammar does not accept is left over.
template <class It>
void IRI_reference(Cursor<It>& at, iri::detail::Parts<It>& parts)
{
    if (!IRI(at, parts))
        irelative_ref(at, parts);
}

// RFC 3987, 2.2:  irelative-ref = irelative-part [ "?" iquery ] [ "#" ifragment ]
template <class It>
void irelative_ref(Cursor<It>& at, iri::detail::Parts<It>& parts)
{
    irelative_part(at, parts.hierarchicalPart);
    queryAndFragment(at, parts);
}

// RFC 3987, 2.2:  irelative-part = "//" iauthority ipath-abempty
//                                / ipath-absolute / ipath-noscheme / ipath-empty
template <class It>
void irelative_part(Cursor<It>& at, iri::detail::HierarchicalPart<It>& part)
{
    const bool hasAuthority = iauthority(at, part);
    const It start = at.position();
    if (hasAuthority)
        ipath_abempty(at);
    else if (!ipath_absolute(at))
        ipath_noscheme(at); // or else ipath-empty
    part.path = at.from(start);
}

// RFC 3987, 2.2:  "//" iauthority, with iauthority = [ iuserinfo "@" ] ihost [ ":" port ]
//
// Fails only without the "//"; behind it ihost can match nothing. User information ends at the
// first "@", since it holds none; a port is present as soon as its colon is.
template <class It>
bool iauthority(Cursor<It>& at, iri::detail::HierarchicalPart<It>& part)
{
    if (!at.take(U'/', U'/'))
        return false;

    It start = at.position();
    iuserinfo(at);
    const auto userInfo = at.from(start);
    if (at.take(U'@'))
        part.userInfo = userInfo;
    else
        at.reset(start);

    start = at.position();
    ihost(at);
    part.host = at.from(start);

    if (at.take(U':')) {
        start = at.position();
        port(at);
        part.port = at.from(start);
    }
    return true;
}

// RFC 3987, 2.2:  iuserinfo = *( iunreserved / pct-encoded / sub-delims / ":" )
template <class It>
void iuserinfo(Cursor<It>& at)
{
    skipRegisteredCharacters<COLON>(at);
}

// RFC 3987, 2.2:  ihost = IP-literal / IPv4address / ireg-name
//
// A dotted quad counts only where the host ends behind it; otherwise ireg-name takes it and more.
template <class It>
void ihost(Cursor<It>& at)
{
    if (IP_literal(at))
        return;
    const It start = at.position();
    if (IPv4address(at)) {
        const bool hostGoesOn =
            at.is([](char32_t c) { return ucscharOr(c, UNRESERVED | SUB_DELIMS | AT); })
            || pct_encoded(at);
        if (!hostGoesOn)
            return;
        at.reset(start);
    }
    ireg_name(at);
}

// RFC 3987, 2.2:  ireg-name = *( iunreserved / pct-encoded / sub-delims )
template <class It>
void ireg_name(Cursor<It>& at)
{
    skipRegisteredCharacters<0>(at);
}

// RFC 3986, 3.2.3:  port = *DIGIT
// Departure: every decimal digit of Unicode (category Nd).
template <class It>
void port(Cursor<It>& at)
{
    at.skipWhile(digit);
}

// *( "/" isegment )
//
// Behind the first "/", that is any sequence of "/" and the characters of a segment.
template <class It>
void segments(Cursor<It>& at)
{
    if (at.take(U'/'))
        skipCharacters<IPCHAR | SLASH>(at);
}

// RFC 3987, 2.2:  ipath-abempty = *( "/" isegment )
template <class It>
void ipath_abempty(Cursor<It>& at)
{
    segments(at);
}

// RFC 3987, 2.2:  ipath-absolute = "/" [ isegment-nz *( "/" isegment ) ]
template <class It>
bool ipath_absolute(Cursor<It>& at)
{
    if (!at.take(U'/'))
        return false;
    if (isegment_nz(at))
        segments(at);
    return true;
}

// RFC 3987, 2.2:  ipath-noscheme = isegment-nz-nc *( "/" isegment )
template <class It>
bool ipath_noscheme(Cursor<It>& at)
{
    if (!isegment_nz_nc(at))
        return false;
    segments(at);
    return true;
}

// RFC 3987, 2.2:  ipath-rootless = isegment-nz *( "/" isegment )
template <class It>
bool ipath_rootless(Cursor<It>& at)
{
    if (!isegment_nz(at))
        return false;
    segments(at);
    return true;
}

// RFC 3987, 2.2:  isegment = *ipchar
template <class It>
void isegment(Cursor<It>& at)
{
    skipCharacters<IPCHAR>(at);
}

// RFC 3987, 2.2:  isegment-nz = 1*ipchar
template <class It>
bool isegment_nz(Cursor<It>& at)
{
    if (!at.is(ipchar))
        return false;
    isegment(at);
    return true;
}

// RFC 3987, 2.2:  isegment-nz-nc = 1*( iunreserved / pct-encoded / sub-delims / "@" )
// Departure: the bare "%" is a member, as in ipchar.
template <class It>
bool isegment_nz_nc(Cursor<It>& at)
{
    constexpr unsigned MEMBERS = UNRESERVED | SUB_DELIMS | AT | PERCENT;
    if (!at.is([](char32_t c) { return ucscharOr(c, MEMBERS); }))
        return false;
    skipCharacters<MEMBERS>(at);
    return true;
}

// RFC 3987, 2.2:  iquery = *( ipchar / iprivate / "/" / "?" )
template <class It>
void iquery(Cursor<It>& at)
{
    skipCharacters<IPCHAR | SLASH | QUESTION>(at);
    while (at.takeIf(iprivate))
        skipCharacters<IPCHAR | SLASH | QUESTION>(at);
}

// RFC 3987, 2.2:  ifragment = *( ipchar / "/" / "?" )
template <class It>
void ifragment(Cursor<It>& at)
{
    skipCharacters<IPCHAR | SLASH | QUESTION>(at);
}

} // namespace foundation::network::iri::grammar
