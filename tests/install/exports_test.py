#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Holds the dynamic symbols of the library against the functions that the public headers declare.

usage: exports_test.py LIBRARY INCLUDE_DIR
"""
import pathlib
import re
import subprocess
import sys

library, include = sys.argv[1], pathlib.Path(sys.argv[2])
declared = set()
for header in include.glob("*.h"):
    code = re.sub(r"/\*.*?\*/", "", header.read_text(), flags=re.S)
    code = re.sub(r"^\s*#.*(\\\n.*)*$", "", code, flags=re.M)
    for name in re.findall(r"\bORVANE_API\b[^;(]*?(\w+)\s*\(", code):
        if name in declared:
            sys.exit(f"{name} is declared twice")
        declared.add(name)
listing = subprocess.run(["nm", "-D", "--defined-only", library], capture_output=True, text=True, check=True).stdout
symbols = [line.split() for line in listing.splitlines()]
shown = {words[-1].split("@")[0] for words in symbols if words[-2] != "A"}  # an absolute one is the version node itself
nodes = {words[-1] for words in symbols if words[-2] == "A"}
unversioned = [words[-1] for words in symbols if words[-2] != "A" and words[-1].split("@")[-1] not in nodes]
if len(nodes) != 1 or unversioned:
    sys.exit(f"nodes {sorted(nodes)}, without one: {unversioned[:5]}")
if not declared:
    sys.exit(f"no declarations in {include}")
for name in sorted(declared - shown):
    print(f"declared, but not in the library: {name}")
for name in sorted(shown - declared):
    print(f"in the library, but not declared: {name}")
print(f"{len(declared)} functions declared, {len(shown)} shown")
sys.exit(declared != shown)
