# SPDX-License-Identifier: Apache-2.0
"""Minima without derivatives, linear, quadratic and integer programmes, shortest paths and round tours.

>>> from orvane import optimize
>>> found = optimize.minimize(lambda x: (x[0] - 1) ** 2 + x[1] ** 2, [(-5, 5), (-5, 5)], tol=1e-10)
>>> found.fun < 1e-6, bool(abs(found.x[0] - 1) < 1e-3)
(True, True)
"""
from __future__ import annotations

import inspect
import math
import time as _time
from typing import Any, Callable, Iterable, Mapping, Sequence

import numpy as np
from numpy.typing import ArrayLike, NDArray

from . import capi
from ._callback import Guarded
from ._capi_table import CONSTANTS
from ._check import Floats, choice, integer, matrix, real, shown, vector
from ._core import ffi, lib
from ._handle import ConvergenceError, Handle
from ._run import FINISHED, INTERRUPTED, OUT_OF_TIME, STOPPED, Bar, watch
from .distributions import SOLVERS

_RUNNING = capi.ORVANE_OPTIMIZER_RUNNING
_NO_EDGE = 1e300
_MESSAGES = {
    FINISHED: "the search has ended", OUT_OF_TIME: "the time was up", INTERRUPTED: "interrupted by the user",
    STOPPED: "stopped by the callback",
}
_STATUS = {FINISHED: 0, OUT_OF_TIME: 1, INTERRUPTED: 2, STOPPED: 3}


def _double(array: Floats) -> Any:
    return ffi.from_buffer("double[]", array)


class OptimizeResult(dict[str, Any]):
    """Fields of a result, as in SciPy: ``x``, ``fun``, ``success``, ``status``, ``message``, ``nit``, ``nfev``."""

    def __getattr__(self, name: str) -> Any:
        try:
            return self[name]
        except KeyError:
            raise AttributeError(name) from None

    def __dir__(self) -> list[str]:
        return list(self)

    def __repr__(self) -> str:
        width = max(map(len, self), default=0)
        return "\n".join(f"{name:>{width}}: {value!r}" for name, value in self.items())


class _Search:
    """One solver of the library on one objective."""

    def __init__(self, fun: Callable[[Floats], float], low: Floats, high: Floats, solver: int, population: int,
                 maxiter: int, tries: int, target: float, stall: tuple[int, int], x0: Floats | None,
                 args: tuple[Any, ...]) -> None:
        n = low.size
        self.low, self.high, self.size = low, high, n
        self.best, self.best_x, self.evaluations, self.target = math.inf, x0, 0, target
        self._callback: Guarded | None = None
        self.handle = Handle(lib.os_createOptSolver(tries))
        pointer = self.handle.pointer

        def objective(raw: Any) -> float:
            x = np.frombuffer(ffi.buffer(raw, 8 * n)).copy()
            value = float(fun(x, *args)) if args else float(fun(x))
            self.evaluations += 1
            if value < self.best:
                self.best, self.best_x = value, x
            return value

        address = getattr(fun, "address", None)  # a compiled function, such as numba's cfunc
        if isinstance(address, int) and not args:
            cost = ffi.cast("OptCostFun", address)
        else:
            self._callback = Guarded("double(double*)", objective, 1e300)
            cost = self._callback.pointer
        lib.os_setFun(pointer, cost, ffi.NULL, ffi.NULL, 1, n)
        lib.os_setMaxVar(pointer, _double(high), n)
        lib.os_setMinVar(pointer, _double(low), n)
        lib.os_setOptimizer(pointer, solver, 0, population, *stall, maxiter, target)
        if x0 is not None:
            lib.os_setInitValue(pointer, _double(x0), n)

    @property
    def error(self) -> BaseException | None:
        return self._callback.error if self._callback else None

    def start(self) -> None:
        lib.os_solve(self.handle.pointer)

    def stop(self) -> None:
        lib.os_stop(self.handle.pointer)

    def running(self) -> bool:
        return bool(lib.os_getState(self.handle.pointer) == _RUNNING)

    def progress(self) -> tuple[float, float, float]:
        """Runs begun, iterations of this run, best value."""
        info = ffi.new("double[4]")
        lib.os_getCurrentInfo(self.handle.pointer, info)
        return info[0], info[1], info[2]

    def read(self) -> None:
        """The best point as the library holds it, where it is better than what the objective saw."""
        x = np.empty(self.size)
        value = lib.os_getOptVar(self.handle.pointer, _double(x))
        if value < self.best and value < 1e300:
            self.best, self.best_x = value, x


