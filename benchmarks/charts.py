#!/usr/bin/env python3
"""Draws the charts of docs/performance.md as SVG, in colours for light and for dark pages.

    charts.py FOLDER DOCS

FOLDER is where benchmarks/run keeps its results, DOCS where the charts go.
"""

import html
import math
import pathlib
import sys

from results import BASELINES, OURS, Results, nanoseconds, title

WIDTH = 760
LEFT, RIGHT = 200, 110
FONT = "system-ui, -apple-system, 'Segoe UI', 'DejaVu Sans', sans-serif"
# The page decides: an image in a page is told which scheme its reader has chosen.
STYLE = """
    .back { fill: #ffffff; }
    .text { fill: #1f2328; }
    .soft { fill: #59636e; }
    .grid { stroke: #d1d9e0; }
    .mark { stroke: #1f2328; }
    .ours { fill: #0969da; }
    .peer { fill: #afb8c1; }
    .line { fill: none; stroke-width: 2; }
    .dashed { stroke-dasharray: 4 3; }
    .c0 { stroke: #0969da; } .c1 { stroke: #1a7f37; } .c2 { stroke: #bc4c00; }
    .c3 { stroke: #8250df; } .c4 { stroke: #cf222e; } .c5 { stroke: #9a6700; }
    .c6 { stroke: #0e7c86; } .c7 { stroke: #57606a; }
    .f0 { fill: #0969da; } .f1 { fill: #1a7f37; } .f2 { fill: #bc4c00; }
    .f3 { fill: #8250df; } .f4 { fill: #cf222e; } .f5 { fill: #9a6700; }
    .f6 { fill: #0e7c86; } .f7 { fill: #57606a; }
    @media (prefers-color-scheme: dark) {
        .back { fill: #0d1117; }
        .text { fill: #f0f6fc; }
        .soft { fill: #9198a1; }
        .grid { stroke: #3d444d; }
        .mark { stroke: #f0f6fc; }
        .ours { fill: #4493f8; }
        .peer { fill: #656c76; }
        .c0 { stroke: #4493f8; } .c1 { stroke: #3fb950; } .c2 { stroke: #f0883e; }
        .c3 { stroke: #ab7df8; } .c4 { stroke: #f85149; } .c5 { stroke: #d29922; }
        .c6 { stroke: #39c5cf; } .c7 { stroke: #9198a1; }
        .f0 { fill: #4493f8; } .f1 { fill: #3fb950; } .f2 { fill: #f0883e; }
        .f3 { fill: #ab7df8; } .f4 { fill: #f85149; } .f5 { fill: #d29922; }
        .f6 { fill: #39c5cf; } .f7 { fill: #9198a1; }
    }
"""


class Drawing:
    """An SVG image that is written from the top."""

    def __init__(self, name):
        self.name, self.parts, self.height = name, [], 0

    def text(self, x, y, words, style="text", size=13, anchor="start", weight="normal"):
        self.parts.append(
            '<text class="%s" x="%.1f" y="%.1f" font-size="%d" text-anchor="%s"'
            ' font-weight="%s">%s</text>' % (style, x, y, size, anchor, weight, html.escape(words))
        )

    def bar(self, x, y, width, height, style):
        self.parts.append(
            '<rect class="%s" x="%.1f" y="%.1f" width="%.1f" height="%.1f" rx="2"/>'
            % (style, x, y, max(width, 1), height)
        )

    def line(self, x1, y1, x2, y2, style):
        self.parts.append(
            '<line class="%s" x1="%.1f" y1="%.1f" x2="%.1f" y2="%.1f"/>' % (style, x1, y1, x2, y2)
        )

    def path(self, points, style):
        joined = " ".join("%.1f,%.1f" % point for point in points)
        self.parts.append('<polyline class="line %s" points="%s"/>' % (style, joined))

    def svg(self):
        return (
            '<svg xmlns="http://www.w3.org/2000/svg" width="%d" height="%d" viewBox="0 0 %d %d"'
            ' role="img" aria-label="%s" font-family="%s">\n<style>%s</style>\n'
            '<rect class="back" width="%d" height="%d"/>\n%s\n</svg>\n'
            % (
                (WIDTH, self.height, WIDTH, self.height)
                + (html.escape(self.name), FONT, STYLE, WIDTH, self.height)
                + ("\n".join(self.parts),)
            )
        )


