#!/usr/bin/env python3
"""What the tool says if a line does not fit into memory: memory.py IRI

Apart from streams.py, because a sanitizer wants more memory than is left here.
"""

import resource
import subprocess
import sys

MEBIBYTE = 1 << 20
LIMIT = 256 * MEBIBYTE


def main(program):
    lines = b"x\n" + b"a" * LIMIT
    done = subprocess.run(
        [program, "parse", "--json", "--form=ascii"], input=lines, capture_output=True, timeout=120,
        check=False, preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (LIMIT, LIMIT)))
    if done.returncode == 3 and done.stderr == b"iri: not enough memory\n" \
            and done.stdout.startswith(b'{"iri":"x",') and done.stdout.count(b"\n") == 1:
        return 0
    print(done.returncode, done.stderr, done.stdout[:1000])
    return 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
