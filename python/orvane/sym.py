# SPDX-License-Identifier: Apache-2.0
"""Symbolic expressions: built by operators and functions, derived, expanded, solved, written.

Every kind of the library is a function of its name in lower case: ``sym.sin``, ``sym.bessel_j``, ``sym.lambert_w``;
:func:`functions` lists them with their numbers of arguments. An expression is brought to a normal form as it is built.
All threads may use expressions; the library works on one at a time. Note that ``bessel_k`` evaluates as ``bessel_j``,
as the kind of that name does in the library.

>>> from orvane import sym
>>> x = sym.var("x")
>>> f = sym.sin(x) ** 2 + 3 * x
>>> f.diff(x)
3+2*Sin(x)*Cos(x)
>>> f.evaluate(x=[0.0, 1.0]).round(6)
array([0.      , 3.708073])
"""
from __future__ import annotations

from typing import Any, Callable, Iterable, Mapping, Sequence

import numpy as np
from numpy.typing import ArrayLike

from . import _symstore as store
from ._check import Floats, integer, real, shown, vector
from ._core import ffi, lib
from ._expression import KINDS, SUBTRACT, Table, apply, is_number, matrix_of, name_of
from ._expression import Expression as Expression
from ._expression import Scalar as Scalar
from ._handle import ConvergenceError

Expression.__module__ = __name__  # where it is used, and where pickles look for it
# doctest passes over methods whose source is elsewhere.
__test__ = {f"Expression.{name}": thing.__doc__ for name, thing in vars(Expression).items() if getattr(thing, "__doc__", None)}


def _double(array: Floats) -> Any:
    return ffi.from_buffer("double[]", array)


