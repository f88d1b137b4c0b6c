#!/usr/bin/env python3
"""What the tests leave out where they run on Wine: the lines of windows/left-out.txt."""

import os
import pathlib
import signal
import sys
import unittest

FILE = pathlib.Path(__file__).parent / "windows" / "left-out.txt"
IS_WINDOWS = os.environ.get("ZKFLNETWORK_TESTED_SYSTEM") == "Windows"

# With what a program ends that an interrupt ends; on Windows that is the lowest byte of C000013A,
# of which Wine tells Linux no more.
INTERRUPTED = 0x3A if IS_WINDOWS else -signal.SIGINT

# And one that writes to a pipe which nobody reads any more: Windows has no signal for that.
READER_GONE = 3 if IS_WINDOWS else -signal.SIGPIPE


def reasons(test):
    """Each case that this test leaves out, with the reason."""
    result = {}
    for line in FILE.read_text(encoding="utf-8").splitlines():
        if line.startswith("#") or not line:
            continue
        name, case, reason = line.split(" | ")
        if name == test:
            result[case] = reason
    return result if IS_WINDOWS else {}


def run_unittests(test):
    """As unittest.main(), without the cases that this test leaves out."""
    program = sys.modules["__main__"]
    for case, reason in reasons(test).items():
        group, _, name = case.partition(".")
        group = getattr(program, group)
        setattr(group, name, unittest.skip(reason)(getattr(group, name)))
    unittest.main()
