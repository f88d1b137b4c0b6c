#!/usr/bin/env python3
"""Looks names up and lists adapters in a network made for it: network.py IRI README

The program runs in namespaces of its own, with adapters, a name service and files in /etc that
nothing outside has any influence on. Where these cannot be made the test is skipped and says so;
it fails instead if ZKFLNETWORK_REQUIRE_NAMESPACES is set.
"""

import contextlib
import ctypes
import json
import os
import pathlib
import platform
import shutil
import socket
import struct
import subprocess
import sys
import tempfile
import threading
import unittest

import adapters
import manual

for folder in ["platform", "structure"]:
    sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / folder))
import left_out  # noqa: E402
import readme  # noqa: E402

SKIPPED = 77
TIMEOUT = 60
INSIDE = "--inside"
PROGRAM = ""
README = ""

LINKS = """
link set lo up
link add far0 address 02:00:00:00:00:0b type veth peer name eth0 address 02:00:00:00:00:0a
link set eth0 alias uplink
link set eth0 addrgenmode none
link set far0 addrgenmode none
link set eth0 up
link set far0 up
addr add 192.0.2.5/24 dev eth0
addr add 192.0.2.6/32 dev eth0
addr add 2001:db8::5/64 dev eth0 nodad
addr add fe80::5/64 dev eth0 nodad
link add br0 address 02:00:00:00:00:0c type bridge
addr add 198.51.100.1/25 dev br0
"""

FILES = {
    "/etc/hosts": "127.0.0.1 localhost\n::1 localhost\n192.0.2.5 self.example.org self\n",
    "/etc/nsswitch.conf": "hosts: files dns\n",
    "/etc/resolv.conf": "nameserver 127.0.0.1\nsearch .\noptions timeout:1 attempts:1\n",
}

# --- the name service ------------------------------------------------------------------------

A, CNAME, PTR, AAAA = 1, 5, 12, 28
SERVFAIL, NXDOMAIN = 2, 3
SILENT = "no answer at all"


def reverse(address):
    if ":" not in address:
        return ".".join(reversed(address.split("."))) + ".in-addr.arpa"
    digits = socket.inet_pton(socket.AF_INET6, address).hex()
    return ".".join(reversed(digits)) + ".ip6.arpa"


# A name has records, or the failure that is the answer. Names that are not here do not exist.
ZONE = {
    "www.example.org": [(A, "192.0.2.80"), (AAAA, "2001:db8::80")],
    "alias.example.org": [(CNAME, "www.example.org")],
    "example.org": [(A, "192.0.2.1")],
    "xn--e1afmkfd.example": [(A, "192.0.2.86")],
    "many.example.org": [(A, "192.0.2.83"), (A, "192.0.2.81"), (A, "192.0.2.82")],
    "xn--bcher-kva.example.org": [(A, "192.0.2.84")],
    "orphan.example.org": [(A, "192.0.2.90")],
    "unnamed.example.org": [(A, "192.0.2.91")],
    "halfway.example.org": [(A, "192.0.2.92")],
    "empty.example.org": [],
    "broken.example.org": SERVFAIL,
    "silent.example.org": SILENT,
    reverse("192.0.2.1"): [(PTR, "example.org")],
    reverse("192.0.2.80"): [(PTR, "alias.example.org")],
    reverse("2001:db8::80"): [(PTR, "www.example.org")],
    reverse("192.0.2.84"): [(PTR, "xn--bcher-kva.example.org")],
    reverse("192.0.2.90"): [(PTR, "gone.example.org")],
    reverse("192.0.2.92"): SERVFAIL,
    reverse("192.0.2.93"): SILENT,
}


def encoded(name):
    """A name as in RFC 1035, 3.1."""
    labels = [label.encode() for label in name.split(".")]
    return b"".join(bytes([len(label)]) + label for label in labels) + b"\0"


def record(owner, kind, value):
    data = {A: lambda: socket.inet_pton(socket.AF_INET, value),
            AAAA: lambda: socket.inet_pton(socket.AF_INET6, value)}.get(kind,
                                                                       lambda: encoded(value))()
    return encoded(owner) + struct.pack("!HHIH", kind, 1, 60, len(data)) + data


