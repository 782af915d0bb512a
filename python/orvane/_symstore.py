# SPDX-License-Identifier: Apache-2.0
"""The store of expressions behind :mod:`orvane.sym`: its lock, its matrices, and trees of nodes.

The library keeps all expressions in one store without a lock. Every call on it is made under `LOCK`. A matrix that
Python has dropped is only noted, and released by the next call, as a garbage collector may run at any moment.
"""
from __future__ import annotations

import math
import struct
import threading
from collections import deque
from typing import Any, NamedTuple

import numpy as np

from ._capi_table import CONSTANTS
from ._core import ffi, lib

LOCK = threading.RLock()
_dropped: deque[Any] = deque()

NUMBER, VARIABLE, ADD, MUL, POW = 0, 1, 2, 3, 5

#: Kinds by their number of arguments, fewest and most; every other one takes one argument.
ARITY: dict[str, tuple[int, int]] = {"ELLIPTIC_E": (1, 2), "EXP_INTEGRAL": (1, 2), "ELLIPTIC_PI": (2, 3), "POW": (2, 2)}
for _count, _names in {
    2: "AGM ANGER_J BESSEL_I BESSEL_J BESSEL_K BESSEL_Y BETA BOSE_EINSTEIN CLAUSEN_C CLAUSEN_S ELLIPTIC_BULIRSCH_EL1 "
       "ELLIPTIC_F ELLIPTIC_RC ELLIPTIC_RE ELLIPTIC_RK FERMI_DIRAC HURWITZ_ZETA HYPERGEOMETRIC_0F1 INCOMPLETE_GAMMA "
       "JACOBIAN_AMP JACOBIAN_CN JACOBIAN_DN JACOBIAN_SN JACOBI_THETA1 JACOBI_THETA2 JACOBI_THETA3 JACOBI_THETA4 "
       "JACOBI_ZETA PARABOLIC_CYLINDER_D PARABOLIC_CYLINDER_U PARABOLIC_CYLINDER_V POLYGAMMA POLY_LOG STRUVE_H "
       "STRUVE_L VOIGT_DIFF_KX VOIGT_DIFF_KY VOIGT_DIFF_LX VOIGT_DIFF_LY VOIGT_FUN_K VOIGT_FUN_L WEBER_E",
    3: "CON_SELECT ELLIPTIC_BULIRSCH_EL3 ELLIPTIC_RD ELLIPTIC_RF ELLIPTIC_RG ELLIPTIC_RM HYPERGEOMETRIC_1F1 "
       "HYPERGEOMETRIC_U INVERSE_BETA WHITTAKER_M WHITTAKER_W WRIGHT_BESSEL",
    4: "ELLIPTIC_BULIRSCH_CEL ELLIPTIC_BULIRSCH_EL2 ELLIPTIC_RJ HYPERGEOMETRIC_2F1",
}.items():
    ARITY.update(dict.fromkeys(_names.split(), (_count, _count)))


def kinds() -> dict[str, tuple[int, int, int]]:
    """Every kind that is a function: its code and its fewest and most arguments, by its name in lower case."""
    prefix = "ORVANE_KIND_"
    structure = {"NUMBER", "VARIABLE", "ADD", "MUL", "SUBTRACT", "DIVIDE"}
    names = [name[len(prefix) :] for name in CONSTANTS if name.startswith(prefix)]
    return {
        name.lower(): (CONSTANTS[prefix + name], *ARITY.get(name, (1, 1))) for name in names if name not in structure
    }


class Node(NamedTuple):
    """A node as it stands in the store's block: coefficient times kind of its arguments."""

    kind: int
    coef: float
    name: str
    args: tuple["Node", ...]


def own(matrix: Any) -> Any:
    """A matrix that the store releases when Python drops it."""
    return ffi.gc(matrix, _dropped.append)


def tidy() -> None:
    """Releases what was dropped; the lock is held."""
    while _dropped:
        lib.sym_freeMatrix2d(_dropped.popleft())


def live_matrices() -> int:
    """Number of matrices in the store, for tests of leaks."""
    with LOCK:
        tidy()
        return struct.unpack_from("<I", block(), _after_symbols(block())[0])[0]  # type: ignore[no-any-return]


def block() -> bytes:
    """The store's block; the lock is held."""
    out = bytearray(lib.sym_write())
    lib.sym_getDataStr(ffi.from_buffer("uint8_t[]", out))
    return bytes(out)


def _after_symbols(data: bytes) -> tuple[int, list[str]]:
    (count,) = struct.unpack_from("<I", data)
    at, names = 4, []
    for _ in range(count):
        (length,) = struct.unpack_from("<I", data, at + 8)
        names.append(data[at + 12 : at + 12 + length].decode())
        at += 12 + length
    return at, names


