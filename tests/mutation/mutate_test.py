#!/usr/bin/env python3
"""Runs mutate.py on lines of code."""

import unittest

import mutate


class MutateTest(unittest.TestCase):
    def test_breaks_lines_in_every_way(self):
        for line, expected in [
            ("    if (a < b && !c)", {"    if (a <= b && !c)", "    if (a < b || !c)",
                                      "    if (a < b && c)", "    if (!(a < b && !c))"}),
            ("    size += 3U;", {"    size -= 3U;", "    size += 4U;", "    size += 2U;",
                                 "    ;"}),
            ("    return x == 0xFF;", {"    return x != 0xFF;", "    return x == 0x100;",
                                       "    return x == 0xfe;", "    return {};"}),
            ("    f(true, x.first);", {"    f(false, x.first);", "    f(true, x.second);",
                                       "    ;"}),
            ("    ++i;", {"    --i;", "    ;"}),
            ("        break;", {"        ;"}),
            ("    return false;", {"    return true;"}),
            ("    result += '-';", {"    result -= '-';", "    ;"}),
        ]:
            with self.subTest(line):
                self.assertEqual(set(mutate.broken(line)), expected)

    def test_leaves_alone_what_is_no_code(self):
        for line in [
            "", "    // a < b && c", "#include <a/b.hpp>", "namespace a::b {", "}", "template <int N>",
            "using A = B<1>;", "static_assert(a == b);", "    bool operator<(const A&) const;",
            '        "a < b && true",', "    return {};", "    return nullptr;",
        ]:
            with self.subTest(line):
                self.assertEqual(mutate.broken(line), [])

    def test_names_a_break_by_both_lines(self):
        mutant = mutate.Mutant("src/a.cpp", 6, "    a();", "    ;")
        self.assertEqual(mutant.excuse(), "src/a.cpp: a(); => ;")
        self.assertEqual(str(mutant), "src/a.cpp:7\n    - a();\n    + ;")


if __name__ == "__main__":
    unittest.main()
