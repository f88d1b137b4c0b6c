#!/usr/bin/env python3
"""How the tool deals with its streams, and with many, long and strange lines: streams.py IRI"""

import ipaddress
import json
import os
import pathlib
import random
import re
import select
import socket
import subprocess
import sys
import tempfile
import unittest

import left_out

TIMEOUT = 60
MEBIBYTE = 1 << 20
PROGRAM = ""
VERBS = ["parse", "get", "resolve", "relativize", "build", "edit", "check", "compare", "map", "idn",
         "addr", "lookup", "adapters", "completion"]
README = pathlib.Path(__file__).parents[3] / "README.md"


def run(*arguments, **options):
    options = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, "timeout": TIMEOUT,
               "check": False, **options}
    if "input" not in options and "stdin" not in options:
        options["input"] = b""
    return subprocess.run([PROGRAM, *arguments], **options)


def objects(output):
    """The JSON objects of an output, which are all of it."""
    lines = output.decode("utf-8").split("\n")
    assert lines.pop() == ""
    return [json.loads(line) for line in lines]


def composed(record):
    """The text that the components make (RFC 3986, 5.3)."""
    text = ""
    if record["scheme"] is not None:
        text += record["scheme"] + ":"
    if record["authority"] is not None:
        text += "//" + record["authority"]
    text += record["path"]
    if record["query"] is not None:
        text += "?" + record["query"]
    if record["fragment"] is not None:
        text += "#" + record["fragment"]
    return text


def authority(record):
    """The authority that user information, host and port make."""
    if record["host"] is None:
        return None
    before = "" if record["userInfo"] is None else record["userInfo"] + "@"
    behind = "" if record["port"] is None else ":" + record["port"]
    return before + record["host"] + behind


def random_lines(count):
    """Lines of which a good part are IRIs, and some not even UTF-8; the same in every run."""
    source = random.Random(3987)
    alphabet = ["a", "b", "x:", "//", "/", "?", "#", "@", ":8", "[::1]", "%41", "%", "é", "я", "٣",
                "%D0%B4", "%C0%80", "%E9", ".", "\u202e", "\U000e0001", "\ufeff", " ", "\\", "\0",
                "\x1b", "\r", "", "", "", "", "", "", ""]
    for _ in range(count):
        line = "".join(source.choices(alphabet, k=6)).encode("utf-8")
        yield line + b"\xff" if source.random() < 0.05 else line


class Failures(unittest.TestCase):
    def expect_full(self, *arguments, **options):
        with open("/dev/full", "wb") as full:
            done = run(*arguments, stdout=full, **options)
        self.assertEqual(done.returncode, 3)
        self.assertEqual(done.stderr,
                         b"iri: cannot write to standard output: No space left on device\n")

    def test_full_disk(self):
        self.expect_full("parse", "a")
        self.expect_full("resolve", "--base=x:", "a")
        self.expect_full("relativize", "--base=x:", "x:")
        self.expect_full("build", "--path=a")
        self.expect_full("edit", "--clear=path", "a")
        self.expect_full("compare", "a", "a")
        self.expect_full("idn", "a")
        self.expect_full("addr", "::")
        self.expect_full("lookup", "--json", "")
        self.expect_full("adapters", "--all")
        self.expect_full("parse", "--json", "a")
        self.expect_full("parse", input=b"a\n" * 100000)
        self.expect_full("--help")
        self.expect_full("--version")
        self.expect_full("parse", "--help")

    def test_full_disk_counts_more_than_an_invalid_record(self):
        self.expect_full("parse", "a", "b c")

    def test_nothing_to_read_from(self):
        done = run("parse", stdin=None, preexec_fn=lambda: os.close(0))
        self.assertEqual(done.returncode, 3)
        self.assertEqual(done.stderr,
                         b"iri: cannot read standard input: Bad file descriptor\n")

    def test_what_was_done_before_a_failure_is_out(self):
        folder = os.open("/", os.O_RDONLY)
        try:
            done = run("parse", "--json", "a", "-", stdin=folder)
        finally:
            os.close(folder)
        self.assertEqual(done.returncode, 3)
        self.assertEqual([record["path"] for record in objects(done.stdout)], ["a"])
        self.assertEqual(done.stderr, b"iri: cannot read standard input: Is a directory\n")

    def test_nowhere_to_write_to(self):
        done = run("parse", "a", preexec_fn=lambda: os.close(1))
        self.assertEqual(done.returncode, 3)
        self.assertEqual(done.stderr,
                         b"iri: cannot write to standard output: Bad file descriptor\n")

    def test_nowhere_to_complain(self):
        done = run("parse", "--json", "a", "b c", "d", preexec_fn=lambda: os.close(2))
        self.assertEqual(done.returncode, 1)
        self.assertEqual([record["valid"] for record in objects(done.stdout)], [True, False, True])


