#!/usr/bin/env python3
"""Prints what a run of the benchmarks measured, as Markdown.

    report.py FOLDER                print the report
    report.py FOLDER --page PAGE    fill the marked tables of a page instead
    report.py FOLDER --instructions print the instructions alone

FOLDER is where benchmarks/run keeps its results. Each time is the median of the repetitions, in
nanoseconds of processor time for one text. A peer takes part in a ratio only if it takes nine
tenths of what this library takes; how many it takes stands beside its time.
"""

import argparse
import pathlib
import re
import sys

from results import BASELINES, OURS, Results, in_order, nanoseconds, title
from targets import OPERATIONS_THAT_GROW, SHAPES, exponent, judge

# What is compared on each corpus: title, operation.
COMPARED = [
    ("parse, destroy", "Parse"),
    ("parse, read all components", "ParseReadAll"),
    ("parse, show all as views", "ParseViewAll"),
    ("parse, print", "ParsePrint"),
    ("parse, ASCII form", "ParseAscii"),
    ("text to ranges", "Ranges"),
    ("resolve, print", "Resolve"),
    ("relativise, print", "Relativise"),
    ("equal values", "EqualSame"),
    ("equal values, again", "EqualAgain"),
    ("different values", "EqualOther"),
    ("different in the end", "EqualLate"),
    ("first hash", "Hash"),
    ("copy", "Copy"),
    ("sort, for each of 100,000", "Sort"),
    ("refuse", "Refuse"),
    ("refuse, ranges", "RefuseRanges"),
    ("diagnose", "RefuseDiagnose"),
    ("refuse by exception", "RefuseThrow"),
]
CODED = [
    ("escape a component", "EncodeComponent"),
    ("decode a component", "DecodeComponent"),
    ("UTF-8 to UTF-32", "Utf8To32"),
    ("UTF-32 to UTF-8", "Utf32To8"),
    ("UTF-16 to UTF-32", "Utf16To32"),
    ("UTF-32 to UTF-16", "Utf32To16"),
    ("read an address", "AddressRead"),
    ("print an address", "AddressPrint"),
    ("host to ASCII (IDN)", "IdnToAscii"),
    ("host to Unicode (IDN)", "IdnToUnicode"),
]
CORPORA = ["urls", "iris", "encoded_iris", "large_urls", "large_iris", "bad_urls", "bad_iris"]
WHOLE_FORMS = ["Iri", "IriStrict", "Ascii", "AsciiStrict"]
COMPONENT_FORMS = ["Decoded"] + WHOLE_FORMS
# What a public call costs: the call, and what was measured for it.
COSTS = [
    ("`IRI(text)` and its destruction", "Parse"),
    ("`IRIView::parse(text)`", "Ranges"),
    ("`IRI(text)`, then each present component with `get...Utf8()`", "ParseReadAll"),
    ("`IRI(text)`, then `toStringUtf8()`", "ParsePrint"),
    ("`IRI(text)`, then `toStringUtf8(true)`", "ParsePrintIriStrict"),
    ("`toStringUtf8(true)` again", "PrintAgainIriStrict"),
    ("`IRI(text)`, then `toAsciiStringUtf8()`", "ParsePrintAscii"),
    ("`toAsciiStringUtf8()` again", "PrintAgainAscii"),
    ("`IRI(text)`, then `getPathUtf8(Encoding::Decoded)`", "ParsePathDecoded"),
    ("`IRI(reference).resolveAgainst(base).toStringUtf8()`", "Resolve"),
    ("`makeRelativeTo(base).toStringUtf8()`", "Relativise"),
    ("copy and its destruction", "Copy"),
    ("`==` of equal values, the first", "EqualSame"),
    ("`==` of equal values, again", "EqualAgain"),
    ("`==` of different values, the first", "EqualOther"),
    ("`hashValue()`, the first", "Hash"),
    ("`IRI::tryParse(text)` of a text that is refused", "Refuse"),
    ("`iri::diagnose(text)` of the same", "RefuseDiagnose"),
    ("`IRI(text)` of the same, with its exception", "RefuseThrow"),
    ("`InetAddress(text)`", "AddressRead"),
    ("`InetAddress::toString()`", "AddressPrint"),
    ("`IdnConverter::toAscii(host)`", "IdnToAscii"),
    ("`IdnConverter::toUnicode(host)`", "IdnToUnicode"),
]


def table(head, rows):
    """Lines of Markdown. The first column reads from the left, the figures stand below others."""
    lines = ["| " + " | ".join(head) + " |", "|---" + "|---:" * (len(head) - 1) + "|"]
    return lines + ["| " + " | ".join(row) + " |" for row in rows] + [""]


