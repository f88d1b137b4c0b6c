#!/usr/bin/env python3
"""Runs includes.py on small invented trees, so that it is known to find what it looks for."""

import pathlib
import tempfile
import unittest

import includes

PAGE = """
| Path | Duty | May include |
|---|---|---|
| `include/api.hpp` | macros | |
| `include` | headers | `include/api.hpp` |
| `src/text` | text | `include/api.hpp` |
| `src/iri` | values | `src/text`, `include` |
| `src/address` | To come: addresses | `src/text` |
| `tests` | tests | `src/iri` |

| Headers | Only in |
|---|---|
| `unicode/` | `src/text` |
| `boost/spirit` | `tests` |
| `unistd.h` | nowhere |
"""

CLEAN = {
    "docs/architecture.md": PAGE,
    "include/api.hpp": "#pragma once\n",
    "include/iri.hpp": "#include <api.hpp>\n#include <string>\n",
    "src/text/utf.hpp": "#include <api.hpp>\n",
    "src/text/utf.cpp": '#include "text/utf.hpp"\n#include <unicode/uchar.h>\n',
    "src/iri/iri.cpp": '#include <iri.hpp>\n\n#include "text/utf.hpp"\n#include "detail/cell.hpp"\n',
    "src/iri/detail/cell.hpp": "#pragma once\n",
    "tests/iri.cpp": '#include <boost/spirit/include/qi.hpp>\n#include "text/utf.hpp"\n',
}

# Above both blocks, a program; below both, texts.
TWO_BLOCKS = {
    "include/iri.hpp": '#include "../src/text/utf.hpp"\n',
    "include/address.hpp": "#pragma once\n",
    "src/iri/iri.cpp": "#include <iri.hpp>\n",
    "src/iri/cell.hpp": "#pragma once\n",
    "src/address/address.cpp": '#include <address.hpp>\n#include "text/utf.hpp"\n',
    "src/text/utf.hpp": '#include "ascii.hpp"\n',
    "src/text/ascii.hpp": "#include <string>\n",
    "tools/iri/main.cpp": "#include <address.hpp>\n#include <iri.hpp>\n",
}


