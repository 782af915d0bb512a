# SPDX-License-Identifier: Apache-2.0
"""Smoothers, derivatives of samples, and peaks; the common ones stand in :mod:`orvane.signal`.

>>> from orvane import smoothing
>>> smoothing.smooth([0.0, 0.0, 4.0, 0.0, 0.0], 3, "squared").round(9)
array([0.        , 0.66666667, 2.66666667, 0.66666667, 0.        ])
"""
from __future__ import annotations

from typing import Any, NamedTuple

import numpy as np
from numpy.typing import ArrayLike

from . import capi
from ._check import Floats, integer, matrix, real, vector
from ._core import ffi, lib
from ._handle import ConvergenceError, Handle
from ._run import beside


def _double(array: Floats) -> Any:
    return ffi.from_buffer("double[]", array.reshape(-1))


_SHAPES: dict[str, Any] = {
    "sqrt": lib.filterBySqrtFilter, "squared": lib.filterBySquaredFilter, "rms": lib.filterByMeanSquaredFilter,
}


def smooth(x: ArrayLike, width: int = 5, shape: str = "sqrt") -> Floats:
    """Weighted mean of the window around each sample; the ends repeat beyond the data.

    Parameters
    ----------
    x : array_like
    width : int, optional
    shape : {"sqrt", "squared", "rms"}, optional
        Weights sqrt(h + 1 - abs(k)) or (h + 1 - abs(k))^2 at distance k, h = width // 2; or the root of the mean square of
        the distance from the least value where that is negative, otherwise from 0.

    Returns
    -------
    ndarray

    Examples
    --------
    >>> from orvane import smoothing
    >>> smoothing.smooth([0.0, 0.0, 6.0, 0.0, 0.0], 3, "squared").round(9)
    array([0., 1., 4., 1., 0.])
    """
    if shape not in _SHAPES:
        raise ValueError(f"shape: {shape!r} is none of {', '.join(map(repr, _SHAPES))}")
    values = vector(x, "x")
    out = np.empty(values.size)
    _SHAPES[shape](_double(values), _double(out), values.size, integer(width, "width", 1, 2**31 - 1))
    return out


def radial_smooth(x: ArrayLike, half: int, kind: int = 2, widen: float = 1.0) -> Floats:
    """Mean with the weights of a compactly supported radial function.

    Parameters
    ----------
    x : array_like
    half : int
        Samples on either side.
    kind : int, optional
        1 to 19; 2 is Wendland's (1 - r)^3 (3r + 1), the others stand in ``orvane/smooth.h``.
    widen : float, optional
        r is the distance over half + widen.

    Examples
    --------
    >>> from orvane import smoothing
    >>> smoothing.radial_smooth([0.0, 0.0, 1.0, 0.0, 0.0], 1, 1).round(9)
    array([0.  , 0.25, 0.5 , 0.25, 0.  ])
    """
    values = vector(x, "x")
    out = np.empty(values.size)
    lib.filterByRadialFun(_double(values), _double(out), values.size, integer(half, "half", 0, 2**30),
                          real(widen, "widen", 0.0), integer(kind, "kind", 1, 19))
    return out


def correlate1d(x: ArrayLike, weights: ArrayLike) -> Floats:
    """Sum of each sample's neighbours with weights; the ends repeat beyond the data.

    Examples
    --------
    >>> from orvane import smoothing
    >>> smoothing.correlate1d([0.0, 1.0, 3.0, 3.0], [-1.0, 0.0, 1.0])
    array([1., 3., 2., 0.])
    """
    values, kernel = vector(x, "x"), vector(weights, "weights", least=1)
    out = np.empty(values.size)
    if kernel.size >= values.size:
        raise ValueError(f"weights: must be fewer than x, {values.size}, not {kernel.size}")
    lib.filterByConvFilter(_double(values), _double(out), values.size, _double(kernel), kernel.size)
    return out


def weighted_mean(x: ArrayLike, weights: ArrayLike, *, reflect: bool = False) -> Floats:
    """Weighted mean of each sample's neighbours: over those inside the data, or reflected at its ends.

    Examples
    --------
    >>> from orvane import smoothing
    >>> smoothing.weighted_mean([0.0, 1.0, 3.0], [1.0, 1.0, 1.0]).round(6)
    array([0.5     , 1.333333, 2.      ])
    """
    values, kernel = vector(x, "x"), vector(weights, "weights", least=1)
    out = np.empty(values.size)
    call = lib.data_Smooth1D2 if reflect else lib.data_Smooth1D
    call(_double(values), _double(out), values.size, _double(kernel), kernel.size)
    return out


