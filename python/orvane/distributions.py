# SPDX-License-Identifier: Apache-2.0
"""Probability laws, and their fit to a sample.

A :class:`Law` is one of 57 families, or one of five generalisations of each, with its parameters; it behaves like a
frozen distribution of ``scipy.stats``. :func:`fit` searches the parameters of many families for a sample and ranks them.

>>> from orvane import distributions
>>> law = distributions.Law("Normal", 100, 15)
>>> law.cdf([70.0, 100.0, 130.0]).round(4)
array([0.0228, 0.5   , 0.9772])
>>> round(law.ppf(0.975), 6)
129.39946
"""
from __future__ import annotations

import time as _time
from typing import Any, Iterable, NamedTuple, Sequence

import numpy as np
from numpy.typing import ArrayLike, NDArray

from . import capi
from ._check import Floats, choice, floats, integer, real, shown, vector
from ._core import ffi, lib, text
from ._handle import ConvergenceError, Handle
from ._run import FINISHED, INTERRUPTED, OUT_OF_TIME, beside

#: Kinds of solver for :func:`fit`, as in :func:`orvane.optimize.minimize`.
SOLVERS = {
    "auto": 0, "lg": 1, "lg2": 2, "gto": 3, "run": 4, "sc": 5, "sc-walk": 6, "swo": 7, "swo-flag": 8, "iswo": 9,
    "ins": 10,
}
_COUNTS = {"Bernoulli", "Binomial", "Logarithmic", "Poisson"}  # families of counts
_NO_FIT = 1e300


def _double(array: Floats) -> Any:
    return ffi.from_buffer("double[]", array)


def names(generalised: bool = False) -> list[str]:
    """Names of the families.

    Parameters
    ----------
    generalised : bool, optional
        Also those of the five generalisations of each.

    Returns
    -------
    list of str

    Examples
    --------
    >>> from orvane import distributions
    >>> len(distributions.names()), len(distributions.names(generalised=True))
    (57, 342)
    """
    codes = np.empty(lib.pdf_getAllPDFFun(ffi.NULL, 0), np.int32)
    capi.pdf_getAllPDFFun(codes, codes.size)
    found = []
    for code in codes.tolist():
        if generalised or code < 10000:
            with Handle(lib.pdf_initPDFFun(code)) as handle:
                found.append(text(lib.pdf_getName(handle.pointer)))
    return found


