#!/usr/bin/env python3
"""Checks what the shared library exports: exports.py NM LIBRARY [LIST [--write]]

Nothing of ICU, and of Boost no more than the exceptions that callers catch; of the library's own
names none from src/ alone.

The list has every name that a program may have been linked with, so that a change of the binary
interface is a change of a file. It holds for g++; clang and the sanitizers write some names in
another way. With --write it is made anew.
"""

import difflib
import pathlib
import re
import subprocess
import sys

# Wherever it stands in a name: what is made for a hidden type should be hidden as well.
FOREIGN = re.compile(r"\bicu(_\d+)?::|\bboost::(?!exception\b|exception_detail::clone_base\b"
                     r"|wrapexcept<std::(invalid_argument|out_of_range)>)")
# What has such a name itself; in the arguments of a member template of an exported class it may be.
INNER = re.compile(r"^[^(<]*\bfoundation::network::(adapter|address|iri::grammar|platform|text)::")

# Stands in front of what is made beside a class or a function.
BESIDE = re.compile(r"(.* (for|to) )?")


def leaks(names):
    """The names that should not be there."""
    return [name for name in names if FOREIGN.search(name) or INNER.match(name)]


def is_listed(name):
    """Whether every compiler has to emit it.

    What comes out of the headers of the standard library is written or left out as the compiler
    likes, and so are functions of Boost, but not what makes its exceptions known, and templates of
    functions. The names of the latter alone begin with the type of the result.
    """
    if name.startswith("boost::"):
        return False
    name = name[BESIDE.match(name).end():]
    while "<" in (flat := re.sub(r"(?<!operator)<[^<>]*>", "", name)) and flat != name:
        name = flat
    head = flat.partition("(")[0].partition("operator")[0]
    return " " not in head and not head.startswith(("std::", "__gnu_cxx::"))


def listed(names):
    """The lines of the list for these names: each once, and the long names of strings short."""
    lines = set()
    for name in filter(is_listed, names):
        for character, prefix in [("char", ""), ("char16_t", "u16"), ("char32_t", "u32")]:
            traits = f"{character}, std::char_traits<{character}>"
            name = name.replace(
                f"std::__cxx11::basic_string<{traits}, std::allocator<{character}> >",
                f"std::{prefix}string")
            name = name.replace(f"std::basic_string_view<{traits} >", f"std::{prefix}string_view")
        name = re.sub(r"std::vector<([^<>]+), std::allocator<\1> >", r"std::vector<\1>", name)
        lines.add(name.replace(" >", ">"))
    return sorted(lines)


def differences(expected, found):
    """The lines that came and went, each with a sign in front."""
    return [line for line in difflib.ndiff(expected, found) if line[0] in "+-"]


def exported(nm, library):
    run = subprocess.run([nm, "-D", "-C", "--defined-only", library], capture_output=True,
                         text=True, check=True)
    # Address, kind and name
    return [line.split(" ", 2)[2] for line in run.stdout.splitlines()]


def main():
    nm, library, *rest = sys.argv[1:]
    names = exported(nm, library)
    own = [name for name in names if name.startswith("foundation::network::InetAddress::")]
    if not own:
        print(f"{library} does not even export its classes")
    found = leaks(names)
    for name in found:
        print(f"exported: {name}")
    changes = []
    if rest:
        path = pathlib.Path(rest[0])
        lines = listed(names)
        if rest[1:] == ["--write"]:
            path.write_text("".join(f"{line}\n" for line in lines), encoding="utf-8")
        changes = differences(path.read_text(encoding="utf-8").splitlines(), lines)
        for change in changes:
            print(change)
        if changes:
            print(f"the library exports other names than {path.name} has: if that is meant, write it "
                  "anew with ./dev abi --write, and tell CHANGELOG.md")
    return 0 if own and not found and not changes else 1


if __name__ == "__main__":
    sys.exit(main())
