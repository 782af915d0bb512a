#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/pdf/kernel.csv and sample_density.csv with mpmath at 40 digits.

kernel.csv: name, type, pdf(0)/cdf(1), parameter a or mu, sigma, number of centres, centres..., widths..., x; the value.
sample_density.csv: name, index, sample...; density of the grouped sample at its distinct value of that index, with the
widths worked out here from their definition by numpy.
Tolerances: every term carries a few roundings, and a distribution function near 0 loses those of a sum near 1.
"""
import mpmath as mp
import numpy as np

from rows import EPS, line, save

mp.mp.dps = 40
MADE = f"mpmath {mp.__version__}, numpy {np.__version__}, 40 digits"


def density(kind, p, u):
    """K(u) of the kernels in their usual form."""
    a = mp.mpf(p[0])
    if kind == 1:
        return mp.npdf(u, p[0], p[1])
    if abs(u) >= a:
        return mp.mpf(0)
    if kind == 2:
        return mp.pi / (4 * a) * mp.cos(mp.pi * u / (2 * a))
    if kind == 4:
        return mp.mpf(3) / (4 * a) * (1 - (u / a) ** 2)
    return (1 - abs(u) / a) / a


def integral(kind, p, u):
    """Integral of K up to u; by quadrature for the bounded kernels, so that it owes nothing to a closed form."""
    if kind == 1:
        return mp.ncdf(u, p[0], p[1])
    a = mp.mpf(p[0])
    if u <= -a:
        return mp.mpf(0)
    return mp.quad(lambda t: density(kind, p, t), mp.linspace(-a, min(u, a), 5))


def triangle_cdf(p, c, w, x):
    """The triangle's distribution function as it stands: see its header."""
    a = mp.mpf(p[0])
    if x < c - a * w:
        return mp.mpf(0)
    if x < c:
        return (x - (c - a * w)) ** 2 / (2 * a * a * w)
    if x < c + 2 * a * w:
        return (c + a * w - x) * (x - c) + w / 2
    return w


def row(name, arguments, value, scale):
    """Tolerance: 16 roundings of numbers of size `scale`, in ulps of the value."""
    ulps = 16 if value == 0 else max(mp.mpf(8), 16 * scale / abs(value))
    return line(name, arguments, value, mp.nstr(ulps, 6))


def kernels():
    lines = []
    layouts = {
        "one": ([0.25], [1.0]),
        "four": ([-3.0, 0.5, 0.75, 6.0], [3.5, 8.0, 84.0, 5.25]),
        "narrow": ([-1.0, 0.0, 2.0], [0.01, 0.5, 0.125]),
    }
    params = {1: [(0.0, 1.0), (0.375, 2.5)], 2: [(1.0, 0.0), (2.5, 0.0)], 4: [(1.0, 0.0), (2.5, 0.0)],
              5: [(1.0, 0.0), (0.375, 0.0)]}
    xs = [-9.0, -3.0, -1.0, -0.125, 0.25, 0.6, 1.125, 2.0625, 5.0, 13.0]
    for kind in (1, 2, 4, 5):
        for p in params[kind]:
            for label, (centres, widths) in layouts.items():
                total = mp.fsum(map(mp.mpf, widths))
                for x in xs:
                    us = [(mp.mpf(x) - c) / w for c, w in zip(centres, widths)]
                    pdf = mp.fsum(density(kind, p, u) for u in us)
                    size = mp.fsum(1 / mp.mpf(p[0]) for u in us if kind != 1 and abs(u) < p[0]) or abs(pdf)
                    # exp of a large argument loses as many ulps as the argument is large
                    bend = 1 if kind != 1 else max(1, *(abs(u - p[0]) ** 2 / p[1] ** 2 for u in us))
                    if kind != 5:
                        pdf, size = pdf / total, size / total
                    if kind == 5:
                        cdf = mp.fsum(triangle_cdf(p, mp.mpf(c), mp.mpf(w), mp.mpf(x)) for c, w in zip(centres, widths))
                    else:
                        cdf = mp.fsum(w * integral(kind, p, u) for u, w in zip(us, widths))
                    cdf = min(max(cdf / total, mp.mpf(0)), mp.mpf(1))
                    head = [kind, 0, p[0], p[1], len(centres)] + centres + widths + [x]
                    if not (kind == 1 and pdf < mp.mpf("1e-290")):
                        lines.append(row(f"{kind}_{label}_pdf", head, pdf, size * bend))
                    head[1] = 1
                    if cdf < mp.mpf("1e-12"):
                        cdf_scale = None
                    else:
                        cdf_scale = mp.mpf(1) if kind in (1, 2) else max(mp.mpf(1), (2 + abs(mp.mpf(x))) / cdf * cdf)
                    if cdf_scale is not None:
                        lines.append(row(f"{kind}_{label}_cdf", head, cdf, cdf_scale))
    save("pdf/kernel", lines, MADE)


def widths_of(values, zoom):
    """Definition of the widths, on distinct values."""
    gaps = np.diff(values)
    inner = np.maximum(0.01, np.maximum(gaps[:-1], gaps[1:])) * zoom
    return np.concatenate([[max(0.01, gaps[0])], inner, [max(0.01, gaps[-1])]])


def densities():
    lines = []
    rng = np.random.default_rng(20240611)
    samples = {
        "uneven": [5.0, -2.0, 0.5, 0.5, 40.0, 0.504, 0.5, -2.0],
        "pair": [1.0, 4.0],
        "close": [1.0, 1.001, 1.002, 1.0035],
        "normal": [float(v) for v in rng.normal(3.0, 2.0, 24)],
    }
    for label, sample in samples.items():
        values = np.unique(sample)
        widths = widths_of(values, 16.0)
        total = mp.fsum(map(mp.mpf, widths))
        for i, x in enumerate(values):
            us = [(mp.mpf(x) - mp.mpf(c)) / mp.mpf(w) for c, w in zip(values, widths)]
            value = mp.fsum(mp.npdf(u) for u in us) / total
            bend = max(1, *(u * u for u in us if mp.npdf(u) / total > EPS * value / 16))
            lines.append(row(label, [i] + sample, value, value * bend))
    save("pdf/sample_density", lines, MADE)


if __name__ == "__main__":
    kernels()
    densities()
