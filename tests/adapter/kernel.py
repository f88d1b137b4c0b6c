#!/usr/bin/env python3
"""Holds the adapters that the library lists against what `ip` says: kernel.py ADAPTER_DUMP

Each case makes links in a network of its own. What is compared is every field of every adapter, and
the order of adapters and addresses.
"""

import fcntl
import ipaddress
import json
import os
import struct
import sys
import tempfile
import time
import unittest

import left_out
import namespaces

DUMP = sys.argv.pop(1)
LEFT_OUT = left_out.reasons("adapter.kernel")

# linux/if_tun.h, linux/if_arp.h
TUNSETIFF = 0x400454CA
TUNSETLINK = 0x400454CD
IFF_TUN = 0x0001
IFF_TAP = 0x0002
IFF_NO_PI = 0x1000
ARPHRD_TUNNEL6 = 769
ARPHRD_IPGRE = 778
ARPHRD_IEEE802154 = 804
ARPHRD_IP6GRE = 823


def ip(*words):
    return namespaces.run("ip", *words)


def text_of(name):
    """A name of the kernel as the library gives it: UTF-8, or else ASCII."""
    data = os.fsencode(name)
    try:
        return data.decode("utf-8")
    except UnicodeDecodeError:
        return data.decode("ascii", errors="replace")


def hardware_address(link):
    """The hardware address of a link; ip shows those that are IP addresses as such."""
    text = link.get("address", "")
    if text == "" or "LOOPBACK" in link["flags"]:
        return ""
    if link["link_type"] in ("gre", "gre6", "tunnel6", "ipip", "sit"):
        return ipaddress.ip_address(text).packed.hex(":")
    return text


def is_active(adapter):
    return adapter["up"] and adapter["interfaceAddresses"] != []


