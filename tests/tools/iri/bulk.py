#!/usr/bin/env python3
"""How the verbs for bulk deal with pipes, interrupts, and with many, long and strange records:
bulk.py IRI"""

import json
import os
import pty
import random
import signal
import subprocess
import sys
import tempfile
import time
import unittest

import left_out

TIMEOUT = 120
MEBIBYTE = 1 << 20
PROGRAM = ""


def run(*arguments, **options):
    options = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, "timeout": TIMEOUT,
               "check": False, **options}
    if "input" not in options and "stdin" not in options:
        options["input"] = b""
    return subprocess.run([PROGRAM, *arguments], **options)


def records_of(seed, count, separator=b"\n"):
    """Records that are IRIs, or invalid in several ways, or not even UTF-8; the same in every run."""
    source = random.Random(seed)
    pieces = [b"a", b"x:", b"//", b"/", b"?", b"#", b"@", b":8", b"[::1]", b"%41", b"%", "é".encode(),
              "漢".encode(), b"%C0%80", b" ", b"\\", b"\0", b"\t", b"\r", b"\n", b"\xff", b"\xf8\x90",
              b"\xed\xa0\x80", b"", b"", b"", b""]
    pieces = [piece for piece in pieces if separator not in piece]
    return [b"".join(source.choices(pieces, k=source.randrange(8))) for _ in range(count)]


def cut(output, separator=b"\n"):
    """The records of an output, each of which has its end."""
    pieces = output.split(separator)
    assert pieces.pop() == b"", "a record without its end"
    return pieces


class Answering(unittest.TestCase):
    """Who keeps standard input open and waits for each answer gets it."""

    def converse(self, options, exchanges):
        with subprocess.Popen([PROGRAM, "map", *options], stdin=subprocess.PIPE,
                              stdout=subprocess.PIPE, bufsize=0) as process:
            try:
                for question, answers in exchanges:
                    process.stdin.write(question)
                    for answer in answers:
                        self.assertEqual(process.stdout.readline(), answer)
                process.stdin.close()
                self.assertEqual(process.stdout.read(), b"")
            finally:
                process.stdin.close()
                if process.poll() is None:
                    process.wait(TIMEOUT)
        self.assertEqual(process.returncode, 0)

    def test_text(self):
        for jobs in ["1", "3"]:
            self.converse(["-j", jobs, "get", "host"], [
                (b"//a\n", [b"a\n"]), (b"<\n//b\n", [b"\n", b"b\n"]), (b"/", []), (b"/c\n", [b"c\n"])])

    def test_json(self):
        for jobs in ["1", "3"]:
            self.converse(["-j", jobs, "--json", "get", "host"], [
                (b"//a\n", [b'{"host":"a"}\n']), (b"<\n", [b'{"host":null}\n'])])

    def test_tsv(self):
        self.converse(["--in=tsv", "--column=2", "--tsv", "get", "port"], [
            (b"1\t//a\n", [b"1\t//a\t\\N\n"]), (b"2\t//a:8\n3\n", [b"2\t//a:8\t8\n", b"3\t\n"])])

    def test_a_header_comes_with_the_first_answer(self):
        self.converse(["--header", "--tsv", "get", "host"], [(b"//a\n", [b"host\n", b"a\n"])])

    def test_chunks(self):
        for jobs in ["1", "3"]:
            self.converse(["-j", jobs, "--chunk-header", "get", "host"], [
                (b"1\n//a\n", [b"a\n"]), (b"2\n", []), (b"//b\n", [b"b\n"]), (b"//c\n0\n", [b"c\n"]),
                (b"1\n//d\n2\n//e\n//f\n", [b"d\n", b"e\n", b"f\n"])])


