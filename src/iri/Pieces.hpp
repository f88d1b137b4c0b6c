#pragma once

#include "iri/grammar/IriProductions.hpp"
#include "text/CodePointIterator.hpp"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>

/// What a text was meant to be, as far as its delimiters tell.
///
/// Only texts that the grammar refuses are looked at in this way: nothing here says what an IRI is,
/// but which of its components a trouble is in, so that their own productions can be asked.
namespace foundation::network::iri::detail {

template <class Unit>
using TextView = std::basic_string_view<Unit>;

/// The components, as views of the text (RFC 3986, appendix B). A piece that is absent is not the
/// same as an empty one.
template <class Unit>
struct Pieces {
    std::optional<TextView<Unit>> scheme; ///< a good one, in front of its ":"
    bool hasAuthority = false;
    std::optional<TextView<Unit>> userInfo; ///< up to the last "@"
    TextView<Unit> host;                    ///< may have more behind its "]"
    std::optional<TextView<Unit>> port;
    bool isBareIpv6 = false; ///< the host is an IPv6 address, and lacks its brackets
    TextView<Unit> path;
    std::optional<TextView<Unit>> query;
    std::optional<TextView<Unit>> fragment;

    /// What stands before a ":" in the first segment of a path that nothing precedes, and that
    /// cannot hold one there.
    std::optional<TextView<Unit>> notAScheme;
};

template <class Unit>
constexpr bool isWhiteSpace(Unit unit) noexcept
{
    return unit == ' ' || (unit >= '\t' && unit <= '\r');
}

/// A cursor over a text that is well-formed.
template <class Unit>
grammar::Cursor<text::CodePointIterator<Unit>> cursorOver(TextView<Unit> text)
{
    using It = text::CodePointIterator<Unit>;
    return {It(text.data()), It(text.data() + text.size())};
}

/// Takes away and gives what stands before the first unit for which @p isEnd holds.
template <class Unit, class Predicate>
TextView<Unit> takeUntil(TextView<Unit>& rest, Predicate isEnd)
{
    const auto end = std::find_if(rest.begin(), rest.end(), isEnd);
    const TextView<Unit> taken = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
    rest.remove_prefix(taken.size());
    return taken;
}

template <class Unit>
bool isIpv6(TextView<Unit> text)
{
    if (text.find(Unit(':')) == text.npos
        || std::any_of(text.begin(), text.end(), [](Unit c) { return (c & ~0x7F) != 0; }))
        return false;
    auto at = cursorOver(text);
    return grammar::IPv6address(at) && at.atEnd();
}

template <class Unit>
void splitAuthority(TextView<Unit> authority, Pieces<Unit>& pieces)
{
    pieces.hasAuthority = true;
    if (const std::size_t at = authority.rfind(Unit('@')); at != authority.npos) {
        pieces.userInfo = authority.substr(0, at);
        authority.remove_prefix(at + 1);
    }
    pieces.isBareIpv6 = isIpv6(authority);
    std::size_t hostEnd = 0;
    if (pieces.isBareIpv6)
        hostEnd = authority.npos;
    else if (!authority.empty() && authority.front() == '[')
        hostEnd = authority.find(Unit(']'));
    if (hostEnd != authority.npos)
        hostEnd = authority.find(Unit(':'), hostEnd);
    pieces.host = authority.substr(0, hostEnd);
    if (hostEnd != authority.npos)
        pieces.port = authority.substr(hostEnd + 1);
}

/// Takes scheme and authority off a text.
/// @param wellFormed  how much of it is so, from the front
/// @returns what stands behind them
template <class Unit>
TextView<Unit> splitFront(TextView<Unit> text, std::size_t wellFormed, Pieces<Unit>& pieces)
{
    TextView<Unit> rest = text;
    auto at = cursorOver(text.substr(0, wellFormed));
    if (grammar::scheme(at) && at.is([](char32_t c) { return c == U':'; })) {
        const auto length = static_cast<std::size_t>(at.position().base() - text.data());
        pieces.scheme = text.substr(0, length);
        rest.remove_prefix(length + 1);
    }
    if (rest.size() > 1 && rest[0] == '/' && rest[1] == '/') {
        rest.remove_prefix(2);
        splitAuthority(takeUntil(rest, [](Unit c) { return c == '/' || c == '?' || c == '#'; }),
                       pieces);
    } else if (!pieces.scheme) {
        TextView<Unit> behind = rest;
        const TextView<Unit> before =
            takeUntil(behind, [](Unit c) { return c == ':' || c == '/' || c == '?' || c == '#'; });
        if (!behind.empty() && behind.front() == ':')
            pieces.notAScheme = before;
    }
    return rest;
}

/// Takes a text apart at its delimiters.
/// @param wellFormed  how much of it is so, from the front
template <class Unit>
Pieces<Unit> splitAtDelimiters(TextView<Unit> text, std::size_t wellFormed)
{
    Pieces<Unit> pieces;
    TextView<Unit> rest = splitFront(text, wellFormed, pieces);
    pieces.path = takeUntil(rest, [](Unit c) { return c == '?' || c == '#'; });
    if (!rest.empty() && rest.front() == '?') {
        rest.remove_prefix(1);
        pieces.query = takeUntil(rest, [](Unit c) { return c == '#'; });
    }
    if (!rest.empty())
        pieces.fragment = rest.substr(1);
    return pieces;
}

/// Moves past segments and slashes, all that a path may hold somewhere.
template <class It>
void skipPath(grammar::Cursor<It>& at)
{
    grammar::isegment(at);
    grammar::ipath_abempty(at);
}

} // namespace foundation::network::iri::detail
