#!/usr/bin/env python3
"""make_tagged.py OUT.pdf PAGES [--untagged]: a long document as a browser prints it, for measuring.

Each page has 34 paragraphs, one mark each, and a link: 71 structure elements, in the shape that
browsers write them (a section for each page, an element for the mark below each paragraph's). Two
fonts are embedded, as large as subsets usually are; their programs are noise, since nothing draws
them here. --untagged leaves out the tags and nothing else. The same arguments give the same file.
"""

import argparse
import random
import zlib

PARAGRAPHS = 34
FONT_BYTES = 18000
WORDS = "account balance carried forward payment received statement transfer monthly reference".split()


class Writer:
    """Objects with numbers given out in the order of first use."""

    def __init__(self):
        self.bodies = {}

    def number(self):
        self.bodies[len(self.bodies) + 1] = b""
        return len(self.bodies)

    def put(self, number, text, stream=None):
        body = text.encode()
        if stream is not None:
            body = body[:-2] + f"/Length {len(stream)}>>\nstream\n".encode() + stream + b"\nendstream"
        self.bodies[number] = body

    def add(self, text, stream=None):
        number = self.number()
        self.put(number, text, stream)
        return number

    def save(self, path, root):
        data = bytearray(b"%PDF-1.4\n")
        places = []
        for number, body in sorted(self.bodies.items()):
            places.append(len(data))
            data += b"%d 0 obj\n%s\nendobj\n" % (number, body)
        start = len(data)
        data += b"xref\n0 %d\n0000000000 65535 f \n" % (len(places) + 1)
        data += b"".join(b"%010d 00000 n \n" % place for place in places)
        data += b"trailer\n<</Size %d/Root %d 0 R>>\nstartxref\n%d\n%%%%EOF\n" % (len(places) + 1, root, start)
        with open(path, "wb") as file:
            file.write(data)


def refs(numbers):
    return " ".join(f"{number} 0 R" for number in numbers)


def font(writer, name, chance):
    program = writer.add(f"<</Length1 {FONT_BYTES}>>", chance.randbytes(FONT_BYTES))
    descriptor = writer.add(f"<</Type/FontDescriptor/FontName/{name}/Flags 32/FontBBox[0 -200 1000 900]"
                            f"/ItalicAngle 0/Ascent 900/Descent -200/CapHeight 700/StemV 80/FontFile2 {program} 0 R>>")
    widths = " ".join(["556"] * 95)
    return writer.add(f"<</Type/Font/Subtype/TrueType/BaseFont/{name}/FirstChar 32/LastChar 126"
                      f"/Widths[{widths}]/Encoding/WinAnsiEncoding/FontDescriptor {descriptor} 0 R>>")


class Document:
    """The document under way; what the tags need is written only when it is tagged."""

    def __init__(self, is_tagged):
        self.writer = Writer()
        self.chance = random.Random(1)
        self.is_tagged = is_tagged
        self.pages, self.sections, self.links = [], [], []
        self.root, self.tree, self.top, self.kids = (self.writer.number() for _ in range(4))
        self.state = self.writer.add("<</ca 1/BM/Normal>>")
        self.fonts = [font(self.writer, name, self.chance) for name in ("AAAAAA+Text", "BAAAAA+Text-Bold")]
        self.parents = []

    def content(self, page):
        operators = ["1 0 0 -1 0 842 cm /G3 gs"]
        for row in range(PARAGRAPHS):
            words = " ".join(self.chance.choice(WORDS) for _ in range(9))
            text = f"BT /F{4 + row % 2} 10 Tf 1 0 0 -1 40 {40 + 22 * row} Tm ({page} {words}) Tj ET"
            operators.append(f"/P <</MCID {row}>> BDC {text} EMC" if self.is_tagged else text)
        return zlib.compress("\n".join(operators).encode())

    def element(self, kind, parent, rest, number=None):
        number = number or self.writer.number()
        self.writer.put(number, f"<</Type /StructElem\n/S /{kind}\n/P {parent} 0 R\n{rest}>>")
        return number

    def add_elements(self, page, link):
        section = self.writer.number()
        kids, marks = [], []
        for row in range(PARAGRAPHS):
            paragraph = self.writer.number()
            marks.append(self.element("NonStruct", paragraph, f"/Pg {page} 0 R\n/K {row}"))
            kids.append(self.element("P", section, f"/K {marks[-1]} 0 R", paragraph))
        holder = self.writer.number()
        reference = f"<</Type /OBJR\n/Obj {link} 0 R>>"
        kids.append(self.element("Link", holder, f"/Pg {page} 0 R\n/K {reference}"))
        self.element("P", section, f"/K {kids[-1]} 0 R", holder)
        self.parents += [f"[{refs(marks)}]", f"{kids[-1]} 0 R"]
        kids[-1] = holder
        self.sections.append(self.element("Div", self.top, f"/K [{refs(kids)}]", section))

    def add_page(self):
        page, index = self.writer.number(), len(self.pages)
        key = f"/StructParent {2 * index + 1}" if self.is_tagged else ""
        link = self.writer.add(f"<</Type/Annot/Subtype/Link/F 4/Rect[40 40 200 60]{key}"
                               "/A<</Type/Action/S/URI/URI(https://example.org/)>>>>")
        content = self.writer.add("<</Filter/FlateDecode>>", self.content(index + 1))
        key = f"/StructParents {2 * index}/Tabs/S" if self.is_tagged else ""
        resources = (f"<</ProcSet[/PDF/Text]/ExtGState<</G3 {self.state} 0 R>>"
                     f"/Font<</F4 {self.fonts[0]} 0 R/F5 {self.fonts[1]} 0 R>>>>")
        self.writer.put(page, f"<</Type/Page/Parent {self.kids} 0 R/MediaBox[0 0 595 842]/Resources{resources}"
                              f"/Annots[{link} 0 R]/Contents {content} 0 R{key}>>")
        self.pages.append(page)
        if self.is_tagged:
            self.add_elements(page, link)

    def save(self, path):
        tags = ""
        if self.is_tagged:
            pairs = " ".join(f"{key} {value}" for key, value in enumerate(self.parents))
            parent_tree = self.writer.add(f"<</Type/ParentTree/Nums[{pairs}]>>")
            self.writer.put(self.tree, f"<</Type/StructTreeRoot/K {self.top} 0 R"
                                       f"/ParentTreeNextKey {len(self.parents)}/ParentTree {parent_tree} 0 R>>")
            self.element("Document", self.tree, f"/K [{refs(self.sections)}]", self.top)
            tags = f"/MarkInfo<</Type/MarkInfo/Marked true>>/StructTreeRoot {self.tree} 0 R"
        else:
            self.writer.put(self.tree, "null")
            self.writer.put(self.top, "null")
        self.writer.put(self.root, f"<</Type/Catalog/Pages {self.kids} 0 R/Lang(en)"
                                   f"/ViewerPreferences<</DisplayDocTitle true>>{tags}>>")
        self.writer.put(self.kids, f"<</Type/Pages/Count {len(self.pages)}/Kids[{refs(self.pages)}]>>")
        self.writer.save(path, self.root)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("path")
    parser.add_argument("pages", type=int)
    parser.add_argument("--untagged", action="store_true")
    options = parser.parse_args()
    document = Document(not options.untagged)
    for _ in range(options.pages):
        document.add_page()
    document.save(options.path)


if __name__ == "__main__":
    main()
