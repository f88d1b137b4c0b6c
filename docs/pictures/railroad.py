"""Railroad diagrams of productions in ABNF (RFC 5234)."""

import re

from drawing import GLYPH, MONO, Drawing, number

GAP, ARC, HIGH = 10, 8, 13  # between neighbours; the radius of a bend; half of a box

# --- reading ABNF ----------------------------------------------------------------------------

TOKEN = re.compile(r'\s*(?:("[^"]*")|(%x[0-9A-F]+(?:-[0-9A-F]+)?)|(\d*\*\d*|\d+(?=[\w(%"]))|'
                   r"([A-Za-z][\w-]*)|([][()/]))")


class Production:
    """A rule with its group, its place in the RFCs and where the library departs from it."""

    def __init__(self, group, source, name, body):
        self.group, self.source, self.name, self.body = group, source, name, body
        self.departure = ""

    def tree(self):
        return Parser(self.body).whole()


def productions(text):
    """The rules of a file: "; --- Group" and "; RFC n, s" stand before, "; Departure:" behind."""
    group, source, found = "", "", []
    for line in text.split("\n"):
        rule = re.match(r"([A-Za-z][\w-]*)\s*=\s*(.*)", line)
        comment = line.startswith(";") and line[1:].strip()
        if rule:
            found.append(Production(group, source, rule[1], rule[2]))
        elif line.startswith(" ") and line.strip():
            found[-1].body += " " + line.strip()
        elif comment and comment.startswith("---"):
            group = comment.strip("- ")
        elif comment and comment.startswith("RFC"):
            source = comment
        elif comment and comment.startswith("Departure: "):
            found[-1].departure = comment
        elif comment and found and found[-1].departure:
            found[-1].departure += " " + comment
    return found


class Parser:
    """A body of a rule as a tree of items."""

    def __init__(self, body):
        self.tokens, at = [], 0
        body = body.rstrip()
        while at < len(body):
            match = TOKEN.match(body, at)
            if not match:
                raise ValueError(f"no ABNF: {body[at:]}")
            self.tokens.append(match[0].strip())
            at = match.end()

    def whole(self):
        result = self.alternation()
        if self.tokens:
            raise ValueError(f"left over: {self.tokens}")
        return result

    def take(self, token):
        if self.tokens and self.tokens[0] == token:
            return self.tokens.pop(0)
        return None

    def alternation(self):
        items = [self.sequence()]
        while self.take("/"):
            items.append(self.sequence())
        items = with_sets(items)
        return items[0] if len(items) == 1 else Choice(items)

    def sequence(self):
        items = []
        while self.tokens and self.tokens[0] not in ("/", ")", "]"):
            items.append(self.repetition())
        return items[0] if len(items) == 1 else Sequence(items)

    def repetition(self):
        times = re.fullmatch(r"(\d*)(\*?)(\d*)", self.tokens[0])
        if not times:
            return self.element()
        self.tokens.pop(0)
        item = self.element()
        least = int(times[1] or 0)
        most = least if not times[2] else int(times[3]) if times[3] else None
        if (least, most) == (0, 1):
            return Choice([Skip(), item])
        if least == most == 2:
            return Sequence([item, item])
        if most is None:
            label = "" if least < 2 else f"at least {least} times"
        else:
            label = f"{most} times" if least == most else f"up to {most} times"
        loop = Loop(item, label)
        return loop if least else Choice([Skip(), loop])

    def element(self):
        token = self.tokens.pop(0)
        if token in ("(", "["):
            item = self.alternation()
            if not self.take({"(": ")", "[": "]"}[token]):
                raise ValueError("a bracket is not closed")
            return item if token == "(" else Choice([Skip(), item])
        if token[0] in '"%':
            return Leaf(token.strip('"') or '""', "oval")
        return Leaf(token, "box")


# --- laying out ------------------------------------------------------------------------------

# Each item has a width, and so much room above and below the line on which it is entered and left.


def level(x1, x2, y):
    return f"M{number(x1)} {number(y)}H{number(x2)}" if x2 > x1 else ""


class Skip:
    width, up, down = 0, 0, 0

    def draw(self, drawing, x, y):
        pass


class Leaf:
    up = down = HIGH

    def __init__(self, words, style):
        self.words, self.style = words, style
        self.width = GLYPH * len(words) + 18

    def draw(self, drawing, x, y):
        drawing.box(x, y - HIGH, self.width, 2 * HIGH, self.style, HIGH if self.style == "oval" else 3)
        drawing.text(x + self.width / 2, y + 4.5, self.words, "text", 13, "middle", font=MONO)


class OneOf:
    """Many characters or ranges of them, of which any will do."""

    def __init__(self, items):
        self.rows = wrapped(" ".join(item.words for item in items), 48)
        self.width = GLYPH * max(map(len, self.rows)) + 68
        self.up, self.down = HIGH, HIGH + 18 * (len(self.rows) - 1)

    def draw(self, drawing, x, y):
        drawing.box(x, y - HIGH, self.width, self.up + self.down, "oval", HIGH)
        drawing.text(x + 12, y + 4.5, "one of", "soft", 12)
        for i, row in enumerate(self.rows):
            drawing.text(x + 56, y + 4.5 + 18 * i, row, "text", 13, font=MONO)


