#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Finds laws from 100 sampled points by Orvane's expression search and by genetic programming (gplearn, PyOperon).

usage: search_peers.py LIBRARY [SECONDS]

LIBRARY is the built liborvane.so; each peer gets at most about SECONDS (10) a law. A law counts as found when the
relative squared error on fresh points is below 1e-10. The search gets the powers and products of the inputs up to
degree 3, the peers the inputs and + - * /; both are told that there are few terms. Writes a Markdown table: processor
time in seconds, `-` where not found.
"""
import ctypes
import itertools
import sys
import time
import warnings

import numpy as np

warnings.filterwarnings("ignore")
LAWS = {
    "(x^2+1)/(x+3)": (1, lambda x: (x[0] ** 2 + 1) / (x[0] + 3)),
    "xy/(1+y^2)": (2, lambda x: x[0] * x[1] / (1 + x[1] ** 2)),
    "2.5x/(0.7+x)": (1, lambda x: 2.5 * x[0] / (0.7 + x[0])),
    "x(15+x^2)/(15+6x^2)": (1, lambda x: x[0] * (15 + x[0] ** 2) / (15 + 6 * x[0] ** 2)),
    "Nguyen-1": (1, lambda x: x[0] ** 3 + x[0] ** 2 + x[0]),
    "x^2 y/2": (2, lambda x: x[0] ** 2 * x[1] / 2),
    "xyz": (3, lambda x: x[0] * x[1] * x[2]),
    "m(u^2+v^2)/2": (3, lambda x: x[0] * (x[1] ** 2 + x[2] ** 2) / 2),
}


def monomials(x, degree=3):
    powers = [e for e in itertools.product(range(degree + 1), repeat=len(x)) if 0 < sum(e) <= degree]
    return [np.prod([v**p for v, p in zip(x, e)], axis=0) for e in powers]


class Orvane:
    def __init__(self, path):
        self.lib = ctypes.CDLL(path)
        for name in ("api_ES_Create", "api_ES_GetBestResult"):
            getattr(self.lib, name).restype = ctypes.c_void_p

    def held(self, terms, y):
        es = ctypes.c_void_p(self.lib.api_ES_Create())
        pointer = lambda v: np.ascontiguousarray(v).ctypes.data_as(ctypes.c_void_p)
        for term in terms:
            self.lib.api_ES_AddX(es, pointer(term), len(term))
        self.lib.api_ES_SetY(es, pointer(y), len(y))
        return es

    def fit(self, x, y, seconds):
        for terms in range(1, 6):
            self.es = self.held(monomials(x), y)
            self.lib.api_ES_Search(self.es, terms, ctypes.c_uint8(0), ctypes.c_uint8(0))
            info = (ctypes.c_double * 7)()
            self.best = self.lib.api_ES_GetBestResult(self.es, info)
            if info[5] < 1e-16 * (y @ y):
                break

    def predict(self, x):
        out = np.zeros(len(x[0]))
        es = self.held(monomials(x), out)
        self.lib.api_ES_CalExpress(es, ctypes.c_void_p(self.best), out.ctypes.data_as(ctypes.c_void_p))
        return out


class Gplearn:
    def fit(self, x, y, seconds):
        from gplearn.genetic import SymbolicRegressor
        end = time.process_time() + seconds
        self.model = SymbolicRegressor(population_size=1000, generations=1, stopping_criteria=1e-12, warm_start=True,
                                       parsimony_coefficient=1e-4, metric="mse", random_state=1)
        for generations in range(5, 1000, 5):
            self.model.set_params(generations=generations)
            self.model.fit(x.T, y)
            if time.process_time() > end or self.model._program.raw_fitness_ < 1e-12:
                break

    def predict(self, x):
        return self.model.predict(x.T)


class PyOperon:
    def fit(self, x, y, seconds):
        from pyoperon.sklearn import SymbolicRegressor
        self.model = SymbolicRegressor(allowed_symbols="add,sub,mul,div,constant,variable", optimizer_iterations=10,
                                       max_length=25, n_threads=1, max_time=int(seconds), generations=100000,
                                       max_evaluations=10**9, epsilon=1e-12, random_state=1)
        self.model.fit(x.T, y)

    def predict(self, x):
        return self.model.predict(x.T)


def main():
    seconds = float(sys.argv[2]) if len(sys.argv) > 2 else 10.0
    solvers = {"Orvane": Orvane(sys.argv[1])}
    for name, solver, module in (("gplearn", Gplearn, "gplearn.genetic"), ("PyOperon", PyOperon, "pyoperon.sklearn")):
        try:
            __import__(module)
            solvers[name] = solver()
        except ImportError as error:
            print(f"{name} is left out: {error}", file=sys.stderr)
    print("| law | " + " | ".join(solvers) + " |\n|---|" + "---|" * len(solvers))
    for name, (inputs, law) in LAWS.items():
        rng = np.random.default_rng(1)
        x, fresh = rng.uniform(0.2, 4, (2, inputs, 100))
        cells = []
        for solver in solvers.values():
            start = time.process_time()
            solver.fit(x, law(x), seconds)
            used = time.process_time() - start
            error = np.sum((solver.predict(fresh) - law(fresh)) ** 2) / np.sum(law(fresh) ** 2)
            cells.append(f"{used:.3g}" if error < 1e-10 else f"- ({used:.3g}, error {error:.0e})")
        print(f"| {name} | " + " | ".join(cells) + " |", flush=True)


if __name__ == "__main__":
    main()
