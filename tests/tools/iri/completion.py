#!/usr/bin/env python3
"""Completes command lines of the tool in bash, zsh and fish: completion.py IRI

A shell that is not there is left out, and the test then counts as skipped and says so; it fails
instead if ZKFLNETWORK_REQUIRE_SHELLS is set.
"""

import os
import pathlib
import pty
import re
import select
import shlex
import shutil
import subprocess
import sys
import tempfile
import time

SKIPPED = 77
TIMEOUT = 60

VERBS = ("parse get resolve relativize build edit check compare idn addr lookup adapters map "
         "completion help").split()
FIELDS = ("iri scheme authority userInfo host port portNumber path query fragment").split()
WHOLE_FORMS = "iri iri-strict ascii ascii-strict".split()
FORMS = [*WHOLE_FORMS, "decoded"]
MAPPED = "get parse check resolve relativize".split()

# What is typed, and all words that the last one may become.
LISTS = [
    ("iri ", VERBS),
    ("iri pa", ["parse"]),
    ("iri re", ["resolve", "relativize"]),
    ("iri nothing", []),
    ("iri --v", ["--version"]),
    ("iri parse --form=", [f"--form={form}" for form in FORMS]),
    ("iri parse --form=as", ["--form=ascii", "--form=ascii-strict"]),
    ("iri parse --form as", ["ascii", "ascii-strict"]),
    ("iri parse --color=", ["--color=auto", "--color=always", "--color=never"]),
    ("iri resolve --form=", [f"--form={form}" for form in WHOLE_FORMS]),
    ("iri parse --json https://h/ --for", ["--form="]),
    ("iri parse http", []),
    ("iri get ", FIELDS),
    ("iri get p", ["path", "port", "portNumber"]),
    ("iri get --json pa", ["path"]),
    ("iri get host:as", ["host:ascii", "host:ascii-strict"]),
    ("iri get host pa", []),
    ("iri edit --clear=p", ["--clear=path", "--clear=port"]),
    ("iri edit --clear=port --clear=f", ["--clear=fragment"]),
    ("iri edit --set=ho", ["--set=host="]),
    ("iri check li", ["links.txt", "list.txt"]),
    ("iri check --json li", ["links.txt", "list.txt"]),
    ("iri map ", MAPPED),
    ("iri map --in=", ["--in=lines", "--in=nul", "--in=tsv"]),
    ("iri map --in=tsv ge", ["get"]),
    ("iri map get ", FIELDS),
    ("iri map get host pa", ["path"]),
    ("iri map get host path:dec", ["path:decoded"]),
    ("iri map resolve --", ["--base=", "--form="]),
    ("iri map resolve --form=iri-", ["--form=iri-strict"]),
    ("iri completion ", ["bash", "zsh", "fish"]),
    ("iri help ma", ["map"]),
]

# What is typed, and what stands there after the tabulator, in a shell at a terminal.
TYPED = [
    ("iri pars", "iri parse"),
    ("iri parse --form=dec", "iri parse --form=decoded"),
    ("iri parse --col", "iri parse --color="),
    ("iri parse https://h/ --fo", "iri parse https://h/ --form="),
    ("iri parse --colo=nev --js", "iri parse --colo=nev --json"),
    ("iri get frag", "iri get fragment"),
    ("iri get host:dec", "iri get host:decoded"),
    ("iri edit --set=fra", "iri edit --set=fragment="),
    ("iri check lin", "iri check links.txt"),
    ("iri map --in=nu", "iri map --in=nul"),
    ("iri map relat", "iri map relativize"),
    ("iri map get host qu", "iri map get host query"),
    ("iri completion fi", "iri completion fish"),
]

failures = []


def expect(shell, line, wanted, real):
    if wanted != real:
        failures.append(f"{shell}: {line!r} gives {real}, not {wanted}")


def output_of(*command, **options):
    done = subprocess.run(command, stdout=subprocess.PIPE, timeout=TIMEOUT, check=True, **options)
    return done.stdout.decode("utf-8")


