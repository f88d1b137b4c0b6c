"""The anatomy of an IRI."""

from drawing import Drawing

# Component or delimiter, and its text.
PIECES = [
    ("scheme", "https"),
    ("", "://"),
    ("user-info", "jane"),
    ("", "@"),
    ("host", "пример.example"),
    ("", ":"),
    ("port", "8080"),
    ("path", "/путь/a%20b"),
    ("", "?"),
    ("query", "q=ключ"),
    ("", "#"),
    ("fragment", "часть"),
]
# Readers of more than one component, with their first and last.
GROUPS = [("authority", "user-info", "port"), ("scheme-specific part", "authority", "query")]
NAMES = {"user-info": "user information"}

LEFT, STEP, BASE = 24, 13.6, 96


def draw():
    drawing = Drawing("Anatomy of an IRI: " + "".join(text for _, text in PIECES))
    spans, x = {}, LEFT
    for name, text in PIECES:
        end = x + STEP * len(text)
        drawing.spaced(x, BASE, text, STEP, name or "soft", 21, "700" if name == "host" else "normal")
        if name:
            spans[name] = (x, end)
        x = end
    width = x + LEFT
    for name, (begin, end) in spans.items():
        middle, y = (begin + end) / 2, BASE + 14
        drawing.path(f"M{begin + 2:.1f} {y}v7H{end - 2:.1f}v-7M{middle:.1f} {y + 7}v7")
        # The names of short neighbours would run into each other on one line.
        row = 1 if name in ("user-info", "port") else 0
        if row:
            drawing.path(f"M{middle:.1f} {y + 14}v18")
        drawing.text(middle, y + 28 + 20 * row, NAMES.get(name, name), name, 14, "middle",
                     "700" if name == "host" else "normal")
    spans["authority"] = (spans["user-info"][0], spans["port"][1])
    # It begins with the "//", and the authority does not.
    spans["scheme-specific part"] = (spans["scheme"][1] + STEP, spans["query"][1])
    for row, (name, _, _) in enumerate(GROUPS):
        begin, end = spans[name]
        y = BASE - 28 - 28 * row
        drawing.path(f"M{begin + 2:.1f} {y}v-7H{end - 2:.1f}v7")
        middle = (begin + end) / 2
        half = 4.1 * len(name)
        drawing.box(middle - half, y - 14, 2 * half, 14, "back", 0)
        drawing.text(middle, y - 2, name, "soft", 14, "middle")
    return drawing.svg(width, BASE + 76)
