# SPDX-License-Identifier: Apache-2.0
"""Jobs that outgrow one machine, on Dask: many fits, a split formula search, many minima with exchange.

Every function takes a ``client`` of ``dask.distributed``; without one the client in force is used, or everything runs
here, one after the other, with the same results. A worker that dies has its jobs done again by others, up to `retries`
times. Ctrl-C cancels what has not begun and returns what is there. Dask is optional:
``pip install 'orvane[distributed]'``.
"""
from __future__ import annotations

from typing import Any, Callable, Iterable, Iterator, Mapping, NamedTuple, Sequence

import numpy as np
from numpy.typing import ArrayLike

from ._check import Floats, choice, floats, integer, matrix, shown, vector
from ._formulas import FoundFormula, Limits, best, shares, table_of, walk


class FitSummary(NamedTuple):
    """A ranking as plain values, which travel between machines."""

    ranking: list[tuple[str, float, tuple[float, ...]]]
    message: str

    @property
    def best(self) -> tuple[str, float, tuple[float, ...]]:
        """Name, error and parameters of the best law."""
        return self.ranking[0]


def _client(client: Any) -> Any:
    if client is not None:
        return client
    try:
        from distributed import get_client

        return get_client()
    except (ImportError, ValueError):
        return None


def _gather(
    client: Any, call: Callable[..., Any], jobs: Sequence[Any], retries: int, progress: bool, data: Any = None,
) -> Iterator[tuple[int, Any]]:
    """Results with their places, as they come; what Ctrl-C leaves out is not there. All jobs share the data."""
    shared = [] if data is None else [data]
    if client is None:
        try:
            for place, job in enumerate(jobs):
                yield place, call(job, *shared)
        except KeyboardInterrupt:
            pass
        return
    import distributed as dask

    as_completed: Any = dask.as_completed
    bar: Any = dask.progress

    # The data travels once to a worker; as a task's result it is made again where the one that had it dies.
    shared = [client.submit(_same, part, retries=retries, pure=False) for part in shared]
    futures = [client.submit(call, job, *shared, retries=retries, pure=False) for job in jobs]
    places = {future.key: place for place, future in enumerate(futures)}
    try:
        if progress:
            bar(futures)
        for future in as_completed(futures, loop=client.loop):  # its own: it need not be the one in force
            yield places[future.key], future.result()
    except KeyboardInterrupt:
        pass
    finally:
        client.cancel([future for future in futures if not future.done()])


def _same(data: Any) -> Any:
    return data


def _fit(job: tuple[Floats, dict[str, Any]]) -> FitSummary:
    from .distributions import fit

    sample, options = job
    with fit(sample, **options) as found:
        return FitSummary([line[:3] for line in found.ranking], found.message)


def fit_many(
    samples: Mapping[Any, ArrayLike] | Iterable[ArrayLike] | Any, families: Iterable[str] | None = None, *,
    client: Any = None, retries: int = 3, progress: bool = False, **options: Any,
) -> dict[Any, FitSummary]:
    """:func:`orvane.distributions.fit` of many samples.

    Parameters
    ----------
    samples : mapping, sequence, Dask bag or grouped column
        Samples by name; samples in a sequence or a bag are named 0, 1, ...; a pandas ``frame.groupby(...)["x"]`` has the
        names of its groups.
    families : iterable of str, optional
    client : distributed.Client, optional
    retries : int, optional
        How often a sample is fitted again after its worker died.
    progress : bool, optional
        Shows Dask's bar.
    **options
        Further arguments of fit.

    Returns
    -------
    dict
        Summaries by name, in the order of the samples.

    Examples
    --------
    >>> from orvane import distributed
    >>> x = (np.arange(50) + 0.5) / 50
    >>> found = distributed.fit_many({"a": -np.log(x), "b": 3 * x}, ["Exponential", "Power"], iterations=50)
    >>> found["a"].best[0], found["b"].best[0]
    ('Exponential', 'Power')
    """
    named = _named(samples)
    names = list(named)
    chosen = None if families is None else list(families)
    jobs = [(vector(named[name], f"samples[{shown(name)}]", least=1), {"families": chosen, **options}) for name in names]
    found = dict(_gather(_client(client), _fit, jobs, integer(retries, "retries", 0), progress))
    return {names[place]: found[place] for place in sorted(found)}


def _named(samples: Any) -> dict[Any, Any]:
    if isinstance(samples, Mapping):
        return dict(samples)
    if hasattr(samples, "to_delayed") and hasattr(samples, "compute"):  # a Dask bag
        return dict(enumerate(samples.compute()))
    if hasattr(samples, "groups") and hasattr(samples, "obj"):  # a grouped column of pandas
        return {name: group.to_numpy() for name, group in samples}
    return dict(enumerate(samples))