# --- bash ------------------------------------------------------------------------------------

BASH = """
source {script}
compopt() {{ [[ $* == "-o default" ]] && fallback=yes; }}
COMP_WORDBREAKS={breaks}
COMP_LINE={line} COMP_POINT=${{#COMP_LINE}} COMP_WORDS=({words}) COMP_CWORD={last}
_iri
[[ -z $fallback ]] || COMPREPLY=($(compgen -f -- "${{COMP_WORDS[COMP_CWORD]}}"))
((${{#COMPREPLY[@]}} == 0)) || printf '%s\\n' "${{COMPREPLY[@]}}"
"""


def bash_words(line, separators):
    """The words of a line as bash cuts them."""
    between = re.escape(separators)
    pieces = f"[{between}]+|[^\\s{between}]+" if separators else "\\S+"
    words = re.findall(pieces, line)
    return words + [""] if line.endswith(" ") else words


def bash_completions(script, line, separators):
    words = bash_words(line, separators)
    code = BASH.format(script=script, breaks=shlex.quote(" \t" + separators),
                       line=shlex.quote(line), words=" ".join(map(shlex.quote, words)),
                       last=len(words) - 1)
    return sorted(output_of("bash", "--norc", "-c", code).split()), words[-1]


def test_every_option(program, script):
    """The help of a verb and what is completed behind it name the same options."""
    for verb in VERBS:
        if verb == "help":
            continue
        helped = output_of(program, verb, "--help").partition("\nOptions:\n")[2]
        names = re.findall(r"^  (?:(-\w), )?(--[\w-]+)(=?)", helped, re.MULTILINE)
        wanted = [name + equals for _, name, equals in names] + [each[0] for each in names if each[0]]
        if len(wanted) < 2:
            failures.append(f"the help of {verb} has no options")
        expect("bash", f"iri {verb} -", sorted(wanted),
               bash_completions(script, f"iri {verb} -", "=:")[0])


def test_bash(script):
    for separators in ["=:", "=", ""]:
        for line, wanted in LISTS:
            real, last = bash_completions(script, line, separators)
            # Only what is behind the last cut is replaced.
            cut = len(line.split(" ")[-1]) - len(last.lstrip(separators))
            expect(f"bash with the separators {separators!r}", line,
                   sorted(word[cut:] for word in wanted), real)


# --- fish ------------------------------------------------------------------------------------


def test_fish(script):
    for line, wanted in LISTS:
        real = output_of("fish", "--no-config", "-c",
                         f"source {script}; complete -C {shlex.quote(line)}").splitlines()
        # It shows options without the "=" that it puts behind them.
        options = [re.sub(r"^(--[\w-]+)=$", r"\1", word) for word in wanted]
        expect("fish", line, sorted(options), sorted(each.split("\t")[0] for each in real))


# --- shells at a terminal --------------------------------------------------------------------


class Shell:
    """A shell at a terminal."""

    READY = "ready>"

    def __init__(self, *command, **variables):
        self.process, self.terminal = pty.fork()
        if self.process == 0:
            os.environ.update(TERM="dumb", PS1=self.READY, LINES="50", COLUMNS="500", **variables)
            os.execvp(command[0], command)
        self.seen = ""

    def type(self, text):
        os.write(self.terminal, text.encode())

    def read_until(self, pattern):
        """What is printed up to a text that matches, and that match."""
        end = time.monotonic() + TIMEOUT
        while not (match := re.search(pattern, self.seen)):
            if not select.select([self.terminal], [], [], max(0, end - time.monotonic()))[0]:
                raise TimeoutError(f"no {pattern!r} in {self.seen!r}")
            self.seen += os.read(self.terminal, 65536).decode("utf-8", "replace")
        self.seen = self.seen[match.end() :]
        return match

    def end(self):
        os.close(self.terminal)
        os.waitpid(self.process, 0)


