#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Tests, moments and families beside SciPy and NumPy in one process: rows of a Markdown table.

usage: statistics_peers.py LIBRARY [NAME...]

As signal_peers.py; where a peer gives more than Orvane (a p value beside the statistic) it is timed as it comes.
"""
import ctypes
import sys

import numpy as np
from peer_rows import at, head, row
from scipy import stats

lib = ctypes.CDLL(sys.argv[1])
lib.stat_CreateSBD.restype = ctypes.c_void_p
rng = np.random.default_rng(1)


def tests(n):
    x, y = rng.normal(2, 3, n), rng.normal(2, 3, n)
    out = np.empty(4)
    own = stats.norm(np.mean(x), np.std(x, ddof=1))
    size = f"{n:,}"
    row(f"Shapiro-Wilk, {size}",
        lambda: lib.data_normTestByShapiroWilk(at(x), n, at(out), at(out[1:]), None, None, False),
        lambda: stats.shapiro(x), "scipy.stats.shapiro")
    row(f"Jarque-Bera, {size}", lambda: lib.data_normTestByJarqueBera(at(x), n), lambda: stats.jarque_bera(x),
        "scipy.stats.jarque_bera")
    row(f"Anderson-Darling, {size}", lambda: lib.data_normTestByAndersonDarling(at(x), n),
        lambda: stats.anderson(x), "scipy.stats.anderson")
    row(f"Kolmogorov-Smirnov, {size}", lambda: lib.data_normTestByKolmogorovSmirnov(at(x), n),
        lambda: stats.kstest(x, own.cdf, method="exact"), "scipy.stats.kstest, exact")
    row(f"two samples, {size} each", lambda: lib.data_twoTestByKolmogorovSmirnov(at(x), n, at(y), n),
        lambda: stats.ks_2samp(x, y), "scipy.stats.ks_2samp")
    row(f"skewness, {size}", lambda: lib.data_calcDataSkewness(at(x), n), lambda: stats.skew(x), "scipy.stats.skew")
    row(f"kurtosis, {size}", lambda: lib.data_calcDataKurtosis(at(x), n), lambda: stats.kurtosis(x),
        "scipy.stats.kurtosis")
    row(f"median, {size}", lambda: lib.data_calcDataMedian(at(x), n), lambda: np.median(x), "numpy.median")
    index, copy = np.empty(n, np.uint32), np.empty(n)

    def ordered():
        copy[:] = x
        lib.data_sort(at(copy), n, at(index), True)

    row(f"sort with places, {size}", ordered, lambda: np.argsort(x), "numpy.argsort")


def families():
    p = rng.uniform(0.001, 0.999, 10_000)
    y = np.empty_like(p)
    for name, code, params, law in (("normal", 51, (1, 2), stats.norm(1, 2)),
                                    ("gamma", 17, (2.5, 1.5), stats.gamma(2.5, scale=1 / 1.5)),
                                    ("beta", 1, (2.5, 4), stats.beta(2.5, 4)),
                                    ("Weibull", 67, (2, 1.75), stats.weibull_min(1.75, scale=2)),
                                    ("inverse Gaussian", 31, (2, 3), stats.invgauss(2 / 3, scale=3)),
                                    ("Poisson", 69, (37.5,), stats.poisson(37.5))):
        values = np.array(params, float)
        fun = ctypes.c_void_p(lib.stat_CreateSBD(None, 0))
        lib.stat_SetParam(fun, at(values), values.size)
        x = law.ppf(p)
        row(f"{name}, distribution function, 10^4", lambda: lib.stat_calcFun(fun, code, at(x), at(y), x.size),
            lambda: law.cdf(x), "scipy.stats")
        row(f"{name}, quantile function, 10^4", lambda: lib.stat_calcInvCDFFun(fun, code, at(p), at(y), p.size),
            lambda: law.ppf(p), "scipy.stats")


head()
for count in (50, 1000, 5000):
    tests(count)
families()
