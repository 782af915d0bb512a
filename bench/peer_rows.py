# SPDX-License-Identifier: Apache-2.0
"""Rows of the Markdown tables that hold a call of the library against a peer's in one process."""
import ctypes
import sys
import time


def at(array):
    return ctypes.c_void_p(array.ctypes.data)


def least(f, g, turns=9):
    """Least times of f and g, each turn long enough for the clock."""
    def count(h):
        h()
        start = time.thread_time()
        h()
        return max(1, int(0.01 / (time.thread_time() - start + 1e-9)))

    calls = [(f, count(f)), (g, count(g))]
    best = [1e9, 1e9]
    for _ in range(turns):
        for k, (h, n) in enumerate(calls):
            start = time.thread_time()
            for _ in range(n):
                h()
            best[k] = min(best[k], (time.thread_time() - start) / n)
    return best


def row(name, ours, theirs, peer):
    if len(sys.argv) > 2 and not any(name.startswith(want) for want in sys.argv[2:]):
        return
    a, b = least(ours, theirs)
    print(f"| {name} | {1e6 * a:.4g} | {1e6 * b:.4g} | {a / b:.2f} | {peer} |", flush=True)


def head():
    print("| case | Orvane us | peer us | ratio | peer |\n|---|---|---|---|---|")