def minimize(
    fun: Callable[..., float],
    bounds: Sequence[tuple[float, float]] | ArrayLike,
    args: tuple[Any, ...] = (),
    *,
    solver: str = "lg2",
    x0: ArrayLike | None = None,
    callback: Callable[..., Any] | None = None,
    workers: int = 1,
    population: int = 30,
    maxiter: int = 1000,
    tries: int = 1,
    tol: float = -math.inf,
    stall: tuple[int, int] = (200, 800),
    time: float | None = None,
    progress: bool = False,
) -> OptimizeResult:
    """Minimum of a function over a box, by a population on threads of the library.

    Parameters
    ----------
    fun : callable
        fun(x, *args) gives a float; it is called on a thread of the library. An exception in it stops the search and is
        raised here. An object with an ``address``, such as numba's cfunc of ``double(double*)``, is called directly.
    bounds : sequence of (low, high)
        The box.
    args : tuple, optional
        Further arguments of fun.
    solver : str, optional
        One of `SOLVERS`.
    x0 : array_like, optional
        Start of one candidate.
    callback : callable, optional
        callback(intermediate_result) or callback(xk), called here whenever there is a better point; StopIteration, or
        a true result, stops the search.
    workers : int, optional
        Independent searches at the same time, of which the best counts.
    population, maxiter, tries : int, optional
        Candidates, iterations of a run, runs.
    tol : float, optional
        A run ends when the best value is below it.
    stall : (int, int), optional
        Stalled iterations until the search leaves a minimum, and until it ends out there.
    time : float, optional
        Seconds after which the search ends.
    progress : bool, optional
        Shows a tqdm bar.

    Returns
    -------
    OptimizeResult
        status 0: ended, 1: out of time, 2: Ctrl-C, 3: stopped by the callback; in all cases with the best so far.

    Examples
    --------
    >>> from orvane import optimize
    >>> found = optimize.minimize(lambda x: sum(x * x), [(-1, 1)] * 3, tol=1e-8)
    >>> found.success, found.fun < 1e-8
    (True, True)
    """
    box = matrix(np.asarray(bounds, np.float64), "bounds", columns=2)
    low, high = np.ascontiguousarray(box[:, 0]), np.ascontiguousarray(box[:, 1])
    wrong = np.flatnonzero(~((low <= high) & np.isfinite(low) & np.isfinite(high)))
    if wrong.size or not len(low):
        raise ValueError(f"bounds: must be finite, low before high, not {shown(bounds)}")
    if not callable(fun) and not isinstance(getattr(fun, "address", None), int):
        raise TypeError(f"fun: must be callable, not {shown(fun)}")
    first = None if x0 is None else np.clip(vector(x0, "x0", length=low.size, finite=True), low, high)
    code = choice(solver, "solver", SOLVERS)
    options = (
        code, integer(population, "population", 3, 10**6), integer(maxiter, "maxiter", 1, 2**62),
        integer(tries, "tries", 1, 2**31), real(tol, "tol"),
        (integer(stall[0], "stall", 1, 2**31 - 1), integer(stall[1], "stall", 1, 2**31 - 1)),
    )
    generator = np.random.default_rng()
    searches = []
    for worker in range(integer(workers, "workers", 1, 1024)):
        start = first if worker == 0 else generator.uniform(low, high)
        searches.append(_Search(fun, low, high, *options, start, args))
    begun, seen = _time.monotonic(), math.inf

    def look() -> bool:
        nonlocal seen
        leader = min(searches, key=lambda search: search.best)
        if any(search.error for search in searches):
            return True
        if leader.best < seen:
            seen = leader.best
            if callback is not None:
                return _told(callback, leader)
        return False

    def wait(pause: float) -> bool:
        if not any(search.running() for search in searches):
            return True
        _time.sleep(pause)
        return not any(search.running() for search in searches)

    def stop() -> None:
        for search in searches:
            search.stop()

    def state() -> tuple[float, str]:
        runs, iterations, best = searches[0].progress()
        return (max(runs - 1, 0) + iterations / maxiter) / tries, f"{min(seen, best):.6g}"

    bar = Bar(progress, "minimize")
    try:
        for search in searches:
            search.start()
        outcome = watch(wait, stop, seconds=time, bar=bar, state=state, look=look)
        iterations = int(sum(search.progress()[1] for search in searches))
        for search in searches:
            if search.error is not None:
                raise search.error
            search.read()
    finally:
        bar.close()
        for search in searches:
            search.handle.close()
    if callback is not None and outcome == FINISHED:
        look()
    best = min(searches, key=lambda search: search.best)
    return OptimizeResult(
        x=best.best_x, fun=best.best, success=outcome in (FINISHED, STOPPED) and math.isfinite(best.best),
        status=_STATUS[outcome], message=_MESSAGES[outcome], nit=iterations,
        nfev=sum(search.evaluations for search in searches), seconds=_time.monotonic() - begun,
    )


