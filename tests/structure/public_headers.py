#!/usr/bin/env python3
"""Compiles every public header alone, twice in one translation unit, with warnings as errors."""

import argparse
import pathlib
import subprocess
import sys
import tempfile


def compile_alone(compiler, include, header):
    """What the compiler has to say of a program that is this header and nothing else."""
    with tempfile.TemporaryDirectory() as folder:
        unit = pathlib.Path(folder) / "unit.cpp"
        unit.write_text(f"#include <{header}>\n#include <{header}>\n", encoding="utf-8")
        command = [*compiler, "-Werror", "-fsyntax-only", f"-I{include}", str(unit)]
        run = subprocess.run(command, capture_output=True, text=True, check=False)
    return "" if run.returncode == 0 else run.stderr or f"status {run.returncode}"


def check(compiler, include):
    """Returns the number of headers and a list of (header, complaint)."""
    headers = sorted(
        path.relative_to(include).as_posix() for path in pathlib.Path(include).rglob("*.hpp")
    )
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