def context(times):
    found = times.context
    lines = [
        "%s; %d × %d MHz; load %s before; up to %d repetitions in random order; medians."
        % (
            found["date"],
            found["num_cpus"],
            found["mhz_per_cpu"],
            "/".join("%.2f" % load for load in found["load_avg"]) or "unknown",
            max(len(samples) for samples in times.samples.values()),
        )
    ]
    widest = times.widest_spread()
    if widest:
        lines.append(
            "At worst (%s) the middle half of the repetitions lies within ±%.1f %% of the median."
            % ("/".join(widest[0]), 100 * widest[1])
        )
    return lines + [""]


def targets(results):
    outcomes = judge(results)
    if not outcomes:
        return []
    rows = []
    for outcome in outcomes:
        sign = "≥" if outcome.at_least else "≤"
        met = "met" if outcome.is_met() else "**not met**"
        cells = [outcome.number, outcome.what, outcome.ours, outcome.against]
        rows.append(cells + ["%.2f" % outcome.figure, "%s %g" % (sign, outcome.bound), met])
    count = sum(outcome.is_met() for outcome in outcomes)
    lines = table(["target", "", "ours", "against", "figure", "bound", ""], rows)
    return lines + ["%d of %d bounds met." % (count, len(outcomes)), ""]


def rows_of(times, operations, corpora, subjects):
    rows = []
    for name, operation in operations:
        for corpus in corpora:
            if not times.has(operation, corpus, OURS):
                continue
            row = ["%s, %s" % (name, title(corpus)) if len(corpora) > 1 else name]
            row += [times.cell(operation, corpus, subject) for subject in subjects]
            fastest = times.fastest_peer(operation, corpus)
            ours = (operation, corpus, OURS)
            ratio = times.median(*ours) / times.median(*fastest) if fastest else None
            rows.append(row + ["–" if ratio is None else "**%.2f**" % ratio])
    return rows


def comparison(times):
    lines = []
    for corpus in CORPORA:
        measured = [op for _, op in COMPARED if times.has(op, corpus, OURS)]
        if not measured:
            continue
        subjects = [s for s in times.subjects(*measured) if s not in BASELINES]
        rows = rows_of(times, COMPARED, [corpus], subjects)
        lines += ["### " + title(corpus), ""]
        lines += table([""] + [title(s) for s in subjects] + ["ours / fastest peer"], rows)
        for operation, baseline in (
            ("Parse", "string_copy"),
            ("Parse", "widened_copy"),
            ("EqualSame", "std_string"),
            ("Hash", "std_string"),
            ("Copy", "std_string"),
            ("Sort", "std_string"),
        ):
            if times.has(operation, corpus, baseline):
                cell = times.cell(operation, corpus, baseline)
                lines.append("- Baseline of %s: %s takes %s." % (operation, title(baseline), cell))
        lines.append("")
    return lines


def coded(times):
    operations = [operation for _, operation in CODED]
    subjects = times.subjects(*operations)
    corpora = ["urls", "iris", "encoded_iris", "ipv4", "ipv6"]
    rows = rows_of(times, CODED, corpora, subjects)
    if not rows:
        return []
    head = [""] + [title(s) for s in subjects] + ["ours / fastest peer"]
    return ["### Escapes, encodings, addresses, domain names", ""] + table(head, rows)


def forms(times):
    corpora = [c for c in CORPORA if times.has("ParsePrintAscii", c, OURS)]
    if not corpora:
        return []
    rows = []
    for label, operation, names in (
        ("print as `%s`", "ParsePrint", WHOLE_FORMS),
        ("(parsed and printed before) print again as `%s`", "PrintAgain", WHOLE_FORMS),
        ("read the path as `%s`", "ParsePath", COMPONENT_FORMS),
    ):
        for form in names:
            cells = [times.cell(operation + form, corpus, OURS) for corpus in corpora]
            rows.append([label % form] + cells)
    lines = ["### Forms of the whole text and of the path", ""]
    return lines + table(["parse, then"] + [title(corpus) for corpus in corpora], rows)


def threads(times):
    rows = []
    for operation, corpus, subject in sorted(times.samples):
        if operation.startswith("Threads") and operation.endswith("1"):
            two = (operation[:-1] + "2", corpus, subject)
            if two not in times.samples:
                continue
            one = times.median(operation, corpus, subject)
            name = "%s, %s, %s" % (operation[len("Threads") : -1], title(corpus), title(subject))
            ratio = "%.2f" % (times.median(*two) / one)
            rows.append([name, nanoseconds(one), nanoseconds(times.median(*two)), ratio])
    if not rows:
        return []
    head = ["each thread does all", "one thread", "two threads", "two / one"]
    return ["### Threads", ""] + table(head, rows)


