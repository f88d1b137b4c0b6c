#!/usr/bin/env python3
"""Holds README.md, or another page, against what the programs are and print.

readme.py code PAGE SOURCE...          the C++ blocks are these files, whole and in this order
readme.py output PAGE PROGRAM WORD [EXCEPT...]
                                       each block below a line with WORD is what the program prints;
                                       the words behind WORD are its arguments. Where the first of
                                       them is one of EXCEPT, the block is for another test
"""

import pathlib
import re
import shlex
import subprocess
import sys

NO = 1  # the exit code of a program that answers no

BLOCK = re.compile(r"^```(\S*)\n(.*?)^```$", re.MULTILINE | re.DOTALL)


def blocks(page, language):
    """The contents of the fenced blocks of a language."""
    return [match[2] for match in BLOCK.finditer(page) if match[1] == language]


def sessions_of(page, word):
    """The arguments and the output of each console block that begins with a "$ ... WORD ..." line."""
    result = []
    for block in blocks(page, "console"):
        command, _, output = block.partition("\n")
        words = shlex.split(command.removeprefix("$ "))
        if word in words:
            result.append((words[words.index(word) + 1 :], output))
    if not result:
        raise ValueError(f"the page has no console block for {word}")
    return result


def compare(what, written, real):
    if written == real:
        return 0
    print(f"The page shows another {what}.\n--- the page\n{written}--- real\n{real}")
    return 1


def check_code(page, *sources):
    written = blocks(page, "cpp")
    if len(written) != len(sources):
        print(f"The page has {len(written)} C++ blocks for {len(sources)} examples")
        return 1
    texts = [pathlib.Path(source).read_text(encoding="utf-8") for source in sources]
    return max(map(compare, ["example"] * len(texts), written, texts))


def check_output(page, program, word, *others):
    for arguments, output in sessions_of(page, word):
        if arguments and arguments[0] in others:
            continue
        # As a terminal shows it: what goes wrong stands among the rest.
        run = subprocess.run([program, *arguments], stdin=subprocess.DEVNULL,
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        # Windows ends lines in its own way where a program does not object.
        if compare("output", output, run.stdout.decode("utf-8").replace("\r\n", "\n")):
            return 1
        if run.returncode > NO:
            print(f"{arguments} ends with {run.returncode}")
            return 1
    return 0


def main(mode, path, *rest):
    page = pathlib.Path(path).read_text(encoding="utf-8")
    return {"code": check_code, "output": check_output}[mode](page, *rest)


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
