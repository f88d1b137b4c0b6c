#!/usr/bin/env python3
"""Tells how much of src/ the tests ran through: coverage.py SOURCE BUILD LIST

BUILD is a folder that was compiled with --coverage and in which tests have run. LIST names the lines
that no test needs to reach, each with its reason:

    # Why the lines below it are not reached.
    src/text/Utf8.cpp: return nullptr;

A line stands for all lines of its file with this text. Ends with status 1 if less than the wanted
part of the lines was reached, if a line that was not is not in the list, or if the list has lines that
were reached or are no more.
"""

import collections
import json
import pathlib
import subprocess
import sys

WANTED = 97.0


def measured(source, build):
    """What gcovr found: for each file of src/ its lines, as (number, count, branches)."""
    run = subprocess.run(
        ["gcovr", "--json", "-", "--root", source, "--filter", f"{source}/src/",
         "--exclude-throw-branches", "--gcov-ignore-parse-errors", "-j", "2", build],
        capture_output=True, text=True, check=False, cwd=source)
    if run.returncode != 0:
        raise RuntimeError(run.stderr)
    files = {}
    for file in json.loads(run.stdout)["files"]:
        files[file["file"]] = [
            (line["line_number"], line["count"], [branch["count"] for branch in line["branches"]])
            for line in file["lines"] if not line.get("gcovr/noncode")]
    return files


def excused(text):
    """The (file, line) pairs of the list, and those of its lines that have no reason before them."""
    found, without_reason, reason = [], [], False
    for line in text.splitlines():
        if not line.strip():
            reason = False
        elif line.startswith("#"):
            reason = True
        else:
            file, _, content = line.partition(": ")
            found.append((file, content.strip()))
            if not reason:
                without_reason.append(line)
    return found, without_reason


def judge(files, texts, excuses):
    """Unreached lines that are not excused, and excuses that excuse nothing."""
    unused, unexplained = set(excuses), []
    for file, lines in files.items():
        for number, count, _ in lines:
            if count == 0:
                content = texts[file][number - 1].strip()
                if (file, content) in excuses:
                    unused.discard((file, content))
                else:
                    unexplained.append((file, number, content))
    return unexplained, sorted(unused)


def parts(lines):
    """Of some lines: how many there are and were reached, and the same of branches."""
    branches = [count for _, _, counts in lines for count in counts]
    return (len(lines), sum(count > 0 for _, count, _ in lines),
            len(branches), sum(count > 0 for count in branches))


def percent(reached, there_are):
    return 100.0 * reached / there_are if there_are else 100.0


def main(source, build, path):
    files = measured(source, build)
    texts = {file: pathlib.Path(source, file).read_text(encoding="utf-8").splitlines()
             for file in files}
    excuses, without_reason = excused(pathlib.Path(path).read_text(encoding="utf-8"))
    unexplained, unused = judge(files, texts, excuses)

    folders = collections.defaultdict(list)
    for file, lines in files.items():
        folders[str(pathlib.PurePosixPath(file).parent)] += lines
    folders["all"] = [line for lines in files.values() for line in lines]
    print(f"{'':28}{'lines':>7}{'reached':>9}{'branches':>10}{'reached':>9}")
    for folder in sorted(folders, key=lambda name: (name == "all", name)):
        lines, reached, branches, taken = parts(folders[folder])
        print(f"{folder:28}{lines:7}{percent(reached, lines):8.1f}%{branches:10}"
              f"{percent(taken, branches):8.1f}%")

    for file, number, content in unexplained:
        print(f"{file}:{number}: not reached, and not in {path}: {content}")
    for file, content in unused:
        print(f"{path}: was reached, or is no more: {file}: {content}")
    for line in without_reason:
        print(f"{path}: no reason stands before: {line}")
    lines, reached, _, _ = parts(folders["all"])
    low = percent(reached, lines) < WANTED
    if low:
        print(f"less than {WANTED} % of the lines were reached")
    return 1 if low or unexplained or unused or without_reason else 0


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