class Ends(unittest.TestCase):
    def test_full_disk(self):
        for arguments in [["map", "get", "host"], ["map", "-j", "3", "get", "host"],
                          ["map", "--header", "get", "host"], ["get", "host"], ["check", "--json"]]:
            for lines in [b"<\n//h\n", b"<\n//h\n" * 200000]:
                with open("/dev/full", "wb") as full:
                    done = run(*arguments, stdout=full, input=lines)
                self.assertEqual(done.returncode, 3)
                self.assertTrue(done.stderr.endswith(
                    b"iri: cannot write to standard output: No space left on device\n"))

    def test_a_reader_that_goes(self):
        with tempfile.TemporaryFile() as lines:
            lines.write(b"//h/<\n//h\n" * 500000)
            for arguments in [["map", "get", "host"], ["map", "-j", "3", "get", "host"],
                              ["check", "--json"]]:
                lines.seek(0)
                with subprocess.Popen([PROGRAM, *arguments], stdin=lines, stdout=subprocess.PIPE,
                                      stderr=subprocess.PIPE) as process:
                    self.assertTrue(process.stdout.readline().endswith(b"\n"))
                    process.stdout.close()
                    self.assertEqual(process.wait(TIMEOUT), left_out.READER_GONE)
                    self.assertEqual(process.stderr.read(), b"")

    def test_what_cannot_be_read(self):
        folder = os.open("/", os.O_RDONLY)
        try:
            for jobs in ["1", "3"]:
                done = run("map", "-j", jobs, "get", "host", stdin=folder)
                self.assertEqual((done.returncode, done.stdout, done.stderr), (
                    3, b"", b"iri: cannot read standard input: Is a directory\n"))
        finally:
            os.close(folder)
        for arguments in [["map", "get", "host"], ["map", "-j", "3", "get", "host"], ["check"]]:
            done = run(*arguments, stdin=None, preexec_fn=lambda: os.close(0), timeout=60)
            self.assertEqual((done.returncode, done.stdout, done.stderr), (
                3, b"", b"iri: cannot read standard input: Bad file descriptor\n"))
        done = run("check", "/")
        self.assertEqual((done.returncode, done.stderr), (3, b"iri: cannot read /: Is a directory\n"))

    def test_a_file_that_cannot_be_read_does_not_hide_the_others(self):
        with tempfile.NamedTemporaryFile() as bad:
            bad.write(b"a\nb c\n")
            bad.flush()
            for unreadable in ["/nowhere/x", "/"]:
                done = run("check", "--json", unreadable, bad.name, unreadable)
                found = [json.loads(line) for line in done.stdout.splitlines()]
                self.assertEqual([(one["line"], one["iri"]) for one in found], [(2, "b c")])
                self.assertEqual(done.stderr.count(unreadable.encode() + b": "), 2)
                self.assertEqual(done.returncode, 3)

    def test_progress_is_told_to_a_person_who_waits(self):
        def errors_of(seconds, *arguments):
            ours, theirs = pty.openpty()
            with subprocess.Popen([PROGRAM, *arguments], stdin=subprocess.PIPE,
                                  stdout=subprocess.DEVNULL, stderr=theirs) as process:
                os.close(theirs)
                end = time.monotonic() + seconds
                while time.monotonic() < end:
                    process.stdin.write(b"a\nb c\n")
                    process.stdin.flush()
                    time.sleep(0.1)
                process.stdin.close()
                said = b""
                try:
                    while piece := os.read(ours, 4096):
                        said += piece
                except OSError:  # Linux's way to say that the other end is closed
                    pass
            os.close(ours)
            self.assertEqual(process.returncode, 0)
            return said

        self.assertEqual(errors_of(0.2, "map", "get", "path"), b"")
        for jobs in ["1", "3"]:
            said = errors_of(2, "map", "-j", jobs, "get", "path")
            self.assertRegex(said, rb"^\r\x1b\[K\d+ records, \d+ invalid, \d+ a second\r")
            self.assertTrue(said.endswith(b"\r\x1b[K"), said)

    def interrupt(self, arguments, lines, answers, wait_for_more):
        """Ends a run after some answers. What it still writes is whole records."""
        with subprocess.Popen([PROGRAM, *arguments], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, bufsize=0) as process:
            process.stdin.write(lines)
            output = b"".join(process.stdout.readline() for _ in range(answers))
            if wait_for_more:
                time.sleep(0.2)  # so that it waits for input, most likely
            process.send_signal(signal.SIGINT)
            output += process.stdout.read()
            errors = process.stderr.read()
            self.assertEqual(process.wait(TIMEOUT), left_out.INTERRUPTED)
        self.assertEqual(errors, b"")
        return cut(output)

    def test_an_interrupt_ends_the_wait_for_input_without_a_partial_record(self):
        for jobs in ["1", "3"]:
            for wait in [False, True]:
                for rest in [b"", b"//c", b"//c\n//d"]:
                    hosts = self.interrupt(["map", "-j", jobs, "get", "host"], b"//a\n//b\n" + rest,
                                           2, wait)
                    self.assertIn(hosts, [[b"a", b"b"], [b"a", b"b", b"c"]])

    def test_an_interrupt_in_a_chunk_is_none_of_its_faults(self):
        self.assertEqual(self.interrupt(["map", "--chunk-header", "get", "host"], b"5\n//a\n//b\n//",
                                        2, True), [b"a", b"b"])

    def test_an_interrupt_ends_the_reading_of_what_never_ends(self):
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "lines")
            with open(path, "wb") as lines:
                block = (b"//h/" + b"a" * 95 + b"\n") * 100000
                for _ in range(10):
                    lines.write(block)
            for jobs in ["1", "2"]:
                with open(path, "rb") as lines, \
                        subprocess.Popen([PROGRAM, "map", "-j", jobs, "get", "host"], stdin=lines,
                                         stdout=subprocess.PIPE) as process:
                    first = process.stdout.readline()
                    process.send_signal(signal.SIGINT)
                    output = first + process.stdout.read()
                    self.assertEqual(process.wait(TIMEOUT), left_out.INTERRUPTED)
                self.assertEqual(set(cut(output)), {b"h"})
                self.assertLess(len(output), 2 * 1000000)

    def test_a_second_interrupt_ends_what_cannot_write(self):
        with subprocess.Popen([PROGRAM, "map", "get", "path"], stdin=subprocess.PIPE,
                              stdout=subprocess.PIPE) as process:
            process.stdin.write(b"a" * MEBIBYTE + b"\n")
            process.stdin.flush()
            process.stdout.read(1)  # now it writes, and nobody reads
            process.send_signal(signal.SIGINT)
            time.sleep(0.2)
            process.send_signal(signal.SIGINT)
            self.assertEqual(process.wait(TIMEOUT), left_out.INTERRUPTED)

    def test_an_interrupt_is_ignored_where_the_caller_says_so(self):
        with subprocess.Popen([PROGRAM, "map", "get", "host"], stdin=subprocess.PIPE,
                              stdout=subprocess.PIPE, bufsize=0, preexec_fn=lambda: signal.signal(
                                  signal.SIGINT, signal.SIG_IGN)) as process:
            process.stdin.write(b"//a\n")
            self.assertEqual(process.stdout.readline(), b"a\n")
            process.send_signal(signal.SIGINT)
            process.stdin.write(b"//b\n")
            self.assertEqual(process.stdout.readline(), b"b\n")
            process.stdin.close()
            self.assertEqual(process.wait(TIMEOUT), 0)

    def test_check_is_interrupted_as_well(self):
        with subprocess.Popen([PROGRAM, "check", "--json"], stdin=subprocess.PIPE,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, bufsize=0) as process:
            process.stdin.write(b"<\n<<")
            self.assertEqual(json.loads(process.stdout.readline())["iri"], "<")
            process.send_signal(signal.SIGINT)
            self.assertEqual(process.stdout.read(), b"")
            self.assertEqual(process.stderr.read(), b"")
            self.assertEqual(process.wait(TIMEOUT), left_out.INTERRUPTED)


