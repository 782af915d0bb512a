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

import numbers
from fractions import Fraction
from typing import Any, Callable, Iterable, Mapping, Sequence, Union

import numpy as np
from numpy.typing import ArrayLike

from . import _symstore as store
from ._check import Floats, floats, integer, real, shown, vector
from ._core import ffi, lib
from ._handle import ConvergenceError

Scalar = Union["Expression", int, float, Fraction]
_KINDS = store.kinds()
_SUBTRACT, _DIVIDE = 7, 8
_RECIPROCALS = range(38, 46)


def _double(array: Floats) -> Any:
    return ffi.from_buffer("double[]", array)


def _is_number(value: Any) -> bool:
    return isinstance(value, (numbers.Real, np.number)) and not isinstance(value, complex)


def _matrix_of(value: Any, name: str) -> Any:
    if isinstance(value, Expression):
        return value._matrix
    if _is_number(value):
        return store.number(float(value))
    raise TypeError(f"{name}: must be an expression or a real number, not {shown(value)}")


def _name_of(value: Any, name: str) -> str:
    if isinstance(value, str):
        return value
    if isinstance(value, Expression) and value._name is not None:
        return value._name
    raise TypeError(f"{name}: must be a variable or its name, not {shown(value)}")


class _Table:
    """What expressions and matrices of them share: an owned matrix of the store."""

    __slots__ = ("_matrix", "_name", "__weakref__")
    _matrix: Any
    _name: str | None
    __array_ufunc__ = None  # NumPy's operators leave the work to ours

    @property
    def variables(self) -> list[str]:
        """Names of the variables, sorted."""
        found: set[str] = set()
        for row in store.trees(self._matrix):
            for node in row:
                found |= store.variables_of(node)
        return sorted(found)

    def _diff(self, name: str, order: int) -> Any:
        message = bytearray(256)
        with store.LOCK:
            store.tidy()
            found = lib.sym_diff(self._matrix, order, name.encode(), ffi.from_buffer("char[]", message))
        if found == ffi.NULL:
            reason = bytes(message).rstrip(b"\0").decode("gbk", "replace")
            raise ConvergenceError(f"no derivative by {name}: {reason}")
        return store.own(found)

    def _values(self, values: Mapping[str, ArrayLike]) -> Floats:
        """[points..., rows*cols]: the elements at every point."""
        names = self.variables
        given = {_name_of(key, "variable"): floats(value, str(key)) for key, value in values.items()}
        missing = [name for name in names if name not in given]
        if missing:
            raise ValueError(f"evaluate: no value for {', '.join(missing)}")
        used = [given[name] for name in names]
        try:
            shape = np.broadcast_shapes(*[value.shape for value in given.values()])
        except ValueError:
            raise ValueError(f"evaluate: shapes do not go together: {[v.shape for v in given.values()]}") from None
        columns = [np.broadcast_to(value, shape).ravel().tolist() for value in used]
        keys = [name.encode() for name in names]
        size = int(np.prod(shape))
        out = np.empty((size, self._cells()))
        setter, calculate, matrix = lib.sym_setSymValue, lib.sym_calcValue, self._matrix
        address, step = int(out.ctypes.data), out.strides[0]
        with store.LOCK:
            store.tidy()
            for name in keys:  # a variable that nothing named for a while is made anew
                lib.sym_createBaseSymVar(name)
            for place in range(size):
                for key, column in zip(keys, columns):
                    setter(key, column[place])
                calculate(matrix, ffi.cast("double*", address + place * step))
            lib.sym_clearTempVar()
        return out.reshape(shape + (out.shape[1],))

    def _cells(self) -> int:
        return 1

    def __getstate__(self) -> bytes:
        return store.alone(store.trees(self._matrix))

    def __setstate__(self, block: bytes) -> None:
        elements = store.read(block, 0)
        self._matrix = store.build_matrix(elements)
        first = elements[0][0] if elements and elements[0] else None
        self._name = first.name if first is not None and first.kind == store.VARIABLE and first.coef == 1 else None


