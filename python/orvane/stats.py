# SPDX-License-Identifier: Apache-2.0
"""Samples: moments, order, tests with named results, and 31 families with quantiles.

>>> from orvane import stats
>>> found = stats.shapiro([2.1, 1.9, 2.4, 2.0, 2.2, 1.8])
>>> round(found.statistic, 4), found.pvalue > 0.05
(0.9826, True)
"""
from __future__ import annotations

from typing import Any, NamedTuple, Union

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._check import Floats, floats, integer, shown, vector
from ._core import ffi, lib
from ._handle import Handle
from .distributions import Law

#: Families by name: the code of the C header and the number of parameters.
FAMILIES: dict[str, tuple[int, int]] = {
    "beta": (1, 2), "burr": (3, 2), "cauchy": (5, 2), "chi2": (7, 1), "expon": (11, 1), "foldnorm": (13, 2),
    "frechet": (15, 3), "gamma": (17, 2), "gompertz": (19, 2), "gumbel": (23, 2), "halfnorm": (25, 1),
    "invchi2": (27, 1), "invgamma": (29, 2), "invgauss": (31, 2), "invuniform": (33, 2), "laplace": (35, 2),
    "levy": (37, 2), "logcauchy": (39, 2), "logistic": (41, 2), "loglogistic": (43, 2), "lognorm": (45, 2),
    "lomax": (47, 2), "maxwell": (49, 1), "norm": (51, 2), "pareto": (53, 2), "qexpon": (55, 2), "rayleigh": (59, 1),
    "shifted_loglogistic": (61, 3), "uniform": (65, 2), "weibull": (67, 2), "poisson": (69, 1),
}


def _double(array: Floats) -> Any:
    return ffi.from_buffer("double[]", array)


class TestResult(NamedTuple):
    """Statistic and p value of a test."""

    statistic: float
    pvalue: float


class ShapiroResult(NamedTuple):
    """Shapiro-Wilk test: statistic, p value, and the law of the transformed statistic under normality."""

    statistic: float
    pvalue: float
    mean: float
    deviation: float


class Description(NamedTuple):
    """Moments of a sample."""

    nobs: int
    minmax: tuple[float, float]
    mean: float
    std: float
    median: float
    skewness: float
    kurtosis: float


class QQPoints(NamedTuple):
    """Points of a normal quantile plot."""

    values: Floats
    empirical: Floats
    normal: Floats


class Family(Handle):
    """One of the 31 families with parameters: distribution function and quantiles.

    Parameters
    ----------
    name : str
        A name of `FAMILIES`.
    *parameters : float
        As the header orvane/statistics.h tells them, in its order a, b, c.

    Examples
    --------
    >>> from orvane import stats
    >>> round(stats.Family("norm", 0.0, 1.0).ppf(0.975), 6)
    1.959964
    """

    __slots__ = ("name", "parameters", "_code")

    def __init__(self, name: str, *parameters: float) -> None:
        if name not in FAMILIES:
            raise ValueError(f"name: {shown(name)} is none of {', '.join(FAMILIES)}")
        self._code, count = FAMILIES[name]
        values = vector(parameters, "parameters")
        if values.size != count:
            raise ValueError(f"parameters: {name} has {count}, not {values.size}: {shown(parameters)}")
        super().__init__(lib.stat_CreateSBD(ffi.NULL, 0), lib.stat_Free)
        self.name, self.parameters = name, tuple(values.tolist())
        lib.stat_SetParam(self.pointer, _double(values), values.size)

    def __repr__(self) -> str:
        return f"Family({self.name!r}, {', '.join(f'{value:g}' for value in self.parameters)})"

    def __reduce__(self) -> tuple[Any, ...]:
        return Family, (self.name, *self.parameters)

    def _values(self, call: Any, x: ArrayLike, name: str) -> Any:
        points = floats(x, name)
        out = np.empty(points.shape)
        call(self.pointer, self._code, _double(points.reshape(-1)), _double(out.reshape(-1)), points.size)
        return float(out) if points.ndim == 0 else out

    def cdf(self, x: ArrayLike) -> Any:
        """P(X <= x)."""
        return self._values(lib.stat_calcFun, x, "x")

    def sf(self, x: ArrayLike) -> Any:
        """1 - cdf(x), with the absolute error of cdf."""
        return 1.0 - self.cdf(x)

    def ppf(self, q: ArrayLike) -> Any:
        """Least x with cdf(x) >= q; NaN outside [0, 1]."""
        return self._values(lib.stat_calcInvCDFFun, q, "q")

    def median(self) -> float:
        """ppf(0.5)."""
        return float(self.ppf(0.5))

    def interval(self, confidence: float) -> tuple[float, float]:
        """Ends of the central interval of this probability."""
        low, high = self.ppf([(1 - confidence) / 2, (1 + confidence) / 2])
        return float(low), float(high)

    def rvs(self, size: int | tuple[int, ...] | None = None, random_state: Any = None) -> Any:
        """Random draws by the quantile function."""
        return self.ppf(np.random.default_rng(random_state).random(size))


