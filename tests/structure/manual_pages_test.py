#!/usr/bin/env python3
"""Tests how pages and headers are given to Doxygen: manual_pages_test.py ROOT"""

import pathlib
import sys
import unittest

ROOT = pathlib.Path(sys.argv.pop(1))
sys.path.insert(0, str(ROOT / "docs/manual"))
import header  # noqa: E402
import page  # noqa: E402

HERE = pathlib.Path("/docs/here.md")
KNOWN = {HERE, pathlib.Path("/docs/there.md")}


class PagesTest(unittest.TestCase):
    def test_lines(self):
        rows = [
            ("# Title", "# Title {#page-here}"),
            ("## Two `words`: here", "## Two `words`: here {#page-here-two-words-here}"),
            ("see [there](there.md).", "see [there](#page-there)."),
            ("[a](there.md#b-c) [d](#e)", "[a](#page-there-b-c) [d](#page-here-e)"),
            ("[code](../src/a.cpp)", "code"),
            ("![picture](a.svg)", "![picture](a.svg)"),
            ("[elsewhere](https://example.org/)", "[elsewhere](https://example.org/)"),
            ("`a` or `it's` or ``b'``", "`a` or ``it's`` or ``b'``"),
            ("```\n# no title\n```", "```\n# no title\n```"),
            ("## A\n## A", "## A {#page-here-a}\n## A {#page-here-a-1}"),
        ]
        for text, wanted in rows:
            with self.subTest(text):
                self.assertEqual(page.rewritten(text, HERE, KNOWN), wanted)

    def test_every_heading_that_a_page_links_to_is_there(self):
        for path in page.pages():
            text = path.read_text(encoding="utf-8")
            for match in page.LINK.finditer(text):
                file, _, heading = match[2].partition("#")
                if ":" in match[2] or not heading:
                    continue
                other = (path.parent / file).resolve() if file else path
                lines = other.read_text(encoding="utf-8").split("\n")
                found = [page.slug(line.lstrip("# ")) for line in lines if line.startswith("#")]
                self.assertIn(heading, found, f"{path}: {match[0]}")

    def test_every_file_that_a_page_links_to_is_there(self):
        for path in page.pages():
            for match in page.LINK.finditer(path.read_text(encoding="utf-8")):
                file = match[2].partition("#")[0]
                if file and ":" not in file:
                    self.assertTrue((path.parent / file).exists(), f"{path}: {match[0]}")


class HeadersTest(unittest.TestCase):
    def test_instantiations_go(self):
        text = "extern template class A<int>;\n  extern template void f(\n    int);\nint g();\n"
        self.assertEqual(header.without_instantiations(text), "\n\n\nint g();\n")

    def test_bases_lose_their_arguments(self):
        text = "class API X : public a::B<int> {\n  std::vector<int> b;\n"
        wanted = "class API X : public a::B {\n  std::vector<int> b;\n"
        self.assertEqual(header.without_instantiations(text), wanted)

    def test_each_member_of_a_group_gets_the_comment(self):
        text = ("    /// @{\n    /// Brief.\n    ///\n    /// @returns one\n    int a(int x,\n"
                "          int y); // why\n    int b();\n\n    int c();\n    /// @}\n    int d();\n")
        comment = "/** Brief. <p> @returns one */"
        wanted = ("\n    /// Brief.\n    ///\n    /// @returns one\n    int a(int x,\n"
                  f"          int y); // why\n{comment}    int b();\n\n{comment}    int c();\n\n"
                  "    int d();\n")
        self.assertEqual(header.without_groups(text), wanted)


if __name__ == "__main__":
    unittest.main()
