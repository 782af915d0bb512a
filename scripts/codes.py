#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes the page of the codes that hosts pass: those of the array functions and of the kinds of expressions from the
list of functions, which a test holds against the library's table, and the enumerations of the public headers.

usage: codes.py        prints Markdown
"""
import csv
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
FUNCTIONS = ROOT / "tests" / "reference" / "special" / "functions.csv"
DISPATCH = {"1": "apiFun_calcFun", "2": "apiFun_calcFun2", "n": "apiFun_calcPoly"}


def functions(column):
    """Rows of the list with a code in the column, by the code."""
    with open(FUNCTIONS, newline="") as file:
        rows = [row for row in csv.DictReader(line for line in file if not line.startswith("#")) if row[column]]
    return sorted(rows, key=lambda row: (int(row[column]), row["arity"]))


def table(*rows):
    head, *body = rows
    print("\n".join("| " + " | ".join(row) + " |" for row in [head, ["---"] * len(head), *body]), end="\n\n")


def enumerations(header):
    """Comment and (name, value, comment) of each enumeration."""
    comment = r"/\*\*<?\s*(.*?)\s*\*/"
    for about, body in re.findall(comment + r"\s*enum \{(.*?)\};", header.read_text(), re.S):
        about = " ".join(line.strip(" *") for line in about.rsplit("/**", 1)[-1].splitlines()).strip()
        about = re.split(r"\. |, each|, with| {2}|[:;]", about)[0].rstrip(".")
        names = re.findall(r"(\w+) = (-?\d+),?(?:\s*" + comment + ")?", body, re.S)
        yield about, [(f"`{name}`", value, " ".join(text.replace("*", " ").split())) for name, value, text in names]


def main():
    if len(sys.argv) > 1:
        print(__doc__)
        sys.exit(0 if sys.argv[1] in ("-h", "--help") else 2)
    print("# Codes\n\nWhat a host passes as a number. A name that begins with `calc` or `ofOrder` has no export of its own.\n")
    print("## Functions over arrays\n")
    table(["code", "function", "export that takes it"],
          *([row["array"], f"`{row['name']}`", f"`{DISPATCH[row['arity']]}`"] for row in functions("array")))
    print("## Kinds of expressions\n")
    table(["code", "text", "function"], *([row["kind"], f"`{row['text']}`", f"`{row['name']}`"] for row in functions("kind")))
    for header in sorted((ROOT / "include" / "orvane").glob("*.h")):
        for about, rows in enumerations(header):
            print(f"## {about}\n\n`orvane/{header.name}`\n")
            table(["constant", "code", "meaning"], *rows)


main()
