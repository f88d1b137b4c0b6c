#!/usr/bin/env python3
"""Writes lines of all sorts, as a crawl brings them home: lines.py COUNT [SEED] >FILE

URLs, IRIs in many scripts, texts that are no IRI, bytes that are no UTF-8, NULs, carriage returns
before and between, empty lines, and here and there a line of 64 KiB. Most lines hold a number of
their own, so that one that is lost, doubled or out of order shows. No line begins with a byte order
mark: before the first record of a process it is no part of it.
"""

import random
import sys

BLOCK = 100_000

SCHEMES = ["https://", "https://", "https://", "http://", "HTTP://", "ftp://", "//", "ws://u:p@"]
HOSTS = """www.example.org shop.example static-7.example.net 192.0.2.7 [2001:db8::7] [v1.x:y]
    xn--fa-hia.example faß.example пример.example παράδειγμα.example مثال.example דוגמה.example
    उदाहरण.example উদাহরণ.example எடுத்துக்காட்டு.example ตัวอย่าง.example 例子.example 例え.example
    예시.example მაგალითი.example օրինակ.example ምሳሌ.example ឧទាហរណ៍.example ཐོ.example 🦊.example
    h%C3%A4user.example a_b.example""".split()
HOSTS += [""]
PORTS = ["", "", "", "", ":", ":80", ":8443", ":65535", ":00443"]
PATHS = """/ /index.html /путь/файл /μονοπάτι /a%20b/%D0%B6 /a/./b/../c /wiki/東京 /รายการ /%FF%FE
    /קובץ /ملف /(x);y=1,2 /it's/@me /~u/!$&*+=: /é/e\u0301 /\U0001F30D/\U00020000""".split()
QUERIES = ["", "", "", "?", "?q=1&p=a%20b", "?q=ключ+слово", "?u=https://h.example/?x=y",
           "?\ue000=private", "?名=値"]
FRAGMENTS = ["", "", "", "#", "#top", "#часть", "#%zz"]
OTHERS = ["mailto:anna@example.org?n=", "urn:example:", "tel:+1-555-01", "../up/", "?only=", "#",
          "file:///home/зоя/", "data:,", "a/b/", "news:comp."]
BAD = [b"http://[::1/", b"http://h:port/", b"http://h:65536/", b"1http://h/", b":", b"http://h/ ",
       b"http://a b/", b"http://h/<x>", b"http://h/%", b"http://h/%4", b'"quoted" ', b"\t", b"\\",
       b"http://h/\x00", b"http://h/\r", b"http://h/\x7f", b"http://[1.2.3]/", b"http://h/\\N",
       b"http://h/\xff", b"\xc0\x80", b"http://h/\xed\xa0\x80", b"http://h/\xe2\x82",
       b"\xfe\xff\x00h", b"http://\xf8\x88\x80\x80\x80/", b"http://h/\xf4\x90\x80\x80",
       "http://h/\ufffe".encode(), "http://h/\U000e0001".encode(), "привет, мир ".encode()]
ENDS = [b"\n"] * 16 + [b"\r\n"] * 3 + [b"\n\n", b"\r\n\r\n", b"\n \n"]
LONG = 64 * 1024


def frames(source):
    """What stands before and behind the number of a line, as often as it is to be met."""
    def end():
        return source.choice(ENDS)

    result = []
    for _ in range(14_000):
        before = source.choice(SCHEMES) + source.choice(HOSTS) + source.choice(PORTS) \
            + source.choice(PATHS)
        behind = source.choice(PATHS) + source.choice(QUERIES) + source.choice(FRAGMENTS)
        result.append((before.encode(), behind.encode() + end()))
    for _ in range(3_000):
        result.append((source.choice(OTHERS).encode(), source.choice(PATHS).encode() + end()))
    for _ in range(3_000):
        result.append((source.choice(BAD), source.choice([b"", b"/", b" ", b"\xff", b"#"]) + end()))
    result.append((b"https://h.example/" + b"long/" * (LONG // 5), b"\n"))
    return result


def blocks(count, seed=1):
    """As many lines in blocks of bytes: the same for the same seed."""
    source = random.Random(seed)
    pool = frames(source)
    number = 0
    while count > 0:
        drawn = source.choices(pool, k=BLOCK)
        block = b"".join([(b"%d" % n).join(frame) for n, frame in enumerate(drawn, number)])
        number += BLOCK
        lines = block.count(b"\n")
        if lines > count:
            block = b"\n".join(block.split(b"\n", count)[:count]) + b"\n"
        count -= lines
        yield block


def write(file, count, seed=1):
    for block in blocks(count, seed):
        file.write(block)


if __name__ == "__main__":
    write(sys.stdout.buffer, *map(int, sys.argv[1:]))
