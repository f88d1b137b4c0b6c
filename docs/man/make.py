#!/usr/bin/env python3
"""Makes the manual page out of its template and the help of the program: make.py IRI

It is printed; docs/man/iri.1 is to hold the same, and a test compares them.
"""

import pathlib
import re
import subprocess
import sys
import textwrap

TEMPLATE = pathlib.Path(__file__).with_name("iri.1.in")
WIDTH = 72  # some characters become two


def help_of(program, *words):
    done = subprocess.run([program, "help", *words], capture_output=True, check=True, timeout=60)
    return done.stdout.decode("utf-8")


def section(text, heading):
    """What stands below a heading of a help, up to the next paragraph."""
    return text.partition(f"\n{heading}:\n")[2].partition("\n\n")[0].rstrip("\n")


def pairs(lines):
    """Lines of two columns as pairs; a line that only has the second goes on with the one before."""
    result = []
    for line in lines:
        match = re.match(r"  (\S.*?)(?:  +| (?=[a-z]+ [a-z]+ ))(\S.*)$", line)
        if match and not line.startswith("   "):
            result.append((match[1], [match[2]]))
        else:
            result[-1][1].append(line)
    return result


# --- mdoc ------------------------------------------------------------------------------------


def escaped(text):
    """Text as roff takes it for itself."""
    return text.replace("\\", "\\e").replace("-", "\\-").replace("'", "\\(aq")


def prose(text):
    """A paragraph: a line for each sentence, since roff wants to know where one ends."""
    text = " ".join(text.split())
    result = []
    for sentence in re.split(r"(?<=[.:;?!]) (?=[A-Z\"])", text):
        for line in textwrap.wrap(sentence, WIDTH, break_long_words=False, break_on_hyphens=False):
            line = line.replace("\\", "\\e")
            # Options are no words with a hyphen.
            line = re.sub(r"(?<![\w-])--?(?=[\w\"])[\w-]*", lambda each: each[0].replace("-", "\\-"),
                          line)
            result.append("\\&" + line if line[0] in ".'" else line)
    return result


def literal(lines):
    """Lines that stay as they are."""
    return [".Bd -literal -offset indent", *("\\&" + each if each[:1] in (".", "'") else each
                                             for each in map(escaped, lines)), ".Ed"]


def flag(option):
    """The names of an option, with what its value is called."""
    names, _, value = option.partition("=")
    flags = " , ".join("Fl " + escaped(name.removeprefix("-")) for name in names.split(", "))
    return flags + (f" Ns = Ns Ar {escaped(value)}" if value else "")


def argument(word):
    """A word of a usage."""
    match = re.fullmatch(r"\[(.*)\]", word)
    if match:
        return f".Op {argument(match[1])[1:]}"
    more = " ..." if word.endswith("...") else ""
    word = word.removesuffix("...")
    match = re.fullmatch(r"(--[\w-]*)(?:=(\w+))?", word)
    if match:
        name = "Fl " + escaped(match[1].removeprefix("-"))
        return f".{name} Ns = Ns Ar {match[2].lower()}" if match[2] else f".{name}{more}"
    match = re.fullmatch(r"(\w+)\[(.*)\]", word)
    if match:  # what may stand behind another word, with no space between
        name, rest = match[1].lower(), match[2]
        tail = f"{rest[0]} Ns Ar {rest[1:].lower()}"
        return f".Ar {name} Ns Oo {tail} Oc{more}"
    macro = "Cm" if word == word.lower() else "Ar"
    return f".{macro} " + f" Ns | Ns {macro} ".join(word.lower().split("|")) + more


def synopsis(text):
    """The lines of a usage."""
    result = []
    usages = text.partition("\nUsage: ")[2].partition("\n\n")[0]
    for usage in usages.split("\n"):
        _, verb, *words = usage.split()
        result += [".Nm", f".Cm {verb}", *map(argument, words)]
    return result


def options(text):
    result = [".Bl -tag -width Ds"]
    for option, lines in pairs(section(text, "Options").split("\n")):
        result.append(f".It {flag(option)}")
        first = [each for each in lines if not re.match(r"[ ]*[\w-]+  +\w", each)]
        listed = lines[len(first) :]
        result += prose(" ".join(first))
        if listed:
            result += literal([each.strip() for each in listed])
    return result + [".El"]


def details(text):
    """What stands between the usage and the options."""
    middle = text.partition("\nUsage: ")[2].partition("\n\n")[2].partition("\nOptions:\n")[0]
    result = []
    for paragraph in middle.strip("\n").split("\n\n"):
        lines = paragraph.split("\n")
        if lines[0] == "Codes:":
            result += [".Pp", "The codes stand below", ".Sx DIAGNOSTIC CODES ."]
            continue
        plain = [each for each in lines if not each.startswith(" ")]
        if plain:
            result += [".Pp", *prose(" ".join(plain))]
        if plain != lines:
            result += literal([each[2:] for each in lines if each.startswith(" ")])
    return result[1:]  # a section begins a paragraph by itself


def verb_section(name, text):
    examples = [each[2:] for each in text.partition("\n\n")[0].split("\n")[1:]]
    return [f".Ss iri {name}", *details(text), ".Pp", "Options:", *options(text), ".Pp",
            "For example:", *literal(examples)]


def listed(entries, macro):
    result = []
    for name, lines in entries:
        result += [f".It {macro} {escaped(name)}", *prose(" ".join(lines))]
    return result


def make(program):
    """The page."""
    whole = help_of(program)
    verbs = [name for name, _ in pairs(section(whole, "Verbs").split("\n")) if name != "help"]
    texts = {verb: help_of(program, verb) for verb in verbs}
    forms = dict(pairs(section(texts["parse"], "Options").split("\n")))["--form=FORM"][1:]
    parts = {
        "SYNOPSIS": [line for verb in verbs for line in synopsis(texts[verb])],
        "VERBS": [line for verb in verbs for line in verb_section(verb, texts[verb])],
        "FORMS": listed(pairs(["  " + each.strip() for each in forms]), "Cm"),
        "CODES": listed(pairs(section(texts["check"], "Codes").split("\n")), "Cm"),
        "EXIT_STATUS": listed(pairs(section(whole, "Exit codes").split("\n")), "Cm"),
    }
    result = []
    for line in TEMPLATE.read_text(encoding="utf-8").split("\n"):
        match = re.fullmatch(r"@(\w+)@", line)
        result += parts[match[1]] if match else [line]
    result[0] = ".\\\" Made by docs/man/make.py out of docs/man/iri.1.in: do not edit this."
    return "\n".join(result)


def main(program):
    sys.stdout.buffer.write(make(program).encode("utf-8"))


if __name__ == "__main__":
    main(*sys.argv[1:])
