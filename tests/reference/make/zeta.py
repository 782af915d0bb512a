#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/special/<function>.csv for hypergeometric functions, zeta functions, polylogarithms, integrals
of elementary functions and polynomials of integer order.

usage: zeta.py [FUNCTION...]     (all when none is named; needs mpmath)

Rows and tolerances are those of rows.py.
"""
import random

import mpmath as mp

from rows import EPS, INF, NAN, inverse, write

mp.mp.dps = 50
CLOSE = mp.mpf(10) ** -12  # what is asked of values whose formula cancels


def relative(size):
    return lambda a, v: size * abs(v)




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
    left = lambda a, v: CLOSE * abs(v) / 10 if a[-1] < 0 or abs(v) < 1e-3 else mp.mpf("2e-17")
    write("math_Hypergeometric0F1", lambda b, z: NAN if pole(b) else mp.hyp0f1(b, z), base=4, slack=left)
    write("math_Hypergeometric1F1", lambda a, b, z: NAN if pole(b) else mp.hyp1f1(a, b, z), base=4, slack=left,
          exact=lambda a: a[1] - a[0] == -2)
    write("math_Hypergeometric2F1", lambda a, b, c, z: NAN if pole(c) else mp.hyp2f1(a, b, c, z), base=4,
          slack=lambda a, v: mp.mpf("2e-17") / (1 - min(abs(a[3]), mp.mpf("0.9999"))))
    whole = lambda b: b == int(b) and b != 1
    write("math_hypergeometricU", lambda a, b, x: NAN if whole(b) or (x < 0 and a != -2) else tricomi(a, b, x), base=8, slack=relative(CLOSE))
    write("math_whittakerM", mp.whitm, base=8, slack=relative(CLOSE))
    whittaker_w = lambda k, m, x: x ** (m + mp.mpf(1) / 2) * mp.exp(-x / 2) * tricomi(m + mp.mpf(1) / 2 - k, 2 * m + 1, x)
    write("math_whittakerW", whittaker_w, base=8, slack=relative(CLOSE))

    def wright(a, b, x):
        return mp.nsum(lambda k: x ** int(k) * mp.rgamma(a * k + b) / mp.factorial(k), [0, mp.inf], method="d")
    write("math_wrightBessel", lambda a, b, x: NAN if a < 0 or b < 0 or x < -8 else wright(a, b, x),
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
          base=16, exact=lambda a: a[0] == a[1] == 1,
          slack=lambda a, v: CLOSE * max(abs(v), mp.mpf("1e-3") if a[2] < 0 and not a[0] == a[1] == 1 else 0) + mp.mpf("2e-14") * abs(v))


def zeta():
    write("math_zeta", lambda s: INF if s == 1 else mp.zeta(s), base=16, exact=lambda a: abs(a[0] - 1) < 1e-4)
    write("math_invZeta", inverse(mp.zeta), base=16, slack=lambda a, v: EPS * 4 * abs(a[0] / mp.zeta(v, derivative=1)))
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
    write("math_hurwitzZeta", hurwitz, base=16, slack=tail)
    write("math_dirichletEta", lambda s: mp.altzeta(s), base=16)
    beta = lambda s: mp.mpf(4) ** -s * (mp.zeta(s, mp.mpf(1) / 4) - mp.zeta(s, mp.mpf(3) / 4))

    def dirichlet_beta(s):
        if s < 0 and s == int(s) and int(s) % 2:
            return mp.mpf(0)
        with mp.workdps(90):  # near 1 two poles cancel
            return beta(mp.mpf(s))
    write("math_dirichletBeta", dirichlet_beta, base=16,
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
    write("math_polyLog", real_li,
          base=16, slack=relative(CLOSE), exact=lambda a: abs(a[1] - 1) < 1e-5 or a[0] < 0 and a[0] == int(a[0]))
    fermi = lambda s, x: -li(s + 1, -mp.exp(x))
    write("math_fermiDirac", fermi, base=16, slack=relative(CLOSE), exact=lambda a: a[0] < -1 and a[0] == int(a[0]))
    bose = lambda s, x: NAN if x > 0 and not (s == int(s) and s < 0) else real_li(s + 1, mp.exp(x))
    write("math_boseEinstein", bose,
          base=16, slack=relative(CLOSE))
    write("math_polyLogarithm2", lambda x: NAN if x > 1 else mp.re(mp.polylog(2, x)), base=8)


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
    s = lambda n, x: mp.clsin(int(n), x)
    c = lambda n, x: mp.clcos(int(n), x)
    write("math_ClausenS", lambda n, x: NAN if n != int(n) or n < 1 else s(n, x),
          base=8, slack=tail((1, 2, 3, 5), lambda n: True))
    write("math_ClausenC", lambda n, x: NAN if n != int(n) or n < 1 else c(n, x), base=8,
          slack=tail((1, 2, 4), lambda n: False))
    write("math_Clausen", lambda n, x: c(n, x) if int(n) % 2 else s(n, x), base=8,
          slack=tail((1, 2), lambda n: n % 2 == 0))


def barnes():
    log_g = lambda x: mp.log(mp.barnesg(x)) if x > 0 else -INF if x == int(x) else NAN
    write("math_lnBarnesG", log_g, base=16, slack=lambda a, v: mp.mpf("2e-14") * (1 + a[0] ** 2))
    write("math_barnesG", lambda x: INF if x > 28.48 else mp.mpf(0) if x == int(x) and x < 1 else mp.barnesg(x), base=16,
          slack=lambda a, v: abs(v) * (mp.mpf("4e-14") * (1 + a[0] ** 2) + (abs(a[0]) ** 3 if abs(a[0]) < 1e-4 else 0)))
    write("math_hyperfactorial", lambda x: INF if x > 22.67524 else mp.hyperfac(x), base=16, slack=lambda a, v: abs(v) * mp.mpf("4e-14") * (1 + a[0] ** 2))


def integrals():
    write("math_expIntegral", lambda x: -INF if x == 0 else mp.ei(x), base=16,
          slack=lambda a, v: 4 * EPS if abs(a[0] - 0.37) < 0.1 else 0)
    ep = lambda p, x: NAN if x <= 0 and not (p == int(p) and p <= 1) else mp.ei(x) if p == 1 else mp.re(mp.expint(p, x))
    # Two bounds stand for whole orders where they are close or tiny: half their distance.
    near = lambda a, v: (mp.exp(-a[1]) / (a[0] + a[1]) / (a[0] + a[1] - 1) / 2 if a[0] > 1 and mp.exp(-a[1]) < 1e-90 else
                         0) + CLOSE * abs(v)
    write("math_expIntegralP", ep,
          base=16, slack=near)
    write("math_sineIntegral", mp.si, base=4,
          slack=lambda a, v: EPS * min(1, abs(a[0])))
    write("math_cosineIntegral", lambda x: NAN if x < 0 else -INF if x == 0 else mp.ci(x),
          base=8, slack=lambda a, v: 4 * EPS * min(1 / max(1, a[0]), abs(v) * 100 if a[0] < 6 else 1),
          exact=lambda a: a[0] > 1e4 or abs(mp.ci(a[0])) < 1e-4)
    write("math_sinhIntegral", lambda x: mp.sign(x) * INF if abs(x) > 739 else mp.shi(x), base=8)
    write("math_coshIntegral", lambda x: NAN if x < 0 else -INF if x == 0 else mp.chi(x), base=8, slack=lambda a, v: 4 * EPS)
    write("math_logIntegral", lambda x: NAN if x < 0 else -INF if x == 1 else mp.li(x),
          base=16,
          exact=lambda a: abs(a[0] - 1) < 1e-6, slack=lambda a, v: (8 * EPS if abs(a[0] - 1.45) < 0.1 else 0) + 2 * EPS * abs(v) * (1 + abs(mp.log(a[0])) if a[0] > 0 else 1))
    write("math_invSinhIntegral", inverse(mp.shi), base=16)
    write("math_invCoshIntegral", inverse(mp.chi), base=16)
    write("math_fresnelC", mp.fresnelc, base=8, conditioned=False,
          slack=lambda a, v: mp.mpf("4e-15") * min(1, abs(a[0])))
    write("math_fresnelS", mp.fresnels, base=8, conditioned=False,
          slack=lambda a, v: mp.mpf("4e-15") if abs(a[0]) > 2 else 0)
    goodwin = lambda x: INF if x == 0 else (mp.pi * mp.erfi(x) - mp.ei(x * x)) * mp.exp(-x * x) / 2
    write("math_goodwinStaton", goodwin, base=16, slack=lambda a, v: 16 * EPS)


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
    nan_below = lambda f: lambda n, x: NAN if n < 0 else f(n, x)
    # The recurrence rounds at each order, by an ulp of sizes up to its envelope: about 1/sqrt(n) on (-1, 1), and near 0
    # for odd orders no more than n |x|.
    noise = lambda a, v: 4 * (a[0] + 1) * EPS * max(min(1, a[0] * abs(a[1])) / mp.sqrt(a[0] + 1), abs(v)) if a[0] > 0 else 0
    write("math_polyLegendre", nan_below(legendre),
          base=16, conditioned=False, slack=noise)
    # The recurrence's errors are those of exp(x/2) size.
    write("math_polyLaguerre", nan_below(laguerre), base=16, conditioned=False,
          slack=lambda a, v: 8 * EPS * mp.sqrt(a[0] * abs(a[1])) * max(abs(v), mp.mpf("0.01")) if a[0] > 100000 else 16 * (a[0] + 1) * EPS * max(min(mp.exp(max(a[1], 0) / 2), laguerre(a[0], -abs(a[1]))), abs(v)) if a[0] > 0 else 0)
    # Inside the zeros the envelope is exp(x^2/2) sqrt(2^n n!), and near 0 for odd orders x times that.
    size = lambda n, x: max(abs(hermite(n, x)), min(mp.exp(x * x / 2) * mp.sqrt(mp.mpf(2) ** n * mp.factorial(n)) *
                                                    min(1, 2 * n * abs(x)), abs(hermite(n, mp.mpc(0, x))))) * (n + 1)
    write("math_polyHermite", nan_below(hermite),
          base=16, conditioned=False, slack=lambda a, v: 0 if a[0] > 100000 else 2 * EPS * size(*a))
    write("math_polyByBernoulli", nan_below(lambda n, x: mp.bernpoly(int(n), x)), base=16, conditioned=False,
          slack=lambda a, v: 16 * EPS * mp.fsum(mp.binomial(int(a[0]), k) * abs(mp.bernoulli(k) * mp.mpf(a[1]) ** (int(a[0]) - k))
                                                for k in range(int(a[0]) + 1)) if a[0] >= 0 else 0)


def glasser_table():
    write("calcGlasser", glasser, base=8,
          conditioned=False, slack=lambda a, v: mp.mpf("1e-14") * (1 + a[0]))


GROUPS = (hypergeometric, zeta, polylogarithm, clausen, barnes, integrals, polynomials,
          glasser_table)
if __name__ == "__main__":
    for group in GROUPS:
        group()