def _told(callback: Callable[..., Any], leader: _Search) -> bool:
    try:
        if "intermediate_result" in inspect.signature(callback).parameters:
            return bool(callback(intermediate_result=OptimizeResult(
                x=leader.best_x, fun=leader.best, nfev=leader.evaluations)))
        return bool(callback(leader.best_x))
    except StopIteration:
        return True


_KINDS = {"real": 0, "integer": 1, "binary": 2}


class _Programme:
    """Bounds as the solvers want them: every variable is at least 0 after a shift, or split in two."""

    def __init__(self, n: int, bounds: Any, integrality: ArrayLike | None) -> None:
        whole = np.zeros(n, np.uint8) if integrality is None else np.broadcast_to(
            np.asarray(integrality, np.uint8), (n,)).copy()
        if (whole > 1).any():
            raise ValueError(f"integrality: entries must be 0 or 1, not {shown(integrality)}")
        pairs = [(0.0, math.inf)] * n if bounds is None else list(bounds)
        if len(pairs) == 2 and n != 2 and np.ndim(pairs[0]) == 0:
            pairs = [tuple(pairs)] * n
        if len(pairs) != n:
            raise ValueError(f"bounds: must be {n} pairs, not {len(pairs)}")
        self.low = np.array([-math.inf if a is None else float(a) for a, _ in pairs])
        self.high = np.array([math.inf if b is None else float(b) for _, b in pairs])
        if not (self.low <= self.high).all():
            place = int(np.flatnonzero(~(self.low <= self.high))[0])
            raise ValueError(f"bounds: pair {place} is {shown(pairs[place])}")
        if whole.any():  # integers keep whole shifts
            self.low[whole == 1] = np.ceil(self.low[whole == 1])
            self.high[whole == 1] = np.floor(self.high[whole == 1])
        self.free = np.flatnonzero(~np.isfinite(self.low))
        self.shift = np.where(np.isfinite(self.low), self.low, 0.0)
        self.kinds = np.concatenate([whole, whole[self.free]]).astype(np.uint8)
        self.n = n

    def columns(self, table: Floats) -> Floats:
        """A table over the variables as one over the solver's."""
        wide: Floats = np.ascontiguousarray(np.hstack([table, -table[:, self.free]]))
        return wide

    def back(self, values: Floats) -> Floats:
        """The solver's values as those of the variables."""
        x: Floats = values[: self.n].copy()
        x[self.free] -= values[self.n :]
        x += self.shift
        return x

    def rows(self, a_ub: Any, b_ub: Any, a_eq: Any, b_eq: Any) -> Iterable[tuple[Floats, int, float]]:
        """Constraints on the solver's variables: coefficients, relation, right side."""
        for table, right, relation, names in ((a_ub, b_ub, 0, ("A_ub", "b_ub")), (a_eq, b_eq, 2, ("A_eq", "b_eq"))):
            if table is None and right is None:
                continue
            if table is None or right is None:
                raise ValueError(f"{names[0]} and {names[1]} go together")
            a = matrix(table, names[0], columns=self.n)
            b = vector(right, names[1], length=len(a), finite=True) - a @ self.shift
            yield from ((row, relation, float(value)) for row, value in zip(self.columns(a), b))
        for place in np.flatnonzero(np.isfinite(self.high)):
            unit = np.zeros((1, self.n))
            unit[0, place] = 1.0
            yield self.columns(unit)[0], 0, float(self.high[place] - self.shift[place])


