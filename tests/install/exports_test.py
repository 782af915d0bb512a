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
shown = {line.split()[-1].split("@")[0] for line in listing.splitlines()}
if not declared:
    sys.exit(f"no declarations in {include}")
for name in sorted(declared - shown):
    print(f"declared, but not in the library: {name}")
for name in sorted(shown - declared):
    print(f"in the library, but not declared: {name}")
print(f"{len(declared)} functions declared, {len(shown)} shown")
sys.exit(declared != shown)
