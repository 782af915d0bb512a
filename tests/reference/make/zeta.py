#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/special/<function>.csv for hypergeometric functions, zeta functions, polylogarithms, integrals
of elementary functions and polynomials of integer order.

usage: zeta.py [FUNCTION...]     (all when none is named; needs mpmath)

Rows and tolerances are those of rows.py.
"""
import random

import mpmath as mp

from rows import EPS, INF, NAN, around, inverse, real, write

mp.mp.dps = 50
CLOSE = mp.mpf(10) ** -12  # what is asked of values whose formula cancels


def relative(size):
    return lambda a, v: size * abs(v)


def drawn(region, seed, count, ranges, f):
    """Random arguments at which f is representable."""
    draw = random.Random(seed)
    rows = []
    while len(rows) < count:
        args = [draw.uniform(*r) for r in ranges]
        if 1e-300 < abs(f(*map(mp.mpf, args))) < 1e300:
            rows.append((region, *args))
    return rows


def tricomi(a, b, x):
    """U by its two series, in digits that suffice; mp.hyperu where b is an integer."""
    if b == int(b) or a <= 0 and a == int(a) or x <= 0:
        return mp.hyperu(a, b, x)
    last, digits = None, 100
    while True:
        with mp.workdps(digits):
            value = (mp.gammaprod([1 - b], [1 + a - b]) * mp.hyp1f1(a, b, x, maxprec=10 ** 6) +
                     mp.gammaprod([b - 1], [a]) * x ** (1 - b) * mp.hyp1f1(1 + a - b, 2 - b, x, maxprec=10 ** 6))
        if last is not None and abs(value - last) <= mp.mpf(10) ** -50 * abs(value):
            return +value
        last, digits = value, 2 * digits


def hypergeometric():
    pole = lambda b: b <= 0 and b == int(b)
    # The series ends at an absolute term of 1e-17; left of 0 the same sum is asked for to 1e-12.
    stop = lambda a, v: mp.mpf("2e-17")
    left = lambda a, v: CLOSE * abs(v) / 10 if a[-1] < 0 or abs(v) < 1e-3 else mp.mpf("2e-17")
    write("math_Hypergeometric0F1", lambda b, z: NAN if pole(b) else mp.hyp0f1(b, z),
          [("ordinary", b, z) for b in (0.5, 2.25, 30.0, -1.5) for z in (1e-20, 0.3, -0.7, 25.0, -40.0)] +
          [("left", b, z) for b in (0.5, 1.75, 7.0) for z in (-99.9, -100.1, -900.0, -1010.0, -2e4, -1e6)] +
          [("pole", b, 0.5) for b in (0.0, -2.0)] + [("large", 1.5, 2e4)], base=4, slack=left)
    write("math_Hypergeometric1F1", lambda a, b, z: NAN if pole(b) else mp.hyp1f1(a, b, z),
          [("ordinary", a, b, z) for a, b in ((0.5, 1.5), (2.25, 0.75), (-1.5, 2.5), (3.0, 7.5))
           for z in (1e-15, 0.4, -0.8, 12.0, -19.9)] +
          [("left", a, b, z) for a, b in ((0.5, 1.5), (1.0, 2.0), (2.25, 0.75), (-1.3, 2.6), (4.0, -2.5), (12.5, 3.25))
           for z in (-20.1, -35.0, -37.0, -120.0, -800.0, -1e5)] +
          [("ends", -3.0, 1.25, -500.0), ("kummer_ends", 4.5, 2.5, -60.0), ("right", 0.5, 1.5, 600.0),
           ("small", -86.75, 57.875, 40.9), ("small", -40.0, 2.5, 30.0)] +
          [("cancels", -92.0, 2.2761143855070896, 105.162), ("cancels", -123.83, 0.894, 53.2), ("cancels", -141.9, 8.302, 31.07),
           ("cancels", 50.90722494362586, 146.54377773249524, -61.648), ("dips", 0.5, -148.3, 60.0), ("kummer_ends", 195.5, 54.5, -756.4),
           ("not_far", 149.37, 1.49125, -91.763), ("not_far", -60.25, 12.5, -40.5)] +
          drawn("wide", 1, 20, ((-150, 150), (-30, 150), (-100, 120)), mp.hyp1f1) +
          [("pole", 1.0, b, 0.5) for b in (0.0, -2.0)], base=4, slack=left,
          exact=lambda a: a[1] - a[0] == -2)
    write("math_Hypergeometric2F1", lambda a, b, c, z: NAN if pole(c) else mp.hyp2f1(a, b, c, z),
          [("ordinary", a, b, c, z) for a, b, c in ((-0.5, 0.5, 1.0), (1.3, 1.0, 2.3), (2.5, -0.75, 1.25), (0.2, 8.0, -3.5))
           for z in (1e-18, 0.3, 0.5, -0.6, 0.9, -0.95)] +
          [("near_one", 1.3, 1.0, 2.3, 0.995), ("near_one", 0.5, 0.5, 2.0, 0.999), ("ends", -4.0, 2.5, 1.5, 3.0),
           ("cancels", 49.9866, 51.6643, -32.5387, -0.709353), ("cancels", 60.5, -35.25, -58.75, 0.8)] +
          [("overflows", 182.41370875569976, 179.13099482373974, -177.37945290927652, -0.7887432091980489),
           ("ends_far", -157.0, 68.08710545585797, -4.105314747692361, 0.91786), ("ends_far", -150.0, 85.69184491589445, 79.14459602929475, 1.39825)] +
          drawn("wide", 2, 20, ((-200, 200), (-200, 200), (-200, 200), (-0.95, 0.95)), mp.hyp2f1) +
          [("pole", 1.0, 2.0, -1.0, 0.5)], base=4,
          slack=lambda a, v: mp.mpf("2e-17") / (1 - min(abs(a[3]), mp.mpf("0.9999"))))
    whole = lambda b: b == int(b) and b != 1
    write("math_hypergeometricU", lambda a, b, x: NAN if whole(b) or (x < 0 and a != -2) else tricomi(a, b, x),
          [("ordinary", a, b, x) for a, b in ((0.5, 1.5), (2.25, 0.75), (3.0, -1.4), (0.7, 4.3), (-1.6, 0.4), (-2.0, 2.5))
           for x in (0.01, 0.049, 0.051, 0.6, 3.0, 19.0, 21.0, 150.0)] +
          [("order_one", a, 1.0, x) for a in (0.5, 2.0) for x in (1e-6, 0.04, 0.06, 2.0, 30.0)] +
          [("near_whole", 0.75, b, x) for b in (2.001, 1.9999999, 1.00001) for x in (0.3, 2.0, 12.0)] +
          [("large", 40.5, 3.25, 2.0), ("large", -30.5, 0.75, 5.0), ("large", 200.25, 0.5, 30.0),
           ("down", -8.8356, 20.7078, 4.39539), ("down", 1.3841, 42.3573, 11.9448), ("down", -39.97, -40.36, 11.94),
           ("long", 45.8564, -50.3302, 0.19034), ("long", 136.556, -30.247, 0.05049), ("long", -13.44, -117.59, 0.0217),
           ("turned", 1.3, 75.5, 0.5), ("turned", 5.5, 150.3, 10.0), ("turned", -100.3, -50.1, 2.0),
           ("near_whole", -26.013691836836344, 37.99999965218296, 0.4642359996974317), ("near_whole", 12.2, -88.999995, 0.036)] +
          drawn("wide", 3, 60, ((-150, 150), (-170, 170), (0.01, 50)), tricomi) +
          [("near_whole", a, round(b) + d, x) for (_, a, b, x), d in zip(drawn("", 4, 15, ((-150, 150), (-170, 170), (0.01, 20)), tricomi),
                                                                         (1e-3, -1e-5, 1e-7, -1e-9, 1e-11) * 3)] +
          [("whole", 1.5, 2.0, 3.0), ("whole", 1.5, 0.0, 3.0), ("left", 0.5, 1.5, -1.0), ("left", -2.0, 2.5, -1.5)] +
          [("zero", 0.5, 0.25, 0.0)], base=8, slack=relative(CLOSE))
    grid = [("ordinary", k, m, x) for k, m in ((0.3, 0.7), (-1.25, 0.2), (2.5, 1.3), (0.0, 0.0)) for x in (0.02, 0.9, 6.0, 45.0)]
    far = [("far", 0.3, 0.7, x) for x in (199.0, 201.0, 1300.0)]
    write("math_whittakerM", mp.whitm, grid + far, base=8, slack=relative(CLOSE))
    whittaker_w = lambda k, m, x: x ** (m + mp.mpf(1) / 2) * mp.exp(-x / 2) * tricomi(m + mp.mpf(1) / 2 - k, 2 * m + 1, x)
    write("math_whittakerW", whittaker_w, grid + far + [("down", 19.1895, -9.8539, 4.39539)] +
          drawn("wide", 5, 12, ((-80, 80), (-60, 60), (0.1, 50)), whittaker_w), base=8, slack=relative(CLOSE))

    def wright(a, b, x):
        return mp.nsum(lambda k: x ** int(k) * mp.rgamma(a * k + b) / mp.factorial(k), [0, mp.inf], method="d")
    write("math_wrightBessel", lambda a, b, x: NAN if a < 0 or b < 0 or x < -8 else wright(a, b, x),
          [("ordinary", a, b, x) for a, b in ((0.0, 1.0), (0.5, 1.0), (1.0, 0.0), (2.5, 3.25)) for x in (1e-20, 0.3, -0.9, 7.0, -7.9)] +
          [("large", 0.5, 1.0, 60.0), ("large", 1.0, 2.0, 1e4), ("outside", -0.1, 1.0, 1.0), ("outside", 1.0, 1.0, -8.1)],
          base=8, slack=lambda a, v: CLOSE * abs(v) if a[2] < 0 else 64 * EPS * abs(v))

    def mittag(a, b, x):
        with mp.workdps(60):
            peak = abs(x) ** (1 / a)
        with mp.workdps(60 + int(peak)):
            total, k = mp.mpf(0), 0
            while True:
                term = x ** k * mp.rgamma(a * k + b)
                total += term
                k += 1
                if a * k > peak + 10 and abs(term) < mp.mpf(10) ** -45 * abs(total):
                    return +total
    write("math_mittagLeffler", lambda a, b, x: NAN if a < EPS or b < EPS else mittag(a, b, x),
          [("ordinary", a, b, x) for a, b in ((0.5, 1.0), (1.0, 1.0), (1.0, 2.5), (1.7, 0.6), (2.0, 1.0), (3.5, 4.0))
           for x in (1e-12, 0.7, 3.97, 3.99, 8.0, -0.4, -1.57, -1.59, -5.0, -12.0)] +
          [("left", a, 1.0, x) for a in (0.75, 1.0, 1.2, 1.95, 2.0, 2.6) for x in (-40.0, -90.0)] +
          [("left", 0.5, 4.0, -32.0), ("left", 0.625, 1.0, -60.0), ("right", 1.0, 1.0, 300.0), ("right", 2.0, 1.5, 5000.0), ("outside", 0.0, 1.0, 0.5), ("outside", 1.0, -1.0, 0.5)],
          base=16, exact=lambda a: a[0] == a[1] == 1,
          slack=lambda a, v: CLOSE * max(abs(v), mp.mpf("1e-3") if a[2] < 0 and not a[0] == a[1] == 1 else 0) + mp.mpf("2e-14") * abs(v))


def zeta():
    write("math_zeta", lambda s: INF if s == 1 else mp.zeta(s),
          real("ordinary", 0.5, 1.5, 2.0, 3.3, 10.0, 30.0) + real("near_pole", 1 + 1e-9, 1 - 1e-5, 0.999) +
          around(0.9, 1.1) + real("switch", -14.999, -15.001, 59.9, 60.1) + real("tiny", 0.0, 1e-300, -1e-10) +
          real("left", -0.5, -1.0, -3.5, -9.25, -20.5, -61.3, -150.5, -201.5) + real("root", -2.0, -20.0, -200.0) +
          real("pole", 1.0), base=16, exact=lambda a: abs(a[0] - 1) < 1e-4)
    f, cases = inverse(mp.zeta, [("left", s) for s in (-2.69, -1.5, -0.5, 0.3, 0.9, 0.9999)] +
                       [("right", s) for s in (1.0001, 1.5, 1.99, 2.01, 3.3, 5.99, 6.01, 9.9, 10.1, 17.0, 24.9, 25.1)])
    write("math_invZeta", f, cases, base=16, slack=lambda a, v: EPS * 4 * abs(a[0] / mp.zeta(v, derivative=1)))
    hurwitz = lambda s, a: mp.zeta(s, a)
    # From s = 6 on the direct sum leaves out what follows a block of ten terms below 1e-15.

    def tail(args, v):
        s, a = args
        if s <= 6:
            return CLOSE / 10 * abs(v) + mp.mpf("1e-19")
        t = a
        while True:
            block = mp.fsum((t + i) ** -s for i in range(10))
            t += 10
            if block < 1e-15 and t > 11:
                return t ** (1 - s) * (1 / (s - 1) + 1 / t) + EPS * abs(v)
    write("math_hurwitzZeta", hurwitz,
          [("ordinary", s, a) for s in (0.5, 1.5, 3.0, 5.9, 6.1, 20.0) for a in (0.25, 0.5, 1.0, 3.7, 40.0)] +
          [("left", s, a) for s in (-0.5, -2.75, -3.99, -4.01, -7.5, -20.5) for a in (0.3, 0.9, 2.6, 15.0)] +
          [("whole", s, a) for s in (-1.0, -3.0, -8.0, 0.0) for a in (0.25, 2.5)] +
          [("negative_a", s, a) for s in (2.0, 3.0) for a in (-0.3, -3.6)], base=16, slack=tail)
    write("math_dirichletEta", lambda s: mp.altzeta(s),
          real("ordinary", 0.5, 2.0, 7.5, 50.0) + real("pole_of_zeta", 1.0, 1 + 1e-10, 1 - 1e-7) + around(0.9, 1.1) +
          real("left", -0.5, -1.0, -7.3, -20.5, -100.25) + real("tiny", 0.0, 1e-200) + real("root", -4.0), base=16)
    beta = lambda s: mp.mpf(4) ** -s * (mp.zeta(s, mp.mpf(1) / 4) - mp.zeta(s, mp.mpf(3) / 4))

    def dirichlet_beta(s):
        if s < 0 and s == int(s) and int(s) % 2:
            return mp.mpf(0)
        with mp.workdps(90):  # near 1 two poles cancel
            return beta(mp.mpf(s))
    write("math_dirichletBeta", dirichlet_beta,
          real("ordinary", 0.5, 2.0, 3.0, 5.9, 6.1, 12.5, 39.9, 40.1) + real("near_one", 1 + 1e-9, 1 - 1e-6, 1.01) +
          real("left", -0.5, -2.0, -6.0, -7.4, -20.25, -100.5) + real("root", -1.0, -9.0) + real("zero", 0.0), base=16,
          slack=lambda a, v: mp.mpf("2e-15"))


def polylogarithm():
    def li(s, z):
        """Independent of the product's roads: Jonquiere's relation with Hurwitz zeta for z < -1/2, else mpmath's."""
        if z < -0.5 and not (s == int(s) and s >= 0):
            with mp.workdps(70):
                u = mp.log(-z) / (2j * mp.pi)
                r = 1 - s
                value = mp.gamma(r) / (2 * mp.pi) ** r * (mp.mpc(0, 1) ** r * mp.zeta(r, mp.mpf(1) / 2 + u) +
                                                          mp.mpc(0, -1) ** r * mp.zeta(r, mp.mpf(1) / 2 - u))
            return mp.re(value)
        return mp.re(mp.polylog(s, z))

    def real_li(s, z):
        if z > 1 and not (s == int(s) and s <= 0):
            return NAN
        if z == 1:
            return mp.zeta(s) if s > 1 else NAN
        return li(s, z)
    zs = (1e-12, 0.25, 0.29, 0.31, 0.7, 0.72, 0.99, 0.999999, -0.2, -0.69, -0.72, -0.999)
    write("math_polyLog", real_li,
          [("ordinary", s, z) for s in (0.5, 1.5, 2.0, 3.0, 4.75, 9.5) for z in zs] +
          [("negative", s, z) for s in (-0.5, -2.25, -3.0, -4.0, -5.5, -9.0) for z in zs] +
          [("closed", s, z) for s in (-2.0, -1.0, 0.0, 1.0) for z in (0.3, -4.0)] + [("closed", -1.0, 7.0)] +
          [("far", s, z) for s in (0.5, 1.5, 2.0, 3.0, -0.5, -2.5, -3.0, -7.5) for z in (-1.5, -4.9, -5.1, -60.0, -1e6, -1e30)] +
          [("near_whole", s, z) for s in (2.0000001, 1.9999, 3.00099) for z in (0.5, 0.8, 0.9999, -0.9, -3.0)] +
          [("special", s, z) for s in (2.0, 0.5) for z in (-1.0, 0.0, 1.0)] + [("outside", 1.5, 1.5), ("rational", -3.0, 5.0)],
          base=16, slack=relative(CLOSE), exact=lambda a: abs(a[1] - 1) < 1e-5 or a[0] < 0 and a[0] == int(a[0]))
    fermi = lambda s, x: -li(s + 1, -mp.exp(x))
    write("math_fermiDirac", fermi,
          [("ordinary", s, x) for s in (-0.5, 0.5, 1.0, 1.5, 2.0, 3.0) for x in (-50.0, -3.0, -0.3, 0.0, 0.4, 2.0, 9.0, 39.0, 41.0, 500.0)] +
          [("low", s, x) for s in (-1.0, -2.0, -1.5, -3.5) for x in (-5.0, 0.2, 6.0, 25.0)] +
          [("high", s, x) for s in (7.5, 12.0) for x in (-2.0, 1.0, 10.0, 50.0)], base=16, slack=relative(CLOSE), exact=lambda a: a[0] < -1 and a[0] == int(a[0]))
    bose = lambda s, x: NAN if x > 0 and not (s == int(s) and s < 0) else real_li(s + 1, mp.exp(x))
    write("math_boseEinstein", bose,
          [("ordinary", s, x) for s in (-0.5, 0.5, 1.0, 1.5, 2.0, 3.0, 0.0) for x in (-40.0, -3.0, -1.0, -0.2, -1e-9)] +
          [("low", s, x) for s in (-1.0, -2.0, -4.0) for x in (-2.0, 0.7, 12.0)] + [("outside", 0.5, 0.3), ("end", 1.0, 0.0)],
          base=16, slack=relative(CLOSE))
    write("math_polyLogarithm2", lambda x: NAN if x > 1 else mp.re(mp.polylog(2, x)),
          real("ordinary", 0.3, 0.7, 0.99, -0.2, -0.8, -1.5, -3.0, -1e4, -1e200) + real("tiny", 1e-300, -1e-9) +
          around(-2.0, -0.50001, 0.50001) + real("outside", 1.1), base=8)


