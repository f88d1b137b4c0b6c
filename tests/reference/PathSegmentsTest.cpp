#include "reference/PathSegments.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace foundation::network::reference {

namespace {

    std::string shown(const Segments& segments)
    {
        std::string result = "[";
        for (const std::string_view segment : segments)
            result.append(" \"").append(segment) += '"';
        return result + " ]";
    }

    struct Removal {
        Segments segments;
        Segments result;
    };

    const Removal removals[] = {
        {{}, {}},
        {{"/a"}, {"/a"}},

        // Rule A: "." or ".." in front of others takes the slash behind it along.
        {{".", "/a"}, {"a"}},
        {{"..", "/a"}, {"a"}},
        {{"..", "/..", "/a"}, {"a"}}, // the second one has lost its slash, and is rule A too
        {{".", "/.", "/a", "/b"}, {"a", "/b"}},
        {{"/x", "..", "/a"}, {"/x", "a"}}, // it does not climb
        {{".", "/"}, {""}},                // the empty one that joining skips
        {{"..", "/", "/a"}, {"", "/a"}},

        // Rule B: "/." gives way to what follows, or leaves its slash.
        {{"/."}, {"/"}},
        {{"/.", "/a"}, {"/a"}},
        {{"/x", "/."}, {"/x", "/"}},
        {{"/x", "/.", "/."}, {"/x", "/"}},
        {{"/a", "/.", "/"}, {"/a", "/"}},

        // Rule C: "/.." also takes the last one of those that stay.
        {{"/a", "/.."}, {"/"}},
        {{"/a", "/b", "/.."}, {"/a", "/"}},
        {{"/a", "/..", "/b"}, {"/b"}},
        {{"/x", "/y", "/..", "/a"}, {"/x", "/a"}},
        {{"/x", "/.."}, {"/"}},
        {{"a", "/..", "/b"}, {"/b"}}, // what remains has a slash that it had not

        // Climbing above the top does nothing.
        {{"/.."}, {"/"}},
        {{"/..", "/a"}, {"/a"}},
        {{"/..", "/..", "/a"}, {"/a"}},
        {{"/a", "/..", "/..", "/.."}, {"/"}},

        // Rule D: alone they vanish.
        {{"."}, {}},
        {{".."}, {}},
        {{"/x", ".."}, {"/x"}},

        // Rule E: everything else stays, also what only looks alike.
        {{"a", "/b", "/"}, {"a", "/b", "/"}},
        {{"//a", "/b"}, {"//a", "/b"}},
        {{"/...", "/.a", "/a..", "/..a"}, {"/...", "/.a", "/a..", "/..a"}},
        {{"//.", "/a"}, {"//.", "/a"}},
        {{"//..", "/.."}, {"/"}},
        {{"./", "/a"}, {"./", "/a"}},
        {{"a/.."}, {"a/.."}}, // one segment, whatever is in it
    };

    struct Merge {
        const char* path;
        Segments segments;
        bool absolute;
        Segments result;
    };

    // Without the removal of dot segments.
    const Merge plainMerges[] = {
        {"a", {}, false, {"a"}},
        {"", {}, false, {""}},
        {"/a/b", {}, true, {"/a/b"}},
        {"a", {"/x"}, false, {"/x", "/", "a"}},
        {"a/../b", {"/x"}, true, {"/x", "/", "a/../b"}},
        {"a", {"/x", "/"}, false, {"/x", "/", "a"}},
        {"a", {"/"}, false, {"/", "a"}},
        {"/a", {"/x"}, false, {"/x", "/a"}},
        {"", {"/x"}, false, {"/x", ""}},
        {"a", {"x"}, true, {"x", "/", "a"}}, // rooted or not is not looked at
    };

