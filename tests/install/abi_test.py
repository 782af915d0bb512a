#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Holds the binary interface that the public headers declare against the one that is kept in liborvane.abi.

usage: abi_test.py [--write]

A function that is gone, or has other arguments or another result, fails; a new one passes. Needs abidw and abidiff
(abigail-tools); ends with 77 without them. --write writes liborvane.abi anew.

The interface is read from a library of empty functions that is made from the headers alone. That liborvane.so has each
of them is held by exports_test.py, that its definitions agree by the compiler, which sees the headers there.
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
INCLUDE = HERE.parent.parent / "include"
KEPT = HERE / "liborvane.abi"
DECLARED = re.compile(r'extern __attribute__\(\(visibility\("default"\)\)\)([^;]*);')


def run(*command, **options):
    return subprocess.run([str(word) for word in command], capture_output=True, text=True, check=True, **options).stdout


def interface(folder):
    """Writes the interface of the headers as abidw tells it; the file's path."""
    compiler = os.environ.get("CC", "cc")
    text = run(compiler, "-std=c11", "-E", "-P", "-I", INCLUDE, INCLUDE / "orvane/orvane.h")
    text, count = DECLARED.subn(r"\1 { __builtin_trap(); }", text)
    if count < 700:
        sys.exit(f"only {count} functions found in the headers")
    (folder / "empty.c").write_text(text)
    run(compiler, "-std=c11", "-w", "-g", "-O0", "-fPIC", "-shared", "empty.c", "-o", "liborvane.so", cwd=folder)
    run("abidw", "--no-show-locs", "--no-comp-dir-path", "--no-corpus-path", "--no-elf-needed", "--out-file", "now.abi",
        "liborvane.so", cwd=folder)
    return folder / "now.abi"


def main():
    if not shutil.which("abidw"):
        sys.exit(77)
    with tempfile.TemporaryDirectory(prefix="orvane-abi-") as folder:
        now = interface(pathlib.Path(folder))
        if sys.argv[1:] == ["--write"]:
            shutil.copy(now, KEPT)
        compared = subprocess.run(["abidiff", "--no-added-syms", KEPT, now], capture_output=True, text=True)
        print(compared.stdout + compared.stderr, end="")
        sys.exit(compared.returncode != 0)


main()
