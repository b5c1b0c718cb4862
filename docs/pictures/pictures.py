#!/usr/bin/env python3
"""Makes the pictures of docs/concepts.md: pictures.py [--check]

Each function below draws one; with --check, only says which SVG files are not what it would write. Texts are measured by
rule of thumb and nothing else is read, so that every machine makes the same files.
"""
import sys
from html import escape
from pathlib import Path

STYLE = """
  text { font: 14px system-ui, "DejaVu Sans", sans-serif; fill: #24292f; }
  .code { font-family: ui-monospace, "DejaVu Sans Mono", monospace; font-size: 13px; }
  .note { fill: #57606a; font-size: 13px; }
  .strong { font-weight: 600; }
  .box { fill: #f6f8fa; stroke: #8c959f; }
  .accent { fill: #ddf4ff; stroke: #218bff; }
  .second { fill: #fff1d6; stroke: #bf8700; }
  .third { fill: #dafbe1; stroke: #2da44e; }
  .line { fill: none; stroke: #57606a; }
  .head { fill: #57606a; }
  @media (prefers-color-scheme: dark) {
    text { fill: #e6edf3; }
    .note { fill: #9da7b3; }
    .box { fill: #21262d; stroke: #6e7681; }
    .accent { fill: #0c2d4d; stroke: #388bfd; }
    .second { fill: #3d2e0a; stroke: #bb8009; }
    .third { fill: #0f3021; stroke: #2ea043; }
    .line { stroke: #9da7b3; }
    .head { fill: #9da7b3; }
  }
"""

CODE_WIDTH = 7.9  # of a character of 13 px


class Picture:
    def __init__(self, name, width, height, title):
        self.name = name
        self.parts = [
            '<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 %d %d" width="%d" height="%d" role="img" '
            'aria-label="%s">' % (width, height, width, height, escape(title, quote=True)),
            "<style>%s</style>" % STYLE,
        ]

    def rect(self, x, y, width, height, style="box"):
        self.parts.append(
            '<rect class="%s" x="%g" y="%g" width="%g" height="%g" rx="4"/>' % (style, x, y, width, height)
        )

    def text(self, x, y, text, style="", anchor="start"):
        self.parts.append('<text class="%s" x="%g" y="%g" text-anchor="%s">%s</text>' % (style, x, y, anchor, escape(text)))

    def box(self, x, y, width, height, text, style="box", text_style=""):
        self.rect(x, y, width, height, style)
        self.text(x + width / 2, y + height / 2 + 5, text, text_style, "middle")

    def path(self, *points):
        self.parts.append('<path class="line" d="M%s"/>' % " L".join("%g %g" % point for point in points))

    def arrow(self, *points):
        """A line that ends in a head."""
        self.path(*points)
        (x0, y0), (x, y) = points[-2], points[-1]
        length = ((x - x0) ** 2 + (y - y0) ** 2) ** 0.5
        dx, dy = (x - x0) / length, (y - y0) / length
        corners = [(x, y)] + [(x - 9 * dx + s * 4 * dy, y - 9 * dy - s * 4 * dx) for s in (1, -1)]
        self.parts.append('<path class="head" d="M%s Z"/>' % " L".join("%g %g" % corner for corner in corners))

    def svg(self):
        return "\n".join(self.parts + ["</svg>"]) + "\n"


