#!/usr/bin/env python3
"""Runs the commands of docs/scale.md: engines.py IRI SCALE_MD ENGINE

Each engine works on the same file of lines of all sorts (lines.py), and what comes out of its
pieces must be what one run of the tool makes of the whole, byte for byte.
ZKFLNETWORK_ENGINES_LINES says how many lines that are. Where the engine is not installed the test
is skipped and says so; with ZKFLNETWORK_REQUIRE_ENGINES=1 it fails instead.
"""

import collections
import contextlib
import filecmp
import functools
import os
import pathlib
import pwd
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
import time

import lines

SKIPPED = 77
REQUIRE = "ZKFLNETWORK_REQUIRE_ENGINES"
LINES = int(os.environ.get("ZKFLNETWORK_ENGINES_LINES", 100_000))
PAGE_SECTION = re.compile(r"^## (.*)\n((?:(?!^## ).*\n?)*)", re.MULTILINE)
BLOCK = re.compile(r"^```(\S+)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
EXPECTED_COMMAND = ["map", "--tsv", "--with-error", "get", "host", "path"]
# Whatever python3 runs this, Debian's packages belong to Debian's.
PYTHONS = [sys.executable, "/usr/bin/python3"]


class Missing(Exception):
    """What the engine needs is not installed."""


class Failed(Exception):
    """The engine has run, and not done what it must."""


def check(condition, message):
    if not condition:
        raise Failed(message)


def block_of(page, section, language, index=0):
    """A fenced block of a section of the page."""
    text = dict(PAGE_SECTION.findall(page))[section]
    return [content for kind, content in BLOCK.findall(text) if kind == language][index]


def replaced(text, old, new):
    check(old in text, f"docs/scale.md has no {old!r} where the test expects it")
    return text.replace(old, new)


class Workplace:
    """A folder with the file links.txt, and an `iri` that notes who has called it."""

    def __init__(self, folder, program, page):
        self.folder = folder
        self.page = page
        self.links = folder / "links.txt"
        self.callers = folder / "callers"
        self.expected = folder / "expected.tsv"
        self.program = program
        self.programs = folder / "bin"
        self.programs.mkdir()
        self.environment = {**os.environ, "PATH": f"{self.programs}:{os.environ['PATH']}"}
        self.wrap(program)

        with timed(f"{LINES} lines written"), open(self.links, "wb") as file:
            lines.write(file, LINES)
        with timed("one run of the tool"), open(self.links, "rb") as given, \
                open(self.expected, "wb") as answers:
            subprocess.run([program, *EXPECTED_COMMAND], stdin=given, stdout=answers, check=True)
        # Else the file would prove little.
        with open(self.expected, "rb") as file:
            head = [line.split(b"\t") for line in file.readlines(1 << 24)]
        check(all(len(columns) == 4 for columns in head), "an answer has not four columns")
        codes = collections.Counter(columns[2] for columns in head)
        check(len(codes) > 6 and codes[rb"\N"] * 2 > len(head), f"the lines are not mixed: {codes}")
        check(len({columns[1] for columns in head}) * 3 > len(head), "the answers are much alike")

    def wrap(self, program):
        wrapper = self.programs / "iri"
        wrapper.write_text(f"#!/bin/sh\necho $PPID >>{shlex.quote(str(self.callers))}\n"
                           f'exec {shlex.quote(str(program))} "$@"\n', encoding="utf-8")
        wrapper.chmod(0o755)

    def open_to(self, user):
        """Lets another user write here and run the tool, wherever it was built."""
        self.folder.chmod(0o777)
        listed = subprocess.run(["ldd", self.program], capture_output=True, check=True, text=True)
        library = re.search(r"libzkflnetwork\.so\S* => (\S+)", listed.stdout)[1]
        shutil.copy(library, self.programs)
        self.environment["LD_LIBRARY_PATH"] = str(self.programs)
        self.wrap(shutil.copy(self.program, self.programs / "program"))
        self.callers.touch()
        os.chown(self.callers, user.pw_uid, user.pw_gid)

    def bash(self, script):
        self.callers.unlink(missing_ok=True)
        self.run(["bash", "-euo", "pipefail", "-c", script])

    def run(self, command, **options):
        done = subprocess.run(command, cwd=self.folder, env=self.environment, check=False,
                              stdin=subprocess.DEVNULL, stderr=subprocess.PIPE, **options)
        check(done.returncode == 0,
              f"{command} ends with {done.returncode}:\n{done.stderr.decode(errors='replace')}")
        return done.stdout

    def calls(self):
        """How often each process has called the tool."""
        return collections.Counter(self.callers.read_text(encoding="ascii").split())

    def compare(self, name="parts.tsv"):
        made = self.folder / name
        check(filecmp.cmp(made, self.expected, shallow=False),
              f"the engine gives {made.stat().st_size} bytes that differ from the "
              f"{self.expected.stat().st_size} of one run")


@contextlib.contextmanager
def timed(what):
    begin = time.monotonic()
    yield
    print(f"{what}: {time.monotonic() - begin:.1f} s", flush=True)


# --- the engines -----------------------------------------------------------------------------


def jobs(place):
    with timed("iri map -j"):
        place.bash(block_of(place.page, "The cores of one machine", "bash"))
    place.compare()


def xargs(place):
    with timed("split and xargs"):
        place.bash(block_of(place.page, "split and xargs", "bash"))
    place.compare()
    check(place.calls().total() == os.cpu_count(), f"the calls of iri were {place.calls()}")
    check(not list(place.folder.glob("piece.*")), "pieces are left")


def parallel(place):
    program = shutil.which("parallel")
    # moreutils has another program of this name.
    if not program or b"GNU parallel" not in subprocess.run(
            [program, "--version"], capture_output=True, check=False).stdout:
        raise Missing("GNU parallel (Debian: parallel)")
    with timed("GNU parallel"):
        place.bash(block_of(place.page, "GNU parallel", "bash"))
    place.compare()
    check(place.calls().total() >= 4, f"the calls of iri were {place.calls()}")
    (place.folder / "parts.tsv").unlink()

    script = block_of(place.page, "GNU parallel", "bash", 1)
    script = replaced(script, "zcat links.txt.gz", "cat links.txt")
    script = replaced(script, " --sshlogin :,one.example,two.example", "")
    with timed("GNU parallel, through a pipe"):
        place.bash(replaced(script, "64M", "1M"))
    place.compare()
    check(place.calls().total() >= 4, f"the calls of iri were {place.calls()}")


def dask(place):
    for python in PYTHONS:
        if subprocess.run([python, "-c", "import dask.bytes, distributed, fsspec"],
                          capture_output=True, check=False).returncode == 0:
            break
    else:
        raise Missing("Dask (Debian: python3-dask python3-distributed)")

    (place.folder / "iri_dask.py").write_text(block_of(place.page, "Dask", "python"),
                                              encoding="utf-8")
    with cluster(place, python) as address:
        script = block_of(place.page, "Dask", "bash")
        script = replaced(script, "tcp://127.0.0.1:8786", address)
        script = replaced(script, "python3", shlex.quote(python))
        with timed("Dask"):
            place.bash(replaced(script, "16MiB", "1MiB" if LINES < 1_000_000 else "8MiB"))
    place.compare()
    calls = place.calls()
    check(len(calls) == 2, f"not both workers have called iri: {calls}")
    check(calls.total() >= 4, f"the calls of iri were {calls}")


@contextlib.contextmanager
def cluster(place, python):
    """A scheduler and two workers on the loopback device; gives the address."""
    processes = []

    def start(module, *arguments):
        log = open(place.folder / f"{module}-{len(processes)}.log", "wb")
        processes.append(subprocess.Popen(
            [python, "-m", f"distributed.cli.{module}", "--no-dashboard", *arguments],
            cwd=place.folder, env=place.environment, stdin=subprocess.DEVNULL, stdout=log,
            stderr=subprocess.STDOUT))

    def wait_for(what, condition):
        until = time.monotonic() + 120
        while not condition():
            check(time.monotonic() < until and all(each.poll() is None for each in processes),
                  f"no {what}:\n" + "".join(log.read_text() for log in
                                            sorted(place.folder.glob("dask_*.log"))))
            time.sleep(0.1)

    try:
        file = place.folder / "scheduler.json"
        start("dask_scheduler", "--host", "127.0.0.1", "--port", "0", "--scheduler-file", str(file))
        wait_for("scheduler", file.exists)
        time.sleep(0.2)
        address = re.search(r"tcp://127\.0\.0\.1:\d+", file.read_text(encoding="utf-8"))[0]
        for name in ["one", "two"]:
            start("dask_worker", address, "--host", "127.0.0.1", "--nthreads", "1", "--no-nanny",
                  "--name", name, "--memory-limit", "0", "--local-directory", str(place.folder))
        logs = [place.folder / f"dask_worker-{i}.log" for i in (1, 2)]
        wait_for("workers", lambda: all("Registered to" in log.read_text() for log in logs))
        yield address
    finally:
        for process in reversed(processes):
            process.terminate()
        for process in processes:
            try:
                process.wait(30)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()


def postgresql(place):
    programs = sorted(pathlib.Path("/usr/lib/postgresql").glob("*/bin/initdb"))
    if not programs:
        raise Missing("a PostgreSQL server (Debian: postgresql)")
    programs = programs[-1].parent
    become = {}
    if os.geteuid() == 0:
        # The server will not run as root; and what it reads must be there for its user.
        user = pwd.getpwnam("postgres")
        become = {"user": user.pw_uid, "group": user.pw_gid, "extra_groups": []}
        place.open_to(user)

    data = place.folder / "data"
    run = functools.partial(place.run, **become)
    run([programs / "initdb", "--pgdata", data, "--encoding=UTF8", "--locale=C", "--auth=trust",
         "--username=tester", "--no-sync"], stdout=subprocess.DEVNULL)
    server = [programs / "pg_ctl", "--pgdata", data, "--wait", "--silent"]
    options = f"-c listen_addresses= -c unix_socket_directories={place.folder} -c fsync=off"
    run([*server, "--log", place.folder / "log", "--options", options, "start"],
        stdout=subprocess.DEVNULL)
    try:
        def sql(statements, output):
            with open(place.folder / "statements.sql", "w", encoding="utf-8") as file:
                file.write(statements)
            place.run([programs / "psql", "--host", place.folder, "--username=tester",
                       "--no-psqlrc", "--quiet", "--set=ON_ERROR_STOP=1", "--file", file.name,
                       "postgres"],
                      stdout=output)

        script = block_of(place.page, "PostgreSQL", "sql")
        with timed("PostgreSQL"):
            sql(replaced(script, "/srv/links.txt", str(place.links)), subprocess.DEVNULL)
        with open(place.folder / "parts.tsv", "wb") as parts:
            sql('COPY (SELECT host, path, error, "offset" FROM parts ORDER BY line) TO STDOUT;\n',
                parts)
    finally:
        run([*server, "--mode=fast", "stop"], stdout=subprocess.DEVNULL)
    place.compare()
    check(place.calls().total() == 1, f"the calls of iri were {place.calls()}")


ENGINES = {each.__name__: each for each in (jobs, xargs, parallel, dask, postgresql)}


def main(program, page, engine):
    with tempfile.TemporaryDirectory(prefix="iri-engines-") as folder:
        folder = pathlib.Path(folder)
        try:
            place = Workplace(folder, str(pathlib.Path(program).resolve()),
                              pathlib.Path(page).read_text(encoding="utf-8"))
            ENGINES[engine](place)
        except Missing as missing:
            required = os.environ.get(REQUIRE, "0") not in ("", "0")
            print(f"*** {'FAILED' if required else 'SKIPPED'}: {missing} is not installed\n"
                  f"*** {REQUIRE}={os.environ.get(REQUIRE, '')}: to be skipped is "
                  + ("to fail" if required else "allowed"), file=sys.stderr)
            return 1 if required else SKIPPED
        except Failed as failure:
            print(failure, file=sys.stderr)
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
