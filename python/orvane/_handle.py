# SPDX-License-Identifier: Apache-2.0
"""Objects of the library as Python objects: released once, and never used after that."""
from __future__ import annotations

from typing import Any, Callable, TypeVar

from ._core import ffi, lib

_Self = TypeVar("_Self", bound="Handle")


class ClosedError(ValueError):
    """An object was used after its close()."""


class ConvergenceError(RuntimeError):
    """A computation came to no result, such as a programme without a feasible point."""


class Handle:
    """Owns one object of the library.

    It is released by :meth:`close`, at the end of a ``with`` block, or when Python drops it.
    """

    __slots__ = ("_owned", "__weakref__")

    def __init__(self, pointer: Any, release: Callable[[Any], None] | None = None) -> None:
        if pointer == ffi.NULL:
            raise ConvergenceError(f"the library made no object for {type(self).__name__}")
        self._owned = ffi.gc(pointer, release or lib.api_FreeHandle)

    @property
    def pointer(self) -> Any:
        """The pointer for :mod:`orvane.capi`; valid as long as this object is open."""
        if self._owned is None:
            raise ClosedError(f"this {type(self).__name__} is closed")
        return self._owned

    @property
    def closed(self) -> bool:
        """Whether :meth:`close` was called."""
        return self._owned is None

    def close(self) -> None:
        """Releases the object now; a second call does nothing."""
        owned, self._owned = self._owned, None
        if owned is not None:
            ffi.release(owned)

    def __enter__(self: _Self) -> _Self:
        self.pointer
        return self

    def __exit__(self, *error: object) -> None:
        self.close()