class Matrix(Table):
    """A matrix of expressions, from rows of expressions and numbers.

    Examples
    --------
    >>> from orvane import sym
    >>> x = sym.var("x")
    >>> m = sym.Matrix([[x, 1], [0, x]])
    >>> m.det()
    x^2
    >>> (m @ m)[0, 1]
    2*x
    """

    __slots__ = ()

    def __init__(self, rows: Sequence[Sequence[Scalar]]) -> None:
        lengths = {len(row) for row in rows}
        if len(lengths) != 1 or lengths == {0}:
            raise ValueError(f"rows: must be rows of one length, at least 1, not of {sorted(lengths)}")
        self._name = None
        cells = [[matrix_of(cell, f"rows[{i}][{j}]") for j, cell in enumerate(row)] for i, row in enumerate(rows)]
        with store.LOCK:
            store.tidy()
            self._matrix = store.own(lib.sym_createSymMatrix(len(cells), len(cells[0])))
            for i, row in enumerate(cells):
                for j, cell in enumerate(row):
                    lib.sym_setSymMatrixData2(self._matrix, i, j, cell)

    @classmethod
    def _of(cls, matrix: Any) -> "Matrix":
        made = cls.__new__(cls)
        made._matrix, made._name = matrix, None
        return made

    @property
    def shape(self) -> tuple[int, int]:
        """Rows and columns."""
        out = ffi.new("int32_t[2]")
        with store.LOCK:
            lib.sym_getDataDim(self._matrix, out)
        return out[0], out[1]

    def _cells(self) -> int:
        rows, cols = self.shape
        return rows * cols

    def __getitem__(self, place: tuple[int, int]) -> Expression:
        rows, cols = self.shape
        i, j = integer(place[0], "row", -rows, rows - 1) % rows, integer(place[1], "column", -cols, cols - 1) % cols
        with store.LOCK:
            store.tidy()
            row = store.own(lib.sym_getRowCol(self._matrix, i, 1))
            return Expression._of(store.own(lib.sym_getRowCol(row, j, 0)))

    def __repr__(self) -> str:
        rows, cols = self.shape
        with store.LOCK:
            texts = [[store.text_of(lib.sym_getSymStr, self._matrix, i, j) for j in range(cols)] for i in range(rows)]
        return "Matrix([" + ", ".join("[" + ", ".join(row) + "]" for row in texts) + "])"

    def latex(self) -> str:
        """LaTeX for math mode."""
        rows, cols = self.shape
        with store.LOCK:
            cells = [[store.text_of(lib.sym_getLatexStr, self._matrix, i, j) for j in range(cols)] for i in range(rows)]
        return r"\begin{pmatrix}" + r" \\ ".join(" & ".join(row) for row in cells) + r"\end{pmatrix}"

    def _repr_latex_(self) -> str:
        return f"${self.latex()}$"

    def _with(self, other: Any, code: int) -> "Matrix":
        if isinstance(other, Matrix):
            if self.shape != other.shape:
                raise ValueError(f"shapes {self.shape} and {other.shape} do not go together")
            second = other._matrix
        else:
            second = matrix_of(other, "operand")
        with store.LOCK:
            store.tidy()
            return Matrix._of(store.own(lib.sym_sameTwoFun(self._matrix, second, code)))

    def __add__(self, other: Any) -> "Matrix":
        return self._with(other, store.ADD)

    def __sub__(self, other: Any) -> "Matrix":
        return self._with(other, SUBTRACT)

    def __mul__(self, other: Any) -> "Matrix":
        return self._with(other, store.MUL)

    __rmul__ = __mul__

    def __matmul__(self, other: "Matrix") -> "Matrix":
        if self.shape[1] != other.shape[0]:
            raise ValueError(f"shapes {self.shape} and {other.shape} do not go together")
        with store.LOCK:
            store.tidy()
            return Matrix._of(store.own(lib.sym_dot(self._matrix, other._matrix)))

    def _one(self, code: int, square: bool = False) -> Any:
        rows, cols = self.shape
        if square and rows != cols:
            raise ValueError(f"the matrix must be square, not of the shape {self.shape}")
        with store.LOCK:
            store.tidy()
            return store.own(lib.sym_oneFun(self._matrix, code))

    @property
    def T(self) -> "Matrix":
        """The transpose."""
        return Matrix._of(self._one(204))

    def det(self) -> Expression:
        """Determinant by cofactors, for up to 8 rows."""
        return Expression._of(self._one(202, True))

    def inv(self) -> "Matrix":
        """Inverse: cofactors over the determinant, for up to 8 rows."""
        return Matrix._of(self._one(201, True))

    def trace(self) -> Expression:
        """Sum of the diagonal."""
        return Expression._of(self._one(200, True))

    def diff(self, variable: Any, order: int = 1) -> "Matrix":
        """Derivative of every element."""
        return Matrix._of(self._diff(name_of(variable, "variable"), integer(order, "order", 1)))

    def jacobian(self, variables: Iterable[Any]) -> "Matrix":
        """Derivatives of a column by variables: a row an element, a column a variable."""
        names = [name_of(v, "variables") for v in variables]
        rows, cols = self.shape
        if cols != 1:
            raise ValueError(f"jacobian: the matrix must be a column, not of the shape {self.shape}")
        parts = [self.diff(name) for name in names]
        return Matrix([[part[i, 0] for part in parts] for i in range(rows)])

    def cross(self, other: "Matrix") -> "Matrix":
        """Cross product of two vectors of three elements.

        Examples
        --------
        >>> from orvane import sym
        >>> a, b = sym.symbols("a b")
        >>> sym.Matrix([[a, b, 0]]).cross(sym.Matrix([[0, 0, 1]]))
        Matrix([[b, -a, 0]])
        """
        for matrix, name in ((self, "self"), (other, "other")):
            if sorted(matrix.shape) != [1, 3]:
                raise ValueError(f"{name}: must have three elements, not the shape {matrix.shape}")
        with store.LOCK:
            store.tidy()
            return Matrix._of(store.own(lib.sym_cross(self._matrix, other._matrix)))

    def evaluate(self, values: Mapping[Any, ArrayLike] | None = None, **named: ArrayLike) -> Floats:
        """Values of all elements: an array of the shape of the points, then rows and columns."""
        out = self._values({**(values or {}), **named})
        return out.reshape(out.shape[:-1] + self.shape)


def var(name: str) -> Expression:
    """A variable.

    Parameters
    ----------
    name : str
        Letters, digits and underscores, a letter first. "pi" is the number.

    Returns
    -------
    Expression

    Examples
    --------
    >>> from orvane import sym
    >>> sym.var("t") * 2
    2*t
    """
    if not isinstance(name, str) or not name.isidentifier():
        raise ValueError(f"name: must be letters, digits and underscores, a letter first, not {shown(name)}")
    matrix = store.build_matrix([[store.Node(store.VARIABLE, 1.0, name, ())]])
    return Expression._of(matrix, None if name == "pi" else name)


def symbols(names: str) -> tuple[Expression, ...]:
    """Variables of names that stand between blanks or commas.

    Examples
    --------
    >>> from orvane import sym
    >>> sym.symbols("a, b")
    (a, b)
    """
    return tuple(var(name) for name in names.replace(",", " ").split())


def number(value: float) -> Expression:
    """A constant as an expression."""
    return Expression(value)


def polynomial(coefficients: ArrayLike) -> Expression:
    """Polynomial in ``x`` with ascending coefficients.

    Examples
    --------
    >>> from orvane import sym
    >>> sym.polynomial([1.0, 0.0, 2.0])
    1+2*x^2
    """
    values = vector(coefficients, "coefficients", least=1, finite=True)
    with store.LOCK:
        store.tidy()
        return Expression._of(store.own(lib.sym_createPoly(_double(np.concatenate([[values.size], values])))))


