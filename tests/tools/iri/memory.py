#!/usr/bin/env python3
"""What the tool says if a line does not fit into memory, and that many short ones do: memory.py IRI

Apart from streams.py, because a sanitizer wants more memory than is left here.
"""

import resource
import subprocess
import sys

MEBIBYTE = 1 << 20
LIMIT = 256 * MEBIBYTE
ROOM = 96 * MEBIBYTE

# Writes more than there is room for, in lines of a hundred bytes.
FEEDER = """
import sys
block = (b'//h/' + b'a' * 95 + b'\\n') * 100000
for _ in range(20):
    sys.stdout.buffer.write(block)
"""


def limited(program, *arguments, **options):
    return subprocess.run(
        [program, *arguments], capture_output=True, timeout=120, check=False,
        preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (LIMIT, LIMIT)), **options)


def is_well_said(done):
    """Whether a program had enough memory, or ends with an error and not by a signal."""
    if done.returncode == 3:
        return done.stderr == b"iri: not enough memory\n"
    if done.returncode == 4:
        return done.stderr == b"iri: U_MEMORY_ALLOCATION_ERROR\n"
    return done.returncode == 0


def main(program):
    # The longer the line, the sooner memory is wanting, each time in another place.
    for size in range(8, 56, 4):
        done = limited(program, "idn", "--json", input=b"x\n" + b"a" * (size * MEBIBYTE))
        if not is_well_said(done) or not done.stdout.startswith(b'{"name":"x",'):
            print(size, done.returncode, done.stderr, done.stdout[:1000])
            return 1

    for jobs in ["1", "3"]:
        done = limited(program, "map", "-j", jobs, "get", "path", input=b"x\n" + b"a" * LIMIT)
        if done.returncode != 3 or done.stderr != b"iri: not enough memory\n" \
                or done.stdout not in (b"", b"x\n"):
            print(jobs, done.returncode, done.stderr, done.stdout[:1000])
            return 1

    for arguments in [["map", "get", "host"], ["map", "-j", "3", "parse"], ["check"],
                      ["get", "host"]]:
        with subprocess.Popen([sys.executable, "-c", FEEDER], stdout=subprocess.PIPE) as feeder:
            done = subprocess.run(
                [program, *arguments], stdin=feeder.stdout, stdout=subprocess.DEVNULL,
                stderr=subprocess.PIPE, timeout=120, check=False,
                preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_DATA, (ROOM, ROOM)))
        if done.returncode != 0 or done.stderr:
            print(arguments, done.returncode, done.stderr)
            return 1

    lines = b"x\n" + b"a" * LIMIT
    done = limited(program, "parse", "--json", "--form=ascii", input=lines)
    if done.returncode == 3 and done.stderr == b"iri: not enough memory\n" \
            and done.stdout.startswith(b'{"iri":"x",') and done.stdout.count(b"\n") == 1:
        return 0
    print(done.returncode, done.stderr, done.stdout[:1000])
    return 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
