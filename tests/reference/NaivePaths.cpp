#include "reference/NaivePaths.hpp"

#include <algorithm>
#include <cstddef>
#include <initializer_list>

namespace foundation::network::tests {

using Text = std::u32string;

namespace {

    bool isOneOf(const Text& text, std::initializer_list<const char32_t*> candidates)
    {
        return std::any_of(candidates.begin(), candidates.end(),
                           [&](const char32_t* candidate) { return text == candidate; });
    }

    // RFC 3986, 5.2.4, on whole segments.
    NaiveSegments removeDots(NaiveSegments input)
    {
        NaiveSegments output;
        const auto popFront = [&input] { input.erase(input.begin()); };
        while (!input.empty()) {
            const Text front = input.front();
            const bool isLast = input.size() == 1;
            if (isOneOf(front, {U".", U".."})) {
                popFront();
                if (!isLast)
                    input.front().erase(0, 1);
            } else if (isOneOf(front, {U"/.", U"/.."})) {
                if (isLast)
                    input.front() = U"/";
                else
                    popFront();
                if (front == U"/.." && !output.empty())
                    output.pop_back();
            } else {
                output.push_back(front);
                popFront();
            }
        }
        return output;
    }

} // namespace

bool naiveHasDotSegments(const Text& path)
{
    for (const char32_t* whole : {U".", U"..", U"./", U"/."})
        if (path == whole)
            return true;
    if (path.substr(0, 2) == U"./" || path.substr(0, 3) == U"../")
        return true;
    if (path.find(U"/../") != Text::npos)
        return true;
    // "/./" needs a character behind it; the one that stands first has most behind it.
    const std::size_t single = path.find(U"/./");
    if (single != Text::npos && single + 3 < path.size())
        return true;
    const auto endsIn = [&path](const Text& end) {
        return path.size() >= end.size() && path.substr(path.size() - end.size()) == end;
    };
    return endsIn(U"/.") || endsIn(U"/..");
}

NaiveSegments naiveSplit(const Text& path)
{
    // An empty segment may only stand in front, and not alone.
    if (path.empty() || path == U"//" || path.find(U"//", 1) != Text::npos)
        return {};
    NaiveSegments segments;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const bool isSecondOfTwo = i == 1 && path[0] == U'/';
        if (i == 0 || (path[i] == U'/' && !isSecondOfTwo))
            segments.emplace_back();
        segments.back() += path[i];
    }
    return segments;
}

NaiveSegments naiveMerge(const Text& path, NaiveSegments segments, bool absolute)
{
    const bool isRoot = segments.size() == 1 && segments[0] == U"/";
    if ((segments.empty() || isRoot) && isOneOf(path, {U".", U"..", U"./", U"../"}))
        return segments;
    if (isOneOf(path, {U".", U"./"})) {
        if (segments.back() != U"/")
            segments.push_back(U"/");
        return segments;
    }
    if (isOneOf(path, {U"..", U"../"})) {
        if (segments.back() == U"/")
            segments.pop_back();
        segments.pop_back();
        segments.push_back(U"/");
        return segments;
    }

    const bool stripLeading = segments.empty() || !beginsWithSlash(segments[0]);
    NaiveSegments added = naiveSplit(path);
    const bool needsSlash =
        !segments.empty() && segments.back() != U"/" && !path.empty() && !beginsWithSlash(path);
    if (needsSlash && !added.empty())
        added[0].insert(0, U"/");
    segments.insert(segments.end(), added.begin(), added.end());
    segments = removeDots(segments);

    if (absolute) {
        if (segments.empty())
            segments.push_back(U"/");
        else if (!beginsWithSlash(segments[0]))
            segments[0].insert(0, U"/");
    } else if (stripLeading && !segments.empty() && beginsWithSlash(segments[0])) {
        segments[0].erase(0, 1);
    }
    return segments;
}

Text naiveWithoutDots(const Text& path, bool absolute)
{
    return naiveHasDotSegments(path) ? naiveJoin(naiveMerge(path, {}, absolute)) : path;
}

Text naiveJoin(const NaiveSegments& segments)
{
    Text path;
    for (const Text& segment : segments)
        path += segment;
    return path;
}

bool beginsWithSlash(const Text& text)
{
    return !text.empty() && text[0] == U'/';
}

} // namespace foundation::network::tests
