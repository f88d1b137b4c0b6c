#!/usr/bin/env python3
"""Measures how many lines a second the tool reads, in processor time, and prints that as JSON.

    tool.py TOOL TEXTS

TOOL is the program iri, TEXTS a file of one IRI a line, which is read several times over.
"""

import json
import os
import pathlib
import resource
import statistics
import subprocess
import sys
import tempfile

COMMANDS = {"check": ["check"], "map get host": ["map", "get", "host"]}
LINES = 1000000
REPETITIONS = 5


def processor_seconds(command, file):
    """User and system time of one run, whose output nobody reads."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    with open(os.devnull, "wb") as nowhere, open(file, "rb") as texts:
        subprocess.run(command, stdin=texts, stdout=nowhere, stderr=nowhere, check=False)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return (after.ru_utime - before.ru_utime) + (after.ru_stime - before.ru_stime)


def main(tool, texts):
    content = pathlib.Path(texts).read_bytes()
    lines = content.count(b"\n")
    times = {name: [] for name in COMMANDS}
    with tempfile.TemporaryDirectory() as folder:
        copies = -(-LINES // lines)
        many = pathlib.Path(folder) / "texts.txt"
        many.write_bytes(content * copies)
        for command in COMMANDS.values():
            # A tool that does not know the verb would be the fastest of all.
            one = b"https://example.org/\n"
            subprocess.run([tool, *command], input=one, check=True, stdout=subprocess.DEVNULL)
        for _ in range(REPETITIONS):
            for name, command in COMMANDS.items():
                times[name].append(processor_seconds([tool, *command], many))
    rates = {name: lines * copies / statistics.median(found) for name, found in times.items()}
    print(json.dumps(rates, indent=1))


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(*sys.argv[1:])