class KernelTest(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        namespaces.enter_fresh_network()
        namespaces.show_network_in_sys()
        self.addCleanup(namespaces.hide_network_in_sys)

    # --- what ip says, in the library's words -----------------------------------------------

    def expected_address(self, info):
        return {
            "text": f"{info['local']}/{info['prefixlen']}",
            "address": info["local"],
            "version": {"inet": 4, "inet6": 6}[info["family"]],
            "prefixLength": info["prefixlen"],
            "linkLocal": info["local"].startswith(("fe80:", "169.254.")),
            "loopback": info["local"].startswith("127.") or info["local"] == "::1",
        }

    def expected_adapter(self, link, describe):
        addresses = [self.expected_address(info) for info in link["addr_info"]]
        flags = link["flags"]
        hardware = hardware_address(link)
        return {
            "identifier": str(link["ifindex"]),
            "friendlyName": text_of(link["ifname"]),
            "description": describe(link),
            "hardwareAddress": hardware,
            "hardwareBytes": len(hardware.split(":")) if hardware else 0,
            "interfaceAddresses": addresses,
            "inetAddresses": [address["address"] for address in addresses],
            # ip does not show IFF_RUNNING, but NO-CARRIER where a link that is up lacks it.
            "up": "UP" in flags and "NO-CARRIER" not in flags,
            "loopback": "LOOPBACK" in flags,
            "multicast": "MULTICAST" in flags,
        }

    @staticmethod
    def alias_or_driver(link):
        return text_of(link.get("ifalias") or KernelTest.driver(link))

    @staticmethod
    def driver(link):
        # The drivers of the links made here have the names of their kinds.
        if "the drivers of links" in LEFT_OUT:
            return ""
        return link.get("linkinfo", {}).get("info_kind", "")

    def links(self):
        output = ip("-j", "-d", "addr").decode("utf-8", errors="surrogateescape")
        # ip writes an empty object for each link that it left out.
        return [link for link in json.loads(output) if link]

    def wait_until(self, holds):
        """The kernel tells of carriers and of addresses that it makes a little later."""
        end = time.monotonic() + 30
        while not holds({link["ifname"]: link for link in self.links()}):
            self.assertLess(time.monotonic(), end)
            time.sleep(0.02)

    def compare(self, describe=None):
        """Compares both lists with what ip says, and answers them by name."""

        def expect():
            return [
                self.expected_adapter(link, describe or self.alias_or_driver)
                for link in self.links()
            ]

        before, found, expected = None, None, expect()
        while expected != before:  # something was still settling
            before = expected
            found = json.loads(namespaces.run(DUMP))
            expected = expect()
        self.assertEqual(found["listAll"], expected)
        self.assertEqual(found["list"], [adapter for adapter in expected if is_active(adapter)])
        return (
            {adapter["friendlyName"]: adapter for adapter in found["listAll"]},
            [adapter["friendlyName"] for adapter in found["list"]],
        )

    def add_pair(self, name="a0", peer="b0"):
        """Two links that are each other's cable, both up."""
        ip("link", "add", name, "type", "veth", "peer", "name", peer)
        for link in [name, peer]:
            ip("link", "set", link, "addrgenmode", "none")
            ip("link", "set", link, "up")
        self.wait_until(lambda links: links[name]["operstate"] == links[peer]["operstate"] == "UP")

    def add_tun(self, name, mode=IFF_TUN, hardware_type=None):
        """A link whose other end is this process."""
        try:
            file = os.open("/dev/net/tun", os.O_RDWR)
        except OSError as refused:
            self.skipTest(f"no link of the kind tun can be made: {refused}")
        self.addCleanup(os.close, file)
        request = struct.pack("16sH22x", name.encode(), mode | IFF_NO_PI)
        fcntl.ioctl(file, TUNSETIFF, request)
        if hardware_type is not None:
            fcntl.ioctl(file, TUNSETLINK, hardware_type)

    # --- cases ------------------------------------------------------------------------------

    def test_loopback_that_is_down(self):
        adapters, active = self.compare()
        self.assertEqual(list(adapters), ["lo"])
        self.assertEqual(active, [])

    def test_loopback_that_is_up(self):
        ip("link", "set", "lo", "up")
        adapters, active = self.compare()
        self.assertEqual(active, ["lo"])
        self.assertEqual(adapters["lo"]["inetAddresses"], ["127.0.0.1", "::1"])
        self.assertEqual(adapters["lo"]["hardwareAddress"], "")

    def test_links_with_one_address(self):
        self.add_pair()
        ip("addr", "add", "192.168.1.5/24", "dev", "a0")
        ip("addr", "add", "2001:db8::5/64", "dev", "b0", "nodad")
        adapters, active = self.compare()
        self.assertEqual(active, ["b0", "a0"])
        self.assertEqual(adapters["a0"]["interfaceAddresses"][0]["text"], "192.168.1.5/24")
        self.assertEqual(adapters["a0"]["hardwareBytes"], 6)

    def test_links_without_an_address(self):
        self.add_pair()
        adapters, active = self.compare()
        self.assertTrue(adapters["a0"]["up"])
        self.assertEqual(active, [])

    def test_links_that_are_down_or_have_no_carrier(self):
        self.add_pair()
        for name in ["a0", "b0"]:
            ip("addr", "add", "10.0.0.1/8", "dev", name)
        ip("link", "set", "b0", "down")  # which takes the carrier of the other
        self.wait_until(lambda links: "NO-CARRIER" in links["a0"]["flags"])
        adapters, active = self.compare()
        self.assertEqual([adapters["a0"]["up"], adapters["b0"]["up"]], [False, False])
        self.assertEqual(active, [])

    def test_several_addresses_in_order(self):
        self.add_pair()
        for address in ["10.0.0.9/8", "10.0.0.3/8", "10.0.0.7/32", "192.0.2.1/31", "10.0.0.1/0"]:
            ip("addr", "add", address, "dev", "a0")
        for address in ["2001:db8::9/128", "2001:db8::1/64", "::ffff:10.0.0.1/96", "2001::/0"]:
            ip("addr", "add", address, "dev", "a0", "nodad")
        adapters, _ = self.compare()
        self.assertEqual(len(adapters["a0"]["interfaceAddresses"]), 9)

    def test_link_local_addresses(self):
        self.add_pair()
        ip("addr", "add", "169.254.3.4/16", "dev", "a0")
        ip("addr", "add", "fe80::1/64", "dev", "a0", "nodad")
        for words in (["down"], ["addrgenmode", "eui64"], ["up"]):  # to have one made
            ip("link", "set", "b0", *words)
        self.wait_until(lambda links: links["b0"]["addr_info"] and links["a0"]["operstate"] == "UP")
        adapters, active = self.compare()
        self.assertEqual(active, ["b0", "a0"])
        self.assertTrue(adapters["b0"]["interfaceAddresses"][0]["linkLocal"])
        self.assertEqual(adapters["a0"]["inetAddresses"], ["169.254.3.4", "fe80::1"])

    def test_tentative_and_deprecated_addresses(self):
        self.add_pair()
        ip("addr", "add", "2001:db8::1/64", "dev", "a0")  # tentative for a second
        ip("addr", "add", "2001:db8::2/64", "dev", "a0", "nodad", "preferred_lft", "0")
        ip("addr", "add", "10.0.0.1/8", "dev", "a0", "preferred_lft", "0")
        adapters, _ = self.compare()
        self.assertEqual(len(adapters["a0"]["interfaceAddresses"]), 3)

    def test_addresses_with_labels(self):
        self.add_pair("a0", "a01")
        ip("addr", "add", "10.0.0.1/8", "dev", "a0")
        ip("addr", "add", "10.0.0.2/8", "dev", "a0", "label", "a0:1")
        ip("addr", "add", "10.0.0.3/8", "dev", "a0", "label", "a0:one:two")
        ip("addr", "add", "10.0.0.4/8", "dev", "a0", "label", "a0-old")
        ip("addr", "add", "10.0.0.5/8", "dev", "a01", "label", "a01:1")
        ip("addr", "add", "10.0.0.6/8", "dev", "a01", "label", "a01x")
        adapters, _ = self.compare()
        self.assertEqual(len(adapters["a0"]["inetAddresses"]), 4)
        self.assertEqual(len(adapters["a01"]["inetAddresses"]), 2)

    def test_addresses_with_peers(self):
        self.add_pair()
        ip("addr", "add", "10.0.0.1", "peer", "10.9.9.9", "dev", "a0")
        ip("addr", "add", "10.0.0.2", "peer", "10.9.9.8/24", "dev", "a0")
        ip("addr", "add", "2001:db8::1", "peer", "2001:db8:9::9/64", "dev", "a0", "nodad")
        adapters, _ = self.compare()
        self.assertEqual(
            [address["text"] for address in adapters["a0"]["interfaceAddresses"]],
            ["10.0.0.1/32", "10.0.0.2/24", "2001:db8::1/64"],
        )

    def test_links_without_multicast(self):
        self.add_pair()
        ip("link", "set", "a0", "multicast", "off")
        ip("link", "set", "lo", "multicast", "on")
        adapters, _ = self.compare()
        self.assertFalse(adapters["a0"]["multicast"])
        self.assertTrue(adapters["b0"]["multicast"])
        self.assertTrue(adapters["lo"]["multicast"])

    def test_a_link_without_hardware_address(self):
        self.add_tun("t0")
        ip("addr", "add", "10.0.0.1/8", "dev", "t0")
        adapters, active = self.compare()
        self.assertEqual(active, [])
        ip("link", "set", "t0", "up")
        self.wait_until(lambda links: "NO-CARRIER" not in links["t0"]["flags"])
        adapters, active = self.compare()
        self.assertEqual(active, ["t0"])
        self.assertEqual(adapters["t0"]["hardwareAddress"], "")

    def test_hardware_addresses_of_other_lengths(self):
        for name, kind, length in [
            ("t4", ARPHRD_IPGRE, 4),
            ("t8", ARPHRD_IEEE802154, 8),
            ("t16", ARPHRD_IP6GRE, 16),
            ("u16", ARPHRD_TUNNEL6, 16),
        ]:
            self.add_tun(name, IFF_TAP, kind)
            # The driver sets no more than six bytes.
            ip("link", "set", name, "address", ":".join(["0a", "1b", "2c", "3d", "4e", "5f",
                                                         *["77"] * 10][:length]))
            adapters, _ = self.compare()
            self.assertEqual(adapters[name]["hardwareBytes"], length)
            self.assertTrue(adapters[name]["hardwareAddress"].startswith("0a:1b:2c:3d"))

    def test_names(self):
        for name in ["a" * 15, "é-\u03c3-\u4f8b", os.fsdecode(b"\xe9th0"), os.fsdecode(b"\xff"), "7",
                     'q"\\', "\U0001F600"]:
            ip("link", "add", name, "type", "bridge")
        adapters, _ = self.compare()
        for name in ["a" * 15, "é-\u03c3-\u4f8b", "\ufffdth0", "\ufffd", "7", 'q"\\', "\U0001F600"]:
            self.assertIn(name, adapters)

    def test_renamed_links_keep_their_addresses(self):
        self.add_pair()
        ip("addr", "add", "10.0.0.1/8", "dev", "a0")
        ip("addr", "add", "10.0.0.2/8", "dev", "a0", "label", "a0:1")
        ip("link", "set", "a0", "down")
        ip("link", "set", "a0", "name", "renamed")
        ip("link", "set", "renamed", "up")
        self.wait_until(lambda links: links["renamed"]["operstate"] == "UP")
        adapters, active = self.compare()
        self.assertEqual(adapters["renamed"]["inetAddresses"], ["10.0.0.1", "10.0.0.2"])
        self.assertEqual(active, ["renamed"])

    def test_aliases(self):
        self.add_pair()
        for link, alias in [("a0", "to the office"), ("b0", "b\u00fcro \u4f8b"), ("lo", "myself")]:
            ip("link", "set", link, "alias", alias)
        self.add_tun("t0")
        ip("link", "set", "t0", "alias", "tunnel")
        adapters, _ = self.compare()
        self.assertEqual(adapters["a0"]["description"], "to the office")
        self.assertEqual(adapters["b0"]["description"], "b\u00fcro \u4f8b")
        self.assertEqual(adapters["t0"]["description"], "tunnel")

    def test_aliases_where_sys_shows_another_network(self):
        ip("link", "add", "a0", "index", "77", "type", "bridge")
        ip("link", "set", "a0", "alias", "of another network")
        namespaces.enter_fresh_network()  # /sys still shows the first one
        ip("link", "add", "a0", "index", "77", "type", "bridge")
        adapters, _ = self.compare(describe=self.driver)
        self.assertEqual(adapters["a0"]["description"],
                         "" if "the drivers of links" in LEFT_OUT else "bridge")

    def test_indices_in_any_order(self):
        for name, index in [("x0", 4000), ("x1", 17), ("x2", 1000000000), ("x3", 300)]:
            ip("link", "add", name, "index", str(index), "type", "bridge")
        adapters, _ = self.compare()
        self.assertEqual(adapters["x2"]["identifier"], "1000000000")

    def test_every_kind_of_link_that_this_kernel_makes(self):
        kinds = {
            "dummy": [], "bridge": [], "ifb": [], "nlmon": [], "vcan": [], "bond": [], "team": [],
            "vxlan": ["id", "5", "dstport", "4789"], "vrf": ["table", "10"],
            "geneve": ["id", "5", "remote", "192.0.2.2"], "wireguard": [],
            "ipip": ["local", "192.0.2.1", "remote", "192.0.2.2"],
            "gre": ["local", "192.0.2.1", "remote", "192.0.2.2"],
            "ip6tnl": ["local", "2001:db8::1", "remote", "2001:db8::2"],
            "ip6gre": ["local", "2001:db8::1", "remote", "2001:db8::2"],
        }
        made = []
        for kind, options in kinds.items():
            try:
                ip("link", "add", f"x-{kind}", "type", kind, *options)
                made.append(kind)
            except RuntimeError as refused:
                print(f"no link of kind {kind}: {refused}".replace("\n", " "))
                continue
            for words in (["link", "set", f"x-{kind}", "up"],
                          ["addr", "add", f"10.0.{len(made)}.1/24", "dev", f"x-{kind}"]):
                try:
                    ip(*words)
                except RuntimeError as refused:  # not every kind has addresses
                    print(f"{words}: {refused}".replace("\n", " "))
        self.assertNotEqual(made, [])
        # A driver may call itself something else than its kind: of these only the rest is compared.
        drivers = {
            adapter["friendlyName"]: adapter["description"]
            for adapter in json.loads(namespaces.run(DUMP))["listAll"]
        }
        self.compare(describe=lambda link: drivers[link["ifname"]])

    def test_many_links_with_many_addresses(self):
        commands = []
        for link in range(100):
            commands.append(f"link add m{link} type bridge")
            commands += [f"addr add 10.{link}.{i}.1/24 dev m{link}" for i in range(5)]
            commands += [f"addr add 2001:db8:{link}::{i}/64 dev m{link} nodad" for i in range(1, 6)]
        path = f"{os.environ['TMPDIR']}/batch"
        with open(path, "w", encoding="ascii") as out:
            out.write("\n".join(commands) + "\n")
        ip("-batch", path)
        adapters, _ = self.compare()
        self.assertEqual(len(adapters), 101)


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as folder:
        os.environ["TMPDIR"] = folder
        status = namespaces.main(["ip"])
    sys.exit(status)
