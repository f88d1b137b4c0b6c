#include "reference/PathSegments.hpp"

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

namespace foundation::network::reference {

namespace {

    using Text = std::u32string;

    // Texts of the tables are ASCII.
    std::string narrow(const Text& text)
    {
        return {text.begin(), text.end()};
    }

    std::string shown(const Segments& segments)
    {
        std::string result = "[";
        for (const Text& segment : segments)
            result += " \"" + narrow(segment) + '"';
        return result + " ]";
    }

    struct Removal {
        Segments output;
        Segments input;
        Segments result;
    };

    const Removal removals[] = {
        {{}, {}, {}},
        {{U"/a"}, {}, {U"/a"}},

        // Rule A: "." or ".." in front of others takes the slash behind it along.
        {{}, {U".", U"/a"}, {U"a"}},
        {{}, {U"..", U"/a"}, {U"a"}},
        {{},
         {U"..", U"/..", U"/a"},
         {U"a"}}, // the second one has lost its slash, and is rule A too
        {{}, {U".", U"/.", U"/a", U"/b"}, {U"a", U"/b"}},
        {{U"/x"}, {U"..", U"/a"}, {U"/x", U"a"}}, // it does not climb
        {{}, {U".", U"/"}, {U""}},                // the empty one that joining skips
        {{}, {U"..", U"/", U"/a"}, {U"", U"/a"}},

        // Rule B: "/." gives way to what follows, or leaves its slash.
        {{}, {U"/."}, {U"/"}},
        {{}, {U"/.", U"/a"}, {U"/a"}},
        {{U"/x"}, {U"/."}, {U"/x", U"/"}},
        {{U"/x"}, {U"/.", U"/."}, {U"/x", U"/"}},
        {{}, {U"/a", U"/.", U"/"}, {U"/a", U"/"}},

        // Rule C: "/.." also takes the last one of the output.
        {{}, {U"/a", U"/.."}, {U"/"}},
        {{}, {U"/a", U"/b", U"/.."}, {U"/a", U"/"}},
        {{}, {U"/a", U"/..", U"/b"}, {U"/b"}},
        {{U"/x", U"/y"}, {U"/..", U"/a"}, {U"/x", U"/a"}},
        {{U"/x"}, {U"/.."}, {U"/"}},
        {{}, {U"a", U"/..", U"/b"}, {U"/b"}}, // what remains has a slash that it had not

        // Climbing above the top does nothing.
        {{}, {U"/.."}, {U"/"}},
        {{}, {U"/..", U"/a"}, {U"/a"}},
        {{}, {U"/..", U"/..", U"/a"}, {U"/a"}},
        {{}, {U"/a", U"/..", U"/..", U"/.."}, {U"/"}},

        // Rule D: alone they vanish.
        {{}, {U"."}, {}},
        {{}, {U".."}, {}},
        {{U"/x"}, {U".."}, {U"/x"}},

        // Rule E: everything else stays, also what only looks alike.
        {{}, {U"a", U"/b", U"/"}, {U"a", U"/b", U"/"}},
        {{}, {U"//a", U"/b"}, {U"//a", U"/b"}},
        {{}, {U"/...", U"/.a", U"/a..", U"/..a"}, {U"/...", U"/.a", U"/a..", U"/..a"}},
        {{}, {U"//.", U"/a"}, {U"//.", U"/a"}},
        {{}, {U"//..", U"/.."}, {U"/"}},
        {{}, {U"./", U"/a"}, {U"./", U"/a"}},
        {{}, {U"a/.."}, {U"a/.."}}, // one segment, whatever is in it
    };

    struct Merge {
        const char32_t* path;
        Segments segments;
        bool absolute;
        Segments result;
    };

    // Without the removal of dot segments.
    const Merge plainMerges[] = {
        {U"a", {}, false, {U"a"}},
        {U"", {}, false, {U""}},
        {U"/a/b", {}, true, {U"/a/b"}},
        {U"a", {U"/x"}, false, {U"/x", U"/", U"a"}},
        {U"a/../b", {U"/x"}, true, {U"/x", U"/", U"a/../b"}},
        {U"a", {U"/x", U"/"}, false, {U"/x", U"/", U"a"}},
        {U"a", {U"/"}, false, {U"/", U"a"}},
        {U"/a", {U"/x"}, false, {U"/x", U"/a"}},
        {U"", {U"/x"}, false, {U"/x", U""}},
        {U"a", {U"x"}, true, {U"x", U"/", U"a"}}, // rooted or not is not looked at
    };

