# SPDX-License-Identifier: Apache-2.0
"""Decimal numbers of any precision, which mix with int and Fraction, and their functions.

>>> from orvane import highprecision as hp
>>> hp.Number(2, digits=42).sqrt()
Number('1.41421356237309504880168872420969807856967')
>>> from fractions import Fraction
>>> hp.Number("0.1") + Fraction(1, 2) == hp.Number("0.6")
True
"""
from __future__ import annotations

from fractions import Fraction
from typing import Any, Union

from ._check import integer, shown
from ._core import ffi, lib
from ._handle import Handle

Real = Union["Number", int, Fraction, str, float]
_LIMB = 10**7
_ONE = {
    "sqrt": 49, "log": 50, "sin": 51, "cos": 52, "tan": 53, "cot": 54, "asin": 55, "acos": 56, "atan": 57, "acot": 58,
    "exp": 59, "sinh": 61, "cosh": 62, "tanh": 63, "coth": 64, "asinh": 65, "acosh": 66, "atanh": 67, "acoth": 68,
}


def _limbs_for(digits: int) -> int:
    return -(-digits // 7) + 2


class Number(Handle):
    """A decimal number; operations keep at least the larger number of digits of their operands.

    Parameters
    ----------
    value : int, Fraction, str, float or Number
        A str is a decimal number such as "-1.25e-30"; a float stands for exactly its value.
    digits : int, optional
        Significant digits of results.

    Examples
    --------
    >>> from orvane.highprecision import Number
    >>> 1 / Number(3, digits=20)
    Number('0.33333333333333333333')
    """

    __slots__ = ("digits",)
    digits: int

    def __init__(self, value: Real, digits: int = 50) -> None:
        self.digits = integer(digits, "digits", 1, 10**8)
        super().__init__(_made(value, self.digits))

    @classmethod
    def _of(cls, pointer: Any, digits: int) -> "Number":
        made = cls.__new__(cls)
        made.digits = digits
        Handle.__init__(made, pointer)
        return made

    def _parts(self) -> tuple[bool, bool, int, int]:
        """Infinite, negative, integer value of the limbs, exponent of ten."""
        out = ffi.new("int64_t[4]")
        lib.hp_Attribute(self.pointer, out)
        limbs = ffi.new("int64_t[]", max(1, out[2]))
        lib.hp_GetValue(self.pointer, limbs)
        text = "".join(f"{limbs[i]:07d}" for i in range(out[2] - 1, -1, -1))
        return bool(out[0]), bool(out[1]), int(text or "0"), 7 * int(out[3])

    @property
    def finite(self) -> bool:
        """Whether the number is finite."""
        return not self._parts()[0]

    def as_fraction(self) -> Fraction:
        """The exact value."""
        infinite, negative, value, exponent = self._parts()
        if infinite:
            raise OverflowError("an infinite number is no fraction")
        signed = -value if negative else value
        return Fraction(signed * 10**exponent) if exponent >= 0 else Fraction(signed, 10**-exponent)

    def __float__(self) -> float:
        infinite, negative, _, _ = self._parts()
        if infinite:
            return float("-inf") if negative else float("inf")
        return float(self.as_fraction())

    def __int__(self) -> int:
        return int(self.as_fraction())

    def __str__(self) -> str:
        infinite, negative, value, exponent = self._parts()
        sign = "-" if negative and (value or infinite) else ""
        if infinite:
            return sign + "inf"
        text = str(value)
        if len(text) > self.digits:
            cut = len(text) - self.digits
            value = (value + 5 * 10 ** (cut - 1)) // 10**cut
            exponent, text = exponent + cut, str(value)
        text = text.rstrip("0") or "0"
        exponent += len(str(value)) - len(text) if value else 0
        point = len(text) + exponent
        if not value:
            return "0"
        if 0 < point <= max(self.digits, 21):
            text = text.ljust(point, "0")
            return sign + text[:point] + ("." + text[point:] if text[point:] else "")
        if -6 < point <= 0:
            return f"{sign}0.{'0' * -point}{text}"
        return f"{sign}{text[0]}{'.' + text[1:] if text[1:] else ''}e{point - 1:+d}"

    def __repr__(self) -> str:
        return "<closed Number>" if self.closed else f"Number('{self}')"

    def __reduce__(self) -> tuple[Any, ...]:
        return Number, (self.as_fraction(), self.digits)

    def _two(self, other: Any, code: int, turned: bool = False) -> Any:
        second = _operand(other, self.digits)
        if second is None:
            return NotImplemented
        digits = max(self.digits, second.digits)
        a, b = (second, self) if turned else (self, second)
        if code == 3 and lib.hp_CompareZero(b.pointer) == 1:
            raise ZeroDivisionError(f"{a} / 0")
        return Number._of(lib.hp_Fun2(a.pointer, b.pointer, code, _limbs_for(digits)), digits)

    def __add__(self, other: Real) -> "Number":
        return self._two(other, 0)  # type: ignore[no-any-return]

    __radd__ = __add__

    def __sub__(self, other: Real) -> "Number":
        return self._two(other, 1)  # type: ignore[no-any-return]

    def __rsub__(self, other: Real) -> "Number":
        return self._two(other, 1, True)  # type: ignore[no-any-return]

    def __mul__(self, other: Real) -> "Number":
        return self._two(other, 2)  # type: ignore[no-any-return]

    __rmul__ = __mul__

    def __truediv__(self, other: Real) -> "Number":
        return self._two(other, 3)  # type: ignore[no-any-return]

    def __rtruediv__(self, other: Real) -> "Number":
        return self._two(other, 3, True)  # type: ignore[no-any-return]

    def __pow__(self, other: Real) -> "Number":
        if isinstance(other, int) and abs(other) < 2**63:
            return Number._of(lib.hp_Pow(self.pointer, other, _limbs_for(self.digits)), self.digits)
        return self._two(other, 60)  # type: ignore[no-any-return]

    def __rpow__(self, other: Real) -> "Number":
        return self._two(other, 60, True)  # type: ignore[no-any-return]

    def __neg__(self) -> "Number":
        return Number._of(lib.hp_Fun1(self.pointer, 41, _limbs_for(self.digits)), self.digits)

    def __abs__(self) -> "Number":
        return Number._of(lib.hp_Fun1(self.pointer, 42, _limbs_for(self.digits)), self.digits)

    def _order(self, other: Any) -> int | None:
        second = _operand(other, self.digits)
        return None if second is None else int(lib.hp_Compare(self.pointer, second.pointer)) - 1

    def __eq__(self, other: object) -> bool:
        order = self._order(other)
        return NotImplemented if order is None else order == 0

    def __hash__(self) -> int:
        return hash(self.as_fraction()) if self.finite else hash(float(self))

    def __lt__(self, other: Real) -> bool:
        order = self._order(other)
        return NotImplemented if order is None else order < 0

    def __le__(self, other: Real) -> bool:
        order = self._order(other)
        return NotImplemented if order is None else order <= 0

    def __gt__(self, other: Real) -> bool:
        order = self._order(other)
        return NotImplemented if order is None else order > 0

    def __ge__(self, other: Real) -> bool:
        order = self._order(other)
        return NotImplemented if order is None else order >= 0

    def __bool__(self) -> bool:
        return int(lib.hp_CompareZero(self.pointer)) != 1

    def sqrt(self) -> "Number":
        """Square root; infinite below 0."""
        return function("sqrt", self)


def _made(value: Any, digits: int) -> Any:
    if isinstance(value, Number):
        turned = lib.hp_Fun1(value.pointer, 41, _limbs_for(digits))
        found = lib.hp_Fun1(turned, 41, _limbs_for(digits))
        lib.api_FreeHandle(turned)
        return found
    if isinstance(value, bool) or not isinstance(value, (int, str, float, Fraction)):
        raise TypeError(f"value: must be a number or a decimal text, not {shown(value)}")
    if isinstance(value, int):
        return _of_integer(value, 0)
    try:
        exact = Fraction(value)
    except (ValueError, OverflowError, ZeroDivisionError):
        raise ValueError(f"value: {shown(value)} is no finite number") from None
    above = _of_integer(exact.numerator, 0)
    below = _of_integer(exact.denominator, 0)
    found = above if exact.denominator == 1 else lib.hp_Fun2(above, below, 3, _limbs_for(digits) + 1)
    if found is not above:
        lib.api_FreeHandle(above)
    lib.api_FreeHandle(below)
    return found


def _of_integer(value: int, exponent: int) -> Any:
    limbs, rest = [], abs(value)
    while rest:
        rest, limb = divmod(rest, _LIMB)
        limbs.append(limb)
    return lib.hp_CreateByValue2(ffi.new("int64_t[]", limbs or [0]), len(limbs), exponent, value < 0)


def _operand(value: Any, digits: int) -> Number | None:
    if isinstance(value, Number):
        return value
    if isinstance(value, (int, Fraction, float)) and not isinstance(value, bool):
        return Number(value, digits)
    return None


def function(name: str, value: Real, digits: int | None = None) -> Number:
    """A function of one number, by name.

    Parameters
    ----------
    name : str
        One of sqrt, log, sin, cos, tan, cot, asin, acos, atan, acot, exp, sinh, cosh, tanh, coth, asinh, acosh, atanh,
        acoth. Outside the domain the result is infinite.
    value : Number, int, Fraction, str or float
    digits : int, optional

    Examples
    --------
    >>> from orvane import highprecision as hp
    >>> hp.function("exp", 1, digits=30)
    Number('2.71828182845904523536028747135')
    """
    if name not in _ONE:
        raise ValueError(f"name: {shown(name)} is none of {', '.join(_ONE)}")
    wanted = digits or (value.digits if isinstance(value, Number) else 50)
    x = value if isinstance(value, Number) else Number(value, wanted)
    return Number._of(lib.hp_Fun1(x.pointer, _ONE[name], _limbs_for(wanted)), wanted)


def exp(value: Real, digits: int | None = None) -> Number:
    """Exponential."""
    return function("exp", value, digits)


def log(value: Real, digits: int | None = None) -> Number:
    """Natural logarithm."""
    return function("log", value, digits)


def sin(value: Real, digits: int | None = None) -> Number:
    """Sine, of radians."""
    return function("sin", value, digits)


def cos(value: Real, digits: int | None = None) -> Number:
    """Cosine, of radians."""
    return function("cos", value, digits)


def pi(digits: int = 50) -> Number:
    """The number pi.

    Examples
    --------
    >>> from orvane import highprecision as hp
    >>> hp.pi(30)
    Number('3.14159265358979323846264338328')
    """
    wide = 4 * function("atan", 1, integer(digits, "digits", 1) + 7)
    return Number(wide, digits)
