#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/special/<function>.csv for the elementary, gamma, beta and error functions.

usage: special.py [FUNCTION...]     (all when none is named; needs mpmath)

Rows and tolerances are those of rows.py.
"""
import mpmath as mp

from rows import EPS, INF, NAN, inverse, real, write

mp.mp.dps = 50
EPSILON_STOP = 2.220446049250313e-16
GUARD = mp.mpf(10) ** 22


def guarded(f):
    def g(x):
        if abs(x) < GUARD:
            return f(x)
        m, e = mp.frexp(x)
        with mp.workdps(400):
            residue = mp.mpf(float(mp.fmod(mp.mpf(2) ** e, 2 * mp.pi)))
        return f(mp.mpf(float(m * residue)))
    return g


# Elementary functions ------------------------------------------------------------------------------------------------
ANGLES = (real("ordinary", 0.5, -1.25, 2.0, 3.0, -10.75) + real("tiny", 1e-300, 1e-10) +
          real("huge", 1e5, 1e15, -3.7e21, 9.999999999999999e21) +
          real("guarded", 1e22, -1e22, 5e22, 1.7e150, 8.9e307) + real("root", 3.141592653589793, 1.5707963267948966))
LINE = real("ordinary", 0.3, -0.7, 1.5, 2.5, -4.0) + real("tiny", 1e-12, -1e-200) + real("tail", 30.0, -300.0)
OUTER = real("ordinary", 1.5, -2.0, 7.0) + real("huge", 1e10, -1e200) + real("edge", 1.0 + 2 ** -40, -1.0)

ELEMENTARY = {
    "math_sin": (guarded(mp.sin), ANGLES), "math_cos": (guarded(mp.cos), ANGLES), "math_tan": (guarded(mp.tan), ANGLES),
    "math_csc": (guarded(mp.csc), ANGLES[:-2]), "math_sec": (guarded(mp.sec), ANGLES[:-2]),
    "math_cot": (guarded(mp.cot), ANGLES[:-2]),
    "math_acsc": (lambda x: mp.asin(1 / x) if abs(x) >= 1 else NAN, OUTER + real("outside", 0.5)),
    "math_asec": (lambda x: mp.acos(1 / x) if abs(x) >= 1 else NAN, OUTER + real("outside", -0.5)),
    "math_acot": (lambda x: mp.atan(1 / x), OUTER + real("inner", 0.5, -1e-9)),
    "math_csch": (mp.csch, LINE), "math_sech": (mp.sech, LINE), "math_coth": (mp.coth, LINE),
    "math_acsch": (lambda x: mp.asinh(1 / x), LINE[:-3] + OUTER),
    "math_asech": (lambda x: mp.acosh(1 / x) if 0 < x <= 1 else NAN,
                   real("ordinary", 0.3, 0.9) + real("tiny", 1e-200) + real("outside", 1.5, -0.5)),
    "math_asinh": (mp.asinh, LINE + real("huge", 1e300)),
    "math_acosh": (lambda x: mp.acosh(x) if x >= 1 else NAN,
                   real("ordinary", 1.5, 20.0) + real("huge", 1e300) + real("outside", 0.5)),
    "math_atanh": (lambda x: NAN if abs(x) > 1 else INF if x == 1 else mp.atanh(x),
                   real("ordinary", 0.3, -0.9) + real("tiny", 1e-200) + real("pole", 1.0) + real("outside", 1.5)),
    # Each of x+1, x-1 and the quotient rounds before the logarithm: an absolute error of one eps.
    "math_acoth": (lambda x: NAN if abs(x) < 1 else INF if x == 1 else mp.acoth(x),
                   real("ordinary", 1.5, -2.0, 100.0) + real("pole", 1.0) + real("outside", 0.5)),
    "math_log10": (lambda x: NAN if x < 0 else -INF if x == 0 else mp.log10(x),
                   real("ordinary", 0.2, 3.0, 1000.0) + real("tiny", 5e-324) + real("edge", 0.0, -1.0)),
    "math_log2": (lambda x: NAN if x < 0 else -INF if x == 0 else mp.log(x, 2),
                  real("ordinary", 0.2, 3.0, 1024.0) + real("tiny", 5e-324) + real("edge", 0.0, -1.0)),
    "math_logSign": (lambda x: mp.sign(x) * mp.log1p(abs(x)), LINE + real("huge", 1e300, -1e300) + real("zero", 0.0)),
    "math_expSign": (lambda x: mp.sign(x) * mp.expm1(abs(x)), LINE + real("tail", 709.0) + real("zero", 0.0)),
    "math_sign": (mp.sign, real("all", -1e-300, 0.0, 5.0)),
    "math_stepFun": (lambda x: mp.mpf(-1 if x < 0 else 1), real("all", -1e-300, 0.0, 5.0)),
    "math_invLambertW": (lambda x: x * mp.exp(x), LINE[:-1] + real("tail", -700.0)),
}


def elementary():
    for name, (f, cases) in ELEMENTARY.items():
        slack = (lambda a, v: EPS) if name == "math_acoth" else None
        # The run-time reduces angles without loss; near 1 the inverses take 1/x as rounded.
        exact = {"math_asec": lambda a: a[0] == -1, "math_acsc": lambda a: a[0] == -1}.get(name)
        write(name, f, cases, slack=slack, exact=exact, base=4 if cases[:len(ANGLES) - 2] == ANGLES[:-2] else 2,
              conditioned=name not in ("math_sign", "math_stepFun") and cases[:len(ANGLES) - 2] != ANGLES[:-2])
    write("math_pow", mp.power, [("ordinary", 2.5, 3.25), ("ordinary", 0.1, -7.5), ("whole", -3.0, 5.0),
                                 ("huge", 1.000001, 4e8), ("tiny", 0.5, 1040.0)],
          exact=lambda a: a[1] > 1e6)
    write("math_ConSelect", lambda c, a, b: a if c < 0 else b, [("below", -1e-300, 3.5, 7.25), ("zero", 0.0, 3.5, 7.25),
                                                                 ("above", 2.0, 3.5, 7.25)], conditioned=False)
    # 1 - 3x + 2x^3 - 0.5x^4: each term rounds on its own.
    poly = lambda x: 1 - 3 * x + 2 * x ** 3 - x ** 4 / 2
    write("math_polyValue", poly, real("ordinary", 0.5, -1.5, 3.0) + real("root", 0.3743) + real("tiny", 1e-20),
          slack=lambda a, v: EPS * (1 + 3 * abs(a[0]) + 2 * abs(a[0]) ** 3 + a[0] ** 4))

    def pulse(x):  # amplitude 3, centre 1, widths 2 and 0.5
        w = mp.mpf(2) if x < 1 else mp.mpf(0.5)
        return mp.mpf(0) if x < -1 or x > 1.5 else 3 * (1 + mp.cos(mp.pi * (x - 1) / w)) / 2
    write("math_calcUnsymSin", pulse, real("left", -0.5, 0.0, 0.9) + real("right", 1.0, 1.1, 1.4) +
          real("outside", -1.001, 1.501), slack=lambda a, v: 12 * EPS)


# Gamma family --------------------------------------------------------------------------------------------------------
def gamma_family():
    write("math_gamma", lambda x: INF if x == 0 else -INF if x < 0 and x == int(x) else INF if x > 171.7 else mp.gamma(x),
          real("ordinary", 0.5, 1.5, 4.0, 10.3, 30.5) + real("tiny", 1e-300, -1e-10) + real("huge", 171.5, 172.0, 140.25) +
          real("negative", -0.5, -1.5, -5.7, -100.3, -170.5) + real("near_pole", -1.0000000001, -2.9999999) +
          real("pole", 0.0, -1.0, -2.0, -3.0, -50.0), base=4,
          exact=lambda a: abs(a[0] - mp.nint(a[0])) < 1e-6)
    write("math_lngamma", lambda x: INF if x <= 0 and x == int(x) else mp.re(mp.loggamma(x)),
          real("ordinary", 0.5, 3.7, 25.0) + real("near_root", 1.00001, 1.99999, 0.9) + real("huge", 1e10, 1e300) +
          real("tiny", 1e-300) + real("negative", -0.5, -3.3, -100.7) + real("pole", 0.0, -4.0), base=4)
    digamma = lambda x: mp.psi(0, x)
    write("math_digamma", lambda x: -INF if x == 0 or x == int(x) < 0 else digamma(x),
          real("ordinary", 0.1, 0.5, 2.5, 7.3, 33.9) + real("switch", 35.999999, 36.0, 34.0, 33.999) +
          real("near_root", 1.4616, 1.46163214496, 1.47) + real("huge", 1e5, 1e300) + real("small", 1e-10, 2e-15) +
          real("negative", -0.3, -0.504083, -5.5, -100.25, -1000.9) + real("near_pole", -0.999999, -7.0000001) +
          real("pole", 0.0, -3.0), base=4, slack=lambda a, v: 8 * EPS,
          exact=lambda a: a[0] < 0 and abs(a[0] - mp.nint(a[0])) < 1e-5 or abs(digamma(a[0])) < 1e-6)

    def polygamma(n, x):
        return mp.psi(int(n), x)

    # From order 6 on the direct sum stops at a block of ten terms below 1e-15; with t the first argument left out, the
    # tail is at most n! t^-n (1/n + 1/t). Below, Euler and Maclaurin's sum stops at a term of 1e-15.
    def tail(args, value):
        n, x = int(args[0]), args[1]
        if n < 6:
            return mp.mpf("1e-15") * mp.factorial(n)
        t = x
        while True:
            block = mp.fsum((t + i) ** -(n + 1) for i in range(10))
            t += 10
            if block < 1e-15 and t > 11:
                return mp.factorial(n) * t ** -n * (mp.mpf(1) / n + 1 / t)
    write("math_polyGamma", polygamma,
          [("order_%d" % n, n, x) for n in (1, 2, 3, 5) for x in (0.25, 0.5, 1.0, 3.7, 12.5, -0.3, -2.6)] +
          [("high_%d" % n, n, x) for n in (6, 7, 10, 40) for x in (0.3, 1.0, 2.5, 8.0, -1.4)], base=8, slack=tail)
    def beta(a, b):  # the three gammas are doubles
        gammas = [mp.gamma(t) if t < 171.62 else INF for t in (b, a, a + b)]
        top = gammas[0] * gammas[1] if gammas[0] * gammas[1] < mp.mpf(2) ** 1024 else INF
        return NAN if top == gammas[2] == INF else mp.mpf(0) if gammas[2] == INF else top / gammas[2]
    write("math_beta", beta, [("ordinary", a, b) for a, b in ((0.5, 0.5), (2.5, 3.75), (10, 0.1), (30, 40))] +
          [("tiny", 1e-5, 3.0), ("negative", -0.5, 2.25), ("negative", -1.5, -0.25)] +
          [("overflow", 100.0, 100.0), ("overflow", 500.0, 300.5), ("overflow", 2.5, 1e4), ("overflow", 171.5, 1.0),
           ("overflow", 1e-308, 2.5), ("below_overflow", 85.25, 86.0)], base=6)
    pairs = [(a, x) for a in (0.1, 0.5, 1.5, 3.25, 12.75, 60.5) for x in (0.001, 0.7, 2.0, 9.5, 10.5, 30.0)]
    plus = pairs + [(0.5, 1e-10), (1e-5, 0.4), (1e-5, 3.0), (120.3, 100.0), (120.3, 130.0), (150.5, 151.0)]
    whole = [(n, x) for n in (1, 2, 5, 20, 100) for x in (1e-3, 0.5, 4.0, 25.0, 110.0)]
    below = [(-0.5, 0.3), (-0.5, 4.0), (-3.3, 0.6), (-3.3, 8.0), (-3.3, 14.0), (-12.7, 1.5)]
    upper = lambda a, x: mp.gammainc(a, x) if x > 0 else mp.gamma(a) - lower(a, x)
    lower = lambda a, x: (x ** a / a * mp.exp(-x) * mp.hyp1f1(1, a + 1, x, maxterms=10 ** 6) if x < 200 + abs(a) else
                          mp.gamma(a) - mp.gammainc(a, x))

    def saturated(a, x):
        return a > 0 and any(a < p and x > q for p, q in ((2, 40), (4, 47), (6, 50), (8, 56), (10, 61), (15, 72)))
    def whole_lower(n, x):  # gamma(n) P(m, x): the sum of x^k/k! ends behind the first term of at most eps
        total, term, k = mp.mpf(1), mp.mpf(1), 1
        with mp.workdps(200):
            while k < n and abs(term) > EPSILON_STOP:
                term *= x / k
                total += term
                k += 1
            return mp.gamma(n) * (1 - total * mp.exp(-x))
    rows = [("broken", a, x) for a, x in plus if not saturated(a, x)] + [("negative", a, x) for a, x in below]
    rows += [("switch", 1.5, x) for x in (9.999, 10.0, 10.001, 39.0)] + [("outside", 0.5, -1.0)]
    nonneg = lambda f: (lambda a, x: NAN if x < 0 and a != int(a) else f(a, x))
    wholerows = [("whole", n, x) for n, x in whole] + [("whole_negative_x", 4, -2.5), ("whole_negative_x", 7, -0.3)]
    # Near a zero of the partial sum the arguments count as they are.
    root = lambda a: a[0] == int(a[0]) > 0 > a[1] and abs(sum(a[1] ** k / mp.factorial(k) for k in range(int(a[0])))) < mp.exp(a[1]) / 2
    left_sum = lambda n, x: mp.gamma(n) * mp.exp(-x) * mp.fsum(x ** k / mp.factorial(k) for k in range(int(n)))
    write("math_igamma", nonneg(lambda a, x: left_sum(a, x) if a == int(a) > 0 > x else upper(a, x)),
          rows + wholerows + [("whole_below", -2, 0.4), ("whole_below", -2, 6.0)] +
          [("whole_root", n, x) for n, x in ((2, -1.0), (2, -1.0000001), (4, -1.5960716379833215), (4, -1.5), (20, -6.177534078285881), (60, -17.42069))],
          base=8, exact=root, slack=lambda a, v: 60 * EPS * abs(v) if root(a) else 0)
    wholerows += [("whole_early", 40, x) for x in (-0.5, 0.25, 3.0)] + [("whole_left", 6, -30.0), ("whole_left", 90, -30.0)]
    write("math_incompleteGamma", nonneg(lambda a, x: whole_lower(a, x) if a == int(a) else lower(a, x)),
          rows + wholerows + [("large", 200.5, 3.0), ("near_pole", -3.3, 9.99)], base=8)
    p = lambda a, x: lower(a, x) / mp.gamma(a)
    q = lambda a, x: upper(a, x) / mp.gamma(a)
    far = [("tail", 1.5, 1000.0), ("tail", 0.5, 500.0), ("tail", 300.5, 800.0), ("large", 2000.5, 2010.0)]
    wide = [("whole_wide", n, x) for n, x in ((300, 310.0), (1000, 900.0), (40, 800.0), (70, -20.0))]
    pq = lambda f, g: nonneg(lambda a, x: g(a, x) if a == int(a) else f(a, x))
    write("math_RLowerIncompleteGamma", pq(p, q), rows + far + wholerows + wide, base=8)
    write("math_RUpperIncompleteGamma", pq(q, p), rows + far + wholerows + wide, base=8)
    inv = lambda a, v: solve(lambda t: q(a, t) - v, mp.mpf("1e-12"), a + 80)
    density = lambda a, t: t ** (a - 1) * mp.exp(-t) / mp.gamma(a)
    write("math_InverseRUpperIncompleteGamma", inv,
          [("ordinary", a, v) for a in (0.5, 1.5, 3.25, 20.5) for v in (0.05, 0.4, 0.99)] + [("tail", 2.5, 1e-9)],
          base=4, slack=lambda a, t: (mp.mpf("2e-15")) / density(a[0], t) + mp.mpf("2e-15"))
    def beta_series(x, a, b):  # F(a, 1-b; a+1; x) up to its first term of at most 1e-17
        with mp.workdps(400):
            total, factor, k = mp.mpf(1), mp.mpf(1), 0
            while True:
                factor *= (k + 1 - b) * x / (k + 1)
                k += 1
                total += a / (a + k) * factor
                if abs(a / (a + k) * factor) <= 1e-17:
                    return x ** a / a * total

    def ib(x, a, b):
        if x < 0 or x > 1:
            return NAN
        if x < 0.500000000000001:
            return beta_series(x, a, b) if b > 0 else mp.betainc(a, b, 0, x)
        if b < 0:
            return mp.betainc(a, b, 0, x)
        with mp.workdps(400):
            full = beta(a, b)
            return full - beta_series(1 - x, b, a) if x < 1 else full
    write("math_ibeta", ib,
          [("ordinary", x, a, b) for x in (0.01, 0.3, 0.6, 0.95) for a, b in ((0.5, 0.5), (2.0, 3.5), (7.25, 0.8), (30, 40.5))] +
          [("switch", x, 2.5, 1.5) for x in (0.4999999, 0.5, 0.5000000000000011)] +
          [("far", 0.4, 2.0, 500.0), ("far", 0.6, 100.0, 1.0), ("far", 0.7, 200.0, 200.0), ("far", 0.001, 3.5, 900.25)] +
          [("stop", x, a, b) for x, a, b in ((0.4, 10.0, 100.0), (0.49, 40.5, 40.5), (0.45, 8.0, 60.3), (0.3, 200.0, 200.0),
                                             (0.5, 50.0, 1.0), (0.55, 80.0, 3.5), (0.6, 60.25, 60.0))] +
          [("negative_b", x, a, b) for x, a, b in ((0.3, 2.5, -0.7), (0.3, 0.75, -180.4), (0.6677265993971617, 47.53058490268364, -0.606324786454507),
                                                   (0.55, 12.5, -3.3), (0.9, 60.25, -7.7), (0.75, 2.5, -0.4), (0.7, 30.0, -40.5), (0.8, 300.5, -2.25))] +
          [("negative_a", 0.3, -0.4, 1.3), ("edge", 1.0, 2.5, 3.5), ("tiny", 1e-60, 0.5, 2.0)] +
          [("outside", -0.1, 1.0, 1.0), ("outside", 1.1, 1.0, 1.0)], base=8)
    rib = lambda x, a, b: mp.betainc(a, b, 0, x, regularized=True)
    invb = lambda y, a, b: solve(lambda t: rib(t, a, b) - y, mp.mpf("1e-12"), 1 - mp.mpf("1e-12"))
    write("math_InverseBeta", invb, [("ordinary", y, a, b) for y in (0.05, 0.5, 0.9) for a, b in
                                     ((0.5, 0.5), (2.0, 3.5), (7.25, 0.8), (4.0, 6.0))], base=4,
          slack=lambda a, t: mp.mpf("2e-15") / (t ** (a[1] - 1) * (1 - t) ** (a[2] - 1)) + mp.mpf("2e-15"))
    # The searches end at 1e-15 in log(gamma) or, by bisection, in x.
    f, cases = inverse(mp.gamma, [("axis", x) for x in (1.4, 0.9, 0.5, 0.05, 1e-3, 1e-6)] +
                       [("six", x) for x in (-5.7, -5.9)] + [("ten", -9.8), ("reflected", -0.7), ("reflected", -0.9),
                                                             ("five", -4.8)])
    write("math_invGamma", f, cases, base=4,
          slack=lambda a, x: mp.mpf("2e-15") * (1 + 1 / abs(mp.psi(0, x)) * (1 + 1 / abs(a[0]))))


def solve(f, low, high):
    """Bisection to a coarse root, then the secant."""
    rising = f(high) > 0
    for _ in range(40):
        middle = (low + high) / 2
        if (f(middle) > 0) == rising:
            high = middle
        else:
            low = middle
    return mp.findroot(f, (low, high), maxsteps=40, verify=False)


# Error functions -----------------------------------------------------------------------------------------------------
def w(z):
    return mp.exp(-z * z) * mp.erfc(-1j * z)


def dawson(x):
    return mp.sqrt(mp.pi) / 2 * mp.exp(-x * x) * mp.erfi(x)


def error_functions():
    line = real("ordinary", 0.2, -0.6, 1.1, 2.7, -4.3) + real("tiny", 1e-300, 1e-10)
    write("math_erf", mp.erf, line + real("tail", 6.0, -30.0))
    write("math_erfc", mp.erfc, line + real("tail", 6.0, 26.0, -30.0))
    switches = [s for b in (0.005, 0.006, 0.1, 0.5, 1, 2, 3, 4, 5, 6, 7, 8, 9, 16, 30, 40, 100, 400, 4800, 1e8)
                for s in (b * (1 - 1e-6), b * 1.000001)]
    write("math_drawson", dawson, line + real("switch", *switches) + real("huge", 1e12, 1e300), base=4,
          exact=lambda a: a[0] > 1e100)
    write("math_erfi", lambda x: INF if x > 27 else mp.erfi(x), line + real("switch", 0.00499, 0.00501, 5.99, 6.01) +
          real("tail", 20.0, 25.9, 26.2, -26.5, 28.0), base=4)
    log_erfi = lambda x: NAN if x < 1e-16 else mp.log(mp.erfi(x)) if x < 1e4 else x * x + mp.log(1 / x / mp.sqrt(mp.pi))
    write("math_lnErfi", log_erfi, real("ordinary", 0.1, 0.5, 2.0, 7.0) + real("near_root", 0.73, 0.7316971534684924) +
          real("tail", 100.0, 3000.0) + real("tiny", 2e-16) + real("outside", 0.0, -1.0), base=4,
          slack=lambda a, v: 2 * EPS)
    f, cases = inverse(mp.erf, real("series", *[b - d for b in (0.1, 0.18, 0.27, 0.36, 0.46, 0.58, 0.7, 0.86, 1.04)
                                                for d in (0, 0.01)]) + real("newton", 1.05, 1.5, 2.5, -3.0, 3.5) +
                       real("tiny", 1e-200, -1e-9))
    # |erf(x) - y| <= eps ends the search; the series leaves what follows its last term, a_k < 0.3/k.
    def left(a, x):
        y = abs(a[0])
        if y >= 0.86:
            return 2 * EPS * mp.exp(x * x) * mp.sqrt(mp.pi) / 2
        k = next((n for b, n in ((0.12, 7), (0.19, 9), (0.29, 12), (0.39, 16), (0.49, 21), (0.59, 28), (0.68, 38), (0.78, 59))
                  if y < b), 95)
        return mp.mpf(0.3) / k * y ** (2 * k + 1) / (1 - y * y)
    write("math_invErf", f, cases, base=4, slack=left)
    write("math_invErfc", lambda y: mp.erfinv(1 - y), real("ordinary", 0.1, 0.5, 1.0 + 2 ** -20, 1.3, 1.9) + real("tail", 1e-5, 1.99999),
          base=4, slack=lambda a, x: 2 * EPS * mp.exp(x * x) * abs(1 - a[0]) + left((1 - a[0],), x), exact=lambda a: abs(1 - a[0]) < 1e-5)
    f, cases = inverse(lambda x: mp.log(mp.erfi(x)), real("ordinary", 0.05, 0.3, 0.7, 0.75, 1.0, 1.9, 2.5, 9.0) + real("tail", 30.0, 200.0))
    write("math_invLnErfi", f, cases, base=4, slack=lambda a, x: 2 * EPS * (1 + x))
    f, cases = inverse(mp.erfi, real("ordinary", 0.05, 0.3, -0.7, 1.9, -2.5, 9.0, 25.0) + real("tiny", 1e-9, -1e-100))
    write("math_invErfi", f, cases, base=4, slack=lambda a, x: 2 * EPS * (1 + abs(x)) if abs(a[0]) >= 1e-8 else 0)
    # erf of a complex argument; the second row of each pair is the imaginary part (third argument 1).
    points = [(0.3, 0.4), (-0.5, 0.2), (1.2, 0.7), (-1.5, 2.0), (3.0, -1.0), (1.1, -3.0), (0.0, 1.5), (0.9, 0.0), (5.0, 5.0)]

    def part(f):
        return lambda x, y, which: mp.im(f(mp.mpc(x, y))) if which else mp.re(f(mp.mpc(x, y)))

    def complex_error(size):  # a few ulps of the larger part; the fraction's 100 levels leave exp(-40 |Re z|)
        return lambda a, v: size(a)
    erfsize = lambda a: (24 * EPS * (1 + 2 * abs(mp.mpc(a[0], a[1])) ** 2) * abs(mp.erfc(abs(a[0]) + 1j * a[1])) + 4 * EPS
                         + 4 * mp.exp(-40 * abs(a[0])) * (abs(mp.mpc(a[0], a[1])) > 1) * (a[0] != 0))
    write("math_erfz", part(mp.erf), [("re" if k == 0 else "im", x, y, k) for x, y in points for k in (0, 1)
                                      if part(mp.erf)(mp.mpf(x), mp.mpf(y), k) != 0],
          conditioned=False, slack=lambda a, v: erfsize(a))
    grid = [(x, y) for x in (0.25, 1.0, -2.5, 6.0) for y in (0.9, 1.5, 4.0, 8.0)] + [(0.5, 0.5), (0.3, 0.1)]
    wsize = lambda a, f: 40 * EPS * (1 + a[0] ** 2 + a[1] ** 2) * f + 4 * mp.exp(-40 * abs(a[1])) * (abs(mp.mpc(a[0], a[1])) > 1)
    z = lambda x, y: mp.mpc(x, y)
    dw = lambda x, y: -2 * z(x, y) * w(z(x, y)) + 2j / mp.sqrt(mp.pi)
    axis = [("axis", 0.0, y) for y in (0.5, 5.9, 6.5, 7.5, 8.5, 9.5, 12.0, 18.0, 40.0, 300.0, 1e4)]
    write("math_voigtFunK", lambda x, y: mp.re(w(z(x, y))), [("ordinary", *p) for p in grid] + axis +
          [("real", 1.5, 0.0), ("real", -3.0, 0.0)], base=4,
          slack=lambda a, v: wsize(a, abs(v)) if a[0] * a[1] != 0 else 2 * EPS * a[1] ** 2 * v * (a[1] < 6))
    write("math_voigtFunL", lambda x, y: mp.im(w(z(x, y))), [("ordinary", *p) for p in grid], base=4,
          slack=lambda a, v: wsize(a, abs(w(z(*a)))))
    # w' = -2 z w + 2i/sqrt(pi) cancels by a factor of 2 |z|^2.
    derivative_size = lambda a, v: (2 + 2 * abs(z(*a))) * wsize(a, abs(w(z(*a)))) / 100 + 4 * EPS
    for name, g in (("KX", mp.re), ("LX", mp.im), ("LY", mp.re), ("KY", lambda v: -mp.im(v))):
        write("math_voigtDiff" + name, lambda x, y, g=g: g(dw(x, y)), [("ordinary", *p) for p in grid], base=4,
              slack=derivative_size)


def lambert():
    lw = lambda x: mp.re(mp.lambertw(x)) if x > -mp.exp(-1) else NAN
    # |w exp(w) - x| <= 1e-15 ends the iteration; the series leaves its next term, 65 x^7.
    write("math_lambertW", lw, real("ordinary", 0.01, 0.5, 1.0, 2.718281828459045, 50.0, 1e4, -0.2, -0.35) +
          real("near_branch", -0.3678, -0.36787) + real("switch", 0.000999, 0.001001, -0.000999, -0.001001) +
          real("tiny", 1e-20, -1e-200) + real("outside", -0.37, -1.0), base=4,
          slack=lambda a, v: mp.mpf("1e-15") / (mp.exp(v) * (1 + v)) + 0 if abs(a[0]) >= 0.001 else 80 * a[0] ** 7)
    omega = lambda x: mp.re(mp.lambertw(mp.exp(x)))
    write("math_wrightOmega", omega, real("ordinary", -5.0, -0.5, 0.5, 1.0, 1.5, 3.0, 40.0) + real("huge", 1e3, 1e8, 1e15) +
          real("left", -20.0, -30.0), base=4,
          slack=lambda a, v: mp.mpf("2e-15") * min(1, 10 * abs(v)))


GROUPS = (elementary, gamma_family, error_functions, lambert)
if __name__ == "__main__":
    for group in GROUPS:
        group()
