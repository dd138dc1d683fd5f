#!/usr/bin/env python3
"""Makes the sample batch: statements.pdf and invoices.pdf of an invented savings bank.

Run it in any folder with the target folder as its argument (default: the folder of this script).
Both files carry the customer number at the same place on the first page of every letter, so that
one rule splits both; invoices.pdf carries the invoice number below it. A statement's following
pages carry no number: they belong to the page before. The parties are invented.
"""

import os
import random
import sys

from pdf_pages import Document

BANK = "Larch Street Savings Bank"
STREET = "12 Larch Street, Fenwick Bridge"
BLUE = (0.16, 0.32, 0.49)
PALE = (0.93, 0.95, 0.97)

CUSTOMERS = [
    ("10-44710", "Ada Winterbourne", "3 Mill Lane"),
    ("10-51822", "Okafor & Sons Joinery", "Unit 7, Canal Yard"),
    ("10-60359", "Teodora Marsh", "48 Quarry Road"),
    ("10-73341", "Bluebell Nursery School", "Church Walk"),
    ("10-88094", "Idris Llewellyn", "The Old Forge"),
]

PAID = [
    "Card payment, Fenwick Grocers", "Standing order, rent", "Direct debit, water",
    "Direct debit, electricity", "Transfer to savings", "Cash withdrawal",
    "Card payment, bookshop", "Card payment, railway",
]
RECEIVED = ["Salary", "Cheque paid in", "Refund, garden centre", "Interest"]
SERVICES = [
    ("Safe deposit box, one quarter", 3600), ("Paper statements, one quarter", 450),
    ("Foreign transfer", 1250), ("Replacement card", 800), ("Courier, per parcel", 1690),
    ("Business account, one quarter", 2400), ("Coin counting, per bag", 275),
]


def money(pence):
    sign = "-" if pence < 0 else ""
    return f"{sign}{abs(pence) // 100:,}.{abs(pence) % 100:02d}"


def letterhead(page, title):
    page.box(0, 0, 595, 56, *BLUE)
    page.text(48, 36, 18, BANK, bold=True, grey=1)
    page.text(48, 76, 8, STREET, grey=0.4)
    page.text(48, 112, 15, title, bold=True)


def reference(page, baseline, label, value):
    """A label and its value; the value's place is what a rule is made of."""
    page.text(310, baseline, 9, label, grey=0.35)
    page.text(400, baseline, 12, value, bold=True)


def heading(page, baseline, left, right):
    page.box(48, baseline - 13, 499, 18, *PALE)
    page.text(54, baseline, 9, left, bold=True)
    page.text(505.5, baseline, 9, right, bold=True)


def footer(page, number, total):
    page.line(48, 796, 547, 796)
    page.text(48, 810, 8, f"Page {number} of {total}", grey=0.4)


def statement(document, chance, customer, pages):
    number, name, street = customer
    balance = chance.randrange(40_000, 900_000)
    day = 1
    for position in range(pages):
        page = document.page()
        letterhead(page, "Statement of account")
        first = 170
        if position == 0:
            reference(page, 112, "Customer number", number)
            page.text(48, 150, 11, name)
            page.text(48, 166, 11, street)
            first = 214
        heading(page, first, "Date and entry", "Balance")
        for row in range(24):
            entries, sign = chance.choice([(PAID, -1), (PAID, -1), (RECEIVED, 2)])
            amount = sign * chance.randrange(250, 48_000)
            balance += amount
            baseline = first + 22 + row * 22
            page.text(54, baseline, 9, f"{min(day, 28):02d} March", grey=0.35)
            page.text(130, baseline, 9, chance.choice(entries))
            page.number(430, baseline, 9, money(amount))
            page.number(540, baseline, 9, money(balance), bold=True)
            page.line(48, baseline + 7, 547, baseline + 7, 0.25, 0.85)
            day += chance.randrange(0, 2)
        footer(page, position + 1, pages)


def invoice(document, chance, customer, number):
    customer_number, name, street = customer
    page = document.page()
    letterhead(page, "Invoice")
    reference(page, 112, "Customer number", customer_number)
    reference(page, 132, "Invoice number", number)
    page.text(48, 150, 11, name)
    page.text(48, 166, 11, street)
    heading(page, 214, "Service", "Amount")
    total = 0
    services = chance.sample(SERVICES, chance.randrange(2, 6))
    for row, (service, price) in enumerate(services):
        baseline = 238 + row * 22
        total += price
        page.text(54, baseline, 9, service)
        page.number(540, baseline, 9, money(price))
        page.line(48, baseline + 7, 547, baseline + 7, 0.25, 0.85)
    baseline = 250 + len(services) * 22
    page.text(430, baseline, 10, "Total", bold=True)
    page.number(540, baseline, 10, money(total), bold=True)
    page.text(48, 740, 9, "Please pay within 30 days, naming the invoice number.", grey=0.35)
    footer(page, 1, 1)


def main():
    folder = sys.argv[1] if len(sys.argv) > 1 else os.path.dirname(os.path.abspath(__file__))
    chance = random.Random(7)

    statements = Document("Statements, March")
    for customer, pages in zip(CUSTOMERS, [3, 2, 1, 4, 2]):
        statement(statements, chance, customer, pages)
    statements.save(os.path.join(folder, "statements.pdf"))

    invoices = Document("Invoices, March")
    for position, customer in enumerate([0, 0, 1, 3, 1, 4, 0, 2]):
        invoice(invoices, chance, CUSTOMERS[customer], f"LS-{2024_300 + position}")
    invoices.save(os.path.join(folder, "invoices.pdf"))


if __name__ == "__main__":
    main()
