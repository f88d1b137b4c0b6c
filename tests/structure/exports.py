#!/usr/bin/env python3
"""Checks what the shared library exports: exports.py NM LIBRARY

Nothing of Boost.Asio or ICU, and of the library's own names none from src/ alone.
"""

import re
import subprocess
import sys

# Wherever it stands in a name: what is made for a hidden type should be hidden as well.
FOREIGN = re.compile(r"\bboost::asio::|\bicu(_\d+)?::")
# What has such a name itself; in the arguments of a member template of an exported class it may be.
INNER = re.compile(r"^[^(<]*\bfoundation::network::(adapter|address|platform|text)::")


def leaks(names):
    """The names that should not be there."""
    return [name for name in names if FOREIGN.search(name) or INNER.match(name)]


def exported(nm, library):
    run = subprocess.run([nm, "-D", "-C", "--defined-only", library], capture_output=True,
                         text=True, check=True)
    # Address, kind and name
    return [line.split(" ", 2)[2] for line in run.stdout.splitlines()]


def main():
    nm, library = sys.argv[1:]
    names = exported(nm, library)
    own = [name for name in names if name.startswith("foundation::network::InetAddress::")]
    if not own:
        print(f"{library} does not even export its classes")
    found = leaks(names)
    for name in found:
        print(f"exported: {name}")
    return 0 if own and not found else 1


if __name__ == "__main__":
    sys.exit(main())
