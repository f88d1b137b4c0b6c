#!/usr/bin/env python3
"""Holds the includes of a source tree against the tables of docs/architecture.md.

The page has two tables. "Path | Duty | May include" says for each folder, or for single files, what
may be included from there besides what lies there itself, and with each path whatever may be
included from that one. "Headers | Only in" names the folders or
files that are the only door to a dependency. Both are read from the page itself, so that it cannot
go stale.

Whatever the page allows, the blocks of BLOCKS do not see each other: no file of one reaches a file of
another through the includes of the tree, over however many files.

And what is built is the same on every system: it is CMake that picks the folders of a system, and only
the macros of API.hpp ask for one.
"""

import argparse
import pathlib
import re
import sys

SOURCES = {".hpp", ".cpp", ".ipp", ".h"}
ROOTS = ["include", "src", "tools", "tests", "examples", "benchmarks", "fuzz"]
INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>)', re.MULTILINE)

CONDITION = re.compile(r"^[ \t]*#[ \t]*(?:el)?if.*$", re.MULTILINE)
BUILT = ["include", "src", "tools"]

# IRIs; addresses, adapters and domain names.
BLOCKS = [
    [
        "include/foundation/network/IRI.hpp",
        "include/foundation/network/IRIArgs.hpp",
        "include/foundation/network/iri",
        "src/build",
        "src/iri",
        "src/reference",
    ],
    [
        "include/foundation/network/HardwareAddress.hpp",
        "include/foundation/network/IdnConverter.hpp",
        "include/foundation/network/InetAddress.hpp",
        "include/foundation/network/InterfaceAddress.hpp",
        "include/foundation/network/NetworkInterface.hpp",
        "include/foundation/network/detail",
        "src/adapter",
        "src/address",
        "src/platform",
        "src/text/IdnConverter.cpp",
    ],
]
QUOTED = re.compile(r"`([^`]+)`")
TO_COME = "To come:"


def tables(page):
    """Each table of a Markdown page, as a list of rows of cells; the first row is its head."""
    table = []
    for line in [*page.splitlines(), ""]:
        if line.startswith("|"):
            table.append([cell.strip() for cell in line.strip().strip("|").split("|")])
        elif table:
            yield [row for row in table if not set("".join(row)) <= set("-: ")]
            table = []


class Page:
    """What docs/architecture.md lays down."""

    def __init__(self, text):
        self.allowed = {}  # path -> the paths that may be included from there
        self.to_come = set()
        self.doors = {}  # beginning of a header's name -> the paths that may include it
        for head, *rows in tables(text):
            if head == ["Path", "Duty", "May include"]:
                for paths, duty, may_include in rows:
                    for path in QUOTED.findall(paths):
                        self.allowed[path] = set(QUOTED.findall(may_include))
                        if duty.startswith(TO_COME):
                            self.to_come.add(path)
            elif head == ["Headers", "Only in"]:
                for headers, places in rows:
                    for header in QUOTED.findall(headers):
                        self.doors[header] = QUOTED.findall(places)
        if not self.allowed or not self.doors:
            raise ValueError("docs/architecture.md lacks one of its two tables")

    def reach(self, row):
        """All rows that may be included from a row, at first or at second hand."""
        reached = set()
        ahead = list(self.allowed[row])
        while ahead:
            path = ahead.pop()
            if path not in reached:
                reached.add(path)
                ahead.extend(self.allowed.get(path, ()))
        return reached

    def row_of(self, path):
        """The longest path of the first table that is this path or leads to it."""
        rows = [row for row in self.allowed if is_within(path, row)]
        return max(rows, key=len, default=None)


def is_within(path, folder):
    return path == folder or path.startswith(folder + "/")


def resolve(root, includer, name):
    """The file of the tree that an #include means; None if it is none of ours."""
    beside = pathlib.Path(includer).parent
    top = pathlib.Path(includer).parts[0]
    for folder in [beside, top, "include", "src", "tools/iri", "tests"]:
        candidate = root / folder / name
        if candidate.is_file():
            return candidate.resolve().relative_to(root.resolve()).as_posix()
    return None


