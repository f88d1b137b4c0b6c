#!/usr/bin/env python3
"""Holds the pictures of docs/pictures against their scripts and what they show: pictures.py ROOT"""

import pathlib
import re
import sys
import unittest
import xml.etree.ElementTree

ROOT = pathlib.Path(sys.argv.pop(1))
PICTURES = ROOT / "docs/pictures"
sys.path.insert(0, str(PICTURES))
import anatomy  # noqa: E402
import forms  # noqa: E402
import make  # noqa: E402
import railroad  # noqa: E402

GRAMMAR = railroad.productions(make.GRAMMAR.read_text(encoding="utf-8"))
PREFERRED = {"HEXDIG": "xdigit"}  # functions with another name than the production
NOTATION = {"ipath-empty", "unreserved"}  # no function: nothing at all; taken for iunreserved


def comments(text):
    """The blocks of "//" lines that begin with an RFC, with the line behind each."""
    lines = text.split("\n")
    for i, line in enumerate(lines):
        if not re.match(r"// RFC \d+, [\w.]+:", line):
            continue
        block = []
        while lines[i].startswith("//"):
            block.append(lines[i][2:])
            i += 1
        yield block, lines[i + 1] if lines[i].startswith("template") else lines[i]


def plain(body):
    """A body without comments and superfluous brackets and blanks."""
    body = " ".join(re.sub(r";.*", "", line) for line in body.split("\n"))
    body = re.sub(r"\[ +h16 +\]", "[ h16 ]", body)
    return " ".join(body.split())


def written():
    """Name, source, body, departure and function of each production in the sources."""
    for path in sorted((ROOT / "src/iri/grammar").glob("*.hpp")):
        for block, below in comments(path.read_text(encoding="utf-8")):
            words = "\n".join(block)
            source = re.match(r" (RFC \d+, [\w.]+):", words)[1]
            rule = re.search(r"([A-Za-z][\w-]*) = ", words)
            rest = words[rule.end():]
            departure = re.search(r"\n Departure: (.*)", rest, re.DOTALL)
            # The body goes on in lines that begin with blanks and "/" or with more of it.
            body = re.match(r"[^\n]*(\n +;?/[^\n]*)*", rest)[0]
            function = re.search(r"(\w+)\(", below)
            yield (rule[1], source, plain(body), " ".join(departure[1].split()) if departure else "",
                   function[1] if function else "")


class PicturesTest(unittest.TestCase):
    maxDiff = None

    def test_they_are_what_the_scripts_give(self):
        there = {path.name: path.read_text(encoding="utf-8") for path in PICTURES.glob("*.svg")}
        drawn = make.pictures()
        self.assertEqual(sorted(there), sorted(drawn))
        for name, text in drawn.items():
            self.assertTrue(there[name] == text, f"{name} is old: ./dev pictures")

    def test_they_are_xml_and_nothing_leaves_them(self):
        for name, text in make.pictures().items():
            with self.subTest(name):
                root = xml.etree.ElementTree.fromstring(text)
                width, height = float(root.get("width")), float(root.get("height"))
                for box in root.iter("{http://www.w3.org/2000/svg}rect"):
                    sides = [float(box.get(side, 0)) for side in ("x", "y", "width", "height")]
                    self.assertLessEqual(sides[0] + sides[2], width)
                    self.assertLessEqual(sides[1] + sides[3], height)

    def test_no_text_hangs_on_spaces(self):
        # Browsers differ in what they make of spaces at the ends, and of more than one in between.
        for path in sorted((ROOT / "docs").rglob("*.svg")):
            words = [each.text for each in xml.etree.ElementTree.parse(path).getroot().iter()
                     if each.tag.endswith(("}text", "}tspan")) and each.text]
            self.assertTrue(words, path)
            self.assertEqual([each for each in words if each != " ".join(each.split())], [], path)

    def test_each_is_shown_on_a_page(self):
        pages = "".join(path.read_text(encoding="utf-8") for path in (ROOT / "docs").glob("*.md"))
        for name in make.pictures():
            self.assertTrue(f"](pictures/{name})" in pages, name)

    def test_the_forms_are_those_of_the_example(self):
        page = (ROOT / "docs/which-call.md").read_text(encoding="utf-8")
        printed = page.partition("$ build/dev/examples/forms\n")[2].split("\n")[:5]
        order = ["Decoded", "Iri", "IriStrict", "Ascii", "AsciiStrict"]
        self.assertEqual([line.split()[-1] for line in printed], [forms.TEXTS[each] for each in order])

    def test_the_anatomy_is_told_apart_as_by_rfc_3986(self):
        # RFC 3986, B, with the authority taken apart.
        match = re.fullmatch(r"([^:/?#]+)://([^@]*)@([^:]*):(\d*)([^?#]*)\?([^#]*)#(.*)",
                             "".join(text for _, text in anatomy.PIECES))
        self.assertEqual([text for name, text in anatomy.PIECES if name], list(match.groups()))


