# SPDX-License-Identifier: Apache-2.0
"""Dense real linear algebra, in SciPy's names and shapes.

>>> from orvane import linalg
>>> linalg.det([[2.0, 1.0], [1.0, 3.0]])
5.0
"""
from __future__ import annotations

from typing import Any

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._check import Floats, matrix, vector
from ._core import ffi, lib


def _double(array: Floats) -> Any:
    return ffi.from_buffer("double[]", array)


def det(a: ArrayLike) -> float:
    """Determinant of a square matrix.

    Examples
    --------
    >>> from orvane import linalg
    >>> linalg.det(np.eye(3))
    1.0
    """
    table = matrix(a, "a", square=True)
    return float(lib.matrixDet(_double(table), len(table)))


def inv(a: ArrayLike) -> Floats:
    """Inverse of a square matrix; a singular one raises LinAlgError.

    Examples
    --------
    >>> from orvane import linalg
    >>> linalg.inv([[2.0, 0.0], [0.0, 4.0]])
    array([[0.5 , 0.  ],
           [0.  , 0.25]])
    """
    table = matrix(a, "a", square=True)
    out = np.empty(table.shape)
    lib.matrixInverse(_double(table), _double(out), len(table))
    if np.isfinite(table).all() and not np.isfinite(out).all():
        raise np.linalg.LinAlgError("a: singular matrix")
    return out


def matrix_rank(a: ArrayLike) -> int:
    """Number of singular values above rounding.

    Examples
    --------
    >>> from orvane import linalg
    >>> linalg.matrix_rank([[1.0, 2.0], [2.0, 4.0]])
    1
    """
    table = matrix(a, "a")
    return int(lib.matrixRank(_double(table), *table.shape))


def svd(a: ArrayLike, full_matrices: bool = True) -> tuple[Floats, Floats, Floats]:
    """Singular value decomposition a = u diag(s) vh, s descending.

    Parameters
    ----------
    a : array_like
    full_matrices : bool, optional
        False gives the thin form.

    Returns
    -------
    u, s, vh : ndarray

    Examples
    --------
    >>> from orvane import linalg
    >>> linalg.svd([[3.0, 0.0], [0.0, 4.0]])[1]
    array([4., 3.])
    """
    table = matrix(a, "a")
    rows, cols = table.shape
    k = min(rows, cols)
    left, right = (rows, cols) if full_matrices else (k, k)
    u, s, v = np.empty((rows, left)), np.zeros((left, right)), np.empty((cols, right))
    call = lib.matrixSVD if full_matrices else lib.matrixSVD2
    call(_double(table), rows, cols, _double(u), _double(s), _double(v))
    return u, np.diagonal(s).copy(), v.T


def svdvals(a: ArrayLike) -> Floats:
    """Singular values, descending.

    Examples
    --------
    >>> from orvane import linalg
    >>> linalg.svdvals([[3.0, 0.0], [0.0, 4.0]])
    array([4., 3.])
    """
    table = matrix(a, "a")
    out = np.empty(min(table.shape))
    lib.matrixSingularValues(_double(table), *table.shape, _double(out))
    descending: Floats = out[::-1].copy()
    return descending


def schur(a: ArrayLike) -> tuple[Floats, Floats]:
    """Real Schur form a = z t z': t is upper triangular but for 2 by 2 blocks.

    Returns
    -------
    t, z : ndarray
    """
    table = matrix(a, "a", square=True)
    z, t = np.empty(table.shape), np.empty(table.shape)
    lib.matrixSchur(_double(table), _double(z), _double(t), len(table))
    return t, z


def eig(a: ArrayLike) -> tuple[NDArray[np.complex128], NDArray[np.complex128]]:
    """Eigenvalues and right eigenvectors of a general matrix, in columns of length 1.

    Examples
    --------
    >>> from orvane import linalg
    >>> linalg.eig([[0.0, -1.0], [1.0, 0.0]])[0]
    array([0.+1.j, 0.-1.j])
    """
    table = matrix(a, "a", square=True)
    n = len(table)
    values = np.empty(n, np.complex128)
    re, im = np.empty((n, n)), np.empty((n, n))
    lib.matrixEig(_double(table), n, _double(values.view(np.float64)), _double(re), _double(im))
    vectors = np.empty((n, n), np.complex128)
    vectors.real, vectors.imag = re, im
    return values, vectors


def solve(a: ArrayLike, b: ArrayLike) -> Floats:
    """Solves a x = b in the least-squares sense, with least norm, by singular values.

    Parameters
    ----------
    a : array_like
        Matrix of any shape.
    b : array_like
        Right side, or several as columns.

    Returns
    -------
    ndarray

    Examples
    --------
    >>> from orvane import linalg
    >>> linalg.solve([[2.0, 0.0], [0.0, 4.0]], [2.0, 2.0])
    array([1. , 0.5])
    """
    table = matrix(a, "a")
    flat = np.ndim(b) == 1
    right = vector(b, "b").reshape(-1, 1) if flat else matrix(b, "b")
    if len(right) != len(table):
        raise ValueError(f"b: must have {len(table)} rows, not {len(right)}")
    out = np.empty((table.shape[1], right.shape[1]))
    lib.math_solveLineEqu(_double(table), *table.shape, _double(right), *right.shape, _double(out))
    return out[:, 0].copy() if flat else out


lstsq = solve


def solve_sylvester(a: ArrayLike, b: ArrayLike, q: ArrayLike) -> Floats:
    """Solves a x + x b = q.

    Examples
    --------
    >>> from orvane import linalg
    >>> linalg.solve_sylvester([[1.0]], [[3.0]], [[8.0]])
    array([[2.]])
    """
    first, second = matrix(a, "a", square=True), matrix(b, "b", square=True)
    right = matrix(q, "q")
    if right.shape != (len(first), len(second)):
        raise ValueError(f"q: must have the shape {(len(first), len(second))}, not {right.shape}")
    out = np.empty(right.shape)
    lib.lineEqu_solveEquBySylvester(_double(first), _double(second), _double(right), *right.shape, _double(out))
    return out


def solve_tridiagonal(lower: ArrayLike, diagonal: ArrayLike, upper: ArrayLike, b: ArrayLike) -> Floats:
    """Solves a tridiagonal system; a pivot of 0 shifts the diagonal by 1e-6 or more.

    Parameters
    ----------
    lower, upper : array_like
        n - 1 entries beside the diagonal.
    diagonal, b : array_like
        n entries.

    Examples
    --------
    >>> from orvane import linalg
    >>> linalg.solve_tridiagonal([1.0], [2.0, 2.0], [1.0], [3.0, 3.0])
    array([1., 1.])
    """
    middle = vector(diagonal, "diagonal", least=1)
    n = middle.size
    below = np.concatenate([[0.0], vector(lower, "lower", length=n - 1)])
    above = np.concatenate([vector(upper, "upper", length=n - 1), [0.0]])
    right, out = vector(b, "b", length=n), np.empty(n)
    lib.lineEqu_solveTridiagonalEqu(_double(above), _double(middle), _double(below), _double(right), _double(out), n)
    return out