def answer(query):
    """The message that answers a query (RFC 1035, 4.1); nothing if there is to be none."""
    end = 12
    labels = []
    while query[end]:
        labels.append(query[end + 1 : end + 1 + query[end]].decode())
        end += 1 + query[end]
    (kind,) = struct.unpack_from("!H", query, end + 1)
    name = ".".join(labels).lower()
    known = ZONE.get(name, NXDOMAIN)
    if known == SILENT:
        return None

    code, records = (known, []) if isinstance(known, int) else (0, [])
    while not code:
        # A name that is an alias has that record whatever is asked for.
        alias = [value for each, value in ZONE[name] if each == CNAME]
        records += [record(name, each, value) for each, value in ZONE[name]
                    if each == kind or alias]
        if not alias:
            break
        name = alias[0]
    header = query[:2] + struct.pack("!HHHHH", 0x8580 | code, 1, len(records), 0, 0)
    return header + query[12 : end + 5] + b"".join(records)


@contextlib.contextmanager
def name_service():
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as server:
        server.bind(("127.0.0.1", 53))

        def serve():
            while True:
                query, client = server.recvfrom(4096)
                if not query:
                    return
                message = answer(query)
                if message is not None:
                    server.sendto(message, client)

        thread = threading.Thread(target=serve)
        thread.start()
        try:
            yield
        finally:
            with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as last:
                last.sendto(b"", ("127.0.0.1", 53))
            thread.join(TIMEOUT)


# --- the tests -------------------------------------------------------------------------------


def run(*arguments, **options):
    return subprocess.run([PROGRAM, *arguments], capture_output=True, timeout=TIMEOUT, check=False,
                          **options)


