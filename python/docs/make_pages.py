#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes the pages that come from the package itself: modules, tables of functions, what no module reaches, the gallery.

usage: make_pages.py FOLDER

The gallery runs python/examples in FOLDER and shows their words and pictures. The papers on accuracy and speed are copied.
"""
import importlib
import inspect
import pathlib
import re
import shutil
import subprocess
import sys

import orvane
from orvane import capi, special
from orvane._capi_table import FUNCTIONS

ROOT = pathlib.Path(__file__).resolve().parents[1]


def table(head: list[str], rows: list[list[str]]) -> str:
    lines = [".. list-table::", "   :header-rows: 1", ""]
    for row in [head, *rows]:
        lines += [f"   {'*' if place == 0 else ' '} - {cell}" for place, cell in enumerate(row)]
    return "\n".join(lines) + "\n"


def unreached() -> list[str]:
    """Exports that the sources of the idiomatic modules name nowhere."""
    sources = pathlib.Path(orvane.__file__).parent.glob("*.py")
    text = "\n".join(path.read_text() for path in sources if path.name not in ("_capi_table.py", "_cdefs.py", "capi.py"))
    used = set(re.findall(r"\b(?:lib|capi)\.(\w+)", text)) | {
        "math_" + name for name in re.findall(r'_(?:make|export|polynomial)\(\s*"[^"]*",\s*"(\w+)"', text)}
    used |= {"math_" + name for name in re.findall(r'_export\("(\w+)"\)', text)}
    used |= {"math_" + name for pair in re.findall(r'_zeros\(nt, \("(\w+)", "(\w+)"\)', text) for name in pair}
    return [name for name in capi.NAMES if name not in used]


def gallery(folder: pathlib.Path) -> str:
    parts = ["Gallery", "=======", "", "Programs of ``python/examples``, run when these pages were made.", ""]
    for script in sorted((ROOT / "examples").glob("*.py")):
        words = subprocess.run([sys.executable, str(script)], cwd=folder, capture_output=True, text=True, check=True).stdout
        title = re.search(r'"""(.*?)"""', script.read_text(), re.S)[1].strip()
        parts += [script.stem, "-" * len(script.stem), "", title, ""]
        if (folder / f"{script.stem}.svg").exists():
            parts += [f".. image:: {script.stem}.svg", ""]
        parts += [".. code-block:: text", "", *("   " + line for line in words.splitlines()), ""]
        parts += [".. code-block:: python", "", *("   " + line for line in script.read_text().splitlines()), ""]
    return "\n".join(parts)


def public(module: object) -> dict[str, object]:
    """Functions and classes of a module in the order of its source."""
    found = {name: thing for name, thing in vars(module).items()
             if not name.startswith("_") and inspect.getmodule(thing) is module and callable(thing)}
    return dict(sorted(found.items(), key=lambda item: inspect.getsourcelines(item[1])[1]))


def modules(folder: pathlib.Path) -> None:
    """A page for each module, with a table of what it has, and a table of all modules."""
    (folder / "module").mkdir(exist_ok=True)
    rows = []
    for name in orvane._MODULES:
        module = importlib.import_module("orvane." + name)
        page = name if name in ("special", "capi") else "module/" + name
        rows.append([f":doc:`orvane.{name} </{page}>`", module.__doc__.split("\n")[0]])
        if page == name:
            continue
        title = "orvane." + name
        lines = [[f":{'class' if inspect.isclass(thing) else 'func'}:`~orvane.{name}.{what}`", (thing.__doc__ or "").split("\n")[0]]
                 for what, thing in public(module).items()]
        (folder / "module" / f"{name}.rst").write_text(
            f"{title}\n{'=' * len(title)}\n\n" + table(["name", "what it is"], lines) + f"\n.. automodule:: {title}\n")
    (folder / "module_table.inc").write_text(table(["module", "what it has"], rows))


def papers(folder: pathlib.Path) -> None:
    """The papers with figures, from docs/ and bench/."""
    (folder / "paper" / "bench").mkdir(parents=True, exist_ok=True)
    for name in ("accuracy", "scaling", "overheads"):
        shutil.copy(ROOT.parent / f"docs/{name}.md", folder / "paper")
    for path in (ROOT.parent / "bench").glob("*.md"):
        if path.stem != "README":
            shutil.copy(path, folder / "paper" / "bench")


def main() -> None:
    if len(sys.argv) != 2:
        sys.exit("usage: make_pages.py FOLDER")
    folder = pathlib.Path(sys.argv[1])
    rows = [[f"``{name}({', '.join(f.arguments)})``", f.__doc__.split("\n")[0].replace("|", r"\|")]
            for name, f in sorted(vars(special).items()) if isinstance(f, special.Function) and not name.startswith("_")]
    (folder / "special_table.inc").write_text(table(["function", "what it is"], rows))
    missing = set(unreached())
    rows = [[f"``{name}``", f"`{header} <../{header.replace('_', '__').replace('.', '_8')}.html>`__", "" if name in missing else "yes"]
            for name, (header, _, _, _) in FUNCTIONS.items()]
    words = f"{len(rows) - len(missing)} of {len(rows)} functions are behind an idiomatic module too.\n\n"
    (folder / "capi_table.inc").write_text(words + table(["function", "header", "in an idiomatic module"], rows))
    modules(folder)
    papers(folder)
    (folder / "gallery.rst").write_text(gallery(folder))
    (folder / "unreached.txt").write_text("\n".join(sorted(missing)) + "\n")


if __name__ == "__main__":
    main()
