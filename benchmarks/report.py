#!/usr/bin/env python3
"""Prints what a run of the benchmarks measured, as Markdown.

    report.py TIMES.json [MEMORY.json]

TIMES.json is the JSON output of zkflnetwork_benchmarks, MEMORY.json that of zkflnetwork_memory.
Each time is the median of the repetitions, in nanoseconds of processor time for one text. A peer
takes part in a ratio only if it accepts as many texts as this library does.
"""

import json
import statistics
import sys

OURS = "zkflnetwork"
COPY = "string_copy"
# In the order of the report; random interleaving leaves none in the file.
TITLES = {
    "zkflnetwork": "zkflnetwork",
    "boost_url": "Boost.URL",
    "uriparser": "uriparser",
    "string_copy": "copy of the text",
    "urls": "URLs",
    "iris": "IRIs",
    "encoded_iris": "IRIs, percent-encoded",
}
# What is compared: title, operation of this library, operation of the peers.
COMPARED = [
    ("parse, destroy", "Parse", "Parse"),
    ("parse, read all components as strings", "ParseReadAll", "ParseReadAll"),
    ("the same; peers show views, without a copy", "ParseReadAll", "ParseViewAll"),
    ("parse, print", "ParsePrint", "ParsePrint"),
]
WHOLE_FORMS = ["Iri", "IriStrict", "Ascii", "AsciiStrict"]
COMPONENT_FORMS = ["Decoded"] + WHOLE_FORMS


class Times:
    """The repetitions of a run, by (operation, corpus, subject)."""

    def __init__(self, results):
        self.context = results["context"]
        self.samples, self.counts, self.refusals = {}, {}, {}
        for run in results["benchmarks"]:
            if run.get("run_type", "iteration") != "iteration":
                continue
            key = tuple(run["run_name"].split("/")[:3])
            if run.get("error_occurred"):
                self.refusals[key] = run["error_message"]
                continue
            self.samples.setdefault(key, []).append(run["time_per_text"] * 1e9)
            self.counts[key] = (int(run["accepted"]), int(run["texts"]))
        if not self.samples:
            raise ValueError("no measurement in the file")

    def has(self, *key):
        return key in self.samples or key in self.refusals

    def median(self, *key):
        return statistics.median(self.samples[key])

    def subjects(self):
        """This library first, then its peers."""
        found = {subject for _, _, subject in [*self.samples, *self.refusals]}
        return in_order(found - {COPY})

    def corpora(self):
        found = {corpus for _, corpus, _ in self.samples}
        return in_order(corpus for corpus in found if not corpus.startswith("sweep_"))

    def cell(self, *key):
        """A time for a table, with what the subject refuses, if it refuses anything."""
        if key in self.refusals:
            return self.refusals[key]
        if key not in self.samples:
            return "–"
        accepted, texts = self.counts[key]
        note = "" if accepted == texts else " (accepts %d of %d)" % (accepted, texts)
        return nanoseconds(self.median(*key)) + note

    def fastest_peer(self, operation, corpus, needed):
        """The least median among the peers that accept `needed` texts; None without such a peer."""
        medians = [
            self.median(*key)
            for key in self.samples
            if key[:2] == (operation, corpus)
            and key[2] not in (OURS, COPY)
            and self.counts[key][0] == needed
        ]
        return min(medians, default=None)

    def widest_spread(self):
        """The key with the widest middle half of repetitions, and half its width over the median."""

        def spread(samples):
            low, _, high = statistics.quantiles(samples, n=4, method="inclusive")
            return (high - low) / 2 / statistics.median(samples)

        spreads = {
            key: spread(samples) for key, samples in self.samples.items() if len(samples) > 1
        }
        return max(spreads.items(), key=lambda item: item[1], default=None)


def in_order(names):
    known = list(TITLES)
    return sorted(
        names, key=lambda name: (known.index(name) if name in TITLES else len(known), name)
    )


def nanoseconds(value):
    return "%.0f ns" % value if value >= 99.95 else "%.1f ns" % value


def title(name):
    return TITLES.get(name, name)


def table(head, rows):
    # The first column reads from the left, the figures stand below one another.
    print("| " + " | ".join(head) + " |")
    print("|---" + "|---:" * (len(head) - 1) + "|")
    for row in rows:
        print("| " + " | ".join(row) + " |")
    print()


