#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/special/<function>.csv for the elementary, gamma, beta and error functions.

usage: special.py [FUNCTION...]     (all when none is named; needs mpmath)

Rows and tolerances are those of rows.py.
"""
import mpmath as mp

from rows import EPS, INF, NAN, inverse, write

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
ELEMENTARY = {
    "math_sin": guarded(mp.sin), "math_cos": guarded(mp.cos), "math_tan": guarded(mp.tan),
    "math_csc": guarded(mp.csc), "math_sec": guarded(mp.sec),
    "math_cot": guarded(mp.cot),
    "math_acsc": lambda x: mp.asin(1 / x) if abs(x) >= 1 else NAN,
    "math_asec": lambda x: mp.acos(1 / x) if abs(x) >= 1 else NAN,
    "math_acot": lambda x: mp.atan(1 / x),
    "math_csch": mp.csch, "math_sech": mp.sech, "math_coth": mp.coth,
    "math_acsch": lambda x: mp.asinh(1 / x),
    "math_asech": lambda x: mp.acosh(1 / x) if 0 < x <= 1 else NAN,
    "math_asinh": mp.asinh,
    "math_acosh": lambda x: mp.acosh(x) if x >= 1 else NAN,
    "math_atanh": lambda x: NAN if abs(x) > 1 else INF if x == 1 else mp.atanh(x),
    # Each of x+1, x-1 and the quotient rounds before the logarithm: an absolute error of one eps.
    "math_acoth": lambda x: NAN if abs(x) < 1 else INF if x == 1 else mp.acoth(x),
    "math_log10": lambda x: NAN if x < 0 else -INF if x == 0 else mp.log10(x),
    "math_log2": lambda x: NAN if x < 0 else -INF if x == 0 else mp.log(x, 2),
    "math_logSign": lambda x: mp.sign(x) * mp.log1p(abs(x)),
    "math_expSign": lambda x: mp.sign(x) * mp.expm1(abs(x)),
    "math_sign": mp.sign,
    "math_stepFun": lambda x: mp.mpf(-1 if x < 0 else 1),
    "math_invLambertW": lambda x: x * mp.exp(x),
}


def elementary():
    for name, f in ELEMENTARY.items():
        # The standard library reduces angles without loss; near 1 the inverses take 1/x as rounded.
        angle = name in ("math_sin", "math_cos", "math_tan", "math_csc", "math_sec", "math_cot")
        write(name, f, base=4 if angle else 2, conditioned=not angle and name not in ("math_sign", "math_stepFun"),
              slack=(lambda a, v: EPS) if name == "math_acoth" else None,
              exact=(lambda a: a[0] == -1) if name in ("math_asec", "math_acsc") else None)
    write("math_pow", mp.power,
          exact=lambda a: a[1] > 1e6)
    write("math_ConSelect", lambda c, a, b: a if c < 0 else b, conditioned=False)
    # 1 - 3x + 2x^3 - 0.5x^4: each term rounds on its own.
    poly = lambda x: 1 - 3 * x + 2 * x ** 3 - x ** 4 / 2
    write("math_polyValue", poly,
          slack=lambda a, v: EPS * (1 + 3 * abs(a[0]) + 2 * abs(a[0]) ** 3 + a[0] ** 4))

    def pulse(x):  # amplitude 3, centre 1, widths 2 and 0.5
        w = mp.mpf(2) if x < 1 else mp.mpf(0.5)
        return mp.mpf(0) if x < -1 or x > 1.5 else 3 * (1 + mp.cos(mp.pi * (x - 1) / w)) / 2
    write("math_calcUnsymSin", pulse, slack=lambda a, v: 12 * EPS)


# Gamma family --------------------------------------------------------------------------------------------------------
def gamma_family():
    write("math_gamma", lambda x: INF if x == 0 else -INF if x < 0 and x == int(x) else INF if x > 171.7 else mp.gamma(x), base=4,
          exact=lambda a: abs(a[0] - mp.nint(a[0])) < 1e-6)
    write("math_lngamma", lambda x: INF if x <= 0 and x == int(x) else mp.re(mp.loggamma(x)), base=4)
    digamma = lambda x: mp.psi(0, x)
    write("math_digamma", lambda x: -INF if x == 0 or x == int(x) < 0 else digamma(x), base=4, slack=lambda a, v: 8 * EPS,
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
    write("math_polyGamma", polygamma, base=8, slack=tail)
    def beta(a, b):  # the three gammas are doubles
        gammas = [mp.gamma(t) if t < 171.62 else INF for t in (b, a, a + b)]
        top = gammas[0] * gammas[1] if gammas[0] * gammas[1] < mp.mpf(2) ** 1024 else INF
        return NAN if top == gammas[2] == INF else mp.mpf(0) if gammas[2] == INF else top / gammas[2]
    write("math_beta", beta, base=6)
    upper = lambda a, x: mp.gammainc(a, x) if x > 0 else mp.gamma(a) - lower(a, x)
    lower = lambda a, x: (x ** a / a * mp.exp(-x) * mp.hyp1f1(1, a + 1, x, maxterms=10 ** 6) if x < 200 + abs(a) else
                          mp.gamma(a) - mp.gammainc(a, x))

    def whole_lower(n, x):  # gamma(n) P(m, x): the sum of x^k/k! ends behind the first term of at most eps
        total, term, k = mp.mpf(1), mp.mpf(1), 1
        with mp.workdps(200):
            while k < n and abs(term) > EPSILON_STOP:
                term *= x / k
                total += term
                k += 1
            return mp.gamma(n) * (1 - total * mp.exp(-x))
    nonneg = lambda f: (lambda a, x: NAN if x < 0 and a != int(a) else f(a, x))
    # Near a zero of the partial sum the arguments count as they are.
    root = lambda a: a[0] == int(a[0]) > 0 > a[1] and abs(sum(a[1] ** k / mp.factorial(k) for k in range(int(a[0])))) < mp.exp(a[1]) / 2
    left_sum = lambda n, x: mp.gamma(n) * mp.exp(-x) * mp.fsum(x ** k / mp.factorial(k) for k in range(int(n)))
    write("math_igamma", nonneg(lambda a, x: left_sum(a, x) if a == int(a) > 0 > x else upper(a, x)),
          base=8, exact=root, slack=lambda a, v: 60 * EPS * abs(v) if root(a) else 0)
    write("math_incompleteGamma", nonneg(lambda a, x: whole_lower(a, x) if a == int(a) else lower(a, x)), base=8)
    p = lambda a, x: lower(a, x) / mp.gamma(a)
    q = lambda a, x: upper(a, x) / mp.gamma(a)
    pq = lambda f, g: nonneg(lambda a, x: g(a, x) if a == int(a) else f(a, x))
    write("math_RLowerIncompleteGamma", pq(p, q), base=8)
    write("math_RUpperIncompleteGamma", pq(q, p), base=8)
    inv = lambda a, v: solve(lambda t: q(a, t) - v, mp.mpf("1e-12"), a + 80)
    density = lambda a, t: t ** (a - 1) * mp.exp(-t) / mp.gamma(a)
    write("math_InverseRUpperIncompleteGamma", inv,
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
    write("math_ibeta", ib, base=8)
    rib = lambda x, a, b: mp.betainc(a, b, 0, x, regularized=True)
    invb = lambda y, a, b: solve(lambda t: rib(t, a, b) - y, mp.mpf("1e-12"), 1 - mp.mpf("1e-12"))
    write("math_InverseBeta", invb, base=4,
          slack=lambda a, t: mp.mpf("2e-15") / (t ** (a[1] - 1) * (1 - t) ** (a[2] - 1)) + mp.mpf("2e-15"))
    # The searches end at 1e-15 in log(gamma) or, by bisection, in x.
    write("math_invGamma", inverse(mp.gamma), base=4,
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
    write("math_erf", mp.erf)
    write("math_erfc", mp.erfc)
    write("math_drawson", dawson, base=4,
          exact=lambda a: a[0] > 1e100)
    write("math_erfi", lambda x: INF if x > 27 else mp.erfi(x), base=4)
    log_erfi = lambda x: NAN if x < 1e-16 else mp.log(mp.erfi(x)) if x < 1e4 else x * x + mp.log(1 / x / mp.sqrt(mp.pi))
    write("math_lnErfi", log_erfi, base=4,
          slack=lambda a, v: 2 * EPS)
    # |erf(x) - y| <= eps ends the search; the series leaves what follows its last term, a_k < 0.3/k.
    def left(a, x):
        y = abs(a[0])
        if y >= 0.86:
            return 2 * EPS * mp.exp(x * x) * mp.sqrt(mp.pi) / 2
        k = next((n for b, n in ((0.12, 7), (0.19, 9), (0.29, 12), (0.39, 16), (0.49, 21), (0.59, 28), (0.68, 38), (0.78, 59))
                  if y < b), 95)
        return mp.mpf(0.3) / k * y ** (2 * k + 1) / (1 - y * y)
    write("math_invErf", inverse(mp.erf), base=4, slack=left)
    write("math_invErfc", lambda y: mp.erfinv(1 - y),
          base=4, slack=lambda a, x: 2 * EPS * mp.exp(x * x) * abs(1 - a[0]) + left((1 - a[0],), x), exact=lambda a: abs(1 - a[0]) < 1e-5)
    write("math_invLnErfi", inverse(lambda x: mp.log(mp.erfi(x))), base=4, slack=lambda a, x: 2 * EPS * (1 + x))
    write("math_invErfi", inverse(mp.erfi), base=4, slack=lambda a, x: 2 * EPS * (1 + abs(x)) if abs(a[0]) >= 1e-8 else 0)
    # erf of a complex argument; the second row of each pair is the imaginary part (third argument 1).

    def part(f):
        return lambda x, y, which: mp.im(f(mp.mpc(x, y))) if which else mp.re(f(mp.mpc(x, y)))

    erfsize = lambda a: (24 * EPS * (1 + 2 * abs(mp.mpc(a[0], a[1])) ** 2) * abs(mp.erfc(abs(a[0]) + 1j * a[1])) + 4 * EPS
                         + 4 * mp.exp(-40 * abs(a[0])) * (abs(mp.mpc(a[0], a[1])) > 1) * (a[0] != 0))
    write("math_erfz", part(mp.erf),
          conditioned=False, slack=lambda a, v: erfsize(a))
    wsize = lambda a, f: 40 * EPS * (1 + a[0] ** 2 + a[1] ** 2) * f + 4 * mp.exp(-40 * abs(a[1])) * (abs(mp.mpc(a[0], a[1])) > 1)
    z = lambda x, y: mp.mpc(x, y)
    dw = lambda x, y: -2 * z(x, y) * w(z(x, y)) + 2j / mp.sqrt(mp.pi)
    write("math_voigtFunK", lambda x, y: mp.re(w(z(x, y))), base=4,
          slack=lambda a, v: wsize(a, abs(v)) if a[0] * a[1] != 0 else 2 * EPS * a[1] ** 2 * v * (a[1] < 6))
    write("math_voigtFunL", lambda x, y: mp.im(w(z(x, y))), base=4,
          slack=lambda a, v: wsize(a, abs(w(z(*a)))))
    # w' = -2 z w + 2i/sqrt(pi) cancels by a factor of 2 |z|^2.
    derivative_size = lambda a, v: (2 + 2 * abs(z(*a))) * wsize(a, abs(w(z(*a)))) / 100 + 4 * EPS
    for name, g in (("KX", mp.re), ("LX", mp.im), ("LY", mp.re), ("KY", lambda v: -mp.im(v))):
        write("math_voigtDiff" + name, lambda x, y, g=g: g(dw(x, y)), base=4,
              slack=derivative_size)


def lambert():
    lw = lambda x: mp.re(mp.lambertw(x)) if x > -mp.exp(-1) else NAN
    # |w exp(w) - x| <= 1e-15 ends the iteration; the series leaves its next term, 65 x^7.
    write("math_lambertW", lw, base=4,
          slack=lambda a, v: mp.mpf("1e-15") / (mp.exp(v) * (1 + v)) + 0 if abs(a[0]) >= 0.001 else 80 * a[0] ** 7)
    omega = lambda x: mp.re(mp.lambertw(mp.exp(x)))
    write("math_wrightOmega", omega, base=4,
          slack=lambda a, v: mp.mpf("2e-15") * min(1, 10 * abs(v)))


GROUPS = (elementary, gamma_family, error_functions, lambert)
if __name__ == "__main__":
    for group in GROUPS:
        group()
