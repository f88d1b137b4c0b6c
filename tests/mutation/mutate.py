#!/usr/bin/env python3
"""Breaks the library in one place after another and tells which breaks no test noticed.

    mutate.py SOURCE WORK [--count N] [--seed S] [--since COMMIT] [--list] [PATH...]

SOURCE is the working copy, which stays as it is: WORK holds a copy of it and its build. The N places
are drawn with the seed from the files of PATH (src/iri, src/reference, src/build and src/text, if none
is named), and with --since only from the lines that have changed since that commit; the same seed
draws the same ones from the same sources. --list only shows them.

A break that does not compile, or that the compiler makes the same program of, is drawn again. Tests
end at the first that fails; those that failed for the same file or folder before are asked first.
What is left over, the survivors, is printed and written to WORK/survivors.txt. A survivor that no test
can notice has its reason in equivalent.txt beside this script, where a line

    src/iri/X.cpp: the line => the line as it was broken

stands below a comment. Where the file has several such lines, the one before it, or the next before
that which has words in it, tells which is meant:

    src/iri/X.cpp: the line before \\ the line => the line as it was broken

Ends with status 1 if there are other survivors, or lines of equivalent.txt that name no place of the
sources, or more than one.
"""

import argparse
import collections
import dataclasses
import hashlib
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import time

PATHS = ["src/iri", "src/reference", "src/build", "src/text"]
# The quick ones first: what they find is found sooner, what they miss is left to the generators. In
# each half those that link the shared library lead, since they need not be linked again.
TESTS = ["iri_value_tests", "string_parts_tests", "build_tests", "idn_tests", "iri_allocation_tests",
         "text_tests", "grammar_tests", "percent_coding_tests", "component_cell_tests",
         "reference_tests", "utf_allocation_tests", "idn_failure_tests", "idn_long_names_tests",
         "except_internal_tests",
         "iri_property_tests", "iri_agreement_tests", "build_property_tests",
         "reference_model_tests", "idn_property_tests", "string_parts_model_tests",
         "component_coders_property_tests", "grammar_against_reference_tests", "iri_huge_tests"]
LIBRARY = "src/libzkflnetwork.so"
ENVIRONMENT = {"ZKFLNETWORK_TEST_FACTOR": "0.1", "RC_PARAMS": "max_success=300",
               "ZKFLNETWORK_TEST_HUGE_MIB": "8"}


@dataclasses.dataclass(frozen=True)
class Mutant:
    file: str
    line: int  # from 0
    before: str
    after: str
    above: str = ""  # the line before it that has words in it

    def excuses(self):
        """The lines of equivalent.txt that would excuse it: a short one, and one that tells more."""
        broken_line = f"{self.before.strip()} => {self.after.strip()}"
        return (f"{self.file}: {broken_line}",
                f"{self.file}: {self.above.strip()} \\ {broken_line}")

    def __str__(self):
        return f"{self.file}:{self.line + 1}\n    - {self.before.strip()}\n    + {self.after.strip()}"


# --- where it can be broken, and how -------------------------------------------------------------

# Texts, characters and comments, in which nothing is an operator.
OPAQUE = re.compile(r'"(?:\\.|[^"\\])*"|(?<![0-9A-Fa-f])\'(?:\\.|[^\'\\])+\'|//.*')
# The layout of the sources puts blanks around operators and none into template brackets.
SWAPS = [(" < ", " <= "), (" <= ", " < "), (" > ", " >= "), (" >= ", " > "), (" == ", " != "),
         (" != ", " == "), (" && ", " || "), (" || ", " && "), (" + ", " - "), (" - ", " + "),
         (" += ", " -= "), (" -= ", " += "), ("++", "--"), ("--", "++"), (" & ", " | "),
         (" | ", " & "), (" * ", " + "), (" << ", " >> "), (" >> ", " << "), ("&& ", "|| "),
         ("|| ", "&& "), ("true", "false"), ("false", "true"), (".first", ".second"),
         (".begin()", ".end()"), (".end()", ".begin()")]
NUMBER = re.compile(r"(?<![\w.])(0[xX][0-9A-Fa-f]+|\d+)(?=[uUlL]*\b)(?![\w.]*[.'])")
NEGATION = re.compile(r"(?<![\w)])!(?=[\w(:*])")
CONDITION = re.compile(r"\b(if|while) \((.*)\)(?= \{?$|$)")
STATEMENT = re.compile(r"^\s*(?!return\b|using\b|const\b|auto\b|constexpr\b|static\b|friend\b|case\b|"
                       r"typedef\b|explicit\b|namespace\b|template\b|throw\b|else\b|goto\b)"
                       r"(\+\+|--|\*|[\w.:>()\[\]-]+(\(| [-+|&*^]?= |\+\+|--)).*;$"
                       r"|^\s*(break|continue);$")
