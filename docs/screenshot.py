#!/usr/bin/env python3
"""Makes the picture of a terminal session that the README shows.

screenshot.py IRI            writes docs/screenshot.svg
screenshot.py IRI --check    writes nothing; exit 1 if the picture would be another

The commands run in a terminal, so with the colours that a person sees, and in the network that
tests/tools/iri/network.py makes, so that they print the same everywhere. Where no such network can
be made, it says so and exits with 77; with 1 if ZKFLNETWORK_REQUIRE_NAMESPACES is set.
"""

import fcntl
import itertools
import os
import pathlib
import pty
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import termios
import unicodedata
from xml.sax.saxutils import escape

HERE = pathlib.Path(__file__).resolve().parent
PICTURE = HERE / "screenshot.svg"
sys.path.insert(0, str(HERE.parent / "tests" / "tools" / "iri"))
import network  # noqa: E402

INSIDE = "--inside"
TIMEOUT = 60

FILES = {"links.txt": "https://www.example.org/\n"
                      "https://例え.example/本 棚?q=1\n"
                      "https://example.org:65536/\n"}
COMMANDS = [
    "iri parse 'https://пример.example/путь/a%20b?q=1#часть'",
    "iri check links.txt",
    "iri adapters",
]

# --- the session -----------------------------------------------------------------------------


def session_output(command, folder, environment, columns):
    """What a command writes to its terminal."""
    master, slave = pty.openpty()
    fcntl.ioctl(slave, termios.TIOCSWINSZ, struct.pack("HHHH", 50, columns, 0, 0))
    with subprocess.Popen(["sh", "-c", command], cwd=folder, env=environment, stdin=slave,
                          stdout=slave, stderr=slave, start_new_session=True) as process:
        os.close(slave)
        written = b""
        while True:
            try:
                piece = os.read(master, 65536)
            except OSError:  # how Linux says that the other end is closed
                break
            if not piece:
                break
            written += piece
        process.wait(TIMEOUT)
    os.close(master)
    return written.decode("utf-8").replace("\r\n", "\n")


def session(program, columns):
    """The lines of the whole session, with the escapes of their colours."""
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        for file, text in FILES.items():
            (folder / file).write_text(text, encoding="utf-8")
        programs = folder / "bin"
        programs.mkdir()
        (programs / "iri").symlink_to(program)
        environment = {"PATH": f"{programs}:{os.environ['PATH']}", "LC_ALL": "C.UTF-8",
                       "TERM": "xterm-256color"}
        text = ""
        for command in COMMANDS:
            text += f"\x1b[1;34m$\x1b[0m {command}\n"
            text += session_output(command, folder, environment, columns) + "\n"
        return text.rstrip("\n").split("\n")


# --- the picture -----------------------------------------------------------------------------

COLUMNS = 100
CELL_WIDTH, CELL_HEIGHT, FONT_SIZE, MARGIN = 8.4, 19, 14, 16
FOREGROUND, BACKGROUND = "#d8dee9", "#1d2129"
COLOURS = {31: "#f0717b", 32: "#9ccf7a", 33: "#e8c36a", 34: "#6fb3f2", 35: "#cf8fe0",
           36: "#5fc9c9", 91: "#ff8f98", 92: "#b5e597", 93: "#f7d88b", 94: "#8fc7ff",
           95: "#e0aaf0", 96: "#84e3e3"}
ESCAPE = re.compile(r"\x1b\[([0-9;]*)m")
# What is drawn at once. Not every browser keeps spaces at the ends, or more than one in between,
# whatever it is told of them; and to fill the width it would then stretch the letters.
PIECE = re.compile(r"\S+(?: \S+)*")


def style_after(style, codes):
    for code in map(int, codes.split(";") if codes else ["0"]):
        if code == 0:
            style = {}
        elif code == 1:
            style = {**style, "font-weight": "bold"}
        elif code == 2:
            style = {**style, "opacity": "0.6"}
        elif code in COLOURS:
            style = {**style, "fill": COLOURS[code]}
        else:
            raise ValueError(f"no rendering for the code {code}")
    return style