class Lookups(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        service = name_service()
        service.__enter__()
        self.addCleanup(service.__exit__, None, None, None)

    def expect(self, name, code, wanted, error=None):
        """What there is to say of one name, as JSON and, if it is an error, on standard error."""
        done = run("lookup", "--json", name)
        if error is not None:
            wanted = {**wanted, "error": error}
        self.assertEqual(json.loads(done.stdout), {"name": name, **wanted})
        self.assertEqual(done.stderr.decode(),
                         "" if error is None else f"iri: argument 1: {error}: {name}\n")
        self.assertEqual(done.returncode, code)

    def test_names(self):
        self.expect("localhost", 0, {
            "found": True, "ascii": "localhost",
            "addresses": [each[4][0] for each in socket.getaddrinfo(
                "localhost", None, type=socket.SOCK_STREAM, flags=socket.AI_ADDRCONFIG)],
            "canonicalName": "localhost"})
        self.expect("self", 0, {"found": True, "ascii": "self", "addresses": ["192.0.2.5"],
                                "canonicalName": "self.example.org"})

    def test_several_addresses_stand_in_the_order_of_the_name_service(self):
        for name in ["www.example.org", "alias.example.org", "many.example.org"]:
            wanted = [each[4][0] for each in socket.getaddrinfo(
                name, None, type=socket.SOCK_STREAM, flags=socket.AI_ADDRCONFIG)]
            self.assertGreater(len(wanted), 1)
            self.assertEqual(json.loads(run("lookup", "--json", name).stdout)["addresses"], wanted)

    def test_the_canonical_name_is_that_behind_an_alias(self):
        self.expect("192.0.2.80", 0, {
            "found": True, "addresses": ["192.0.2.80"], "reverseName": "alias.example.org",
            "canonicalName": "www.example.org"})

    def test_addresses(self):
        self.expect("127.0.0.1", 0, {
            "found": True, "addresses": ["127.0.0.1"], "reverseName": "localhost",
            "canonicalName": "localhost"})
        self.expect("2001:DB8:0::80", 0, {
            "found": True, "addresses": ["2001:db8::80"], "reverseName": "www.example.org",
            "canonicalName": "www.example.org"})

    def test_a_name_that_is_not_ascii_is_converted(self):
        self.expect("BÜCHER.example.org", 0, {
            "found": True, "ascii": "xn--bcher-kva.example.org", "addresses": ["192.0.2.84"],
            "canonicalName": "xn--bcher-kva.example.org"})
        self.expect("ä.example.org", 1, {"found": False, "ascii": "xn--4ca.example.org"},
                    "Host not found (authoritative)")

    def test_the_name_of_an_address_need_not_exist(self):
        self.expect("orphan.example.org", 0, {
            "found": True, "ascii": "orphan.example.org", "addresses": ["192.0.2.90"],
            "canonicalName": None})
        self.expect("192.0.2.90", 0, {
            "found": True, "addresses": ["192.0.2.90"], "reverseName": "gone.example.org",
            "canonicalName": None})

    def test_an_address_need_not_have_a_name(self):
        self.expect("unnamed.example.org", 0, {
            "found": True, "ascii": "unnamed.example.org", "addresses": ["192.0.2.91"],
            "canonicalName": None})
        self.expect("192.0.2.91", 1, {"found": False}, "the address has no name")

    def test_what_is_not_found(self):
        for name in ["gone.example.org", "empty.example.org"]:
            self.expect(name, 1, {"found": False, "ascii": name}, "Host not found (authoritative)")

    def test_a_name_service_that_fails_or_is_silent_has_not_said_that_there_is_nothing(self):
        error = "Host not found (non-authoritative), try again later"
        for name in ["broken.example.org", "silent.example.org"]:
            self.expect(name, 4, {"found": None, "ascii": name}, error)
        for address in ["192.0.2.92", "192.0.2.93"]:
            self.expect(address, 4, {"found": None}, error)
        self.expect("halfway.example.org", 4, {
            "found": True, "ascii": "halfway.example.org", "addresses": ["192.0.2.92"]}, error)

    def test_a_failure_counts_more_than_what_is_not_found(self):
        for names in [["broken.example.org", "gone.example.org", "www.example.org"],
                      ["www.example.org", "gone.example.org", "broken.example.org"]]:
            self.assertEqual(run("lookup", *names).returncode, 4)
        self.assertEqual(run("lookup", "gone.example.org", "www.example.org").returncode, 1)

    def test_text(self):
        done = run("lookup", "--color=always", "bücher.example.org", "gone.example.org",
                   "192.0.2.80", "orphan.example.org", "halfway.example.org")
        self.assertEqual(done.stdout.decode().split("\n"), [
            "\x1b[1mbücher.example.org\x1b[0m",
            "  ascii      xn--bcher-kva.example.org",
            "  address    \x1b[36m192.0.2.84\x1b[0m",
            "  canonical  xn--bcher-kva.example.org",
            "",
            "\x1b[1m192.0.2.80\x1b[0m",
            "  address    \x1b[36m192.0.2.80\x1b[0m",
            "  name       alias.example.org",
            "  canonical  www.example.org",
            "",
            "\x1b[1morphan.example.org\x1b[0m",
            "  address    \x1b[36m192.0.2.90\x1b[0m",
            "  canonical  \x1b[2m(absent)\x1b[0m",
            "",
            "\x1b[1mhalfway.example.org\x1b[0m",
            "  address    \x1b[36m192.0.2.92\x1b[0m",
            ""])
        self.assertEqual(done.stderr.decode().split("\n"), [
            "iri: argument 2: Host not found (authoritative): gone.example.org",
            "iri: argument 5: Host not found (non-authoritative), try again later: "
            "halfway.example.org", ""])

    def test_an_answer_does_not_wait_for_the_next_one(self):
        with subprocess.Popen([PROGRAM, "lookup", "localhost", "silent.example.org"],
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE) as process:
            self.assertEqual(process.stdout.readline(), b"localhost\n")
            self.assertIsNone(process.poll())
            process.communicate(timeout=TIMEOUT)
            self.assertEqual(process.returncode, 4)

    def test_the_readme(self):
        for arguments, written in readme.sessions_of(README, "iri"):
            if arguments[0] == "lookup":
                self.assertEqual(run(*arguments).stdout.decode(), written)
                return
        self.fail("README.md shows no lookup")


    def test_the_manual(self):
        examples = manual.expected(True)
        self.assertNotEqual(examples, [])
        if shutil.which("jq") is None:
            examples = [each for each in examples if "jq" not in each["command"]]
            print("SKIPPED: the examples of the manual with jq, which is not here")
        self.assertEqual(manual.run(examples, PROGRAM), [])


class WithoutNameService(unittest.TestCase):
    def test_nobody_answers(self):
        done = run("lookup", "www.example.org")
        self.assertEqual(done.returncode, 4)
        self.assertEqual(done.stdout, b"")
        self.assertEqual(done.stderr, b"iri: argument 1: Host not found (non-authoritative), try "
                                      b"again later: www.example.org\n")

    def test_files_still_do(self):
        self.assertEqual(run("lookup", "self").returncode, 0)


class Adapters(unittest.TestCase):
    maxDiff = None

    def test_ip_says_the_same(self):
        self.assertEqual(list(adapters.differences(PROGRAM)), [])

    def test_the_table_of_all(self):
        done = run("adapters", "--all")
        self.assertEqual(done.returncode, 0)
        self.assertEqual(done.stderr, b"")
        table = {line.split()[0]: line for line in done.stdout.decode().split("\n") if line}
        heading = table["NAME"]
        index = {each["ifname"]: each["ifindex"] for each in adapters.listed(PROGRAM, "--all")}
        self.assertEqual(table["far0"].split(),
                         ["far0", str(index["far0"]), "up", "multicast", "02:00:00:00:00:0b",
                          "veth"])
        self.assertEqual(table["br0"].split(),
                         ["br0", str(index["br0"]), "down", "multicast", "02:00:00:00:00:0c",
                          "198.51.100.1/25", "bridge"])
        for column, cell in [("NAME", "br0"), ("STATE", "down"), ("HARDWARE", "02:"),
                             ("ADDRESSES", "198."), ("DESCRIPTION", "bridge")]:
            self.assertEqual(table["br0"].index(cell), heading.index(column))

    def test_the_readme(self):
        for arguments, written in readme.sessions_of(README, "iri"):
            if arguments[0] == "adapters":
                self.assertEqual(run(*arguments).stdout.decode(), written)
                return
        self.fail("README.md shows no adapters")

    def test_colours(self):
        plain = run("adapters", "--all").stdout.decode()
        colored = run("adapters", "--all", "--color=always").stdout.decode()
        self.assertIn("\x1b[1meth0\x1b[0m", colored)
        self.assertIn("\x1b[32mup multicast\x1b[0m", colored)
        self.assertIn("\x1b[2mdown multicast\x1b[0m", colored)
        self.assertIn("\x1b[36m2001:db8::5/64\x1b[0m", colored)
        for code in ["0", "1", "2", "32", "36"]:
            colored = colored.replace(f"\x1b[{code}m", "")
        self.assertEqual(colored, plain)

    def test_a_system_that_tells_nothing(self):
        for options in [[], ["--all"], ["--json"]]:
            done = run("adapters", *options, preexec_fn=forbid_sockets)
            self.assertEqual(done.returncode, 4)
            self.assertEqual(done.stdout, b"")
            self.assertEqual(done.stderr,
                             b"iri: Call to GetAdaptersAddresses failed.: Permission denied\n")


def forbid_sockets():
    """Makes the call socket fail with EACCES, for this process and what it becomes (seccomp)."""
    number = {"x86_64": 41, "aarch64": 198, "riscv64": 198}[platform.machine()]
    load, equal, end = 0x20, 0x15, 0x06
    fail, allow = 0x00050000 | 13, 0x7FFF0000
    filters = [(load, 0, 0, 0), (equal, 0, 1, number), (end, 0, 0, fail), (end, 0, 0, allow)]
    code = ctypes.create_string_buffer(b"".join(struct.pack("HBBI", *each) for each in filters))
    program = struct.pack("HxxxxxxP", len(filters), ctypes.addressof(code))
    libc = ctypes.CDLL(None, use_errno=True)
    if libc.prctl(38, 1, 0, 0, 0) or libc.prctl(22, 2, program, 0, 0):
        raise OSError(ctypes.get_errno(), "seccomp")


# --- the namespaces --------------------------------------------------------------------------


def make_world(folder):
    for line in filter(None, LINKS.split("\n")):
        subprocess.run(["ip", *line.split()], check=True)
    # What the kernel tells there is of the namespace in which it was mounted.
    subprocess.run(["mount", "-t", "sysfs", "sysfs", "/sys"], check=True)
    for path, text in FILES.items():
        mine = pathlib.Path(folder) / pathlib.Path(path).name
        mine.write_text(text, encoding="utf-8")
        subprocess.run(["mount", "--bind", str(mine), path], check=True)


def enter(program, page):
    """Runs this file again in namespaces of its own."""
    why = ""
    command = ["unshare", "--net", "--mount"] + (["--map-root-user"] if os.geteuid() else [])
    for needed in ["unshare", "ip", "mount"]:
        if shutil.which(needed) is None:
            why = f"there is no program {needed}"
    if not why and subprocess.run([*command, "true"], check=False).returncode != 0:
        why = "no namespaces can be made here"
    if why:
        print(f"SKIPPED: {why}")
        return 1 if os.environ.get("ZKFLNETWORK_REQUIRE_NAMESPACES") else SKIPPED
    return subprocess.run([*command, sys.executable, "-B", __file__, program, page, INSIDE],
                          check=False).returncode


def main():
    global PROGRAM, README
    if sys.argv[-1] != INSIDE:
        return enter(*sys.argv[1:])
    PROGRAM, page = sys.argv[1:-1]
    README = pathlib.Path(page).read_text(encoding="utf-8")
    left_out.remove_cases("tool.iri-network")
    with tempfile.TemporaryDirectory() as folder:
        make_world(folder)
        return not unittest.main(argv=sys.argv[:1], exit=False).result.wasSuccessful()


if __name__ == "__main__":
    sys.exit(main())
