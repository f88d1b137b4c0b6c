#!/usr/bin/env python3
"""What the tests leave out where they run on Wine, or on a machine that is emulated: the lines of
windows/left-out.txt and emulated/left-out.txt."""

import os
import pathlib
import signal
import sys
import unittest

SYSTEM = os.environ.get("ZKFLNETWORK_TESTED_SYSTEM", "Linux").lower()
FILE = pathlib.Path(__file__).parent / SYSTEM / "left-out.txt"
IS_WINDOWS = SYSTEM == "windows"

# With what a program ends that an interrupt ends; on Windows that is the lowest byte of C000013A,
# of which Wine tells Linux no more.
INTERRUPTED = 0x3A if IS_WINDOWS else -signal.SIGINT

# And one that writes to a pipe which nobody reads any more: Windows has no signal for that.
READER_GONE = 3 if IS_WINDOWS else -signal.SIGPIPE


def reasons(test):
    """Each case that this test leaves out, with the reason."""
    result = {}
    if not FILE.exists():
        return result
    for line in FILE.read_text(encoding="utf-8").splitlines():
        if line.startswith("#") or not line:
            continue
        name, case, reason = line.split(" | ")
        if name == test:
            result[case] = reason
    return result


def remove_cases(test):
    """Takes the cases that this test leaves out from the groups of the program."""
    program = sys.modules["__main__"]
    for case, reason in reasons(test).items():
        group, _, name = case.partition(".")
        delattr(getattr(program, group), name)
        print(f"left out: {case}: {reason}")


def run_unittests(test):
    """As unittest.main(), without the cases that this test leaves out."""
    remove_cases(test)
    unittest.main()