    const Merge merges[] = {
        // 1: nothing to climb from
        {".", {}, false, {}},
        {"..", {}, false, {}},
        {"./", {}, false, {}},
        {"../", {}, false, {}},
        {".", {}, true, {}},
        {"..", {}, true, {}},
        {"./", {}, true, {}},
        {"../", {}, true, {}},

        // 2: the root stays the root
        {".", {"/"}, false, {"/"}},
        {"..", {"/"}, true, {"/"}},
        {"./", {"/"}, true, {"/"}},
        {"../", {"/"}, false, {"/"}},

        // 3: a slash at the end
        {".", {"/a"}, true, {"/a", "/"}},
        {"./", {"/a"}, true, {"/a", "/"}},
        {".", {"/a", "/"}, true, {"/a", "/"}},
        {"./", {"a"}, false, {"a", "/"}},
        {".", {"a"}, true, {"a", "/"}}, // rooted or not is not looked at

        // 4: one up, with a slash at the end
        {"..", {"/a"}, true, {"/"}},
        {"../", {"/a"}, true, {"/"}},
        {"..", {"/a", "/b"}, true, {"/a", "/"}},
        {"../", {"/a", "/b", "/"}, true, {"/a", "/"}},
        {"..", {"/a", "/"}, true, {"/"}},
        {"..", {"a"}, false, {"/"}}, // the slash is there although the list was relative
        {"..", {"a", "/b"}, false, {"a", "/"}},
        {"../", {"a", "/"}, false, {"/"}},

        // 5, 9: what was relative stays so, if it need not be rooted
        {"a/../b", {}, false, {"b"}},
        {"a/../b", {"c"}, false, {"c", "/b"}},
        {"../a", {"c"}, false, {"a"}},
        {"../../a", {"c", "/d"}, false, {"a"}},
        {"../a", {"/c"}, false, {"/a"}}, // the list was rooted: nothing is stripped
        {"a/..", {}, false, {""}},       // the lone slash is stripped
        {"/a/../b", {}, false, {"b"}},   // so is one that stood in front of the path
        {"./a", {}, false, {"a"}},
        {"./a", {"c", "/d"}, false, {"c", "/d", "/a"}},

        // 6: a path that cannot be split adds nothing
        {"a//../b", {}, false, {}},
        {"a//../b", {}, true, {"/"}},
        {"a//../b", {"/c"}, true, {"/c"}},
        {"a//b/.", {"c", "/d"}, false, {"c", "/d"}},
        {"", {}, false, {}},
        {"", {}, true, {"/"}},
        {"", {"/c", "/.."}, true, {"/"}}, // the list itself loses its dots
        {"//", {"/c"}, true, {"/c"}},

        // 7: the slash between
        {"../a", {"/c", "/d"}, true, {"/c", "/a"}},
        {"../a", {"/c", "/"}, true, {"/c", "/", "a"}}, // ".." without its slash climbs nowhere
        {"a/../b", {"/"}, true, {"/", "/b"}},          // the root keeps its slash
        {"a/.", {"/"}, true, {"/", "a", "/"}},
        {"/../a", {"/c", "/d"}, true, {"/c", "/a"}},
        {"a/b", {"/c"}, true, {"/c", "/a", "/b"}},

        // 8: the removal over the whole
        {"a/./b/../c/", {"/x"}, true, {"/x", "/a", "/c", "/"}},
        {"../../../a", {"/x", "/y"}, true, {"/a"}},
        {"//a/../b", {}, true, {"/b"}},
        {"/..", {}, true, {"/"}},
        {"/.", {}, true, {"/"}},

        // 9: rooted
        {"a/../b", {}, true, {"/b"}},
        {"a/./b", {}, true, {"/", "a", "/b"}},
        {"../a", {"c"}, true, {"/a"}},
        {"./..", {}, true, {"/"}},
        {"./..", {}, false, {}},
        {"../a", {"c", "/d"}, true, {"/", "c", "/a"}},
    };

    struct Joining {
        Segments segments;
        const char* path;
    };

