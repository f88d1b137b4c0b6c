#!/usr/bin/env python3
"""Runs namespaces.py where nothing can be made, so that nobody takes a skipped test for a passed one."""

import os
import pathlib
import subprocess
import sys
import unittest

import namespaces

FOLDER = pathlib.Path(__file__).parent

CASES = """
import sys, unittest
import namespaces
namespaces.leave_the_machine = lambda: {leave}
class Case(unittest.TestCase):
    def test(self):
        {body}
sys.exit(namespaces.main({programs}))
"""


class NamespacesTest(unittest.TestCase):
    def status(self, required, leave="None", body="pass", programs=()):
        """The status of a test, and what it says."""
        environment = {**os.environ, "PYTHONPATH": str(FOLDER), namespaces.REQUIRE: required}
        done = subprocess.run(
            [sys.executable, "-B", "-c", CASES.format(leave=leave, body=body, programs=programs)],
            env=environment, capture_output=True, text=True, check=False,
        )
        return done.returncode, done.stdout

    def expect_skipped(self, reason, **test):
        for required, status, word in [
            ("", 77, "SKIPPED"), ("0", 77, "SKIPPED"), ("1", 1, "FAILED"),
        ]:
            found, said = self.status(required, **test)
            self.assertEqual(found, status)
            self.assertIn(f"*** {word}: ", said)
            self.assertIn(reason, said)

    def test_is_skipped_without_the_right(self):
        self.expect_skipped("cannot be made here", leave="(_ for _ in ()).throw(PermissionError())")

    def test_is_skipped_without_a_program(self):
        self.expect_skipped("no-such-program", programs=("sh", "no-such-program"))

    def test_is_skipped_with_one_of_its_cases(self):
        self.expect_skipped("no such link", body='self.skipTest("no such link")')

    def test_passes_and_fails_with_its_cases(self):
        for required in ["", "0", "1"]:
            self.assertEqual(self.status(required)[0], 0)
            self.assertEqual(self.status(required, body="self.fail()")[0], 1)
            self.assertEqual(self.status(required, body="raise OSError()")[0], 1)


if __name__ == "__main__":
    unittest.main()
