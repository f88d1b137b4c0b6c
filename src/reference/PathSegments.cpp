#include "reference/PathSegments.hpp"

#include "iri/DotSegments.hpp"
#include "iri/grammar/PathSegmentGrammar.hpp"

#include <iterator>
#include <utility>

namespace foundation::network::reference {

namespace {

    constexpr std::string_view SLASH = "/";

    bool beginsWithSlash(std::string_view text)
    {
        return text.starts_with('/');
    }

    void prependSlash(std::string& segment)
    {
        segment.insert(segment.begin(), '/');
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
    template <class List>
    bool needsSlash(const List& segments, std::string_view path)
    {
        return !segments.empty() && segments.back() != SLASH && !path.empty()
               && !beginsWithSlash(path);
    }

    // A path that is a dot segment and nothing else. The list is not empty.
    void mergeDot(Segments& segments)
    {
        if (segments.back() != SLASH)
            segments.emplace_back(SLASH);
    }

    void mergeDoubleDot(Segments& segments)
    {
        if (segments.back() == SLASH)
            segments.pop_back();
        if (!segments.empty())
            segments.pop_back();
        segments.emplace_back(SLASH);
    }

    void mergeWithoutDots(std::string_view path, Segments& segments, bool absolute)
    {
        // What was relative must not begin with the slash of a segment that has become the first.
        const bool stripLeading = segments.empty() || !beginsWithSlash(segments.front());

        Segments added;
        iri::grammar::splitPathSegments(path, added); // a path that cannot be split adds nothing
        std::deque<std::string> input(std::move_iterator(segments.begin()),
                                      std::move_iterator(segments.end()));
        if (!added.empty() && needsSlash(input, path))
            prependSlash(added.front());
        input.insert(input.end(), std::move_iterator(added.begin()),
                     std::move_iterator(added.end()));
        segments.clear();
        removeDotSegments(segments, input);

        if (absolute) {
            if (segments.empty())
                segments.emplace_back(SLASH);
            else if (!beginsWithSlash(segments.front()))
                prependSlash(segments.front());
        } else if (stripLeading && !segments.empty() && beginsWithSlash(segments.front())) {
            segments.front().erase(0, 1);
        }
    }

} // namespace

void mergePathSegments(std::string_view path, Segments& segments, bool absolute, bool removeDots)
{
    if (!removeDots) {
        if (needsSlash(segments, path))
            segments.emplace_back(SLASH);
        segments.emplace_back(path);
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
    mergeWithoutDots(path, segments, absolute);
}

void removeDotSegments(Segments& output, std::deque<std::string>& input)
{
    while (!input.empty()) {
        std::string& front = input.front();
        const bool isLast = input.size() == 1;
        if (front == "." || front == "..") { // rules A and D of RFC 3986, 5.2.4
            input.pop_front();
            if (!isLast)
                input.front().erase(0, 1);
        } else if (front == "/." || front == "/..") { // rules B and C
            const bool climbs = front == "/..";
            if (isLast)
                front.resize(1); // the slash
            else
                input.pop_front();
            if (climbs && !output.empty())
                output.pop_back();
        } else { // rule E
            output.push_back(std::move(front));
            input.pop_front();
        }
    }
}

std::string joinPathSegments(const Segments& segments)
{
    std::string path;
    for (const std::string& segment : segments)
        path.append(segment);
    return path;
}

std::string removeRelativePathSegments(std::string_view path, bool absolute)
{
    std::string made;
    return std::string(withoutDotSegments(path, absolute, made));
}

std::string_view withoutDotSegments(std::string_view path, bool absolute, std::string& made)
{
    if (!iri::hasDotSegments(path))
        return path;
    Segments segments;
    mergePathSegments(path, segments, absolute, true);
    made = joinPathSegments(segments);
    return made;
}

} // namespace foundation::network::reference
