# SPDX-License-Identifier: Apache-2.0
"""The loaded library, and the arrays that go into it and come out of it."""
from __future__ import annotations

import os
from typing import Any

from ._cdefs import ffi as ffi

#: The library of the wheel; ORVANE_LIBRARY names another one, such as a build with sanitizers.
LIBRARY = os.environ.get("ORVANE_LIBRARY") or os.path.join(os.path.dirname(__file__), "liborvane.so")
lib: Any = ffi.dlopen(LIBRARY)

_array_types: dict[str, tuple[Any, Any]] = {}


def _array_type(element: str) -> tuple[Any, Any]:
    """cffi's array type and NumPy's dtype of a C element type."""
    found = _array_types.get(element)
    if found is None:
        import numpy

        name = {"double": "float64", "bool": "bool"}.get(element) or element.removesuffix("_t")
        found = _array_types[element] = (ffi.typeof(element + "[]"), numpy.dtype(name))
    return found


def lend(value: Any, element: str, argument: str) -> Any:
    """An array that the library reads, as a pointer: without a copy where dtype and order fit, else converted once."""
    if value is None:
        return ffi.NULL
    if isinstance(value, ffi.CData):
        return value
    if isinstance(value, (bytes, bytearray)) and element == "uint8_t":
        return ffi.from_buffer("uint8_t[]", value)
    import numpy

    ctype, dtype = _array_type(element)
    if not (type(value) is numpy.ndarray and value.dtype == dtype and value.flags.c_contiguous):
        try:
            source = numpy.asarray(value)
        except ValueError as error:
            raise TypeError(f"{argument}: no array of {dtype}: {error}") from None
        whole = source.dtype.kind in "iu" and dtype.kind in "iu" and source.size
        if whole and not (numpy.iinfo(dtype).min <= source.min() and source.max() <= numpy.iinfo(dtype).max):
            raise OverflowError(f"{argument}: {source.ravel()[:4]}... does not fit into {dtype}")
        if not whole and source.size and not numpy.can_cast(source.dtype, dtype, "same_kind"):
            raise TypeError(f"{argument}: an array of {source.dtype} cannot become {dtype} without loss")
        value = numpy.ascontiguousarray(source, dtype)
    return ffi.from_buffer(ctype, value)


def fill(value: Any, element: str, argument: str) -> Any:
    """An array that the library writes, as a pointer: it must fit as it is, as a copy would be lost."""
    if value is None:
        return ffi.NULL
    if isinstance(value, ffi.CData):
        return value
    if isinstance(value, bytearray) and element == "uint8_t":
        return ffi.from_buffer("uint8_t[]", value, require_writable=True)
    import numpy

    ctype, dtype = _array_type(element)
    if type(value) is not numpy.ndarray or value.dtype != dtype:
        kind = f"array of {value.dtype}" if isinstance(value, numpy.ndarray) else type(value).__name__
        raise TypeError(f"{argument}: must be a NumPy array of {dtype}, as results are written into it, not {kind}")
    if not value.flags.c_contiguous or not value.flags.writeable:
        raise ValueError(f"{argument}: must be writable and in C order, as results are written into it")
    return ffi.from_buffer(ctype, value)


def encode(value: Any, argument: str) -> Any:
    """A zero-terminated text: str as UTF-8, bytes as they are."""
    if value is None:
        return ffi.NULL
    if isinstance(value, str):
        value = os.fsencode(value)
    if not isinstance(value, (bytes, ffi.CData)):
        raise TypeError(f"{argument}: must be str or bytes, not {type(value).__name__}")
    if isinstance(value, bytes) and b"\0" in value:
        raise ValueError(f"{argument}: {value!r} has a zero byte")
    return value


def text(pointer: Any, encoding: str = "gbk") -> str:
    """A zero-terminated text of the library; its messages and sheets are in GBK."""
    return "" if pointer == ffi.NULL else bytes(ffi.string(pointer)).decode(encoding, "replace")