def print_context(times):
    context = times.context
    print("## Measured")
    print()
    print(
        "%s; %d × %d MHz; load %s before; %d repetitions, median of processor time for one text."
        % (
            context["date"],
            context["num_cpus"],
            context["mhz_per_cpu"],
            "/".join("%.2f" % load for load in context["load_avg"]) or "unknown",
            max(len(samples) for samples in times.samples.values()),
        )
    )
    widest = times.widest_spread()
    if widest:
        print(
            "At worst (%s) the middle half of the repetitions lies within ±%.1f %% of the median."
            % ("/".join(widest[0]), 100 * widest[1])
        )
    print()


def print_comparison(times):
    subjects = times.subjects()
    for corpus in times.corpora():
        rows = []
        for name, our_operation, peer_operation in COMPARED:
            ours = (our_operation, corpus, OURS)
            if ours not in times.samples:
                continue
            row = [name, times.cell(*ours)]
            row += [times.cell(peer_operation, corpus, s) for s in subjects if s != OURS]
            fastest = times.fastest_peer(peer_operation, corpus, times.counts[ours][0])
            row.append("–" if fastest is None else "**%.2f**" % (times.median(*ours) / fastest))
            rows.append(row)
        if times.has("Parse", corpus, COPY):
            copy = times.cell("Parse", corpus, COPY)
            rows.append(["baseline: copy the text", copy] + ["–"] * len(subjects))
        if rows:
            print("### %s" % title(corpus))
            print()
            peers = [title(s) for s in subjects if s != OURS]
            table(["", title(OURS)] + peers + ["ours / fastest peer"], rows)


def print_forms(times):
    corpora = [c for c in times.corpora() if times.has("ParsePrintAscii", c, OURS)]
    if not corpora:
        return
    print("### Forms of the whole text and of the path")
    print()
    head = ["parse, then"] + [title(corpus) for corpus in corpora]
    rows = []
    for label, operation, forms in (
        ("print as `%s`", "ParsePrint", WHOLE_FORMS),
        ("(parsed and printed before) print again as `%s`", "PrintAgain", WHOLE_FORMS),
        ("read the path as `%s`", "ParsePath", COMPONENT_FORMS),
    ):
        for form in forms:
            cells = [times.cell(operation + form, corpus, OURS) for corpus in corpora]
            rows.append([label % form] + cells)
    table(head, rows)


def print_sweep(times):
    """One row for each length, one column for each subject and script, in ns and ns per byte."""
    medians = {}
    for operation, corpus, subject in times.samples:
        if corpus.startswith("sweep_"):
            script, length = corpus.split("_")[1:]
            medians[subject, script, int(length)] = times.median(operation, corpus, subject)
    if not medians:
        return
    columns = [
        (subject, script)
        for subject in times.subjects()
        for script in sorted({found[1] for found in medians if found[0] == subject})
    ]
    print("### Parse by the length of the text")
    print()
    rows = []
    for length in sorted({found[2] for found in medians}):
        row = ["%d bytes" % length]
        for column in columns:
            value = medians.get((*column, length))
            row.append(
                "–" if value is None else "%s (%.2f/byte)" % (nanoseconds(value), value / length)
            )
        rows.append(row)
    table([""] + ["%s, %s" % (title(subject), script) for subject, script in columns], rows)


def print_memory(counts):
    print("### Acceptance and memory")
    print()
    print(
        "Bytes of a value: the object itself and the heap that it holds after parsing (usable bytes"
        " of the blocks). Allocations for one text: to parse, then to read all components as"
        " strings, then to print."
    )
    print()
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
    table(head, rows)


def read(path):
    with open(path, encoding="utf-8") as file:
        return json.load(file)


def main(arguments):
    if len(arguments) not in (1, 2):
        print("usage: report.py TIMES.json [MEMORY.json]", file=sys.stderr)
        return 2
    try:
        times = Times(read(arguments[0]))
        counts = read(arguments[1]) if len(arguments) == 2 else []
    except (OSError, ValueError) as failure:
        print("report.py: %s" % failure, file=sys.stderr)
        return 1
    print_context(times)
    print_comparison(times)
    print_forms(times)
    print_sweep(times)
    if counts:
        print_memory(counts)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
