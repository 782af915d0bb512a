# SPDX-License-Identifier: Apache-2.0
"""The store of daily records of stocks, and its file.

There is one store in the process; a stock is told by its type and code and is never released. All functions are to be
called from one thread at a time.

>>> from orvane import stock
>>> one = stock.get("600519", type=1)
>>> one.set_day("2024-03-01", [10.0, 12.5, 9.75, 11.0])
>>> one.set_day("2024-02-29", [9.0, 11.0, 8.5, 10.0])
>>> one.dates(), one.values(1)
(array(['2024-02-29', '2024-03-01'], dtype='datetime64[D]'), array([11. , 12.5]))
"""
from __future__ import annotations

import os
from datetime import date
from typing import Any, Iterable, Union

import numpy as np
from numpy.typing import ArrayLike, NDArray

from . import capi
from ._check import Floats, integer, vector
from ._core import encode, ffi, lib, text

Date = Union[str, date, np.datetime64]
Path = Union[str, "os.PathLike[str]"]
_CLOCK = 18.2775  # what the serial number of a date has above the days
_CYCLE = 1461  # days of four years
_LAST = (65535, 255, 255)


def _parts(day: Date, name: str = "day") -> tuple[int, int, int]:
    try:
        found: Any = np.asarray(day, "datetime64[D]").item()
        return found.year, found.month, found.day
    except (ValueError, AttributeError, TypeError):
        raise ValueError(f"{name}: {day!r} is no date") from None