def vocabulary():
    p = Picture("vocabulary", 760, 250, "A line of code declares a parameter; namespaces are ranges of identifiers")
    pieces = [
        ("adder.", None),
        ("AddList", "kind"),
        ("(", None),
        ("kMarkSizes", "identifier"),
        (", ", None),
        ('L"mark-sizes"', "verbose name"),
        (", ", None),
        ('L"ms"', "short name"),
        (", ", None),
        ("new ParameterTypeSerializer<double>", "serializer"),
        (");", None),
    ]
    p.rect(10, 20, 740, 38)
    x = 22
    for text, label in pieces:
        width = len(text) * CODE_WIDTH
        p.parts.append(
            '<text class="code" x="%g" y="44" textLength="%g" xml:space="preserve">%s</text>' % (x, width, escape(text))
        )
        if label:
            p.path((x, 50), (x + width, 50))
            below = 16 if label == "short name" else 0  # wider than what it stands for
            p.path((x + width / 2, 50), (x + width / 2, 74 + below))
            p.text(x + width / 2, 90 + below, label, "note", "middle")
        x += width
    p.text(10, 140, "namespaces: a name and a range of identifiers", "strong")
    p.path((10, 205), (750, 205))
    for left, width, name, ids, style in (
        (60, 180, "chart", "1000 to 1999", "accent"),
        (330, 130, "style", "3000 to 3999", "second"),
        (560, 170, "qvcore", "285212673 to 301989887", "third"),
    ):
        p.box(left, 160, width, 34, name, style, "strong")
        p.path((left, 200), (left, 210))
        p.path((left + width, 200), (left + width, 210))
        p.text(left + width / 2, 230, ids, "note", "middle")
    return p


def bags():
    p = Picture("bags", 700, 230, "Two bags share their values; a value that is set anew belongs to one of them")
    for x, name in ((10, "bag"), (540, "its copy")):
        p.rect(x, 40, 150, 160)
        p.text(x + 75, 28, name, "strong", "middle")
        for row, identifier in enumerate(("1001", "1002", "1004")):
            p.text(x + 75, 75 + 50 * row, identifier, "code", "middle")
    for row, (text, style) in enumerate((('"Sales"', "accent"), ("2, 4.5", "accent"), ("a nested bag", "accent"))):
        y = 52 + 50 * row
        p.box(255, y, 120, 36, text, style, "code")
        p.arrow((160, y + 18), (253, y + 18))
    p.box(400, 52, 115, 36, '"Costs"', "second", "code")
    p.arrow((540, 70), (517, 70))
    p.arrow((540, 120), (377, 120))
    p.arrow((540, 170), (377, 170))
    p.text(315, 222, "values are shared and never change", "note", "middle")
    p.text(457, 42, "set in the copy", "note", "middle")
    return p


def kinds():
    p = Picture("kinds", 760, 330, "The kinds: for each the value in C++ and the value in JSON")
    rows = (
        ("text", "TString, names, enumerations", '"Sales"', "accent"),
        ("number", "int, double, Int64, ...", "4.5", "accent"),
        ("bool", "bool", "true", "accent"),
        ("list", "std::vector of one of these", "[2, 4.5]", "second"),
        ("map", "std::map<TString, one of these>", '{"north": "blue"}', "second"),
        ("bag", "RefCntPtr<const IParameters>", '{"opacity": 0.85}', "third"),
        ("structure", "a class of the host's own", '{"left": 4, "right": 8}', "third"),
        ("structure list", "several of them", '[{"left": 4, "right": 8}, ...]', "third"),
        ("structure map", "several, by key", '{"page": {"left": 4, ...}}', "third"),
    )
    for x, head in ((20, "kind"), (170, "value in C++"), (470, "value in JSON")):
        p.text(x, 24, head, "strong")
    for row, (kind, cpp, text, style) in enumerate(rows):
        y = 36 + 32 * row
        p.rect(10, y, 740, 28, style)
        p.text(20, y + 19, kind, "strong")
        p.text(170, y + 19, cpp, "code")
        p.text(470, y + 19, text, "code")
    return p


def registry():
    p = Picture("registry", 760, 260, "Identifiers are looked up by range, names in a namespace and its fallbacks")
    p.box(10, 30, 150, 40, "identifier 1002")
    p.arrow((160, 50), (258, 50))
    p.text(209, 42, "range", "note", "middle")
    p.box(10, 170, 150, 40, 'name "opacity"')
    p.arrow((160, 190), (205, 190), (205, 110), (258, 110))
    p.text(14, 228, 'read under "chart"', "note")
    p.rect(260, 20, 240, 120, "accent")
    p.text(272, 42, "chart", "strong")
    p.text(490, 42, "1000 to 1999", "note", "end")
    p.text(272, 72, "1001 title", "code")
    p.text(272, 94, "1002 mark-sizes", "code")
    p.text(272, 116, "1003 colors", "code")
    p.rect(260, 170, 240, 76, "second")
    p.text(272, 192, "style", "strong")
    p.text(490, 192, "3000 to 3999", "note", "end")
    p.text(272, 222, "3001 opacity", "code")
    p.arrow((380, 140), (380, 168))
    p.text(390, 159, "fallback", "note")
    p.rect(590, 50, 160, 76)
    p.text(602, 72, "mark-sizes, ms")
    p.text(602, 93, "list")
    p.text(602, 114, "serializer of double")
    p.arrow((500, 88), (588, 88))
    p.box(590, 190, 160, 40, "identifier 3001", "box")
    p.arrow((500, 210), (588, 210))
    return p