def times_of(times, operation, corpus):
    """Label, time and style of each subject that was measured, the fastest first."""
    found = []
    for subject in times.subjects(operation):
        key = (operation, corpus, subject)
        if key in times.samples and subject not in BASELINES:
            note = times.accepted(*key)
            label = title(subject) + (" (%s)" % note if note else "")
            found.append((label, times.median(*key), "ours" if subject == OURS else "peer"))
    return sorted(found, key=lambda bar: bar[1])


def bars(name, groups):
    """A chart of groups of bars: heading, and (label, nanoseconds, style) of each bar."""
    drawing = Drawing(name)
    drawing.text(16, 28, name, size=16, weight="600")
    drawing.text(WIDTH - 16, 28, "nanoseconds for a text, less is better", "soft", 12, "end")
    y = 44
    for heading, rows in groups:
        if not rows:
            continue
        y += 20
        drawing.text(16, y, heading, weight="600")
        y += 8
        longest = max(value for _, value, _ in rows)
        for label, value, style in rows:
            length = (WIDTH - LEFT - RIGHT) * value / longest
            drawing.text(LEFT - 8, y + 13, label, "text" if style == "ours" else "soft", 12, "end")
            drawing.bar(LEFT, y + 1, length, 16, style)
            drawing.text(LEFT + length + 6, y + 13, nanoseconds(value), size=12)
            y += 21
    drawing.height = y + 14
    return drawing


def ratios(name, times):
    """How long each operation takes beside the fastest peer, on a logarithmic scale."""
    rows = []
    for label, operation, corpus in (
        ("parse, URLs", "Parse", "urls"),
        ("parse, IRIs", "Parse", "iris"),
        ("parse and read all, URLs", "ParseReadAll", "urls"),
        ("parse and read all, IRIs", "ParseReadAll", "iris"),
        ("parse and print, URLs", "ParsePrint", "urls"),
        ("parse and print, IRIs", "ParsePrint", "iris"),
        ("ASCII form, IRIs", "ParseAscii", "iris"),
        ("resolve, URLs", "Resolve", "urls"),
        ("resolve, IRIs", "Resolve", "iris"),
        ("relativise, URLs", "Relativise", "urls"),
        ("refuse, URLs", "Refuse", "bad_urls"),
        ("equal values, URLs", "EqualSame", "urls"),
        ("different values, URLs", "EqualOther", "urls"),
        ("first hash, URLs", "Hash", "urls"),
        ("copy, URLs", "Copy", "urls"),
        ("escape, IRIs", "EncodeComponent", "iris"),
        ("decode, IRIs", "DecodeComponent", "encoded_iris"),
        ("UTF-8 to UTF-32, IRIs", "Utf8To32", "iris"),
        ("UTF-32 to UTF-8, IRIs", "Utf32To8", "iris"),
    ):
        # Copies of Qt's only count references.
        without = ("qt",) if operation == "Copy" else ()
        fastest = times.fastest_peer(operation, corpus, without)
        if fastest:
            ratio = times.median(operation, corpus, OURS) / times.median(*fastest)
            rows.append((label, ratio, title(fastest[2])))
    drawing = Drawing(name)
    drawing.text(16, 28, name, size=16, weight="600")
    drawing.text(WIDTH - 16, 28, "left of the line: faster than every peer", "soft", 12, "end")
    if not rows:
        drawing.height = 44
        return drawing
    least = min(0.25, *(ratio for _, ratio, _ in rows))
    most = max(2, *(ratio for _, ratio, _ in rows))
    scale = (WIDTH - LEFT - RIGHT) / math.log(most / least)

    def x_of(ratio):
        return LEFT + scale * math.log(ratio / least)

    top, y = 60, 64
    bottom = y + 21 * len(rows)
    for tick in (0.01, 0.02, 0.05, 0.1, 0.25, 0.5, 1, 2, 4, 10, 20, 50, 100):
        if least <= tick <= most:
            drawing.line(x_of(tick), top, x_of(tick), bottom, "mark" if tick == 1 else "grid")
            drawing.text(x_of(tick), top - 6, "%g" % tick, "soft", 11, "middle")
    for label, ratio, peer in rows:
        drawing.text(LEFT - 8, y + 13, label, size=12, anchor="end")
        begin, end = sorted((x_of(1), x_of(ratio)))
        drawing.bar(begin, y + 2, end - begin, 14, "ours" if ratio <= 1 else "peer")
        drawing.text(WIDTH - RIGHT + 8, y + 13, "%.2f of %s" % (ratio, peer), "soft", 11)
        y += 21
    drawing.height = bottom + 16
    return drawing


