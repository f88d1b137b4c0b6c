#!/usr/bin/env python3
"""Prints a header as Doxygen takes it: header.py FILE

Doxygen takes an instantiation of a template for another class, whose members nobody has described. So
explicit ones go, and base classes are named without their arguments.

Members that share a comment, between "@{" and "@}", it lists behind all others and without a word on
them, so each is given the comment for itself.

All lines stay where they are, for the sake of complaints.
"""

import pathlib
import re
import sys

INSTANTIATION = re.compile(r"^ *extern template[^;]*;", re.MULTILINE)
GROUP = re.compile(r"^ */// @\{\n(?P<comment>(?: *///.*\n)+)(?P<members>(?:.*\n)*?) */// @\}$",
                   re.MULTILINE)
# Behind the end of a declaration, where another line of code follows.
NEXT_MEMBER = re.compile(r"([;}](?: *//.*)?\n+)(?= *[^/\s])")
BASE = re.compile(r"^((?:class|struct) .*: public [\w:]+)<[^<>]*> ", re.MULTILINE)


def without_instantiations(text):
    text = INSTANTIATION.sub(lambda match: "\n" * match[0].count("\n"), text)
    return BASE.sub(r"\1 ", text)


def in_one_line(comment):
    """The comment of a group as one that takes no line of its own."""
    lines = [line.strip().removeprefix("///").strip() for line in comment.splitlines()]
    return "/** " + " ".join(line or "<p>" for line in lines) + " */"


def without_groups(text):
    def each_with_comment(match):
        comment = in_one_line(match["comment"])
        members = NEXT_MEMBER.sub(lambda end: end[1] + comment, match["members"])
        return "\n" + match["comment"] + members

    return GROUP.sub(each_with_comment, text)


def main(file):
    text = pathlib.Path(file).read_text(encoding="utf-8")
    sys.stdout.buffer.write(without_groups(without_instantiations(text)).encode("utf-8"))


if __name__ == "__main__":
    main(*sys.argv[1:])
