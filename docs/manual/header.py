#!/usr/bin/env python3
"""Prints a header as Doxygen takes it: header.py FILE

Doxygen takes an instantiation of a template for another class, whose members nobody has described. So
explicit ones go, and base classes are named without their arguments. All lines stay where they are, for
the sake of complaints.
"""

import pathlib
import re
import sys

INSTANTIATION = re.compile(r"^ *extern template[^;]*;", re.MULTILINE)
BASE = re.compile(r"^((?:class|struct) .*: public [\w:]+)<[^<>]*> ", re.MULTILINE)


def without_instantiations(text):
    text = INSTANTIATION.sub(lambda match: "\n" * match[0].count("\n"), text)
    return BASE.sub(r"\1 ", text)


def main(file):
    text = pathlib.Path(file).read_text(encoding="utf-8")
    sys.stdout.buffer.write(without_instantiations(text).encode("utf-8"))


if __name__ == "__main__":
    main(*sys.argv[1:])
