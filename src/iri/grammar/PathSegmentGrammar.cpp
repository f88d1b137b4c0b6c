#include "iri/grammar/PathSegmentGrammar.hpp"

#include "iri/grammar/Cursor.hpp"

namespace foundation::network::iri::grammar {

namespace {

    using It = std::u32string_view::const_iterator;

    // segment-body = 1*( anything but "/" )
    bool segmentBody(Cursor<It>& at)
    {
        const auto isMember = [](char32_t c) { return c != U'/'; };
        if (!at.is(isMember))
            return false;
        at.skipWhile(isMember);
        return true;
    }

    // slash-segment = "/" segment-body
    bool slashSegment(Cursor<It>& at)
    {
        const It start = at.position();
        if (at.take(U'/') && segmentBody(at))
            return true;
        at.reset(start);
        return false;
    }

    // terminal-slash = "/" end-of-input
    bool terminalSlash(Cursor<It>& at)
    {
        const It start = at.position();
        if (at.take(U'/') && at.atEnd())
            return true;
        at.reset(start);
        return false;
    }

    // double-slash-segment = "/" "/" segment-body
    bool doubleSlashSegment(Cursor<It>& at)
    {
        const It start = at.position();
        if (at.take(U'/', U'/') && segmentBody(at))
            return true;
        at.reset(start);
        return false;
    }

    // path = ( segment-body / slash-segment / terminal-slash / double-slash-segment )
    //        *slash-segment [ terminal-slash ]
    template <class Keep>
    bool path(Cursor<It>& at, Keep keep)
    {
        It start = at.position();
        const auto keepSegment = [&] {
            keep(std::u32string_view(start, at.position()));
            start = at.position();
        };
        if (!segmentBody(at) && !slashSegment(at) && !terminalSlash(at) && !doubleSlashSegment(at))
            return false;
        keepSegment();
        while (slashSegment(at))
            keepSegment();
        if (terminalSlash(at))
            keepSegment();
        return at.atEnd();
    }

} // namespace

bool splitPathSegments(std::u32string_view text, std::vector<std::u32string>& segments)
{
    Cursor at(text.begin(), text.end());
    std::vector<std::u32string> found;
    if (!path(at, [&found](std::u32string_view segment) { found.emplace_back(segment); }))
        return false;
    segments = std::move(found);
    return true;
}

std::size_t countPathSegments(std::u32string_view text) noexcept
{
    Cursor at(text.begin(), text.end());
    std::size_t count = 0;
    return path(at, [&count](std::u32string_view) { ++count; }) ? count : 0;
}

std::u32string_view takePathSegment(std::u32string_view& rest) noexcept
{
    const std::size_t body = rest.find_first_not_of(U'/');
    const std::size_t size = body == rest.npos ? rest.size() : rest.find(U'/', body);
    const std::u32string_view segment = rest.substr(0, size);
    rest.remove_prefix(segment.size());
    return segment;
}

} // namespace foundation::network::iri::grammar
