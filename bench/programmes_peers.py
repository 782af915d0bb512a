#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Programmes beside HiGHS (highspy) and tours beside fast_tsp, in one run.

usage: bench/programmes_peers.py <liborvane.so>

Writes two Markdown tables. Times are the process's CPU time, one thread each, of solving a problem that is built, the
least of three runs. `gap` is how far the library's optimum lies from HiGHS's, relative to it. fast_tsp (nearest neighbour, 2-opt and
or-opt with perturbations) gets the time that the library took.
"""
import ctypes as C
import sys
import time

import fast_tsp
import highspy
import numpy as np

DOUBLE, INT, BYTE, ID = C.c_double, C.c_int32, C.c_uint8, C.c_uint32


def pointer(array, kind):
    return array.ctypes.data_as(C.POINTER(kind))


def sparse(m):
    rng = np.random.default_rng(m)
    rows = []
    for i in range(m):
        at = np.unique(np.append(rng.integers(0, m, 5), i))
        rows.append((at.astype(np.int32), 0.5 + rng.random(len(at)), 1 + rng.random()))
    return 0.5 + rng.random(m), rows, False


def knapsack(n):
    rng = np.random.default_rng(n)
    weights = rng.integers(10, 100, n).astype(float)
    return rng.integers(10, 100, n).astype(float), [(np.arange(n, dtype=np.int32), weights, float(weights.sum() // 3))], True


def assignment(n):
    rng = np.random.default_rng(n)
    rows = [(np.arange(i * n, i * n + n, dtype=np.int32), np.ones(n), 1.0) for i in range(n)]
    rows += [(np.arange(i, n * n, n, dtype=np.int32), np.ones(n), 1.0) for i in range(n)]
    return rng.integers(1, 101, n * n).astype(float), rows, True


def by_orvane(library, problem):
    c, rows, binary = problem
    n = len(c)
    handle = C.c_void_p(library.lineProg_CreateSolver())
    kinds, all_vars = np.full(n, 2 if binary else 0, np.uint8), np.arange(n, dtype=np.int32)
    library.lineProg_setExact(handle, BYTE(1))
    library.lineProg_SetVarCount(handle, pointer(kinds, BYTE), n)
    library.lineProg_SetMaxExpress(handle, pointer(all_vars, INT), pointer(c, DOUBLE), n)
    for at, coefs, rhs in rows:
        library.lineProg_AddConstraint(handle, pointer(at, INT), pointer(coefs, DOUBLE), len(at), BYTE(0), DOUBLE(rhs))
    start = time.process_time()
    library.lineProg_Solve(handle)
    seconds = time.process_time() - start
    value = library.lineProg_GetMaxValue(handle)
    library.api_FreeHandle(handle)
    return seconds, value


def by_highs(problem):
    c, rows, binary = problem
    solver = highspy.Highs()
    solver.setOptionValue("output_flag", False)
    solver.setOptionValue("threads", 1)
    solver.setOptionValue("mip_rel_gap", 0.0)
    inf = highspy.kHighsInf
    for cost in c:
        solver.addCol(-cost, 0.0, 1.0 if binary else inf, 0, [], [])
    if binary:
        solver.changeColsIntegrality(len(c), np.arange(len(c), dtype=np.int32), np.ones(len(c), np.uint8))
    for at, coefs, rhs in rows:
        solver.addRow(-inf, rhs, len(at), at, coefs)
    start = time.process_time()
    solver.run()
    return time.process_time() - start, -solver.getInfo().objective_function_value


def programmes(library):
    print("| case | Orvane ms | HiGHS ms | ratio | gap |\n|---|---|---|---|---|")
    cases = [("sparse LP, %d rows" % m, sparse(m)) for m in (100, 200, 500, 1000)]
    cases += [("0-1 knapsack, %d items" % n, knapsack(n)) for n in (20, 35)]
    cases += [("assignment, %d by %d" % (n, n), assignment(n)) for n in (8, 15)]
    for name, problem in cases:
        runs = 3 if "1000" not in name else 1
        ours, value = min(by_orvane(library, problem) for _ in range(runs))
        peer, optimum = min(by_highs(problem) for _ in range(runs))
        gap = abs(value - optimum) / max(1, abs(optimum))
        print(f"| {name} | {1e3 * ours:.3g} | {1e3 * peer:.3g} | {ours / peer:.2f} | {gap:.2g} |", flush=True)


def tours(library):
    print("\n| nodes | Orvane s | length | fast_tsp, as long: length | Orvane / fast_tsp |\n|---|---|---|---|---|")
    for n in (200, 500, 1000, 2000):
        points = np.random.default_rng(n).integers(0, 10000, (n, 2)).astype(float)
        weights = np.floor(np.sqrt(((points[:, None] - points[None]) ** 2).sum(-1)) + 0.5)
        rows = (C.POINTER(DOUBLE) * n)(*[pointer(row, DOUBLE) for row in weights])
        tour = np.zeros(n, np.uint32)
        start, cpu = time.perf_counter(), time.process_time()
        length = library.api_Prog_SolveTSP(rows, n, 1, pointer(tour, ID))
        wall, cpu = time.perf_counter() - start, time.process_time() - cpu
        whole = weights.astype(int)
        order = fast_tsp.find_tour(whole.tolist(), duration_seconds=wall)
        other = sum(whole[a, b] for a, b in zip(order, order[1:] + order[:1]))
        print(f"| {n} | {cpu:.3g} | {length:.0f} | {other} | {length / other:.4f} |", flush=True)


def main():
    if len(sys.argv) != 2 or sys.argv[1] in ("-h", "--help"):
        print(__doc__)
        sys.exit(0 if len(sys.argv) == 2 else 2)
    library = C.CDLL(sys.argv[1])
    library.lineProg_CreateSolver.restype = C.c_void_p
    library.lineProg_GetMaxValue.restype = library.api_Prog_SolveTSP.restype = DOUBLE
    programmes(library)
    tours(library)


main()