GROWTH = [
    ("parse", "Parse"),
    ("print", "Print"),
    ("parse two, ==", "ParseEqual"),
    ("<", "Less"),
    ("parse, hash", "ParseHash"),
    ("parse, ASCII form", "ParseAscii"),
    ("parse, resolve", "ParseResolve"),
    ("parse, relativise", "ParseRelativise"),
]


def growth(name, times):
    """The time by the length of the text; both axes are logarithmic."""
    lines = [(label, times.sweep(operation, "ascii", OURS)) for label, operation in GROWTH]
    lines = [(label, sorted(medians.items())) for label, medians in lines if medians]
    drawing = Drawing(name)
    drawing.text(16, 28, name, size=16, weight="600")
    drawing.text(WIDTH - 16, 28, "both axes logarithmic: linear is along the diagonals of the grid", "soft", 12, "end")
    drawing.height = 44
    if not lines:
        return drawing
    left, right, top, step = 76, 150, 56, 44
    lengths = [length for _, points in lines for length, _ in points]
    values = [value for _, points in lines for _, value in points]
    x_low, x_high = math.log10(min(lengths)), math.log10(max(lengths))
    y_low, y_high = math.floor(math.log10(min(values))), math.ceil(math.log10(max(values)))
    bottom = top + step * (y_high - y_low)
    x_scale = (WIDTH - left - right) / max(x_high - x_low, 1)

    def place(length, value):
        x = left + x_scale * (math.log10(length) - x_low)
        return x, bottom - step * (math.log10(value) - y_low)

    units = ["1 ns", "10 ns", "100 ns", "1 µs", "10 µs", "100 µs", "1 ms", "10 ms", "100 ms"]
    units += ["1 s", "10 s"]
    for power in range(y_low, y_high + 1):
        y = bottom - step * (power - y_low)
        drawing.line(left, y, WIDTH - right, y, "grid")
        label = units[power] if 0 <= power < len(units) else "%g ns" % 10**power
        drawing.text(left - 8, y + 4, label, "soft", 11, "end")
    for power in range(round(x_low), round(x_high) + 1):
        x = left + x_scale * (power - x_low)
        drawing.line(x, top, x, bottom, "grid")
        drawing.text(x, bottom + 18, "{:,}".format(10**power), "soft", 11, "middle")
    drawing.text(left + (WIDTH - left - right) / 2, bottom + 38, "bytes", "soft", 12, "middle")

    for at, (_, points) in enumerate(lines):
        drawing.path([place(*point) for point in points], "c%d" % at)
    # The labels stand beside the ends of their lines, pushed apart where these lie together.
    ends = sorted(
        (place(*points[-1])[1], at, label) for at, (label, points) in enumerate(lines)
    )
    y = top - 16
    for end, at, label in ends:
        y = max(end + 4, y + 16)
        drawing.text(WIDTH - right + 8, y, label, "f%d" % at, 12)
    drawing.height = bottom + 52
    return drawing


def main(folder, docs):
    times = Results(folder).times
    parsing = [
        ("%s, parse and destroy" % title(corpus), times_of(times, "Parse", corpus))
        for corpus in ("urls", "iris")
    ]
    working = [
        (label, times_of(times, operation, corpus))
        for label, operation, corpus in (
            ("URLs, parse and read all components", "ParseReadAll", "urls"),
            ("URLs, resolve a reference and print", "Resolve", "urls"),
            ("URLs, refuse a broken text", "Refuse", "bad_urls"),
        )
    ]
    charts = {
        "performance-parse.svg": bars("Parsing", parsing),
        "performance-work.svg": bars("Reading, resolving, refusing", working),
        "performance-ratios.svg": ratios("Beside the fastest peer", times),
        "performance-growth.svg": growth("Growth with the length of the text", times),
    }
    for name, drawing in charts.items():
        (pathlib.Path(docs) / name).write_text(drawing.svg(), encoding="utf-8")


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(*sys.argv[1:])