    const Joining joinings[] = {
        {{}, ""},
        {{""}, ""},
        {{"a"}, "a"},
        {{"/a", "/b", "/"}, "/a/b/"},
        {{"//a", "/b"}, "//a/b"},
        {{"", "/a", "", "/b", ""}, "/a/b"},
        {{"/", "a"}, "/a"},
    };

    struct Cleaning {
        const char* path;
        bool absolute;
        const char* result;
    };

    const Cleaning cleanings[] = {
        // No dot segments: a copy, whatever else is said.
        {"", false, ""},
        {"", true, ""},
        {"a/b", true, "a/b"},
        {"/a/b", false, "/a/b"},
        {"a//b", true, "a//b"},
        {".../a..", true, ".../a.."},
        {"a/./", false, "a/./"}, // the one form of dots that is not seen
        {"/./", true, "/./"},

        {".", false, ""},
        {"..", true, ""},
        {"./", true, ""},
        {"../", false, ""},
        {"/.", true, "/"},
        {"/..", true, "/"},
        {"/.", false, ""},
        {"/../a", true, "/a"},
        {"./a", false, "a"},
        {"./a", true, "/a"},
        {"../../a", false, "a"},
        {"a/..", true, "/"},
        {"a/..", false, ""},
        {"a/b/..", false, "a/"},
        {"/a/b/../c", true, "/a/c"},
        {"/a/b/../c", false, "a/c"},
        {"/a/b/.", true, "/a/b/"},
        {"/a/./b/./", true, "/a/b/"}, // seen for another's sake, all of them go
        {"a/../../b", false, "b"},

        // Empty segments: nothing is left, but for the root.
        {"/a//../b", true, "/"},
        {"a//../b", false, ""},
        {"//a/../b", true, "/b"},
    };

} // namespace

TEST(PathSegments, removesDotSegments)
{
    for (const Removal& row : removals) {
        SCOPED_TRACE(shown(row.segments));
        Segments segments = row.segments;
        removeDotSegments(segments);
        EXPECT_EQ(shown(segments), shown(row.result));
    }
}

TEST(PathSegments, appendsAPathAsOneSegmentIfDotsStay)
{
    for (const Merge& row : plainMerges) {
        SCOPED_TRACE(shown(row.segments) + " <- " + row.path);
        Segments segments = row.segments;
        std::string made;
        mergePathSegments(row.path, segments, row.absolute, false, made);
        EXPECT_EQ(shown(segments), shown(row.result));
    }
}

TEST(PathSegments, mergesAPathAndRemovesDots)
{
    for (const Merge& row : merges) {
        SCOPED_TRACE(shown(row.segments) + " <- " + row.path + (row.absolute ? ", rooted" : ""));
        Segments segments = row.segments;
        std::string made;
        mergePathSegments(row.path, segments, row.absolute, true, made);
        EXPECT_EQ(shown(segments), shown(row.result));
    }
}

TEST(PathSegments, joinsWhatIsNotEmpty)
{
    for (const Joining& row : joinings) {
        SCOPED_TRACE(shown(row.segments));
        EXPECT_EQ(joinPathSegments(row.segments), row.path);
    }
}

TEST(PathSegments, removesDotSegmentsFromAPath)
{
    for (const Cleaning& row : cleanings) {
        SCOPED_TRACE(std::string(row.path) + (row.absolute ? ", rooted" : ""));
        std::string made;
        EXPECT_EQ(removeRelativePathSegments(row.path, row.absolute, made), row.result);
    }
}

TEST(PathSegments, takesLinearTime)
{
    // Quadratic work on a million segments would not end while anybody waits.
    std::string path;
    for (int i = 0; i < 1'000'000; ++i)
        path += i % 2 == 0 ? "/a" : "/..";
    std::string made;
    EXPECT_EQ(removeRelativePathSegments(path, true, made), "/");
}

} // namespace foundation::network::reference