def clausen():
    # Sums end at k^n >= 1e17: the tail is below 2 (1e17)^(1/n) 1e-17/(n-1).
    # A sum of sines also keeps to |x| k^(2-n)/(n-2), x from the next multiple of 2 pi.
    def tail(closed, sine):
        def size(a, v):
            n, x = int(a[0]), mp.mpf(a[1])
            if n in closed:
                return 8 * EPS * (abs(v) if sine(n) else 1)
            last = mp.mpf("1e17") ** (1 / mp.mpf(n))
            bound = 2 * last * mp.mpf("1e-17") / (n - 1)
            if sine(n):
                bound = min(bound, mp.mpf("1.01") * abs(x - 2 * mp.pi * mp.nint(x / 2 / mp.pi)) * last ** (2 - n) / (n - 2))
            return bound + 8 * EPS * abs(v)
        return size
    angles = (1e-8, 0.3, 1.1, 2.09, 2.11, 3.1, 4.5, 6.2, 50.0, -0.7, -4.0)
    s = lambda n, x: mp.clsin(int(n), x)
    c = lambda n, x: mp.clcos(int(n), x)
    write("math_ClausenS", lambda n, x: NAN if n != int(n) or n < 1 else s(n, x),
          [("order_%d" % n, n, x) for n in (1, 2, 3, 4, 5, 7) for x in angles] + [("order", 1.5, 0.3), ("order", 0.0, 0.3)],
          base=8, slack=tail((1, 2, 3, 5), lambda n: True))
    write("math_ClausenC", lambda n, x: NAN if n != int(n) or n < 1 else c(n, x),
          [("order_%d" % n, n, x) for n in (1, 2, 3, 4, 5, 8) for x in angles] + [("order", 1.5, 0.3)], base=8,
          slack=tail((1, 2, 4), lambda n: False))
    write("math_Clausen", lambda n, x: c(n, x) if int(n) % 2 else s(n, x),
          [("order_%d" % n, n, x) for n in (1, 2, 3, 4, 5, 6) for x in (0.4, 2.5, -1.2)], base=8,
          slack=tail((1, 2), lambda n: n % 2 == 0))


