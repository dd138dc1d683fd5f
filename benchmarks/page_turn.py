#!/usr/bin/env python3
"""Measures the turning of a page in the rule editor, beside other programs on the same page.

    benchmarks/page_turn.py [--build build/release] [--pages 10000] [--rounds 40] [--pdf FILE]

Needs the release build with its target page_turn (ninja -C build/release page_turn). Rounds of all
programs are interleaved, so that a busy machine slows all of them alike; the least of each is what
the program costs, the median what a user waits on this machine. pdftoppm and mutool are left out
where they are not installed.
"""

import argparse
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))


def timed(command):
    start = time.perf_counter()
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return (time.perf_counter() - start) * 1000


def peers(tools, pdf, page, folder):
    number = str(page)
    out = os.path.join(folder, "peer")
    found = {"pagexport alone": [os.path.join(tools, "pagexport"), "-htmlformat", "-f", number,
                                 "-l", number, pdf, os.path.join(folder, "text.xml")]}
    if shutil.which("pdftoppm"):
        found["pdftoppm -r 108 -png"] = ["pdftoppm", "-r", "108", "-png", "-f", number, "-l",
                                         number, pdf, out]
    if shutil.which("mutool"):
        found["mutool draw -r 108"] = ["mutool", "draw", "-q", "-r", "108", "-o", out + ".png",
                                       pdf, number]
    return found


def turns(tools, pdf, pages, page, count):
    """(milliseconds until the picture is shown, milliseconds until the frames lie on it) a turn"""
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen")
    lines = subprocess.run([os.path.join(tools, "page_turn"), pdf, str(pages), str(page),
                            str(count)], check=True, capture_output=True, text=True,
                           env=environment).stdout.splitlines()
    return [tuple(map(float, line.split())) for line in lines]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", default=os.path.join(HERE, "..", "build", "release"))
    parser.add_argument("--pages", type=int, default=10000)
    parser.add_argument("--rounds", type=int, default=40)
    parser.add_argument("--pdf", help="measure this file of --pages pages instead of a new one")
    options = parser.parse_args()
    tools = os.path.join(os.path.abspath(options.build), "bin")
    page = options.pages // 2
    with tempfile.TemporaryDirectory() as folder:
        pdf = options.pdf or os.path.join(folder, "batch.pdf")
        if not options.pdf:
            subprocess.run([sys.executable, os.path.join(HERE, "make_batch.py"), pdf,
                            str(options.pages)], check=True)
        commands = peers(tools, pdf, page, folder)
        times = {name: [] for name in commands}
        shown, whole = [], []
        for _ in range(options.rounds):
            # The first turns of a new editor warm it up and do not count.
            for part in turns(tools, pdf, options.pages, page, 6)[2:]:
                shown.append(part[0])
                whole.append(part[1])
            for name, command in commands.items():
                times[name].append(timed(command))
    rows = {"page turned, frames drawn": whole, "  until the picture is shown": shown, **times}
    least = min(whole)
    print(f"page {page} of {options.pages}, {options.rounds} rounds, milliseconds")
    print(f"{'':32}{'least':>8}{'median':>8}{'turn / it':>12}")
    for name, values in rows.items():
        print(f"{name:32}{min(values):8.1f}{statistics.median(values):8.1f}"
              f"{least / min(values):12.2f}")


if __name__ == "__main__":
    main()