def local_polynomial(x: ArrayLike, width: int, degree: int, step: int = 1) -> Floats:
    """Least-squares polynomial of the window around every step-th sample, which gives the samples up to the next."""
    values = vector(x, "x")
    out = np.empty(values.size)
    lib.filterByNLSM(_double(values), _double(out), values.size, integer(width, "width", 1, 2**30),
                     integer(degree, "degree", 0, 2**30), integer(step, "step", 1, 2**30))
    return out


def kalman(z: ArrayLike, *, a: float = 1.0, b: float = 0.0, h: float = 1.0, q: float = 1e-3, r: float = 1.0) -> Floats:
    """Scalar Kalman filter of measurements z, from x = 0 and P = 0.

    Parameters
    ----------
    z : array_like
    a, b, h, q, r : float, optional
        ``x = a x + b z, P = a^2 P + q, K = P h/(h^2 P + r), x += K (z - h x), P *= 1 - K h``.

    Examples
    --------
    >>> from orvane import smoothing
    >>> smoothing.kalman([1.0, 1.0], q=1.0, r=1.0).round(9)
    array([0.5, 0.8])
    """
    values = vector(z, "z")
    out = np.empty(values.size)
    lib.filterByEKF(_double(values), _double(out), values.size, *(real(v, n) for v, n in zip((a, b, h, q, r), "abhqr")))
    return out


def limit_jumps(x: ArrayLike, limit: float) -> Floats:
    """Repeats the last accepted sample where a jump is larger than the limit.

    Examples
    --------
    >>> from orvane import smoothing
    >>> smoothing.limit_jumps([0.0, 1.0, 50.0, 2.0], 5.0)
    array([0., 1., 1., 2.])
    """
    values = vector(x, "x")
    out = np.empty(values.size)
    lib.filterByLimitAmpFilter(_double(values), _double(out), values.size, real(limit, "limit"))
    return out


def dead_zone(x: ArrayLike, limit: float, centre: float = 0.0) -> Floats:
    """Sets to the centre what is nearer to it than the limit.

    Examples
    --------
    >>> from orvane import smoothing
    >>> smoothing.dead_zone([-3.0, 0.5, 2.0], 1.0)
    array([-3.,  0.,  2.])
    """
    values = vector(x, "x")
    out = np.empty(values.size)
    lib.filterByHardLimitFilter(_double(values), _double(out), values.size, real(limit, "limit"), real(centre, "centre"))
    return out


def smoothing_line(x: ArrayLike, tolerance: float, degree: int = 3) -> Floats:
    """Line of blended polynomials, from no sample farther away than the tolerance.

    Examples
    --------
    >>> from orvane import smoothing
    >>> x = np.sin(np.arange(100.0) / 9)
    >>> bool(abs(smoothing.smoothing_line(x, 0.01) - x).max() <= 0.01)
    True
    """
    values = vector(x, "x", least=1)
    out = np.empty(values.size)
    degree = integer(degree, "degree", 0, 2**30)
    with Handle(lib.api_SmoothLine_Create(_double(values), values.size, degree, real(tolerance, "tolerance"))) as line:
        lib.api_SmoothLine_GetRes(line.pointer, _double(out))
    return out


def whittaker2d(x: ArrayLike, down: float, along: float) -> Floats:
    """Whittaker's smoothing of a matrix down its columns and along its rows; a negative strength leaves out a direction."""
    table = matrix(x, "x")
    out = np.empty(table.shape)
    rows = ffi.new("double*[]", [_double(row) for row in table])
    lib.api_DataSmooth(ffi.cast("const double* const*", rows), _double(out), real(down, "down"), real(along, "along"),
                       *table.shape)
    return out


def gradient(y: ArrayLike, x: ArrayLike, *, width: int = 5, degree: int | None = None) -> Floats:
    """Derivative of samples at any ascending abscissae.

    Parameters
    ----------
    y, x : array_like
    width, degree : int, optional
        With a degree the least-squares polynomial of so many points around each one is derived, for noisy samples;
        without it the one through five points.

    Examples
    --------
    >>> from orvane import smoothing
    >>> x = np.array([0.0, 1.0, 3.0, 4.0, 6.0])
    >>> smoothing.gradient(x**2, x).round(9)
    array([ 0.,  2.,  6.,  8., 12.])
    """
    values, at = vector(y, "y"), vector(x, "x")
    if values.size != at.size:
        raise ValueError(f"x: must have {values.size} entries, as y, not {at.size}")
    out = np.empty(values.size)
    if degree is None:
        lib.data_calcDataDiffByUnSameDh(_double(at), _double(values), at.size, _double(out))
    else:
        lib.data_calcDataDiffByPiecePoly(_double(at), _double(values), at.size, integer(degree, "degree", 0, 2**30),
                                         integer(width, "width", 1, 2**30), _double(out))
    return out


