#!/usr/bin/env python3
"""Holds what the library says of names against a real name server: names.py LOOKUP_PROBE

Each case runs in a network of its own, in which a server knows a few names; the files of the
resolver and the name of the machine are those of the case.
"""

import contextlib
import json
import os
import socket
import struct
import subprocess
import sys
import tempfile
import threading
import time
import unittest

import namespaces

PROBE = sys.argv.pop(1)

# The server's records. What is not here and ends in example.test does not exist.
RECORDS = [
    "--host-record=four.example.test,192.0.2.4",
    "--host-record=six.example.test,2001:db8::6",
    "--host-record=both.example.test,192.0.2.20,2001:db8::20",
    "--host-record=many.example.test,192.0.2.33",
    "--host-record=many.example.test,192.0.2.31",
    "--host-record=many.example.test,192.0.2.32",
    "--host-record=many.example.test,2001:db8::32",
    "--host-record=many.example.test,2001:db8::31",
    "--host-record=link.example.test,fe80::77",
    "--host-record=host.example.test,192.0.2.50",
    "--cname=middle.example.test,host.example.test",
    "--cname=alias.example.test,middle.example.test",
    # Of an address that says it is the alias
    "--ptr-record=51.2.0.192.in-addr.arpa,alias.example.test",
    # Of one whose name does not exist
    "--ptr-record=52.2.0.192.in-addr.arpa,gone.example.test",
    "--local=/example.test/",
    "--local=/2.0.192.in-addr.arpa/",
    "--local=/8.b.d.0.1.0.0.2.ip6.arpa/",
    "--server=/broken.test/127.0.0.1#5300",
    "--server=/refused.test/127.0.0.1#5301",
    "--server=/silent.test/127.0.0.1#5302",
]

HOSTS = """
127.0.0.1 localhost box
::1 ip6-localhost
"""

NOT_FOUND = {"category": "asio.netdb", "value": 1, "text": "Host not found (authoritative)"}
TRY_AGAIN = {
    "category": "asio.netdb",
    "value": 2,
    "text": "Host not found (non-authoritative), try again later",
}

NO_RECOVERY = {
    "category": "asio.netdb",
    "value": 3,
    "text": "A non-recoverable error occurred during database lookup",
}

SERVFAIL = 2
REFUSED = 5


def ip(*words):
    return namespaces.run("ip", *words)


def ask(question, argument=""):
    return json.loads(namespaces.run(PROBE, question, argument))


def addresses_of(name):
    return [answer["address"] for answer in ask("all", name)]


def addresses_by_python(name):
    """What the C library answers to the same question, asked by another program."""
    script = (
        "import socket, sys\n"
        "for entry in socket.getaddrinfo(sys.argv[1], None, 0, socket.SOCK_STREAM,\n"
        "                                socket.IPPROTO_TCP, socket.AI_ADDRCONFIG):\n"
        "    print(entry[4][0])\n"
    )
    return namespaces.run(sys.executable, "-c", script, name).decode("ascii").split()