def _read_node(data: bytes, at: int, names: list[str]) -> tuple[Node, int]:
    # Preorder without recursion: deep trees are usual.
    open_nodes: list[tuple[int, float, int, list[Node]]] = []
    while True:
        kind, coef = struct.unpack_from("<Bd", data, at)
        at += 9
        if kind in (NUMBER, VARIABLE):
            name = ""
            if kind == VARIABLE:
                name = names[struct.unpack_from("<i", data, at)[0]]
                at += 4
            node = Node(kind, coef, name, ())
        else:
            (count,) = struct.unpack_from("<I", data, at)
            at += 4
            if count:
                open_nodes.append((kind, coef, count, []))
                continue
            node = Node(kind, coef, "", ())
        while open_nodes:
            kind, coef, count, args = open_nodes[-1]
            args.append(node)
            if len(args) < count:
                break
            open_nodes.pop()
            node = Node(kind, coef, "", tuple(args))
        else:
            return node, at


def read(data: bytes, place: int) -> list[list[Node]]:
    """The elements of one matrix of a block."""
    at, names = _after_symbols(data)
    (count,) = struct.unpack_from("<I", data, at)
    if not 0 <= place < count:
        raise ValueError(f"the block has no matrix {place}")
    at += 4
    for current in range(place + 1):
        rows, cols = struct.unpack_from("<II", data, at)
        at += 8
        elements = []
        for _ in range(rows):
            row = []
            for _ in range(cols):
                node, at = _read_node(data, at, names)
                row.append(node)
            elements.append(row)
    return elements


def trees(matrix: Any) -> list[list[Node]]:
    """The elements of a matrix as trees."""
    with LOCK:
        tidy()
        data = block()
        return read(data, lib.sym_getMatrixID(matrix))


def alone(elements: list[list[Node]]) -> bytes:
    """A block with one matrix and the variables that it names."""
    names: dict[str, int] = {}
    body = bytearray(struct.pack("<II", len(elements), len(elements[0]) if elements else 0))
    for row in elements:
        for element in row:
            pending = [element]
            while pending:
                node = pending.pop()
                body += struct.pack("<Bd", node.kind, node.coef)
                if node.kind == VARIABLE:
                    body += struct.pack("<i", names.setdefault(node.name, len(names)))
                elif node.kind != NUMBER:
                    body += struct.pack("<I", len(node.args))
                    pending.extend(reversed(node.args))
    head = bytearray(struct.pack("<I", len(names)))
    for name in names:
        text = name.encode()
        head += struct.pack("<dI", 0.0, len(text)) + text
    return bytes(head + struct.pack("<I", 1) + body)


def build(root: Node) -> Any:
    """A node of the store for a tree; the lock is held. The caller puts it into a matrix before the next clearing."""
    made: list[Any] = []
    pending: list[tuple[Node, bool]] = [(root, False)]
    while pending:
        node, ready = pending.pop()
        if node.kind == NUMBER:
            made.append(lib.sym_createDouble(node.coef))
        elif node.kind == VARIABLE:
            made.append(_times(node.coef, lib.sym_createBaseSymVar(node.name.encode())))
        elif ready:
            count = len(node.args)
            args = made[len(made) - count :]
            del made[len(made) - count :]
            made.append(_times(node.coef, lib.sym_funMulParam(args, count, node.kind)))
        else:
            pending.append((node, True))
            pending.extend((arg, False) for arg in reversed(node.args))
    return made[0]


def _times(coef: float, node: Any) -> Any:
    return node if coef == 1.0 else lib.sym_funTwoParam(lib.sym_createDouble(coef), node, MUL)


def build_matrix(elements: list[list[Node]]) -> Any:
    """An owned matrix of trees."""
    with LOCK:
        tidy()
        matrix = own(lib.sym_createSymMatrix(len(elements), len(elements[0]) if elements else 0))
        for i, row in enumerate(elements):
            for j, element in enumerate(row):
                lib.sym_setSymMatrixData(matrix, i, j, build(element))
        lib.sym_clearTempVar()
        return matrix


def number(value: float) -> Any:
    """An owned 1-by-1 matrix of a number."""
    with LOCK:
        tidy()
        return own(lib.sym_fromMatrix2dDouble(ffi.from_buffer("double[]", np.array([value])), 1, 1))


def variables_of(node: Node) -> set[str]:
    """Names in a tree."""
    found, pending = set(), [node]
    while pending:
        current = pending.pop()
        if current.kind == VARIABLE:
            found.add(current.name)
        pending.extend(current.args)
    return found


def replaced(root: Node, values: dict[str, Node]) -> Node:
    """The tree with variables replaced."""
    if root.kind == VARIABLE and root.name in values:
        found = values[root.name]
        return found if root.coef == 1.0 else Node(MUL, root.coef, "", (found,))
    if not root.args:
        return root
    return root._replace(args=tuple(replaced(arg, values) for arg in root.args))


def text_of(call: Any, matrix: Any, *place: int) -> str:
    """Text by the two-call pattern; the lock is held."""
    length = call(matrix, *place, ffi.NULL, 0)
    if length in (0, 0xFFFFFFFF):
        return ""
    out = ffi.new("char[]", length)
    call(matrix, *place, out, length)
    return bytes(ffi.buffer(out, length)).decode("gbk" if call is lib.sym_getLatexStr else "utf-8", "replace")


def finite(value: float, name: str) -> float:
    """A float that is no NaN."""
    number = float(value)
    if math.isnan(number):
        raise ValueError(f"{name}: must not be NaN")
    return number