def with_sets(items):
    """Alternatives, with each run of more than three characters drawn as one."""
    result, run = [], []
    for item in [*items, None]:
        if isinstance(item, Leaf) and item.style == "oval":
            run.append(item)
            continue
        result += [OneOf(run)] if len(run) > 3 else run
        run = []
        result += [item] if item else []
    return result


class Sequence:
    def __init__(self, items):
        self.items = items
        self.width = sum(item.width for item in items) + GAP * (len(items) - 1)
        self.up = max(item.up for item in items)
        self.down = max(item.down for item in items)

    def draw(self, drawing, x, y):
        for i, item in enumerate(self.items):
            if i:
                drawing.path(level(x, x + GAP, y))
                x += GAP
            item.draw(drawing, x, y)
            x += item.width


class Choice:
    """The first item on the line, the others below."""

    def __init__(self, items):
        self.items = items
        self.inner = max(item.width for item in items)
        self.width = self.inner + 4 * ARC
        self.up = items[0].up
        self.offsets, y = [0], items[0].down
        for item in items[1:]:
            y = max(y + 8 + item.up, self.offsets[-1] + 2 * ARC)
            self.offsets.append(y)
            y += item.down
        self.down = y

    def draw(self, drawing, x, y):
        left, right = x + 2 * ARC, x + self.width - 2 * ARC
        for item, offset in zip(self.items, self.offsets):
            begin = left
            if offset:
                drawing.path(f"M{number(x)} {number(y)}q{ARC} 0 {ARC} {ARC}"
                             f"v{number(offset - 2 * ARC)}q0 {ARC} {ARC} {ARC}")
                drawing.path(f"M{number(x + self.width)} {number(y)}q-{ARC} 0 -{ARC} {ARC}"
                             f"v{number(offset - 2 * ARC)}q0 {ARC} -{ARC} {ARC}")
                drawing.path(level(begin + item.width, right, y + offset))
            else:
                drawing.path(level(x, left, y))
                drawing.path(level(begin + item.width, x + self.width, y))
            item.draw(drawing, begin, y + offset)


class Loop:
    """Once or more, with the way back below."""

    def __init__(self, item, label):
        self.item, self.label = item, label
        self.inner = max(item.width, 6.6 * len(label))
        self.width = self.inner + 2 * ARC
        self.up = item.up
        self.back = max(item.down + 8, 2 * ARC)
        self.down = self.back + (18 if label else 0)

    def draw(self, drawing, x, y):
        left, right = x + ARC, x + self.width - ARC
        drawing.path(level(x, left, y))
        drawing.path(level(left + self.item.width, x + self.width, y))
        self.item.draw(drawing, left, y)
        rise = number(self.back - 2 * ARC)
        drawing.path(f"M{number(right)} {number(y)}q{ARC} 0 {ARC} {ARC}v{rise}q0 {ARC} -{ARC} {ARC}"
                     f"H{number(left)}q-{ARC} 0 -{ARC} -{ARC}v-{rise}q0 -{ARC} {ARC} -{ARC}")
        middle = (left + right) / 2
        drawing.path(f"M{number(middle - 4)} {number(y + self.back)}l8 -4v8z", "head")
        if self.label:
            drawing.text(middle, y + self.back + 16, self.label, "soft", 12, "middle")


def wrapped(words, limit):
    """A text in lines of so many characters."""
    lines = [""]
    for word in words.split():
        if lines[-1] and len(lines[-1]) + 1 + len(word) > limit:
            lines.append("")
        lines[-1] += (" " if lines[-1] else "") + word
    return lines


def draw(title, rules):
    """The diagrams of some productions, one below the other."""
    drawing = Drawing(title)
    y, width = 8, 480
    for rule in rules:
        tree = rule.tree()
        y += 24
        drawing.text(16, y, rule.name, "text", 15, weight="600", font=MONO)
        drawing.text(16 + 9.6 * len(rule.name) + 12, y, rule.source, "soft", 12)
        y += 14 + tree.up
        x = 44
        drawing.path(f"M24 {number(y - 7)}v14M24 {number(y)}H{x}")
        tree.draw(drawing, x, y)
        end = x + tree.width + 20
        drawing.path(f"{level(x + tree.width, end, y)}M{number(end)} {number(y - 7)}v14")
        y += tree.down + 6
        lines = wrapped(rule.departure, 84) if rule.departure else []
        for line in lines:
            y += 16
            drawing.text(24, y, line, "soft", 12)
        y += 14
        width = max(width, end + 16, *(24 + 6.6 * len(line) + 16 for line in lines), 0)
    return drawing.svg(width, y + 8)
