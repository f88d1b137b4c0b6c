#!/usr/bin/env python3
"""Writes the symbols file of the Debian package anew: symbols.py LIBRARY FILE

Names that the file has already keep the version in which they came; a new one gets that of
CMakeLists.txt. What compilers write or leave out as they like is optional.
"""

import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "tests/structure"))
import exports  # noqa: E402
import versions  # noqa: E402

PACKAGE = "libzkflnetwork0"
LINE = re.compile(r'^ \([^)]*\)"(.*)@Base" (\S+)$', re.MULTILINE)


def output(*command, input=None):
    return subprocess.run(command, input=input, capture_output=True, text=True, check=True).stdout


def main(library, file):
    file = pathlib.Path(file)
    known = dict(LINE.findall(file.read_text(encoding="utf-8"))) if file.exists() else {}
    listing = output("nm", "--dynamic", "--defined-only", library)
    # As dpkg-gensymbols does it: c++filt writes some types in another way than nm.
    mangled = [line.split()[2] for line in listing.splitlines()]
    names = sorted(set(output("c++filt", input="\n".join(mangled)).splitlines()))
    version, soversion = versions.version_of(ROOT)
    lines = [f"libzkflnetwork.so.{soversion} {PACKAGE} #MINVER#",
             "* Build-Depends-Package: libzkflnetwork-dev"]
    for name in names:
        is_needed = exports.is_listed(name) and not name.startswith("guard variable")
        tags = "c++" if is_needed else "c++|optional"
        lines.append(f' ({tags})"{name}@Base" {known.get(name, version)}')
    file.write_text("\n".join(lines) + "\n", encoding="utf-8")
    print(f"{file}: {len(names)} names, {len(set(names) - set(known))} of them new, "
          f"{len(set(known) - set(names))} gone")
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
