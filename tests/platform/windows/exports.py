#!/usr/bin/env python3
"""Compares what the DLL exports with the list of the Linux library: exports.py OBJDUMP DLL LIST

The names on the list that the DLL lacks are such as no program asks of a DLL; the DLL has none that
the list lacks.
"""

import pathlib
import re
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parents[2] / "structure"))
import exports  # noqa: E402, the comparison on Linux

# What each program that needs it has for itself: on Windows classes are known by name, those of
# Boost's headers are in each program, and members that a header defines are never imported.
OWN = [
    re.compile(r"^typeinfo name for "),
    re.compile(r"^(typeinfo|vtable) for boost::"),
    re.compile(r"^guard variable for |\) const::\w+$"),
    re.compile(r"::TemplateIRI<.*>::(has[A-Z]\w+|is[A-Z]\w+)\(\) const$"),
    re.compile(r"::ImmutableIterableRange<unsigned char>::"),
]

# GCC 12 exports this one unasked.
UNASKED = "typeinfo for boost::asio::detail::socket_ops::noop_deleter"


def output_of(*command, **options):
    return subprocess.run(command, capture_output=True, text=True, check=True, **options).stdout


def of_dll(objdump, dll):
    """The lines of a list for the DLL, in the words of Linux."""
    table = output_of(objdump, "-p", dll).partition("[Ordinal/Name Pointer] Table")[2]
    names = re.findall(r"^\s*\[ *\d+\] (?:\+base\[ *\d+\] +[0-9a-f]+ )?(\S+)$",
                       table.partition("\n\n")[0], re.M)
    names = output_of("c++filt", input="\n".join(names)).splitlines()
    names = [name.replace("unsigned long long", "unsigned long").replace("ull>", "ul>")
             .replace("std::basic_ostream<char, std::char_traits<char> >", "std::ostream")
             for name in names if name != UNASKED]
    return exports.leaks(names), set(exports.listed(names))


def main(objdump, dll, path):
    leaks, here = of_dll(objdump, dll)
    there = set(pathlib.Path(path).read_text(encoding="utf-8").splitlines())
    surplus = sorted(here - there)
    missing = sorted(name for name in there - here if not any(one.search(name) for one in OWN))
    for name in leaks:
        print(f"exported: {name}")
    for name in surplus:
        print(f"only the DLL exports {name}")
    for name in missing:
        print(f"the DLL does not export {name}")
    print(f"{len(here)} names, {len(there)} on Linux")
    return 1 if not here or leaks or surplus or missing else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
