#!/usr/bin/env python3
"""Compiles every public header alone, twice in one translation unit, with warnings as errors.

Headers for a library that not everybody has are told apart by what they include, and left out where the
compiler does not find that.
"""

import argparse
import pathlib
import re
import subprocess
import sys
import tempfile

OPTIONAL = re.compile(r"^#include <(fmt/[^>]*|format)>", re.MULTILINE)


def compile_alone(compiler, include, header):
    """What the compiler has to say of a program that is this header and nothing else."""
    with tempfile.TemporaryDirectory() as folder:
        unit = pathlib.Path(folder) / "unit.cpp"
        unit.write_text(f"#include <{header}>\n#include <{header}>\n", encoding="utf-8")
        command = [*compiler, "-Werror", "-fsyntax-only", f"-I{include}", str(unit)]
        run = subprocess.run(command, capture_output=True, text=True, check=False)
    return "" if run.returncode == 0 else run.stderr or f"status {run.returncode}"


def missing_library(compiler, path):
    """What a header includes of the libraries that are not needed otherwise, and the compiler lacks."""
    for name in OPTIONAL.findall(path.read_text(encoding="utf-8")):
        text = f"#include <{name}>\n"
        command = [*compiler, "-fsyntax-only", "-x", "c++", "-"]
        if subprocess.run(command, input=text.encode(), capture_output=True, check=False).returncode:
            return name
    return None


def check(compiler, include):
    """Returns the number of headers and a list of (header, complaint)."""
    headers = []
    for path in sorted(pathlib.Path(include).rglob("*.hpp")):
        name = path.relative_to(include).as_posix()
        lacking = missing_library(compiler, path)
        if lacking:
            print(f"{name} is left out: there is no <{lacking}>")
        else:
            headers.append(name)
    complaints = [(header, compile_alone(compiler, include, header)) for header in headers]
    return len(headers), [(header, text) for header, text in complaints if text]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("include", help="the folder of the public headers")
    parser.add_argument("compiler", nargs="+", help="the compiler and its options, after --")
    arguments = parser.parse_args()
    count, complaints = check(arguments.compiler, arguments.include)
    for header, text in complaints:
        print(f"{header} does not compile alone:\n{text}")
    if count == 0:
        print(f"no header in {arguments.include}")
    return 0 if count and not complaints else 1


if __name__ == "__main__":
    sys.exit(main())
