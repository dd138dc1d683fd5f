#!/usr/bin/env python3
"""make_batch.py OUT.pdf PAGES: a batch of statements for measuring.

A4 pages of 40 entries, the account number at a fixed place of every page, one to four pages for an
account. The same number of pages gives the same file on every machine. OUT.json beside it tells
the accounts and their pages, and where the account number stands (points from the top left).
"""

import json
import os
import random
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "samples"))
sys.dont_write_bytecode = True
from pdf_pages import Document  # noqa: E402

FIELD = (400, 52)
RECTANGLE = [395, 40, 520, 58]
WORDS = ("transfer standing order card payment refund salary interest fee deposit withdrawal "
         "rent water energy insurance telephone ticket groceries reference carried forward").split()


def accounts(pages, chance):
    """(account number, number of its pages), the pages adding up to `pages`."""
    known = set()
    while pages > 0:
        count = min(pages, chance.randint(1, 4))
        number = f"AC-{chance.randrange(10**8):08d}"
        if number not in known:
            known.add(number)
            pages -= count
            yield number, count


def draw(page, number, position, count, chance):
    page.text(160, 52, 14, "Quarterly statement", bold=True)
    page.text(340, 52, 9, "Account:")
    page.text(*FIELD, 11, number, bold=True)
    page.text(400, 67, 9, f"Page {position} of {count}")
    for row in range(40):
        baseline = 102 + row * 17
        page.text(40, baseline, 9, f"{chance.randint(1, 28):02d}/{chance.randint(1, 12):02d}/2024")
        page.text(110, baseline, 9, " ".join(chance.choice(WORDS) for _ in range(7)))
        page.number(555, baseline, 9, f"{chance.randrange(10**6) / 100:.2f}")


def main():
    path, pages = sys.argv[1], int(sys.argv[2])
    chance = random.Random(pages)
    document = Document(f"Batch of {pages} pages")
    groups = []
    first = 1
    for number, count in accounts(pages, chance):
        for position in range(1, count + 1):
            draw(document.page(), number, position, count, chance)
        groups.append({"text": number, "pages": list(range(first, first + count))})
        first += count
    document.save(path)
    with open(os.path.splitext(path)[0] + ".json", "w", encoding="utf-8") as file:
        json.dump({"pages": pages, "rect": RECTANGLE, "change": groups, "group": groups}, file)


if __name__ == "__main__":
    main()
