#!/usr/bin/env python3
"""Compiles all installed headers, and a use of them, with every warning that the compiler has:
warnings.py PREFIX COMPILER...

A compiler may come with options, as a shell would take them apart. The headers are not the system's
here. Where a compiler is not installed the test is skipped and says so; with
ZKFLNETWORK_REQUIRE_COMPILERS in the environment it fails instead.
"""

import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "structure"))
import public_headers  # noqa: E402, beside this folder

SKIPPED = 77
USES = pathlib.Path(__file__).resolve().with_name("uses.cpp")

# Warnings that no C++20 library is silent about, with what they are for.
LEFT_OUT_BY_CLANG = {
    "c++98-compat": "programs that C++98 should take",
    "c++98-compat-pedantic": "the same",
    "documentation-unknown-command": "the project's own commands for Doxygen",
    "padded": "the layout of classes",
}
LEFT_OUT_BY_GCC = {
    "abi": "differences from old compilers",
    "abi-tag": "whoever has a std::string in its names",
    "aggregate-return": "functions that return classes",
    "inline": "what the optimiser decides",
    "multiple-inheritance": "a part of the language",
    "namespaces": "a part of the language",
    "padded": "the layout of classes",
    "suggest-attribute=cold": "attributes for the optimiser",
    "suggest-attribute=const": "the same",
    "suggest-attribute=malloc": "the same",
    "suggest-attribute=noreturn": "the same",
    "suggest-attribute=pure": "the same",
    "suggest-final-methods": "the same, of whole programs",
    "suggest-final-types": "the same",
    "system-headers": "the headers of others",
    "templates": "a part of the language",
    "useless-cast": "what machines of other widths need",
    "virtual-inheritance": "a part of the language",
}


def output(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def every_warning(compiler):
    """The options that turn all warnings of a compiler on, but for those that are left out."""
    if "clang" in output(*compiler, "--version"):
        return ["-Weverything", *(f"-Wno-{name}" for name in LEFT_OUT_BY_CLANG)]
    listed = output(*compiler, "-Q", "--help=c++") + output(
        *compiler, "-Q", "--help=common,warnings,^joined")
    names = set(re.findall(r"^ +-W((?!no-)[\w+=-]+)\s", listed, re.MULTILINE))
    return [f"-W{name}" for name in sorted(names - set(LEFT_OUT_BY_GCC) - {"error"}) if name[-1] != "="]


def compile_all(compiler, include):
    """What a compiler says of the headers and of what comes into being when they are used."""
    warnings = every_warning(compiler)
    headers = [path for path in sorted(include.rglob("*.hpp"))
               if not public_headers.missing_library([*compiler, "-std=c++20"], path)]
    lines = [f"#include <{path.relative_to(include).as_posix()}>" for path in headers]
    with tempfile.TemporaryDirectory() as folder:
        unit = pathlib.Path(folder) / "unit.cpp"
        unit.write_text("\n".join([*lines, USES.read_text(encoding="utf-8")]), encoding="utf-8")
        # The optimiser sees more than the parser does.
        done = subprocess.run(
            [*compiler, "-std=c++20", "-O2", *warnings, "-Werror", f"-I{include}", "-c", str(unit),
             "-o", str(unit.with_suffix(".o"))], capture_output=True, text=True, check=False)
    print(f"{compiler[0]}: {len(headers)} headers, {len(warnings)} options, status {done.returncode}")
    print(done.stderr, end="")
    return headers and done.returncode == 0


def main(prefix, *compilers):
    commands = [shlex.split(compiler) for compiler in compilers]
    missing = [command[0] for command in commands if not shutil.which(command[0])]
    good = [compile_all(command, pathlib.Path(prefix) / "include")
            for command in commands if command[0] not in missing]
    if not all(good):
        return 1
    if missing:
        print(f"SKIPPED: there is no {' and no '.join(missing)}")
        return 1 if os.environ.get("ZKFLNETWORK_REQUIRE_COMPILERS") else SKIPPED
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
