#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/solver/nist/problems.tsv from the data files of the NIST Statistical Reference Datasets,
non-linear regression (https://www.itl.nist.gov/div898/strd/, a work of the US government, public domain).

usage: nist.py FOLDER     with the 27 files *.dat

A problem is a line `name parameters rows rss`, three lines with start 1, start 2 and the certified parameters, and a
line `y x...` an observation. Numbers stand as in the files.
"""
import pathlib
import re
import sys


def numbers(line):
    return re.findall(r"[-+]?(?:\d+\.?\d*|\.\d+)(?:[EeDd][-+]?\d+)?", line)


def problem(path):
    lines = path.read_text().splitlines()
    spans = {}
    for line in lines[:10]:
        match = re.search(r"(Starting Values|Certified Values|Data)\s+\(lines\s+(\d+) to\s+(\d+)\)", line)
        if match:
            spans[match.group(1)] = int(match.group(2)) - 1, int(match.group(3))
    first, last = spans["Starting Values"]
    table = [numbers(line.split("=")[1])[:3] for line in lines[first:last]]
    rss = next(numbers(line.split(":")[1])[0] for line in lines if line.startswith("Residual Sum of Squares"))
    first, last = spans["Data"]
    data = [numbers(line) for line in lines[first:last] if numbers(line)]
    yield "\t".join([path.stem, str(len(table)), str(len(data)), rss])
    for column in zip(*table):
        yield "\t".join(column)
    for row in data:
        yield "\t".join(row)


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    out = pathlib.Path(__file__).resolve().parents[1] / "solver" / "nist" / "problems.tsv"
    lines = ["# Written by tests/reference/make/nist.py from the NIST Statistical Reference Datasets, public domain."]
    for path in sorted(pathlib.Path(sys.argv[1]).glob("*.dat")):
        lines += problem(path)
    out.write_text("\n".join(lines) + "\n")


main()