def hermite_line(x: ArrayLike, left: tuple[float, float, float], right: tuple[float, float, float]) -> Floats:
    """Cubic between two points with given slopes, each (x, y, slope); straight outside.

    Examples
    --------
    >>> from orvane import smoothing
    >>> smoothing.hermite_line([-1.0, 0.5, 2.0], (0.0, 0.0, 0.0), (1.0, 1.0, 0.0))
    array([0. , 0.5, 1. ])
    """
    at = vector(x, "x")
    out = np.empty(at.size)
    lib.data_calcSmoothLineIn2Point(*map(float, left), *map(float, right), _double(at), _double(out), at.size)
    return out


class Peaks(NamedTuple):
    """Peaks over a constant: ``y = offset + sum h exp(-((x - c)/w)^2/2) + sum H/((x - C)^2 + W^2)``."""

    offset: float
    gauss: Floats
    lorentz: Floats
    error: float

    def __call__(self, x: ArrayLike) -> Floats:
        """Values of the model."""
        at = np.asarray(x, np.float64)
        out = np.full(at.shape, self.offset)
        for height, centre, width in self.gauss:
            out += height * np.exp(-(((at - centre) / width) ** 2) / 2)
        for height, centre, width in self.lorentz:
            out += height / ((at - centre) ** 2 + width**2)
        return out


def fit_peaks(x: ArrayLike, y: ArrayLike, count: int, *, starts: int = 32, rounds: int = 8, error: float = 1e-12,
              time: float | None = None) -> Peaks:
    """Fits a sum of Gaussian and Lorentzian peaks over a constant; every split between the two kinds is tried.

    Parameters
    ----------
    x, y : array_like
    count : int
        Peaks in all.
    starts, rounds : int, optional
        Local fits at the same time, and how often they move.
    error : float, optional
        Sum of squares at which a local fit ends.
    time : float, optional
        Seconds after which the search ends.

    Returns
    -------
    Peaks
        ``gauss`` and ``lorentz`` have a row (height, centre, width) for each peak; ``error`` is the sum of squares.

    Examples
    --------
    >>> from orvane import smoothing
    >>> x = np.linspace(0.0, 10.0, 200)
    >>> found = smoothing.fit_peaks(x, 1 + 3 * np.exp(-((x - 4) / 0.5) ** 2 / 2) + 2 / ((x - 7) ** 2 + 0.16), 2)
    >>> bool(abs(found.gauss[0] - [3, 4, 0.5]).max() < 1e-3), bool(abs(found.lorentz[0] - [2, 7, 0.4]).max() < 1e-3)
    (True, True)
    """
    at, values = vector(x, "x", least=3, finite=True), vector(y, "y", finite=True)
    if values.size != at.size:
        raise ValueError(f"y: must have {at.size} entries, as x, not {values.size}")
    size = 1 + 3 * integer(count, "count", 1, 21)
    with Handle(lib.api_ES_Create()) as search:
        pointer = search.pointer
        for column in (at, values):
            lib.api_ES_AddOriginalData(pointer, _double(column), column.size)
        lib.api_ES_SetLimitCondition(pointer, -1.0, 2.0, 0)  # nothing is listed: the best one is wanted
        lib.api_ES_SetBirdParam(pointer, integer(starts, "starts", 1), integer(rounds, "rounds", 1), 0)
        lib.api_ES_SetSolverParam(pointer, 512, 16, 1e-9, real(error, "error"))
        beside(lambda: lib.api_ES_Search(pointer, size, capi.ES_KIND_PEAKS, 0), lambda: lib.api_ES_Stop(pointer),
               seconds=time, title="peaks")
        info = ffi.new("double[7]")
        best = lib.api_ES_GetBestResult(pointer, info)
        if best == ffi.NULL:
            raise ConvergenceError("fit_peaks: no fit was found")
        first, second = np.empty(size + 2), np.empty(size + 2)
        found = lib.api_ES_GetResultForTwoIndex(best, _double(first), ffi.NULL, _double(second), ffi.NULL)
    ends = int(np.argmax(first >= 1e300)) - 1
    return Peaks(float(first[ends]), _positive(first[:ends]), _positive(second[:found]), float(info[5]))


def _positive(triples: Floats) -> Floats:
    rows: Floats = triples.reshape(-1, 3).copy()
    rows[:, 2] = np.abs(rows[:, 2])
    return rows
