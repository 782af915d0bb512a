# SPDX-License-Identifier: Apache-2.0
"""One symbolic expression: its operators, values, derivatives, roots. The rest stands in :mod:`orvane.sym`."""
from __future__ import annotations

import numbers
from fractions import Fraction
from typing import Any, Mapping, Union

import numpy as np
from numpy.typing import ArrayLike

from . import _symstore as store
from ._check import Floats, floats, integer, real, shown, vector
from ._core import ffi, lib
from ._handle import ConvergenceError

Scalar = Union["Expression", int, float, Fraction]
KINDS = store.kinds()
SUBTRACT, _DIVIDE = 7, 8
_RECIPROCALS = range(38, 46)


def _double(array: Floats) -> Any:
    return ffi.from_buffer("double[]", array)


def is_number(value: Any) -> bool:
    return isinstance(value, (numbers.Real, np.number)) and not isinstance(value, complex)


def matrix_of(value: Any, name: str) -> Any:
    if isinstance(value, Expression):
        return value._matrix
    if is_number(value):
        return store.number(float(value))
    raise TypeError(f"{name}: must be an expression or a real number, not {shown(value)}")


def name_of(value: Any, name: str) -> str:
    if isinstance(value, str):
        return value
    if isinstance(value, Expression) and value._name is not None:
        return value._name
    raise TypeError(f"{name}: must be a variable or its name, not {shown(value)}")


def _name_in(variable: Any) -> str:
    size = lib.sym_getBaseSymName(variable, ffi.NULL, 0)
    room = ffi.new("char[]", size)
    lib.sym_getBaseSymName(variable, room, size)
    return bytes(ffi.buffer(room)).decode()


class Table:
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
        given = {name_of(key, "variable"): floats(value, str(key)) for key, value in values.items()}
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


class Expression(Table):
    """A symbolic expression; made by :func:`var`, :func:`number`, operators and functions."""

    __slots__ = ()

    def __init__(self, value: Scalar) -> None:
        self._name = None
        self._matrix = matrix_of(value, "value")

    @classmethod
    def _of(cls, matrix: Any, name: str | None = None) -> "Expression":
        made = cls.__new__(cls)
        made._matrix, made._name = matrix, name
        return made

    # Operators.
    def _two(self, other: Any, code: int, turned: bool = False) -> Any:
        if not isinstance(other, Expression) and not is_number(other):
            return NotImplemented
        a, b = self._matrix, matrix_of(other, "operand")
        with store.LOCK:
            store.tidy()
            return Expression._of(store.own(lib.sym_sameTwoFun(*((b, a) if turned else (a, b)), code)))

    def __add__(self, other: Scalar) -> "Expression":
        return self._two(other, store.ADD)  # type: ignore[no-any-return]

    def __radd__(self, other: Scalar) -> "Expression":
        return self._two(other, store.ADD, True)  # type: ignore[no-any-return]

    def __sub__(self, other: Scalar) -> "Expression":
        return self._two(other, SUBTRACT)  # type: ignore[no-any-return]

    def __rsub__(self, other: Scalar) -> "Expression":
        return self._two(other, SUBTRACT, True)  # type: ignore[no-any-return]

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
        return apply("abs", self)

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
            matrix = matrix_of(value, str(key))
            replacements[name_of(key, "variable")] = store.trees(matrix)[0][0]
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
        return Expression._of(self._diff(name_of(variable, "variable"), integer(order, "order", 1)))

    def taylor(self, variable: Any, at: float = 0.0, order: int = 6) -> "Expression":
        """Taylor polynomial about a point.

        Examples
        --------
        >>> from orvane import sym
        >>> x = sym.var("x")
        >>> sym.exp(x).taylor(x, order=2)
        1+x+0.5*x^2
        """
        name = name_of(variable, "variable")
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
        name = name_of(variable, "variable")
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
    def linear(self) -> tuple[dict[str, float], float]:
        """Coefficients of the variables and the constant of a linear expression.

        Examples
        --------
        >>> from orvane import sym
        >>> x, y = sym.symbols("x y")
        >>> (3 * x - y / 2 + 5).linear()
        ({'x': 3.0, 'y': -0.5}, 5.0)
        """
        names = self.variables
        handles, out = ffi.new("BaseSym*[]", len(names) + 1), np.zeros(len(names) + 1)
        with store.LOCK:
            store.tidy()
            if not lib.sym_isLineExpress(self._matrix, 0, 0):
                raise ValueError(f"linear: {self} is not linear")
            count = lib.sym_getLineExpress(self._matrix, 0, 0, handles, _double(out))
            found = {_name_in(handles[i]): float(out[i]) for i in range(count)}
        return dict(sorted(found.items())), float(self.evaluate(dict.fromkeys(names, 0.0)))

    @property
    def is_quadratic(self) -> bool:
        """Whether it is a sum with products of two variables, and nothing above them."""
        with store.LOCK:
            store.tidy()
            return bool(lib.sym_isQuadExpress(self._matrix, 0, 0))

    @property
    def is_polynomial(self) -> bool:
        """Whether it is a polynomial in one variable as it is written."""
        with store.LOCK:
            store.tidy()
            return bool(lib.sym_isPoly(self._matrix))

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


def apply(name: str, *arguments: Scalar) -> Expression:
    code, fewest, most = KINDS[name]
    if not fewest <= len(arguments) <= most:
        raise TypeError(f"{name} takes {fewest if fewest == most else f'{fewest} or {most}'} arguments, not {len(arguments)}")
    matrices = [matrix_of(argument, f"{name}: argument {i + 1}") for i, argument in enumerate(arguments)]
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
