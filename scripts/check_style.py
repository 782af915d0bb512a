#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Checks of the sources that need no compiler, over the files that git tracks.

usage: check_style.py

- includes between subsystems go one way (the table KNOWS), and heavy headers stay out of ours
- every oddity of src/<subsystem> says `KEPT: what; expected: what (kept.csv: Row)` and names a row of
  tests/reference/<subsystem>/kept.csv, and every row has its comment
- the paths that README.md and CONTRIBUTING.md name are there
- exports are declared in include/orvane only, each after a doc comment; no catch clause in the library
  but one that throws on
- the licence line, the size of a file, the end of lines
Prints one line a finding and exits 1 when there is one.
"""
import pathlib
import re
import subprocess
import sys

# Which subsystems a subsystem may include, beside itself.
GROUND = {"frame", "highprecision", "numeric"}
BASE = GROUND | {"special"}
MIDDLE = BASE | {"sym", "solver"}
KNOWS = {
    "frame": set(),
    "highprecision": {"frame"},
    "numeric": {"frame"},
    "special": GROUND,
    "array": BASE,
    "sym": BASE,
    "solver": BASE,
    "filter": MIDDLE,
    "pdf": MIDDLE,
    "statistics": MIDDLE | {"pdf"},
    "network": MIDDLE | {"filter", "pdf"},
    "expresssearch": MIDDLE | {"filter", "pdf", "network"},
    "classify": MIDDLE,
    "prog": MIDDLE,
    "slam": BASE,
    "stores": GROUND,
}
HEAVY = re.compile(r"^(Eigen/|unsupported/Eigen/|gmp\.h|gmpxx\.h|osqp)")
HEAVY_HEADERS = {"src/highprecision/binary/hp_by_gmp.h", "src/sym/poly/squarefree.h"}
LONGEST_FILE = 800
CODE = {".c", ".h", ".cpp", ".inc"}
LICENSED = CODE | {".cmake", ".py", ".js", ".mjs", ".ts"}
LICENSED_NAMES = {"CMakeLists.txt"}
ROW_NAMES = r"\(kept\.csv: ([\w, ]+)\)"

findings = []


def find(path, line, text):
    findings.append(f"{path}:{line}: {text}")


def numbered(text):
    return enumerate(text.splitlines(), 1)


def check_form(path, text):
    lines = text.splitlines()
    if path.suffix in LICENSED or path.name in LICENSED_NAMES:
        if "SPDX-License-Identifier: Apache-2.0" not in "\n".join(lines[:2]):
            find(path, 1, "no SPDX line")
    if path.suffix in CODE - {".inc"} and len(lines) > LONGEST_FILE:
        find(path, len(lines), f"longer than {LONGEST_FILE} lines")
    if "\r" in text:
        find(path, 1, "carriage returns")
    for number, line in numbered(text):
        if line != line.rstrip() and path.suffix not in {".md", ".csv"}:
            find(path, number, "blanks at the end of the line")
    if text and not text.endswith("\n"):
        find(path, len(lines), "no newline at the end of the file")


def check_includes(path, text):
    subsystem = path.parts[1] if path.parts[0] == "src" else None
    if subsystem is not None and len(path.parts) > 2 and subsystem not in KNOWS:
        find(path, 1, f"subsystem {subsystem} is missing from KNOWS in scripts/check_style.py")
        return
    for number, line in numbered(text):
        include = re.match(r'\s*#\s*include\s*["<]([^">]+)[">]', line)
        if not include:
            continue
        target = include.group(1)
        if path.parts[0] == "include":
            if "/" in target and not target.startswith("orvane/") or HEAVY.match(target):
                find(path, number, f"a public header includes {target}")
        elif subsystem is not None:
            first = target.split("/")[0]
            if "/" in target and first in KNOWS and first != subsystem and first not in KNOWS[subsystem]:
                find(path, number, f"{subsystem} must not include {target}")
            if HEAVY.match(target) and path.suffix == ".h" and str(path) not in HEAVY_HEADERS:
                find(path, number, f"{target} belongs into a .cpp file")


def check_exports(path, text):
    # Blanked, not removed: comments and strings hold no code, and the numbers of the lines stay.
    blank = lambda match: re.sub(r"[^\n]", " ", match.group())
    code = re.sub(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"', lambda m: m.group() if m.group() == '"C"' else blank(m), text,
                  flags=re.S)
    for number, line in numbered(code):
        if re.search(r'extern\s+"C"', line) and str(path) != "include/orvane/export.h":
            find(path, number, 'extern "C" outside include/orvane/export.h')
        if path.parts[0] == "src":
            if re.search(r"\bORVANE_API\b", line):
                find(path, number, "an export declared outside include/orvane")
    if path.parts[0] == "src":
        # One that restores a state and throws on lets the exception cross.
        for clause in re.finditer(r"\bcatch\s*\([^)]*\)\s*\{(?![^}]*\bthrow\s*;)", code):
            find(path, text.count("\n", 0, clause.start()) + 1, "a catch clause: standard exceptions cross the boundary")
    if path.parts[0] == "include" and path.name != "export.h":
        for declaration in re.finditer(r"\bORVANE_API\b[^;(]*?(\w+)\s*\(", code):
            if not text[: declaration.start()].rstrip().endswith("*/"):
                find(path, text.count("\n", 0, declaration.start()) + 1, f"{declaration.group(1)} has no doc comment")


def kept_rows(files):
    """Rows of all kept.csv: (subsystem, row) -> place."""
    rows = {}
    for path, text in files.items():
        if path.name != "kept.csv":
            continue
        for number, line in numbered(text):
            if not line or line.startswith("#"):
                continue
            name, _, pinned = line.partition(",")
            if not pinned.strip():
                find(path, number, f"row {name} pins nothing")
            if (path.parent.name, name) in rows:
                find(path, number, f"row {name} stands twice")
            rows[path.parent.name, name] = (path, number)
    return rows


def kept_comments(files):
    """KEPT comments under src: (subsystem, row) -> place. A comment may run over several lines."""
    named = {}
    for path, text in files.items():
        if path.parts[0] != "src" or path.suffix not in CODE:
            continue
        lines = text.splitlines()
        for index, line in enumerate(lines):
            start = re.search(r"//.*?\bKEPT\b(.*)", line)
            if not start:
                continue
            comment = start.group(1)
            for following in lines[index + 1 :]:
                more = re.match(r"\s*//[/<]*(?!.*\bKEPT\b)(.*)", following)
                if re.search(ROW_NAMES, comment) or not more:
                    break
                comment += " " + more.group(1).strip()
            rows = re.search(ROW_NAMES, comment)
            if not rows or not re.match(r": .+; expected: .+ \(kept\.csv", comment):
                find(path, index + 1, "not of the form `KEPT: what; expected: what (kept.csv: Row)`")
                continue
            for row in rows.group(1).split(","):
                named.setdefault((path.parts[1], row.strip()), (path, index + 1))
    return named


def check_kept(files):
    rows, comments = kept_rows(files), kept_comments(files)
    for key in sorted(comments.keys() - rows.keys()):
        find(*comments[key], f"tests/reference/{key[0]}/kept.csv has no row {key[1]}")
    for key in sorted(rows.keys() - comments.keys()):
        find(*rows[key], f"no KEPT comment under src/{key[0]} names row {key[1]}")


def check_paths(files):
    """Paths in backticks; what stands for a name, as <name>, * or {h,cpp}, ends what is looked for."""
    there = {str(place) for path in files for place in (path, *path.parents)}
    for name in ("README.md", "CONTRIBUTING.md"):
        for number, line in numbered(files[pathlib.Path(name)]):
            for text in re.findall(r"`([\w.-]+/[\w./<>*{},-]*)`", line):
                parts = text.rstrip("/").split("/")
                plain = [part for part in parts[: next((i for i, p in enumerate(parts) if re.search(r"[<>*{}]", p)), None)]]
                if parts[0] not in {"build", "out"} and not there & {"/".join(plain), "/".join(["include", *plain])}:
                    find(pathlib.Path(name), number, f"{text} is not there")


def main():
    if len(sys.argv) > 1:
        print(__doc__)
        sys.exit(0 if sys.argv[1] in ("-h", "--help") else 2)
    names = subprocess.run(["git", "ls-files", "-z"], capture_output=True, text=True, check=True).stdout.split("\0")
    files = {}
    for name in filter(None, names):
        path = pathlib.Path(name)
        try:
            files[path] = path.read_text()
        except (UnicodeDecodeError, IsADirectoryError, FileNotFoundError):
            continue  # a binary file, a link to a folder, a file about to be deleted
    for path, text in files.items():
        check_form(path, text)
        if path.suffix in CODE and path.parts[0] in {"src", "include"}:
            check_includes(path, text)
            check_exports(path, text)
    check_kept(files)
    check_paths(files)
    print("\n".join(findings) if findings else f"style: {len(files)} files, nothing to say")
    sys.exit(bool(findings))


main()