def polyfit(x: ArrayLike, y: ArrayLike, degree: int) -> Expression:
    """Least-squares polynomial in ``x`` through points.

    Examples
    --------
    >>> from orvane import sym
    >>> sym.polyfit([0.0, 1.0, 2.0], [1.0, 3.0, 5.0], 1).coefficients().round(9)
    array([1., 2.])
    """
    xs = vector(x, "x", least=1, finite=True)
    ys = vector(y, "y", length=xs.size, finite=True)
    with store.LOCK:
        store.tidy()
        found = lib.sym_solveRPoly(
            _double(xs), _double(ys), xs.size, ffi.NULL, ffi.NULL, integer(degree, "degree", 0, 1000) + 1
        )
    if found == ffi.NULL:
        raise ConvergenceError("polyfit: no polynomial through these points")
    return Expression._of(store.own(found))


def solve_ode(
    equations: Sequence[Expression], variable: Any, states: Sequence[Any], start: float, initial: ArrayLike,
    at: ArrayLike, tolerance: float = 1e-10,
) -> Floats:
    """Solves dy_i/dt = equations[i] from an initial state.

    Parameters
    ----------
    equations : sequence of Expression
    variable : Expression or str
        Independent variable.
    states : sequence of Expression or str
        Dependent variables.
    start : float
    initial : array_like
        State at the start.
    at : array_like
        Where the solution is wanted, on either side of the start.
    tolerance : float, optional
        Absolute error of a step.

    Returns
    -------
    ndarray
        A row a position.

    Examples
    --------
    >>> from orvane import sym
    >>> y = sym.var("y")
    >>> sym.solve_ode([-y], "t", [y], 0.0, [1.0], [1.0]).round(8)
    array([[0.36787944]])
    """
    names = [name_of(variable, "variable"), *(name_of(state, "states") for state in states)]
    if len(equations) != len(states):
        raise ValueError(f"equations: must be as many as states, {len(states)}, not {len(equations)}")
    first = vector(initial, "initial", length=len(states), finite=True)
    positions = vector(at, "at")
    table = Matrix([[equation] for equation in equations])
    unknown = set(table.variables) - set(names)
    if unknown:
        raise ValueError(f"equations: {', '.join(sorted(unknown))} is no variable of the problem")
    out = np.empty((positions.size, len(states)))
    with store.LOCK:
        store.tidy()
        for name in names:
            lib.sym_createBaseSymVar(name.encode())
        lib.sym_solveODE(
            table._matrix, ",".join(names).encode(), real(start, "start"), _double(first), len(states),
            _double(positions), _double(out), positions.size, 0, real(tolerance, "tolerance", 0.0),
        )
        lib.sym_clearTempVar()
    return out


def rotation(angle: Any, axis: int) -> Matrix:
    """Rotation matrix about the axis 1, 2 or 3 by a variable in radians; columns are the images of the axes.

    Examples
    --------
    >>> from orvane import sym
    >>> sym.rotation("t", 3).evaluate(t=np.pi / 2).round(9) @ [1.0, 0.0, 0.0]
    array([0., 1., 0.])
    """
    name = name_of(angle, "angle")
    with store.LOCK:
        store.tidy()
        lib.sym_createBaseSymVar(name.encode())
        return Matrix._of(store.own(lib.sym_createSO3ByAxis(name.encode(), integer(axis, "axis", 1, 3))))


def functions() -> dict[str, tuple[int, int]]:
    """Names of all function kinds with their fewest and most arguments.

    Examples
    --------
    >>> from orvane import sym
    >>> sym.functions()["bessel_j"]
    (2, 2)
    """
    return {name: (fewest, most) for name, (_, fewest, most) in KINDS.items()}


def __getattr__(name: str) -> Callable[..., Expression]:
    if name not in KINDS:
        raise AttributeError(f"module 'orvane.sym' has no function {name!r}")
    _, fewest, most = KINDS[name]

    def function(*arguments: Scalar) -> Expression:
        return apply(name, *arguments)

    function.__name__ = function.__qualname__ = name
    count = str(fewest) if fewest == most else f"{fewest} or {most}"
    function.__doc__ = f"The kind {name} as an expression; it takes {count} argument{'s' * (most > 1)}."
    globals()[name] = function
    return function


def __dir__() -> list[str]:
    return sorted({*KINDS, "Expression", "Matrix", "var", "symbols", "number", "polynomial", "polyfit", "solve_ode", "rotation",
                   "functions"})