def growth(times):
    sweeps = {
        (operation, shape, subject): times.sweep(operation, shape, subject)
        for operation in OPERATIONS_THAT_GROW
        for shape in SHAPES
        for subject in times.subjects(operation)
    }
    sweeps = {key: medians for key, medians in sweeps.items() if medians}
    if not sweeps:
        return []
    lengths = sorted({length for medians in sweeps.values() for length in medians})
    rows = []
    for (operation, shape, subject), medians in sweeps.items():
        row = ["%s, %s, %s" % (operation, shape, title(subject))]
        for length in lengths:
            has = length in medians
            row.append("%.2f" % (medians[length] / length) if has else "–")
        slope = exponent(medians)
        rows.append(row + ["–" if slope is None else "%.2f" % slope])
    lines = ["### By the length of the text", "", "Nanoseconds for each byte of the text.", ""]
    return lines + table(["bytes"] + ["%d" % n for n in lengths] + ["exponent"], rows)


def memory(counts):
    if not counts:
        return []
    lines = [
        "### Acceptance and memory",
        "",
        "Bytes of a value: the object itself and the heap that it holds after parsing (usable bytes"
        " of the blocks). Allocations for one text: to parse, then to read all components as"
        " strings, then to print.",
        "",
    ]
    head = ["", "accepted", "prints as given", "object", "heap", "bytes of a value"]
    head += ["allocations: parse", "read", "print"]
    rows = []
    for count in counts:
        accepted = count["accepted"]
        row = ["%s, %s" % (title(count["corpus"]), title(count["subject"]))]
        row.append("%d of %d" % (accepted, count["texts"]))
        if accepted == 0:
            rows.append(row + ["–"] * (len(head) - 2))
            continue
        heap = count["heap_bytes_parsed"] / accepted
        row.append(str(count["printed_as_given"]))
        row += [str(count["object_bytes"]), "%.0f" % heap, "%.0f" % (count["object_bytes"] + heap)]
        for step in ("parsing", "reading", "printing"):
            row.append("%.2f" % (count["allocations_" + step] / accepted))
        rows.append(row)
    return lines + table(head, rows)


def instructions(counts):
    """Instructions for one text, counted by callgrind; a row for each operation and corpus."""
    if not counts:
        return []
    keys = [tuple(name.split("/")) for name in counts]
    subjects = in_order({subject for _, _, subject in keys})
    rows = []
    for operation, corpus in dict.fromkeys((operation, corpus) for operation, corpus, _ in keys):
        row = ["%s, %s" % (operation, title(corpus))]
        for subject in subjects:
            count = counts.get("/".join((operation, corpus, subject)))
            row.append("–" if count is None else "%.0f" % count)
        rows.append(row)
    lines = ["Instructions for one text.", ""]
    return lines + table([""] + [title(subject) for subject in subjects], rows)


def costs(times):
    rows = []
    for call, operation in COSTS:
        first, second = "urls", "iris"
        if operation.startswith("Refuse"):
            first, second = "bad_urls", "bad_iris"
        elif operation.startswith("Address"):
            first, second = "ipv4", "ipv6"
        cells = [times.cell(operation, corpus, OURS) for corpus in (first, second)]
        rows.append([call] + cells)
    return table(["Call", "URLs (IPv4)", "IRIs (IPv6)"], rows)


def report(results):
    times = results.times
    lines = ["## Measured", ""] + context(times)
    lines += ["### Targets", ""] + targets(results)
    for part in (comparison, coded, forms, threads, growth):
        lines += part(times)
    lines += memory(results.memory)
    return lines + (["### Instructions", ""] if results.instructions else []) + instructions(
        results.instructions
    )


def filled(page, results):
    """The page with each part between <!-- NAME --> and <!-- end of NAME --> written anew."""
    times = results.times
    parts = {
        "context": context(times),
        "costs": costs(times),
        "targets": targets(results),
        "comparison": comparison(times) + coded(times),
        "threads": threads(times),
        "growth": growth(times),
        "memory": memory(results.memory),
        "instructions": instructions(results.instructions),
    }
    for name, lines in parts.items():
        pattern = "(<!-- %s -->\n).*?(<!-- end of %s -->)" % (name, name)
        text = "\n".join(["", *lines])
        page, count = re.subn(pattern, lambda m: m[1] + text + m[2], page, flags=re.DOTALL)
        if count != 1:
            raise ValueError("the page has %d parts named %s" % (count, name))
    return page


def main(arguments):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("folder", help="where benchmarks/run keeps its results")
    parser.add_argument("--page", type=pathlib.Path, help="fill the marked tables of this page")
    parser.add_argument("--instructions", action="store_true", help="print these alone")
    options = parser.parse_args(arguments)
    try:
        if options.instructions:
            print("\n".join(instructions(Results.counted(options.folder))))
            return 0
        results = Results(options.folder)
        if options.page:
            page = options.page.read_text(encoding="utf-8")
            options.page.write_text(filled(page, results), encoding="utf-8")
        else:
            print("\n".join(report(results)))
    except (OSError, ValueError) as failure:
        print("report.py: %s" % failure, file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
