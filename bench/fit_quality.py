#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""How often each solver finds the best fit, and in what time: the table behind the budget that a host should choose.

usage: bench/fit_quality.py [LIBRARY [OUTPUT]]    (default: build/release/liborvane.so, bench/fit_quality.md)

For the families that SciPy has, too, each solver fits a sample RUNS times at each budget. The best known error of a
family is the least of all those runs and of SciPy's differential evolution on the same sum of squared distances. A run
has found the best fit when its error is within 1 % of that (or within 1e-9 of it).
"""
import ctypes
import platform
import statistics
import sys
import time

import numpy as np
import scipy
from scipy import optimize, stats

SIZE, RUNS = 300, 3
BUDGETS = [(20, 50), (20, 200), (30, 500)]  # candidates, iterations
# By code. The schedule of kind 0 takes minutes at any budget, and kind 8 runs like 7.
SOLVERS = {1: "lg", 2: "lg2", 3: "gto", 4: "run", 5: "sc0", 6: "sc1", 7: "swo", 9: "iswo", 10: "ins"}
# code: SciPy's family, the ranges of its shapes
FAMILIES = {
    9: (stats.cauchy, []), 13: (stats.expon, []), 19: (stats.gumbel_r, []), 21: (stats.gamma, [(0.05, 50)]),
    26: (stats.gumbel_l, []), 28: (stats.halfnorm, []), 34: (stats.laplace, []), 35: (stats.levy, []),
    38: (stats.maxwell, []), 42: (stats.nakagami, [(0.05, 50)]), 43: (stats.norm, []), 49: (stats.rayleigh, []),
    52: (stats.gennorm, [(0.1, 20)]), 57: (stats.weibull_min, [(0.1, 50)]),
}


def bind(path):
    library = ctypes.CDLL(path)
    pointer, doubles = ctypes.c_void_p, ctypes.POINTER(ctypes.c_double)
    for name, result, arguments in [
            ("pdf_initPDFFun", pointer, [ctypes.c_int32]), ("pdf_getError", ctypes.c_double, [pointer]),
            ("pdf_getName", ctypes.c_char_p, [pointer]), ("pdf_getParam", ctypes.c_int32, [pointer, doubles, ctypes.c_int32]),
            ("pdfManger_create", pointer, []), ("pdfManger_setData", None, [pointer, doubles, ctypes.c_int32]),
            ("pdfManger_optimizer", ctypes.c_uint8,
             [pointer, ctypes.POINTER(pointer), ctypes.c_int32, ctypes.POINTER(ctypes.c_uint8), ctypes.c_int32,
              ctypes.c_int32, ctypes.c_int32, ctypes.c_int32, ctypes.c_double]),
            ("api_FreeHandle", None, [pointer])]:
        getattr(library, name).restype, getattr(library, name).argtypes = result, arguments
    return library


def manager_of(library, sample):
    manager = library.pdfManger_create()
    library.pdfManger_setData(manager, np.ascontiguousarray(sample).ctypes.data_as(ctypes.POINTER(ctypes.c_double)), len(sample))
    return manager


def fit(library, manager, code, solver, candidates, iterations):
    """Error, seconds of processor time and number of parameters of one run on one thread."""
    fun = library.pdf_initPDFFun(code)
    start = time.process_time()
    library.pdfManger_optimizer(manager, (ctypes.c_void_p * 1)(fun), 1, (ctypes.c_uint8 * 1)(solver), 1, candidates,
                                iterations, 1, 1e-12)
    seconds = time.process_time() - start
    result = library.pdf_getError(fun), seconds, library.pdf_getParam(fun, None, 0), library.pdf_getName(fun).decode()
    library.api_FreeHandle(fun)
    return result


def peer(sample, family, shapes, seed):
    """SciPy's differential evolution on the same objective: error and seconds."""
    x = np.sort(sample)
    steps = np.arange(1, len(x) + 1) / len(x)
    width = x[-1] - x[0]
    bounds = [*shapes, (x[0] - 3 * width, x[-1] + 3 * width), (1e-3 * width, 5 * width)]

    def error(params):
        value = np.sum((family.cdf(x, *params) - steps) ** 2)
        return value if np.isfinite(value) else 1e300

    start = time.process_time()
    found = optimize.differential_evolution(error, bounds, seed=seed, tol=1e-8)
    return found.fun, time.process_time() - start