def _terms(row: Floats) -> tuple[Any, Any, int]:
    places = np.flatnonzero(row).astype(np.int32)
    return ffi.from_buffer("int32_t[]", places), _double(row[places]), places.size


def _linear(c: ArrayLike, a_ub: Any, b_ub: Any, a_eq: Any, b_eq: Any, bounds: Any, whole: ArrayLike | None) -> OptimizeResult:
    cost = vector(c, "c", least=1, finite=True)
    programme = _Programme(cost.size, bounds, whole)
    with Handle(lib.lineProg_CreateSolver()) as solver:
        pointer = solver.pointer
        lib.lineProg_SetVarCount(pointer, ffi.from_buffer("uint8_t[]", programme.kinds), programme.kinds.size)
        lib.lineProg_setExact(pointer, 1)
        objective = -programme.columns(cost.reshape(1, -1))[0]
        if objective.any():
            lib.lineProg_SetMaxExpress(pointer, *_terms(objective))
        else:
            lib.lineProg_SetMaxExpress(pointer, ffi.new("int32_t[1]", [0]), ffi.new("double[1]", [1e-12]), 1)
        for row, relation, right in programme.rows(a_ub, b_ub, a_eq, b_eq):
            if row.any():
                lib.lineProg_AddConstraint(pointer, *_terms(row), relation, right)
            elif right < -1e-12 or (relation == 2 and abs(right) > 1e-12):
                return OptimizeResult(x=None, fun=None, success=False, status=2, message="infeasible")
        status = lib.lineProg_Solve(pointer)
        values = np.empty(programme.kinds.size)
        if status == capi.ORVANE_PROGRAMME_OPTIMAL:
            lib.lineProg_GetVar(pointer, _double(values))
            x = programme.back(values)
            return OptimizeResult(x=x, fun=float(cost @ x), success=True, status=0, message="optimal")
    unbounded = status == capi.ORVANE_PROGRAMME_UNBOUNDED
    message = "unbounded" if unbounded else "infeasible, or no integer point"
    return OptimizeResult(x=None, fun=None, success=False, status=3 if unbounded else 2, message=message)


def linprog(c: ArrayLike, A_ub: ArrayLike | None = None, b_ub: ArrayLike | None = None, A_eq: ArrayLike | None = None,
            b_eq: ArrayLike | None = None, bounds: Any = None) -> OptimizeResult:
    """Minimum of c x under A_ub x <= b_ub, A_eq x = b_eq and bounds, (0, inf) without them.

    Returns
    -------
    OptimizeResult
        status 0: optimal, 2: infeasible, 3: unbounded.

    Examples
    --------
    >>> from orvane import optimize
    >>> found = optimize.linprog([-1, -2], [[1, 1], [1, 3]], [4, 6])
    >>> found.x, found.fun
    (array([3., 1.]), -5.0)
    """
    return _linear(c, A_ub, b_ub, A_eq, b_eq, bounds, None)


def milp(c: ArrayLike, integrality: ArrayLike = 1, A_ub: ArrayLike | None = None, b_ub: ArrayLike | None = None,
         A_eq: ArrayLike | None = None, b_eq: ArrayLike | None = None, bounds: Any = None) -> OptimizeResult:
    """:func:`linprog` with integer variables where `integrality` is 1.

    Examples
    --------
    >>> from orvane import optimize
    >>> optimize.milp([-5, -4], 1, [[6, 4], [1, 2]], [24, 6]).x
    array([4., 0.])
    """
    return _linear(c, A_ub, b_ub, A_eq, b_eq, bounds, integrality)


