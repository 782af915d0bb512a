# SPDX-License-Identifier: Apache-2.0
"""Orvane: special functions, symbols, distributions, optimisers, learning, signals, linear algebra.

Each family is a module, loaded when it is first used::

    from orvane import special, sym, distributions, stats, optimize, learn, signal, linalg, integrate
    from orvane import highprecision, geo, spatial, distributed

:mod:`orvane.capi` has every function of the library as the C headers declare it.
"""
from __future__ import annotations

from typing import Any

_MODULES = (
    "capi", "special", "sym", "distributions", "stats", "optimize", "learn", "signal", "linalg", "integrate",
    "smoothing", "highprecision", "geo", "spatial", "mesh", "stock", "distributed",
)
__all__ = [*_MODULES, "ClosedError", "ConvergenceError"]


def __getattr__(name: str) -> Any:
    import importlib

    if name in _MODULES:
        return importlib.import_module(f"{__name__}.{name}")
    if name in ("ClosedError", "ConvergenceError"):
        return getattr(importlib.import_module(f"{__name__}._handle"), name)
    if name == "__version__":
        from importlib.metadata import version

        return version("orvane")
    raise AttributeError(f"module 'orvane' has no attribute {name!r}")


def __dir__() -> list[str]:
    return sorted([*__all__, "__version__"])
