# SPDX-License-Identifier: Apache-2.0
"""The walk over rational formulas of given terms, cut into shares that can be searched apart.

A formula y = (c0 + sum a_i x_i)/(1 + sum b_j x_j) becomes linear when multiplied by its denominator,
y = c0 + sum a_i x_i - sum b_j (y x_j), and least squares give its parameters. All columns that can occur are first
reduced to one triangle by a QR factorisation: the triangle of a choice of columns is then found from a few numbers,
however many rows the data has. Only the error in the scale of y takes a pass over the rows.
"""
from __future__ import annotations

from itertools import combinations, islice, product
from math import comb
from typing import Any, Iterator, NamedTuple

import numpy as np
from numpy.typing import NDArray

from ._check import Floats

GRAIN = 20000  # formulas of a share: some tenths of a second, far above what a task costs
_WILD = 1e10  # a coefficient beyond this is no fit, as in the library's own search
_FLAT = 1e-12
_BLOCK = 1 << 17  # values under work at a time

_Places = NDArray[np.intp]


class FoundFormula(NamedTuple):
    """A rational formula of terms: error, correlation, (coefficient, term) above and below; term -1 is the constant."""

    error: float
    correlation: float
    above: tuple[tuple[float, int], ...]
    below: tuple[tuple[float, int], ...]


class Share(NamedTuple):
    """Formulas of one split and one first term of the numerator (-1: it has none), from one place to another."""

    above: int
    below: int
    first: int
    start: int
    stop: int


class Limits(NamedTuple):
    """What a formula must reach, and how many are kept."""

    error: float
    correlation: float
    most: int


class Table(NamedTuple):
    """Terms, y, and the triangle of the columns 1, x_i, -y x_i, y, each of the length 1 but the last."""

    terms: Floats
    y: Floats
    triangle: Floats
    scales: Floats


def shares(count: int, budget: int) -> list[Share]:
    """The walk over all splits of a budget in shares, the largest first."""
    found = []
    for above in range(max(0, budget - 1 - count), min(budget - 1, count) + 1):
        below = budget - 1 - above
        for first in range(count - above + 1) if above else (-1,):
            size = comb(count, below) * (comb(count - 1 - first, above - 1) if above else 1)
            found += [Share(above, below, first, at, min(at + GRAIN, size)) for at in range(0, size, GRAIN)]
    return sorted(found, key=lambda share: share.start - share.stop)


def table_of(terms: Floats, y: Floats) -> Table:
    """The reduced data."""
    columns = np.column_stack([np.ones_like(y), terms.T, -y[:, None] * terms.T])
    scales = np.sqrt((columns**2).sum(axis=0))
    scales[scales == 0] = 1.0
    return Table(terms, y, _triangle(np.column_stack([columns / scales, y])), scales)


def _triangle(columns: Floats) -> Floats:
    triangle: Any = np.linalg.qr(columns, mode="r")
    return np.asarray(triangle, np.float64)


def walk(share: Share, table: Table, limits: Limits) -> list[FoundFormula]:
    """The best formulas of a share within the limits."""
    found: list[FoundFormula] = []
    count = len(table.terms)
    if 1 + share.above + share.below > table.y.size:
        return found
    heads: Iterator[tuple[int, ...]] = iter([()])
    if share.above:
        rest = combinations(range(share.first + 1, count), share.above - 1)
        heads = ((share.first, *others) for others in rest)
    pairs = islice(product(heads, combinations(range(count), share.below)), share.start, share.stop)
    step = max(1, _BLOCK // max(table.y.size, (2 * count + 2) * (share.above + share.below + 2)))
    while block := [above + below for above, below in islice(pairs, step)]:
        found = best(found + _judged(np.array(block, np.intp).reshape(len(block), -1), share.above, table, limits), limits)
    return found


def best(found: list[FoundFormula], limits: Limits) -> list[FoundFormula]:
    """The first ones in the order of error, then of terms."""
    return sorted(found, key=_order)[: limits.most]


def _order(found: FoundFormula) -> tuple[float, tuple[int, ...], tuple[int, ...]]:
    return found.error, tuple(i for _, i in found.above), tuple(i for _, i in found.below)


def _judged(places: _Places, above: int, table: Table, limits: Limits) -> list[FoundFormula]:
    with np.errstate(all="ignore"):
        weights = _weights(places, above, table)
        values = _values(weights, places, above, table)
        errors = ((values - table.y) ** 2).sum(axis=1)
        tame = ~(np.abs(weights).max(axis=1) > _WILD) & np.isfinite(errors)
        chosen = np.flatnonzero(tame & (errors <= limits.error))
        fits = _correlations(values[chosen], table.y)
    inside = chosen[fits >= limits.correlation]
    order = inside[np.argsort(errors[inside], kind="stable")]
    if order.size > limits.most:  # with all that equal the last one in error
        order = order[errors[order] <= errors[order[limits.most - 1]]]
    names = dict(zip(chosen.tolist(), fits.tolist()))
    return [_formula(float(errors[i]), names[i], weights[i].tolist(), places[i].tolist(), above) for i in order.tolist()]


def _weights(places: _Places, above: int, table: Table) -> Floats:
    """Parameters of each formula: c0, a, b."""
    shift = np.where(np.arange(places.shape[1]) < above, 1, 1 + len(table.terms))
    columns = np.concatenate([np.zeros((len(places), 1), np.intp), places + shift], axis=1)
    last = np.full((len(places), 1), table.triangle.shape[1] - 1)
    chosen = table.triangle.T[np.concatenate([columns, last], axis=1)].swapaxes(1, 2)
    r = _triangle(chosen)
    k = columns.shape[1]
    weights = np.empty(columns.shape)
    for i in range(k - 1, -1, -1):
        rest = (r[:, i, i + 1 : k] * weights[:, i + 1 :]).sum(axis=1)
        weights[:, i] = (r[:, i, k] - rest) / r[:, i, i]
    found: Floats = weights / table.scales[columns]
    return found


def _values(weights: Floats, places: _Places, above: int, table: Table) -> Floats:
    over, under = np.repeat(weights[:, :1], table.y.size, axis=1), np.ones((len(weights), table.y.size))
    for slot in range(places.shape[1]):
        side = over if slot < above else under
        side += weights[:, slot + 1, None] * table.terms[places[:, slot]]
    over /= under
    return over


def _correlations(values: Floats, y: Floats) -> Floats:
    apart = values - values.mean(axis=1, keepdims=True)
    own = y - y.mean()
    product_of_variances = (apart**2).mean(axis=1) * np.mean(own**2)
    fits: Floats = np.clip((apart * own).mean(axis=1) / np.sqrt(product_of_variances), -1.0, 1.0)
    flat: Floats = np.where(product_of_variances < _FLAT, float(np.mean(own**2) < _FLAT), fits)
    return flat


def _formula(error: float, fit: float, weights: list[float], places: list[int], above: int) -> FoundFormula:
    sides: Any = list(zip(weights[1:], places))
    return FoundFormula(error, fit, ((weights[0], -1), *sides[:above]), ((1.0, -1), *sides[above:]))
