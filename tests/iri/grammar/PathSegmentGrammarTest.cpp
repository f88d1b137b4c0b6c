#include "iri/grammar/PathSegmentGrammar.hpp"

#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <vector>

namespace foundation::network::iri::grammar {
namespace {

    using Segments = std::vector<std::u32string>;

    struct Splitting {
        std::u32string path;
        Segments segments; // none: the path cannot be split
    };
    const Splitting splittings[] = {
        {U"a/b/c", {U"a", U"/b", U"/c"}},
        {U"/a/b", {U"/a", U"/b"}},
        {U"//a/b", {U"//a", U"/b"}},
        {U"a/b/", {U"a", U"/b", U"/"}},
        {U"/", {U"/"}},
        {U"a", {U"a"}},
        {U"/a", {U"/a"}},
        {U"//a", {U"//a"}},
        {U"a/", {U"a", U"/"}},
        {U"/a/", {U"/a", U"/"}},
        {U"//a/", {U"//a", U"/"}},
        {U"../.", {U"..", U"/."}},
        {U"/./../", {U"/.", U"/..", U"/"}},
        {U"a b?#[%2F\u00E9\U0010FFFF", {U"a b?#[%2F\u00E9\U0010FFFF"}}, // any code point but "/"
        {U"", {}},
        {U"//", {}},
        {U"///", {}},
        {U"///a", {}},
        {U"a//b", {}},
        {U"a//", {}},
        {U"/a//b", {}},
        {U"//a//", {}},
        {U"a/b//c", {}},
        {{U'a', 0x110000}, {{U'a', 0x110000}}}, // only slashes count
    };

    TEST(PathSegmentGrammar, splitsAPath)
    {
        for (const Splitting& row : splittings) {
            SCOPED_TRACE(testing::PrintToString(row.path));
            Segments segments;
            EXPECT_EQ(splitPathSegments(row.path, segments), !row.segments.empty());
            EXPECT_EQ(segments, row.segments);
            EXPECT_EQ(countPathSegments(row.path), row.segments.size());
        }
    }

    TEST(PathSegmentGrammar, replacesWhatTheListHeld)
    {
        Segments segments = {U"old", U"/older"};
        EXPECT_TRUE(splitPathSegments(U"a/b", segments));
        EXPECT_EQ(segments, (Segments{U"a", U"/b"}));
    }

    TEST(PathSegmentGrammar, leavesTheListAsItWasIfItFails)
    {
        const Segments before = {U"old", U"/older"};
        for (const char32_t* path : {U"", U"//", U"///a", U"a//b", U"a/b/c//"}) {
            SCOPED_TRACE(testing::PrintToString(std::u32string(path)));
            Segments segments = before;
            EXPECT_FALSE(splitPathSegments(path, segments));
            EXPECT_EQ(segments, before);
        }
    }

    // Slashes at the front that one segment may carry, then segments of one slash, then one more.
    bool isSplittable(const std::u32string& path)
    {
        if (path == U"/")
            return true;
        const auto body = path.find_first_not_of(U'/');
        if (body == path.npos || body > 2)
            return false;
        return path.find(U"//", body) == path.npos;
    }

    TEST(PathSegmentGrammar, agreesWithANaiveReadingOnAllShortPaths)
    {
        constexpr std::u32string_view ALPHABET = U"/a.";
        for (std::size_t length = 0, count = 1; length <= 9; ++length, count *= ALPHABET.size()) {
            for (std::size_t number = 0; number < count; ++number) {
                std::u32string path;
                for (std::size_t rest = number; path.size() < length; rest /= ALPHABET.size())
                    path += ALPHABET[rest % ALPHABET.size()];
                Segments segments;
                ASSERT_EQ(splitPathSegments(path, segments), isSplittable(path))
                    << testing::PrintToString(path);
                ASSERT_EQ(countPathSegments(path), segments.size()) << testing::PrintToString(path);
                if (segments.empty())
                    continue;
                // Together they are the path, and each but the first has one slash at its front.
                ASSERT_EQ(std::accumulate(segments.begin(), segments.end(), std::u32string()),
                          path);
                for (std::size_t i = 1; i < segments.size(); ++i)
                    ASSERT_EQ(segments[i].rfind(U'/'), 0U) << testing::PrintToString(path);
            }
        }
    }

} // namespace
} // namespace foundation::network::iri::grammar
