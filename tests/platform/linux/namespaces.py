"""Namespaces of its own for a test: its network, its mounts and its name of the machine.

The process of the test leaves those of the machine and makes new ones, which end with it and with
the programs that it starts. So there is nothing to clean up, whatever happens, and tests beside each
other cannot meet.

Where the right or a program for this is missing, the test says so and is skipped. With
ZKFLNETWORK_REQUIRE_NAMESPACES=1 in the environment, to be skipped is to fail.
"""

import ctypes
import os
import shutil
import signal
import subprocess
import sys
import unittest

SKIPPED = 77  # what CMakeLists.txt tells ctest
REQUIRE = "ZKFLNETWORK_REQUIRE_NAMESPACES"

# linux/sched.h, linux/mount.h, linux/prctl.h
CLONE_NEWNS = 0x00020000
CLONE_NEWUTS = 0x04000000
CLONE_NEWUSER = 0x10000000
CLONE_NEWNET = 0x40000000
MS_BIND = 0x1000
MS_REC = 0x4000
MS_PRIVATE = 0x40000
MNT_DETACH = 2
PR_SET_PDEATHSIG = 1

libc = ctypes.CDLL(None, use_errno=True)


def call(name, *arguments):
    """A function of the C library that answers 0 or sets errno."""
    if getattr(libc, name)(*arguments) != 0:
        number = ctypes.get_errno()
        raise OSError(number, f"{name}: {os.strerror(number)}")


def mount(source, target, kind=None, flags=0):
    encoded = [text and os.fsencode(text) for text in (source, target, kind)]
    call("mount", *encoded, ctypes.c_ulong(flags), None)


def leave_the_machine():
    """Enters new namespaces, as the owner of new users if nothing else is allowed."""
    kinds = CLONE_NEWNS | CLONE_NEWUTS | CLONE_NEWNET
    user, group = os.geteuid(), os.getegid()
    try:
        call("unshare", kinds)
    except PermissionError:
        call("unshare", kinds | CLONE_NEWUSER)
        for file, text in [
            ("setgroups", "deny"),
            ("uid_map", f"0 {user} 1"),
            ("gid_map", f"0 {group} 1"),
        ]:
            with open(f"/proc/self/{file}", "w", encoding="ascii") as out:
                out.write(text)
    mount(None, "/", flags=MS_REC | MS_PRIVATE)


def enter_fresh_network():
    """Enters a network that has nothing but a loopback adapter, which is down."""
    call("unshare", CLONE_NEWNET)


def show_network_in_sys():
    """Has /sys show the network of this process, and not that of the machine."""
    mount("sysfs", "/sys", "sysfs")


def hide_network_in_sys():
    call("umount2", b"/sys", MNT_DETACH)


def put_in_place(path, text):
    """Has everybody in here read this text from a file that exists, until there is another one."""
    replacement = f"{os.environ['TMPDIR']}/{path.replace('/', '_')}"
    is_there = os.path.exists(replacement)
    with open(replacement, "w", encoding="utf-8") as out:
        out.write(text)
    if not is_there:
        mount(replacement, os.path.realpath(path), flags=MS_BIND)


def die_with_the_test():
    """For `preexec_fn`: whoever does not end by itself ends with the test."""
    libc.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


def run(*words):
    """Runs a program that must succeed, and answers what it wrote."""
    done = subprocess.run(words, capture_output=True, check=False, preexec_fn=die_with_the_test)
    if done.returncode != 0:
        raise RuntimeError(f"{words}: status {done.returncode}\n{done.stdout}\n{done.stderr}")
    return done.stdout


def skip(reason, environment):
    """Says that a test was skipped, and answers the status with which it ends."""
    required = environment.get(REQUIRE, "0") not in ("", "0")
    print(f"\n*** {'FAILED' if required else 'SKIPPED'}: {reason}")
    print(f"*** {REQUIRE}={environment.get(REQUIRE, '')}: to be skipped is "
          + ("to fail" if required else "allowed"), flush=True)
    return 1 if required else SKIPPED


def main(programs, module="__main__"):
    """Runs the cases of a module in new namespaces, with these programs; answers the status."""
    os.environ["PATH"] += ":/usr/sbin:/sbin"
    missing = [program for program in programs if shutil.which(program) is None]
    if missing:
        return skip(f"these programs are missing: {', '.join(missing)}", os.environ)
    try:
        leave_the_machine()
    except OSError as denied:
        return skip(f"namespaces cannot be made here: {denied}", os.environ)
    result = unittest.main(module=module, argv=sys.argv[:1], exit=False, verbosity=2).result
    if not result.wasSuccessful() or result.testsRun == 0:
        return 1
    if result.skipped:
        reasons = "; ".join(f"{case.id()}: {reason}" for case, reason in result.skipped)
        return skip(reasons, os.environ)
    return 0
