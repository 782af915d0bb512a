#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes the Python declarations of every exported function from the public C headers.

usage: make_capi.py HEADER_DIR OUTPUT_DIR

Three files come out, none of which is kept in the repository:
  _cdefs.py       cffi's parsed declarations (out of line, ABI mode), so that an import parses no C
  _capi_table.py  of each function its header, result, parameters and comment; the constants
  capi.pyi        the types, for mypy and pyright
"""
from __future__ import annotations

import keyword
import re
import sys
from pathlib import Path
from typing import NamedTuple

import cffi
from pycparser import c_ast, c_generator, c_parser

# The numeric arrays that NumPy can lend without a copy: C element type -> dtype.
DTYPES = {
    "double": "float64", "int32_t": "int32", "uint32_t": "uint32", "int64_t": "int64", "uint64_t": "uint64",
    "uint8_t": "uint8", "uint16_t": "uint16", "bool": "bool",
}
INTEGERS = {"int8_t", "uint8_t", "int16_t", "uint16_t", "int32_t", "uint32_t", "int64_t", "uint64_t", "size_t", "int"}
FIXED_TYPES = "".join(f"typedef int {name};\n" for name in sorted(INTEGERS - {"int"})) + "typedef int bool;\n"


class Parameter(NamedTuple):
    name: str
    ctype: str
    kind: str  # number, in:TYPE, out:TYPE, text, handle


class Function(NamedTuple):
    name: str
    header: str
    result: str
    parameters: list[Parameter]
    comment: str


def without_comments(text: str) -> str:
    """The text with blanks in place of comments and of preprocessor lines, line by line where it was."""
    text = re.sub(r"/\*.*?\*/|//[^\n]*", lambda m: re.sub(r"[^\n]", " ", m[0]), text, flags=re.S)
    return re.sub(r"^[ \t]*#[^\n]*(\\\n[^\n]*)*", "", text, flags=re.M).replace("ORVANE_API", "          ")


def comments_by_end(text: str) -> list[tuple[int, str]]:
    """The documentation comments with the line on which each ends."""
    found = []
    for match in re.finditer(r"/\*\*(?!<)(.*?)\*/", text, flags=re.S):
        lines = [re.sub(r"^\s*\* ?", "", line).rstrip() for line in match[1].strip().split("\n")]
        found.append((text.count("\n", 0, match.end()) + 1, "\n".join(lines)))
    return found


def kind_of(ctype: str, handles: set[str]) -> str:
    bare = ctype.replace("const ", "").strip()
    if not bare.endswith("*"):
        return "handle" if bare in handles else "number"
    element = bare[:-1].strip()
    if element in DTYPES:
        return ("in:" if ctype.startswith("const ") else "out:") + element
    if ctype.replace(" ", "") == "constchar*":
        return "text"
    return "handle"


def type_text(node: c_ast.Node) -> str:
    text = c_generator.CGenerator().visit(node)
    return re.sub(r"\s*\*", "*", text).strip()


def functions_of(path: Path, known: str, callbacks: set[str]) -> tuple[list[Function], set[str]]:
    source = path.read_text()
    plain = without_comments(source)
    offset = known.count("\n")
    tree = c_parser.CParser().parse(known + plain, path.name)
    comments = dict(comments_by_end(source))
    functions = []
    for node in tree.ext:
        if isinstance(node, c_ast.Typedef) and node.coord.line > offset and isinstance(node.type, c_ast.PtrDecl):
            callbacks.add(node.name)
        if not (isinstance(node, c_ast.Decl) and isinstance(node.type, c_ast.FuncDecl)):
            continue
        if node.coord.line <= offset:
            continue
        parameters = []
        for parameter in node.type.args.params if node.type.args else []:
            if parameter.name is None:  # (void)
                continue
            name = parameter.name + "_" * keyword.iskeyword(parameter.name)
            ctype = type_text(without_name(parameter.type))
            parameters.append(Parameter(name, ctype, kind_of(ctype, callbacks)))
        result = type_text(without_name(node.type.type))
        line = source.count("\n", 0, re.search(rf"ORVANE_API\b[^;(]*\b{node.name}\s*\(", source).start()) + 1
        functions.append(Function(node.name, path.name, result, parameters, comments.get(line - 1, "")))
    return functions, callbacks


def without_name(node: c_ast.Node) -> c_ast.Node:
    inner = node
    while not isinstance(inner, c_ast.TypeDecl):
        inner = inner.type
    inner.declname = None
    return node


def all_of(headers: Path) -> tuple[list[Function], str, list[str]]:
    """The functions of all headers, their C text without comments, and the names of the structs."""
    texts, order, seen = [], [], set()

    def visit(path: Path) -> None:  # in the order of inclusion
        if path.name in seen or path.name == "export.h":
            return
        seen.add(path.name)
        for name in re.findall(r"#include <orvane/(\w+\.h)>", path.read_text()):
            visit(headers / name)
        order.append(path)

    for path in sorted(headers.glob("*.h")):
        visit(path)
    functions: list[Function] = []
    callbacks: set[str] = set()
    known = FIXED_TYPES
    for path in order:
        found, callbacks = functions_of(path, known, callbacks)
        functions += found
        plain = without_comments(path.read_text())
        texts.append(plain)
        known += plain + "\n"
    text = "\n".join(texts)
    structs = sorted(set(re.findall(r"typedef struct (\w+)", text)))
    return sorted(functions), text, structs


def constants_of(ffi: cffi.FFI) -> dict[str, int]:
    return {
        name.split(" ", 1)[1]: value
        for name, (value, _) in ffi._parser._declarations.items()
        if name.startswith("constant ")
    } | dict(ffi._parser._int_constants)


def python_type(parameter: Parameter) -> str:
    if parameter.kind == "number":
        bare = parameter.ctype.replace("const ", "")
        return "bool" if bare == "bool" else "int" if bare in INTEGERS else "float"
    if parameter.kind.startswith("in:"):
        return "ArrayLike | Pointer | None"
    if parameter.kind.startswith("out:"):
        return "NDArray[Any] | Pointer | None"
    return "str | bytes | Pointer | None" if parameter.kind == "text" else "Pointer | None"


def stub(functions: list[Function], constants: dict[str, int]) -> str:
    lines = [
        '"""Types of orvane.capi; written by make_capi.py."""', "from typing import Any, TypeAlias", "",
        "from numpy.typing import ArrayLike, NDArray", "", "Pointer: TypeAlias = Any", "ffi: Any", "lib: Any",
        "NAMES: tuple[str, ...]", "def text(pointer: Pointer, encoding: str = ...) -> str: ...",
    ]
    lines += [f"{name}: int" for name in sorted(constants)]
    for function in functions:
        result = {"void": "None", "bool": "bool", "double": "float"}.get(function.result)
        result = result or ("int" if function.result in INTEGERS else "Pointer")
        arguments = ", ".join(f"{p.name}: {python_type(p)}" for p in function.parameters)
        lines.append(f"def {function.name}({arguments}) -> {result}: ...")
    return "\n".join(lines) + "\n"


def main() -> None:
    if len(sys.argv) != 3 or sys.argv[1].startswith("-"):
        sys.exit(__doc__.split("\n\n")[1] if "-h" in sys.argv[1:] else "usage: make_capi.py HEADER_DIR OUTPUT_DIR")
    headers, output = Path(sys.argv[1]), Path(sys.argv[2])
    output.mkdir(parents=True, exist_ok=True)
    functions, text, _ = all_of(headers)
    ffi = cffi.FFI()
    ffi.cdef(text)
    ffi.set_source("orvane._cdefs", None)
    ffi.emit_python_code(str(output / "_cdefs.py"))
    constants = constants_of(ffi)
    rows = ["# Written by make_capi.py from the public headers.", "FUNCTIONS = {"]
    for f in functions:
        parameters = tuple(tuple(p) for p in f.parameters)
        rows.append(f"    {f.name!r}: ({f.header!r}, {f.result!r}, {parameters!r}, {f.comment!r}),")
    rows += ["}", f"CONSTANTS = {dict(sorted(constants.items()))!r}", ""]
    (output / "_capi_table.py").write_text("\n".join(rows))
    (output / "capi.pyi").write_text(stub(functions, constants))
    print(f"make_capi: {len(functions)} functions, {len(constants)} constants")


if __name__ == "__main__":
    main()