class GrammarTest(unittest.TestCase):
    maxDiff = None

    def test_it_is_that_of_the_sources(self):
        found = {name: (source, body, departure) for name, source, body, departure, _ in written()}
        for rule in GRAMMAR:
            with self.subTest(rule.name):
                source, body, departure = found.pop(rule.name)
                self.assertEqual(rule.source, source)
                wanted = re.escape(body).replace(r"\.\.\.", ".*")
                self.assertRegex(plain(rule.body), f"^{wanted}$")
                self.assertEqual(bool(rule.departure), bool(departure))
                self.assertTrue(departure.startswith(rule.departure.removeprefix("Departure: ")),
                                f"{departure!r}: {rule.departure!r}")
        self.assertEqual(found, {}, "not in docs/grammar.abnf")

    def test_each_production_is_a_function(self):
        for name, _, _, _, function in written():
            wanted = {PREFERRED.get(name, name.replace("-", "_")), name.lower()}
            self.assertIn(function, wanted, name)

    def test_each_name_is_a_production(self):
        names = {rule.name for rule in GRAMMAR}
        for rule in GRAMMAR:
            body = re.sub(r'"[^"]*"|%x[0-9A-F-]+', "", rule.body)
            used = set(re.findall(r"(?<![\w-])\d*([A-Za-z][\w-]*)", body))
            self.assertLessEqual(used, names | NOTATION, rule.name)


class RailroadTest(unittest.TestCase):
    def tree(self, body):
        return railroad.Parser(body).whole()

    def test_what_is_read(self):
        def shape(item):
            name = type(item).__name__
            if isinstance(item, railroad.Leaf):
                return item.words
            if isinstance(item, railroad.Loop):
                return (name, shape(item.item), item.label)
            if isinstance(item, railroad.OneOf):
                return (name, *item.rows)
            return (name, *map(shape, getattr(item, "items", [])))

        skip = ("Skip",)
        rows = [
            ("a", "a"),
            ('a "b" c', ("Sequence", "a", "b", "c")),
            ("a / b c", ("Choice", "a", ("Sequence", "b", "c"))),
            ("[ a ]", ("Choice", skip, "a")),
            ("*a", ("Choice", skip, ("Loop", "a", ""))),
            ("1*a", ("Loop", "a", "")),
            ("1*4a", ("Loop", "a", "up to 4 times")),
            ("*1( a )", ("Choice", skip, "a")),
            ("*3a", ("Choice", skip, ("Loop", "a", "up to 3 times"))),
            ("6( a b )", ("Loop", ("Sequence", "a", "b"), "6 times")),
            ("2a", ("Sequence", "a", "a")),
            ('a / "b" / "c" / "d" / %x30-39', ("Choice", "a", ("OneOf", "b c d %x30-39"))),
        ]
        for body, wanted in rows:
            with self.subTest(body):
                self.assertEqual(shape(self.tree(body)), wanted)

    def test_what_is_no_abnf(self):
        for body in ["( a", "a )", "a ?", '"a']:
            with self.subTest(body), self.assertRaises(ValueError):
                self.tree(body)


if __name__ == "__main__":
    unittest.main()