class Stock:
    """A stock of the store; made by :func:`get`, :func:`find`, :func:`all` or :func:`load`."""

    __slots__ = ("_pointer",)

    def __init__(self, pointer: Any) -> None:
        self._pointer = pointer

    @property
    def code(self) -> int:
        """Code; unique within the type."""
        return int(lib.stock_getStockCode(self._pointer))

    @property
    def type(self) -> int:
        """Type, 0 to 255."""
        return int(lib.stock_getStockType(self._pointer))

    @property
    def name(self) -> str:
        """Name; it may be set."""
        return text(lib.stock_getStockName(self._pointer), "utf-8")

    @name.setter
    def name(self, name: str) -> None:
        lib.stock_setName(self._pointer, encode(name, "name"))

    def __eq__(self, other: object) -> bool:
        return isinstance(other, Stock) and self._pointer == other._pointer

    def __hash__(self) -> int:
        return hash(self._pointer)

    def __repr__(self) -> str:
        return f"<Stock {self.name!r}, type {self.type}, code {self.code}, {len(self)} days>"

    def __len__(self) -> int:
        return self._between((0, 0, 0), _LAST)[1] + 1

    def __contains__(self, day: Date) -> bool:
        return bool(lib.stock_dateIsExist(self._pointer, *_parts(day)))

    def set_day(self, day: Date, values: ArrayLike) -> None:
        """Sets a day's up to nine values. They are kept in hundredths, the last two in ten thousands."""
        given = vector(values, "values", least=1)
        if given.size > 9:
            raise ValueError(f"values: must be at most 9, not {given.size}")
        lib.stock_setData(self._pointer, *_parts(day), *given.tolist(), *[0.0] * (9 - given.size))

    def values(self, field: int, since: Date | None = None, until: Date | None = None) -> Floats:
        """One of the nine values of all days, or of those between two dates, both inclusive."""
        return self._field(integer(field, "field", 0, 8), since, until)

    def dates(self, since: Date | None = None, until: Date | None = None) -> NDArray[np.datetime64]:
        """Dates of the same days; NaT for years outside 1900 to 9000."""
        serial = self._field(capi.ORVANE_STOCK_DATE, since, until)
        # Every fourth year has 366 days in these numbers, 1900 and 2100 too.
        days = np.round(serial - _CLOCK).astype(np.int64) - 1
        cycle, rest = np.divmod(days, _CYCLE)
        leap = rest < 366
        year = 1900 + 4 * cycle + np.where(leap, 0, 1 + (rest - 366) // 365)
        found: NDArray[np.datetime64] = (year - 1970).astype("datetime64[Y]").astype("datetime64[D]") + np.where(leap, rest, (rest - 366) % 365)
        short = leap & (year % 100 == 0) & (year % 400 != 0) & (rest >= 60)
        found = found - short.astype(int)
        found[serial == 0] = np.datetime64("NaT")
        return found

    def _field(self, field: int, since: Date | None, until: Date | None) -> Floats:
        low = (0, 0, 0) if since is None else _parts(since, "since")
        high = _LAST if until is None else _parts(until, "until")
        first, last = self._between(low, high) if low <= high else (-1, -1)
        out = np.empty(last - first + 1 if first >= 0 else 0)
        if out.size:
            lib.stock_getData(self._pointer, field, first, last, ffi.from_buffer("double[]", out))
        return out

    def _between(self, low: tuple[int, int, int], high: tuple[int, int, int]) -> tuple[int, int]:
        ends = ffi.new("int32_t[2]")
        lib.stock_getTimeRange(self._pointer, *low, *high, ends)
        return ends[0], ends[1]

    def delete(self, first: int, count: int = 1) -> None:
        """Removes days by their places."""
        lib.stock_deleteData(self._pointer, integer(first, "first", 0, 2**31 - 1), integer(count, "count", 0, 2**31 - 1))

    def sort(self) -> None:
        """Sorts the days by date; only a file may bring them in another order."""
        lib.stock_sort(self._pointer)

    def add_attribute(self, attribute: int) -> None:
        """Adds an attribute; those of :func:`attributes` have names."""
        lib.stock_addAttributeType(self._pointer, integer(attribute, "attribute", 0, 65535))

    def remove_attribute(self, attribute: int | None = None) -> None:
        """Removes an attribute, or all of them."""
        if attribute is None:
            lib.stock_clearAttributeType(self._pointer)
        else:
            lib.stock_deleteAttributeType(self._pointer, integer(attribute, "attribute", 0, 65535))


def get(name_or_code: str | int, type: int = 0) -> Stock:
    """The stock of a name or of a code; made where there is none.

    Examples
    --------
    >>> from orvane import stock
    >>> stock.get(7, type=9) == stock.get(7, type=9)
    True
    """
    kind = integer(type, "type", 0, 255)
    if isinstance(name_or_code, str):
        return Stock(lib.stock_tryToGetStock(kind, encode(name_or_code, "name_or_code")))
    return Stock(lib.stock_getStock(integer(name_or_code, "name_or_code", -(2**31), 2**31 - 1), kind))


def find(name_or_code: str | int) -> Stock | None:
    """The first stock of a name or of a code, by type; None where there is none.

    Examples
    --------
    >>> from orvane import stock
    >>> stock.find("no such stock") is None
    True
    """
    out = ffi.new("StockData**")
    if isinstance(name_or_code, str):
        found = lib.stock_searchStockByName(encode(name_or_code, "name_or_code"), out)
    else:
        found = lib.stock_searchStockByCode(integer(name_or_code, "name_or_code", -(2**31), 2**31 - 1), out)
    return Stock(out[0]) if found else None


def all(type: int = 0) -> list[Stock]:
    """The stocks of a type in ascending order of code."""
    kind = integer(type, "type", 0, 255)
    out = ffi.new("StockData*[]", lib.stock_getAllStockSize(kind))
    lib.stock_getAllStocks(kind, out)
    return [Stock(pointer) for pointer in out]


def save(path: Path, stocks: Iterable[Stock] | None = None) -> None:
    """Writes stocks, without it all of the store, to a file."""
    chosen = None if stocks is None else [stock._pointer for stock in stocks]
    if chosen == []:
        raise ValueError("stocks: must be at least one")
    handles = ffi.NULL if chosen is None else ffi.new("StockData*[]", chosen)
    if not lib.stock_saveStock(handles, len(chosen or ()), encode(os.fspath(path), "path")):
        raise OSError(f"path: {path} cannot be written")


def load(path: Path) -> list[Stock]:
    """Reads the stocks of a file into the store; one of the same type and code takes the other's place."""
    name = encode(os.fspath(path), "path")
    out = ffi.new("StockData*[]", _stocks_in(path))
    count = lib.stock_loadStock(name, out)
    if not count:
        raise OSError(f"path: {path} is no file of stocks, or holds none")
    return [Stock(pointer) for pointer in out[0:count]]


def _stocks_in(path: Path) -> int:
    """How many stocks the head of a file announces, at most as many as it has room for."""
    size = os.path.getsize(path)
    with open(path, "rb") as file:
        head = file.read(21)
        dates = int.from_bytes(head[17:21], "little")
        if len(head) < 21 or 4 * dates > size:
            return 1
        file.seek(21 + 4 * dates)
        return max(1, min(int.from_bytes(file.read(4), "little"), size // 17))


def attributes() -> dict[int, str]:
    """The attributes that have names: owner, province or trade."""
    codes = ffi.new("uint16_t[56]")
    return {code: text(lib.stock_getAttributeTypeStr(code)) for code in codes[0 : lib.stock_getAllAttributeType(codes, 56)]}
