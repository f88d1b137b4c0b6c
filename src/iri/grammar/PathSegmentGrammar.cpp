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

} // namespace

// path = ( segment-body / slash-segment / terminal-slash / double-slash-segment )
//        *slash-segment [ terminal-slash ]
bool splitPathSegments(std::u32string_view path, std::vector<std::u32string>& segments)
{
    Cursor at(path.begin(), path.end());
    std::vector<std::u32string> found;
    It start = at.position();
    const auto keep = [&] {
        found.emplace_back(start, at.position());
        start = at.position();
    };

    if (!segmentBody(at) && !slashSegment(at) && !terminalSlash(at) && !doubleSlashSegment(at))
        return false;
    keep();
    while (slashSegment(at))
        keep();
    if (terminalSlash(at))
        keep();
    if (!at.atEnd())
        return false;

    segments = std::move(found);
    return true;
}

} // namespace foundation::network::iri::grammar
