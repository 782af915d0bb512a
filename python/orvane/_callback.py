# SPDX-License-Identifier: Apache-2.0
"""Python functions that the library calls."""
from __future__ import annotations

from typing import Any, Callable

from ._core import ffi


class Guarded:
    """A C callback around a Python function that keeps the first exception; NaN from then on ends the computation."""

    def __init__(self, ctype: str, function: Callable[..., Any], error: Any = None) -> None:
        self.error: BaseException | None = None

        def keep(kind: Any, value: BaseException, trace: Any) -> None:
            if self.error is None:
                self.error = value

        def guarded(*arguments: Any) -> Any:
            if self.error is not None:
                return self.idle(*arguments)
            return function(*arguments)

        self.idle: Callable[..., Any] = lambda *arguments: error
        self.pointer = ffi.callback(ctype, guarded, **({} if error is None else {"error": error}), onerror=keep)

    def check(self) -> None:
        if self.error is not None:
            raise self.error