def main():
    path = sys.argv[1] if len(sys.argv) > 1 else "build/release/liborvane.so"
    if path in ("-h", "--help"):
        print(__doc__)
        return
    out = sys.argv[2] if len(sys.argv) > 2 else "bench/fit_quality.md"
    library = bind(path)
    sample = np.random.default_rng(20240611).gamma(3.0, 2.0, SIZE)
    manager = manager_of(library, sample)
    runs, best, names, peers = {}, {}, {}, {}
    with np.errstate(all="ignore"):
        for code, (family, shapes) in FAMILIES.items():
            peers[code] = [peer(sample, family, shapes, seed) for seed in range(RUNS)]
            for solver in SOLVERS:
                for budget in BUDGETS:
                    runs[code, solver, budget] = [fit(library, manager, code, solver, *budget) for _ in range(RUNS)]
            every = [run[0] for (c, _, _), found in runs.items() if c == code for run in found]
            best[code] = min(*every, *(error for error, _ in peers[code]))
            names[code] = runs[code, 1, BUDGETS[0]][0][3]
            print(names[code], best[code], file=sys.stderr)

    def hit(code, error):
        return error <= 1.01 * best[code] + 1e-9

    lines = ["# Which fits are the best ones", "",
             "Command: `bench/fit_quality.py`.", "",
             f"{platform.machine()}, {platform.system()}, SciPy {scipy.__version__}; {SIZE} values of a gamma distribution "
             f"(shape 3, scale 2), {len(FAMILIES)} families, {RUNS} runs each, one thread. A cell: share of the runs "
             "within 1 % of the best known error, and the median processor time of a run in milliseconds.", "",
             "| solver | " + " | ".join(f"{c} x {i}" for c, i in BUDGETS) + " |", "|---|" + "---|" * len(BUDGETS)]
    for solver, name in SOLVERS.items():
        cells = []
        for budget in BUDGETS:
            every = [(code, run) for code in FAMILIES for run in runs[code, solver, budget]]
            share = sum(hit(code, run[0]) for code, run in every) / len(every)
            cells.append(f"{100 * share:.0f} %, {1000 * statistics.median(run[1] for _, run in every):.1f}")
        lines.append(f"| {name} | " + " | ".join(cells) + " |")
    every = [(code, run) for code in FAMILIES for run in peers[code]]
    share = sum(hit(code, run[0]) for code, run in every) / len(every)
    lines += ["", f"SciPy's differential evolution (its defaults, tol 1e-8): {100 * share:.0f} %, median "
              f"{1000 * statistics.median(run[1] for _, run in every):.0f} ms.", "",
              "Share a family, the best solver of each budget behind it:", "",
              "| family | best known error | " + " | ".join(f"{c} x {i}" for c, i in BUDGETS) + " | SciPy |",
              "|---|---|" + "---|" * (len(BUDGETS) + 1)]
    for code in FAMILIES:
        cells = []
        for budget in BUDGETS:
            shares = [(sum(hit(code, run[0]) for run in runs[code, solver, budget]) / RUNS, name)
                      for solver, name in SOLVERS.items()]
            top = max(share for share, _ in shares)
            cells.append(f"{100 * top:.0f} % " + ", ".join(name for share, name in shares if share == top and top > 0))
        found = sum(hit(code, error) for error, _ in peers[code]) / RUNS
        lines.append(f"| {names[code]} | {best[code]:.5g} | " + " | ".join(cells) + f" | {100 * found:.0f} % |")
    with open(out, "w", encoding="utf-8") as file:
        file.write("\n".join(lines) + "\n")


if __name__ == "__main__":
    main()