def describe(x: ArrayLike) -> Description:
    """Moments and median of a sample.

    Parameters
    ----------
    x : array_like

    Returns
    -------
    Description
        The deviation has the divisor n - 1; the median is the upper one of two middle values; the kurtosis of a normal
        law is 3.

    Examples
    --------
    >>> from orvane import stats
    >>> stats.describe([1.0, 2.0, 3.0, 4.0]).mean
    2.5
    """
    values = vector(x, "x", least=1)
    pointer, n = _double(values), values.size
    return Description(
        n, (float(values.min()), float(values.max())), lib.data_calcDataMean(pointer, n), lib.data_calcDataStd(pointer, n),
        lib.data_calcDataMedian(pointer, n), lib.data_calcDataSkewness(pointer, n), lib.data_calcDataKurtosis(pointer, n),
    )


def shapiro(x: ArrayLike, exact: bool = False) -> ShapiroResult:
    """Shapiro-Wilk test for normality (Royston 1995), good for 3 to 5,000 values.

    Parameters
    ----------
    x : array_like
    exact : bool, optional
        The weights are the normal scores themselves: Shapiro and Francia's statistic.

    Returns
    -------
    ShapiroResult

    Examples
    --------
    >>> from orvane import stats
    >>> stats.shapiro([1.0, 2.0, 3.0, 50.0]).pvalue < 0.05
    True
    """
    values = vector(x, "x", least=3)
    out = np.empty(4)
    pointers = [ffi.from_buffer("double[]", out[i : i + 1]) for i in range(4)]
    lib.data_normTestByShapiroWilk(_double(values), values.size, *pointers, bool(exact))
    return ShapiroResult(*out.tolist())


