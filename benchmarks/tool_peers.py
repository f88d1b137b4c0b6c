#!/usr/bin/env python3
"""Measures the tool in bulk beside others that take hosts out of lines, or judge lines.

tool_peers.py IRI [LINES [ROUNDS]]

Prints a report in Markdown. A figure is the number of lines that a program gets through in a second
of processor time (user and system) on one core, by the median of the rounds; in each round all run
once, in random order, so that a machine that gets slower for a while slows all alike. What is not
installed is left out, and named on standard error.
"""

import os
import pathlib
import random
import shutil
import statistics
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "tests" / "tools" / "iri" / "engines"))
import lines as mixed  # noqa: E402

SEED = 3987
PYTHON = "/usr/bin/python3"

GREP_HOST = r"^(?:[A-Za-z][A-Za-z0-9+.-]*:)?//(?:[^/?#@]*@)?\K(?:\[[^]/?#]*\]|[^/?#:]*)"
# RFC 3986, Appendix A, with the UTF-8 of RFC 3987 as bytes above 0x7F; an address in brackets is
# looked at by its characters only.
CHARACTER = r"[A-Za-z0-9._~!$&'()*+,;=\x80-\xff-]|%[0-9A-Fa-f]{2}"
GREP_CHECK = (
    r"^(?:[A-Za-z][A-Za-z0-9+.-]*:(?!//)|(?:[A-Za-z][A-Za-z0-9+.-]*:)?//(?:(?:C|:)*+@)?"
    r"(?:\[[0-9A-Za-z:.]+\]|(?:C)*+)(?::[0-9]+)?(?=[/?#\r]|$)|(?!//)(?![^/?#]*:))"
    r"(?:C|[:@/])*+(?:\?(?:C|[:@/?])*+)?(?:#(?:C|[:@/?])*+)?\r?$"
).replace("C", CHARACTER)

URLSPLIT_HOST = """
import sys
from urllib.parse import urlsplit
write = sys.stdout.write
for line in open(0, encoding="utf-8", errors="surrogateescape", newline="\\n"):
    try:
        write((urlsplit(line.rstrip("\\r\\n")).hostname or "") + "\\n")
    except ValueError:
        write("\\n")
"""
URLSPLIT_CHECK = """
import sys
from urllib.parse import urlsplit
good = 0
for line in open(0, encoding="utf-8", errors="surrogateescape", newline="\\n"):
    try:
        urlsplit(line.rstrip("\\r\\n")).port
        good += 1
    except ValueError:
        pass
print(good)
"""
URITOOLS_HOST = """
import sys
from uritools import urisplit
write = sys.stdout.write
for line in open(0, encoding="utf-8", errors="surrogateescape", newline="\\n"):
    try:
        write(str(urisplit(line.rstrip("\\r\\n")).gethost() or "") + "\\n")
    except ValueError:
        write("\\n")
"""
PERL_HOST = r"""
use URI;
while (<STDIN>) {
    s/\r?\n\z//;
    my $uri = URI->new($_);
    print $uri->can("host") && $uri->host // "", "\n";
}
"""
SURROGATES = {"PYTHONIOENCODING": "utf-8:surrogateescape"}
BYTES = {"LC_ALL": "C"}


class Subject:
    """A program that reads lines from standard input."""

    def __init__(self, title, command, environment=(), slow=False, needs=None):
        self.title = title
        self.command = command
        self.environment = {**os.environ, "LC_ALL": "C.UTF-8", **dict(environment)}
        self.slow = slow  # gets a tenth of the lines
        self.needs = needs

    def is_there(self):
        return shutil.which(self.command[0]) is not None and (
            self.needs is None or subprocess.run(self.needs, capture_output=True,
                                                 check=False).returncode == 0)

    def time(self, path, core):
        """Seconds of processor time."""
        # Into a pipe: grep looks for no more than one match if it writes to /dev/null.
        with open(path, "rb") as given, subprocess.Popen(
                ["cat"], stdin=subprocess.PIPE, stdout=subprocess.DEVNULL) as drain:
            process = subprocess.Popen(
                ["taskset", "--cpu-list", str(core), *self.command], env=self.environment,
                stdin=given, stdout=drain.stdin, stderr=subprocess.DEVNULL)
            _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        if process.returncode not in (0, 1):
            raise RuntimeError(f"{self.title} ends with {process.returncode}")
        return usage.ru_utime + usage.ru_stime

    def output(self, path):
        with open(path, "rb") as given:
            return subprocess.run(self.command, env=self.environment, stdin=given,
                                  stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                                  check=False).stdout