def names():
    p = Picture("names", 700, 190, "mark-sizes is registered; markSizes and ms are written")
    p.box(10, 70, 190, 44, "mark-sizes", "accent", "code")
    p.text(105, 136, "the verbose name, registered", "note", "middle")
    p.box(480, 20, 200, 44, '"markSizes": [2, 4.5]', "second", "code")
    p.text(580, 82, "JSON under verbose names", "note", "middle")
    p.box(480, 110, 200, 44, '"ms": [2, 4.5]', "third", "code")
    p.text(580, 172, "JSON under short names", "note", "middle")
    p.arrow((200, 84), (478, 36))
    p.arrow((480, 52), (202, 100))
    p.text(330, 40, "camel case", "note", "middle")
    p.text(352, 96, "dashes", "note", "middle")
    p.path((200, 108), (330, 132))
    p.arrow((330, 132), (478, 132))
    p.text(400, 152, "as registered", "note", "middle")
    return p


def options():
    p = Picture("options", 720, 220, "A thread's own session comes first, then that of the process, then the defaults")
    p.box(10, 26, 150, 40, "writing a bag", "box")
    p.arrow((160, 46), (248, 46))
    p.text(204, 38, "asks", "note", "middle")
    rows = (
        ("the thread's session", "short names: yes    packed lists: no", "accent"),
        ("the process's session", "short names: no     packed lists: yes", "second"),
        ("defaults", "short names: no     packed lists: no", "box"),
    )
    for row, (name, text, style) in enumerate(rows):
        y = 16 + 66 * row
        p.rect(250, y, 440, 50, style)
        p.text(262, y + 21, name, "strong")
        p.parts.append('<text class="code" x="262" y="%g" xml:space="preserve">%s</text>' % (y + 41, text))
        if row < 2:
            p.arrow((470, y + 50), (470, y + 64))
            p.text(480, y + 62, "where there is none", "note")
    return p


def runs():
    p = Picture("runs", 700, 190, "Nine, then 1 to 5, then four times 8: packed as a number and two runs")
    values = (9, 1, 2, 3, 4, 5, 8, 8, 8, 8)
    styles = ["box"] + ["accent"] * 5 + ["second"] * 4
    for position, (value, style) in enumerate(zip(values, styles)):
        p.box(20 + 62 * position, 30, 56, 36, str(value), style, "code")
    p.text(20, 20, "the list", "note")
    packed = (("9", 20, 56, "box"), ("[1, 5, 1]", 82, 304, "accent"), ("[8, 4]", 392, 242, "second"), ("[]", 640, 48, "third"))
    for text, x, width, style in packed:
        p.box(x, 110, width, 36, text, style, "code")
        if text != "[]":
            p.arrow((x + width / 2, 66), (x + width / 2, 108))
    p.text(234, 166, "first value, length, step", "note", "middle")
    p.text(513, 166, "first value, length", "note", "middle")
    p.text(664, 166, "packed", "note", "middle")
    return p


def main():
    folder = Path(__file__).parent
    stale = []
    for draw in (vocabulary, bags, kinds, registry, names, options, runs):
        picture = draw()
        path = folder / (picture.name + ".svg")
        if "--check" in sys.argv[1:]:
            if not path.exists() or path.read_text() != picture.svg():
                stale.append(path.name)
        else:
            path.write_text(picture.svg())
    if stale:
        sys.exit("not what docs/pictures/pictures.py makes: " + ", ".join(stale))


main()