def quadprog(P: ArrayLike, q: ArrayLike, A_ub: ArrayLike | None = None, b_ub: ArrayLike | None = None,
             A_eq: ArrayLike | None = None, b_eq: ArrayLike | None = None, bounds: Any = None,
             integrality: ArrayLike | None = None) -> OptimizeResult:
    """Minimum of x P x / 2 + q x, P positive semidefinite, under linear constraints.

    Examples
    --------
    >>> from orvane import optimize
    >>> optimize.quadprog([[2, 0], [0, 2]], [-2, -4], [[1, 1]], [1]).x.round(4)
    array([-0.,  1.])
    """
    table, linear = matrix(P, "P", square=True), vector(q, "q", least=1, finite=True)
    if len(table) != linear.size:
        raise ValueError(f"q: must have {len(table)} entries, not {linear.size}")
    programme = _Programme(linear.size, bounds, integrality)
    half = (table + table.T) / 2
    moved = programme.columns((linear + half @ programme.shift).reshape(1, -1))[0]
    wide = programme.columns(programme.columns(half).T.copy())
    i, j = np.nonzero(np.triu(wide))
    # The library minimises a fourth of the quadratic part as it is given: x P x / 2 takes the factor 2 beside the
    # two for both triangles.
    values = -2.0 * np.where(i == j, wide[i, j], 2 * wide[i, j])
    with Handle(lib.quadProg_createSolver()) as solver:
        pointer = solver.pointer
        lib.quadProg_initTempVar(pointer, programme.kinds.size)
        lib.quadProg_setVarKind(pointer, ffi.from_buffer("uint8_t[]", programme.kinds), programme.kinds.size)
        first, second = (ffi.from_buffer("int32_t[]", part.astype(np.int32)) for part in (i, j))
        lib.quadProg_setMaxExpress(pointer, first, second, _double(values), values.size, *_terms(-moved), 0.0)
        for row, relation, right in programme.rows(A_ub, b_ub, A_eq, b_eq):
            lib.quadProg_addConstraint(pointer, *_terms(row), right, relation)
        status = lib.quadProg_solveTemp(pointer)
        out = np.empty(programme.kinds.size)
        lib.quadProg_getTempResult(pointer, _double(out))
    if status != capi.ORVANE_QUADRATIC_SOLVED:
        message = {5: "no objective", 6: "not convex, or refused input", 8: "no integer solution"}.get(
            status, "infeasible or unbounded")
        return OptimizeResult(x=None, fun=None, success=False, status=int(status), message=message)
    x = programme.back(out)
    return OptimizeResult(
        x=x, fun=float(x @ table @ x / 2 + linear @ x), success=True, status=0, message="optimal")


def shortest_path(graph: ArrayLike | Sequence[tuple[int, int, float]] | Mapping[tuple[int, int], float], start: int,
                  end: int) -> OptimizeResult:
    """Shortest path between two vertices of a directed graph with weights of 0 or more.

    Parameters
    ----------
    graph : array_like, sequence or mapping
        A square array of weights, inf for no edge; edges (from, to, weight); or weights by (from, to).
    start, end : int

    Returns
    -------
    OptimizeResult
        x: the vertices from start to end, fun: the cost.

    Examples
    --------
    >>> from orvane import optimize
    >>> optimize.shortest_path([(0, 1, 1.0), (1, 2, 1.5), (0, 2, 4.0)], 0, 2).x
    [0, 1, 2]
    """
    first, last = integer(start, "start", 0, 2**32 - 1), integer(end, "end", 0, 2**32 - 1)
    length, cost = ffi.new("uint32_t*"), ffi.new("double*")
    edges: Any = [(a, b, w) for (a, b), w in graph.items()] if isinstance(graph, Mapping) else graph
    if isinstance(edges, np.ndarray) and edges.ndim == 2 and len(edges) == edges.shape[1]:
        table = np.where(np.isfinite(matrix(edges, "graph")), edges, 1e100)
        if max(first, last) >= len(table):
            raise ValueError(f"start, end: must be below {len(table)}, not {first}, {last}")
        path = ffi.new("uint32_t[]", max(2, len(table)))
        found = lib.progMinimumDistance2(_double(np.ascontiguousarray(table)), len(table), 0, first, last, path, length, cost)
    else:
        rows = list(edges)
        tails, heads = (np.array([row[k] for row in rows], np.uint32) for k in (0, 1))
        weights = np.array([row[2] for row in rows], np.float64)
        path = ffi.new("uint32_t[]", 2 * len(rows) + 2)
        ids = [ffi.from_buffer("uint32_t[]", ends) for ends in (tails, heads)]
        found = lib.progMinimumDistance1(*ids, _double(weights), len(rows), first, last, path, length, cost)
    if not found:
        return OptimizeResult(x=None, fun=math.inf, success=False, status=2, message="no path, or a negative weight")
    vertices = list(path[0 : length[0]])
    return OptimizeResult(x=vertices, fun=float(cost[0]), success=True, status=0, message="found")