class IncludesTest(unittest.TestCase):
    def found(self, changes):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for name, text in {**CLEAN, **changes}.items():
                (root / name).parent.mkdir(parents=True, exist_ok=True)
                (root / name).write_text(text, encoding="utf-8")
            return includes.check(root)

    def test_finds_nothing_in_a_clean_tree(self):
        self.assertEqual(self.found({}), [])

    def test_finds_an_include_against_the_direction(self):
        self.assertEqual(
            self.found({"src/text/utf.hpp": '#include "iri/detail/cell.hpp"\n'}),
            ["src/text/utf.hpp: `src/text` may not include src/iri/detail/cell.hpp"],
        )

    def test_finds_a_public_header_that_reaches_into_the_sources(self):
        self.assertEqual(
            self.found({"include/iri.hpp": '#  include "../src/text/utf.hpp"\n'}),
            ["include/iri.hpp: `include` may not include src/text/utf.hpp"],
        )

    def test_finds_an_include_of_a_header_beside_a_file_with_a_row_of_its_own(self):
        self.assertEqual(
            self.found({"include/api.hpp": '#include "iri.hpp"\n'}),
            ["include/api.hpp: `include/api.hpp` may not include include/iri.hpp"],
        )

    def test_finds_a_dependency_away_from_its_door(self):
        self.assertEqual(
            self.found({"src/iri/iri.cpp": "#include <unicode/uchar.h>\n#include <unistd.h>\n"}),
            [
                "src/iri/iri.cpp: <unicode/uchar.h> is not included here",
                "src/iri/iri.cpp: <unistd.h> is not included here",
            ],
        )

    def test_finds_a_file_that_no_row_covers(self):
        self.assertEqual(
            self.found({"src/other/a.cpp": ""}),
            ["src/other/a.cpp: docs/architecture.md has no row for it"],
        )

    def test_finds_a_quoted_include_of_nothing(self):
        self.assertEqual(
            self.found({"src/iri/iri.cpp": '#include "gone.hpp"\n'}),
            ["src/iri/iri.cpp: no such file in this tree: gone.hpp"],
        )

    def test_finds_a_row_for_a_folder_that_has_come(self):
        self.assertEqual(
            self.found({"src/address/a.cpp": ""}), ["docs/architecture.md: `src/address` exists"]
        )

    def test_finds_rows_that_name_what_is_not_there(self):
        page = PAGE.replace("`src/text` | text", "`src/gone` | text")
        self.assertEqual(
            [line for line in self.found({"docs/architecture.md": page}) if "gone" in line],
            ["docs/architecture.md: `src/gone` does not exist"],
        )
        page = PAGE.replace("| values | `src/text`", "| values | `src/texts`")
        self.assertIn(
            "docs/architecture.md: `src/texts` may be included but has no row",
            self.found({"docs/architecture.md": page}),
        )

    def test_finds_a_circle(self):
        page = PAGE.replace("| text | `include/api.hpp`", "| text | `src/iri`")
        self.assertIn(
            "docs/architecture.md: from `src/iri` the includes lead in a circle",
            self.found({"docs/architecture.md": page}),
        )

    def test_refuses_a_page_without_tables(self):
        with self.assertRaises(ValueError):
            self.found({"docs/architecture.md": "Nothing here.\n"})

    def seen(self, changes):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for name, text in {**TWO_BLOCKS, **changes}.items():
                (root / name).parent.mkdir(parents=True, exist_ok=True)
                (root / name).write_text(text, encoding="utf-8")
            blocks = [["include/iri.hpp", "src/iri"], ["include/address.hpp", "src/address"]]
            return list(includes.blocks_seen(root, blocks))

    def test_takes_blocks_that_share_what_is_below_and_above_them(self):
        self.assertEqual(self.seen({}), [])

    def test_finds_a_block_that_sees_another_at_once(self):
        self.assertEqual(
            self.seen({"src/iri/iri.cpp": "#include <address.hpp>\n"}),
            ["src/iri/iri.cpp: sees another block: include/address.hpp"],
        )
        self.assertEqual(
            self.seen({"src/address/address.cpp": '#include "iri/cell.hpp"\n'}),
            ["src/address/address.cpp: sees another block: src/iri/cell.hpp"],
        )

    def test_finds_a_block_that_sees_another_through_what_they_share(self):
        self.assertEqual(
            self.seen({"src/text/utf.hpp": '#include "ascii.hpp"\n',
                       "src/text/ascii.hpp": "#include <address.hpp>\n"}),
            [
                "include/iri.hpp: sees another block: "
                "src/text/utf.hpp -> src/text/ascii.hpp -> include/address.hpp",
                "src/iri/iri.cpp: sees another block: include/iri.hpp -> "
                "src/text/utf.hpp -> src/text/ascii.hpp -> include/address.hpp",
            ],
        )

    def test_takes_includes_in_a_circle(self):
        self.assertEqual(self.seen({"src/iri/cell.hpp": '#include "iri/cell.hpp"\n'}), [])

    def test_finds_a_place_without_sources(self):
        with tempfile.TemporaryDirectory() as folder:
            self.assertEqual(
                list(includes.blocks_seen(pathlib.Path(folder), [["src/gone"]])),
                ["src/gone: no source here, though it belongs to a block"],
            )

    def test_finds_a_condition_away_from_the_platforms(self):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for name, text in {
                "include/API.hpp": "#if defined(_WIN32)\n#endif\n",
                "include/iri.hpp": "#pragma once\n// #if\n",
                "src/platform/windows/names.cpp": "#ifdef _MSC_VER\n#endif\n",
                "src/platform/names.hpp": "#  ifndef NAMES\n#endif\n",
                "src/iri/iri.cpp": "#if 0\n#elif defined(__linux__)\n#else\n#endif\n",
                "tests/iri.cpp": "#if defined(_WIN32)\n#endif\n",
            }.items():
                (root / name).parent.mkdir(parents=True, exist_ok=True)
                (root / name).write_text(text, encoding="utf-8")
            self.assertEqual(
                list(includes.conditions(root)),
                [
                    "src/iri/iri.cpp: differs from one system to another: #if 0",
                    "src/iri/iri.cpp: differs from one system to another: "
                    "#elif defined(__linux__)",
                    "src/platform/names.hpp: differs from one system to another: #  ifndef NAMES",
                ],
            )


if __name__ == "__main__":
    unittest.main()
