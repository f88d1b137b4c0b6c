#!/usr/bin/env python3
"""Draws the pictures of the documentation: make.py [FOLDER]

They go to FOLDER, or else beside this file.
"""

import pathlib
import sys

import anatomy
import forms
import railroad

HERE = pathlib.Path(__file__).resolve().parent
GRAMMAR = HERE.parent / "grammar.abnf"


def pictures():
    """The name and the text of each picture."""
    result = {"anatomy.svg": anatomy.draw(), "forms.svg": forms.draw()}
    rules = railroad.productions(GRAMMAR.read_text(encoding="utf-8"))
    for group in dict.fromkeys(rule.group for rule in rules):
        name = "grammar-" + group.lower().replace(" ", "-") + ".svg"
        result[name] = railroad.draw(group, [rule for rule in rules if rule.group == group])
    return result


def main(folder=HERE):
    for name, text in pictures().items():
        (pathlib.Path(folder) / name).write_text(text, encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
