"""The forms of a component, and which conversion leads where."""

from drawing import MONO, Drawing

# What examples/forms.cpp prints, for the path of one IRI.
TEXTS = {
    "Decoded": "/café/ü/100%",
    "Iri": "/caf%C3%A9/ü/100%",
    "IriStrict": "/caf%C3%A9/ü/100%25",
    "Ascii": "/caf%C3%A9/%C3%BC/100%",
    "AsciiStrict": "/caf%C3%A9/%C3%BC/100%25",
}
PLACES = {"Decoded": (20, 84), "Iri": (360, 84), "Ascii": (700, 84), "IriStrict": (360, 230),
          "AsciiStrict": (700, 230)}
WIDTH, HEIGHT = 215, 56


def draw():
    drawing = Drawing("The forms of a component")
    for name, (x, y) in PLACES.items():
        drawing.box(x, y, WIDTH, HEIGHT)
        drawing.text(x + WIDTH / 2, y + 22, name, "text", 14, "middle", "600")
        drawing.text(x + WIDTH / 2, y + 43, TEXTS[name], "path", 13, "middle", font=MONO)

    def between(left, right, there, back):
        begin, y = PLACES[left][0] + WIDTH, PLACES[left][1]
        end = PLACES[right][0]
        middle = (begin + end) / 2
        drawing.arrow(begin + 4, y + 18, end - 4, y + 18)
        drawing.arrow(end - 4, y + 38, begin + 4, y + 38)
        for i, words in enumerate(reversed(there)):
            drawing.text(middle, y + 8 - 16 * i, words, "soft", 12, "middle")
        for i, words in enumerate(back):
            drawing.text(middle, y + 56 + 16 * i, words, "soft", 12, "middle")

    between("Decoded", "Iri", ["what may not show", "is escaped"], ["escapes are", "undone"])
    between("Iri", "Ascii", ["what is not ASCII", "is escaped"], ["these escapes", "are undone"])
    for plain, strict in [("Iri", "IriStrict"), ("Ascii", "AsciiStrict")]:
        x, y = PLACES[plain]
        middle = x + WIDTH / 2
        drawing.arrow(middle, y + HEIGHT + 4, middle, PLACES[strict][1] - 4)
        for i, words in enumerate(["each read repairs stray", '"%" and brackets']):
            drawing.text(middle + 10, y + HEIGHT + 40 + 16 * i, words, "soft", 12)
    for name, words in [("Decoded", "built: IRIArgs"), ("Iri", "parsed: a text")]:
        x, y = PLACES[name]
        drawing.arrow(x + WIDTH / 2, 40, x + WIDTH / 2, y - 4)
        drawing.text(x + WIDTH / 2, 30, words, "text", 13, "middle")
    y = PLACES["IriStrict"][1]
    for i, words in enumerate(["A value keeps a component in the form in", "which it came. The others are made when",
                               "they are first read, and kept; but the", "strict ones are made each time."]):
        drawing.text(20, y + 8 + 18 * i, words, "soft", 13)
    return drawing.svg(985, 306)
