#!/usr/bin/env python3
"""Runs coverage.py on invented lines."""

import unittest

import coverage

FILES = {"src/a.cpp": [(1, 5, [1, 0]), (2, 0, []), (3, 0, [0, 0])]}
TEXTS = {"src/a.cpp": ["if (x)", "    return 1;", "return 2;"]}


class CoverageTest(unittest.TestCase):
    def test_counts_lines_and_branches(self):
        self.assertEqual(coverage.parts(FILES["src/a.cpp"]), (3, 1, 4, 1))
        self.assertEqual(coverage.percent(1, 4), 25.0)
        self.assertEqual(coverage.percent(0, 0), 100.0)

    def test_wants_a_reason_for_each_unreached_line(self):
        self.assertEqual(coverage.judge(FILES, TEXTS, [("src/a.cpp", "return 1;")]),
                         ([("src/a.cpp", 3, "return 2;")], []))

    def test_wants_no_reason_for_what_is_reached(self):
        excuses = [("src/a.cpp", text) for text in ("if (x)", "return 1;", "return 2;")]
        self.assertEqual(coverage.judge(FILES, TEXTS, excuses), ([], [("src/a.cpp", "if (x)")]))

    def test_reads_the_list(self):
        self.assertEqual(
            coverage.excused("# Why.\nsrc/a.cpp:   return 1;\n\nsrc/b.cpp: x::y();\n"),
            ([("src/a.cpp", "return 1;"), ("src/b.cpp", "x::y();")], ["src/b.cpp: x::y();"]))


if __name__ == "__main__":
    unittest.main()