def typed_line(shell, line):
    """What a line is after the tabulator: echo prints it, with the marks of this function."""
    shell.read_until(shell.READY)
    # Behind the tabulator, the line becomes what stands behind echo.
    shell.type(f"{line}\t\x01echo 'be''gin' \x05 'e''nd'\r")
    return " ".join(shell.read_until(r"begin (.*?) ?end\r?\n")[1].split())


def test_at_terminal(name, shell, *preparation):
    try:
        for command in preparation:
            shell.type(command + "\r")
        shell.type("echo pre''pared\r")
        shell.read_until("prepared\r?\n")
        for line, wanted in TYPED:
            # zsh takes the "=" of an option back if no value follows.
            if name.startswith("zsh") and re.search(r" --\w+=$", wanted):
                wanted = wanted[:-1]
            expect(f"{name} at a terminal", line, wanted, typed_line(shell, line))
    finally:
        shell.end()


def test_zsh_lists(script, folder):
    """What zsh offers, as it hands it to its own builtin."""
    shell = Shell("zsh", "-f", "-i", ZDOTDIR=folder)
    try:
        for command in ["autoload -Uz compinit && compinit -u -D", f"source {script}",
                        "zstyle ':completion:*' list-separator ' '",
                        "LISTMAX=1000 PROMPT_EOL_MARK='' ; unsetopt zle_bracketed_paste",
                        "echo pre''pared"]:
            shell.type(command + "\r")
        shell.read_until("prepared\r?\n")
        for line, wanted in LISTS:
            if len(wanted) < 2:
                continue
            word = line.split(" ")[-1]
            common = os.path.commonprefix(wanted)
            shell.read_until(shell.READY)
            # The first completes what is common, the second lists; then the line is given up.
            shell.type(line + ("\t" if common == word else "\t\t") + "\x15: 'do''ne'; echo do''ne\r")
            listed = shell.read_until(r"(?s)(.*?)done\r?\n")[1]
            cut = max(word.rfind("="), word.rfind(":")) + 1
            for each in wanted:
                each = each.removesuffix("=")
                if not re.search(rf"(?<![\w-]){re.escape(each[cut:])}(?![\w-])", listed):
                    failures.append(f"zsh: {line!r} does not offer {each}: {listed!r}")
    finally:
        shell.end()


def main(program):
    missing = [shell for shell in ["bash", "zsh", "fish"] if shutil.which(shell) is None]
    program = str(pathlib.Path(program).resolve())
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        for name in ["links.txt", "list.txt", "other.txt"]:
            pathlib.Path(name).touch()
        scripts = {}
        for shell in ["bash", "zsh", "fish"]:
            scripts[shell] = f"{folder}/completion.{shell}"
            pathlib.Path(scripts[shell]).write_text(output_of(program, "completion", shell),
                                                    encoding="utf-8")
        if "bash" not in missing:
            test_bash(scripts["bash"])
            test_every_option(program, scripts["bash"])
            test_at_terminal("bash", Shell("bash", "--norc", "-i"),
                             "bind 'set enable-bracketed-paste off'", f"source {scripts['bash']}")
        if "fish" not in missing:
            test_fish(scripts["fish"])
        if "zsh" not in missing:
            test_at_terminal("zsh", Shell("zsh", "-f", "-i", ZDOTDIR=folder),
                             "autoload -Uz compinit && compinit -u -D", f"source {scripts['zsh']}")
            # As a file that the shell finds by itself, too.
            pathlib.Path(folder, "site").mkdir()
            shutil.copy(scripts["zsh"], f"{folder}/site/_iri")
            test_at_terminal("zsh with _iri in fpath", Shell("zsh", "-f", "-i", ZDOTDIR=folder),
                             f"fpath=({folder}/site $fpath)",
                             "autoload -Uz compinit && compinit -u -D")
            test_zsh_lists(scripts["zsh"], folder)

    print("\n".join(failures))
    if failures:
        return 1
    for shell in missing:
        print(f"SKIPPED: there is no {shell} here to complete in")
    if missing:
        return 1 if os.environ.get("ZKFLNETWORK_REQUIRE_SHELLS") else SKIPPED
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