def jarque_bera(x: ArrayLike) -> TestResult:
    """Jarque-Bera test for normality; the factor n/6 is cut to an integer.

    Examples
    --------
    >>> from orvane import stats
    >>> stats.jarque_bera(np.arange(100.0)).pvalue < 0.1
    True
    """
    values = vector(x, "x", least=3)
    p = float(lib.data_normTestByJarqueBera(_double(values), values.size))
    skewness = lib.data_calcDataSkewness(_double(values), values.size)
    kurtosis = lib.data_calcDataKurtosis(_double(values), values.size)
    return TestResult(values.size // 6 * (skewness**2 + (kurtosis - 3) ** 2 / 4), p)


def anderson_normal(x: ArrayLike) -> float:
    """p value of the Anderson-Darling test for normality.

    Examples
    --------
    >>> from orvane import stats
    >>> stats.anderson_normal(np.arange(50.0) ** 3) < 0.001
    True
    """
    values = vector(x, "x", least=3)
    return float(lib.data_normTestByAndersonDarling(_double(values), values.size))


def kstest(x: ArrayLike, law: Union[Family, Law, str], *parameters: float) -> TestResult:
    """Kolmogorov-Smirnov test of a sample against a law with its parameters.

    Parameters
    ----------
    x : array_like
    law : Family, Law or str
        A name of `FAMILIES` goes with parameters.

    Returns
    -------
    TestResult

    Examples
    --------
    >>> from orvane import stats
    >>> stats.kstest([0.1, 0.4, 0.7], "uniform", 0.0, 1.0).statistic < 0.31
    True
    """
    values = np.sort(vector(x, "x", least=3))
    reference = Family(law, *parameters) if isinstance(law, str) else law
    below = np.clip(reference.cdf(values), 0.0, 1.0)
    steps = np.arange(values.size + 1) / values.size
    statistic = max((steps[1:] - below).max(), (below - steps[:-1]).max())
    with Family("uniform", 0.0, 1.0) as uniform:
        p = lib.stat_testByKSForData(uniform.pointer, FAMILIES["uniform"][0], _double(below), below.size)
    return TestResult(float(statistic), float(p))


def anderson(x: ArrayLike, law: Union[Family, Law, str], *parameters: float) -> TestResult:
    """Anderson-Darling test of a sample against a law with its parameters.

    Parameters
    ----------
    x : array_like
    law : Family, Law or str
        A name of `FAMILIES` goes with parameters.

    Returns
    -------
    TestResult
        The p value is that for a normal law whose mean and deviation come from the sample, whatever the law is.

    Examples
    --------
    >>> from orvane import stats
    >>> round(stats.anderson([-1.0, 0.0, 1.0], "norm", 0.0, 1.0).statistic, 6)
    0.189488
    """
    values = np.sort(vector(x, "x", least=3))
    reference = Family(law, *parameters) if isinstance(law, str) else law
    below = np.clip(reference.cdf(values), 0.0, 1.0)
    weights = (2 * np.arange(values.size) + 1) / values.size
    with np.errstate(divide="ignore", invalid="ignore"):
        statistic = -values.size - float((weights * (np.log(below) + np.log1p(-below[::-1]))).sum())
    with Family("uniform", 0.0, 1.0) as uniform:
        p = lib.stat_testByADForData(uniform.pointer, FAMILIES["uniform"][0], _double(below), below.size)
    return TestResult(statistic, float(p))


def ks_2samp(x: ArrayLike, y: ArrayLike) -> TestResult:
    """Kolmogorov-Smirnov test of two samples, by the law of one sample of nx ny/(nx + ny) values.

    Examples
    --------
    >>> from orvane import stats
    >>> stats.ks_2samp(np.arange(50.0), np.arange(50.0) + 40).pvalue < 1e-6
    True
    """
    first, second = np.sort(vector(x, "x", least=3)), np.sort(vector(y, "y", least=3))
    both = np.concatenate([first, second])
    gap = np.searchsorted(first, both, "right") / first.size - np.searchsorted(second, both, "right") / second.size
    p = lib.data_twoTestByKolmogorovSmirnov(_double(first), first.size, _double(second), second.size)
    return TestResult(float(np.abs(gap).max()), float(p))


def normal_quantiles(x: ArrayLike) -> QQPoints:
    """Points of a normal quantile plot: distinct values, their empirical and their normal probability."""
    values = vector(x, "x", least=2)
    outs = [np.empty(values.size) for _ in range(3)]
    count = lib.data_normQQData(_double(values), values.size, *map(_double, outs))
    return QQPoints(*(out[:count].copy() for out in outs))


def histogram(x: ArrayLike, segments: int) -> tuple[Floats, Floats]:
    """Centres and counts of equal segments from the least to the greatest value.

    Examples
    --------
    >>> from orvane import stats
    >>> stats.histogram([0.0, 1.0, 1.2, 2.0], 2)[1]
    array([1., 3.])
    """
    values = vector(x, "x", least=1)
    centres, counts = (np.empty(integer(segments, "segments", 1)) for _ in range(2))
    lib.data_segmentCount(_double(values), values.size, segments, _double(centres), _double(counts))
    return centres, counts


def circmean(angles: ArrayLike) -> float:
    """Mean of angles in radians where the circle is cut so that they lie closest together.

    Examples
    --------
    >>> from orvane import stats
    >>> round(stats.circmean([0.1, 2 * np.pi - 0.1]), 6) in (0.0, 6.283185)
    True
    """
    values = vector(angles, "angles", least=1)
    return float(lib.data_calcMeanAngle(_double(values), values.size))


def rank_order(x: ArrayLike, ascending: bool = True) -> tuple[Floats, NDArray[np.uint32]]:
    """Sorted values and where they stood; NaN come last."""
    values = vector(x, "x").copy()
    places = np.empty(values.size, np.uint32)
    lib.data_sort(_double(values), values.size, ffi.from_buffer("uint32_t[]", places), bool(ascending))
    return values, places