    const Merge merges[] = {
        // 1: nothing to climb from
        {U".", {}, false, {}},
        {U"..", {}, false, {}},
        {U"./", {}, false, {}},
        {U"../", {}, false, {}},
        {U".", {}, true, {}},
        {U"..", {}, true, {}},
        {U"./", {}, true, {}},
        {U"../", {}, true, {}},

        // 2: the root stays the root
        {U".", {U"/"}, false, {U"/"}},
        {U"..", {U"/"}, true, {U"/"}},
        {U"./", {U"/"}, true, {U"/"}},
        {U"../", {U"/"}, false, {U"/"}},

        // 3: a slash at the end
        {U".", {U"/a"}, true, {U"/a", U"/"}},
        {U"./", {U"/a"}, true, {U"/a", U"/"}},
        {U".", {U"/a", U"/"}, true, {U"/a", U"/"}},
        {U"./", {U"a"}, false, {U"a", U"/"}},
        {U".", {U"a"}, true, {U"a", U"/"}}, // rooted or not is not looked at

        // 4: one up, with a slash at the end
        {U"..", {U"/a"}, true, {U"/"}},
        {U"../", {U"/a"}, true, {U"/"}},
        {U"..", {U"/a", U"/b"}, true, {U"/a", U"/"}},
        {U"../", {U"/a", U"/b", U"/"}, true, {U"/a", U"/"}},
        {U"..", {U"/a", U"/"}, true, {U"/"}},
        {U"..", {U"a"}, false, {U"/"}}, // the slash is there although the list was relative
        {U"..", {U"a", U"/b"}, false, {U"a", U"/"}},
        {U"../", {U"a", U"/"}, false, {U"/"}},

        // 5, 9: what was relative stays so, if it need not be rooted
        {U"a/../b", {}, false, {U"b"}},
        {U"a/../b", {U"c"}, false, {U"c", U"/b"}},
        {U"../a", {U"c"}, false, {U"a"}},
        {U"../../a", {U"c", U"/d"}, false, {U"a"}},
        {U"../a", {U"/c"}, false, {U"/a"}}, // the list was rooted: nothing is stripped
        {U"a/..", {}, false, {U""}},        // the lone slash is stripped
        {U"/a/../b", {}, false, {U"b"}},    // so is one that stood in front of the path
        {U"./a", {}, false, {U"a"}},
        {U"./a", {U"c", U"/d"}, false, {U"c", U"/d", U"/a"}},

        // 6: a path that cannot be split adds nothing
        {U"a//../b", {}, false, {}},
        {U"a//../b", {}, true, {U"/"}},
        {U"a//../b", {U"/c"}, true, {U"/c"}},
        {U"a//b/.", {U"c", U"/d"}, false, {U"c", U"/d"}},
        {U"", {}, false, {}},
        {U"", {}, true, {U"/"}},
        {U"", {U"/c", U"/.."}, true, {U"/"}}, // the list itself loses its dots
        {U"//", {U"/c"}, true, {U"/c"}},

        // 7: the slash between
        {U"../a", {U"/c", U"/d"}, true, {U"/c", U"/a"}},
        {U"../a",
         {U"/c", U"/"},
         true,
         {U"/c", U"/", U"a"}},                    // ".." without its slash climbs nowhere
        {U"a/../b", {U"/"}, true, {U"/", U"/b"}}, // the root keeps its slash
        {U"a/.", {U"/"}, true, {U"/", U"a", U"/"}},
        {U"/../a", {U"/c", U"/d"}, true, {U"/c", U"/a"}},
        {U"a/b", {U"/c"}, true, {U"/c", U"/a", U"/b"}},

        // 8: the removal over the whole
        {U"a/./b/../c/", {U"/x"}, true, {U"/x", U"/a", U"/c", U"/"}},
        {U"../../../a", {U"/x", U"/y"}, true, {U"/a"}},
        {U"//a/../b", {}, true, {U"/b"}},
        {U"/..", {}, true, {U"/"}},
        {U"/.", {}, true, {U"/"}},

        // 9: rooted
        {U"a/../b", {}, true, {U"/b"}},
        {U"a/./b", {}, true, {U"/a", U"/b"}},
        {U"../a", {U"c"}, true, {U"/a"}},
        {U"./..", {}, true, {U"/"}},
        {U"./..", {}, false, {}},
        {U"../a", {U"c", U"/d"}, true, {U"/c", U"/a"}},
    };