def barnes():
    log_g = lambda x: mp.log(mp.barnesg(x)) if x > 0 else -INF if x == int(x) else NAN
    points = real("ordinary", 0.3, 0.9, 1.5, 2.7, 5.5, 9.9) + real("switch", 10.999, 11.001, 12.25) + real("whole", 1.0, 2.0, 5.0, 20.0)
    write("math_lnBarnesG", log_g, points + real("large", 60.5, 1000.0, 1003.0, 2e4) + real("small", 1e-3) +
          real("pole", 0.0, -3.0) + real("outside", -0.5), base=16, slack=lambda a, v: mp.mpf("2e-14") * (1 + a[0] ** 2))
    write("math_barnesG", lambda x: INF if x > 28.48 else mp.mpf(0) if x == int(x) and x < 1 else mp.barnesg(x),
          points + real("small", 1e-5, -9.9e-5, 1.01e-4, -2e-3) + real("left", -0.5, -3.3, -12.7) + real("large", 25.5, 28.0, 28.5) +
          real("zero", 0.0, -4.0), base=16,
          slack=lambda a, v: abs(v) * (mp.mpf("4e-14") * (1 + a[0] ** 2) + (abs(a[0]) ** 3 if abs(a[0]) < 1e-4 else 0)))
    write("math_hyperfactorial", lambda x: INF if x > 22.67524 else mp.hyperfac(x),
          real("ordinary", 0.5, -0.3, 1.7, 4.25, 9.9, 10.1, 15.5, 22.6) + real("whole", 0.0, 1.0, 5.0, 22.0, -1.0, -2.0, -3.0, -6.0) +
          real("large", 22.7, 23.0), base=16, slack=lambda a, v: abs(v) * mp.mpf("4e-14") * (1 + a[0] ** 2))


