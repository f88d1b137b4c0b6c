#!/usr/bin/env python3
"""Holds the messages of docs/errors.md against those that the sources throw: errors.py ROOT

Each statement of src/ that throws is read: its type, and its message with "…" in place of what is no
literal. Each has to be on the page, and each message of the page in a statement.
"""

import pathlib
import re
import sys

SOURCES = {".hpp", ".cpp", ".ipp"}
COMMENT = re.compile(r'"(?:[^"\\]|\\.)*"|//[^\n]*|/\*.*?\*/', re.DOTALL)
LITERAL = re.compile(r'"((?:[^"\\]|\\.)*)"')
CONSTANT = re.compile(r'constexpr const char\* (\w+) =\s*"([^"]*)"')
THROWING = re.compile(r"(?<![\w])(throw(?![\w])[^;]*|(?:[\w:]+::)?throw[A-Z_]\w*\([^;{]*)(;)")
TYPES = {
    "throwLogicError": "std::logic_error",
    "throwRuntimeError": "std::runtime_error",
    "throwInvalidArgument": "std::invalid_argument",
    "throwSystemError": "std::system_error",
    "throwOutOfRange": "std::out_of_range",
    "throwAnonymous": "std::exception",
    "throw std::runtime_error": "std::runtime_error",
}
# What they do is make exceptions of the messages that others give them.
MACHINERY = {"src/except/Throw.hpp", "src/except/Throw.cpp", "src/except/Boundary.hpp",
             "src/except/Exception.cpp"}
# Statements whose message is another's, or whose thrower is read above.
PASSED_ON = {
    "throwInvalidCodePoint(codePoint)",
    "throwMisplacedSurrogate(*misplaced)",
    'throw std::runtime_error("Item not set")',  # told below the table of the readers
    "throwNotSet(suffix)",
    "core::except::throwInvalidArgument(failure.what())",  # the system's
    "throwIfFailed(code)",
    "throwIfFailed(U_ILLEGAL_ARGUMENT_ERROR)",
    "throw IdnConverterException(u_errorName(code))",  # ICU's
}
# No statement of ours: Boost's headers, and what an exception without a text answers.
OF_OTHERS = {("std::out_of_range", "prefix length too large"),
             ("std::exception", "Unknown exception")}


def without_comments(text):
    return COMMENT.sub(lambda match: match[0] if match[0][0] == '"' else " ", text)


def message(expression, constants):
    """The literals of an expression, with "…" for each other operand of "+" beside them."""
    expression = LITERAL.sub(lambda match: '"' + match[1].replace("+", "\\x2B") + '"', expression)
    result = ""
    for operand in expression.split("+"):
        literals = LITERAL.findall(operand)
        for name, text in constants.items():
            if re.search(rf"\b{name}\b", operand):
                literals.append(text)
        result += "".join(literals).replace("\\x2B", "+") if literals else "…"
    return result


def thrown(file, text):
    """(type, message) of each statement that throws; raises ValueError for one that is not known."""
    text = without_comments(text)
    constants = dict(CONSTANT.findall(text))
    for match in THROWING.finditer(text):
        statement = " ".join(match[1].split())
        if statement in PASSED_ON or statement == "throw":
            continue
        if re.fullmatch(r"throw\w+\([\w ]+ \w+\)", statement):  # a declaration
            continue
        if "AnonymousInternalException<std::system_error>" in statement:
            continue  # the name service's message
        kinds = [kind for kind in TYPES if statement.removeprefix("core::except::").startswith(kind)]
        if not kinds:
            raise ValueError(f"{file}: what does this throw? {statement}")
        words = message(statement, constants)
        if words in ("", "…"):
            raise ValueError(f"{file}: where is the message? {statement}")
        yield TYPES[kinds[0]], words + (": …" if kinds[0] == "throwSystemError" else "")


def told(page):
    """(type, message) of each row of the page whose message is ours."""
    for line in page.splitlines():
        match = re.match(r"\| `([^`]*)` \| `(std::\w+)` \|", line)
        if match:
            yield match[2], match[1]


def fits(pattern, text):
    return re.fullmatch(".+".join(map(re.escape, pattern.split("…"))), text) is not None


def compare(sources, page):
    """What is wrong, one line each."""
    for kind, words in sorted(sources):
        if not any(kind == other and fits(words, text) for other, text in page):
            yield f"the sources throw a {kind} that docs/errors.md does not tell: {words}"
    for kind, text in sorted(page - OF_OTHERS):
        if not any(kind == other and fits(words, text) for other, words in sources):
            yield f"docs/errors.md tells of a {kind} that nothing throws: {text}"


def main(root):
    root = pathlib.Path(root)
    sources = set()
    for path in sorted((root / "src").rglob("*")):
        name = path.relative_to(root).as_posix()
        if path.suffix in SOURCES and name not in MACHINERY:
            sources.update(thrown(name, path.read_text(encoding="utf-8")))
    page = set(told((root / "docs/errors.md").read_text(encoding="utf-8")))
    problems = list(compare(sources, page))
    print("\n".join(problems) if problems else f"{len(sources)} messages, all told")
    return 1 if problems or not sources else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
