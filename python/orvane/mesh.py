# SPDX-License-Identifier: Apache-2.0
"""The two-dimensional mesh of the process: nodes and elements by id, the nearest node, the part in view, files.

There is one mesh. Nodes or elements that were added are part of ranges, views and searches after :func:`build`. All
functions are to be called from one thread at a time.

>>> from orvane import mesh
>>> mesh.clear()
>>> mesh.add_nodes([1, 2, 3], [[0.0, 0.0], [1.0, 0.0], [0.0, 1.0]])
>>> mesh.add_element(7, [1, 2, 3])
>>> mesh.build()
>>> mesh.nearest(0.9, 0.2)[0], mesh.elements()
(2, {7: [1, 2, 3]})
"""
from __future__ import annotations

import os
from typing import Any, Sequence, Union

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._check import Floats, integer, matrix, real, shown
from ._core import encode, ffi, lib

Ids = NDArray[np.int32]
Path = Union[str, "os.PathLike[str]"]


def _int(array: Ids) -> Any:
    return ffi.from_buffer("int32_t[]", array)


def _ids(values: ArrayLike, name: str) -> Ids:
    found = np.atleast_1d(np.asarray(values))
    if found.ndim != 1 or found.dtype.kind not in "iu":
        raise TypeError(f"{name}: must be integers in a row, not {shown(values)}")
    if found.size and not (-(2**31) <= found.min() and found.max() < 2**31):
        raise OverflowError(f"{name}: {shown(values)} does not fit into 32 bits")
    return np.ascontiguousarray(found, np.int32)


def add_nodes(ids: ArrayLike, xy: ArrayLike) -> None:
    """Adds nodes: an id and a row (x, y) each."""
    names, places = _ids(ids, "ids"), matrix(xy, "xy", columns=2)
    if len(places) != names.size:
        raise ValueError(f"xy: must have {names.size} rows, as ids, not {len(places)}")
    for name, (x, y) in zip(names.tolist(), places.tolist()):
        if not lib.mesh2D_addNode(name, x, y):
            raise ValueError(f"ids: there is a node {name} already")


def add_element(id: int, nodes: Sequence[int]) -> None:
    """Adds an element of nodes, which may be added later."""
    names = _ids(nodes, "nodes")
    if not lib.mesh2D_addElement(integer(id, "id", -(2**31), 2**31 - 1), _int(names), names.size):
        raise ValueError(f"id: there is an element {id} already")


def nodes() -> tuple[Ids, Floats]:
    """Ids of all nodes, ascending, and a row (x, y) each."""
    names = np.empty(lib.mesh2D_getNodeSize(), np.int32)
    lib.mesh2D_getAllNodeID(_int(names))
    return names, positions(names)


def positions(ids: ArrayLike) -> Floats:
    """A row (x, y) for each id.

    Examples
    --------
    >>> from orvane import mesh
    >>> mesh.positions([-5])
    Traceback (most recent call last):
    KeyError: 'ids: -5 is no node'
    """
    names = _ids(ids, "ids")
    out = np.empty((names.size, 2))
    if not lib.mesh2D_getNodePosition(_int(names), names.size, ffi.from_buffer("double[]", out)):
        for name in names.tolist():
            if not lib.mesh2D_getNodePosition(ffi.new("int32_t*", name), 1, ffi.new("double[2]")):
                raise KeyError(f"ids: {name} is no node")
    return out


def elements() -> dict[int, list[int]]:
    """Node ids of all elements, ascending by the elements' ids."""
    names = np.empty(lib.mesh2D_getElementSize(), np.int32)
    lib.mesh2D_getAllElementID(_int(names))
    found = {}
    for name in names.tolist():
        parts = np.empty(lib.mesh2D_getElementNodeID(name, ffi.NULL), np.int32)
        lib.mesh2D_getElementNodeID(name, _int(parts))
        found[name] = parts.tolist()
    return found


def build() -> None:
    """Takes in what was added: the range, all nodes in view, the grid of the nearest ones."""
    lib.mesh2D_initBuild()


