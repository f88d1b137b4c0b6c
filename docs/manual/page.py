#!/usr/bin/env python3
"""Prints a page of the documentation as Doxygen takes it: page.py FILE

On the forge, a heading is the target of links by its own text, and a link may lead to any file. Doxygen
wants a label on each heading that is a target, and knows only the pages of the manual: what leads
elsewhere becomes plain text. Between single backticks, an apostrophe would end what is code for it.
"""

import pathlib
import re
import sys

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parents[1]
FENCE = re.compile(r"^ *```")
HEADING = re.compile(r"^(#+) (.*?) *$")
QUOTING = re.compile(r"(?<!`)`([^`]*'[^`]*)`(?!`)")
LINK = re.compile(r"(?<!!)\[([^\]]*)\]\(([^)\s]*)\)")


FOR_CONTRIBUTORS = {"architecture.md", "releasing.md"}  # as EXCLUDE of the Doxyfile says


def pages():
    """The pages of the manual."""
    found = [ROOT / "README.md", *sorted((ROOT / "docs").glob("*.md"))]
    return [page for page in found if page.name not in FOR_CONTRIBUTORS]


def slug(heading):
    """The name that the forge gives to a heading."""
    return re.sub(r"[^\w -]", "", heading.lower().replace("`", "")).replace(" ", "-")


def label(page, heading=None):
    name = "page-" + page.stem.lower()
    return name if heading is None else f"{name}-{heading}"


def rewritten(text, page, known):
    """The page with labels, and with such links as the pages in known can answer."""

    def link(match):
        words, target = match[1], match[2]
        if re.match(r"\w+:", target):
            return match[0]
        path, _, heading = target.partition("#")
        file = (page.parent / path).resolve() if path else page
        if file not in known:
            return words
        return f"[{words}](#{label(file, heading or None)})"

    result, is_code, used = [], False, {}
    for line in text.split("\n"):
        if FENCE.match(line):
            is_code = not is_code
        heading = HEADING.match(line)
        if is_code:
            result.append(line)
        elif heading:
            is_title = heading[1] == "#"
            name = label(page, None if is_title else slug(heading[2]))
            number = used[name] = used.get(name, -1) + 1
            name += f"-{number}" if number else ""  # as the forge does it
            result.append(f"{line} {{#{name}}}")
        else:
            result.append(QUOTING.sub(r"``\1``", LINK.sub(link, line)))
    return "\n".join(result)


def main(file):
    page = pathlib.Path(file).resolve()
    text = page.read_text(encoding="utf-8")
    sys.stdout.buffer.write(rewritten(text, page, set(pages())).encode("utf-8"))


if __name__ == "__main__":
    main(*sys.argv[1:])
