#include "iri/grammar/PathSegmentGrammar.hpp"

#include "iri/grammar/Cursor.hpp"

namespace foundation::network::iri::grammar {

namespace {

    // Bytes will do: those of a slash are no part of anything else.
    using It = std::string_view::const_iterator;

    bool takeSlash(Cursor<It>& at)
    {
        return at.takeIf([](char c) { return c == '/'; });
    }

    // segment-body = 1*( anything but "/" )
    bool segmentBody(Cursor<It>& at)
    {
        const auto isMember = [](char c) { return c != '/'; };
        if (!at.is(isMember))
            return false;
        at.skipWhile(isMember);
        return true;
    }

    // slash-segment = "/" segment-body
    bool slashSegment(Cursor<It>& at)
    {
        const It start = at.position();
        if (takeSlash(at) && segmentBody(at))
            return true;
        at.reset(start);
        return false;
    }

    // terminal-slash = "/" end-of-input
    bool terminalSlash(Cursor<It>& at)
    {
        const It start = at.position();
        if (takeSlash(at) && at.atEnd())
            return true;
        at.reset(start);
        return false;
    }

    // double-slash-segment = "/" "/" segment-body
    bool doubleSlashSegment(Cursor<It>& at)
    {
        const It start = at.position();
        if (takeSlash(at) && slashSegment(at))
            return true;
        at.reset(start);
        return false;
    }

    // path = ( segment-body / slash-segment / terminal-slash / double-slash-segment )
    //        *slash-segment [ terminal-slash ]
    bool path(Cursor<It>& at, std::vector<std::string_view>& segments)
    {
        It start = at.position();
        const auto keepSegment = [&] {
            segments.emplace_back(start, at.position());
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

bool splitPathSegments(std::string_view text, std::vector<std::string_view>& segments)
{
    const std::size_t count = countPathSegments(text);
    if (count == 0)
        return false;
    segments.reserve(segments.size() + count); // a list can be many times as large as its path
    Cursor at(text.begin(), text.end());
    return path(at, segments);
}

std::size_t countPathSegments(std::string_view text) noexcept
{
    // The first segment may begin with two slashes, and a slash may stand alone. Behind that each
    // slash begins a segment, and no two of them stand together.
    const std::size_t body = text.find_first_not_of('/');
    if (body == text.npos)
        return text.size() == 1 ? 1 : 0;
    if (body > 2)
        return 0;
    std::size_t count = 1;
    for (std::size_t at = text.find('/', body); at != text.npos; at = text.find('/', at + 1)) {
        if (text[at - 1] == '/')
            return 0;
        ++count;
    }
    return count;
}

} // namespace foundation::network::iri::grammar
