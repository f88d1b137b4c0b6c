"""The targets of benchmarks/README.md, held against a run."""

import math

from results import OURS, nanoseconds, title

OPERATIONS_THAT_GROW = [
    "Parse",
    "Print",
    "ParseEqual",
    "Less",
    "ParseHash",
    "ParseAscii",
    "ParseResolve",
    "ParseRelativise",
]
SHAPES = ["ascii", "cyrillic", "dots"]


class Outcome:
    """One line of the table: what is compared, the figure, its bound."""

    def __init__(self, number, what, ours, against, figure, bound, at_least=False):
        self.number, self.what, self.ours, self.against = number, what, ours, against
        self.figure, self.bound, self.at_least = figure, bound, at_least

    def is_met(self):
        return self.figure >= self.bound if self.at_least else self.figure <= self.bound


def exponent(medians, shortest=1000):
    """The slope of the least-squares line through log(time) over log(length)."""
    points = [(math.log(n), math.log(t)) for n, t in medians.items() if n >= shortest]
    if len(points) < 3:
        return None
    x_mean = sum(x for x, _ in points) / len(points)
    y_mean = sum(y for _, y in points) / len(points)
    return sum((x - x_mean) * (y - y_mean) for x, y in points) / sum(
        (x - x_mean) ** 2 for x, _ in points
    )