def integrals():
    write("math_expIntegral", lambda x: -INF if x == 0 else mp.ei(x),
          real("ordinary", 0.2, 1.0, 5.0, 30.0, -0.3, -0.999, -1.001, -1.5, -20.0, -99.0, -101.0) + real("near_root", 0.37, 0.3725074) + real("huge", 100.0, 700.0, -700.0) +
          real("tiny", 1e-300, -1e-300) + real("pole", 0.0), base=16,
          slack=lambda a, v: 4 * EPS if abs(a[0] - 0.37) < 0.1 else 0)
    ep = lambda p, x: NAN if x <= 0 and not (p == int(p) and p <= 1) else mp.ei(x) if p == 1 else mp.re(mp.expint(p, x))
    # Two bounds stand for whole orders where they are close or tiny: half their distance.
    near = lambda a, v: (mp.exp(-a[1]) / (a[0] + a[1]) / (a[0] + a[1] - 1) / 2 if a[0] > 1 and mp.exp(-a[1]) < 1e-90 else
                         0) + CLOSE * abs(v)
    write("math_expIntegralP", ep,
          [("whole", p, x) for p in (-3.0, -1.0, 0.0, 1.0, 2.0, 3.0, 10.0, 200.0) for x in (0.01, 0.9, 1.1, 5.0, 11.0, 40.0)] +
          [("broken", p, x) for p in (0.5, 1.5, 2.75, 19.5, 20.5, 350.25) for x in (0.01, 0.9, 1.1, 5.0, 11.0, 39.0)] +
          [("below", p, x) for p in (-0.5, -2.25, -30.5) for x in (0.01, 0.9, 1.1, 5.0, 11.0, 60.0)] +
          [("left", -2.0, -1.5), ("left", 0.0, -3.0), ("outside", 2.0, -1.0), ("outside", 1.5, -1.0), ("huge", 3.0, 700.0)],
          base=16, slack=near)
    odd = lambda points: points + real("negative", -0.005, -3.0, -20.0)
    write("math_sineIntegral", mp.si, odd(real("ordinary", 0.5, 2.0, 5.0, 8.0, 50.0, 1e5) + real("tiny", 1e-300, 1e-9) +
          around(4.2e-9, 0.01, 6.0, 12.0, 2450000000.0, 2e16) + real("huge", 1e15, 1e300)), base=4,
          slack=lambda a, v: EPS * min(1, abs(a[0])))
    write("math_cosineIntegral", lambda x: NAN if x < 0 else -INF if x == 0 else mp.ci(x),
          real("ordinary", 0.1, 1.5, 4.5, 8.0, 50.0, 1e5) + real("tiny", 1e-300) + around(0.01, 3.0, 6.0, 12.0) +
          real("near_root", 0.6165, 0.61650548562, 3.38418, 3.384180422551) + real("huge", 1e12, 1e20) + real("edge", 0.0, -1.0),
          base=8, slack=lambda a, v: 4 * EPS * min(1 / max(1, a[0]), abs(v) * 100 if a[0] < 6 else 1),
          exact=lambda a: a[0] > 1e4 or abs(mp.ci(a[0])) < 1e-4)
    write("math_sinhIntegral", lambda x: mp.sign(x) * INF if abs(x) > 739 else mp.shi(x),
          real("ordinary", 0.5, -2.0, 8.0, 60.0, -700.0) + real("beyond", -740.0, -800.0, 740.0) + real("tiny", 1e-300) + around(0.01), base=8)
    write("math_coshIntegral", lambda x: NAN if x < 0 else -INF if x == 0 else mp.chi(x),
          real("ordinary", 0.1, 2.0, 8.0, 60.0, 700.0) + real("tiny", 1e-300) + around(0.01) + real("near_root", 0.5238, 0.52382257) +
          real("edge", 0.0, -1.0), base=8, slack=lambda a, v: 4 * EPS)
    write("math_logIntegral", lambda x: NAN if x < 0 else -INF if x == 1 else mp.li(x),
          real("ordinary", 0.2, 0.9, 1.2, 2.0, 30.0, 1e6, 1e100, 1e300) + real("tiny", 1e-300) + around(1.001) +
          real("near_one", 1 + 1e-10, 1 - 1e-10) + real("near_root", 1.4513, 1.45136923) + real("edge", 0.0, 1.0, -1.0),
          base=16,
          exact=lambda a: abs(a[0] - 1) < 1e-6, slack=lambda a, v: (8 * EPS if abs(a[0] - 1.45) < 0.1 else 0) + 2 * EPS * abs(v) * (1 + abs(mp.log(a[0])) if a[0] > 0 else 1))
    f, cases = inverse(mp.shi, [("ordinary", x) for x in (2e-5, 0.3, 0.99, 1.01, 4.0, 9.9, 10.1, 60.0, 300.0, 700.0)])
    write("math_invSinhIntegral", f, cases, base=16)
    f, cases = inverse(mp.chi, [("ordinary", x) for x in (1e-50, 9e-5, 1.1e-4, 0.05, 0.11, 0.5, 0.9, 1.1, 5.0, 9.9, 10.1, 60.0, 300.0, 700.0)])
    write("math_invCoshIntegral", f, cases, base=16)
    grid = (real("ordinary", 0.3, 1.2, 2.2, 3.7, 4.9, 8.0, 100.0, 12345.678) + real("tiny", 1e-200, 1e-5) +
            around(2.5, 5.0, 1e6) + real("negative", -0.4, -3.0, -70.0) + real("huge", 3e7, 1.9e9))
    write("math_fresnelC", mp.fresnelc, grid, base=8, conditioned=False,
          slack=lambda a, v: mp.mpf("4e-15") * min(1, abs(a[0])))
    write("math_fresnelS", mp.fresnels, grid + real("huge", 1e10), base=8, conditioned=False,
          slack=lambda a, v: mp.mpf("4e-15") if abs(a[0]) > 2 else 0)
    goodwin = lambda x: INF if x == 0 else (mp.pi * mp.erfi(x) - mp.ei(x * x)) * mp.exp(-x * x) / 2
    write("math_goodwinStaton", goodwin, real("ordinary", 0.01, 0.4, 1.5, 4.0, 9.0) + around(10.0) + real("large", 25.0, 1e3) +
          real("negative", -0.5, -4.0, -30.0) + real("zero", 0.0), base=16, slack=lambda a, v: 16 * EPS)