class NamesTest(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        namespaces.enter_fresh_network()
        ip("link", "set", "lo", "up")
        self.files("127.0.0.1", HOSTS)
        socket.sethostname("box")

    def files(self, server, hosts):
        # For one second each of two times; the outside has no say.
        namespaces.put_in_place(
            "/etc/resolv.conf", f"nameserver {server}\noptions timeout:1 attempts:2\n"
        )
        namespaces.put_in_place("/etc/nsswitch.conf", "hosts: files dns\n")
        namespaces.put_in_place("/etc/hosts", hosts)

    def add_link(self, *addresses):
        """A link that is up and has these addresses, and no other."""
        ip("link", "add", "a0", "type", "veth", "peer", "name", "b0")
        for name in ["a0", "b0"]:
            ip("link", "set", name, "addrgenmode", "none")
            ip("link", "set", name, "up")
        for address in addresses:
            ip("addr", "add", address, "dev", "a0", *(["nodad"] if ":" in address else []))
        self.wait_until(lambda: b" state UP " in ip("link", "show", "a0"))

    def wait_until(self, holds):
        end = time.monotonic() + 30
        while not holds():
            self.assertLess(time.monotonic(), end)
            time.sleep(0.02)

    def start_server(self):
        self.start_broken_server(5300, SERVFAIL)
        self.start_broken_server(5301, REFUSED)
        self.start_broken_server(5302, None)
        server = subprocess.Popen(
            ["dnsmasq", "--keep-in-foreground", "--conf-file=/dev/null", "--user=", "--group=",
             "--pid-file=", "--no-resolv", "--no-hosts", "--no-poll", "--bind-interfaces",
             "--listen-address=127.0.0.1", "--no-round-robin", "--log-facility=-", *RECORDS],
            stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
            preexec_fn=namespaces.die_with_the_test,
        )

        def stop():
            server.kill()
            server.wait()
            server.stderr.close()

        self.addCleanup(stop)
        self.wait_until(lambda: self.answers() or self.is_running(server))
        return stop

    def is_running(self, server):
        """False, so that one goes on waiting; a failure if the server has ended."""
        if server.poll() is not None:
            self.fail(f"dnsmasq ended: {server.stderr.read()}")
        return False

    @staticmethod
    def answers():
        query = struct.pack("!6H", 1, 0x100, 1, 0, 0, 0) + b"\x04four\x07example\x04test\0\0\1\0\1"
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as client:
            client.settimeout(0.2)
            with contextlib.suppress(OSError):
                client.connect(("127.0.0.1", 53))
                client.send(query)
                return len(client.recv(512)) > len(query)
        return False

    def start_broken_server(self, port, code):
        """One behind the server, which answers everything with this code, or nothing."""
        server = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        server.bind(("127.0.0.1", port))

        def serve():
            while True:
                query, client = server.recvfrom(4096)
                if query == b"end":
                    return
                if code is not None:
                    flags = struct.pack("!H", 0x8180 | code)
                    server.sendto(query[:2] + flags + query[4:], client)

        thread = threading.Thread(target=serve)
        thread.start()

        def stop():
            # From within the network in which the server is.
            server.sendto(b"end", ("127.0.0.1", port))
            thread.join()
            server.close()

        self.addCleanup(stop)

    # --- forward ----------------------------------------------------------------------------

    def test_names_with_addresses(self):
        self.add_link("192.0.2.1/24", "2001:db8::1/64")
        self.start_server()
        for name, expected in [
            ("four.example.test", ["192.0.2.4"]),
            ("six.example.test", ["2001:db8::6"]),
            # RFC 6724, 2.1: version 6 comes first where both can be reached.
            ("both.example.test", ["2001:db8::20", "192.0.2.20"]),
            ("alias.example.test", ["192.0.2.50"]),
            ("FOUR.example.TEST", ["192.0.2.4"]),
            ("four.example.test.", ["192.0.2.4"]),
            ("192.0.2.99", ["192.0.2.99"]),
            ("2001:db8::99", ["2001:db8::99"]),
            ("127.1", ["127.0.0.1"]),  # a text for the name service, not for the address
        ]:
            with self.subTest(name):
                self.assertEqual(addresses_of(name), expected)
                self.assertEqual(addresses_by_python(name), expected)
                self.assertEqual(ask("first", name), {"address": expected[0], "hostName": name})
                for answer in ask("all", name):
                    self.assertEqual(answer["hostName"], name)

    def test_several_addresses_in_the_order_of_the_name_service(self):
        self.add_link("192.0.2.1/24", "2001:db8::1/64")
        self.start_server()
        found = addresses_of("many.example.test")
        self.assertEqual(
            sorted(found),
            ["192.0.2.31", "192.0.2.32", "192.0.2.33", "2001:db8::31", "2001:db8::32"],
        )
        self.assertEqual(found, addresses_by_python("many.example.test"))
        self.assertEqual(ask("first", "many.example.test")["address"], found[0])

    def test_versions_that_the_machine_has(self):
        for own, expected in [
            (["192.0.2.1/24"], ["192.0.2.20"]),
            (["2001:db8::1/64"], ["2001:db8::20"]),
        ]:
            with self.subTest(own):
                namespaces.enter_fresh_network()
                ip("link", "set", "lo", "up")
                self.add_link(*own)
                self.start_server()
                self.assertEqual(addresses_of("both.example.test"), expected)
                self.assertEqual(addresses_by_python("both.example.test"), expected)
                self.doCleanups()

    def test_link_local_address_of_a_name(self):
        self.add_link("2001:db8::1/64")
        self.start_server()
        self.assertEqual(addresses_of("link.example.test"), ["fe80::77"])

    def test_names_of_the_hosts_file(self):
        self.add_link("192.0.2.1/24")
        self.start_server()
        self.assertEqual(
            ask("first", "localhost"), {"address": "127.0.0.1", "hostName": "localhost"}
        )

    # --- failures ---------------------------------------------------------------------------

    def test_failures_of_names(self):
        self.add_link("192.0.2.1/24")
        self.start_server()
        for name, expected in [
            ("unknown.example.test", NOT_FOUND),  # NXDOMAIN
            ("six.example.test", NOT_FOUND),  # there, but with no address for this machine
            ("a.broken.test", TRY_AGAIN),  # SERVFAIL
            ("a.refused.test", TRY_AGAIN),  # REFUSED
            ("a.silent.test", TRY_AGAIN),
            ("", NOT_FOUND),
            ("a b", NOT_FOUND),
            ("b\u00fccher.example.test", NOT_FOUND),
            ("a" * 64 + ".example.test", NOT_FOUND),
        ]:
            with self.subTest(name):
                # Names that are none: what kind of failure it is, the C library knows.
                found = ask("all", name)
                self.assertEqual(found["category"], "asio.netdb")
                self.assertEqual(ask("first", name), found)
                self.assertEqual(found, expected)

    def test_a_server_that_is_down(self):
        self.add_link("192.0.2.1/24")
        stop = self.start_server()
        self.assertEqual(addresses_of("four.example.test"), ["192.0.2.4"])
        stop()
        for question, argument in [
            ("all", "four.example.test"),
            ("first", "four.example.test"),
            ("name", "192.0.2.4"),
            ("canonical", "192.0.2.4"),
        ]:
            with self.subTest(question):
                self.assertEqual(ask(question, argument), TRY_AGAIN)
        # What the name service knows by itself is not touched by this.
        self.assertEqual(addresses_of("192.0.2.99"), ["192.0.2.99"])
        self.assertEqual(addresses_of("localhost"), ["127.0.0.1"])

    def test_a_server_out_of_reach(self):
        self.files("203.0.113.1", HOSTS)
        self.add_link("192.0.2.1/24")
        self.assertEqual(ask("first", "four.example.test"), TRY_AGAIN)

    # --- reverse ----------------------------------------------------------------------------

    def test_names_of_addresses(self):
        self.add_link("192.0.2.1/24", "2001:db8::1/64")
        self.start_server()
        for address, expected in [
            ("192.0.2.4", "four.example.test"),
            ("2001:db8::6", "six.example.test"),
            ("192.0.2.51", "alias.example.test"),
            ("192.0.2.99", "192.0.2.99"),  # no PTR
            ("2001:db8::99", "2001:db8::99"),
            ("127.0.0.1", "localhost"),
        ]:
            with self.subTest(address):
                self.assertEqual(ask("name", address), expected)

    def test_a_name_of_an_address_that_is_too_long(self):
        longest = ".".join(["a" * 63] * 16)  # and no buffer for names has room for one more
        self.files("127.0.0.1", f"192.0.2.1 {longest}\n192.0.2.2 {longest}.b\n")
        self.assertEqual(ask("name", "192.0.2.1"), longest)
        self.assertEqual(ask("name", "192.0.2.2"), NO_RECOVERY)
        self.assertEqual(ask("canonical", "192.0.2.2"), NO_RECOVERY)

    def test_canonical_names(self):
        self.add_link("192.0.2.1/24", "2001:db8::1/64")
        self.start_server()
        for question, argument, expected in [
            ("canonical", "192.0.2.4", "four.example.test"),
            ("canonical", "192.0.2.51", "host.example.test"),  # at the end of the chain
            ("canonical", "192.0.2.99", "192.0.2.99"),
            ("canonical", "192.0.2.52", NOT_FOUND),  # its name has no address
            ("canonical", "2001:db8::6", "six.example.test"),
            # From the address, whatever the name was.
            ("canonical-of-name", "alias.example.test", "host.example.test"),
            ("canonical-of-name", "192.0.2.51", "host.example.test"),
        ]:
            with self.subTest(argument):
                self.assertEqual(ask(question, argument), expected)

    # --- this machine -----------------------------------------------------------------------

    def local_host(self, hosts, *addresses):
        namespaces.enter_fresh_network()
        ip("link", "set", "lo", "up")
        self.files("127.0.0.1", hosts)
        if addresses:
            self.add_link(*addresses)
        return ask("local-host")

    def test_local_host(self):
        both = "127.0.0.1 box\n::1 box\n"
        for hosts, addresses, expected in [
            ("127.0.0.1 box\n", ["10.0.0.5/8", "fe80::1/64"], "10.0.0.5"),
            ("127.0.1.1 box\n", ["10.0.0.5/8", "fe80::1/64"], "10.0.0.5"),
            ("127.0.1.1 box\n", ["169.254.3.4/16", "2001:db8::5/64"], "2001:db8::5"),
            (both, ["fe80::1/64", "2001:db8::5/64"], "2001:db8::5"),
            (both, ["fe80::1/64"], "fe80::1"),
            ("127.0.0.1 box\n", ["169.254.3.4/16"], "169.254.3.4"),
            ("127.0.0.1 box\n", [], "127.0.0.1"),
            (both, [], "::1"),
            ("192.0.2.44 box\n", ["10.0.0.5/8"], "192.0.2.44"),
            # A link-local address of the name has the adapters searched as well.
            ("169.254.9.9 box\n", ["10.0.0.5/8"], "10.0.0.5"),
            ("169.254.9.9 box\n", [], "169.254.9.9"),
            ("fe80::9 box\n", ["10.0.0.5/8", "fe80::1/64"], "10.0.0.5"),
            ("fe80::9 box\n", ["fe80::1/64"], "fe80::1"),
        ]:
            with self.subTest(hosts=hosts, addresses=addresses):
                self.assertEqual(
                    self.local_host(hosts, *addresses), {"address": expected, "hostName": "box"}
                )

    # AI_ADDRCONFIG hides an IPv4 address from a machine that has IPv6 alone, loopback aside.
    def test_local_host_whose_name_is_of_the_other_version(self):
        self.assertEqual(self.local_host("127.0.0.1 box\n", "fe80::1/64"), TRY_AGAIN)
        self.assertEqual(self.local_host("fe80::9 box\n", "169.254.3.4/16"), TRY_AGAIN)

    def test_local_host_whose_name_is_not_known(self):
        self.files("127.0.0.1", "127.0.0.1 localhost\n")
        self.assertEqual(ask("local-host"), TRY_AGAIN)

    def test_names_of_this_machine(self):
        for name, expected in [
            ("box", "box"),
            ("Box", "box"),
            ("box.example.test", "box"),
            ("box.", "box"),
            ("x" * 64, "x" * 64),
            ("b\u00fccher.example.test", "xn--bcher-kva"),
            ("\u4f8b\u3048", "xn--r8jz45g"),
            ("stra\u00dfe", "xn--strae-oqa"),
            (os.fsdecode(b"a\xff"), "a?"),
        ]:
            with self.subTest(expected):
                socket.sethostname(name)
                self.assertEqual(ask("local-name"), expected)


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as folder:
        os.environ["TMPDIR"] = folder
        status = namespaces.main(["ip", "dnsmasq"])
    sys.exit(status)
