#!/usr/bin/env python3
"""peer_pymupdf.py IN.pdf OUTDIR LEFT TOP RIGHT BOTTOM: the yardstick of the whole-run measurement.

What a programmer would write for the same task in one process: the text in a rectangle of every
page (points from the top left), a new file where it differs, named after it.
"""

import os
import sys

import fitz


def main():
    source_path, folder = sys.argv[1:3]
    rectangle = fitz.Rect(*map(float, sys.argv[3:7]))
    base = os.path.splitext(os.path.basename(source_path))[0]
    os.makedirs(folder, exist_ok=True)
    source = fitz.open(source_path)
    groups = []
    for number, page in enumerate(source):
        text = " ".join(page.get_text("text", clip=rectangle).split())
        if not groups or (text and text != groups[-1][0]):
            groups.append([text, number, number])
        groups[-1][2] = number
    for position, (text, first, last) in enumerate(groups, 1):
        part = fitz.open()
        part.insert_pdf(source, from_page=first, to_page=last)
        name = text.replace("/", "-")
        part.save(os.path.join(folder, f"{position} {name} {base} {first + 1}-{last + 1}.pdf"))
        part.close()


if __name__ == "__main__":
    main()
