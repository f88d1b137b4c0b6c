#!/usr/bin/env python3
"""Counts instructions with callgrind, which no other load on the machine disturbs.

    instructions.py PROGRAM

PROGRAM is zkflnetwork_benchmarks. Prints JSON: the instructions of a text, by
operation/corpus/subject.
"""

import json
import pathlib
import re
import subprocess
import sys
import tempfile

LABEL = re.compile(r"^desc: Trigger: Client Request: (\S+) (\d+)$", re.MULTILINE)
TOTAL = re.compile(r"^(?:summary|totals): (\d+)", re.MULTILINE)


def number(dump):
    """Dumps are numbered from 1 at the end of their names, without leading zeros."""
    end = dump.name.rpartition(".")[2]
    return int(end) if end.isdigit() else 0


def main(program):
    counts = {}
    with tempfile.TemporaryDirectory() as folder:
        out = pathlib.Path(folder) / "callgrind.out"
        command = ["valgrind", "--quiet", "--tool=callgrind", "--callgrind-out-file=%s" % out]
        subprocess.run([*command, program, "--instructions"], check=True)
        for dump in sorted(pathlib.Path(folder).iterdir(), key=number):
            text = dump.read_text(encoding="utf-8", errors="replace")
            label, total = LABEL.search(text), TOTAL.search(text)
            if label and total:
                counts[label[1]] = int(total[1]) / int(label[2])
    if not counts:
        sys.exit("instructions.py: callgrind left no dump behind")
    print(json.dumps(counts, indent=1))


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(sys.argv[1])
