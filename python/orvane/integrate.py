# SPDX-License-Identifier: Apache-2.0
"""Quadrature of functions and samples, ordinary differential equations.

A Python function is called by the library on the caller's thread; an exception in it ends the computation and is
raised in the caller, and Ctrl-C is one.

>>> from orvane import integrate
>>> round(integrate.quad(lambda x: x * x, 0.0, 3.0), 9)
9.0
"""
from __future__ import annotations

from typing import Any, Callable, NamedTuple

import numpy as np
from numpy.typing import ArrayLike

from ._callback import Guarded
from ._check import Floats, choice, integer, real, vector
from ._core import ffi, lib

_RULES = {"trapezoid": 0, "simpson": 1, "spline": 2}


def quad(f: Callable[[float], float], a: float, b: float, *, limit: int = 0) -> float:
    """Integral of a function, by adaptive Gauss-Legendre panels; either limit may be infinite.

    Parameters
    ----------
    f : callable
        Function of one float.
    a, b : float
        Limits.
    limit : int, optional
        Intervals at most; 0 means 1,000,000.

    Returns
    -------
    float
        NaN for a NaN of the function, 1e300 where a panel passes 1e10, as at a pole.

    Examples
    --------
    >>> import math
    >>> from orvane import integrate
    >>> round(integrate.quad(lambda x: math.exp(-x), 0.0, math.inf), 9)
    1.0
    """
    if not callable(f):
        raise TypeError(f"f: must be callable, not {f!r}")
    callback = Guarded("double(double)", f, float("nan"))
    value = float(lib.math_Integral1D(callback.pointer, real(a, "a"), real(b, "b"), integer(limit, "limit", 0, 10**9)))
    callback.check()
    return value


def cumulative(y: ArrayLike, dx: float = 1.0, rule: str = "simpson") -> Floats:
    """Running integral of evenly spaced samples, 0 at the first.

    Parameters
    ----------
    y : array_like
    dx : float, optional
        Distance of neighbours.
    rule : {"simpson", "trapezoid", "spline"}, optional

    Returns
    -------
    ndarray

    Examples
    --------
    >>> from orvane import integrate
    >>> integrate.cumulative([0.0, 1.0, 2.0], rule="trapezoid")
    array([0. , 0.5, 2. ])
    """
    values = vector(y, "y")
    out = np.empty(values.size)
    code = choice(rule, "rule", _RULES)
    lib.data_Integral(ffi.from_buffer("double[]", values), ffi.from_buffer("double[]", out), real(dx, "dx"), out.size, code)
    return out


class OdeResult(NamedTuple):
    """Positions and states: y[i] belongs to t[i]."""

    t: Floats
    y: Floats


def solve_ode(
    f: Callable[[float, Floats], ArrayLike], t0: float, y0: ArrayLike, t: ArrayLike, *, tolerance: float = 1e-9
) -> OdeResult:
    """Solves dy/dt = f(t, y), y(t0) = y0, by the Runge-Kutta-Fehlberg formulas of orders 4 and 5.

    Parameters
    ----------
    f : callable
        f(t, y) gives the derivatives; y is only to be read, and only during the call.
    t0 : float
    y0 : array_like
        State at t0.
    t : array_like
        Positions of the solution, on either side of t0.
    tolerance : float, optional
        Absolute error of a step. The step goes down to 5e-7 and no further: a stiff problem takes long.

    Returns
    -------
    OdeResult

    Examples
    --------
    >>> from orvane import integrate
    >>> integrate.solve_ode(lambda t, y: -y, 0.0, [1.0], [1.0, 2.0]).y.round(8)
    array([[0.36787944],
           [0.13533528]])
    """
    state, positions = vector(y0, "y0", least=1), vector(t, "t")
    n = state.size

    def derivatives(at: float, y: Any, dy: Any) -> None:
        values = np.asarray(f(at, np.frombuffer(ffi.buffer(y, 8 * n))), np.float64)
        if values.shape != (n,):
            raise ValueError(f"f: must give {n} derivatives, not the shape {values.shape}")
        np.frombuffer(ffi.buffer(dy, 8 * n))[:] = values

    def nothing(at: float, y: Any, dy: Any) -> None:
        np.frombuffer(ffi.buffer(dy, 8 * n))[:] = 0.0  # the remaining steps are free and wide

    callback = Guarded("void(double, double*, double*)", derivatives)
    callback.idle = nothing
    out = np.empty((positions.size, n))
    double = "double[]"
    lib.math_SolveODE45(
        callback.pointer, real(t0, "t0"), ffi.from_buffer(double, state), n, ffi.from_buffer(double, positions),
        ffi.from_buffer(double, out), positions.size, real(tolerance, "tolerance", 0.0),
    )
    callback.check()
    return OdeResult(positions, out)


def _equation(call: Any, kernel: Any, free: Any, ends: tuple[float, ...], x: ArrayLike) -> Floats:
    from . import _symstore as store
    from . import sym

    parts = []
    for expression, name, known in ((kernel, "kernel", {"x", "t"}), (free, "free", {"x"})):
        made = expression if isinstance(expression, sym.Expression) else sym.Expression(expression)
        if set(made.variables) - known:
            raise ValueError(f"{name}: may have the variables {', '.join(sorted(known))}, not {', '.join(made.variables)}")
        parts.append(made)
    points = vector(x, "x")
    out = np.empty(points.size)
    with store.LOCK:
        store.tidy()
        for variable in (b"x", b"t"):
            lib.sym_createBaseSymVar(variable)
        call(parts[0]._matrix, parts[1]._matrix, *ends, ffi.from_buffer("double[]", points),
             ffi.from_buffer("double[]", out), out.size)
        lib.sym_clearTempVar()
    return out


def fredholm(kernel: Any, free: Any, a: float, b: float, x: ArrayLike) -> Floats:
    """Solves y(x) = free(x) + integral from a to b of kernel(x, t) y(t) dt.

    Parameters
    ----------
    kernel, free : orvane.sym.Expression or float
        In the variables ``x`` and ``t``, and ``x``.
    a, b : float
    x : array_like
        Where the solution is wanted.

    Examples
    --------
    >>> from orvane import integrate, sym
    >>> x, t = sym.symbols("x t")
    >>> integrate.fredholm(x * t, 2 * x / 3, 0.0, 1.0, [0.5, 1.0]).round(9)
    array([0.5, 1. ])
    """
    return _equation(lib.sym_integralEquByFredholm, kernel, free, (real(a, "a"), real(b, "b")), x)


def volterra(kernel: Any, free: Any, a: float, x: ArrayLike) -> Floats:
    """Solves y(x) = free(x) + integral from a to x of kernel(x, t) y(t) dt; arguments as of :func:`fredholm`.

    Examples
    --------
    >>> from orvane import integrate
    >>> integrate.volterra(1.0, 1.0, 0.0, [1.0]).round(9)  # y' = y
    array([2.71828183])
    """
    return _equation(lib.sym_integralEquByVolterra, kernel, free, (real(a, "a"),), x)