class Expression(_Table):
    """A symbolic expression; made by :func:`var`, :func:`number`, operators and functions."""

    __slots__ = ()

    def __init__(self, value: Scalar) -> None:
        self._name = None
        self._matrix = _matrix_of(value, "value")

    @classmethod
    def _of(cls, matrix: Any, name: str | None = None) -> "Expression":
        made = cls.__new__(cls)
        made._matrix, made._name = matrix, name
        return made

    # Operators.
    def _two(self, other: Any, code: int, turned: bool = False) -> Any:
        if not isinstance(other, Expression) and not _is_number(other):
            return NotImplemented
        a, b = self._matrix, _matrix_of(other, "operand")
        with store.LOCK:
            store.tidy()
            return Expression._of(store.own(lib.sym_sameTwoFun(*((b, a) if turned else (a, b)), code)))

    def __add__(self, other: Scalar) -> "Expression":
        return self._two(other, store.ADD)  # type: ignore[no-any-return]

    def __radd__(self, other: Scalar) -> "Expression":
        return self._two(other, store.ADD, True)  # type: ignore[no-any-return]

    def __sub__(self, other: Scalar) -> "Expression":
        return self._two(other, _SUBTRACT)  # type: ignore[no-any-return]

    def __rsub__(self, other: Scalar) -> "Expression":
        return self._two(other, _SUBTRACT, True)  # type: ignore[no-any-return]

    def __mul__(self, other: Scalar) -> "Expression":
        return self._two(other, store.MUL)  # type: ignore[no-any-return]

    def __rmul__(self, other: Scalar) -> "Expression":
        return self._two(other, store.MUL, True)  # type: ignore[no-any-return]

    def __truediv__(self, other: Scalar) -> "Expression":
        return self._two(other, _DIVIDE)  # type: ignore[no-any-return]

    def __rtruediv__(self, other: Scalar) -> "Expression":
        return self._two(other, _DIVIDE, True)  # type: ignore[no-any-return]

    def __pow__(self, other: Scalar) -> "Expression":
        return self._two(other, store.POW)  # type: ignore[no-any-return]

    def __rpow__(self, other: Scalar) -> "Expression":
        return self._two(other, store.POW, True)  # type: ignore[no-any-return]

    def __neg__(self) -> "Expression":
        return self * -1

    def __pos__(self) -> "Expression":
        return self

    def __abs__(self) -> "Expression":
        return _apply("abs", self)

    # Texts.
    def __str__(self) -> str:
        with store.LOCK:
            return store.text_of(lib.sym_getSymStr, self._matrix, 0, 0)

    __repr__ = __str__

    def latex(self) -> str:
        """LaTeX for math mode.

        Examples
        --------
        >>> from orvane import sym
        >>> sym.sqrt(sym.var("x")).latex()
        '\\\\sqrt{x}'
        """
        with store.LOCK:
            return store.text_of(lib.sym_getLatexStr, self._matrix, 0, 0)

    def _repr_latex_(self) -> str:
        return f"${self.latex()}$"

    # Values.
    def evaluate(self, values: Mapping[Any, ArrayLike] | None = None, **named: ArrayLike) -> Any:
        """Value at one point or at many.

        Parameters
        ----------
        values : mapping, optional
            Values by variable or name.
        **named : array_like
            Values by name. All are broadcast against each other; names that do not occur are ignored.

        Returns
        -------
        float or ndarray
            A float where all values are numbers.

        Examples
        --------
        >>> from orvane import sym
        >>> x, y = sym.symbols("x y")
        >>> (x * y).evaluate(x=2.0, y=3.0)
        6.0
        """
        out = self._values({**(values or {}), **named})[..., 0]
        return float(out) if out.ndim == 0 else np.ascontiguousarray(out)

    def __float__(self) -> float:
        return float(self.evaluate())

    def subs(self, values: Mapping[Any, Scalar] | None = None, **named: Scalar) -> "Expression":
        """The expression with variables replaced by numbers or expressions, all at once.

        Examples
        --------
        >>> from orvane import sym
        >>> x, y = sym.symbols("x y")
        >>> (x * y).subs(x=y + 1)
        y*(1+y)
        """
        replacements = {}
        for key, value in {**(values or {}), **named}.items():
            matrix = _matrix_of(value, str(key))
            replacements[_name_of(key, "variable")] = store.trees(matrix)[0][0]
        tree = store.replaced(store.trees(self._matrix)[0][0], replacements)
        return Expression._of(store.build_matrix([[tree]]))

    # Calculus.
    def diff(self, variable: Any, order: int = 1) -> "Expression":
        """Derivative by a variable.

        Parameters
        ----------
        variable : Expression or str
        order : int, optional

        Returns
        -------
        Expression

        Examples
        --------
        >>> from orvane import sym
        >>> x = sym.var("x")
        >>> (x ** 3).diff(x, 2)
        6*x
        """
        return Expression._of(self._diff(_name_of(variable, "variable"), integer(order, "order", 1)))

    def taylor(self, variable: Any, at: float = 0.0, order: int = 6) -> "Expression":
        """Taylor polynomial about a point.

        Examples
        --------
        >>> from orvane import sym
        >>> x = sym.var("x")
        >>> sym.exp(x).taylor(x, order=2)
        1+x+0.5*x^2
        """
        name = _name_of(variable, "variable")
        self._only(name, "taylor")
        with store.LOCK:
            store.tidy()
            found = lib.sym_taylor(self._matrix, name.encode(), store.finite(at, "at"), integer(order, "order", 0))
        if found == ffi.NULL:
            raise ConvergenceError(f"taylor: {self} has no derivative by {name}")
        return Expression._of(store.own(found))

    def integrate(self, variable: Any, a: float, b: float) -> float:
        """Definite integral over a variable, by adaptive quadrature; the limits may be infinite.

        Examples
        --------
        >>> from orvane import sym
        >>> x = sym.var("x")
        >>> area = sym.exp(-x * x).integrate(x, float("-inf"), float("inf"))
        >>> f"{area:.9f}"
        '1.772453851'
        """
        name = _name_of(variable, "variable")
        self._only(name, "integrate")
        out = np.empty(1)
        with store.LOCK:
            store.tidy()
            lib.sym_integral1D(self._matrix, name.encode(), real(a, "a"), real(b, "b"), _double(out))
        return float(out[0])

    def _only(self, name: str, what: str) -> None:
        others = [other for other in self.variables if other != name]
        if others:
            raise ValueError(f"{what}: {', '.join(others)} must have values first: use subs")

    # Polynomials.
    def coefficients(self) -> Floats:
        """Coefficients of a polynomial in one variable, ascending.

        Examples
        --------
        >>> from orvane import sym
        >>> x = sym.var("x")
        >>> (3 * x ** 2 - 1).coefficients()
        array([-1.,  0.,  3.])
        """
        with store.LOCK:
            store.tidy()
            size = lib.sym_getPolyParam(self._matrix, ffi.NULL, 0)
            if not 0 < size <= 1000001:
                raise ValueError(f"no polynomial in one variable: {self}")
            out = np.zeros(size)
            lib.sym_getPolyParam(self._matrix, _double(out), size)
        return out

    def roots(self) -> np.ndarray[Any, np.dtype[np.complex128]]:
        """Complex roots of a polynomial, each as often as its multiplicity.

        Examples
        --------
        >>> from orvane import sym
        >>> x = sym.var("x")
        >>> (x ** 2 + 1).roots()
        array([0.-1.j, 0.+1.j])
        """
        degree = len(self.coefficients()) - 1
        re, im = np.empty(max(degree, 1)), np.empty(max(degree, 1))
        with store.LOCK:
            store.tidy()
            count = lib.sym_calcPolyRoot(self._matrix, _double(re), _double(im), degree)
        if count == 0xFFFFFFFF:
            raise ValueError(f"roots: no polynomial of degree 1000 at most with finite coefficients: {self}")
        out = np.empty(count, np.complex128)
        out.real, out.imag = re[:count], im[:count]
        return out

    def factor(self) -> str:
        """Product of the factors over the real numbers, as text.

        Examples
        --------
        >>> from orvane import sym
        >>> x = sym.var("x")
        >>> (2 * x ** 2 - 2).factor()
        '2*(x+1)*(x-1)'
        """
        with store.LOCK:
            store.tidy()
            found = store.text_of(lib.sym_polyFactor, self._matrix)
        if not found:
            raise ValueError(f"factor: no polynomial in one variable: {self}")
        return found


