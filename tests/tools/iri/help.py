#!/usr/bin/env python3
"""Reads all help as a newcomer would: help.py IRI"""

import re
import subprocess
import sys
import unicodedata

TIMEOUT = 60
WIDTH = 80
EXIT_CODES = range(5)


def width(text):
    """How many columns of a terminal a text takes."""
    return sum(0 if unicodedata.combining(c) else 2 if unicodedata.east_asian_width(c) in "WF" else 1
               for c in text)


def help_of(program, *words):
    done = subprocess.run([program, *words], capture_output=True, timeout=TIMEOUT, check=True)
    return done.stdout.decode("utf-8")


def verbs_of(text):
    """The verbs that the help of the program lists."""
    return re.findall(r"^  (\w+) +\S", text.partition("\nVerbs:\n")[2].partition("\n\n")[0],
                      re.MULTILINE)


def differences(program):
    """What is not as it should be, one line each."""
    whole = help_of(program, "help")
    verbs = verbs_of(whole)
    if len(verbs) < 2 or verbs[-1] != "help":
        yield f"the verbs are {verbs}"
    for code in EXIT_CODES:
        if not re.search(rf"^  {code}  \w", whole.partition("\nExit codes:\n")[2], re.MULTILINE):
            yield f"iri help does not tell of the exit code {code}"
    for other in [["--help"], ["-h"]]:
        if help_of(program, *other) != whole:
            yield f"iri {other[0]} is not iri help"

    texts = {"": whole}
    for verb in verbs[:-1]:
        texts[verb] = help_of(program, "help", verb)
        for option in ["--help", "-h"]:
            if help_of(program, verb, option) != texts[verb]:
                yield f"iri {verb} {option} is not iri help {verb}"
        if not re.search(rf"^Usage: iri {verb}\b", texts[verb], re.MULTILINE):
            yield f"iri help {verb} does not show how it is used"
    for verb, text in texts.items():
        name = f"iri help {verb}".rstrip()
        examples = text.partition("\n\n")[0].split("\n")
        if examples[0] != "Examples:" or len(examples) < 2:
            yield f"{name} does not begin with examples"
        for example in examples[1:]:
            if not re.match(rf"  .*\biri {verb or '[a-z]'}", example):
                yield f"{name} has an example of something else: {example}"
        for line in text.split("\n"):
            if width(line) > WIDTH:
                yield f"{name} has a line of {width(line)} columns: {line}"
            if line != line.rstrip() or "\t" in line:
                yield f"{name} has white space where none shows: {line!r}"
        if not text.endswith("\n") or text.endswith("\n\n"):
            yield f"{name} does not end in one line feed"


def main(program):
    found = list(differences(program))
    print("\n".join(found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