class OneForOne(unittest.TestCase):
    def test_a_million_records(self):
        lines = records_of(3986, 1000000)
        for place in range(0, len(lines), 100000):
            lines[place] = [b"x:" + b"a" * MEBIBYTE, b"<" * MEBIBYTE][place // 100000 % 2]
        done = run("map", "--json", "--with-error", "get", "path", input=b"\n".join(lines) + b"\n")
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        records = [json.loads(line) for line in cut(done.stdout)]
        self.assertEqual(len(records), len(lines))
        for line, record in zip(lines, records):
            line = line.removesuffix(b"\r")
            self.assertEqual(list(record), ["path", "error", "offset"])
            self.assertEqual(record["path"] is None, record["error"] is not None)
            if record["path"] is not None:
                self.assertIn(record["path"].encode(), line)
            elif record["error"] == "bad-utf8":
                with self.assertRaises(UnicodeDecodeError):
                    line.decode("utf-8")
            else:
                line.decode("utf-8")
                self.assertLessEqual(record["offset"], len(line))
        errors = {record["error"] for record in records}
        self.assertLessEqual({None, "bad-utf8", "bad-character", "surrounding-space"}, errors)

    def test_workers_give_the_same(self):
        lines = records_of(3987, 200000)
        lines[1000] = b"x:" + b"a" * MEBIBYTE
        for arguments in [["--with-error", "parse"], ["--json", "get", "host", "path:decoded"],
                          ["-0", "get", "-f", "{path}\\n"], ["--tsv", "resolve", "--base=http://h/a"],
                          ["--in=tsv", "--column=2", "--header", "--json", "get", "path"],
                          ["--in=nul", "--hadoop-counters", "--fail-on-invalid", "check"]]:
            one = run("map", *arguments, input=b"\n".join(lines))
            four = run("map", "-j", "4", *arguments, input=b"\n".join(lines))
            self.assertEqual(four.returncode, one.returncode)
            self.assertEqual(four.stderr, one.stderr)
            self.assertTrue(four.stdout == one.stdout)
            self.assertGreater(len(one.stdout), 0)

    def test_check_tells_the_same_with_workers(self):
        lines = records_of(3988, 100000)
        for arguments in [["--json"], [], ["-0"]]:
            one = run("check", *arguments, input=b"\n".join(lines))
            four = run("check", "-j", "4", *arguments, input=b"\n".join(lines))
            self.assertEqual(one.returncode, 1)
            self.assertTrue((four.returncode, four.stdout, four.stderr)
                            == (one.returncode, one.stdout, one.stderr))

    def test_all_verbs_judge_alike(self):
        lines = records_of(3989, 20000)
        given = b"\n".join(lines) + b"\n"
        mapped = cut(run("map", "check", input=given).stdout)
        wrong = [json.loads(line) for line in cut(run("check", "--json", input=given).stdout)]
        parsed = [json.loads(line) for line in cut(run("parse", "--json", input=given).stdout)]
        got = [json.loads(line) for line in cut(run("get", "--json", "path", input=given).stdout)]
        self.assertEqual(len(mapped), len(lines))
        self.assertEqual([i + 1 for i, line in enumerate(mapped) if line != b"true"],
                         [record["line"] for record in wrong])
        self.assertEqual([line == b"true" for line in mapped],
                         [record["valid"] for record in parsed])
        self.assertEqual([record["valid"] for record in got],
                         [record["valid"] for record in parsed])
        members = ["iri", "error", "code", "component", "offset", "length", "characterOffset",
                   "expected", "repaired"]
        for each in [parsed, got]:
            self.assertEqual([[record[name] for name in members] for record in wrong],
                             [[record[name] for name in members] for record in each
                              if not record["valid"]])

    def test_what_is_proposed_would_be_read(self):
        given = b"\n".join(records_of(3990, 20000)) + b"\n"
        wrong = [json.loads(line) for line in cut(run("check", "--json", input=given).stdout)]
        repaired = [record["repaired"] for record in wrong if record["repaired"] is not None]
        self.assertGreater(len(repaired), len(wrong) / 2)
        self.assertEqual(run("check", "-q", "-0", input="\0".join(repaired).encode()).returncode, 0)

    def test_what_is_wrong_is_shown_so_that_a_terminal_obeys_none_of_it(self):
        given = b"\n".join(records_of(3991, 20000)) + b"\n\x1b[31m<\xc2\x9b\xe2\x80\xae\n"
        shown = run("check", input=given).stderr.decode("utf-8")
        self.assertEqual([c for c in shown if c != "\n" and not (c.isprintable())], [])

    def test_columns_come_through(self):
        rows = [line.split(b"\t") for line in records_of(3992, 20000)]
        given = b"".join(b"\t".join([b"1", *row]) + b"\n" for row in rows)
        done = run("map", "--in=tsv", "--column=2", "--tsv", "get", "path", input=given)
        lines = cut(done.stdout)
        self.assertEqual(len(lines), len(rows))
        for line, row in zip(lines, rows):
            columns = line.split(b"\t")[:-1]
            row[-1] = row[-1].removesuffix(b"\r")
            self.assertEqual(len(columns), len(row) + 1)
            line.decode("utf-8")
            for given_column, column in zip(row, columns[1:]):
                try:
                    given_column.decode("utf-8")
                    self.assertEqual(column, given_column)
                except UnicodeDecodeError:
                    self.assertIn(b"\\x", column)


class Room(unittest.TestCase):
    def test_a_line_of_fifty_mebibytes(self):
        line = b"x:" + b"a" * (50 * MEBIBYTE)
        for jobs in ["1", "2"]:
            done = run("map", "-j", jobs, "get", "path", input=b"y:b\n" + line + b"\nz:c")
            self.assertTrue(done.stdout == b"b\n" + line[2:] + b"\nc\n")
        done = run("check", input=line + b"<")
        self.assertEqual(done.returncode, 1)
        self.assertLess(len(done.stderr), 1000)
        done = run("get", "scheme", input=line)
        self.assertEqual(done.stdout, b"x\n")


if __name__ == "__main__":
    PROGRAM = sys.argv.pop(1)
    left_out.run_unittests("tool.iri-bulk")