def search_formulas(
    terms: ArrayLike, y: ArrayLike, max_terms: int = 3, *, error_limit: float = float("inf"), fit_limit: float = 0.0,
    limit: int = 513, client: Any = None, retries: int = 3, progress: bool = False,
) -> list[FoundFormula]:
    """Rational formulas (c0 + sum a x)/(1 + sum b x) of given terms, searched in shares.

    The walk is cut by the split of the budget between numerator and denominator, by the numerator's first term, and
    every 20,000 formulas. The formulas of all shares are merged in the order of error, then of terms: the result is the
    same on any number of machines, and the set is the one that the library's own search lists. Each formula is fitted by
    linear least squares; one with a coefficient above 1e10 is dropped. Where a formula has more than one best choice of
    parameters, the one that it gets is arbitrary. The library's own search (:class:`orvane.learn.FormulaRegressor`) is
    quicker on one machine.

    Parameters
    ----------
    terms : array_like
        A row of values for each term.
    y : array_like
    max_terms : int, optional
        Parameters: the constant and the terms above and below.
    error_limit, fit_limit : float, optional
        A formula counts if its sum of squares is at most, and its correlation at least, this.
    limit : int, optional
        How many formulas are kept.
    client, retries, progress
        As of :func:`fit_many`.

    Returns
    -------
    list of FoundFormula

    Examples
    --------
    >>> from orvane import distributed
    >>> x = np.linspace(1.0, 2.0, 20)
    >>> best = distributed.search_formulas([x, x**2, np.sin(x)], 1 / (1 + 2 * x), 2)[0]
    >>> [(round(c, 6), i) for c, i in best.below]
    [(1.0, -1), (2.0, 0)]
    """
    table, target = matrix(terms, "terms"), vector(y, "y", least=2, finite=True)
    if table.shape[1] != target.size:
        raise ValueError(f"terms: rows must have {target.size} values, as y, not {table.shape[1]}")
    budget, most = integer(max_terms, "max_terms", 1, 64), integer(limit, "limit", 1)
    limits = Limits(float(error_limit), float(fit_limit), most)
    data = (table_of(table, target), limits)
    merged: list[FoundFormula] = []
    for _, found in _gather(_client(client), _walk, shares(len(table), budget), retries, progress, data):
        merged = best(merged + found, limits)
    return merged


def _walk(share: Any, data: Any) -> list[FoundFormula]:
    return walk(share, *data)


def _minimise(job: tuple[Callable[..., float], Any, dict[str, Any]]) -> tuple[float, Floats, int]:
    from .optimize import minimize

    fun, bounds, options = job
    found = minimize(fun, bounds, **options)
    return float(found.fun), np.asarray(found.x), int(found.nfev)


def minimize_many(
    problems: Sequence[tuple[Callable[..., float], Any]], *, client: Any = None, retries: int = 3,
    progress: bool = False, **options: Any,
) -> list[Any]:
    """:func:`orvane.optimize.minimize` of many functions.

    Parameters
    ----------
    problems : sequence of (fun, bounds)
        Functions that travel: of a module, or anything that cloudpickle takes.
    client, retries, progress
        As of :func:`fit_many`.
    **options
        Further arguments of minimize.

    Returns
    -------
    list of OptimizeResult
        In the order of the problems; None for one that Ctrl-C left out.

    Examples
    --------
    >>> from orvane import distributed
    >>> found = distributed.minimize_many([(lambda x: x[0] ** 2, [(-1, 2)])] * 2, tol=1e-8)
    >>> [result.fun < 1e-8 for result in found]
    [True, True]
    """
    jobs = [(fun, bounds, options) for fun, bounds in problems]
    found = dict(_gather(_client(client), _minimise, jobs, retries, progress))
    return [_result(*found[place]) if place in found else None for place in range(len(jobs))]


def _result(fun: float, x: Floats, nfev: int, **more: Any) -> Any:
    from .optimize import OptimizeResult

    return OptimizeResult(x=x, fun=fun, success=bool(np.isfinite(fun)), nfev=nfev, **more)


def minimize_islands(
    fun: Callable[..., float], bounds: ArrayLike, *, islands: int = 4, exchanges: int = 5, client: Any = None,
    retries: int = 3, solver: str = "lg2", maxiter: int = 200, tol: float = -float("inf"), **options: Any,
) -> Any:
    """One minimum by islands: separate searches, each of which starts every round from its neighbour's best point.

    Parameters
    ----------
    fun : callable
        As of :func:`orvane.optimize.minimize`; it travels to the workers.
    bounds : sequence of (low, high)
    islands : int, optional
        Searches at the same time.
    exchanges : int, optional
        Rounds; after each one the best points go round the ring.
    solver, maxiter, tol, **options
        Of each search and round.

    Returns
    -------
    OptimizeResult
        With ``rounds``, the best value after each round.

    Examples
    --------
    >>> from orvane import distributed
    >>> found = distributed.minimize_islands(lambda x: x @ x, [(-1, 1)] * 2, islands=2, exchanges=2, tol=1e-8)
    >>> found.fun < 1e-8
    True
    """
    box = matrix(floats(np.asarray(bounds, np.float64), "bounds"), "bounds", columns=2)
    size = integer(islands, "islands", 1, 10**6)
    from .optimize import SOLVERS

    choice(solver, "solver", SOLVERS)
    points: list[Floats | None] = [None] * size
    best_value, best_x, evaluations, rounds = float("inf"), box.mean(axis=1), 0, []
    for _ in range(integer(exchanges, "exchanges", 1)):
        settings = {"solver": solver, "maxiter": maxiter, "tol": tol, **options}
        jobs = [(fun, box, {**settings, "x0": point}) for point in points]
        found = dict(_gather(_client(client), _minimise, jobs, retries, False))
        for place, (value, x, count) in found.items():
            points[(place + 1) % size] = x  # to the neighbour
            evaluations += count
            if value < best_value:
                best_value, best_x = value, x
        rounds.append(best_value)
        if len(found) < size or best_value < tol:
            break
    return _result(best_value, best_x, evaluations, rounds=rounds)


__all__ = ["FitSummary", "FoundFormula", "fit_many", "minimize_islands", "minimize_many", "search_formulas"]
