#!/usr/bin/env python3
"""Runs command lines of the tool and compares what they give: cases.py IRI CASES

CASES is a JSON file that explains itself under "about".
"""

import json
import os
import pathlib
import pty
import re
import subprocess
import sys
import termios
import threading

import left_out

TIMEOUT = 60
FIELDS = {"name", "args", "stdin", "env", "terminal", "stdout", "stdoutBegins", "json", "stderr",
          "stderrBegins", "exit"}


def to_bytes(text):
    """A list of lines, or a text; a lone surrogate stands for a byte."""
    if isinstance(text, list):
        text = "".join(line + "\n" for line in text)
    return text.encode("utf-8", "surrogateescape")


def environment(case):
    kept = {name: value for name, value in os.environ.items() if name not in ("NO_COLOR", "TERM")}
    return {**kept, "TERM": "xterm", **case.get("env", {})}


class Terminal:
    """A terminal whose output is collected."""

    def __init__(self):
        self.main, self.program = pty.openpty()
        modes = termios.tcgetattr(self.program)
        modes[1] &= ~termios.OPOST  # what is written arrives as it is
        termios.tcsetattr(self.program, termios.TCSANOW, modes)
        self.collected = b""
        self.thread = threading.Thread(target=self.collect)

    def collect(self):
        try:
            while piece := os.read(self.main, 65536):
                self.collected += piece
        except OSError:  # how Linux tells that nobody has the other side open
            pass

    def end(self):
        self.thread.join(TIMEOUT)
        os.close(self.main)
        return self.collected


def run(program, case):
    """Output, errors and exit code of one command line."""
    command = [program, *(to_bytes(word) for word in case["args"])]
    options = {"input": to_bytes(case.get("stdin", "")), "stderr": subprocess.PIPE,
               "env": environment(case), "timeout": TIMEOUT, "check": False}
    if not case.get("terminal"):
        done = subprocess.run(command, stdout=subprocess.PIPE, **options)
        return done.stdout, done.stderr, done.returncode
    terminal = Terminal()
    terminal.thread.start()
    try:
        done = subprocess.run(command, stdout=terminal.program, **options)
    finally:
        os.close(terminal.program)
    return terminal.end(), done.stderr, done.returncode


def as_elsewhere(output):
    """With the words of Linux where those of Windows mean the same."""
    if left_out.IS_WINDOWS:
        output = output.replace(b": Host not found:", b": Host not found (authoritative):")
    return output


def with_colors(text):
    return re.sub(rb"<([0-9;]+)>", b"\x1b[\\1m", text)


def differences(case, stdout, stderr, code):
    """What is not as the case has it, one line each."""
    unknown = set(case) - FIELDS
    if unknown:
        yield f"unknown fields: {unknown}"
    if code != case.get("exit", 0):
        yield f"exit code {code}, not {case.get('exit', 0)}"

    if "json" in case:
        # As lists of pairs, since the order of the members counts.
        lines = stdout.decode("utf-8").split("\n")
        real = [json.loads(line, object_pairs_hook=list) for line in lines[:-1]]
        wanted = [list(members.items()) for members in case["json"]]
        if lines[-1] or real != wanted:
            yield f"JSON  {real}\nnot   {wanted}"
    else:
        whole, begin = to_bytes(case.get("stdout", "")), to_bytes(case.get("stdoutBegins", ""))
        if case.get("terminal"):
            whole, begin = with_colors(whole), with_colors(begin)
        if stdout[: len(begin)] != begin if begin else stdout != whole:
            yield f"stdout  {stdout!r}\nnot     {begin or whole!r}"

    whole, begin = to_bytes(case.get("stderr", "")), to_bytes(case.get("stderrBegins", ""))
    if stderr[: len(begin)] != begin if begin else stderr != whole:
        yield f"stderr  {stderr!r}\nnot     {begin or whole!r}"


def main(program, table):
    cases = json.loads(pathlib.Path(table).read_text(encoding="utf-8"))["cases"]
    impossible = left_out.reasons("tool.iri-cases")
    if unknown := set(impossible) - {case["name"] for case in cases}:
        print(f"windows/left-out.txt names cases that are not there: {unknown}")
        return 1
    cases = [case for case in cases if case["name"] not in impossible]
    failed = 0
    for case in cases:
        stdout, stderr, code = run(program, case)
        found = list(differences(case, as_elsewhere(stdout), as_elsewhere(stderr), code))
        for difference in found:
            print(f"{case['name']}: {difference}")
        failed += bool(found)
    print(f"{len(cases)} command lines, {failed} failed")
    return 1 if failed or not cases else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
