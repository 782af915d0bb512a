#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/solver/losses.csv by mpmath: `kind,k,y,t,loss,ulps` for single pairs. k is nan before a
parameter is set. The tolerance is that of the condition in r = t - y, plus a few operations."""
import mpmath as mp

from rows import cases, save

mp.mp.dps = 60
PI = mp.pi


def default(k):
    k = max(abs(k), mp.mpf(1e-15))
    return k, k * k


def tiny(k):
    return mp.mpf(1e-16) if abs(k) < 1e-15 else abs(k)


def robust(kind, r, k):
    unset = mp.isnan(k)
    a = abs(r)
    s, s2 = (mp.mpf(10), mp.mpf(100)) if unset else default(k)
    if kind == 0: return a
    if kind == 1: return r * r
    if kind == 2: return a**s / s
    if kind == 10: return r * r / (2 * (r * r + s2))
    if kind == 11: return r * r if a < s else 2 * s * (a - (0 if unset else s / 2))
    if kind == 12: return (mp.sqrt(r * r / s2 + 1) - 1) * s2
    if kind == 13: return -(mp.cos(r / s) + 1) * s2 if not unset and a < s * PI else mp.mpf(0)
    if kind == 14: return (1 - (1 - (a / tiny(k))**2)**3) * tiny(k)**2 / 6 if not unset and a < tiny(k) else mp.mpf(0)
    if kind == 15: return mp.mpf(0) if unset else mp.log((r / tiny(k))**2 + 1) * tiny(k)**2 / 2
    if kind == 16: return (a / s - mp.log(a / s + 1)) * s2
    if kind == 17: return mp.log(mp.cosh(r / s)) * s2
    if kind == 18: return r * r if a < s else s2
    if kind == 19: return (1 - mp.exp(-(r / s)**2)) * s2


def pairs(kind, y, t):
    # The guarded sums are those of doubles: 1 + 1e-32 is 1.
    if kind == 60: return -(mp.log(mp.mpf(1.00000000000001 - y)) * (1 - t) + mp.log(mp.mpf(y + 1e-32)) * t)
    if kind == 61: return -t * mp.log(mp.mpf(y + 1e-32))
    if kind == 64: return max(mp.mpf(0), 1 - mp.mpf(y) * t)


def row(kind, k, y, t, value, ulps):
    cells = [f"kind{kind}", float(kind).hex(), k.hex() if k == k else "nan", y.hex(), t.hex()]
    return ",".join(cells + [mp.nstr(value, 25), f"{ulps:.3g}"])


def main():
    lines = []
    for case, (kind, k, y, t), _ in cases("solver/losses"):
        if kind in (60, 61, 64):
            value, ulps = pairs(kind, y, t), 8.0
        else:
            r = mp.mpf(t - y)  # the rounded difference is the argument
            value, ulps = robust(kind, r, mp.mpf(k)), 8.0
            if value != 0 and abs(value) < 1e-300: value = mp.mpf(0)
            s = float(default(mp.mpf(10 if mp.isnan(k) else k))[0])
            if kind == 2 and r != 0: ulps += 2 * abs(float(mp.log(abs(r)))) * 10
            if kind == 13 and value != 0:  # the argument's rounding, and that of cos near -1
                ulps += 4 * (1 + abs(float(r)) / s * abs(float(mp.sin(r / s)))) / abs(float(1 + mp.cos(r / s)))
            if kind == 16 and r != 0:
                v = float(abs(r) / s)
                if v >= 1e-4: ulps += 4 * v / float(mp.mpf(v) - mp.log1p(v))
        lines.append(row(int(kind), k, y, t, value, ulps))
    save("solver/losses", lines)


main()
