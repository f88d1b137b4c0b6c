#!/usr/bin/env python3
"""Holds everything that tells the version against CMakeLists.txt: versions.py ROOT [PC_FILE [IRI]]"""

import pathlib
import re
import subprocess
import sys


def first(pattern, text):
    """What the first match of a pattern has in its group, or None."""
    match = re.search(pattern, text, re.MULTILINE)
    return match and match[1]


# Each file that has to name the version itself, and how it does.
TOLD = {
    "CHANGELOG.md": r"^## (\d\S*)$",  # the last version; what is not released stands above it
    "debian/changelog": r"^zkflnetwork \((\S+)-\d+\)",
    "packaging/vcpkg/ports/zkflnetwork/vcpkg.json": r'^  "version": "([^"]*)",$',
}
# And the SOVERSION, where it is part of a name.
TOLD_SOVERSION = {
    "debian/control": r"^Package: libzkflnetwork(\d+)$",
    "debian/libzkflnetwork0.symbols": r"^libzkflnetwork\.so\.(\d+) libzkflnetwork\1 #MINVER#$",
}


def version_of(root):
    """The version and the SOVERSION, which only CMake is told."""
    version = first(r"^project\(zkflnetwork\n +VERSION (\d+\.\d+\.\d+)$",
                    (root / "CMakeLists.txt").read_text(encoding="utf-8"))
    soversion = first(r"^ +SOVERSION (\d+)\)$",
                      (root / "src/CMakeLists.txt").read_text(encoding="utf-8"))
    return version, soversion


def problems(root, version, soversion):
    """What tells another version, as texts."""
    for files, wanted in ((TOLD, version), (TOLD_SOVERSION, soversion)):
        for name, pattern in files.items():
            told = first(pattern, (root / name).read_text(encoding="utf-8"))
            if told != wanted:
                yield f"{name} tells {told}, not {wanted}"


def main(root, pc_file=None, iri=None):
    root = pathlib.Path(root)
    version, soversion = version_of(root)
    if not version or not soversion:
        print(f"CMakeLists.txt tells the version {version} and the SOVERSION {soversion}")
        return 1
    found = list(problems(root, version, soversion))
    if pc_file:
        told = first(r"^Version: (.*)$", pathlib.Path(pc_file).read_text(encoding="utf-8"))
        if told != version:
            found.append(f"{pc_file} tells {told}, not {version}")
    if iri:
        told = subprocess.run([iri, "--version"], capture_output=True, text=True,
                              check=True).stdout.strip()
        if told != f"iri {version}":
            found.append(f"iri --version tells {told}, not {version}")
    print("\n".join(found) or f"{version} everywhere")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