class Law(Handle):
    """A distribution with its parameters.

    Parameters
    ----------
    family : str or int
        Name, such as "Normal" or "GenExp-Normal"; case and blanks do not matter. Or the code of the C header.
    *parameters : float
        All parameters in the order of the family's sheet (:meth:`latex`); none takes the defaults.

    Examples
    --------
    >>> from orvane.distributions import Law
    >>> with Law("Exponential") as law:
    ...     print(law, round(law.cdf(1.0), 6))
    Law('Exponential', 1, 0) 0.632121

    Notes
    -----
    The values are the library's own, whose oddities of single families are kept: the two ends of "Uniform" are
    exchanged, the distribution functions of "Chi", "SymGenNormal" and "StudentsT" do not run from 0 to 1 everywhere.
    For those families :class:`orvane.stats.Family` or a generalisation serves.
    """

    __slots__ = ()

    def __init__(self, family: str | int, *parameters: float) -> None:
        if isinstance(family, str):
            made = capi.pdf_initPDFFunByName(family.encode("ascii", "replace"))
        else:
            made = lib.pdf_initPDFFun(integer(family, "family", 0, 2**31 - 1))
        if made == ffi.NULL:
            raise ValueError(f"family: {shown(family)} is no distribution; orvane.distributions.names() lists them")
        super().__init__(made)
        if parameters:
            self.parameters = parameters

    @property
    def name(self) -> str:
        """Name of the family."""
        return text(lib.pdf_getName(self.pointer))

    @property
    def code(self) -> int:
        """Code of the family in the C headers."""
        return int(lib.pdf_getType(self.pointer))

    @property
    def discrete(self) -> bool:
        """Whether the law is one of counts."""
        return self.name.split("-", 1)[-1] in _COUNTS

    @property
    def parameters(self) -> tuple[float, ...]:
        """The parameters; they may be set."""
        out = np.empty(lib.pdf_getParam(self.pointer, ffi.NULL, 0))
        lib.pdf_getParam(self.pointer, _double(out), out.size)
        return tuple(out.tolist())

    @parameters.setter
    def parameters(self, values: Sequence[float]) -> None:
        count = lib.pdf_getParam(self.pointer, ffi.NULL, 0)
        array = vector(values, "parameters")
        if array.size != count:
            raise ValueError(f"parameters: {self.name} has {count}, not {array.size}: {shown(tuple(values))}")
        lib.pdf_setParam(self.pointer, _double(array), array.size)

    def __repr__(self) -> str:
        if self.closed:
            return "<closed Law>"
        return f"Law({self.name!r}, {', '.join(f'{value:.6g}' for value in self.parameters)})"

    def __reduce__(self) -> tuple[Any, ...]:
        return _remade, (self.name, self.parameters)

    def latex(self) -> str:
        """LaTeX sheet of the family: density, distribution function, moments, range of the parameters."""
        return text(lib.pdf_getLatexExpress(self.pointer))

    def _values(self, call: Any, x: ArrayLike, name: str = "x") -> Any:
        points = floats(x, name)
        out = np.empty(points.shape)
        if points.size:
            call(self.pointer, _double(points.reshape(-1)), _double(out.reshape(-1)), points.size)
        return float(out) if points.ndim == 0 else out

    def pdf(self, x: ArrayLike) -> Any:
        """Density; for counts the probability at the nearest integer."""
        return self._values(lib.pdf_calcPDF, x)

    pmf = pdf

    def logpdf(self, x: ArrayLike) -> Any:
        """Logarithm of the density."""
        with np.errstate(divide="ignore"):
            value = np.log(self.pdf(x))
        return float(value) if np.ndim(value) == 0 else value

    def cdf(self, x: ArrayLike) -> Any:
        """P(X <= x)."""
        return self._values(lib.pdf_calcCDF, x)

    def sf(self, x: ArrayLike) -> Any:
        """1 - cdf(x), with the absolute error of cdf."""
        return 1.0 - self.cdf(x)

    def ppf(self, q: ArrayLike) -> Any:
        """Least x with cdf(x) >= q, by bisection to rounding; NaN outside [0, 1].

        Examples
        --------
        >>> from orvane.distributions import Law
        >>> Law("Normal", 0.0, 1.0).ppf([0.0, 0.5, 1.0]).tolist()
        [-inf, 0.0, inf]
        """
        probabilities = floats(q, "q")
        out = self._quantiles(probabilities.reshape(-1)).reshape(probabilities.shape)
        return float(out) if out.ndim == 0 else out

    def _quantiles(self, q: Floats) -> Floats:
        inside = (q > 0) & (q < 1)
        wanted = np.where(inside, q, 0.5)
        low, high = self._bracket(float(wanted.min(initial=0.5)), float(wanted.max(initial=0.5)))
        lows, highs = np.full(q.shape, low), np.full(q.shape, high)
        for _ in range(2100):
            middle = 0.5 * lows + 0.5 * highs
            open_ = (lows < middle) & (middle < highs)
            if not open_.any():
                break
            below = self.cdf(middle) < wanted
            lows = np.where(open_ & below, middle, lows)
            highs = np.where(open_ & ~below, middle, highs)
        out = np.where(inside, np.round(highs) if self.discrete else highs, np.nan)
        if (~inside).any():
            start, end = self.support()
            out = np.where(q == 0, start - self.discrete, np.where(q == 1, end, out))
        # Beside zero the distribution function stands still for less than its rounding.
        scale = np.abs(out[np.isfinite(out)]).max(initial=1.0)
        return np.where(np.abs(out) < 1e-15 * min(scale, 1.0), 0.0, out)

    def _bracket(self, least: float, most: float) -> tuple[float, float]:
        low, high = -1.0, 1.0
        while not self.cdf(low) < least and low > -1e300:
            low *= 16.0
        while not self.cdf(high) >= most and high < 1e300:
            high *= 16.0
        return low, high

    def support(self) -> tuple[float, float]:
        """Ends of the support, where the density leaves 0 as more than underflow."""
        ends = []
        for q, side in ((5e-324, -1.0), (1.0, 1.0)):
            low, high = self._bracket(5e-324, 1.0)
            for _ in range(2100):
                middle = 0.5 * low + 0.5 * high
                if not low < middle < high:
                    break
                low, high = (low, middle) if self.cdf(middle) >= q else (middle, high)
            end = float(np.round(high)) if self.discrete else high
            step = 1e-9 * max(1.0, abs(end)) if not self.discrete else 1.0
            outside, inside = self.pdf(end + side * step), self.pdf(end - (0.0 if self.discrete else side * step))
            genuine = outside == 0.0 and inside > 1e-290 and abs(end) < 1e290
            ends.append((0.0 if abs(end) < 1e-300 else end) if genuine else side * float("inf"))
        return ends[0], ends[1]

    def isf(self, q: ArrayLike) -> Any:
        """ppf(1 - q)."""
        return self.ppf(1.0 - floats(q, "q"))

    def median(self) -> float:
        """ppf(0.5)."""
        return float(self.ppf(0.5))

    def interval(self, confidence: float) -> tuple[float, float]:
        """Ends of the central interval of this probability."""
        share = real(confidence, "confidence")
        return float(self.ppf((1 - share) / 2)), float(self.ppf((1 + share) / 2))

    def rvs(self, size: int | tuple[int, ...] | None = None, random_state: Any = None) -> Any:
        """Random draws by the quantile function.

        Parameters
        ----------
        size : int or tuple of int, optional
        random_state : int or numpy.random.Generator, optional

        Returns
        -------
        float or ndarray

        Examples
        --------
        >>> from orvane.distributions import Law
        >>> Law("Power").rvs(5, random_state=1).round(3)
        array([0.512, 0.95 , 0.144, 0.949, 0.312])
        """
        generator = np.random.default_rng(random_state)
        return self.ppf(generator.random(size))

    def _moment(self, power: int, centre: float) -> float:
        if self.discrete:
            low, high = float(self.ppf(1e-15)), float(self.ppf(1 - 1e-15))
            if high - low > 1e7:
                return float("nan")
            counts = np.arange(low, high + 1)
            return float(np.sum((counts - centre) ** power * self.pdf(counts)))
        # Integral of (ppf(u) - centre)^power by the double exponential rule on (0, 1), in two widths of step.
        values = []
        for step in (1 / 16, 1 / 32):
            t = np.arange(-3.2, 3.2 + step / 2, step)
            e = np.exp(-np.pi * np.sinh(t))
            u, weight = 1 / (1 + e), np.pi * np.cosh(t) * e / (1 + e) ** 2 * step
            inside = (u > 0) & (u < 1)
            with np.errstate(over="ignore", invalid="ignore"):
                terms = (self._quantiles(u[inside]) - centre) ** power * weight[inside]
            values.append(float(terms.sum()))
        scale = float(np.abs(terms).sum())
        return values[1] if abs(values[0] - values[1]) < 1e-5 * scale else float("nan")

    def mean(self) -> float:
        """Mean, by quadrature over the quantiles to about 1e-5; NaN where that does not settle."""
        return self._moment(1, 0.0)

    def var(self) -> float:
        """Variance; as :meth:`mean`."""
        return self._moment(2, self.mean())

    def std(self) -> float:
        """Standard deviation."""
        return float(np.sqrt(self.var()))


