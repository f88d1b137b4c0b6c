#!/usr/bin/env python3
"""Runs mutate.py on lines of code."""

import pathlib
import tempfile
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

    def test_finds_the_lines_that_a_difference_adds(self):
        difference = """diff --git a/src/a.cpp b/src/a.cpp
--- a/src/a.cpp
+++ b/src/a.cpp
@@ -3 +3 @@ void f()
-old
+new
@@ -7,2 +7,0 @@
-gone
-gone
@@ -20,0 +19,2 @@ void g()
+added
+@@ -1 +1 @@
diff --git a/src/gone.cpp b/src/gone.cpp
--- a/src/gone.cpp
+++ /dev/null
@@ -1,2 +0,0 @@
-gone
-gone
"""
        self.assertEqual(mutate.changed_lines(difference),
                         {("src/a.cpp", 2), ("src/a.cpp", 18), ("src/a.cpp", 19)})

    def test_names_a_break_by_both_lines(self):
        mutant = mutate.Mutant("src/a.cpp", 6, "    a();", "    ;", "    if (b)")
        self.assertEqual(mutant.excuses(),
                         ("src/a.cpp: a(); => ;", "src/a.cpp: if (b) \\ a(); => ;"))
        self.assertEqual(str(mutant), "src/a.cpp:7\n    - a();\n    + ;")

    def test_finds_breaks_with_the_line_above(self):
        with tempfile.TemporaryDirectory() as folder:
            source = pathlib.Path(folder)
            (source / "src").mkdir()
            (source / "src/a.cpp").write_text("bool f()\n{\n\n    return false;\n}\n",
                                              encoding="utf-8")
            self.assertEqual(mutate.mutants(source, ["src"]), [
                mutate.Mutant("src/a.cpp", 3, "    return false;", "    return true;", "bool f()")])

    def test_tells_which_excuses_excuse_nothing_or_too_much(self):
        possible = [mutate.Mutant("src/a.cpp", line, "    a();", "    ;", above)
                    for line, above in enumerate(["if (b)", "if (c)"])]
        for entries, expected in [
            (["src/a.cpp: if (b) \\ a(); => ;", "src/a.cpp: if (c) \\ a(); => ;"], []),
            (["src/a.cpp: a(); => ;"], ["names 2 places: src/a.cpp: a(); => ;"]),
            (["src/a.cpp: b(); => ;"], ["names no place: src/a.cpp: b(); => ;"]),
            (["src/a.cpp: if (b) \\ a(); => ;"] * 2,
             ["is there twice: src/a.cpp: if (b) \\ a(); => ;"]),
        ]:
            with self.subTest(entries):
                self.assertEqual(mutate.misleading(entries, possible), expected)


if __name__ == "__main__":
    unittest.main()
