#include "iri/grammar/PathSegmentGrammar.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace foundation::network::iri::grammar {
namespace {

    using Segments = std::vector<std::string_view>;

    struct Splitting {
        std::string path;
        Segments segments; // none: the path cannot be split
    };
    const Splitting splittings[] = {
        {"a/b/c", {"a", "/b", "/c"}},
        {"/a/b", {"/a", "/b"}},
        {"//a/b", {"//a", "/b"}},
        {"a/b/", {"a", "/b", "/"}},
        {"/", {"/"}},
        {"a", {"a"}},
        {"/a", {"/a"}},
        {"//a", {"//a"}},
        {"a/", {"a", "/"}},
        {"/a/", {"/a", "/"}},
        {"//a/", {"//a", "/"}},
        {"../.", {"..", "/."}},
        {"/./../", {"/.", "/..", "/"}},
        {"a b?#[%2F\u00E9\U0010FFFF", {"a b?#[%2F\u00E9\U0010FFFF"}}, // any code point but "/"
        {"", {}},
        {"//", {}},
        {"///", {}},
        {"///a", {}},
        {"a//b", {}},
        {"a//", {}},
        {"/a//b", {}},
        {"//a//", {}},
        {"a/b//c", {}},
        {"a\xAF/\xAF\xFE", {"a\xAF", "/\xAF\xFE"}}, // only slashes count
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

    TEST(PathSegmentGrammar, appendsToWhatTheListHeld)
    {
        Segments segments = {"old", "/older"};
        EXPECT_TRUE(splitPathSegments("a/b", segments));
        EXPECT_EQ(segments, (Segments{"old", "/older", "a", "/b"}));
    }

    TEST(PathSegmentGrammar, leavesTheListAsItWasIfItFails)
    {
        const Segments before = {"old", "/older"};
        for (const char* path : {"", "//", "///a", "a//b", "a/b/c//"}) {
            SCOPED_TRACE(testing::PrintToString(std::string(path)));
            Segments segments = before;
            EXPECT_FALSE(splitPathSegments(path, segments));
            EXPECT_EQ(segments, before);
        }
    }

    // Slashes at the front that one segment may carry, then segments of one slash, then one more.
    bool isSplittable(const std::string& path)
    {
        if (path == "/")
            return true;
        const auto body = path.find_first_not_of('/');
        if (body == path.npos || body > 2)
            return false;
        return path.find("//", body) == path.npos;
    }

    TEST(PathSegmentGrammar, agreesWithANaiveReadingOnAllShortPaths)
    {
        constexpr std::string_view ALPHABET = "/a.";
        for (std::size_t length = 0, count = 1; length <= 9; ++length, count *= ALPHABET.size()) {
            for (std::size_t number = 0; number < count; ++number) {
                std::string path;
                for (std::size_t rest = number; path.size() < length; rest /= ALPHABET.size())
                    path += ALPHABET[rest % ALPHABET.size()];
                Segments segments;
                ASSERT_EQ(splitPathSegments(path, segments), isSplittable(path))
                    << testing::PrintToString(path);
                ASSERT_EQ(countPathSegments(path), segments.size()) << testing::PrintToString(path);
                if (segments.empty())
                    continue;
                // Together they are the path, and each but the first has one slash at its front.
                std::string joined;
                for (const std::string_view segment : segments)
                    joined += segment;
                ASSERT_EQ(joined, path);
                for (std::size_t i = 1; i < segments.size(); ++i)
                    ASSERT_EQ(segments[i].rfind('/'), 0U) << testing::PrintToString(path);
            }
        }
    }

} // namespace
} // namespace foundation::network::iri::grammar