def _remade(name: str, parameters: tuple[float, ...]) -> Law:
    return Law(name, *parameters)


class Fitted(NamedTuple):
    """One line of a ranking."""

    name: str
    error: float
    parameters: tuple[float, ...]
    discrete: bool
    law: Law


class FitResult:
    """What :func:`fit` has found; ``best`` is the first law of the ``ranking``.

    Attributes
    ----------
    ranking : list of Fitted
        In ascending order of error, the sum of squared distances of the distribution functions.
    unsettled : list of str
        Families without any finite error: they got no run, or the time was up.
    x, ecdf : ndarray
        Distinct values of the sample and the empirical distribution function there.
    message : str
        How the fit ended: "finished", "time" or "interrupted".
    seconds : float
        What it took.
    """

    def __init__(self, ranking: list[Fitted], unsettled: list[str], x: Floats, ecdf: Floats, message: str,
                 seconds: float) -> None:
        self.ranking, self.unsettled, self.x, self.ecdf = ranking, unsettled, x, ecdf
        self.message, self.seconds = message, seconds

    @property
    def best(self) -> Law:
        """The law of the smallest error."""
        if not self.ranking:
            raise ConvergenceError(f"no family was fitted ({self.message}): {', '.join(self.unsettled[:5])}...")
        return self.ranking[0].law

    def to_frame(self) -> Any:
        """The ranking as a pandas DataFrame."""
        import pandas

        return pandas.DataFrame(
            [line[:4] for line in self.ranking], columns=["name", "error", "parameters", "discrete"]
        )

    def plot(self, count: int = 3, ax: Any = None) -> Any:
        """Draws the empirical distribution function and the best laws with matplotlib."""
        if ax is None:
            from matplotlib import pyplot

            ax = pyplot.subplots()[1]
        ax.step(self.x, self.ecdf, where="post", color="0.5", label="sample")
        grid = np.linspace(self.x[0], self.x[-1], 400)
        for line in self.ranking[:count]:
            ax.plot(grid, line.law.cdf(grid), label=f"{line.name} ({line.error:.3g})")
        ax.set_xlabel("x")
        ax.set_ylabel("P(X <= x)")
        ax.legend()
        return ax

    def close(self) -> None:
        """Releases all laws."""
        for line in self.ranking:
            line.law.close()

    def __enter__(self) -> "FitResult":
        return self

    def __exit__(self, *error: object) -> None:
        self.close()

    def __repr__(self) -> str:
        lines = [f"{line.error:12.6g}  {line.law!r}" for line in self.ranking[:10]]
        return f"FitResult({self.message}, {self.seconds:.2f} s, {len(self.ranking)} laws)\n" + "\n".join(lines)


