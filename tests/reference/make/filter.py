#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/filter/{windows,designs,iir,response,radial,savgol}.csv: windows and recursive designs by mpmath with 60
digits, held against SciPy where its definitions are the same; window designs and Savitzky-Golay rows by SciPy. With
--limits prints the orders up to which coefficients in doubles carry a design. Run without arguments otherwise."""
import pathlib
import sys

import mpmath as mp
import numpy as np
import scipy
from scipy import signal

mp.mp.dps = 60
HERE = pathlib.Path(__file__).resolve().parents[1] / "filter"
pi, cos, sin = mp.pi, mp.cos, mp.sin
HANNING, KAISER, HAMMING, BLACKMAN, NONE = 11, 13, 10, 1, 99

# ---- windows: code -> w(i, n, p), p the parameters from 1 on


def cosine_sum(*fixed):
    return lambda i, n, *p: sum((-1) ** k * mp.mpf(a) * cos(k * 2 * pi * i / (n - 1)) for k, a in enumerate(p or fixed))


def confined(i, n, sigma=0.06):
    g = lambda x: mp.exp(-(((x - (n - 1) // 2) / (2 * n * mp.mpf(sigma))) ** 2))
    h = mp.mpf(1) / 2
    return g(i) - (g(i - n) + g(i + n)) * g(-h) / (g(-h - n) + g(-h + n))


def dolph(i, n, gain=0.16, f=0.36):
    m, c = mp.mpf(n - 1) / 2, cos(2 * pi * mp.mpf(f))
    y = [max(-1, min(1, (2 * cos(2 * pi * (j - m) / n) - c + 1) / (c + 1))) for j in range(n)]
    a = [cos(mp.acos(v) * m) * mp.mpf(gain) for v in y]
    return sum(v * cos(2 * pi * (j - m) * (i - m) / n) for j, v in enumerate(a)) / sum(a)


def gpa(i, n, *p):
    c = mp.mpf(n - 1) / 2
    s2 = sum((k - c) ** 2 for k in range(n)) / (n - 1)
    return sum(mp.mpf(v) * ((i - c) ** 2 / s2) ** k for k, v in enumerate(p)) if p else mp.mpf(1)


def parzen(i, n):
    d = abs(i - mp.mpf(n - 1) / 2)
    u = 2 * d / n
    return 6 * u * u * (u - 1) + 1 if d < (n - 1) // 4 else 2 * (1 - u) ** 3


def planck(i, n, eps=0.25):
    e, k = (n - 1) * mp.mpf(eps), min(i, n - 1 - i)
    if k == 0:
        return mp.mpf(0)
    return 1 / (mp.exp(e / k - e / (e - k)) + 1) if k < min(n - 1, int(e)) else mp.mpf(1)


def tukey(i, n, a=0.36):
    k, flank = min(i, n - 1 - i), int((n - 1) * mp.mpf(a) / 2)
    return (1 - cos(2 * pi * k / ((n - 1) * mp.mpf(a)))) / 2 if k < flank else mp.mpf(1)


def ultraspherical(i, n, x0=1.0, mu=0.2):
    c = lambda x: mp.gegenbauer(n - 1, mp.mpf(mu), x)
    terms = (c(x0 * cos(k * pi / n)) * cos(2 * i * k * pi / n) for k in range(1, (n - 1) // 2 + 1))
    return (c(mp.mpf(x0)) + sum(terms)) / n


def lanczos(i, n):
    x = pi * (mp.mpf(2 * i) / (n - 1) - 1)
    return sin(x) / x if x else mp.nan


def centre(i, n):
    return (i - mp.mpf(n - 1) / 2) / (mp.mpf(n - 1) / 2)


WINDOWS = {
    0: (lambda i, n: mp.mpf("0.62") - mp.mpf("0.24") - mp.mpf("0.38") * cos(2 * pi * i / (n - 1)), []),
    1: (lambda i, n, a=0.16: (1 - mp.mpf(a)) / 2 - cos(2 * pi * i / (n - 1)) / 2
        + mp.mpf(a) / 2 * cos(4 * pi * i / (n - 1)), [0.2]),
    2: (cosine_sum(0.35875, 0.48829, 0.14128, 0.01168), [0.4, 0.5, 0.1, 0.0]),
    3: (cosine_sum(0.3635819, 0.4891775, 0.1365995, 0.0106411), []),
    4: (confined, [0.1]),
    5: (lambda i, n, *p: cosine_sum()(i, n, *p) if p else mp.mpf(1), [0.5, 0.4, 0.1]),
    6: (dolph, [0.5, 0.2]),
    7: (cosine_sum(0.21557895, 0.41663158, 0.277263158, 0.083578947, 0.006947368), []),
    8: (lambda i, n, s=0.12: mp.exp(-((centre(i, n) / mp.mpf(s)) ** 2) / 2), [0.4]),
    9: (gpa, [1.0, -0.3, 0.02]),
    10: (lambda i, n, a=0.56: mp.mpf(a) - (1 - mp.mpf(a)) * cos(2 * pi * i / (n - 1)), [0.54]),
    11: (lambda i, n: (1 - cos(2 * pi * i / (n - 1))) / 2, []),
    12: (lambda i, n, a=1.6: mp.exp(-mp.mpf(a) * abs(centre(i, n))) * (1 - cos(2 * pi * i / (n - 1))) / 2, [2.5]),
    13: (lambda i, n, a=5.6: mp.besseli(0, pi * a * mp.sqrt(abs(1 - centre(i, n) ** 2))) / mp.besseli(0, pi * a), [2.0]),
    14: (lanczos, []),
    15: (cosine_sum(0.355768, 0.487396, 0.144232, 0.012604), []),
    16: (parzen, []),
    17: (planck, [0.4]),
    18: (lambda i, n, k=2: sin(pi * i / (n - 1)) ** int(k), [3.7]),
    19: (lambda i, n: mp.mpf(1), []),
    20: (lambda i, n: sin(pi * i / (n - 1)), []),
    21: (lambda i, n: 1 - abs(i - mp.mpf(n - 1) / 2) * 2 / n, []),
    22: (tukey, [0.8]),
    23: (ultraspherical, [1.2, 0.7]),
    24: (lambda i, n: 1 - centre(i, n) ** 2, []),
}
# The same windows by SciPy.
SAME = {
    1: signal.windows.blackman, 2: signal.windows.blackmanharris, 7: signal.windows.flattop,
    8: lambda n: signal.windows.gaussian(n, 0.12 * (n - 1) / 2), 10: lambda n: signal.windows.general_hamming(n, 0.56),
    11: signal.windows.hann, 13: lambda n: signal.windows.kaiser(n, np.pi * 5.6), 19: signal.windows.boxcar,
}


def text(x):
    return "nan" if mp.isnan(x) else mp.nstr(mp.mpf(x), 25)


def row(name, args, value, tolerance):
    return ",".join([name] + [float(a).hex() for a in args] + [text(value), f"{tolerance:.6g}"]) + "\n"


def write(name, what, rows):
    versions = f"mpmath {mp.__version__}, SciPy {scipy.__version__}, 60 digits"
    (HERE / name).write_text(f"# {what}; tests/reference/make/filter.py, {versions}\n" + "".join(rows))


def windows():
    """The last column is an absolute tolerance in 2^-52: the angle's steps round n times, and up to 4 harmonics magnify
    that; the Dolph and ultraspherical sums have n terms of the size of their largest sample."""
    for code, (w, params) in WINDOWS.items():
        for n in (2, 5, 8, 33):
            if code in SAME:
                assert max(abs(float(w(i, n)) - v) for i, v in enumerate(SAME[code](n))) < 1e-8, code
            for p in ([], params) if params else ([],):
                values = [w(i, n, *p) for i in range(n)]
                finite = [abs(v) for v in values if not mp.isnan(v)]
                for i, v in enumerate(values):
                    yield row(str(code), [code, n, i, *p], v, 6 * (n + 4) * max(1, float(max(finite))))


# ---- designs by windows

DESIGNS = [  # type, n, window, its parameter, normalised, SciPy's arguments
    (0, 51, HAMMING, 0.54, 1, dict(cutoff=100, window="hamming")),
    (0, 40, HANNING, None, 1, dict(cutoff=200, window="hann")),
    (0, 31, KAISER, 2.0, 0, dict(cutoff=60, window=("kaiser", 2 * np.pi), scale=False)),
    (1, 51, BLACKMAN, None, 0, dict(cutoff=150, window="blackman", pass_zero=False, scale=False)),
    (2, 64, HANNING, None, 0, dict(cutoff=[100, 200], window="hann", pass_zero=False, scale=False)),
    (2, 33, NONE, None, 0, dict(cutoff=[100, 200], window="boxcar", pass_zero=False, scale=False)),
    (3, 51, HANNING, None, 0, dict(cutoff=[100, 200], window="hann", scale=False)),
]


def designs():
    for kind, n, window, p, norm, how in DESIGNS:
        edges = np.atleast_1d(how["cutoff"])
        for i, v in enumerate(signal.firwin(n, fs=1024, **how)):
            args = [kind, n, window, -1 if p is None else p, norm, edges[0], edges[-1], i]
            yield row(f"firwin{kind}", args, v, 1e-12)


# ---- recursive designs: zeros, poles and gain of the prototype, then s -> digital by the roots

FS, EDGE, BAND = mp.mpf(1024), (150,), (100, 200)
NAMES = "butterworth", "bessel", "chebyshevI", "chebyshevII"
# 0.5 dB and 40 dB as the doubles that a program holds.
RIPPLE, STOP = (mp.mpf(float(v)) for v in (mp.sqrt(mp.mpf(10) ** mp.mpf("0.05") - 1), 1 / mp.sqrt(mp.mpf(10) ** 4 - 1)))
SCIPY = [lambda *a: signal.butter(*a, fs=1024, output="zpk"), lambda *a: signal.bessel(*a, norm="delay", fs=1024, output="zpk"),
         lambda n, *a: signal.cheby1(n, 0.5, *a, fs=1024, output="zpk"), lambda n, *a: signal.cheby2(n, 40, *a, fs=1024, output="zpk")]


def prototype(kind, n):
    t = [(2 * k + 1) * pi / (2 * n) for k in range(n)]
    if kind == 0:
        return [], [-sin(a) + 1j * cos(a) for a in t]
    if kind == 1:
        c = [mp.factorial(2 * n - k) / (mp.mpf(2) ** (n - k) * mp.factorial(k) * mp.factorial(n - k)) for k in range(n + 1)]
        return [], mp.polyroots(c[::-1], maxsteps=500, extraprec=400)
    mu = mp.asinh(1 / (RIPPLE if kind == 2 else STOP)) / n
    poles = [-mp.sinh(mu) * sin(a) + 1j * mp.cosh(mu) * cos(a) for a in t]
    if kind == 2:
        return [], poles
    return [1j / cos(a) for a in t if abs(cos(a)) > 1e-30], [1 / p for p in poles]


def digital(kind, shape, n):
    """Zeros, poles, gain. Each analog root s0 gives the digital roots of s(z) = s0; missing zeros lie at s = infinity."""
    zeros, poles = prototype(kind, n)
    bent = [mp.tan(pi * f / FS) for f in (EDGE if shape < 2 else BAND)]

    def roots(s0):
        if shape < 2:  # s = u/t or t/u, u = (z-1)/(z+1)
            u = [(s0 * bent[0] if s0 is not None else None) if shape == 0 else (bent[0] / s0 if s0 is not None else mp.mpf(0))]
        else:
            width, middle = bent[1] - bent[0], bent[0] * bent[1]
            inverse = 0 if s0 is None else 1 / s0
            half = (s0 * width if shape == 2 and s0 is not None else width * inverse) / 2
            if shape == 2 and s0 is None:
                u = [None, mp.mpf(0)]
            else:
                d = mp.sqrt(half * half - middle)
                u = [half + d, half - d]
        return [mp.mpf(-1) if v is None else (1 + v) / (1 - v) for v in u]

    z = [r for s in list(zeros) + [None] * (n - len(zeros)) for r in roots(s)]
    p = [r for s in poles for r in roots(s)]
    # The gain is 1 where the prototype has frequency 0; type I of even order starts below.
    at = mp.expj({0: 0, 1: pi, 3: 0}.get(shape, 2 * mp.atan(mp.sqrt(bent[0] * bent[-1]))))
    level = 1 / mp.sqrt(1 + RIPPLE**2) if kind == 2 and n % 2 == 0 else 1
    gain = level * abs(mp.fprod(at - r for r in p) / mp.fprod(at - r for r in z))
    return z, p, gain


def polynomial(roots):
    c = [mp.mpf(1)]
    for r in roots:
        c = [a - r * b for a, b in zip(c + [0], [0] + c)]
    return [mp.re(v) for v in c]


def response(z, p, gain, w):
    at = mp.expj(w)
    return abs(gain * mp.fprod(at - r for r in z) / mp.fprod(at - r for r in p))


def against_scipy(kind, shape, n, p, gain, z):
    edges = BAND if shape > 1 else EDGE[0]
    theirs = SCIPY[kind](n, edges, ("low", "high", "band", "stop")[shape])
    for mine, other in ((z, theirs[0]), (p, theirs[1])):
        for r in mine:
            assert min(abs(complex(r) - o) for o in other) < 1e-9, (kind, shape, n)
    assert abs(gain / theirs[2] - 1) < 1e-9, (kind, shape, n)


def iir():
    """b and a of the exact design; the last column is a tolerance in ulps: the results are rounded once or twice."""
    for kind, name in enumerate(NAMES):
        for shape in range(4):
            for n in (1, 2, 3, 5, 8):
                z, p, gain = digital(kind, shape, n)
                against_scipy(kind, shape, n, p, gain, z)
                for side, values in enumerate(([gain * v for v in polynomial(z)], polynomial(p))):
                    top = max(abs(v) for v in values)
                    for i, v in enumerate(values):
                        yield row(name, [kind, shape, n, side, i], v if abs(v) > top * mp.mpf(10) ** -40 else 0, 2)


LIMITS = {}  # kind, shape -> the greatest order that coefficients in doubles carry, filled by limits()


def carries(z, p, gain):
    """Coefficients rounded to doubles: poles inside the circle, response within 0.001."""
    b = [mp.mpf(float(gain * v)) for v in polynomial(z)]
    a = [mp.mpf(float(v)) for v in polynomial(p)]
    grid = [pi * k / 256 for k in range(1, 256)]
    for w in grid:
        at = mp.expj(w)
        if abs(abs(mp.polyval(b, at) / mp.polyval(a, at)) - response(z, p, gain, w)) > 0.001:
            return False
    k = list(a)  # Schur and Cohn: all reflection coefficients below 1
    while len(k) > 1:
        r = k[-1]
        if abs(r) >= 1:
            return False
        k = [(x - r * y) / (1 - r * r) for x, y in zip(k[:-1], k[:0:-1])]
    return True


def limits():
    for kind in range(4):
        for shape in range(4):
            order = 0
            while order < 30 and carries(*digital(kind, shape, order + 1)):
                order += 1
            LIMITS[kind, shape] = order


def responses():
    limits()
    for (kind, shape), order in LIMITS.items():
        for n in sorted({min(order, 10), order}):
            z, p, gain = digital(kind, shape, n)
            for k in range(1, 32):
                yield row(NAMES[kind], [kind, shape, n, k / 32], response(z, p, gain, pi * k / 32), 1e-3)


def savgol():
    x = [((i * 7919) % 101) / 8 for i in range(60)]
    for width, degree in ((5, 2), (11, 3), (31, 5), (7, 6)):
        half = width // 2
        v = mp.matrix([[mp.mpf(t) ** k for k in range(degree + 1)] for t in range(-half, half + 1)])
        kernel = (v * mp.lu_solve(v.T * v, mp.eye(degree + 1)[:, 0])).T.tolist()[0]
        theirs = signal.savgol_filter(x, width, degree, mode="nearest")
        for i in range(60):
            value = sum(w * x[min(max(i + k - half, 0), 59)] for k, w in enumerate(kernel))
            assert abs(value - theirs[i]) < 1e-9
            yield row("savgol", [width, degree, i], value, 1e-13)


RADIAL = """1-r; (1-r)**3*(3*r+1); (1-r)**5*(8*r**2+5*r+1); (1-r)**2; (1-r)**4*(4*r+1); (1-r)**6*(35*r**2+18*r+3);
(1-r)**8*(32*r**3+25*r**2+8*r+1); (1-r)**3; (1-r)**5*(5*r+1); (1-r)**7*(16*r**2+7*r+1); (1-r)**2*(r+2);
(1-r)**3*(r**2+3*r+1); (1-r)**3*(3*r**2+9*r+8); (1-r)**4*(3*r**3+12*r**2+16*r+4); (1-r)**5*(r**4+5*r**3+9*r**2+5*r+1);
(1-r)**4*(5*r**3+20*r**2+29*r+16); (1-r)**5*(5*r**4+25*r**3+48*r**2+40*r+8);
(1-r)**6*(5*r**5+30*r**4+72*r**3+82*r**2+36*r+6); (1-r)**7*(5*r**6+35*r**5+101*r**4+147*r**3+101*r**2+35*r+5)"""


def radial():
    """Weights of the kernel; a reach below the half-length runs beyond r = 1."""
    for kind, formula in enumerate(RADIAL.split(";"), 1):
        for half, delta in ((4, 1.0), (3, -2.5), (3, 0.0)):
            f = [eval(formula, {"r": mp.mpf(j) / (half + abs(delta))}) for j in range(half + 1)]
            for j, v in enumerate(f):
                yield row("radial", [kind, half, delta, j], v / (2 * sum(f) - f[0]), 1e-15)


if "--limits" in sys.argv:
    limits()
    for kind in range(4):
        print(NAMES[kind], [LIMITS[kind, shape] for shape in range(4)])
else:
    write("windows.csv", "code,n,i,parameters...: w", windows())
    write("designs.csv", "type,n,window,parameter,normalised,edges,i: h", designs())
    write("iir.csv", "kind,type,order,side,i: coefficient", iir())
    write("response.csv", "kind,type,order,share of fs/2: |H|", responses())
    write("radial.csv", "kind,half,delta,distance: weight", radial())
    write("savgol.csv", "width,degree,i: smoothed", savgol())
