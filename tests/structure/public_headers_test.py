#!/usr/bin/env python3
"""Runs public_headers.py on invented headers: public_headers_test.py COMPILER [OPTION...]."""

import pathlib
import sys
import tempfile
import unittest

import public_headers

COMPILER = sys.argv[1:]


class PublicHeadersTest(unittest.TestCase):
    def complaints(self, text):
        with tempfile.TemporaryDirectory() as folder:
            (pathlib.Path(folder) / "a.hpp").write_text(text, encoding="utf-8")
            count, complaints = public_headers.check(COMPILER, folder)
        self.assertEqual(count, 1)
        return complaints

    def test_accepts_a_header_that_stands_by_itself(self):
        self.assertEqual(self.complaints("#pragma once\n#include <string>\nstd::string f();\n"), [])

    def test_refuses_a_header_that_needs_another_one_first(self):
        self.assertEqual(len(self.complaints("#pragma once\nstd::string f();\n")), 1)

    def test_leaves_out_a_header_for_a_library_that_is_not_there(self):
        with tempfile.TemporaryDirectory() as folder:
            text = "#pragma once\n#include <fmt/no-such-header.h>\n"
            (pathlib.Path(folder) / "a.hpp").write_text(text, encoding="utf-8")
            self.assertEqual(public_headers.check(COMPILER, folder), (0, []))

    def test_refuses_a_header_that_cannot_be_included_twice(self):
        self.assertEqual(len(self.complaints("struct S { };\n")), 1)

    def test_refuses_a_header_with_a_warning(self):
        self.assertEqual(len(self.complaints("#pragma once\ninline int f(int x) { int y; return x; }\n")), 1)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
