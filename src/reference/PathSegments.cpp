#include "reference/PathSegments.hpp"

#include "iri/DotSegments.hpp"
#include "iri/grammar/PathSegmentGrammar.hpp"

#include <cstddef>

namespace foundation::network::reference {

namespace {

    constexpr std::string_view SLASH = "/";

    bool beginsWithSlash(std::string_view text)
    {
        return text.starts_with('/');
    }

    bool isDot(std::string_view path)
    {
        return path == "." || path == "./";
    }

    bool isDoubleDot(std::string_view path)
    {
        return path == ".." || path == "../";
    }

    // Whether a "/" is missing between a list and a path that follows it.
    bool needsSlash(const Segments& segments, std::string_view path)
    {
        return !segments.empty() && segments.back() != SLASH && !path.empty()
               && !beginsWithSlash(path);
    }

    // A path that is a dot segment and nothing else. The list is not empty.
    void mergeDot(Segments& segments)
    {
        if (segments.back() != SLASH)
            segments.push_back(SLASH);
    }

    void mergeDoubleDot(Segments& segments)
    {
        if (segments.back() == SLASH)
            segments.pop_back();
        if (!segments.empty())
            segments.pop_back();
        segments.push_back(SLASH);
    }

    void mergeWithoutDots(std::string_view path, Segments& segments, bool absolute,
                          std::string& made)
    {
        // What was relative must not begin with the slash of a segment that has become the first.
        const bool stripLeading = segments.empty() || !beginsWithSlash(segments.front());

        if (needsSlash(segments, path))
            path = made.assign(SLASH).append(path);
        iri::grammar::splitPathSegments(path, segments); // a path that cannot be split adds nothing
        removeDotSegments(segments);

        const bool isRooted = !segments.empty() && beginsWithSlash(segments.front());
        if (absolute && !isRooted)
            segments.insert(segments.begin(), SLASH);
        else if (!absolute && stripLeading && isRooted)
            segments.front().remove_prefix(1);
    }

} // namespace

void mergePathSegments(std::string_view path, Segments& segments, bool absolute, bool removeDots,
                       std::string& made)
{
    if (!removeDots) {
        if (needsSlash(segments, path))
            segments.push_back(SLASH);
        segments.push_back(path);
        return;
    }
    if (isDot(path) || isDoubleDot(path)) {
        const bool isTop = segments.empty() || (segments.size() == 1 && segments[0] == SLASH);
        if (isTop) // nothing to climb from
            return;
        if (isDot(path))
            mergeDot(segments);
        else
            mergeDoubleDot(segments);
        return;
    }
    mergeWithoutDots(path, segments, absolute, made);
}

void removeDotSegments(Segments& segments) noexcept
{
    std::size_t kept = 0; // how many of those that have been looked at
    for (std::size_t i = 0; i < segments.size(); ++i) {
        std::string_view segment = segments[i];
        const bool isLast = i + 1 == segments.size();
        if (segment == "." || segment == "..") { // rules A and D of RFC 3986, 5.2.4
            if (!isLast)
                segments[i + 1].remove_prefix(1); // its slash
            continue;
        }
        if (segment == "/." || segment == "/..") { // rules B and C
            if (segment == "/.." && kept > 0)
                --kept;
            if (!isLast)
                continue;
            segment = SLASH;
        }
        segments[kept++] = segment; // rule E
    }
    segments.resize(kept);
}

std::string joinPathSegments(const Segments& segments)
{
    std::size_t size = 0;
    for (const std::string_view segment : segments)
        size += segment.size();
    std::string path;
    path.reserve(size);
    for (const std::string_view segment : segments)
        path.append(segment);
    return path;
}

std::string_view removeRelativePathSegments(std::string_view path, bool absolute, std::string& made)
{
    if (!iri::hasDotSegments(path))
        return path;
    Segments segments;
    mergePathSegments(path, segments, absolute, true, made);
    return made = joinPathSegments(segments);
}

} // namespace foundation::network::reference