def is_wide(character):
    return unicodedata.east_asian_width(character) in "WF"


def cells(line):
    """The characters of a line with their styles."""
    style = {}
    parts = ESCAPE.split(line)
    for text, codes in zip(parts[::2], [*parts[1::2], "0"]):
        for character in text:
            if unicodedata.category(character) in ("Cc", "Mn", "Me"):
                raise ValueError(f"no rendering for {character!r}")
            yield character, style
        style = style_after(style, codes)


def rows(lines):
    """What stands in each row: column, style, width and text of runs. Long lines go on in the next
    row, as on a terminal. Wide characters stand apart, as few fonts have them exactly twice as wide
    as the others."""
    for line in lines:
        row, column = [], 0
        for (style, wide), run in itertools.groupby(
                cells(line), lambda cell: (tuple(cell[1].items()), is_wide(cell[0]))):
            for character, _ in run:
                size = 2 if wide else 1
                if column + size > COLUMNS:
                    yield row
                    row, column = [], 0
                if row and not wide and row[-1][1:3] == [style, size]:
                    row[-1][3] += character
                else:
                    row.append([column, style, size, character])
                column += size
        yield row


def picture(lines):
    body, count = [], 0
    for count, row in enumerate(rows(lines), 1):
        y = MARGIN + (count - 1) * CELL_HEIGHT + FONT_SIZE
        for column, style, size, text in row:
            attributes = "".join(f' {name}="{value}"' for name, value in style)
            for piece in PIECE.finditer(text):
                x = MARGIN + (column + piece.start() * size) * CELL_WIDTH
                length = len(piece[0]) * size * CELL_WIDTH
                body.append(f'<text x="{x:g}" y="{y:g}" textLength="{length:g}"'
                            f' lengthAdjust="spacingAndGlyphs"{attributes}>'
                            f'{escape(piece[0])}</text>')
    height = count * CELL_HEIGHT + 2 * MARGIN
    width = COLUMNS * CELL_WIDTH + 2 * MARGIN
    return "\n".join([
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{width:g}" height="{height:g}"'
        f' viewBox="0 0 {width:g} {height:g}" role="img">',
        "<title>iri parse, iri check and iri adapters in a terminal</title>",
        f'<rect width="100%" height="100%" rx="8" fill="{BACKGROUND}"/>',
        f'<g font-family="DejaVu Sans Mono, Menlo, Consolas, monospace" font-size="{FONT_SIZE}"'
        f' fill="{FOREGROUND}">',
        *body, "</g>", "</svg>", ""])


# --- the namespaces --------------------------------------------------------------------------


def enter(*arguments):
    """Runs this file again where the network is its own."""
    command = ["unshare", "--net", "--mount"] + (["--map-root-user"] if os.geteuid() else [])
    if any(shutil.which(needed) is None for needed in ["unshare", "ip", "mount"]) \
            or subprocess.run([*command, "true"], check=False).returncode != 0:
        print("SKIPPED: no namespaces can be made here")
        return 1 if os.environ.get("ZKFLNETWORK_REQUIRE_NAMESPACES") else network.SKIPPED
    return subprocess.run([*command, sys.executable, "-B", __file__, *arguments, INSIDE],
                          check=False).returncode


def main(program, *options):
    if options[-1:] != (INSIDE,):
        return enter(str(pathlib.Path(program).resolve()), *options)
    with tempfile.TemporaryDirectory() as folder:
        network.make_world(folder)
        lines = session(program, COLUMNS)
    made = picture(lines)
    if "--check" not in options:
        PICTURE.write_text(made, encoding="utf-8")
        return 0
    if PICTURE.read_text(encoding="utf-8") == made:
        return 0
    print("docs/screenshot.svg shows another session than this:", *lines, sep="\n")
    return 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