class ClosedPipes(unittest.TestCase):
    def close_early(self, **options):
        """What is left of a run whose reader takes one line and goes."""
        with tempfile.TemporaryFile() as lines:
            lines.write(b"a\n" * 1000000)
            lines.seek(0)
            with subprocess.Popen([PROGRAM, "parse"], stdin=lines, stdout=subprocess.PIPE,
                                  stderr=subprocess.PIPE, **options) as process:
                self.assertEqual(process.stdout.readline(), b"a\n")
                process.stdout.close()
                errors = process.stderr.read()
                return process.wait(TIMEOUT), errors

    def test_ends_quietly_by_the_signal(self):
        self.assertEqual(self.close_early(), (left_out.READER_GONE, b""))

    def test_ends_quietly_where_the_signal_is_ignored(self):
        self.assertEqual(self.close_early(restore_signals=False), (3, b""))


class Waiting(unittest.TestCase):
    def setUp(self):
        self.process = subprocess.Popen([PROGRAM, "parse", "--json"], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, stderr=subprocess.PIPE, bufsize=0)

    def tearDown(self):
        self.process.stdin.close()
        self.assertEqual(self.process.wait(TIMEOUT), 0)
        self.process.stdout.close()
        self.process.stderr.close()

    def answer(self):
        ready, _, _ = select.select([self.process.stdout], [], [], TIMEOUT)
        self.assertTrue(ready, "no answer")
        return json.loads(self.process.stdout.readline())

    def test_each_line_is_answered_before_the_next_is_awaited(self):
        for number in range(100):
            self.process.stdin.write(f"//h/{number}\n".encode())
            self.assertEqual(self.answer()["path"], f"/{number}")

    def test_a_line_may_come_in_pieces(self):
        for piece in [b"x", b"://h/\xd1", b"\x8f\r", b"\n"]:
            self.process.stdin.write(piece)
        self.assertEqual(self.answer()["path"], "/я")

    def test_a_pipe_that_does_not_block_is_waited_for(self):
        # The mode belongs to the pipe's end, which both processes have in common.
        reader, writer = os.pipe()
        os.set_blocking(reader, False)
        with subprocess.Popen([PROGRAM, "parse", "--json"], stdin=reader,
                              stdout=subprocess.PIPE) as process:
            os.close(reader)
            for path in ["a", "b"]:
                os.write(writer, path.encode() + b"\n")
                self.assertEqual(json.loads(process.stdout.readline())["path"], path)
            os.close(writer)
            self.assertEqual(process.wait(TIMEOUT), 0)


class Order(unittest.TestCase):
    def test_errors_stand_where_they_belong(self):
        done = run("parse", "--json", "--form=decoded", "a", "b c", "d", "%C0%80", "e",
                   stderr=subprocess.STDOUT)
        kinds = [line[:5] for line in done.stdout.split(b"\n") if not line.startswith(b" ")]
        self.assertEqual(kinds, [b'{"iri', b'{"iri', b"<argu", b'{"iri', b'{"iri', b"iri: ",
                                 b'{"iri', b""])


