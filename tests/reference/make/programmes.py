#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/prog/{line_programmes,netlib}.csv: status and optimum of linear programmes, by HiGHS through SciPy.

line_programmes.csv, row: family,seed,status,optimum. A problem is drawn from its seed by the generator below, which
tests/prog/drawn_problem.h repeats step by step. Status 1 optimal, 0 infeasible, 2 unbounded. A problem whose integer
optimum was found is solved again with the integers fixed, so that its optimum is as exact as that of a real one.
netlib.csv, row: name,optimum, of the problems in tests/reference/prog/netlib, to be minimised.
"""
import os
import pathlib
import sys

import numpy as np
import scipy
from scipy.optimize import Bounds, LinearConstraint, linprog, milp

from draws import Draw

HERE = pathlib.Path(__file__).resolve().parents[1] / "prog"
FAMILIES = {"real": 1200, "degenerate": 600, "equality": 600, "integer": 400, "binary": 400}


def problem(family, seed):
    """Maximise c.x under rows (coefficients, relation, right side), x >= 0."""
    d = Draw(seed)
    n, m = 1 + d.below(11), 1 + d.below(11)
    density = 3 + d.below(8)
    rows = []
    for i in range(m):
        row = [0.0] * n
        for j in range(n):
            if d.below(10) < density:
                row[j] = d.below(15) - 5 + (d.below(8) / 8 if family == "real" else 0)
        if not any(row):
            row[d.below(n)] = 1.0
        relation = d.below(10)
        relation = 1 if relation > 8 else 0
        if family == "equality" and d.below(3) == 0:
            relation = 2
        rhs = d.below(25) - 3.0
        if family == "degenerate" and d.below(2) == 0:
            rhs = 0.0
        rows.append((row, relation, rhs))
    c = [float(d.below(15) - 5) for _ in range(n)]
    if not any(c):
        c[0] = 1.0
    kinds = [0] * n
    if family == "binary":
        kinds = [2] * n
    if family == "integer":
        kinds = [d.below(3) % 2 for _ in range(n)]
    if family in ("integer", "binary") or d.below(2) == 0:
        rows.append(([1.0] * n, 0, 20.0))
    return c, rows, kinds


def optimum(c, rows, kinds):
    A = np.array([r[0] for r in rows])
    rel = np.array([r[1] for r in rows])
    b = np.array([r[2] for r in rows])
    upper = [1.0 if k == 2 else np.inf for k in kinds]

    def relaxation(lower, upper):
        result = linprog(-np.array(c), A_ub=np.vstack([A[rel == 0], -A[rel == 1]]),
                         b_ub=np.concatenate([b[rel == 0], -b[rel == 1]]),
                         A_eq=A[rel == 2], b_eq=b[rel == 2], bounds=list(zip(lower, upper)), method="highs")
        if result.status == 4:  # HiGHS could not tell infeasible from unbounded: feasibility alone decides
            result.status = 3 if linprog(np.zeros(len(c)), A_ub=np.vstack([A[rel == 0], -A[rel == 1]]),
                                         b_ub=np.concatenate([b[rel == 0], -b[rel == 1]]), A_eq=A[rel == 2],
                                         b_eq=b[rel == 2], bounds=list(zip(lower, upper))).status == 0 else 2
        return {0: 1, 2: 0, 3: 2}[result.status], -result.fun if result.status == 0 else 0.0

    if not any(kinds):
        return relaxation([0.0] * len(c), upper)
    lo, hi = np.where(rel == 0, -np.inf, b), np.where(rel == 1, np.inf, b)
    result = milp(-np.array(c), constraints=LinearConstraint(A, lo, hi), bounds=Bounds(0, upper),
                  integrality=np.minimum(kinds, 1), options={"mip_rel_gap": 0})
    if result.status != 0:
        assert result.status == 2, result.message
        return 0, 0.0
    fixed = [(round(x), round(x)) if k else (0.0, np.inf) for x, k in zip(result.x, kinds)]
    return relaxation([f[0] for f in fixed], [f[1] for f in fixed])


def read_mps(path):
    """Minimise c.x under rows, x >= 0; problems without bounds and ranges."""
    section, kind, c, rows, rhs, order = "", {}, {}, {}, {}, []
    for line in path.read_text().splitlines():
        if not line.strip() or line[0] == "*":
            continue
        if line[0] != " ":
            section = line.split()[0]
            assert section in ("NAME", "ROWS", "COLUMNS", "RHS", "ENDATA"), section
            continue
        words = line.split()
        if section == "ROWS":
            kind[words[1]] = words[0]
            if words[0] == "N":
                objective = words[1]
            else:
                rows[words[1]] = {}
        else:
            if section == "COLUMNS" and words[0] not in order:
                order.append(words[0])
            for name, value in zip(words[1::2], words[2::2]):
                if section == "RHS":
                    rhs[name] = float(value)
                elif name == objective:
                    c[words[0]] = float(value)
                else:
                    rows[name][words[0]] = float(value)
    return order, kind, c, rows, rhs


def netlib_optimum(path):
    order, kind, c, rows, rhs = read_mps(path)
    place = {name: j for j, name in enumerate(order)}
    A, lo, hi = np.zeros((len(rows), len(order))), [], []
    for i, (name, row) in enumerate(rows.items()):
        for column, value in row.items():
            A[i, place[column]] = value
        right = rhs.get(name, 0.0)
        lo.append(-np.inf if kind[name] == "L" else right)
        hi.append(np.inf if kind[name] == "G" else right)
    cost = np.array([c.get(name, 0.0) for name in order])
    return milp(cost, constraints=LinearConstraint(A, lo, hi), bounds=Bounds(0, np.inf)).fun


def main():
    head = f"# Written by tests/reference/make/programmes.py with SciPy {scipy.__version__}, Python {sys.version.split()[0]}.\n"
    with open(HERE / "line_programmes.csv", "w") as out:
        out.write(head + "# family,seed,status,optimum\n")
        for family, count in FAMILIES.items():
            for seed in range(count):
                status, value = optimum(*problem(family, seed))
                out.write(f"{family},{seed},{status},{value:.15g}\n")
    with open(HERE / "netlib.csv", "w") as out:
        out.write(head + "# name,optimum\n")
        for path in sorted((HERE / "netlib").glob("*.mps")):
            out.write(f"{path.stem},{netlib_optimum(path):.15g}\n")


main()