def glasser(x):
    edges = [mp.mpf(0)]
    while edges[-1] < x:
        edges.append(min(mp.mpf(x), edges[-1] + 4 / (2 + edges[-1])))
    with mp.workdps(30):
        return mp.fsum(mp.quad(lambda t: mp.sin(t * mp.sin(t)), [a, b], method="gauss-legendre", maxdegree=4)
                       for a, b in zip(edges, edges[1:]))


def polynomials():
    def by_recurrence(first, second):
        """first(x) = p_1, p_k = second(k, x, p_(k-1), p_(k-2)), with the digits that an order of 20000 may lose."""
        def g(n, x):
            with mp.workdps(400 if n < 100000 else 30):
                before, value = mp.mpf(1), first(x)
                if n == 0:
                    return before
                for k in range(2, int(n) + 1):
                    before, value = value, second(k, x, value, before)
                return +value
        return g
    legendre = by_recurrence(lambda x: x, lambda k, x, p, q: ((2 * k - 1) * x * p - (k - 1) * q) / k)
    short_laguerre = by_recurrence(lambda x: 1 - x, lambda k, x, p, q: ((2 * k - 1 - x) * p - (k - 1) * q) / k)
    laguerre = lambda n, x: short_laguerre(n, x) if n < 100000 else mp.hyp1f1(-n, 1, x)
    hermite = by_recurrence(lambda x: 2 * x, lambda k, x, p, q: 2 * x * p - 2 * (k - 1) * q)
    orders = (1, 2, 3, 8, 31)
    grid = [("ordinary", n, x) for n in orders for x in (0.3, -0.7, 1.0, -1.0, 2.5, -3.0, 1e-200)]
    below = [("order", -1, 0.5)]
    nan_below = lambda f: lambda n, x: NAN if n < 0 else f(n, x)
    # The recurrence rounds at each order, by an ulp of sizes up to its envelope: about 1/sqrt(n) on (-1, 1), and near 0
    # for odd orders no more than n |x|.
    noise = lambda a, v: 4 * (a[0] + 1) * EPS * max(min(1, a[0] * abs(a[1])) / mp.sqrt(a[0] + 1), abs(v)) if a[0] > 0 else 0
    write("math_polyLegendre", nan_below(legendre), grid + below + [("high", 1000, 0.3), ("high", 20000, -0.9)],
          base=16, conditioned=False, slack=noise)
    # The recurrence's errors are those of exp(x/2) size.
    write("math_polyLaguerre", nan_below(laguerre), [("zero", 0, 0.4)] + grid + below +
          [("large", 31, 40.0), ("large", 5, 1e5)] +
          [("huge", n, x) for n in (20000001, 2147483647) for x in (-1e-9, -1e-6, -2e-5, 1e-7, 1e-3)], base=16, conditioned=False,
          slack=lambda a, v: 8 * EPS * mp.sqrt(a[0] * abs(a[1])) * max(abs(v), mp.mpf("0.01")) if a[0] > 100000 else 16 * (a[0] + 1) * EPS * max(min(mp.exp(max(a[1], 0) / 2), laguerre(a[0], -abs(a[1]))), abs(v)) if a[0] > 0 else 0)
    # Inside the zeros the envelope is exp(x^2/2) sqrt(2^n n!), and near 0 for odd orders x times that.
    size = lambda n, x: max(abs(hermite(n, x)), min(mp.exp(x * x / 2) * mp.sqrt(mp.mpf(2) ** n * mp.factorial(n)) *
                                                    min(1, 2 * n * abs(x)), abs(hermite(n, mp.mpc(0, x))))) * (n + 1)
    write("math_polyHermite", nan_below(hermite), [("zero", 0, 0.4)] + grid + below + [("high", 149, 1.1), ("high", 151, 1.1),
          ("large", 30, 1e4)] + [("huge", n, x) for n, x in ((1000001, 0.01), (1000002, -1234.5), (1000003, 1400.1), (1000001, -1414.2))],
          base=16, conditioned=False, slack=lambda a, v: 0 if a[0] > 100000 else 2 * EPS * size(*a))
    write("math_polyByBernoulli", nan_below(lambda n, x: mp.bernpoly(int(n), x)),
          [("ordinary", n, x) for n in range(0, 9) for x in (0.25, -0.7, 1.5, 4.0)] + [("high", 30, 12.5), ("high", 20, 0.3)] +
          below, base=16, conditioned=False,
          slack=lambda a, v: 16 * EPS * mp.fsum(mp.binomial(int(a[0]), k) * abs(mp.bernoulli(k) * mp.mpf(a[1]) ** (int(a[0]) - k))
                                                for k in range(int(a[0]) + 1)) if a[0] >= 0 else 0)


def glasser_table():
    write("calcGlasser", glasser, real("ordinary", 0.5, 2.0, 7.0, 31.0) + real("large", 100.0), base=8,
          conditioned=False, slack=lambda a, v: mp.mpf("1e-14") * (1 + a[0]))


GROUPS = (hypergeometric, zeta, polylogarithm, clausen, barnes, integrals, polynomials,
          glasser_table)
if __name__ == "__main__":
    for group in GROUPS:
        group()