RESULT = re.compile(r"^(\s*)return (?!(?:\{\}|false|0|nullptr|std::nullopt);)(.+);$")
SKIPPED = re.compile(r"^\s*(#|//|/\*|\*|static_assert|namespace|using|template|class|struct|friend)"
                     r"|operator(<|>|&|\||\+|-|!|=)|\bextern\b|ZKFLNETWORK_API")


def broken(line):
    """All lines that this one can be broken into."""
    if SKIPPED.search(line):
        return []
    # Of the same length, so that places in one are places in the other.
    code = OPAQUE.sub(lambda part: "\0" * len(part[0]), line)
    found = []

    def put(begin, end, text):
        found.append(line[:begin] + text + line[end:])

    for old, new in SWAPS:
        for match in re.finditer(re.escape(old), code):
            word = old.isalpha()
            around = code[max(match.start() - 1, 0):match.end() + 1]
            if not word or re.fullmatch(r"\W?" + old + r"\W?", around):
                put(match.start(), match.end(), new)
    for match in NUMBER.finditer(code):
        value = int(match[1], 0)
        for other in {value + 1, max(value - 1, 0)} - {value}:
            put(match.start(1), match.end(1),
                hex(other) if match[1][:2].lower() == "0x" else str(other))
    for match in NEGATION.finditer(code):
        put(match.start(), match.end(), "")
    for match in CONDITION.finditer(code):
        if match[2].count("(") == match[2].count(")") and ";" not in match[2]:
            put(match.start(2), match.end(2), f"!({line[match.start(2):match.end(2)]})")
    if STATEMENT.match(code):
        put(len(line) - len(line.lstrip()), len(line), ";")
    if match := RESULT.match(code):
        put(match.end(1), len(line), "return {};")
    return [other for other in dict.fromkeys(found) if other != line]


def mutants(source, paths):
    files = []
    for path in paths:
        whole = source / path
        files += [whole] if whole.is_file() else [
            file for file in sorted(whole.rglob("*")) if file.suffix in (".cpp", ".hpp", ".ipp")]
    found = []
    for file in files:
        name = str(file.relative_to(source))
        above = ""
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines()):
            found += [Mutant(name, number, line, other, above) for other in broken(line)]
            if re.search(r"\w", line):
                above = line
    return found


# A place in a difference without context: where the new lines begin, and how many there are if not 1.
HUNK = re.compile(r"^@@ -\S+ \+(\d+)(?:,(\d+))? @@")


def changed_lines(difference):
    """The lines, as (file, number from 0), that a difference of git without context adds."""
    found, file = set(), ""
    for line in difference.splitlines():
        if line.startswith("+++ b/"):
            file = line[len("+++ b/"):]
        elif match := HUNK.match(line):
            begin, count = int(match[1]) - 1, int(match[2] or 1)
            found |= {(file, number) for number in range(begin, begin + count)}
    return found


def lines_since(source, commit, paths):
    return changed_lines(run(["git", "-C", source, "diff", "--unified=0", "--src-prefix=a/",
                              "--dst-prefix=b/", commit, "--", *paths]))


# --- building and asking -------------------------------------------------------------------------


