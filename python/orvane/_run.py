# SPDX-License-Identifier: Apache-2.0
"""Long calls: they run beside the caller, who watches the clock, the bar and Ctrl-C."""
from __future__ import annotations

import threading
import time
from typing import Any, Callable, TypeVar

_T = TypeVar("_T")

#: How a long call ended.
FINISHED, OUT_OF_TIME, INTERRUPTED, STOPPED = "finished", "time", "interrupted", "stopped"
POLL = 0.02  # seconds between two looks: what Ctrl-C waits at most, beside the step under way


class Bar:
    """A tqdm bar of thousandths, or nothing."""

    def __init__(self, wanted: bool, title: str) -> None:
        self._bar: Any = None
        if wanted:
            try:
                from tqdm.auto import tqdm
            except ImportError:
                raise ImportError("progress=True needs tqdm: pip install 'orvane[progress]'") from None
            self._bar = tqdm(total=1000, desc=title, bar_format="{l_bar}{bar}| {elapsed} {postfix}")

    def show(self, share: float, note: str = "") -> None:
        """Moves the bar to a share of 1."""
        if self._bar is not None:
            self._bar.n = max(self._bar.n, min(1000, int(1000 * share)))
            self._bar.set_postfix_str(note, refresh=False)
            self._bar.refresh()

    def close(self) -> None:
        if self._bar is not None:
            self._bar.close()


def watch(
    wait: Callable[[float], bool],
    stop: Callable[[], object],
    *,
    seconds: float | None = None,
    bar: Bar | None = None,
    state: Callable[[], tuple[float, str]] | None = None,
    look: Callable[[], bool] | None = None,
) -> str:
    """Waits until a run has ended, and stops it at the deadline, on Ctrl-C, or when `look` asks for it.

    `wait(t)` waits up to t seconds and tells whether the run has ended; `state()` gives the share done and a note.
    """
    start, outcome, pause = time.monotonic(), FINISHED, 0.0005
    while True:
        try:
            if wait(pause):
                return outcome
            pause = min(2 * pause, POLL)
            passed = time.monotonic() - start
            if bar is not None:
                share, note = state() if state is not None else (0.0, "")
                bar.show(max(share, passed / seconds if seconds else 0.0), note)
            if outcome == FINISHED:
                if seconds is not None and passed >= seconds:
                    outcome = OUT_OF_TIME
                elif look is not None and look():
                    outcome = STOPPED
                if outcome != FINISHED:
                    stop()
        except KeyboardInterrupt:
            outcome = INTERRUPTED
            stop()
        except BaseException:
            stop()
            while not wait(POLL):
                pass
            raise


def beside(
    call: Callable[[], _T],
    stop: Callable[[], object],
    *,
    seconds: float | None = None,
    progress: bool = False,
    title: str = "",
    state: Callable[[], tuple[float, str]] | None = None,
) -> tuple[_T, str]:
    """Runs a blocking call on a thread of its own and watches it; its result and how it ended."""
    ended, results, errors = threading.Event(), [], []
    bar = Bar(progress, title)

    def work() -> None:
        try:
            results.append(call())
        except BaseException as error:
            errors.append(error)
        finally:
            ended.set()

    worker = threading.Thread(target=work, name=f"orvane {title}", daemon=True)
    worker.start()
    asked = [False]

    def wait(pause: float) -> bool:
        if asked[0]:
            stop()  # again: a run that had not begun did not hear the first one
        return ended.wait(pause)

    def ask() -> None:
        asked[0] = True
        stop()

    try:
        outcome = watch(wait, ask, seconds=seconds, bar=bar, state=state)
    finally:
        bar.close()
        worker.join()
    if errors:
        raise errors[0]
    return results[0], outcome
