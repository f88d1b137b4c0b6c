#!/usr/bin/env python3
"""Holds the manual page against the program, and runs its examples: manual.py IRI SOURCES

The page is to be what docs/man/make.py makes, two formatters are to find nothing wrong with it, and
each example is to print what the page shows or manual.json says. What is needed and not there is
left out, and the test then counts as skipped and says so; it fails instead if
ZKFLNETWORK_REQUIRE_SHELLS is set. network.py runs the examples that need a network.
"""

import importlib.util
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

SKIPPED = 77
TIMEOUT = 60
EXPECTED = pathlib.Path(__file__).with_name("manual.json")
CHECKERS = [
    ["mandoc", "-T", "lint", "-W", "warning"],
    ["groff", "-k", "-ww", "-mdoc", "-Tutf8", "-z"],
]


# --- the page --------------------------------------------------------------------------------


def section(page, name):
    """What stands below a heading of the page."""
    return re.split(r"^\.Sh ", page.partition(f"\n.Sh {name}\n")[2], maxsplit=1, flags=re.M)[0]


def blocks(text, before=""):
    """The lines of each literal block, as they are printed."""
    found = re.findall(rf"{before}^\.Bd -literal -offset indent\n(.*?)^\.Ed$", text, re.M | re.S)
    return [re.sub(r"\\(\(aq|.)", lambda each: {"e": "\\", "(aq": "'", "&": ""}.get(each[1], each[1]),
                   each).removesuffix("\n").split("\n") for each in found]


def sessions(page):
    """The commands of the examples with what they print, as the page shows it."""
    for block in blocks(section(page, "EXAMPLES")):
        assert block[0].startswith("$ "), block
        assert not any(line.startswith("$ ") for line in block[1:]), block
        yield {"command": block[0][2:], "stdout": block[1:], "exit": None}


def verb_examples(page):
    """The commands of the examples of the verbs."""
    return [line for block in blocks(section(page, "VERBS"), r"^For example:\n") for line in block]


def verbs(page):
    return re.findall(r"^\.Ss iri (\w+)$", section(page, "VERBS"), re.M)


# --- the examples ----------------------------------------------------------------------------


def differences(example, folder, program):
    """What an example does otherwise, one line each."""
    path = os.pathsep.join([str(pathlib.Path(program).parent), os.environ["PATH"]])
    done = subprocess.run(["bash", "-c", example["command"]], cwd=folder, capture_output=True,
                          env={**os.environ, "PATH": path}, timeout=TIMEOUT, check=False)
    stdout = done.stdout.decode("utf-8")
    stderr = done.stderr.decode("utf-8")
    wanted = "".join(line + "\n" for line in example.get("stdout", []))
    if "linesHold" in example:
        pattern = ".*".join(map(re.escape, example["linesHold"]))
        if not re.search(pattern, stdout):
            yield f"prints\n{stdout}\nwithout a line with {example['linesHold']}"
    elif stdout != wanted:
        yield f"prints\n{stdout}\nnot\n{wanted}"
    if not stderr.startswith(example.get("stderrBegins", "")):
        yield f"reports\n{stderr}\nnot\n{example['stderrBegins']}"
    code = example.get("exit", 0)
    if code is not None and done.returncode != code:
        yield f"ends with {done.returncode}, not {code}"


def run(examples, program):
    """Runs examples in a folder with the files that they read."""
    found = []
    with tempfile.TemporaryDirectory() as folder:
        for name, lines in json.loads(EXPECTED.read_text(encoding="utf-8"))["files"].items():
            pathlib.Path(folder, name).write_text("".join(line + "\n" for line in lines),
                                                  encoding="utf-8")
        for example in examples:
            found += [f"{example['command']}\n{each}" for each in
                      differences(example, folder, pathlib.Path(program).resolve())]
    return found


def expected(in_network):
    return [each for each in json.loads(EXPECTED.read_text(encoding="utf-8"))["examples"]
            if each.get("network", False) == in_network]


def check_examples(page, program):
    shown = verb_examples(page)
    known = [each["command"] for each in expected(False) + expected(True)]
    if sorted(shown) != sorted(known):
        yield f"only in the page: {set(shown) - set(known)}"
        yield f"only in manual.json: {set(known) - set(shown)}"
    for verb in verbs(page):
        if verb != "help" and not any(re.search(rf"\biri {verb}\b", each) for each in shown):
            yield f"the page has no example of {verb}"
    in_page = list(sessions(page))
    if not in_page:
        yield "the section EXAMPLES has none"
    yield from run(in_page + expected(False), program)


# --- all of it -------------------------------------------------------------------------------


def check_page(page, program, sources):
    spec = importlib.util.spec_from_file_location("make", sources / "docs/man/make.py")
    make = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(make)
    if page != make.make(program):
        yield "docs/man/iri.1 is not what the program says of itself: ./dev man makes it anew"

    def output_of(*words):
        return subprocess.run([program, *words], capture_output=True, check=False,
                              timeout=TIMEOUT)

    helped = re.findall(r"^  (\w+)  +\S", output_of("help").stdout.decode().partition("\nVerbs:\n")[2]
                        .partition("\n\n")[0], re.M)
    if verbs(page) != helped:
        yield f"the page has the verbs {verbs(page)}, the program {helped}"
    for verb in verbs(page)[:-1]:
        text = section(page, "VERBS").partition(f".Ss iri {verb}\n")[2].partition(".Ss ")[0]
        in_page = re.findall(r"^\.It (Fl .*)$", text, re.M)
        names = [re.findall(r"Fl ([\w\\-]+)", each) for each in in_page]
        flat = ["-" + name.replace("\\", "") for each in names for name in each]
        real = re.findall(r"(?:^  |, )(--?\w[\w-]*)", output_of(verb, "--help").stdout.decode()
                          .partition("\nOptions:\n")[2], re.M)
        real = [name for name in real if name.startswith("-")]
        if flat != real:
            yield f"the page has the options {flat} of {verb}, the program {real}"
    fields = re.findall(r"^\.It Cm (\w+)$", section(page, "FIELDS"), re.M)
    real = re.search(r"operands='(.*)'", output_of("completion", "bash").stdout.decode()
                     .partition("'get')")[2])[1].split()
    if fields != real:
        yield f"the page has the fields {fields}, the program {real}"


def main(program, sources):
    sources = pathlib.Path(sources)
    file = sources / "docs/man/iri.1"
    page = file.read_text(encoding="utf-8")
    missing = [each for each in ["bash", "jq"] if shutil.which(each) is None]

    found = list(check_page(page, program, sources))
    if not missing:
        found += check_examples(page, program)
    for checker in CHECKERS:
        if shutil.which(checker[0]) is None:
            missing.append(checker[0])
            continue
        done = subprocess.run([*checker, str(file)], stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, timeout=TIMEOUT, check=False)
        # Whether other pages are there is a matter of this machine.
        complaints = [line for line in done.stdout.decode("utf-8", "replace").splitlines()
                      if "mandoc.db lacks" not in line]
        if complaints or done.returncode > 1:
            found.append(f"{' '.join(checker)} complains:\n" + "\n".join(complaints))

    print("\n\n".join(found))
    if found:
        return 1
    for each in missing:
        print(f"SKIPPED: there is no program {each}")
    if missing:
        return 1 if os.environ.get("ZKFLNETWORK_REQUIRE_SHELLS") else SKIPPED
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
