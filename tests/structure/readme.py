#!/usr/bin/env python3
"""Holds README.md against what the programs are and print.

readme.py code README SOURCE...        the C++ blocks are these files, whole and in this order
readme.py output README PROGRAM WORD   the block below the first line that ends in "WORD ..." is what
                                       the program prints; the words behind WORD are its arguments
"""

import pathlib
import re
import shlex
import subprocess
import sys

BLOCK = re.compile(r"^```(\S*)\n(.*?)^```$", re.MULTILINE | re.DOTALL)


def blocks(page, language):
    """The contents of the fenced blocks of a language."""
    return [match[2] for match in BLOCK.finditer(page) if match[1] == language]


def session_of(page, word):
    """The arguments and the output of the first console block with a "$ ... WORD ..." line."""
    for block in blocks(page, "console"):
        command, _, output = block.partition("\n")
        words = shlex.split(command.removeprefix("$ "))
        if word in words:
            return words[words.index(word) + 1 :], output
    raise ValueError(f"README.md has no console block for {word}")


def compare(what, written, real):
    if written == real:
        return 0
    print(f"README.md shows another {what}.\n--- README.md\n{written}--- real\n{real}")
    return 1


def check_code(page, *sources):
    written = blocks(page, "cpp")
    if len(written) != len(sources):
        print(f"README.md has {len(written)} C++ blocks for {len(sources)} examples")
        return 1
    texts = [pathlib.Path(source).read_text(encoding="utf-8") for source in sources]
    return max(map(compare, ["example"] * len(texts), written, texts))


def check_output(page, program, word):
    arguments, output = session_of(page, word)
    run = subprocess.run([program, *arguments], capture_output=True, check=False)
    return compare("output", output, run.stdout.decode("utf-8")) or run.returncode


def main(mode, readme, *rest):
    page = pathlib.Path(readme).read_text(encoding="utf-8")
    return {"code": check_code, "output": check_output}[mode](page, *rest)


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
