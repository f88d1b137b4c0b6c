#!/usr/bin/env python3
"""Holds debuggers/zkflnetwork.natvis against the classes that it shows: natvis.py ROOT

There is no debugger here that reads it. What can be told is that its classes and their members are
still there, the latter by name.
"""

import pathlib
import re
import sys
import xml.etree.ElementTree

NAMESPACE = "{http://schemas.microsoft.com/vstudio/debugger/natvis/2010}"
NOT_OURS = {"s8", "_Ptr", "nullptr", "type_", "addr_", "ipv4_address_", "ipv6_address_"}


def expressions(kind):
    for element in kind.iter():
        yield element.get("Condition", "")
        if element.tag == NAMESPACE + "Item":
            yield element.text
        if element.tag == NAMESPACE + "DisplayString":
            yield from re.findall(r"{([^}]*)}", element.text)


def main(root):
    root = pathlib.Path(root)
    sources = "".join(path.read_text(encoding="utf-8") for folder in ("include", "src")
                      for path in sorted((root / folder).rglob("*.hpp")))
    tree = xml.etree.ElementTree.parse(root / "debuggers/zkflnetwork.natvis").getroot()
    problems, count = [], 0
    for kind in tree.iter(NAMESPACE + "Type"):
        name = kind.get("Name").rpartition("::")[2]
        if not re.search(rf"class (ZKFLNETWORK_API )?{name}[^;]*{{", sources):
            problems.append(f"there is no class {name}")
        for expression in expressions(kind):
            for word in set(re.findall(r"[A-Za-z_]\w*", expression)) - NOT_OURS:
                count += 1
                if not re.search(rf"\b{word}( = [^;]*|{{[^;]*)?;", sources):
                    problems.append(f"{name} has no member {word}")
    print("\n".join(problems) or f"{count} names, all there")
    return 1 if problems or not count else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