class Matrix(_Table):
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
        cells = [[_matrix_of(cell, f"rows[{i}][{j}]") for j, cell in enumerate(row)] for i, row in enumerate(rows)]
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
            second = _matrix_of(other, "operand")
        with store.LOCK:
            store.tidy()
            return Matrix._of(store.own(lib.sym_sameTwoFun(self._matrix, second, code)))

    def __add__(self, other: Any) -> "Matrix":
        return self._with(other, store.ADD)

    def __sub__(self, other: Any) -> "Matrix":
        return self._with(other, _SUBTRACT)

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
        return Matrix._of(self._diff(_name_of(variable, "variable"), integer(order, "order", 1)))

    def jacobian(self, variables: Iterable[Any]) -> "Matrix":
        """Derivatives of a column by variables: a row an element, a column a variable."""
        names = [_name_of(v, "variables") for v in variables]
        rows, cols = self.shape
        if cols != 1:
            raise ValueError(f"jacobian: the matrix must be a column, not of the shape {self.shape}")
        parts = [self.diff(name) for name in names]
        return Matrix([[part[i, 0] for part in parts] for i in range(rows)])

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
    names = [_name_of(variable, "variable"), *(_name_of(state, "states") for state in states)]
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


def functions() -> dict[str, tuple[int, int]]:
    """Names of all function kinds with their fewest and most arguments.

    Examples
    --------
    >>> from orvane import sym
    >>> sym.functions()["bessel_j"]
    (2, 2)
    """
    return {name: (fewest, most) for name, (_, fewest, most) in _KINDS.items()}


