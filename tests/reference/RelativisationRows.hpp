#pragma once

#include "reference/Rows.hpp"

/// Whole results of relativising.
namespace foundation::network::tests {

inline constexpr Row relativisationRows[] = {
    // The same resource
    {"http://h/a", "http://h/a", ""},
    {"http://h/a#f", "http://h/a#g", "#f"},
    {"http://h/a", "http://h/a#g", ""},
    {"a", "a", ""},
    {"", "", ""},
    {"?q#f", "?q", "#f"},
    {"#f", "", "#f"},
    {"mailto:a#", "mailto:a", "#"},

    // The same once its escapes are undone, delimiters or not
    {"http://h/%61?b", "http://h/a?%62", ""},
    {"http://h/a%3Fq", "http://h/a?q", ""},
    {"http://h/%C3%A9#f", "http://h/é", "#f"},
    {"http://h/%C3?%A9", "http://h/%c3?%a9", ""}, // no character reaches across the "?"
    {"//%75@h/a", "//u@h/b", "a"},
    {"//%C3@%A9/a", "//%c3@%a9/b", "a"},

    // Another scheme, or none
    {"http://h/a", "ftp://h/a", "http://h/a"},
    {"http://h/a", "/a", "http://h/a"},
    {"http://h/a", "", "http://h/a"},
    {"http://u@h:080?q#f", "ftp:/x", "http://u@h:080?q#f"},
    {"x:", "y:", "x:"},
    {"x:?q", "y:a", "x:?q"},

    // Another authority, or none
    {"http://h1/a", "http://h2/a", "//h1/a"},
    {"http://h1", "http://h2", "//h1"},
    {"http://h1?q", "http://h2?q", "//h1?q"},
    {"http://h/a", "http:/a", "//h/a"},
    {"http://h", "http:", "//h"},
    {"http:/a", "http://h/a", "http:/a"},
    {"http:", "http://h", "http:"},
    {"http:?q#f", "http://h", "http:?q#f"},
    {"//h/a", "/b", "//h/a"},
    {"//h", "", "//h"},
    {"//h1/a", "//h2/b", "//h1/a"},
    {"//u@h/a", "//h/a", "//u@h/a"},
    {"//h/a", "//h:80/a", "//h/a"},

    // The same path
    {"http://h/a?q", "http://h/a", "?q"},
    {"http://h/a?q", "http://h/a?r", "?q"},
    {"http://h/a", "http://h/a?q", "./a"},
    {"http://h/a#f", "http://h/a?q", "./a#f"},
    {"http://h/a/", "http://h/a/?q", "."},
    {"http://h/a/b", "http://h/a/b?q", "./b"},
    {"http://h/", "http://h/?q", "."},
    {"a", "a?q", "./a"},
    {"a/b", "a/b?q", "./b"},
    {"mailto:a", "mailto:a?q", "./a"},

    {"http://h/a/../b%41", "http://h/b%41", ""}, // without their dot segments

    // The same query
    {"http://h/a?q", "http://h/b?q", "a?q"},
    {"http://h/a?q#f", "http://h/b?q", "a?q#f"},

    // An empty path
    {"http://h", "http://h/a", "//h"},
    {"http://h?q", "http://h", "?q"},
    {"http://h?q", "http://h?r", "?q"},
    {"http://h", "http://h?q", "//h"},
    {"http://h?q", "http://h/a?q", "//h"}, // equal queries are left out, and here it shows
    {"http://h?q", "http://h/a?r", "//h?q"},
    {"http://h?q", "http://h/a", "//h?q"},
    {"http://u@h:80", "http://u@h:80/a", "//u@h:80"},
    {"//h", "//h/a", "//h"},
    {"//h", "//h?q", "//h"},
    {"http:", "http:/a", "http:"},
    {"http:", "http:?q", "http:"},
    {"http:?q", "http:a?q", "http:"},
    {"http:#f", "http:a", "http:#f"},
    {"?q", "", "?q"},
    {"?q", "?r", "?q"},

    // A base with an empty path
    {"http://h/a", "http://h", "/a"},
    {"http://h/a/../b", "http://h", "/a/../b"},
    {"http://h/a?q", "http://h?q", "/a?q"},
    {"a", "", "a"},
    {"/a", "", "/a"},
    {"/a", "?q", "/a"},
    {"mailto:a", "mailto:", "a"},
    {"mailto:a:b", "mailto:", "a%3Ab"}, // would look like a scheme

    // Relative paths, and others that are not rooted
    {"mailto:a", "mailto:b", "../a"},
    {"b/c", "a", "../b/c"},
    {"a/b", "a/c", "b"},
    {"a/b/c", "a/b/d/e", "../c"},
    {"a/b", "a", "../a/b"},
    {"a", "a/b", "../a"},
};

/// The paths of two IRIs that agree in all the rest.
struct PathRow {
    const char* prefix;
    const char* base;
    const char* path;
    const char* result;
    const char* back; ///< the path to which the result leads back, where it is not the first one
};

inline constexpr PathRow pathRows[] = {
    {"x://h", "/a/b/c", "/a/b/d", "d", nullptr},
    {"x://h", "/a/b", "/a/b/c/d", "b/c/d", nullptr},
    {"x://h", "/a/b/", "/a/b/c", "c", nullptr},
    {"x://h", "/a/b/", "/a/b", "../b", nullptr},
    {"x://h", "/a/b", "/a/b/", "b/", nullptr},
    {"x://h", "/a/b", "/a/", "./", nullptr},
    {"x://h", "/a", "/b", "b", nullptr},
    {"x://h", "/", "/b", "b", nullptr},
    {"x://h", "/a", "/", "", "/a"},
    {"x://h", "/a/b/c", "/a/x", "../x", nullptr},
    {"x://h", "/a/b/c/d", "/a/x", "../x", "/a/b/x"}, // one step short
    {"x://h", "/a/b/c/d/e", "/a/x", "../../x", "/a/b/x"},
    {"x://h", "/a/b/c/", "/a/x", "../../x", nullptr},
    {"x://h", "/a/b/c", "/x/y", "../../x/y", nullptr},
    {"x://h", "/a/b", "/x/y", "../x/y", nullptr},
    {"x://h", "/a/b/../c", "/a/d", "d", nullptr},
    {"x://h", "/a//b", "/a/c", "/a/c", nullptr}, // the base cannot be split
    {"", "a", "b/c", "../b/c", nullptr},         // climbing past the top

    {"x:", "/a/b/c", "/a/b/d", "d", nullptr},
    {"", "/a/b/c", "/a/b/d", "d", nullptr},
    {"//h", "/a/b/c", "/x", "../../x", nullptr},
    {"x://h", "/", "/a/b", "a/b", nullptr},
    {"x://h", "/a", "/a/b", "a/b", nullptr},
    {"x://h", "/a", "/a/", "a/", nullptr},
    {"x://h", "/a/", "/a", "../a", nullptr},
    {"x://h", "/a/b", "/a", "../a", nullptr},
    {"x://h", "/a/b/c", "/a/", "../", nullptr},
    {"x://h", "/a/b", "/", "../", nullptr},
    {"x://h", "/a/", "/", "../", nullptr},
    {"x://h", "/a/b/c/d/", "/a/x", "../../../x", nullptr},
    {"x://h", "/a/b/../c/d", "/a/c/e/.", "e/", "/a/c/e/"}, // dots do not come back

    // Paths that cannot be split
    {"x://h", "/a/b", "/a//b", "../a//b", "/a"},
    {"x://h", "/a", "/b//c", "../b//c", "/"},
    {"x://h", "//a/b", "//a/c", "c", nullptr},
    {"x://h", "/a//b/../c", "/d", "d", nullptr},
    {"x://h", "//", "/a", "/a", nullptr},

    // Dots
    {"", "./", "a", "a", nullptr},
    {"", "a", "./", "../", ""},
    {"x://h", "/a/./", "/a/b", "../b", "/b"}, // not seen as a dot segment
    {"x://h", "/a/b", "/a/./", "./", "/a/"},
};

/// Refusals, and the text of each. Rows of one kind stand in the order in which they are looked
/// for; where several would fit, the first is given.
inline constexpr const char* alreadyRelative = "Cannot make relative to base. Already relative";
inline constexpr const char* baseIsRelative = "Cannot make relative. Base is relative";
inline constexpr const char* baseHasScheme =
    "Cannot make relative to base as base has scheme but this does not";
inline constexpr const char* baseHasAuthority =
    "Cannot make relative to base as base has authority but this does not";
inline constexpr const char* baseHasPath =
    "Cannot make relative to base as base has path but this does not";
inline constexpr const char* baseHasQuery =
    "Cannot make relative to base as base has query but this does not";

inline constexpr Row refusals[] = {
    {"a/b", "http://h/c", alreadyRelative}, // no scheme and no authority either
    {"a", "/b", alreadyRelative},
    {"a", "//h/", alreadyRelative},
    {"x:a", "y:/b", alreadyRelative}, // before the schemes are compared
    {"x:a", "x:/b", alreadyRelative},
    {"..", "/..", alreadyRelative},

    {"/a", "b", baseIsRelative},
    {"/a", "x:b", baseIsRelative}, // and has a scheme
    {"x:/a", "y:b", baseIsRelative},
    {"//h/a", "b?q", baseIsRelative},

    {"/a", "http://h/b", baseHasScheme}, // and an authority
    {"/a", "x:/a", baseHasScheme},
    {"//h/a", "x://h/a", baseHasScheme},
    {"", "x:", baseHasScheme},
    {"", "x://h/a?q", baseHasScheme}, // and all the rest
    {"a", "x:b", baseHasScheme},
    {"a", "http://h", baseHasScheme},

    {"/a", "//h/b", baseHasAuthority},
    {"a", "//h", baseHasAuthority},
    {"", "//h/a?q", baseHasAuthority}, // and a path and a query
    {"?q", "//h?q", baseHasAuthority},

    {"", "/a", baseHasPath},
    {"", "a", baseHasPath},
    {"", "/a?q", baseHasPath}, // and a query
    {"?q", "/a?q", baseHasPath},
    {"#f", "a", baseHasPath},

    {"", "?q", baseHasQuery},
    {"#f", "?q", baseHasQuery},
};

} // namespace foundation::network::tests