    struct Joining {
        Segments segments;
        const char32_t* path;
    };

    const Joining joinings[] = {
        {{}, U""},
        {{U""}, U""},
        {{U"a"}, U"a"},
        {{U"/a", U"/b", U"/"}, U"/a/b/"},
        {{U"//a", U"/b"}, U"//a/b"},
        {{U"", U"/a", U"", U"/b", U""}, U"/a/b"},
        {{U"/", U"a"}, U"/a"},
    };

    struct Cleaning {
        const char32_t* path;
        bool absolute;
        const char32_t* result;
    };

    const Cleaning cleanings[] = {
        // No dot segments: a copy, whatever else is said.
        {U"", false, U""},
        {U"", true, U""},
        {U"a/b", true, U"a/b"},
        {U"/a/b", false, U"/a/b"},
        {U"a//b", true, U"a//b"},
        {U".../a..", true, U".../a.."},
        {U"a/./", false, U"a/./"}, // the one form of dots that is not seen
        {U"/./", true, U"/./"},

        {U".", false, U""},
        {U"..", true, U""},
        {U"./", true, U""},
        {U"../", false, U""},
        {U"/.", true, U"/"},
        {U"/..", true, U"/"},
        {U"/.", false, U""},
        {U"/../a", true, U"/a"},
        {U"./a", false, U"a"},
        {U"./a", true, U"/a"},
        {U"../../a", false, U"a"},
        {U"a/..", true, U"/"},
        {U"a/..", false, U""},
        {U"a/b/..", false, U"a/"},
        {U"/a/b/../c", true, U"/a/c"},
        {U"/a/b/../c", false, U"a/c"},
        {U"/a/b/.", true, U"/a/b/"},
        {U"/a/./b/./", true, U"/a/b/"}, // seen for another's sake, all of them go
        {U"a/../../b", false, U"b"},

        // Empty segments: nothing is left, but for the root.
        {U"/a//../b", true, U"/"},
        {U"a//../b", false, U""},
        {U"//a/../b", true, U"/b"},
    };

} // namespace

TEST(PathSegments, removesDotSegments)
{
    for (const Removal& row : removals) {
        SCOPED_TRACE(shown(row.output) + " <- " + shown(row.input));
        Segments output = row.output;
        std::deque<Text> input(row.input.begin(), row.input.end());
        removeDotSegments(output, input);
        EXPECT_EQ(shown(output), shown(row.result));
        EXPECT_TRUE(input.empty());
    }
}

TEST(PathSegments, appendsAPathAsOneSegmentIfDotsStay)
{
    for (const Merge& row : plainMerges) {
        SCOPED_TRACE(shown(row.segments) + " <- " + narrow(row.path));
        Segments segments = row.segments;
        mergePathSegments(row.path, segments, row.absolute, false);
        EXPECT_EQ(shown(segments), shown(row.result));
    }
}

TEST(PathSegments, mergesAPathAndRemovesDots)
{
    for (const Merge& row : merges) {
        SCOPED_TRACE(shown(row.segments) + " <- " + narrow(row.path)
                     + (row.absolute ? ", rooted" : ""));
        Segments segments = row.segments;
        mergePathSegments(row.path, segments, row.absolute, true);
        EXPECT_EQ(shown(segments), shown(row.result));
    }
}

TEST(PathSegments, joinsWhatIsNotEmpty)
{
    for (const Joining& row : joinings) {
        SCOPED_TRACE(shown(row.segments));
        EXPECT_EQ(narrow(joinPathSegments(row.segments)), narrow(row.path));
    }
}

TEST(PathSegments, removesDotSegmentsFromAPath)
{
    for (const Cleaning& row : cleanings) {
        SCOPED_TRACE(narrow(row.path) + (row.absolute ? ", rooted" : ""));
        EXPECT_EQ(narrow(removeRelativePathSegments(row.path, row.absolute)), narrow(row.result));
    }
}

TEST(PathSegments, takesLinearTime)
{
    // Quadratic work on a million segments would not end while anybody waits.
    Text path;
    for (int i = 0; i < 1'000'000; ++i)
        path += i % 2 == 0 ? U"/a" : U"/..";
    EXPECT_EQ(narrow(removeRelativePathSegments(path, true)), "/");
}

} // namespace foundation::network::reference
