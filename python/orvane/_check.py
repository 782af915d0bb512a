# SPDX-License-Identifier: Apache-2.0
"""Arguments of the idiomatic modules: brought to their form, or refused with name and value."""
from __future__ import annotations

import operator
from typing import Any, Mapping, TypeVar

import numpy as np
from numpy.typing import ArrayLike, NDArray

Floats = NDArray[np.float64]
_T = TypeVar("_T")


def shown(value: object) -> str:
    """A value for a message, cut to one line."""
    text = " ".join(repr(value).split())
    return text if len(text) <= 80 else text[:77] + "..."


def floats(value: ArrayLike, name: str) -> Floats:
    """Any real array as float64 in C order; the array itself where it is one."""
    if type(value) is np.ndarray and value.dtype == np.float64 and value.flags.c_contiguous:
        return value
    try:
        array = np.asarray(value)
    except ValueError:
        raise ValueError(f"{name}: rows of different lengths in {shown(value)}") from None
    if array.dtype.kind not in "bifu":
        raise TypeError(f"{name}: must be real numbers, not {shown(value)} of type {array.dtype}")
    return np.require(array, np.float64, "C")


def vector(value: ArrayLike, name: str, *, least: int = 0, length: int | None = None, finite: bool = False) -> Floats:
    """A one-dimensional array; a scalar counts as one entry."""
    array = floats(value, name)
    if array.ndim == 0:
        array = array.reshape(1)
    if array.ndim != 1:
        raise ValueError(f"{name}: must have one dimension, not the shape {array.shape}")
    if length is not None and array.size != length:
        raise ValueError(f"{name}: must have {length} entries, not {array.size}")
    if array.size < least:
        raise ValueError(f"{name}: must have at least {least} entries, not {array.size}")
    if finite and not np.isfinite(array).all():
        place = int(np.flatnonzero(~np.isfinite(array))[0])
        raise ValueError(f"{name}: entry {place} is {array[place]}")
    return array


def matrix(value: ArrayLike, name: str, *, square: bool = False, columns: int | None = None) -> Floats:
    """A two-dimensional array."""
    array = floats(value, name)
    if array.ndim != 2:
        raise ValueError(f"{name}: must have two dimensions, not the shape {array.shape}")
    if square and array.shape[0] != array.shape[1]:
        raise ValueError(f"{name}: must be square, not of the shape {array.shape}")
    if columns is not None and array.shape[1] != columns:
        raise ValueError(f"{name}: must have {columns} columns, not {array.shape[1]}")
    return array


def integer(value: Any, name: str, least: int | None = None, most: int | None = None) -> int:
    """An integer within limits."""
    try:
        number = operator.index(value)
    except TypeError:
        raise TypeError(f"{name}: must be an integer, not {shown(value)}") from None
    if (least is not None and number < least) or (most is not None and number > most):
        low, high = "" if least is None else f" at least {least}", "" if most is None else f" at most {most}"
        raise ValueError(f"{name}: must be{low}{' and' if low and high else ''}{high}, not {number}")
    return number


def real(value: Any, name: str, above: float | None = None) -> float:
    """A real number, above a limit."""
    try:
        number = float(value)
    except (TypeError, ValueError):
        raise TypeError(f"{name}: must be a real number, not {shown(value)}") from None
    if above is not None and not number > above:
        raise ValueError(f"{name}: must be above {above}, not {number}")
    return number


def choice(value: Any, name: str, table: Mapping[str, _T]) -> _T:
    """The entry of a table under a name."""
    try:
        return table[value]
    except (KeyError, TypeError):
        raise ValueError(f"{name}: {shown(value)} is none of {', '.join(map(repr, table))}") from None