def tour(weights: ArrayLike, *, points: bool = False, threads: int = 1) -> OptimizeResult:
    """A short round tour through all nodes, from node 0.

    Parameters
    ----------
    weights : array_like
        Weights [n, n] from row to column, inf for no edge; places [n, d] of the nodes with `points`.
    points : bool, optional
    threads : int, optional

    Returns
    -------
    OptimizeResult
        x: the nodes in order, fun: the length.

    Examples
    --------
    >>> from orvane import optimize
    >>> optimize.tour([[0, 0], [2, 0], [2, 1], [0, 1]], points=True).fun
    6.0
    """
    table = matrix(weights, "weights", square=not points)
    if points:
        table = np.sqrt(((table[:, None, :] - table[None, :, :]) ** 2).sum(axis=2))
    table = np.ascontiguousarray(np.where(np.isfinite(table), table, 1e100))
    rows = ffi.new("double*[]", [_double(row) for row in table])
    order: NDArray[np.uint32] = np.empty(len(table), np.uint32)
    length = lib.api_Prog_SolveTSP(
        rows, len(table), integer(threads, "threads", 1, 256), ffi.from_buffer("uint32_t[]", order))
    if length >= _NO_EDGE:
        return OptimizeResult(x=None, fun=math.inf, success=False, status=2, message="no tour")
    return OptimizeResult(x=order.astype(int), fun=float(length), success=True, status=0, message="found")


_LOSSES = {name[len("ORVANE_LOSS_"):].lower(): code for name, code in CONSTANTS.items() if name.startswith("ORVANE_LOSS_")}


def loss(y: ArrayLike, t: ArrayLike, kind: str = "huber", scale: float = 10.0) -> float:
    """What values cost that should have been the targets: a robust loss for fits with outliers, or one of classifiers.

    Parameters
    ----------
    y, t : array_like
        Values and targets.
    kind : str, optional
        l1, l2, la, geman_mcclure, huber, pseudo_huber, andrews, bisquare, cauchy, fair, logistic, talwar, welsch, cross1,
        cross2, cos1, cos2, hinge; the formulas stand in ``orvane/loss.h``.
    scale : float, optional
        Residual from which a robust loss holds back.

    Examples
    --------
    >>> from orvane import optimize
    >>> optimize.loss([1.0, 2.0, 90.0], [1.0, 2.5, 3.0], "talwar", 2.0)
    4.25
    """
    values, targets = vector(y, "y"), vector(t, "t")
    if values.size != targets.size:
        raise ValueError(f"t: must have {values.size} entries, as y, not {targets.size}")
    with Handle(lib.api_initLossFun(choice(kind, "kind", _LOSSES))) as made:
        lib.api_setLossParam(made.pointer, real(scale, "scale", 0.0))
        return float(lib.api_calcLossFun(made.pointer, _double(values), _double(targets), values.size))


__all__ = ["ConvergenceError", "OptimizeResult", "SOLVERS", "linprog", "loss", "milp", "minimize", "quadprog", "shortest_path",
           "tour"]
