#!/usr/bin/env python3
"""Holds the symbols file of the Debian package against the list of exported names: symbols.py ROOT

What the library has to export is in both; what compilers write or leave out as they like is in neither,
or optional.
"""

import pathlib
import re
import sys


def main(root):
    root = pathlib.Path(root)
    sys.path.insert(0, str(root / "tests/structure"))
    import exports

    exported = set((root / "tests/structure/exports.txt").read_text(encoding="utf-8").splitlines())
    exported = {name for name in exported if not name.startswith("guard variable")}
    text = (root / "debian/libzkflnetwork0.symbols").read_text(encoding="utf-8")
    # c++filt does not know the short names of streams.
    text = re.sub(r"std::basic_(\w*stream)<char, std::char_traits<char> >", r"std::\1", text)
    packaged = set(exports.listed(re.findall(r'^ \(c\+\+\)"(.*)@Base" ', text, re.MULTILINE)))
    for name in sorted(exported - packaged):
        print(f"not in debian/libzkflnetwork0.symbols: {name}")
    for name in sorted(packaged - exported):
        print(f"not exported: {name}")
    if exported != packaged:
        print("./dev package --symbols makes the file anew")
        return 1
    print(f"{len(exported)} names")
    return 0 if exported else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
