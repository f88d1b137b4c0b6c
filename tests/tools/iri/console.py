#!/usr/bin/env python3
"""What the tool shows on a console of Windows: console.py IRI

Wine draws its console on a terminal of Linux. It moves the cursor and breaks lines by itself, so what is
looked for here is a text somewhere in what it draws.
"""

import os
import re
import subprocess
import sys
import unittest

import cases

PROGRAM = ""
TIMEOUT = 60
RED = b"\x1b[31m1\x1b[0m"  # a port


def shown(*arguments, **environment):
    kept = {name: value for name, value in os.environ.items() if name not in ("NO_COLOR", "TERM")}
    terminal = cases.Terminal()
    terminal.thread.start()
    try:
        done = subprocess.run([PROGRAM, *arguments], stdin=subprocess.DEVNULL,
                              stdout=terminal.program, stderr=subprocess.PIPE, timeout=TIMEOUT,
                              env={**kept, **environment}, check=False)
    finally:
        os.close(terminal.program)
    text = terminal.end()
    assert done.returncode == 0, (done, text)
    return text


class Console(unittest.TestCase):
    def test_it_has_colours(self):
        # Windows has no TERM, and somebody may set one all the same.
        for environment in [{}, {"TERM": "xterm"}, {"TERM": ""}, {"NO_COLOR": ""}]:
            self.assertIn(RED, shown("parse", "//h:1", **environment))

    def test_it_has_none_where_nobody_wants_them(self):
        for environment in [{"TERM": "dumb"}, {"NO_COLOR": "1"}]:
            text = shown("parse", "//h:1", **environment)
            self.assertNotIn(RED, text)
            self.assertIn(b"//h:1", text)
        self.assertNotIn(RED, shown("parse", "--color=never", "//h:1"))
        self.assertNotIn(b"\x1b[3", shown("parse", "--json", "//h:1"))

    def test_it_shows_unicode(self):
        # Of characters beyond U+FFFF the console of Wine shows none.
        for text in ["пример", "漢字", "é"]:
            self.assertIn(text.encode(), shown("get", "path", text))

    def test_much_is_shown_whole(self):
        text = shown("get", "path", *(f"line{number}" for number in range(2000)))
        # Each time that something is written, the cursor is hidden.
        text = re.sub(rb"\x1b\[[0-9;?]*[a-zA-Z]", b"", text)
        for number in range(2000):
            self.assertIn(b"line%d\r\n" % number, text)


if __name__ == "__main__":
    PROGRAM = sys.argv.pop(1)
    unittest.main()