def _box(call: Any) -> tuple[float, float, float, float]:
    out = ffi.new("double[4]")
    call(out, out + 1, out + 2, out + 3)
    return tuple(out)


def bounds() -> tuple[float, float, float, float]:
    """Least and greatest x, least and greatest y of all nodes at the last build."""
    return _box(lib.mesh2D_getRange)


def view() -> tuple[float, float, float, float]:
    """The box of the nodes in view, as :func:`bounds`."""
    return _box(lib.mesh2D_getCurrentRange)


def set_view(xmin: float, xmax: float, ymin: float, ymax: float) -> None:
    """Sets the box of the nodes in view; its edges belong to it."""
    ends = zip((xmin, xmax, ymin, ymax), ("xmin", "xmax", "ymin", "ymax"))
    lib.mesh2D_setCurrentRange(*(real(value, name) for value, name in ends))


def in_view() -> Floats:
    """A row (x, y) for each node in view, ascending by id."""
    count = lib.mesh2D_getSortNodePosition(ffi.NULL, ffi.NULL)
    columns = np.empty((2, count))
    lib.mesh2D_getSortNodePosition(*(ffi.from_buffer("double[]", column) for column in columns))
    return np.ascontiguousarray(columns.T)


def places(ids: ArrayLike) -> Ids:
    """Places of nodes among those in view, as for an index buffer."""
    names = _ids(ids, "ids")
    out = np.empty(names.size, np.int32)
    if not lib.mesh2D_getNodeIndex(_int(names), names.size, _int(out)):
        raise KeyError(f"ids: not all of {shown(ids)} are in view")
    return out


def nearest(x: float, y: float) -> tuple[int, float]:
    """The node in view nearest to a place, and its distance.

    Examples
    --------
    >>> from orvane import mesh
    >>> mesh.clear()
    >>> mesh.add_nodes([4], [[3.0, 4.0]])
    >>> mesh.build()
    >>> mesh.nearest(0.0, 0.0)
    (4, 5.0)
    """
    if not lib.mesh2D_getSortNodePosition(ffi.NULL, ffi.NULL):
        raise ValueError("nearest: no node is in view; build() takes in what was added")
    distance = ffi.new("double*")
    found = lib.mesh2D_findNearestNodeID(real(x, "x"), real(y, "y"), distance)
    return int(found), float(distance[0])


def load(node_file: Path, element_file: Path | None = None, *, nodes_per_element: int = 3, skip: int = 1) -> None:
    """Adds nodes ("id, x, y" a line) and elements ("id, node, node, ...") of files, and builds. A failure empties the mesh.

    Parameters
    ----------
    node_file, element_file : path
    nodes_per_element : int, optional
    skip : int, optional
        Lines in front; :func:`save` writes one.
    """
    most, before = 2**31 - 1, integer(skip, "skip", 0, 2**31 - 1)
    if not lib.mesh2D_loadNode(encode(os.fspath(node_file), "node_file"), before, most):
        raise OSError(f"node_file: {node_file} cannot be read, or has a node that is there already")
    if element_file is not None and not lib.mesh2D_loadElement(
            encode(os.fspath(element_file), "element_file"), before, most, integer(nodes_per_element, "nodes_per_element", 1)):
        raise OSError(f"element_file: {element_file} cannot be read, or a line of it is wrong")
    build()


def save(node_file: Path, element_file: Path | None = None) -> None:
    """Writes the nodes, and the elements, as :func:`load` reads them."""
    if not lib.mesh2D_saveNode(encode(os.fspath(node_file), "node_file")):
        raise OSError(f"node_file: {node_file} cannot be written, or there is no node")
    if element_file is not None and not lib.mesh2D_saveElement(encode(os.fspath(element_file), "element_file")):
        raise OSError(f"element_file: {element_file} cannot be written, or there is no element")


def clear() -> None:
    """Removes all nodes and elements."""
    lib.mesh2D_loadNode(b"", 0, 0)  # a file that cannot be read empties the mesh
    build()
