"""What a run of the benchmarks left behind, for the scripts that show it."""

import json
import pathlib
import statistics

OURS = "zkflnetwork"
# In the order in which they are shown; random interleaving leaves none in the file.
TITLES = {
    "zkflnetwork": "zkflnetwork",
    "boost_url": "Boost.URL",
    "glib": "GLib",
    "libcurl": "libcurl",
    "poco": "Poco",
    "qt": "Qt",
    "uriparser": "uriparser",
    "boost_asio": "Boost.Asio",
    "icu": "ICU",
    "string_copy": "copy of the text",
    "widened_copy": "copy as UTF-32",
    "std_string": "std::string",
    "memcpy": "memcpy",
    "plain_loop": "plain loop",
    "urls": "URLs",
    "iris": "IRIs",
    "encoded_iris": "IRIs, percent-encoded",
    "large_urls": "URLs, large set",
    "large_iris": "IRIs, large set",
    "seventy": "URLs of 70 characters",
    "bad_urls": "broken URLs",
    "bad_iris": "broken IRIs",
    "ipv4": "IPv4",
    "ipv6": "IPv6",
}
# They do less than what is measured and show what it costs at least.
BASELINES = {"string_copy", "widened_copy", "std_string", "memcpy", "plain_loop"}
# A peer takes part in a ratio if it takes at least this part of what this library takes.
NEEDED = 0.9


def title(name):
    return TITLES.get(name, name)


def in_order(names):
    known = list(TITLES)
    return sorted(
        names, key=lambda name: (known.index(name) if name in TITLES else len(known), name)
    )


def nanoseconds(value):
    return "%.0f ns" % value if value >= 99.95 else "%.1f ns" % value


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
            if not int(run["accepted"]):
                self.refusals[key] = "accepts 0 of %d texts" % run["texts"]
                continue
            self.samples.setdefault(key, []).append(run["time_per_text"] * 1e9)
            self.counts[key] = (int(run["accepted"]), int(run["texts"]))
        if not self.samples:
            raise ValueError("no measurement in the file")

    def has(self, *key):
        return key in self.samples or key in self.refusals

    def median(self, *key):
        return statistics.median(self.samples[key])

    def accepted(self, *key):
        """Empty if the subject takes all, else how many of how many."""
        accepted, texts = self.counts[key]
        return "" if accepted == texts else "%d of %d" % (accepted, texts)

    def cell(self, *key):
        """A time for a table, with what the subject refuses, if it refuses anything."""
        if key in self.refusals:
            return self.refusals[key].replace(" texts", "")
        if key not in self.samples:
            return "–"
        note = self.accepted(*key)
        return nanoseconds(self.median(*key)) + (" (%s)" % note if note else "")

    def subjects(self, *operations):
        """Those that an operation was measured for: this library first, then its peers."""
        keys = [*self.samples, *self.refusals]
        return in_order({key[2] for key in keys if key[0] in operations})

    def fastest_peer(self, operation, corpus, without=()):
        """The key with the least median among the peers that take enough; None without a peer."""
        needed = NEEDED * self.counts.get((operation, corpus, OURS), (0, 0))[0]
        keys = [
            key
            for key in self.samples
            if key[:2] == (operation, corpus)
            and key[2] not in BASELINES | {OURS, *without}
            and self.counts[key][0] >= needed
        ]
        return min(keys, key=lambda key: self.median(*key), default=None)

    def sweep(self, operation, shape, subject):
        """The medians by the length of the text."""
        start = "sweep_%s_" % shape
        return {
            int(key[1][len(start) :]): self.median(*key)
            for key in self.samples
            if key[0] == operation and key[2] == subject and key[1].startswith(start)
        }

    def widest_spread(self):
        """The key with the widest middle half of repetitions, and half its width over the median."""

        def spread(samples):
            low, _, high = statistics.quantiles(samples, n=4, method="inclusive")
            return (high - low) / 2 / statistics.median(samples)

        spreads = {
            key: spread(samples) for key, samples in self.samples.items() if len(samples) > 1
        }
        return max(spreads.items(), key=lambda item: item[1], default=None)


def read(path, otherwise):
    return json.loads(path.read_text(encoding="utf-8")) if path.exists() else otherwise


class Results:
    """All files of a results folder; those that a run did not make are empty."""

    def __init__(self, folder):
        folder = pathlib.Path(folder)
        self.times = Times(json.loads((folder / "times.json").read_text(encoding="utf-8")))
        self.memory = read(folder / "memory.json", [])
        self.tool = read(folder / "tool.json", {})
        self.instructions = self.counted(folder)

    @staticmethod
    def counted(folder):
        """The instructions alone, for which no time need be taken."""
        return read(pathlib.Path(folder) / "instructions.json", {})

    def memory_of(self, corpus, subject):
        found = [m for m in self.memory if (m["corpus"], m["subject"]) == (corpus, subject)]
        return found[0] if found else None
