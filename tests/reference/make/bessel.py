#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/special/<function>.csv for the functions of orvane/bessel.h.

usage: bessel.py [FUNCTION...]     (all when none is named; needs mpmath; about three minutes)

Rows and tolerances are those of rows.py.
"""
import mpmath as mp

import rows
from rows import EPS, SMALLEST

mp.mp.dps = 50
HALF, THIRD = mp.mpf(1) / 2, mp.mpf(1) / 3


def reflected(case, args, place):
    """Orders that a reflection takes exactly."""
    return place == 0 and len(args) == 2 and min(args) < 0 and 2 * args[0] == int(2 * args[0])


def write(name, f, base=4, exact=None, **how):
    """exact takes the arguments one by one; a value below the normal range counts as it is, too."""
    small = lambda args: (exact is not None and exact(*args)) or abs(f(*args)) <= SMALLEST
    rows.write(name, f, base, exact=small, exactly=reflected, most=1e13, **how)


# Bessel functions ----------------------------------------------------------------------------------------------------


def turning_j(n, x):
    """J at large order n >= x along the path of steepest descent (Schlaefli's integral, DLMF 10.9.17)."""
    def integrand(v):
        u = mp.acosh(n / x * (v / mp.sin(v) if v else 1))
        return mp.exp(x * mp.sinh(u) * mp.cos(v) - n * u)
    w = mp.sqrt(2 / (mp.sqrt(n * n - x * x) + n ** (2 * THIRD)))
    points = [0] + [k for k in (w * 2 ** i for i in range(6)) if k < 3] + [3]
    scale = mp.mpf(10) ** -int(mp.log10(integrand(mp.mpf(0))))  # mp.quad has an absolute tolerance
    return mp.quad(lambda v: scale * integrand(v), points) / mp.pi / scale


def run_time_loss(nu, x):
    """The run-time's continued fraction takes x steps up to x = 1000 and rounds at each; near the turning point ours
    takes about x^(1/3)."""
    x = abs(x)
    return 8 + (0.15 * x if x <= 1000 else 0.8 * x ** THIRD if abs(nu) > 40 else 0)


def whole(f):
    """mpmath's limit fails at some integer orders below 0."""
    return lambda n, x: f(-n, x) if n < 0 and n == int(n) else f(n, x)


def bessel_k(n, x):
    """mpmath's, or where that gives up or cancels unseen the integral of exp(-x cosh t) cosh(nt) (DLMF 10.32.9)."""
    try:
        if n < 100:
            return mp.besselk(n, x)
    except ValueError:
        pass
    peak = mp.asinh(n / x)
    width = 1 / mp.sqrt(mp.hypot(n, x))
    points = sorted({t for t in (peak + k * width for k in range(-24, 27, 3)) if t > 0} | {mp.mpf(0)})
    scale = n * peak - x * mp.cosh(peak)  # mp.quad has an absolute tolerance
    return mp.exp(scale) * mp.quad(lambda t: mp.exp(-x * mp.cosh(t) - scale) * mp.cosh(n * t), points)


def bessel():
    odd = lambda f: lambda n, x: (-1) ** int(n) * f(-n, x) if n < 0 and n == int(n) else f(n, x)
    j = odd(mp.besselj)
    write("math_BesselJ", lambda n, x: mp.nan if x < 0 and n != int(n) else j(n, x),
          base=run_time_loss)
    y = odd(mp.bessely)
    write("math_BesselY", lambda n, x: mp.nan if x < 0 else y(n, x), base=run_time_loss)
    i = whole(mp.besseli)
    write("math_BesselI", lambda n, x: mp.nan if x < 0 and n != int(n) else i(n, x), base=8)
    write("math_BesselK", lambda n, x: mp.nan if x < 0 else bessel_k(abs(n), x), base=8)
    write("bessel_turning", turning_j, base=200)
    scale = lambda x: mp.sqrt(mp.pi / 2 / x)
    # The run-time forms the power as exp(nu log(x/2)); the condition of n counts for this but where n is whole.
    loss = lambda n, x: run_time_loss(n, x) + (abs(n * mp.log(x)) if n < 0 and 0 < x < 0.01 else 0)
    write("math_SphericalBesselJ", lambda n, x: mp.nan if x < 0 else scale(x) * mp.besselj(n + HALF, x), base=loss)
    write("math_SphericalBesselY", lambda n, x: mp.nan if x < 0 else scale(x) * mp.bessely(n + HALF, x), base=loss)


# Airy and Scorer functions -------------------------------------------------------------------------------------------


def airy_ai(x):
    if x > 100 + mp.mpf(10) ** -15:  # the difference for the condition starts at 100
        return mp.mpf(0)
    return mp.exp(-2 * x ** 1.5 / 3) / x ** 0.25 / mp.mpf(3.4641016151377544) if x > 36 else mp.airyai(x)


def scorer_hi_series(x, derivative):
    """The power series by thirds (DLMF 9.12.17 for Hi), with digits for its cancellation."""
    with mp.workdps(80 + int(abs(x) ** 1.5)):
        c, s, k = mp.cbrt(3), mp.mpf(0), 0
        terms = ([mp.gamma(2 * THIRD) / c, x, c * mp.gamma(4 * THIRD) / 2 * x * x] if derivative else
                 [mp.gamma(THIRD) / c ** 2, mp.gamma(2 * THIRD) / c * x, x * x / 2])
        terms = [mp.gamma(mp.mpf(k + 1 + derivative) / 3) * c ** (k - (1 if derivative else 2)) * x ** k / mp.factorial(k)
                 for k in range(3)]
        while k < 12 or max(map(abs, terms)) > mp.mpf(10) ** -mp.mp.dps * abs(s):
            s += sum(terms)
            d = 1 if derivative else 2
            terms = [t * x ** 3 / ((k + i + d) * (k + i + 3)) for i, t in enumerate(terms)]
            k += 3
        return s / mp.pi


def far_hi(x, derivative):
    """1/pi times the integral of t^d exp(-t^3/3 + xt), x < 0."""
    return mp.quad(lambda t: t ** derivative * mp.exp(-t ** 3 / 3 + x * t), [k / abs(x) for k in (0, 1, 5, 20, 60, 150)]) / mp.pi


def scorer_hi(x, derivative=0):
    return far_hi(x, derivative) if x < -60 else scorer_hi_series(x, derivative)


def scorer_gi(x, derivative=0):
    with mp.workdps(90 + int(1.2 * abs(x) ** 1.5) if x > 0 else 60):
        return mp.airybi(x, derivative=derivative) - scorer_hi(x, derivative)


def airy():
    # For x > 0 the run-time's I and K form (z/2)^nu as exp(nu log(z/2)).
    loss = lambda x: 12 + (abs(mp.log(abs(x))) if 0 < abs(x) < 0.01 else 0)
    # Far left the phase is taken without loss: errors are those of the size |x|^(-1/4)/sqrt(pi) around a root, and of
    # |x|^(1/4)/sqrt(pi) for the derivatives.
    far = lambda x: x < -20
    size = lambda power: lambda a, v: 4 * EPS * (abs(a[0]) ** power / mp.sqrt(mp.pi) if far(a[0]) else abs(v))
    write("math_AiryAi", airy_ai, base=loss, exact=far, slack=size(-0.25))
    write("math_AiryBi", mp.airybi, base=loss, exact=far, slack=size(-0.25))
    write("math_DiffAiryAi", lambda x: mp.airyai(x, derivative=1), base=loss, exact=far, slack=size(0.25))
    write("math_DiffAiryBi", lambda x: mp.airybi(x, derivative=1), base=loss, exact=far, slack=size(0.25))
    # Between -15 and -1 Hi is 2/3 Bi + x^2 P/(2 pi): the error is that of the parts, about 0.2.
    write("math_AiryGi", scorer_gi, base=loss, exact=far, slack=lambda a, v: 40 * EPS if a[0] < -1 else 0)
    write("math_AiryHi", scorer_hi, base=loss, slack=lambda a, v: 40 * EPS if -15 < a[0] < 0 else 0)
    write("math_DiffAiryGi", lambda x: scorer_gi(x, 1), base=loss, exact=far,
          slack=lambda a, v: (8 + 4 * abs(a[0]) ** 0.25) * EPS if a[0] < -1 else 0)
    write("math_DiffAiryHi", lambda x: scorer_hi(x, 1), base=8)
    digits15 = lambda count: lambda a, v: mp.mpf(10) ** -14 * 6 if a[0] <= count and abs(v) >= 10 else 6 * mp.mpf(10) ** -15
    def zero(f, derivative):
        def g(n):
            if not (n >= 1 and n <= 1e18 and n == int(n)):
                return mp.nan
            if n <= 1000:
                return f(int(n), derivative=derivative)
            second = (f is mp.airybizero) != bool(derivative)
            t = 3 * mp.pi / 8 * (4 * n - (3 if second else 1))
            v = t * t
            # DLMF 9.9.18, 9.9.19: what follows is below 1e-40 of the value here.
            head = (1 - 7 / (48 * v) + 35 / (288 * v * v)) if derivative else (1 + 5 / (48 * v) - 5 / (36 * v * v))
            return -t ** (2 * THIRD) * head
        return g
    for name, f, derivative, count in (("AiryAiZero", mp.airyaizero, 0, 9), ("AiryBiZero", mp.airybizero, 0, 9),
                                       ("DiffAiryAiZero", mp.airyaizero, 1, 10), ("DiffAiryBiZero", mp.airybizero, 1, 9)):
        # Derivatives: tables of 15 digits. Beyond a table the next term of the series, under 2e5/t^12 of the value.
        write("math_" + name, zero(f, derivative), conditioned=False,
              base=lambda n: 4 + abs(mp.log(abs(n) + 1)) / 4,  # the exponent 2/3 is a double
              slack=lambda a, v, d=derivative, c=count: digits15(c)(a, v) if d and a[0] <= c else
              0 if a[0] <= c else abs(v) * 2e5 / (3 * mp.pi / 8 * (4 * a[0] - 3)) ** 12)


# Struve, Anger, Weber ------------------------------------------------------------------------------------------------
def struve():
    ratio = (mp.sqrt(mp.pi) / 2) / mp.mpf(0.88622692545275)  # the constant's fourteen digits
    points = [1e-300, 1e-5, 0.3, 1.0, 5.0, 12.0, 29.9, 30.1, 45.0, 80.0, 200.5]
    h = lambda n, x: ratio * mp.struveh(n, x)
    special = lambda n, x: (-1) ** int(-n - HALF) * mp.besselj(-n, x) if n <= -1.5 and n + HALF == int(n + HALF) else h(n, x)
    far = [("far", 0, 650.0), ("far", 3, 999.0)]
    inside = lambda f: lambda n, x: mp.nan if x < 0 and n != int(n) else f(n, x)
    write("math_StruveH", inside(special),
          base=lambda n, x: run_time_loss(n, x) if abs(x) > 30 else 8, slack=lambda a, v: 2 * EPS * abs(v))
    l = lambda n, x: ratio * mp.struvel(n, x)
    special_l = lambda n, x: mp.besseli(-n, x) if n <= -1.5 and n + HALF == int(n + HALF) else l(n, x)
    write("math_StruveL", inside(special_l), base=8)


def anger_weber(n, x):
    """Both by their power series (DLMF 11.10.8-11.10.11)."""
    a, half = n / 2, x / 2
    with mp.workdps(60 + int(abs(x) * 0.9)):
        s1 = mp.rgamma(1 + a) * mp.rgamma(1 - a) * mp.hyper([1], [1 + a, 1 - a], -half * half)
        s2 = half * mp.rgamma(1.5 + a) * mp.rgamma(1.5 - a) * mp.hyper([1], [1.5 + a, 1.5 - a], -half * half)
        c, s = mp.cos(mp.pi * a), mp.sin(mp.pi * a)
        return c * s1 + s * s2, s * s1 - c * s2


def anger():
    points = [1e-10, 0.5, 3.0, -8.0, 20.0, 39.5, -55.0, 59.0, 61.0, 75.0, 100.0, 120.0, -200.0, 400.0]
    quadrature = lambda a, v: 16 * EPS  # sums of values up to 1 with both signs
    near = lambda n: n + mp.mpf(10) ** -30 if n == int(n) else n  # the limit at an integer order
    write("math_angerJ", lambda n, x: anger_weber(near(n), x)[0],
          base=run_time_loss, slack=quadrature)
    write("math_weberE", lambda n, x: anger_weber(near(n), x)[1], base=run_time_loss, slack=quadrature)


# Parabolic cylinder functions ----------------------------------------------------------------------------------------
def parts(a, x):
    h, s = a / 2, x * x / 2
    return mp.hyp1f1(h + HALF / 2, HALF, s), x * mp.hyp1f1(h + 3 * HALF / 2, 3 * HALF, s), h


def wide(f):
    def g(a, x):
        with mp.workdps(60 + int(x * x / 3) + int(2 * abs(a))):
            return f(a, x)
    return g


@wide
def pcf_u(a, x):  # DLMF 12.4.1, 12.2.6, 12.2.7
    y1, y2, h = parts(a, x)
    scale = mp.sqrt(mp.pi) * mp.exp(-x * x / 4)
    return scale * (y1 * 2 ** (-h - HALF / 2) * mp.rgamma(3 * HALF / 2 + h) - y2 * 2 ** (HALF / 2 - h) * mp.rgamma(HALF / 2 + h))


@wide
def pcf_v(a, x):  # DLMF 12.2.8, 12.2.9 with the duplication formula
    y1, y2, h = parts(a, x)
    even = 2 ** (h + HALF / 2) * mp.sin(mp.pi * (h + HALF / 2)) * mp.rgamma(3 * HALF / 2 - h)
    odd = 2 ** (h + 3 * HALF / 2) * mp.cos(mp.pi * (h + HALF / 2)) * mp.rgamma(HALF / 2 - h)
    return mp.exp(-x * x / 4) * (even * y1 + odd * y2)


def far_u(a, x):
    """Down the recurrence for large -a, by the integral of DLMF 12.5.1 for large a."""
    if a > 0:
        peak = (-x + mp.sqrt(x * x + 4 * a - 2)) / 2
        level = lambda t: (a - HALF) * mp.log(t) - t * t / 2 - x * t
        width = 1 / mp.sqrt(1 + (a - HALF) / peak ** 2)
        integral = mp.quad(lambda t: mp.exp(level(t) - level(peak)), [peak + k * width for k in range(-16, 17, 2)])
        return mp.exp(level(peak) - x * x / 4 - mp.loggamma(a + HALF)) * integral
    order = a + mp.ceil(3 * HALF - a)
    low, high = mp.pcfu(order, x), mp.pcfu(order + 1, x)
    while order > a + HALF:
        low, high = x * low + (order + HALF) * high, low
        order -= 1
    return low


def parabolic():
    points = [0, 1e-20, 0.3, 1.0, 1.6, 3.0, 5.5, 8.9, 9.1, 13.0, 25.0, 40.0]
    # The fifteen digits of sqrt(pi) and log 2 that V uses.
    fifteen = lambda a, v: abs(v) * (mp.mpf("2.3e-15") + abs(a[0]) * mp.mpf("1.6e-16"))
    # Gamma functions by their logarithms, of the size a log(a); the condition of a counts for them but at x < 0.
    # Beyond |a| = 900 in long double, as large logarithms cancel.
    logs = lambda a, x: 16 + abs(a) * mp.log(1 + abs(a)) if abs(a) < 900 else 900
    far = lambda a, x: abs(a) > 900
    write("math_ParabolicCylinderU", lambda a, x: (far_u if abs(a) > 9000 else pcf_u)(a, x), base=logs,
          slack=lambda a, v: 0 if far(*a) else fifteen(a, v), exact=far)
    write("math_ParabolicCylinderV", pcf_v, base=logs, slack=fifteen, exact=far)
    write("math_ParabolicCylinderD", lambda n, x: pcf_u(-n - HALF, x),
          base=logs, slack=fifteen, exact=lambda n, x: n > 100 and x in (0.5, 6))  # near roots


bessel()
airy()
struve()
anger()
parabolic()
