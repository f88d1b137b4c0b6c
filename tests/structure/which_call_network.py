#!/usr/bin/env python3
"""Holds what the examples about networks print against docs/which-call.md:
which_call_network.py PAGE LOOKUP MACHINE

The programs run in a network made for them.
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

import namespaces
import readme

PAGE, LOOKUP, MACHINE = sys.argv[1:]
del sys.argv[1:]

LINKS = """
link set lo up
link add eth0 index 7 address 02:00:00:00:00:0a type veth peer name far0
link set eth0 addrgenmode none
link set far0 addrgenmode none
link set eth0 up
link set far0 up
addr add 192.0.2.5/24 dev eth0
addr add 192.0.2.6/32 dev eth0
addr add 2001:db8::5/64 dev eth0 nodad
"""

FILES = {
    "/etc/hosts": "192.0.2.84 xn--bcher-kva.example.org\n2001:db8::84 xn--bcher-kva.example.org\n",
    "/etc/nsswitch.conf": "hosts: files\n",
}


class WhichCallTest(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        namespaces.enter_fresh_network()
        namespaces.show_network_in_sys()
        for line in LINKS.strip().split("\n"):
            namespaces.run("ip", *line.split())
        for path, text in FILES.items():
            namespaces.put_in_place(path, text)

    def check(self, program):
        page = pathlib.Path(PAGE).read_text(encoding="utf-8")
        # Where a program is emulated, this is a script with the name of the target.
        word = "build/dev/examples/" + os.path.basename(program).removeprefix("example_")
        [(arguments, written)] = readme.sessions_of(page, word)
        done = subprocess.run([program, *arguments], stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, check=False, timeout=60)
        self.assertEqual((done.returncode, done.stdout.decode("utf-8")), (0, written))

    def test_a_look_up(self):
        self.check(LOOKUP)

    def test_the_addresses_of_the_machine(self):
        self.check(MACHINE)


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as folder:
        os.environ["TMPDIR"] = folder
        sys.exit(namespaces.main(["ip"]))
