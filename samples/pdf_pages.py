"""A small PDF writer for sample and benchmark files: pages of text, lines and filled boxes.

Coordinates are points from the top left corner of the page. The fonts are Helvetica and
Helvetica-Bold, which every reader has, so that nothing has to be embedded. The file it writes is
plain: a flat page tree, one content stream a page, a classic cross-reference table.
"""

import zlib

# Widths of the characters that numbers are written with, in thousandths of the font size; they are
# the same in both fonts.
_WIDTHS = {**{digit: 556 for digit in "0123456789"}, ".": 278, ",": 278, " ": 278, "-": 333}


class Page:
    """One page, drawn in the order of the calls."""

    def __init__(self, height):
        self._height = height
        self._operators = []

    def text(self, x, baseline, size, text, bold=False, grey=0.0):
        """Writes `text` with its first character's origin at (x, baseline)."""
        escaped = text.replace("\\", "\\\\").replace("(", "\\(").replace(")", "\\)")
        self._operators.append(
            f"BT {grey:g} g /{'B' if bold else 'R'} {size:g} Tf "
            f"1 0 0 1 {x:g} {self._height - baseline:g} Tm ({escaped}) Tj ET"
        )

    def number(self, right, baseline, size, text, bold=False):
        """Writes `text`, made of digits and their marks, so that it ends at `right`."""
        width = sum(_WIDTHS[character] for character in text) * size / 1000
        self.text(right - width, baseline, size, text, bold)

    def box(self, x, top, width, height, red, green, blue):
        """Fills a rectangle."""
        self._operators.append(
            f"{red:g} {green:g} {blue:g} rg "
            f"{x:g} {self._height - top - height:g} {width:g} {height:g} re f"
        )

    def line(self, x, y, to_x, to_y, width=0.5, grey=0.6):
        """Draws a straight line."""
        self._operators.append(
            f"{width:g} w {grey:g} G {x:g} {self._height - y:g} m "
            f"{to_x:g} {self._height - to_y:g} l S"
        )

    def content(self):
        return "\n".join(self._operators).encode("cp1252")


class Document:
    """A document under way. Every page is A4 upright unless told otherwise."""

    def __init__(self, title, width=595, height=842):
        self._title = title
        self._width = width
        self._height = height
        self._pages = []

    def page(self):
        page = Page(self._height)
        self._pages.append(page)
        return page

    def save(self, path):
        """Writes the document. The same pages give the same bytes."""
        first = 6  # the objects before it: catalog, page tree, two fonts, information
        kids = " ".join(f"{first + 2 * index} 0 R" for index in range(len(self._pages)))
        objects = [
            b"<</Type/Catalog/Pages 2 0 R/Lang(en)>>",
            f"<</Type/Pages/Count {len(self._pages)}/Kids[{kids}]>>".encode(),
            _font("Helvetica"),
            _font("Helvetica-Bold"),
            f"<</Title({self._title})/Producer(Quorlin Cleaver samples)>>".encode(),
        ]
        for index, page in enumerate(self._pages):
            stream = zlib.compress(page.content(), 9)
            objects.append(
                f"<</Type/Page/Parent 2 0 R/MediaBox[0 0 {self._width} {self._height}]"
                f"/Resources<</Font<</R 3 0 R/B 4 0 R>>>>/Contents {first + 2 * index + 1} 0 R>>"
                .encode()
            )
            objects.append(
                f"<</Length {len(stream)}/Filter/FlateDecode>>\nstream\n".encode()
                + stream + b"\nendstream"
            )
        _write(path, objects)


def _font(name):
    return f"<</Type/Font/Subtype/Type1/BaseFont/{name}/Encoding/WinAnsiEncoding>>".encode()


def _write(path, objects):
    pieces = [b"%PDF-1.7\n%\xe2\xe3\xcf\xd3\n"]
    offset = len(pieces[0])
    table = [b"0000000000 65535 f \n"]
    for number, body in enumerate(objects, 1):
        piece = f"{number} 0 obj\n".encode() + body + b"\nendobj\n"
        table.append(f"{offset:010d} 00000 n \n".encode())
        pieces.append(piece)
        offset += len(piece)
    count = len(objects) + 1
    pieces.append(
        f"xref\n0 {count}\n".encode() + b"".join(table)
        + f"trailer\n<</Size {count}/Root 1 0 R/Info 5 0 R>>\nstartxref\n{offset}\n%%EOF\n".encode()
    )
    with open(path, "wb") as file:
        file.write(b"".join(pieces))
