#!/usr/bin/env python3
"""Shows how the time of each operation grows with the length of hostile texts.

    hostile.py TIMES DOCS           draws DOCS/growth-hostile.svg and fills the table of DOCS/limits.md
    hostile.py TIMES                prints the table only

TIMES is what zkflnetwork_hostile printed. Ends with status 1 if an operation grows faster than its
text: if the exponent of the growth, which is the slope of a straight line through its times on
logarithmic scales, is above a bound.
"""

import collections
import json
import math
import pathlib
import statistics
import sys

from charts import WIDTH, Drawing

# Linear is 1. A text that outgrows a cache of the processor adds to that, and anything quadratic is
# far above it.
BOUND = 1.3
BEGIN, END = "<!-- begin: hostile.py -->\n", "<!-- end: hostile.py -->\n"
COLUMNS = 4
COLOURS = 8
GAP, TOP, ROW = 14, 76, 118
PLOT = 64


def slope(points):
    """The exponent of the growth: the slope of the best straight line on logarithmic scales."""
    return statistics.linear_regression([math.log(length) for length, _ in points],
                                        [math.log(time) for _, time in points]).slope


def read(path):
    """The points (length, nanoseconds) of each operation, of each shape."""
    shapes = collections.defaultdict(lambda: collections.defaultdict(list))
    for line in pathlib.Path(path).read_text(encoding="utf-8").splitlines():
        row = json.loads(line)
        # What is done at once whatever the length says nothing about growth.
        shapes[row["shape"]][row["operation"]].append((row["length"], max(row["time"], 1)))
    return shapes


def fits(shapes):
    """Shape, operation, exponent and nanoseconds a byte of the longest text; the worst first."""
    found = [(shape, operation, slope(points), points[-1][1] / points[-1][0])
             for shape, operations in shapes.items()
             for operation, points in operations.items() if len(points) > 1]
    return sorted(found, key=lambda fit: -fit[2])


def look(at):
    """The style of the line of an operation: a colour, dashed where there are no more colours."""
    return "c%d" % (at % COLOURS) + (" dashed" if at >= COLOURS else "")


def draw(shapes):
    """A small diagram for each shape: the time by the length, on logarithmic scales."""
    drawing = Drawing("Time by length on hostile texts")
    names = list(dict.fromkeys(name for operations in shapes.values() for name in operations))
    drawing.text(16, 28, drawing.name, size=16, weight="600")
    drawing.text(WIDTH - 16, 28, "all axes logarithmic: the diagonals of the grid are linear", "soft",
                 12, "end")
    x = 16
    for at, name in enumerate(names):
        if at == (len(names) + 1) // 2:
            x = 16
        y = 48 if at < (len(names) + 1) // 2 else 64
        drawing.path([(x, y - 4), (x + 14, y - 4)], look(at))
        drawing.text(x + 18, y, name, size=11)
        x += 105

    points = [point for operations in shapes.values() for line in operations.values()
              for point in line]
    low, high = (math.log(pick(length for length, _ in points)) for pick in (min, max))
    fastest, slowest = (math.log(pick(time for _, time in points)) for pick in (min, max))
    width = (WIDTH - 32 - GAP * (COLUMNS - 1)) / COLUMNS

    for at, (shape, operations) in enumerate(shapes.items()):
        left = 16 + (at % COLUMNS) * (width + GAP)
        top = TOP + 16 + (at // COLUMNS) * ROW
        bottom = top + PLOT
        worst = max(slope(line) for line in operations.values() if len(line) > 1)
        drawing.text(left, top - 5, shape, size=10)
        drawing.text(left + width, bottom + 13, "exponent at most %.2f" % worst, "soft", 10, "end")

        def place(length, time, left=left, bottom=bottom):
            return (left + width * (math.log(length) - low) / (high - low),
                    bottom - PLOT * (math.log(time) - fastest) / (slowest - fastest))

        # What is linear runs along these.
        first = math.floor((fastest - high) / math.log(100)) * 2
        for power in range(first, 30, 2):
            begin, end = low, high
            shift = power * math.log(10)
            begin = max(begin, fastest - shift)
            end = min(end, slowest - shift)
            if begin < end:
                drawing.line(*place(math.exp(begin), math.exp(begin + shift)),
                             *place(math.exp(end), math.exp(end + shift)), "grid")
        for name, line in operations.items():
            drawing.path([place(*point) for point in line], look(names.index(name)))
    drawing.height = TOP + ROW * math.ceil(len(shapes) / COLUMNS) + 8
    return drawing.svg()


def table(found, shapes):
    """For each operation the shape on which it grows fastest, and the one on which it is slowest."""
    rows = ["| Operation | shapes | largest exponent | on | most nanoseconds a byte | on |",
            "|---|---|---|---|---|---|"]
    for name in dict.fromkeys(name for operations in shapes.values() for name in operations):
        own = [fit for fit in found if fit[1] == name]
        if own:
            steepest, dearest = own[0], max(own, key=lambda fit: fit[3])
            rows.append("| %s | %d | %.2f | %s | %.1f | %s |" % (
                name, len(own), steepest[2], steepest[0], dearest[3], dearest[0]))
    return "\n".join(rows) + "\n"


def main(times, docs=None):
    shapes = read(times)
    found = fits(shapes)
    rows = table(found, shapes)
    print(rows)
    if docs is not None:
        folder = pathlib.Path(docs)
        (folder / "growth-hostile.svg").write_text(draw(shapes), encoding="utf-8")
        page = folder / "limits.md"
        head, rest = page.read_text(encoding="utf-8").split(BEGIN)
        page.write_text(head + BEGIN + rows + END + rest.split(END)[1], encoding="utf-8")
    steep = [fit for fit in found if fit[2] > BOUND]
    for shape, operation, exponent, _ in steep:
        print("%s of %s grows with the power %.2f" % (operation, shape, exponent))
    return 1 if steep else 0


if __name__ == "__main__":
    if not 2 <= len(sys.argv) <= 3:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