def _apply(name: str, *arguments: Scalar) -> Expression:
    code, fewest, most = _KINDS[name]
    if not fewest <= len(arguments) <= most:
        raise TypeError(f"{name} takes {fewest if fewest == most else f'{fewest} or {most}'} arguments, not {len(arguments)}")
    matrices = [_matrix_of(argument, f"{name}: argument {i + 1}") for i, argument in enumerate(arguments)]
    if most == len(arguments) == 2 and name != "incomplete_gamma":
        with store.LOCK:
            store.tidy()
            return Expression._of(store.own(lib.sym_sameTwoFun(matrices[0], matrices[1], code)))
    if len(arguments) == most == 1 and code not in _RECIPROCALS and name != "gamma":
        with store.LOCK:
            store.tidy()
            # Surplus arguments are dropped where a node is built: a function of one takes the first of two.
            return Expression._of(store.own(lib.sym_sameTwoFun(matrices[0], matrices[0], code)))
    trees = [store.trees(matrix)[0][0] for matrix in matrices]
    with store.LOCK:
        store.tidy()
        matrix = store.own(lib.sym_createSymMatrix(1, 1))
        nodes = [store.build(tree) for tree in trees]
        node = lib.sym_funOneParam(nodes[0], code) if len(nodes) == 1 else lib.sym_funMulParam(nodes, len(nodes), code)
        lib.sym_setSymMatrixData(matrix, 0, 0, node)
        lib.sym_clearTempVar()
    return Expression._of(matrix)


def __getattr__(name: str) -> Callable[..., Expression]:
    if name not in _KINDS:
        raise AttributeError(f"module 'orvane.sym' has no function {name!r}")
    _, fewest, most = _KINDS[name]

    def function(*arguments: Scalar) -> Expression:
        return _apply(name, *arguments)

    function.__name__ = function.__qualname__ = name
    count = str(fewest) if fewest == most else f"{fewest} or {most}"
    function.__doc__ = f"The kind {name} as an expression; it takes {count} argument{'s' * (most > 1)}."
    globals()[name] = function
    return function


def __dir__() -> list[str]:
    return sorted({*_KINDS, "Expression", "Matrix", "var", "symbols", "number", "polynomial", "polyfit", "solve_ode",
                   "functions"})