class Judge:
    """Collects the outcomes for which a run has the figures."""

    def __init__(self, results):
        self.results, self.times = results, results.times
        self.outcomes = []

    def add(self, *arguments, **options):
        self.outcomes.append(Outcome(*arguments, **options))

    def ratio(self, number, what, ours, other, bound):
        """A time over another, both given as (operation, corpus, subject)."""
        if ours not in self.times.samples or other not in self.times.samples:
            return
        mine, theirs = self.times.median(*ours), self.times.median(*other)
        name = title(other[2]) if other[2] != OURS else other[0]
        note = self.times.accepted(*other)
        self.add(
            number,
            what,
            nanoseconds(mine),
            "%s %s%s" % (name, nanoseconds(theirs), ", takes " + note if note else ""),
            mine / theirs,
            bound,
        )

    def peers(self, number, what, operation, corpus, bound, without=()):
        """A time over that of the fastest peer."""
        fastest = self.times.fastest_peer(operation, corpus, without)
        if fastest:
            what = "%s, %s" % (what, title(corpus))
            self.ratio(number, what, (operation, corpus, OURS), fastest, bound)

    def itself(self, number, what, operation, other_operation, corpora, bound):
        """A time over that of another operation of this library."""
        for corpus, other in corpora:
            ours = (operation, corpus, OURS)
            against = (other_operation, other, OURS)
            self.ratio(number, "%s, %s" % (what, title(corpus)), ours, against, bound)

    def largest(self, corpus):
        """The large set of a corpus, if it was measured."""
        large = "large_" + corpus
        return large if ("Parse", large, OURS) in self.times.samples else corpus

    # --- the targets, in their order ---

    def parsing(self):
        self.peers("1", "parse and destroy", "Parse", self.largest("urls"), 0.35)
        self.peers("1", "parse and destroy", "Parse", self.largest("iris"), 0.6)
        same = [(corpus, corpus) for corpus in (self.largest("urls"), self.largest("iris"))]
        self.itself("2", "parse, read all", "ParseReadAll", "Parse", same, 1.5)
        self.itself("3", "parse, print", "ParsePrint", "Parse", same, 1.4)
        self.peers("3", "parse, ASCII form", "ParseAscii", self.largest("iris"), 1)

    def references(self):
        for corpus in ("urls", "iris"):
            self.peers("4", "resolve, print", "Resolve", corpus, 0.5)
        self.peers("4", "relativise, print", "Relativise", "urls", 0.6)

    def refusing(self):
        pairs = [("bad_urls", "urls"), ("bad_iris", "iris")]
        self.itself("5", "diagnose", "RefuseDiagnose", "Parse", pairs, 1)
        self.itself("5", "refuse (tryParse)", "Refuse", "Parse", pairs, 1)
        same = [("urls", "urls"), ("iris", "iris")]
        self.itself("5", "text to ranges", "Ranges", "Parse", same, 0.6)

    def values(self):
        for corpus in ("urls", "iris"):
            self.peers("6", "equal values", "EqualSame", corpus, 1)
            self.peers("6", "different values", "EqualOther", corpus, 1)
            self.peers("6", "different in the end", "EqualLate", corpus, 1)
            self.peers("6", "first hash", "Hash", corpus, 1)
            self.peers("6", "copy", "Copy", corpus, 1, without=("qt",))
            large = "large_" + corpus
            what = "sort 100,000, " + title(corpus)
            self.ratio("6", what, ("Sort", large, OURS), ("Sort", large, "std_string"), 1.3)

    def coding(self):
        for corpus in ("urls", "iris"):
            self.peers("7", "escape a component", "EncodeComponent", corpus, 1)
        for corpus in ("urls", "encoded_iris"):
            self.peers("7", "decode a component", "DecodeComponent", corpus, 1)
        crossings = ("Utf8To32", "Utf32To8", "Utf16To32", "Utf32To16")
        for crossing in crossings:
            for corpus in ("urls", "iris"):
                self.peers("7", crossing, crossing, corpus, 1)
        for crossing in crossings:
            plain = (crossing, "urls", "plain_loop")
            self.ratio("7", crossing + ", ASCII", (crossing, "urls", OURS), plain, 2)

    def memory(self):
        count = self.results.memory_of("seventy", OURS)
        if not count or not count["accepted"]:
            return
        accepted = count["accepted"]
        size = count["object_bytes"] + count["heap_bytes_parsed"] / accepted
        allocations = count["allocations_parsing"] / accepted
        self.add("8", "size of the object", "%d bytes" % count["object_bytes"], "–",
                 count["object_bytes"], 256)  # fmt: skip
        self.add("8", "a value of 70 characters", "%.0f bytes" % size, "–", size, 550)
        self.add("8", "allocations of a parse", "%.2f" % allocations, "–", allocations, 1)

    def doors(self):
        for corpus in ("ipv4", "ipv6"):
            self.peers("9", "read an address", "AddressRead", corpus, 1.1)
            self.peers("9", "print an address", "AddressPrint", corpus, 1.1)
        for corpus in ("iris", "urls"):
            self.peers("9", "host to ASCII", "IdnToAscii", corpus, 1.1)
            self.peers("9", "host to Unicode", "IdnToUnicode", corpus, 1.1)

    def threads(self):
        for corpus in ("urls", "iris"):
            for operation, what in (
                ("ThreadsParse", "parse"),
                ("ThreadsReadDecoded", "read shared values"),
                ("ThreadsPrintAscii", "print shared values"),
                ("ThreadsHash", "hash shared values"),
                ("ThreadsReadOne", "read one value"),
            ):
                one, two = operation + "1", operation + "2"
                what = "two threads: %s, %s" % (what, title(corpus))
                self.ratio("10", what, (two, corpus, OURS), (one, corpus, OURS), 1.05)

    def growth(self):
        for shape in SHAPES:
            for operation in OPERATIONS_THAT_GROW:
                medians = self.times.sweep(operation, shape, OURS)
                slope = exponent(medians)
                if slope is not None:
                    lengths = "%d to %d bytes" % (max(1000, min(medians)), max(medians))
                    what = "exponent of %s, %s" % (operation, shape)
                    self.add("11", what, "%.2f" % slope, lengths, slope, 1.1)

    def tool(self):
        for name, bound in (("check", 4e6), ("map get host", 2e6)):
            rate = self.results.tool.get(name)
            if rate:
                what = "lines a second, iri " + name
                self.add("12", what, "%.2f million" % (rate / 1e6), "–", rate / 1e6,
                         bound / 1e6, at_least=True)  # fmt: skip


def judge(results):
    """The outcomes of a run, in the order of the targets."""
    judge = Judge(results)
    for part in (
        judge.parsing,
        judge.references,
        judge.refusing,
        judge.values,
        judge.coding,
        judge.memory,
        judge.doors,
        judge.threads,
        judge.growth,
        judge.tool,
    ):
        part()
    return judge.outcomes