def fit(
    sample: ArrayLike,
    families: Iterable[str | int | Law] | None = None,
    *,
    weights: ArrayLike | None = None,
    time: float | None = None,
    progress: bool = False,
    solvers: Sequence[str] = ("run",),
    population: int = 40,
    iterations: int = 150,
    precision: float = 1e-12,
    discrete: bool = True,
) -> FitResult:
    """Fits families of distributions to a sample.

    Each family's parameters are searched by a population solver so that the sum of squared distances between its
    distribution function and the empirical one is least. All families are searched at the same time, each on a thread of
    the library. Ctrl-C ends the search and returns what was found so far.

    Parameters
    ----------
    sample : array_like
        Values in any order; NaN and infinite ones are left out.
    families : iterable of str, int or Law, optional
        Families; all 57 plain ones without it. A Law is a start.
    weights : array_like, optional
        Weight of each value.
    time : float, optional
        Seconds after which the search ends.
    progress : bool, optional
        Shows a tqdm bar.
    solvers : sequence of str, optional
        Kinds of solver, a round each; see `SOLVERS`. "auto" is thorough and takes seconds a family.
    population, iterations : int, optional
        Candidates and iterations of each solver. The defaults are the budget of ``bench/fit_quality.md``: as often the
        best fit as SciPy's differential evolution finds it on the same objective.
    precision : float, optional
        A family is done when its error is below this.
    discrete : bool, optional
        False leaves the laws of counts out.

    Returns
    -------
    FitResult

    Notes
    -----
    A fit of "StudentsT" may take a minute where the others take a second, as its series is summed far outside its
    circle of convergence for samples of a small range. `time`, or a list of families without it, spares the wait.

    Examples
    --------
    >>> from orvane import distributions
    >>> sample = distributions.Law("Normal", 10.0, 2.0).ppf((np.arange(200) + 0.5) / 200)
    >>> found = distributions.fit(sample, ["Normal", "Exponential"], iterations=100)
    >>> found.best.name
    'Normal'
    >>> [round(value, 1) for value in found.best.parameters]
    [10.0, 2.0]
    """
    values = vector(sample, "sample", least=1)
    if not np.isfinite(values).any():
        raise ValueError(f"sample: none of its {values.size} values is finite")
    codes = np.array([choice(name, "solvers", SOLVERS) for name in solvers], np.uint8)
    size, rounds = integer(population, "population", 3, 10**6), integer(iterations, "iterations", 1, 10**9)
    chosen = names() if families is None else list(families)
    laws = [_remade(f.name, f.parameters) if isinstance(f, Law) else Law(f) for f in chosen]
    laws = [law for law in laws if discrete or not law.discrete]
    if not laws:
        raise ValueError("families: must name at least one family")
    start = _time.monotonic()
    with Handle(lib.pdfManger_create()) as manager:
        pointer = manager.pointer
        _load(pointer, values, weights)
        x, ecdf = (np.empty(lib.pdfManger_getDataSize(pointer)) for _ in range(2))
        lib.pdfManger_getSrcData(pointer, _double(x))
        lib.pdfManger_getCDFData(pointer, _double(ecdf))
        funs = ffi.new("PDFFun*[]", [law.pointer for law in laws])
        _, outcome = beside(
            lambda: lib.pdfManger_optimizer(
                pointer, funs, len(laws), ffi.from_buffer("uint8_t[]", codes), codes.size, size, rounds, len(laws),
                real(precision, "precision"),
            ),
            lambda: lib.pdfManger_stop(pointer),
            seconds=time,
            progress=progress,
            title="fit",
            state=lambda: (lib.pdfManger_getProcess(pointer) / 1000, ""),
        )
    lines, unsettled = [], []
    for law in laws:
        error = float(lib.pdf_getError(law.pointer))
        if error < _NO_FIT:
            lines.append(Fitted(law.name, error, law.parameters, law.discrete, law))
        else:
            unsettled.append(law.name)
            law.close()
    lines.sort(key=lambda line: line.error)
    return FitResult(lines, unsettled, x, ecdf, outcome, _time.monotonic() - start)


def _load(manager: Any, values: Floats, weights: ArrayLike | None) -> None:
    if weights is None:
        lib.pdfManger_setData(manager, _double(values), values.size)
        return
    mass = vector(weights, "weights", length=values.size, finite=True)
    if (mass < 0).any():
        raise ValueError(f"weights: entry {int(np.flatnonzero(mass < 0)[0])} is {mass[mass < 0][0]}")
    order: NDArray[np.intp] = np.argsort(values, kind="stable")
    pairs = np.ascontiguousarray(np.column_stack([values[order], mass[order]]))
    lib.pdfManger_setXYData(manager, _double(pairs.reshape(-1)), values.size)


__all__ = ["FINISHED", "INTERRUPTED", "OUT_OF_TIME", "FitResult", "Fitted", "Law", "SOLVERS", "fit", "names"]