def check(root):
    """All violations in a tree, one line each."""
    page = Page((root / "docs" / "architecture.md").read_text(encoding="utf-8"))
    found = []

    for row in sorted(page.allowed):
        exists = (root / row).exists()
        if exists == (row in page.to_come):
            found.append(f"docs/architecture.md: `{row}` {'exists' if exists else 'does not exist'}")
        for other in sorted(page.allowed[row] - set(page.allowed)):
            found.append(f"docs/architecture.md: `{other}` may be included but has no row")
        if row in page.reach(row):
            found.append(f"docs/architecture.md: from `{row}` the includes lead in a circle")

    for top in ROOTS:
        for file in sorted((root / top).rglob("*")):
            if file.suffix not in SOURCES or not file.is_file():
                continue
            includer = file.relative_to(root).as_posix()
            row = page.row_of(includer)
            if row is None:
                found.append(f"{includer}: docs/architecture.md has no row for it")
                continue
            for match in INCLUDE.finditer(file.read_text(encoding="utf-8")):
                name = match[1] or match[2]
                target = resolve(root, includer, name)
                if target is None:
                    if match[1]:
                        found.append(f"{includer}: no such file in this tree: {name}")
                    found.extend(doors_passed(page, includer, name))
                    continue
                target_row = page.row_of(target)
                if target_row != row and target_row not in page.reach(row):
                    found.append(f"{includer}: `{row}` may not include {target}")
    return found


def inclusions(root):
    """Each file of the tree with the files of the tree that it includes."""
    graph = {}
    for top in ROOTS:
        for file in sorted((root / top).rglob("*")):
            if file.suffix in SOURCES and file.is_file():
                includer = file.relative_to(root).as_posix()
                names = [match[1] or match[2] for match in INCLUDE.finditer(file.read_text("utf-8"))]
                targets = (resolve(root, includer, name) for name in names)
                graph[includer] = [target for target in targets if target is not None]
    return graph


def roads(graph, start):
    """Each file that one reaches, at first or at second hand, with the files on a shortest way."""
    found = {start: [start]}
    ahead = [start]
    for file in ahead:
        for target in graph.get(file, ()):
            if target not in found:
                found[target] = [*found[file], target]
                ahead.append(target)
    return found


def blocks_seen(root, blocks):
    """Each file of a block that reaches another block, with the way to the first file there."""
    graph = inclusions(root)
    for block in blocks:
        for place in block:
            if not any(is_within(file, place) for file in graph):
                yield f"{place}: no source here, though it belongs to a block"
    for file in graph:
        homes = [block for block in blocks if any(is_within(file, place) for place in block)]
        others = [place for block in blocks if block not in homes for place in block]
        for target, road in roads(graph, file).items():
            if homes and any(is_within(target, place) for place in others):
                yield f"{file}: sees another block: {' -> '.join(road[1:])}"
                break


def conditions(root):
    """Each #if in what is built, but for the macros and the folders of a system."""
    for top in BUILT:
        for file in sorted((root / top).rglob("*")):
            if file.suffix not in SOURCES or file.name == "API.hpp":
                continue
            name = file.relative_to(root).as_posix()
            if not re.search("/platform/[^/]+/", name):
                for match in CONDITION.finditer(file.read_text(encoding="utf-8")):
                    yield f"{name}: differs from one system to another: {match[0].strip()}"


def doors_passed(page, includer, name):
    """Headers of dependencies that are included elsewhere than at their door."""
    doors = [door for door in page.doors if name == door or name.startswith(door)]
    if not doors:
        return
    door = max(doors, key=len)
    if not any(is_within(includer, place) for place in page.doors[door]):
        yield f"{includer}: <{name}> is not included here"


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("root", type=pathlib.Path, help="the folder of the source tree")
    root = parser.parse_args().root
    found = [*check(root), *blocks_seen(root, BLOCKS), *conditions(root)]
    for line in found:
        print(line)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
