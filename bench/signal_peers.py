#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Transforms, filters and smoothers beside NumPy and SciPy in one process: rows of a Markdown table.

usage: signal_peers.py LIBRARY [NAME...]

LIBRARY is liborvane.so; with NAMEs only the rows that begin with one. Times are CPU time; every ratio is the least of nine turns over the
peer's, the two taking turns: below 1 Orvane is quicker.
"""
import ctypes
import sys

import numpy as np
import scipy.fft
import scipy.ndimage
import scipy.signal
from peer_rows import at, head, row

lib = ctypes.CDLL(sys.argv[1])
lib.fir_Create.restype = ctypes.c_void_p
rng = np.random.default_rng(1)
D, I = ctypes.c_double, ctypes.c_int


def transforms():
    for n in (1000, 1009, 1024, 2018, 4096, 1 << 20, 999983):
        z = rng.standard_normal(n) + 1j * rng.standard_normal(n)
        re, im, a, b = z.real.copy(), z.imag.copy(), np.empty(n), np.empty(n)
        arguments = at(re), n, at(im), n, at(a), at(b)
        row(f"FFT {n:,}", lambda: lib.data_FFT(*arguments), lambda: scipy.fft.fft(z), "scipy.fft.fft")


def filters():
    x = rng.standard_normal(100_000)
    y, h = np.empty_like(x), rng.standard_normal(101)
    row("direct convolution, 101 taps, 10^5", lambda: lib.filterByConvFilter(at(x), at(y), x.size, at(h), 101),
        lambda: scipy.signal.convolve(x, h, "same", "direct"), "scipy.signal.convolve, direct")
    for order in (2, 4, 8, 12):
        fir = ctypes.c_void_p(lib.fir_Create())
        lib.fir_setLimitFrequency(fir, D(150))
        lib.fir_setFilterOrder(fir, order)
        lib.fir_solveByIIR(fir, D(1), 0)
        b, a = scipy.signal.butter(order, 150, fs=1024)
        row(f"recursive filter of order {order}, 10^5", lambda: lib.fir_filter(fir, at(x), at(y), x.size),
            lambda: scipy.signal.lfilter(b, a, x), "scipy.signal.lfilter")


def windows():
    x = rng.standard_normal(1_000_000)
    y = np.empty_like(x)
    for width in (5, 25, 101, 1001, 10001):
        row(f"median, width {width}, 10^6", lambda: lib.filterByMedianFilter(at(x), at(y), x.size, width),
            lambda: scipy.ndimage.median_filter(x, width, mode="nearest"), "scipy.ndimage.median_filter")
        row(f"maximum, width {width}, 10^6", lambda: lib.filterByMaxFilter(at(x), at(y), x.size, width),
            lambda: scipy.ndimage.maximum_filter1d(x, width, mode="nearest"), "scipy.ndimage.maximum_filter1d")
        row(f"mean, width {width}, 10^6", lambda: lib.filterByMeanFilter(at(x), at(y), x.size, width),
            lambda: scipy.ndimage.uniform_filter1d(x, width, mode="nearest"), "scipy.ndimage.uniform_filter1d")
    few = x[:20_000].copy()
    for width in (5, 101, 1001):
        row(f"median beside medfilt, width {width}, 2 10^4",
            lambda: lib.filterByMedianFilter(at(few), at(y), few.size, width),
            lambda: scipy.signal.medfilt(few, width), "scipy.signal.medfilt")


def smoothers():
    for n in (10_000, 100_000, 1_000_000):
        x = rng.standard_normal(n)
        y = np.empty_like(x)
        bands = np.array([np.full(n, 6e4), np.full(n, -4e4), np.full(n, 1e4)])
        bands[0] += 1
        row(f"Whittaker, {n:,}", lambda: lib.data_SmoothWhittaker1D(at(x), n, D(1e4), at(y)),
            lambda: scipy.linalg.solveh_banded(bands, x, lower=True), "scipy.linalg.solveh_banded")
        row(f"Savitzky-Golay of 31 points, {n:,}",
            lambda: lib.filterBySavitzkyGolay(at(x), at(y), n, D(1), 3, 31),
            lambda: scipy.signal.savgol_filter(x, 31, 3, mode="nearest"), "scipy.signal.savgol_filter")


head()
transforms()
filters()
windows()
smoothers()
