# SPDX-License-Identifier: Apache-2.0
"""Functions over arrays: broadcasting, loops inside the library, docstrings. :mod:`orvane.special` is made of them."""
from __future__ import annotations

from typing import Any, Callable

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._check import Floats, floats
from ._core import ffi, lib

_CHUNK = 1 << 30  # the array functions count in 32 bits
_Kernel = Callable[[list[Floats], Floats], None]
_RESULT = "float or ndarray"
#: Docstrings with examples, which doctest tries.
EXAMPLES: dict[str, str] = {}


def _pointer(array: Floats) -> Any:
    return ffi.from_buffer("double[]", array)


def _by_one(code: int) -> _Kernel:
    def kernel(arguments: list[Floats], out: Floats) -> None:
        source = arguments[0]
        for i in range(0, out.size, _CHUNK):
            part, target = source[i : i + _CHUNK], out[i : i + _CHUNK]
            lib.apiFun_calcFun(_pointer(part), part.size, _pointer(target), code)

    return kernel


def _by_two(code: int, swapped: bool) -> _Kernel:
    def kernel(arguments: list[Floats], out: Floats) -> None:
        a, b = arguments[::-1] if swapped else arguments
        for i in range(0, out.size, _CHUNK):
            target = out[i : i + _CHUNK]
            first = a if a.size == 1 else a[i : i + _CHUNK]
            second = b if b.size == 1 else b[i : i + _CHUNK]
            lib.apiFun_calcFun2(
                _pointer(first), first.size, _pointer(second), second.size, _pointer(target), code
            )

    return kernel


def _by_each(raw: Callable[..., float]) -> _Kernel:
    def kernel(arguments: list[Floats], out: Floats) -> None:
        columns = [a.tolist() if a.size == out.size else a.tolist() * out.size for a in arguments]
        out[:] = np.fromiter(map(raw, *columns), np.float64, out.size)

    return kernel


class Function:
    """A special function that broadcasts over arrays."""

    def __init__(self, name: str, arguments: str, raw: Callable[..., float], kernel: _Kernel | None = None) -> None:
        self.__name__ = name
        self.arguments = arguments.split()
        self._raw = raw
        self._kernel = kernel or _by_each(raw)

    def __repr__(self) -> str:
        return f"<function orvane.special.{self.__name__}({', '.join(self.arguments)})>"

    def __call__(self, *values: ArrayLike, out: Floats | None = None) -> Any:
        if len(values) != len(self.arguments):
            raise TypeError(f"{self.__name__}({', '.join(self.arguments)}) takes {len(self.arguments)} arguments")
        if out is None:
            for value in values:
                if type(value) is not float and type(value) is not int:
                    break
            else:
                return self._raw(*values)
        return self._over_arrays(values, out)

    def _over_arrays(self, values: tuple[ArrayLike, ...], out: Floats | None) -> Any:
        arrays = [floats(value, f"{self.__name__}: {name}") for value, name in zip(values, self.arguments)]
        try:
            shape = np.broadcast_shapes(*[a.shape for a in arrays])
        except ValueError:
            shapes = ", ".join(f"{name} {a.shape}" for name, a in zip(self.arguments, arrays))
            raise ValueError(f"{self.__name__}: shapes do not go together: {shapes}") from None
        flat = [
            a.reshape(-1) if a.shape == shape or a.size == 1 else np.ascontiguousarray(np.broadcast_to(a, shape)).ravel()
            for a in arrays
        ]
        if out is None:
            result: NDArray[np.float64] = np.empty(shape)
        elif type(out) is np.ndarray and out.dtype == np.float64 and out.flags.c_contiguous and out.shape == shape:
            result = out
        else:
            raise ValueError(f"{self.__name__}: out: must be a float64 array in C order of the shape {shape}")
        if result.size:
            self._kernel(flat, result.reshape(-1))
        return float(result) if shape == () and out is None else result


def _export(name: str) -> Callable[..., float]:
    found: Callable[..., float] = getattr(lib, "math_" + name)
    return found


def _document(function: Function, summary: str, example: str, value: str) -> Function:
    parameters = "\n".join(f"{name} : array_like" for name in function.arguments)
    text = f"{summary}\n\nParameters\n----------\n{parameters}\n\nReturns\n-------\n{_RESULT}\n"
    if example:
        text += f"\nExamples\n--------\n>>> from orvane import special\n>>> {example}\n{value}\n"
        EXAMPLES[function.__name__] = text
    function.__doc__ = text
    return function


def _make(name: str, export: str, arguments: str, summary: str, code: int = -1, swapped: bool = False,
          example: str = "", value: str = "") -> Function:
    raw = _export(export)
    kernel = None
    if code >= 0:
        kernel = _by_one(code) if len(arguments.split()) == 1 else _by_two(code, swapped)
    if swapped:
        return _document(Function(name, arguments, lambda a, b: raw(b, a), kernel), summary, example, value)
    return _document(Function(name, arguments, raw, kernel), summary, example, value)


def _own(name: str, arguments: str, summary: str, raw: Callable[..., float], kernel: _Kernel | None = None,
         example: str = "", value: str = "") -> Function:
    return _document(Function(name, arguments, raw, kernel), summary, example, value)