class Workshop:
    """A copy of the sources with its build."""

    def __init__(self, source, work):
        self.tree, self.build, self.programs, self.limits = work / "tree", work / "build", {}, {}
        self.killers = collections.defaultdict(list)
        self.copy(source)
        self.prepare()
        self.original = self.digest()

    def copy(self, source):
        """Takes over what git knows or could know; what has not changed keeps its time."""
        listed = subprocess.run(["git", "ls-files", "-z", "--cached", "--others",
                                 "--exclude-standard"], cwd=source, capture_output=True, check=True)
        names = [os.fsdecode(name) for name in listed.stdout.split(b"\0") if name]
        for name in names:
            old, new = source / name, self.tree / name
            if not old.is_file():
                continue
            if not new.exists() or new.read_bytes() != old.read_bytes():
                new.parent.mkdir(parents=True, exist_ok=True)
                shutil.copyfile(old, new)

    def prepare(self):
        run(["cmake", "-S", self.tree, "-B", self.build, "-G", "Ninja",
             "-DCMAKE_BUILD_TYPE=None", "-DCMAKE_CXX_FLAGS=-O1 -g0 -D_GLIBCXX_ASSERTIONS",
             "-DCMAKE_SHARED_LINKER_FLAGS=-Wl,--build-id=none", "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON",
             "-DZKFLNETWORK_BUILD_TOOL=OFF", "-DZKFLNETWORK_BUILD_EXAMPLES=OFF",
             "-DZKFLNETWORK_BUILD_TESTS=ON", "-DZKFLNETWORK_WARNINGS_AS_ERRORS=OFF"])
        run(["ninja", "-C", self.build, "-j2", "zkflnetwork", *TESTS])
        for test in TESTS:
            program, = (path for path in self.build.rglob(test) if path.is_file())
            self.programs[test] = program
            begin = time.monotonic()
            if not self.passes(test, 1200):
                raise RuntimeError(f"{test} fails before anything is broken")
            # A break that makes a loop endless is noticed as well.
            self.limits[test] = 5 + 10 * (time.monotonic() - begin)

    def passes(self, test, limit):
        try:
            return subprocess.run([self.programs[test], "--gtest_brief=1", "--gtest_fail_fast"],
                                  env=os.environ | ENVIRONMENT, stdin=subprocess.DEVNULL,
                                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                  timeout=limit, check=False).returncode == 0
        except subprocess.TimeoutExpired:
            return False

    def builds(self, targets):
        return subprocess.run(["ninja", "-C", self.build, "-j2", *targets], check=False,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0

    def digest(self):
        return hashlib.sha256((self.build / LIBRARY).read_bytes()).digest()

    def verdict(self, mutant):
        """"invalid", "same", "survived", or the name of the test that noticed."""
        path = self.tree / mutant.file
        text = path.read_text(encoding="utf-8")
        lines = text.splitlines()
        if lines[mutant.line] != mutant.before:
            raise RuntimeError(f"{path} is not what it was")
        lines[mutant.line] = mutant.after
        path.write_text("\n".join(lines) + "\n", encoding="utf-8")
        try:
            if not self.builds(["zkflnetwork"]):
                return "invalid"
            if self.digest() == self.original:
                return "same"
            places = mutant.file, str(pathlib.PurePosixPath(mutant.file).parent)
            known = [test for place in places for test in self.killers[place][::-1]]
            for test in dict.fromkeys(known + TESTS):
                # A test that includes the broken header may not compile; nothing is wrong with it.
                if not self.builds([test]):
                    return "invalid"
                if not self.passes(test, self.limits[test]):
                    for place in places:
                        self.killers[place].append(test)
                    return test
            return "survived"
        finally:
            path.write_text(text, encoding="utf-8")


def run(command):
    done = subprocess.run(command, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        raise RuntimeError(f"{command}\n{done.stdout[-4000:]}\n{done.stderr[-4000:]}")
    return done.stdout


def equivalent():
    path = pathlib.Path(__file__).with_name("equivalent.txt")
    lines = path.read_text(encoding="utf-8").splitlines()
    return [line for line in lines if line and not line.startswith("#")]


def misleading(entries, possible):
    """What is wrong with each entry that does not name exactly one of the possible breaks."""
    places = collections.Counter(excuse for mutant in possible for excuse in mutant.excuses())
    names = {0: "names no place", 1: "is there twice"}
    return [f"{names.get(places[entry], f'names {places[entry]} places')}: {entry}"
            for entry, count in collections.Counter(entries).items()
            if count != 1 or places[entry] != 1]


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("source", type=pathlib.Path)
    parser.add_argument("work", type=pathlib.Path)
    parser.add_argument("--count", type=int, default=50)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--since", metavar="COMMIT")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("paths", nargs="*", default=PATHS)
    given = parser.parse_intermixed_args()

    source = given.source.resolve()
    paths = given.paths or PATHS
    drawn = mutants(source, paths)
    if given.since:
        changed = lines_since(source, given.since, paths)
        drawn = [mutant for mutant in drawn if (mutant.file, mutant.line) in changed]
    random.Random(given.seed).shuffle(drawn)
    print(f"{len(drawn)} places to break, seed {given.seed}", flush=True)
    if given.list:
        print("\n".join(map(str, drawn[:given.count])))
        return 0

    excused = equivalent()
    wrong = misleading(excused, mutants(source, PATHS))
    for line in wrong:
        print(f"equivalent.txt {line}", flush=True)
    given.work.mkdir(parents=True, exist_ok=True)
    shop = Workshop(source, given.work.resolve())
    counts, survivors = collections.Counter(), []
    for mutant in drawn:
        if counts["noticed"] + counts["survived"] + counts["excused"] >= given.count:
            break
        begin = time.monotonic()
        verdict = shop.verdict(mutant)
        kind = verdict if verdict in ("invalid", "same", "survived") else "noticed"
        if kind == "survived" and not set(mutant.excuses()).isdisjoint(excused):
            kind = "excused"
        counts[kind] += 1
        if kind == "survived":
            survivors.append(mutant)
            print(f"SURVIVED {mutant}", flush=True)
        else:
            print(f"{verdict} ({time.monotonic() - begin:.0f} s) {mutant.file}:{mutant.line + 1}",
                  flush=True)
    (given.work / "survivors.txt").write_text(
        "".join(f"{mutant.excuses()[-1]}\n" for mutant in survivors), encoding="utf-8")
    tried = counts["noticed"] + counts["survived"]
    print(f"{counts['noticed']} of {tried} were noticed"
          f" ({100 * counts['noticed'] / max(tried, 1):.1f} %), {counts['survived']} were not;"
          f" {counts['excused']} cannot be, {counts['same']} change nothing,"
          f" {counts['invalid']} do not compile")
    return 1 if survivors or wrong else 0


if __name__ == "__main__":
    sys.exit(main())
