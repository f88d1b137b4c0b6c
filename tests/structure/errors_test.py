#!/usr/bin/env python3
"""Tests errors.py with sources and pages of its own."""

import unittest

import errors

PAGE = "| Message | Type |\n|---|---|\n| `No …: +1` | `std::logic_error` | why |\n"


def found(source, page=PAGE):
    return list(errors.compare(set(errors.thrown("a.cpp", source)), set(errors.told(page))))


class ErrorsTest(unittest.TestCase):
    def test_what_agrees(self):
        self.assertEqual(found('x(); throwLogicError("No " + name(a, b) + ": "\n "+1");'), [])
        # A page may show a message whole of which the source has a part.
        self.assertEqual(found('throwLogicError("No " + name);', PAGE.replace("…", "x")), [])

    def test_a_constant(self):
        source = 'constexpr const char* TEXT = "No x: +1"; core::except::throwLogicError(TEXT);'
        self.assertEqual(found(source, PAGE.replace("…", "x")), [])

    def test_what_is_not_on_the_page(self):
        source = 'throwLogicError("No " + a + ": +1"); throwLogicError("Not " + a);'
        self.assertEqual(len(found(source)), 1)

    def test_another_type(self):
        self.assertEqual(len(found('throwRuntimeError("No " + a + ": +1");')), 2)

    def test_what_nothing_throws(self):
        self.assertEqual(len(found("")), 1)
        self.assertEqual(len(found('// throwLogicError("No " + a + ": +1");')), 1)

    def test_what_cannot_be_read(self):
        for source in ["throw Strange();", "throwLogicError(text);", "throwStrange(1);"]:
            with self.assertRaises(ValueError, msg=source):
                found(source)

    def test_declarations_and_what_passes(self):
        self.assertEqual(list(errors.thrown("a.hpp", "void throwOn(char32_t unit); throw;")), [])


if __name__ == "__main__":
    unittest.main()
