#!/usr/bin/env python3
"""Compares `iri adapters --json` with `ip -j addr` on this machine: adapters.py IRI

Without the program `ip` the test is skipped, and says so.
"""

import json
import shutil
import subprocess
import sys

SKIPPED = 77
TIMEOUT = 60
ATTEMPTS = 5


def output_of(*command):
    return subprocess.run(command, stdout=subprocess.PIPE, timeout=TIMEOUT, check=True).stdout


def listed(program, *options):
    return [json.loads(line) for line in output_of(program, "adapters", "--json", *options)
            .decode("utf-8").splitlines()]


def is_up(link):
    """Whether the kernel says that a link is up and running; ip only tells if it does not run."""
    return "UP" in link["flags"] and "NO-CARRIER" not in link["flags"]


def expected(link):
    """What iri is to say of a link, but for its description."""
    loopback = "LOOPBACK" in link["flags"]
    return {
        "ifindex": link["ifindex"],
        "ifname": link["ifname"],
        "up": is_up(link),
        "loopback": loopback,
        "multicast": "MULTICAST" in link["flags"],
        **({"link_type": link["link_type"]} if loopback else {}),
        "address": None if loopback else link.get("address"),
        "addr_info": [{name: address[name] for name in ("family", "local", "prefixlen")}
                      for address in link["addr_info"]],
    }


def differences(program):
    """What is not as `ip -j addr` has it, one line each."""
    links = [link for link in json.loads(output_of("ip", "-j", "addr")) if link]
    active = [link for link in links if is_up(link) and link["addr_info"]]
    for options, wanted in [(["--all"], links), ([], active)]:
        real = listed(program, *options)
        if len(real) != len(wanted):
            yield f"{len(real)} adapters with {options}, not {len(wanted)}"
        for adapter, link in zip(real, wanted):
            description = adapter.pop("description")
            if "ifalias" in link and description != link["ifalias"]:
                yield f"{link['ifname']}: described as {description}, not {link['ifalias']}"
            if adapter != expected(link):
                yield f"{adapter}\n  not {expected(link)}"
    if not links:
        yield "ip shows no link"


def main(program):
    if shutil.which("ip") is None:
        print("SKIPPED: there is no program ip to compare with")
        return SKIPPED
    # Somebody may change an adapter between the two programs, but hardly each time.
    found = []
    for _ in range(ATTEMPTS):
        found = list(differences(program))
        if not found:
            return 0
    print("\n".join(found))
    return 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