class LongLines(unittest.TestCase):
    def test_a_mebibyte(self):
        path = "я" * (MEBIBYTE // 2)
        done = run("parse", "--json", input=f"//h/{path}\n/b\n".encode())
        self.assertEqual(done.returncode, 0)
        self.assertEqual([record["path"] for record in objects(done.stdout)], ["/" + path, "/b"])

        done = run("parse", "--form=ascii", input=f"x:{path}".encode())
        self.assertEqual(done.stdout.split(b"\n")[0], b"x:" + b"%D1%8F" * (MEBIBYTE // 2))

    def test_an_invalid_mebibyte_is_whole_in_json_and_short_in_the_message(self):
        text = "\\" + "я" * 200 + "<" * MEBIBYTE
        done = run("parse", "--json", input=text.encode() + b"\nx:\n")
        self.assertEqual(done.returncode, 1)
        first, second = objects(done.stdout)
        self.assertEqual((first["iri"], first["valid"]), (text, False))
        self.assertEqual(second["scheme"], "x")
        # The first thing wrong is the backslash; the message shows it and a part of the rest.
        where, line, mark, *_ = done.stderr.decode().split("\n")
        self.assertRegex(where, r"\A<stdin>:1:1: error: path: .* \[bad-character\]\Z")
        self.assertEqual(line, " 1 | \\\\" + "я" * 20 + "...")
        self.assertEqual(mark, "   | ^~")
        self.assertLess(len(done.stderr), 1000)

    def test_a_message_shows_all_of_a_text_of_120_characters(self):
        done = run("addr", "<" * 120, "<" * 121)
        ends = [line.rpartition(": ")[2] for line in done.stderr.decode().split("\n")]
        self.assertEqual(ends, ["<" * 120, "<" * 120 + "... (121 bytes)", ""])

    def test_lines_that_end_about_where_a_buffer_does(self):
        for length in range(65530, 65542):
            for end in [b"\n", b"\r\n"]:
                lines = [b"a" * length, b"", "é".encode() * (length // 2), b"c"]
                done = run("parse", "--json", input=end.join(lines))
                self.assertEqual([record["iri"].encode() for record in objects(done.stdout)], lines)


class ManyLines(unittest.TestCase):
    def setUp(self):
        self.lines = list(random_lines(4000))
        self.input = b"\n".join(self.lines) + b"\n"

    def parse(self, form):
        done = run("parse", "--json", "--form=" + form, input=self.input)
        records = objects(done.stdout)
        self.assertEqual(len(records), len(self.lines))
        failures = sum("error" in record for record in records)
        self.assertGreater(failures, 0)
        self.assertEqual(done.returncode, 1)
        self.assertEqual(len(re.findall(rb"^(?:<stdin>:\d+:\d+: error: |iri: )", done.stderr,
                                        re.MULTILINE)), failures)
        self.assertEqual(self.unprintable(done.stdout), [])
        self.assertEqual(self.unprintable(done.stderr), [])
        return records

    def unprintable(self, output):
        """Characters of an output that a terminal might obey."""
        return [c for c in output.decode("utf-8") if c != "\n" and (
            c < " " or "\x7f" <= c <= "\x9f" or c in "\u202e\ufeff\U000e0001")]

    def given(self, record):
        """The bytes that a record says it was made of."""
        text = record["iri"].encode("utf-8")
        if not record.get("escaped"):
            return text
        return b"\\".join(part.replace(b"\\xFF", b"\xff") for part in text.split(b"\\\\"))

    def test_each_has_its_record_and_is_made_of_its_components(self):
        valid = 0
        for line, record in zip(self.lines, self.parse("iri")):
            line = line[:-1] if line.endswith(b"\r") else line
            self.assertEqual(self.given(record), line)
            if not record["valid"]:
                self.assertEqual(set(record) - {"escaped"}, {
                    "iri", "valid", "error", "code", "component", "offset", "length",
                    "characterOffset", "expected", "repaired"})
                continue
            valid += 1
            self.assertEqual(record["form"], "iri")
            self.assertEqual(composed(record), record["iri"])
            self.assertEqual(authority(record), record["authority"])
            port = record["port"]
            self.assertEqual(record["portNumber"], None if port is None else int(port))
        self.assertGreater(valid, len(self.lines) // 6)

    def test_forms_change_no_component_that_is_not_there(self):
        plain = self.parse("iri")
        for form in ["iri-strict", "ascii", "ascii-strict", "decoded"]:
            for record, same in zip(self.parse(form), plain):
                self.assertEqual(record["valid"], same["valid"])
                if not record["valid"]:
                    continue
                self.assertEqual(record["form"], form)
                for name in ["scheme", "authority", "userInfo", "host", "port", "path", "query",
                             "fragment"]:
                    self.assertEqual(name in record, name not in record.get("undecodable", []))
                    if name in record:
                        self.assertEqual(record[name] is None, same[name] is None)
                    else:
                        self.assertEqual(form, "decoded")
                        self.assertIn("%C0%80", same[name])
                        self.assertIn("error", record)
                if form == "decoded":
                    self.assertEqual(record["text"], record["iri"])
                else:
                    self.assertEqual(record["text"], composed(record))
                    self.assertEqual(authority(record), record["authority"])
                if form.startswith("ascii"):
                    self.assertTrue(composed({**record, "scheme": None}).isascii())

    def test_text_and_json_tell_the_same(self):
        labels = {"scheme": "scheme", "userInfo": "user info", "host": "host", "port": "port",
                  "path": "path", "query": "query", "fragment": "fragment"}
        shown = {"\u202e": "\\u{202E}", "\U000e0001": "\\u{E0001}", "\ufeff": "\\u{FEFF}"}
        for form in ["iri", "ascii-strict"]:
            text = run("parse", "--form=" + form, input=self.input)
            blocks = text.stdout.decode("utf-8").removesuffix("\n").split("\n\n")
            records = [record for record in self.parse(form) if record["valid"]]
            self.assertEqual(len(blocks), len(records))
            for block, record in zip(blocks, records):
                whole, *listed = block.split("\n")
                expected = []
                for name, label in labels.items():
                    value = "(absent)" if record[name] is None else record[name] or "(empty)"
                    expected.append("  " + label.ljust(11) + "".join(shown.get(c, c) for c in value))
                self.assertEqual(listed, expected)
                self.assertEqual(whole, "".join(shown.get(c, c) for c in composed(record))
                                 or "(empty)")


class RoundTrips(unittest.TestCase):
    def setUp(self):
        self.input = b"\n".join(random_lines(20000)) + b"\n"

    def rebuild(self, form):
        """What parse gives, and what build makes of that."""
        parsed = run("parse", "--json", "--form=" + form, input=self.input).stdout
        rebuilt = run("build", "--json", input=parsed).stdout
        pairs = list(zip(objects(parsed), objects(rebuilt), strict=True))
        self.assertGreater(sum(before["valid"] for before, _ in pairs), 3000)
        return pairs

    def test_what_was_parsed_is_built_again(self):
        for before, after in self.rebuild("iri"):
            if before["valid"]:
                self.assertEqual(after, before)
            else:  # passed on in words
                self.assertEqual(after.items(), {name: before[name] for name in before if name in (
                    "iri", "escaped", "valid", "error")}.items())

    def test_each_form_but_the_decoded_is_built_as_it_is(self):
        for form in ["iri-strict", "ascii", "ascii-strict"]:
            for before, after in self.rebuild(form):
                self.assertEqual(after["valid"], before["valid"])
                if before["valid"]:
                    self.assertEqual(after, {**before, "iri": composed(before), "form": "iri"})

    def test_deep_nesting_costs_no_stack(self):
        depth = MEBIBYTE
        nested = b'{"other":' + b"[" * depth + b"]" * depth + b',"path":"a"}\n'
        done = run("build", "--json", input=nested)
        self.assertEqual([record["path"] for record in objects(done.stdout)], ["a"])


class Addresses(unittest.TestCase):
    def random_addresses(self, count):
        """Addresses in bytes, with many zeros and ones, and a prefix length."""
        source = random.Random(4291)
        for _ in range(count):
            size = source.choice([4, 16])
            piece = source.choice([1, 2])
            pieces = [source.choice([bytes(piece), b"\xff" * piece, source.randbytes(piece)])
                      for _ in range(size // piece)]
            start = source.choice([b"", b"", b"\x7f", b"\xa9\xfe", b"\xe1", b"\xfe\x9a", b"\xff\x02"])
            packed = (start + b"".join(pieces))[:size]
            # Of an IPv4-mapped address, versions of Python think differently.
            if not packed.startswith(bytes(10) + b"\xff\xff"):
                yield packed, source.randint(0, size * 8)

    def test_the_standard_library_of_another_language_says_the_same(self):
        given = list(self.random_addresses(3000))
        family = {4: socket.AF_INET, 16: socket.AF_INET6}
        lines = [ipaddress.ip_address(packed).exploded + f"/{length}" for packed, length in given]
        done = run("addr", "--json", input="\n".join(lines).encode())
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        seen = set()
        for (packed, length), line, record in zip(given, lines, objects(done.stdout), strict=True):
            address = ipaddress.ip_address(packed)
            network = ipaddress.ip_network((packed, length), strict=False).network_address.packed
            classes = (address.is_loopback, address.is_link_local, address.is_multicast)
            seen.add((address.version, classes))
            self.assertEqual(record, {
                "addr": line, "valid": True, "version": address.version,
                "address": socket.inet_ntop(family[len(packed)], packed), "bytes": list(packed),
                "loopback": classes[0], "linkLocal": classes[1], "multicast": classes[2],
                "scope": None, "prefixlen": length,
                "network": f"{socket.inet_ntop(family[len(packed)], network)}/{length}"})
        self.assertGreaterEqual(len(seen), 7)


class DomainNames(unittest.TestCase):
    def test_either_form_leads_to_the_other(self):
        source = random.Random(46)
        labels = ["a", "Z9", "ß", "ς", "é", "E\u0301", "я", "日本", "ｆｕｌｌ", "-", "😀", "क्\u200dष",
                  "א", "ا", "xn--fa-hia"]
        names = [".".join("".join(source.choices(labels[:-1], k=source.randint(1, 3)))
                          if source.random() < 0.9 else labels[-1]
                          for _ in range(source.randint(1, 3))) for _ in range(2000)]
        first = objects(run("idn", "--json", input="\n".join(names).encode()).stdout)
        self.assertEqual([record["name"] for record in first], names)
        good = [record for record in first if record["valid"]]
        self.assertGreater(len(good), 1000)
        for form in ["ascii", "unicode"]:
            again = objects(run("idn", "--json", input="\n".join(
                record[form] for record in good).encode()).stdout)
            self.assertEqual([{**record, "name": ""} for record in again],
                             [{**record, "name": ""} for record in good])
        for record in good:
            self.assertTrue(record["ascii"].isascii())


    def test_a_label_too_long_to_count_stops_nothing(self):
        name = "é" * MEBIBYTE
        done = run("idn", "--json", input=f"x\n{name}\ny\n".encode())
        records = objects(done.stdout)
        self.assertEqual([record["ascii"] for record in records], ["x", None, "y"])
        self.assertEqual([record["unicode"] for record in records], ["x", None, "y"])
        self.assertEqual([record["valid"] for record in records], [True, False, True])
        self.assertEqual(records[1]["error"], "cannot be converted: a label is too long")
        self.assertEqual(done.returncode, 1)
        shown = run("idn", "é" * 2000, "").stdout.decode().splitlines()
        self.assertEqual(shown[1:], ["  ascii      (absent)", "  unicode    (absent)", "",
                                     "(empty)", "  ascii      (empty)", "  unicode    (empty)"])


class Help(unittest.TestCase):
    def test_the_version_is_one_line(self):
        for option in ["--version", "-V"]:
            self.assertRegex(run(option).stdout, rb"\Airi \d+\.\d+\.\d+\n\Z")

    def test_all_ways_to_ask_give_the_same(self):
        self.assertEqual(run("help").stdout, run("--help").stdout)
        self.assertEqual(run("-h").stdout, run("--help").stdout)
        self.assertEqual(run().stderr, run("--help").stdout)
        self.assertEqual(run("help", "parse").stdout, run("parse", "--help").stdout)

    def test_it_fits_a_terminal(self):
        for verb in VERBS:
            text = run(verb, "--help").stdout.decode("utf-8")
            self.assertLessEqual(max(map(len, text.split("\n"))), 80)

    def test_each_verb_is_known(self):
        general = run("--help").stdout.decode("utf-8")
        listed = re.findall(r"^  (\w+)  +\S", general.partition("\nVerbs:\n")[2]
                            .partition("\n\n")[0], re.MULTILINE)
        self.assertEqual(sorted(listed), sorted([*VERBS, "help"]))

    def test_all_have_the_same_exit_codes_and_so_has_the_readme(self):
        codes = re.findall(r"^  (\d)  (.*)$", run("--help").stdout.decode("utf-8"), re.MULTILINE)
        self.assertEqual([code for code, _ in codes], ["0", "1", "2", "3", "4"])
        table = "Exit codes:\n" + "".join(f"  {code}  {text}\n" for code, text in codes)
        for verb in VERBS:
            text = run(verb, "--help").stdout.decode("utf-8")
            self.assertTrue(text.endswith("\n" + table))
            self.assertEqual(text.count("Exit codes:"), 1)
        page = README.read_text(encoding="utf-8")
        for code, text in codes:
            self.assertIn(f"\n| {code} | {text} |\n", page)

    def test_it_names_all_options(self):
        text = run("parse", "--help").stdout.decode("utf-8")
        for option in ["--form=FORM", "--json", "--color=WHEN", "-h, --help"]:
            self.assertIn("\n  " + option, text)


if __name__ == "__main__":
    PROGRAM = sys.argv.pop(1)
    left_out.run_unittests("tool.iri-streams")
