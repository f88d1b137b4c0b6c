#!/usr/bin/env python3
"""Looks at what is in memory once the tool has answered its first line: start.py IRI

ICU's data are thirty megabytes, which only verbs that convert domain names are to look into. How
much of a mapped file a process has touched is told by the kernel. Where ICU's data are in no file
of their own the test is skipped, and says so.
"""

import pathlib
import re
import subprocess
import sys

SKIPPED = 77
TIMEOUT = 60
# The loader reads the head of the file, which may be laid out for pages of 64 KiB.
MOST_UNTOUCHED = 128
VERBS = [
    ["parse"],
    ["get", "host"],
    ["resolve", "--base=http://h/"],
    ["relativize", "--base=http://h/"],
    ["edit", "--set=host=g"],
    ["map", "get", "host"],
    ["addr"],
]


def touched(program, words, line):
    """How many KiB of ICU's data are in memory; nothing, if they are in no file."""
    with subprocess.Popen([program, *words], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL) as process:
        process.stdin.write(line)
        process.stdin.flush()
        answer = process.stdout.readline()
        assert answer, words
        maps = pathlib.Path(f"/proc/{process.pid}/smaps").read_text(encoding="utf-8")
        process.communicate(timeout=TIMEOUT)
    sizes = re.findall(r"^\S+ \S+ \S+ \S+ \S+ +\S*/libicudata\S*\n(?:\w+: .*\n)*?Rss: +(\d+) kB",
                       maps, re.M)
    return sum(map(int, sizes)) if sizes else None


def main(program):
    converting = touched(program, ["idn"], "пример.example\n".encode())
    if converting is None:
        print("SKIPPED: ICU's data are in no library of their own here")
        return SKIPPED
    print(f"idn: {converting} KiB")
    failed = converting <= MOST_UNTOUCHED  # or else this shows nothing
    for words in VERBS:
        line = b"::1\n" if words == ["addr"] else "http://пример.example/путь\n".encode()
        size = touched(program, words, line)
        print(f"{' '.join(words)}: {size} KiB")
        failed |= size > MOST_UNTOUCHED
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
