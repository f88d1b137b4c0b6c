#!/usr/bin/env python3
"""Judges and shows invented measurements: report_test.py BENCHMARKS PAGE."""

import json
import pathlib
import sys
import tempfile
import unittest
import xml.etree.ElementTree

BENCHMARKS, PAGE = sys.argv[1:]
sys.path.insert(0, BENCHMARKS)


import charts
import report
from results import OURS, Results, Times
from targets import Judge, exponent, judge

CONTEXT = {"date": "a day", "num_cpus": 2, "mhz_per_cpu": 3000, "load_avg": [0.5, 0.25, 0]}


def run(name, *nanoseconds, accepted=100):
    """The repetitions of one benchmark, as Google Benchmark writes them."""
    return [
        {"run_name": name, "time_per_text": t * 1e-9, "accepted": accepted, "texts": 100}
        for t in nanoseconds
    ]


def refused(name):
    return [{"run_name": name, "error_occurred": True, "error_message": "accepts 0 of 100 texts"}]


def times(*runs):
    return Times({"context": CONTEXT, "benchmarks": sum(runs, [])})


def results(*runs):
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder) / "times.json"
        file.write_text(json.dumps({"context": CONTEXT, "benchmarks": sum(runs, [])}))
        return Results(folder)


OUR_PARSE = "Parse/urls/" + OURS


class TimesTest(unittest.TestCase):
    def test_takes_the_median_of_the_repetitions(self):
        self.assertAlmostEqual(times(run(OUR_PARSE, 10, 900, 30)).median("Parse", "urls", OURS), 30)

    def test_finds_the_peer_that_is_fastest(self):
        found = times(run(OUR_PARSE, 1), run("Parse/urls/qt", 90), run("Parse/urls/glib", 80))
        self.assertEqual(found.fastest_peer("Parse", "urls"), ("Parse", "urls", "glib"))
        self.assertEqual(found.fastest_peer("Parse", "urls", ("glib",))[2], "qt")

    def test_compares_with_no_peer_that_refuses_a_tenth(self):
        for accepted, expected in ((90, "glib"), (89, "qt")):
            found = times(
                run(OUR_PARSE, 1),
                run("Parse/urls/qt", 90),
                run("Parse/urls/glib", 5, accepted=accepted),
            )
            self.assertEqual(found.fastest_peer("Parse", "urls")[2], expected)

    def test_takes_no_baseline_for_a_peer(self):
        found = times(run(OUR_PARSE, 10), run("Parse/urls/string_copy", 1))
        self.assertIsNone(found.fastest_peer("Parse", "urls"))

    def test_shows_how_many_texts_are_taken(self):
        found = times(run("Parse/urls/qt", 90, accepted=7), refused("Parse/iris/uriparser"))
        self.assertEqual(found.cell("Parse", "urls", "qt"), "90.0 ns (7 of 100)")
        self.assertEqual(found.cell("Parse", "iris", "uriparser"), "accepts 0 of 100")
        self.assertEqual(found.cell("Parse", "urls", "glib"), "–")

    def test_refuses_a_file_without_measurements(self):
        with self.assertRaises(ValueError):
            times()


class TargetsTest(unittest.TestCase):
    def parse_outcome(self, ours):
        found = judge(results(run(OUR_PARSE, ours), run("Parse/urls/glib", 100)))
        self.assertEqual(len(found), 1)
        return found[0]

    def test_judges_a_ratio_by_its_bound(self):
        self.assertTrue(self.parse_outcome(34).is_met())
        self.assertFalse(self.parse_outcome(36).is_met())
        self.assertAlmostEqual(self.parse_outcome(36).figure, 0.36)

    def test_judges_a_rate_the_other_way(self):
        measured = results(run(OUR_PARSE, 1))
        for rate, expected in ((4.1e6, True), (3.9e6, False)):
            measured.tool = {"check": rate}
            self.assertEqual([o.is_met() for o in judge(measured)], [expected])

    def test_prefers_the_large_set(self):
        large = "Parse/large_urls/"
        measured = results(run(OUR_PARSE, 1), run(large + OURS, 50), run(large + "qt", 100))
        self.assertEqual(Judge(measured).largest("urls"), "large_urls")
        self.assertAlmostEqual(judge(measured)[0].figure, 0.5)

    def test_judges_memory_by_text(self):
        measured = results(run(OUR_PARSE, 1))
        count = {"corpus": "seventy", "subject": OURS, "accepted": 10, "object_bytes": 200}
        measured.memory = [{**count, "heap_bytes_parsed": 3600, "allocations_parsing": 10}]
        self.assertEqual([o.figure for o in judge(measured)], [200, 560, 1])
        self.assertEqual([o.is_met() for o in judge(measured)], [True, False, True])

    def test_finds_the_exponent(self):
        lengths = (10, 1000, 10000, 100000)
        self.assertAlmostEqual(exponent({n: 3 * n for n in lengths}), 1)
        self.assertAlmostEqual(exponent({n: n**2 for n in lengths}), 2)
        # What a call costs at least hides how it grows, below 1000 bytes.
        self.assertAlmostEqual(exponent({10: 1e9, 1000: 1e3, 10000: 1e4, 100000: 1e5}), 1)
        self.assertIsNone(exponent({1000: 1, 10000: 10}))


class ReportTest(unittest.TestCase):
    def measured(self):
        return results(
            run(OUR_PARSE, 10, 20, 30),
            run("Parse/urls/glib", 100, 100, 100),
            refused("Parse/urls/qt"),
            *(run("Parse/sweep_ascii_%d/%s" % (10**n, OURS), 10**n) for n in range(1, 6)),
        )

    def test_shows_the_ratio_and_who_refuses(self):
        text = "\n".join(report.report(self.measured()))
        self.assertIn("| parse, destroy | 20.0 ns | 100 ns | accepts 0 of 100 | **0.20** |", text)
        self.assertIn("| 1 | parse and destroy, URLs | 20.0 ns | GLib 100 ns | 0.20 | ≤ 0.35 | met", text)
        self.assertIn("2 of 2 bounds met.", text)

    def test_fills_the_page_and_fills_it_anew(self):
        page = pathlib.Path(PAGE).read_text(encoding="utf-8")
        once = report.filled(page, self.measured())
        self.assertIn("its destruction | 20.0 ns | – |", once)
        self.assertEqual(report.filled(once, self.measured()), once)

    def test_refuses_a_page_without_its_marks(self):
        with self.assertRaises(ValueError):
            report.filled("# Performance\n", self.measured())

    def test_draws_charts_that_can_be_read(self):
        with tempfile.TemporaryDirectory() as docs:
            with tempfile.TemporaryDirectory() as folder:
                runs = run(OUR_PARSE, 10) + run("Parse/urls/a<b", 90)
                file = pathlib.Path(folder) / "times.json"
                file.write_text(json.dumps({"context": CONTEXT, "benchmarks": runs}))
                charts.main(folder, docs)
            names = sorted(path.name for path in pathlib.Path(docs).iterdir())
            page = pathlib.Path(PAGE).read_text(encoding="utf-8")
            for name in names:
                self.assertIn("](%s)" % name, page)
                root = xml.etree.ElementTree.parse(pathlib.Path(docs) / name).getroot()
                if name == "performance-parse.svg":
                    self.assertIn("a<b", "".join(root.itertext()))
            self.assertEqual(len(names), 4)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
