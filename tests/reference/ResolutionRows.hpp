#pragma once

#include "reference/Rows.hpp"

/// Whole results of resolving.
namespace foundation::network::tests {

// The base of all examples of RFC 3986, 5.4.
inline constexpr const char* rfcBase = "http://a/b/c/d;p?q";

struct Example {
    const char* reference;
    const char* target;
};

// RFC 3986, 5.4.1
inline constexpr Example normalExamples[] = {
    {"g:h", "g:h"},
    {"g", "http://a/b/c/g"},
    {"./g", "http://a/b/c/g"},
    {"g/", "http://a/b/c/g/"},
    {"/g", "http://a/g"},
    {"//g", "http://g"},
    {"?y", "http://a/b/c/d;p?y"},
    {"g?y", "http://a/b/c/g?y"},
    {"#s", "http://a/b/c/d;p?q#s"},
    {"g#s", "http://a/b/c/g#s"},
    {"g?y#s", "http://a/b/c/g?y#s"},
    {";x", "http://a/b/c/;x"},
    {"g;x", "http://a/b/c/g;x"},
    {"g;x?y#s", "http://a/b/c/g;x?y#s"},
    {"", "http://a/b/c/d;p?q"},
    {".", "http://a/b/c/"},
    {"./", "http://a/b/c/"},
    {"..", "http://a/b/"},
    {"../", "http://a/b/"},
    {"../g", "http://a/b/g"},
    {"../..", "http://a/"},
    {"../../", "http://a/"},
    {"../../g", "http://a/g"},
};

// RFC 3986, 5.4.2
inline constexpr Example abnormalExamples[] = {
    {"../../../g", "http://a/g"},
    {"../../../../g", "http://a/g"},
    {"/./g", "http://a/g"},
    {"/../g", "http://a/g"},
    {"g.", "http://a/b/c/g."},
    {".g", "http://a/b/c/.g"},
    {"g..", "http://a/b/c/g.."},
    {"..g", "http://a/b/c/..g"},
    {"./../g", "http://a/b/g"},
    {"./g/.", "http://a/b/c/g/"},
    {"g/./h", "http://a/b/c/g/h"},
    {"g/../h", "http://a/b/c/h"},
    {"g;x=1/./y", "http://a/b/c/g;x=1/y"},
    {"g;x=1/../y", "http://a/b/c/y"},
    {"g?y/./x", "http://a/b/c/g?y/./x"},
    {"g?y/../x", "http://a/b/c/g?y/../x"},
    {"g#s/./x", "http://a/b/c/g#s/./x"},
    {"g#s/../x", "http://a/b/c/g#s/../x"},
    {"http:g", "http:g"}, // the strict reading
};

inline constexpr Row resolutionRows[] = {
    // A reference without a path
    {"#f", "http://h/a?q#g", "http://h/a?q#f"},
    {"?y", "http://h", "http://h?y"},
    {"#", "http://h/a#g", "http://h/a#"},
    {"?", "http://h/a?q", "http://h/a?"},
    {"#f", "http://h/a/../b?q", "http://h/a/../b?q#f"}, // the base keeps its dots
    {"?y", "..", "..?y"},
    {"#f", "a:b", "a:b#f"},
    {"#f", "?q", "?q#f"},
    {"#f", "", "#f"},

    // A base with an authority and no path
    {"x", "http://h", "http://h/x"},
    {"../x", "http://h", "http://h/../x"},
    {".", "http://h", "http://h/."},
    {"x?y", "//h", "//h/x?y"},
    {"x", "http://u@h:80?q#f", "http://u@h:80/x"},

    // Dot segments that are not seen
    {"g/./", "http://a/b/c/d", "http://a/b/c/g/./"},
    {"g", "http://a/b/./", "http://a/b/./g"},
    {"/./", "http://a/b", "http://a/./"},

    // Dot segments of the base
    {"g", "http://a/b/../c/d", "http://a/c/g"},
    {"g", "http://a/b/..", "http://a/g"},
    {"g", "/a/./b", "/a/g"},
    {"g", "./a/b", "a/g"},
    {"?y", "/a/./b", "/a/./b?y"},

    // Paths that cannot be split
    {"/a//../b", "http://h/x", "http://h/"},
    {"a//../b", "http://h/c/d", "http://h/c"},
    {"../x", "/a//b", "/x"},
    {"x", "/a//b", "/a//x"}, // nothing to be removed, nothing to be split
    {"x//y", "/a/b", "/a/x//y"},

    // A scheme of its own: rooted or not as the base says
    {"foo:a/../b", "http://h/x", "foo:/b"},
    {"foo:a/../b", "c/d", "foo:b"},
    {"foo:a/b", "http://h/x", "foo:a/b"},
    {"foo:", "http://h/x?q#f", "foo:"},
    {"foo://g/../a", "bar:b", "foo://g/a"},
    {"foo:a?q#f", "http://u@h:1/x?y#z", "foo:a?q#f"},
    {"http:a", "http://h/b/c", "http:a"},

    // An authority of its own
    {"//x", "mailto:a", "mailto://x"},
    {"//x/a/../b?q#f", "http://u@h:80/y?z", "http://x/b?q#f"},
    {"//u@x:80", "h:a", "h://u@x:80"},
    {"//x", "a/b", "//x"},
    {"//", "http://h/a", "http://"},

    // Relative bases
    {"x", "c", "x"},
    {"../x", "c", "x"},
    {"..", "c", ""},
    {"..", "foo:", "foo:"},
    {"../", "c", ""},
    {"./", "foo:", "foo:"},
    {"../../a", "c/d", "a"},
    {"..", "c/d", "/"}, // rooted, though the base was not
    {".", "c/d", "c/"},
    {"g", "c/d", "c/g"},
    {"/g", "c/d", "/g"},
    {"x:y", "c/d", "x:y"},

    // Opaque bases
    {"g", "mailto:a", "mailto:g"},
    {"../g", "urn:a/b/c", "urn:a/g"},
    {"?q", "urn:a", "urn:a?q"},
    {"./a:b", "c", "a%3Ab"}, // would look like a scheme
    {"./a:b", "x:c", "x:a:b"},

    // Plain text is merged
    {"%2E%2E/x", "/c/d", "/c/../x"},
    {"a%2Fb", "/c/d", "/c/a/b"},
    {"x", "/a%2Fb", "/a/x"},
    {"%7Ea", "/b", "/~a"},
    {"é%C3%A9", "/ж/b", "/ж/éé"},
    {"/%zz", "/b", "/%zz"},
    {"/%2541", "/b", "/%2541"}, // protected, so that it does not become an "A"

    // The root keeps its slash
    {"a/../g", "http://h/x", "http://h//g"},
    {"g", "http://h/", "http://h/g"},
    {"..", "http://h/", "http://h/"},
    {"../g", "http://h/x", "http://h/g"},
};

} // namespace foundation::network::tests
