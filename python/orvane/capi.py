# SPDX-License-Identifier: Apache-2.0
"""Every exported function of the library, under its own name, as the C headers declare it.

The functions and constants are made from the headers when the package is built; nothing is listed by hand. Of each,
``help(capi.name)`` shows the header's comment. Numbers go in and come out as they are. An array that is read may be
anything that NumPy can make an array of: ``float64`` in C order goes in without a copy, anything else is converted once
or refused. An array that is written must be a NumPy array of the right type in C order. ``None`` is the null pointer.
Handles are opaque pointers, released by :func:`api_FreeHandle` once and never used after that: this layer checks
nothing. The interpreter's lock is released during every call.

>>> from orvane import capi
>>> capi.math_gamma(5.0)
24.0
>>> import numpy as np
>>> y = np.empty(3)
>>> capi.apiFun_calcFun(np.array([0.0, 1.0, 4.0]), 3, y, 147)
>>> y
array([0., 1., 2.])
"""
from __future__ import annotations

from typing import Any, Callable

from ._capi_table import CONSTANTS, FUNCTIONS
from ._core import encode, ffi, fill, lend, lib, text

NAMES: tuple[str, ...] = tuple(FUNCTIONS)
__all__ = [*FUNCTIONS, *CONSTANTS, "NAMES", "ffi", "lib", "text"]


def _argument(function: str, name: str, kind: str) -> str:
    """The Python text that turns one argument into what cffi takes."""
    action, _, element = kind.partition(":")
    where = repr(f"{function}: argument '{name}'")
    if action in ("in", "out"):
        return f"{'_lend' if action == 'in' else '_fill'}({name}, {element!r}, {where})"
    if action == "text":
        return f"_encode({name}, {where})"
    return f"(_null if {name} is None else {name})" if action == "handle" else name


def _function(name: str) -> Callable[..., Any]:
    header, result, parameters, comment = FUNCTIONS[name]
    raw = getattr(lib, name)
    names = ", ".join(parameter for parameter, _, _ in parameters)
    values = ", ".join(_argument(name, parameter, kind) for parameter, _, kind in parameters)
    scope = {"_raw": raw, "_lend": lend, "_fill": fill, "_encode": encode, "_null": ffi.NULL}
    exec(f"def {name}({names}): return _raw({values})", scope)
    function: Callable[..., Any] = scope[name]
    signature = ", ".join(f"{ctype} {parameter}" for parameter, ctype, _ in parameters)
    function.__doc__ = f"{result} {name}({signature})    [orvane/{header}]\n\n{comment}"
    function.__module__ = __name__
    return function


def __getattr__(name: str) -> Any:
    if name in FUNCTIONS:
        value: Any = _function(name)
    elif name in CONSTANTS:
        value = CONSTANTS[name]
    else:
        raise AttributeError(f"the library exports no {name!r}")
    globals()[name] = value
    return value


def __dir__() -> list[str]:
    return sorted(__all__)
