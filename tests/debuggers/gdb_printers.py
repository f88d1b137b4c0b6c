#!/usr/bin/env python3
"""Holds what gdb shows of values against what they are: gdb_printers.py PROGRAM ALONE SCRIPT LIBRARY

ALONE is the program with all of IRIs in its own debug information. Where gdb may not run programs, or
the library was compiled without debug information, the test is skipped and says so; with
ZKFLNETWORK_REQUIRE_GDB in the environment it fails instead.
"""

import contextlib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

SKIPPED = 77
PROGRAM, ALONE, SCRIPT, LIBRARY = sys.argv[1:]
SHOWN = {
    "empty": '""',
    "parsed": '"https://u@é.example:080/a%20b?q#" = {scheme = "https", user information = "u", '
              'host = "é.example", port = 80, path = "/a%20b", query = "q", fragment = ""}',
    "relative": '"../a\'b" = {path = "../a\'b"}',
    "args": 'components = {scheme = "http", host = "h", port = 80, path = "/a b", query = ""}',
    "nothing": "no components",
    "built": 'built "http://h:80/a b?" = {scheme = "http", host = "h", port = 80, path = "/a b", '
             'query = ""}',
    "literal": '"http://[::1]" = {scheme = "http", host = "[::1]", path = ""}',
    "source": '""',
    "moved": '"x:y" = {scheme = "x", path = "y"}',
    "assigned": '"x://h/y" = {scheme = "x", host = "h", path = "/y"}',
    "other": '""',
    "four": "192.0.2.1",
    "six": "2001:db8::5",
    "named": "127.0.0.1 (127.0.0.1)",
    "prefixed": "2001:db8::5/64",
    "hardware": "02:00:ab",
    "noHardware": "empty",
}


def gdb(*commands, before=(), locale="C.UTF-8", program=PROGRAM):
    """What gdb writes."""
    words = ["gdb", "-q", "-nx", "-batch", "-iex", "set debuginfod enabled off"]
    for command in before:
        words += ["-iex", command]
    for command in commands:
        words += ["-ex", command]
    # In a session of its own, without a terminal, which gdb would hand to its program.
    done = subprocess.run([*words, program], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, check=False, timeout=100,
                          start_new_session=True, env={**os.environ, "LC_ALL": locale})
    return done.stdout.decode("utf-8", "replace")


def locals_of(output):
    """The lines "name = value"."""
    return dict(line.split(" = ", 1) for line in output.split("\n") if " = " in line)


@contextlib.contextmanager
def stripped_library():
    """A folder with the library as a release has it."""
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["strip", "--strip-debug", "-o", f"{folder}/libzkflnetwork.so.0",
                        os.path.realpath(LIBRARY)], check=True)
        yield folder


class PrintersTest(unittest.TestCase):
    maxDiff = None

    def test_values(self):
        shown = locals_of(gdb(f"source {SCRIPT}", "break show", "run", "up", "info locals"))
        for name, wanted in SHOWN.items():
            self.assertEqual(shown.get(name), wanted, name)
        # Which adapter is the first is the machine's affair.
        self.assertRegex(shown["adapter"], r'^"[^"]+"( up| loopback| multicast)* = '
                                           r'{identifier = "\d+", hardware address = ')

    def test_a_terminal_that_shows_ascii_only(self):
        shown = locals_of(gdb(f"source {SCRIPT}", "break show", "run", "up",
                              "info locals", locale="C"))
        self.assertTrue(shown["parsed"].startswith('"https://u@\\xe9.example:080'), shown["parsed"])

    def test_what_has_not_been_made_yet_is_no_error(self):
        output = gdb(f"source {SCRIPT}", "break main", "run", "info locals")
        self.assertNotIn("Python", output)
        self.assertLessEqual(set(SHOWN), set(locals_of(output)))

    def test_gdb_loads_the_script_by_itself_from_where_it_is_installed(self):
        with tempfile.TemporaryDirectory() as folder:
            library = os.path.realpath(LIBRARY)
            place = pathlib.Path(folder + os.path.dirname(library))
            place.mkdir(parents=True)
            shutil.copy(SCRIPT, place / (os.path.basename(library) + "-gdb.py"))
            output = gdb("break show", "run", "up", "info locals", before=[
                f"add-auto-load-scripts-directory {folder}", f"add-auto-load-safe-path {folder}"])
        self.assertEqual(locals_of(output).get("parsed"), SHOWN["parsed"])

    def test_without_debug_information_of_the_library_it_says_so(self):
        with stripped_library() as folder:
            # "info locals" has words of its own for IRIs.
            names = ["parsed", "args", "four", "prefixed", "adapter", "hardware"]
            output = gdb(f"source {SCRIPT}", f"set environment LD_LIBRARY_PATH {folder}",
                         "break show", "run", "up",
                         *(word for name in names for word in (f"echo {name}: ", f"print {name}")))
        shown = dict(re.findall(r"^(\w+): ?\$\d+ = (.*)$", output, re.MULTILINE))
        missing = "<libzkflnetwork has no debug information>"
        for name in names[:-1]:
            self.assertEqual(shown.get(name), missing, output)
        # clang describes what a std::vector holds only where its functions are, here in the library.
        self.assertIn(shown.get("hardware"), [SHOWN["hardware"], missing], output)

    def test_a_program_that_describes_iris_itself_needs_no_library_for_them(self):
        with stripped_library() as folder:
            output = gdb(f"source {SCRIPT}", f"set environment LD_LIBRARY_PATH {folder}",
                         "break show", "run", "print several", "up", "info locals", program=ALONE)
        shown = locals_of(output)
        for name in ["empty", "parsed", "relative", "args", "nothing", "built", "literal", "moved"]:
            self.assertEqual(shown.get(name), SHOWN[name], name)
        self.assertIn("std::vector of length 2, capacity 2 = "
                      f"{{{SHOWN['relative']}, {SHOWN['moved']}}}", shown["$1"])


def why_not():
    """Why gdb can show nothing here, or nothing."""
    if shutil.which("gdb") is None:
        return "there is no gdb"
    if b".debug_info" not in pathlib.Path(LIBRARY).read_bytes():
        return "the library has no debug information, as in a release build"
    output = gdb("break main", "run", "python print('it' + ' runs')")
    return "" if "it runs" in output and "Breakpoint 1, " in output else output


if __name__ == "__main__":
    reason = why_not()
    if reason:
        print(f"SKIPPED: {reason}")
        sys.exit(1 if os.environ.get("ZKFLNETWORK_REQUIRE_GDB") else SKIPPED)
    unittest.main(argv=sys.argv[:1])
