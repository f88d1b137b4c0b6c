"""What the pictures have in common: colours for light and for dark pages, text, boxes and lines."""

import html

FONT = "system-ui, -apple-system, 'Segoe UI', 'DejaVu Sans', sans-serif"
MONO = "ui-monospace, 'SF Mono', Menlo, Consolas, 'DejaVu Sans Mono', monospace"
GLYPH = 7.9  # what a character of MONO takes at most, at 13 pixels

# The page decides: an image in a page is told which scheme its reader has chosen. The components have
# the colours that the tool gives them on a terminal.
STYLE = """
    .back { fill: #ffffff; }
    .text { fill: #1f2328; }
    .soft { fill: #59636e; }
    .line { stroke: #59636e; stroke-width: 1.5; fill: none; }
    .head { fill: #59636e; }
    .box { fill: #f6f8fa; stroke: #818b98; }
    .oval { fill: #ddf4ff; stroke: #218bff; }
    .scheme { fill: #a626a4; } .user-info { fill: #8a6100; } .host { fill: #1f2328; }
    .port { fill: #c0262d; } .path { fill: #1a7f37; } .query { fill: #0b7285; }
    .fragment { fill: #0550ae; }
    @media (prefers-color-scheme: dark) {
        .back { fill: #0d1117; }
        .text { fill: #f0f6fc; }
        .soft { fill: #9198a1; }
        .line { stroke: #9198a1; }
        .head { fill: #9198a1; }
        .box { fill: #212830; stroke: #656c76; }
        .oval { fill: #0c2d4a; stroke: #388bfd; }
        .scheme { fill: #d2a8ff; } .user-info { fill: #e3b341; } .host { fill: #f0f6fc; }
        .port { fill: #ff7b72; } .path { fill: #56d364; } .query { fill: #56d4dd; }
        .fragment { fill: #79c0ff; }
    }
"""


def number(value):
    return f"{value:.1f}".removesuffix(".0")


class Drawing:
    """An SVG image."""

    def __init__(self, name):
        self.name, self.parts = name, []

    def text(self, x, y, words, style="text", size=13, anchor="start", weight="normal", font=None):
        family = f' font-family="{html.escape(font)}"' if font else ""
        self.parts.append(
            f'<text class="{style}" x="{number(x)}" y="{number(y)}" font-size="{size}"'
            f' text-anchor="{anchor}" font-weight="{weight}"{family}>{html.escape(words)}</text>')

    def spaced(self, x, y, words, step, style, size, weight="normal"):
        """Text with one character in each column of a width, whatever font there is."""
        for i, character in enumerate(words):
            self.text(x + (i + 0.5) * step, y, character, style, size, "middle", weight, MONO)

    def box(self, x, y, width, height, style="box", radius=4):
        self.parts.append(
            f'<rect class="{style}" x="{number(x)}" y="{number(y)}" width="{number(width)}"'
            f' height="{number(height)}" rx="{radius}"/>')

    def path(self, commands, style="line"):
        self.parts.append(f'<path class="{style}" d="{commands}"/>')

    def arrow(self, x1, y1, x2, y2):
        """A straight line with a head, level or upright."""
        self.path(f"M{number(x1)} {number(y1)}L{number(x2)} {number(y2)}")
        if y1 == y2:
            back = -8 if x2 > x1 else 8
            self.path(f"M{number(x2)} {number(y2)}l{back} -4v8z", "head")
        else:
            back = -8 if y2 > y1 else 8
            self.path(f"M{number(x2)} {number(y2)}l-4 {back}h8z", "head")

    def svg(self, width, height):
        width, height = round(width), round(height)
        parts = "\n".join(self.parts)
        return (
            f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}"'
            f' viewBox="0 0 {width} {height}" role="img" aria-label="{html.escape(self.name)}"'
            f' font-family="{html.escape(FONT)}">\n<style>{STYLE}</style>\n'
            f'<rect class="back" width="{width}" height="{height}"/>\n{parts}\n</svg>\n')