def hosts(output):
    """How many lines came out, and in how many of them there is something."""
    records = output.split(b"\n")[:-1]
    return len(records), sum(record != b"" for record in records)


def subjects(program):
    uritools = [PYTHON, "-c", "import uritools"]
    return {
        "Take the host out": [
            Subject("`iri map get host`", [program, "map", "get", "host"]),
            Subject("`grep -oP`", ["grep", "-aoP", GREP_HOST], BYTES),
            Subject("Python, `urlsplit`", [PYTHON, "-c", URLSPLIT_HOST], SURROGATES, True),
            Subject("Python, `uritools`", [PYTHON, "-c", URITOOLS_HOST], SURROGATES, True,
                    uritools),
            Subject("Perl, `URI`", ["perl", "-e", PERL_HOST], (), True, ["perl", "-MURI", "-e1"]),
        ],
        "Judge": [
            Subject("`iri check --quiet`", [program, "check", "--quiet"]),
            Subject("`iri map check`", [program, "map", "check"]),
            Subject("`grep -cP`", ["grep", "-acP", GREP_CHECK], BYTES),
            Subject("Python, `urlsplit`", [PYTHON, "-c", URLSPLIT_CHECK], SURROGATES, True),
        ],
    }


def accepted(subject, path, count):
    """What a program has to say of so many lines, for the table."""
    output = subject.output(path)
    if "--quiet" in subject.command:
        loud = Subject("", [word for word in subject.command if word != "--quiet"] + ["--json"])
        return f"{count - len(loud.output(path).splitlines())} of {count} are good"
    if output.strip().isdigit() and output.count(b"\n") == 1:
        return f"{int(output)} of {count} are good"
    if subject.command[-1] == "check":
        return f"{output.count(b'true')} of {count} are good"
    written, full = hosts(output)
    missing = "" if written == count else f", {count - written} lines without an answer"
    return f"{full} hosts of {count}{missing}"


def repeated(texts, count, source):
    result = []
    while len(result) < count:
        source.shuffle(texts)
        result += texts
    return b"".join(result[:count])


def write_inputs(folder, count):
    """The files to read: title, path of all lines, path of a tenth of them."""
    for title, name in [("URLs", "urls"), ("IRIs", "iris"), ("Lines of all sorts", None)]:
        if name:
            texts = (HERE / "corpus" / f"{name}.txt").read_bytes().splitlines(keepends=True)
            data = repeated(texts, count, random.Random(SEED))
        else:
            data = b"".join(mixed.blocks(count, SEED))
        whole, part = folder / f"{title}.txt", folder / f"{title}.tenth"
        whole.write_bytes(data)
        part.write_bytes(b"\n".join(data.split(b"\n", count // 10)[: count // 10]) + b"\n")
        yield title, whole, part


def main(program, count="1000000", rounds="9"):
    program = str(pathlib.Path(program).resolve())
    count, rounds = int(count), int(rounds)
    core = max(os.sched_getaffinity(0))
    source = random.Random()
    load = os.getloadavg()[0]
    print(f"{count} lines, {rounds} rounds, load {load:.1f} before; a tenth of the lines for Perl "
          "and Python.\n")
    with tempfile.TemporaryDirectory() as folder:
        inputs = list(write_inputs(pathlib.Path(folder), count))
        for task, all_subjects in subjects(program).items():
            there = [subject for subject in all_subjects if subject.is_there()]
            for subject in all_subjects:
                if subject not in there:
                    print(f"tool.py: not installed, left out: {subject.title}", file=sys.stderr)
            for title, whole, part in inputs:
                times = {subject: [] for subject in there}
                for _ in range(rounds):
                    for subject in source.sample(there, len(there)):
                        times[subject].append(subject.time(part if subject.slow else whole, core))
                print(f"### {task}: {title}\n")
                print("| | lines/s | spread | ours / theirs | of the first tenth |")
                print("|---|---:|---:|---:|---|")
                rates = {subject: (count // 10 if subject.slow else count)
                         / statistics.median(times[subject]) for subject in there}
                for subject in there:
                    low, middle, high = statistics.quantiles(times[subject], n=4,
                                                             method="inclusive")
                    print(f"| {subject.title} | {rates[subject] / 1e6:.2f} M "
                          f"| ±{(high - low) / 2 / middle:.1%} "
                          f"| {rates[there[0]] / rates[subject]:.1f} "
                          f"| {accepted(subject, part, count // 10)} |")
                print(flush=True)


if __name__ == "__main__":
    main(*sys.argv[1:])
