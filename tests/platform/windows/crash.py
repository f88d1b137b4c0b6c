#!/usr/bin/env python3
"""Whether a test program that crashes ends with a failure, each time: crash.py COMMAND..."""

import subprocess
import sys

TIMES = 40
CRASHED = 99  # what CrashGuard.cpp ends with


def main():
    failed = 0
    for _ in range(TIMES):
        done = subprocess.run(sys.argv[1:], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              timeout=60, check=False)
        if done.returncode != CRASHED or b"crashed with exception c0000005" not in done.stderr:
            print(f"status {done.returncode}, errors {done.stderr!r}")
            failed += 1
    print(f"{TIMES} crashes, {failed} of them not seen")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
