#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/special/<function>.csv for the elliptic integrals, Jacobi's functions and theta functions.

usage: elliptic.py [FUNCTION...]     (all when none is named; needs mpmath)

Rows and tolerances are those of rows.py. Principal values of RJ are checked against a quadrature.
"""
import mpmath as mp

from rows import INF, NAN, write

mp.mp.dps = 50


def rj(x, y, z, p):
    if p == 0:
        return INF
    if p > 0:
        return mp.elliprj(x, y, z, p)
    # D. G. Zill and B. C. Carlson, Symmetric elliptic integrals of the third kind (1970): mpmath has only quadrature.
    x, y, z = sorted((x, y, z))
    q = -p
    with mp.workdps(mp.mp.dps + 30):
        r = (z * (x + y + q) - x * y) / (z + q)
        product = x * y + r * q
        root = 3 * mp.sqrt(x * y * z / product) * mp.elliprc(product, r * q)
        return ((r - z) * mp.elliprj(x, y, z, r) - 3 * mp.elliprf(x, y, z) + root) / (z + q)


def rc(x, y):
    if y == 0:
        return INF
    if y > 0:
        return mp.elliprc(x, y)
    return mp.sqrt(x / (x - y)) * mp.elliprc(x - y, -y) if x else mp.mpf(0)


def turns(phi):
    s = mp.nint(phi / mp.pi)
    return s, phi - s * mp.pi


def parts(phi, m):
    s, r = turns(phi)
    sine, cosine = mp.sin(r), mp.cos(r)
    return s, sine, cosine ** 2, 1 - m * sine ** 2


def ell_f(phi, m):
    if m == 1:
        return mp.asinh(mp.tan(phi)) if abs(phi) < mp.pi / 2 else mp.sign(phi) * INF
    if m > 1 and abs(phi) > 1e-8:
        return NAN
    s, sine, x, y = parts(phi, m)
    return sine * mp.elliprf(x, y, 1) + (2 * s * mp.ellipk(m) if s else 0)


def ell_e(phi, m):
    if m > 1 and abs(phi) > 1e-8:
        return NAN
    s, sine, x, y = parts(phi, m)
    return sine * mp.elliprf(x, y, 1) - m / 3 * sine ** 3 * mp.elliprd(x, y, 1) + (2 * s * mp.ellipe(m) if s else 0)


def complete_pi(n, m):
    if m > 1:
        return NAN
    if m == 1 or n == 1:
        return INF if n <= 1 else -INF
    return mp.elliprf(0, 1 - m, 1) + n / 3 * rj(mp.mpf(0), 1 - m, mp.mpf(1), 1 - n)


def ell_pi(n, phi, m):
    if m > 1 and abs(phi) > 1e-8:
        return NAN
    s, sine, x, y = parts(phi, m)
    value = sine * mp.elliprf(x, y, 1) + n / 3 * sine ** 3 * rj(x, y, mp.mpf(1), 1 - n * sine ** 2)
    return value + (2 * s * complete_pi(n, m) if s else 0)


def cel(kc, p, a, b):
    kc = abs(kc)
    if kc == 0 or p == 0:
        if b != 0:
            return mp.sign(b) * (mp.sign(p) or 1) * INF
        return a * (rc(mp.mpf(1), p) if p != 0 else mp.elliprf(0, kc ** 2, 1))
    with mp.workdps(80):  # the two parts of the sum cancel
        return a * mp.elliprf(0, kc ** 2, 1) + (b - p * a) / 3 * rj(mp.mpf(0), kc ** 2, mp.mpf(1), p)


def el(x, kc, p, a, b):
    """int (a + b t^2)/((1 + p t^2) sqrt((1 + t^2)(1 + kc^2 t^2))) dt from 0 to x."""
    with mp.workdps(80):
        q, y, z = x ** 2, 1 + (kc * x) ** 2, 1 + x ** 2
        return x * (a * mp.elliprf(1, y, z) + (b - a * p) * q / 3 * rj(mp.mpf(1), y, z, 1 + p * q))


def el2(x, kc, a, b):
    with mp.workdps(80):
        q, y, z = x ** 2, 1 + (kc * x) ** 2, 1 + x ** 2
        return x * (a * mp.elliprf(1, y, z) + (b - a) * q / 3 * mp.elliprd(1, y, z))


def zeta(phi, m):
    if m > 1:
        return NAN
    s, r = turns(phi)
    if m == 1:
        return mp.sin(r)
    with mp.workdps(100):
        return ell_e(r, m) - mp.ellipe(m) / mp.ellipk(m) * ell_f(r, m)


def heuman(phi, m):
    if m < 0 or m > 1:
        return NAN
    s, r = turns(phi)
    if m == 1:
        return 2 * phi / mp.pi
    if m == 0:
        return 2 * s + mp.sin(r)
    with mp.workdps(100):
        return 2 * s + ell_f(r, 1 - m) / mp.ellipk(1 - m) + 2 / mp.pi * mp.ellipk(m) * zeta(r, 1 - m)


def jacobi(kind):
    def f(u, m):
        if m < 0:
            return NAN
        if u == 0:
            return mp.mpf(0 if kind == "sn" else 1)
        return mp.re(mp.ellipfun(kind, u, m=m))
    return f


def am(u, m):
    if m < 0:
        return NAN
    if u == 0:
        return mp.mpf(0)
    sn, cn = mp.re(mp.ellipfun("sn", u, m=m)), mp.re(mp.ellipfun("cn", u, m=m))
    if m > 1:
        return mp.asin(sn)
    if m == 1:
        return mp.atan(mp.sinh(u))
    turn = mp.nint(u / (2 * mp.ellipk(m)))  # am(u + 2 K) = am(u) + pi
    return turn * mp.pi + mp.atan(mp.tan(mp.atan2(sn, cn)))


def theta(kind):
    def f(z, q):
        if abs(q) >= 1 or (q < 0 and kind < 3):
            return NAN
        if z == 0 and kind == 1:
            return mp.mpf(0)
        # mpmath's series slow down towards q = 1; the imaginary transformation as a plain sum over the lattice.
        if q < mp.mpf("0.6"):
            return mp.re(mp.jtheta(kind, z, q))
        t = -mp.log(q) / mp.pi
        shift = mp.mpf("0.5") if kind in (1, 4) else 0
        centre = int(mp.nint(z / mp.pi))
        with mp.workdps(90):
            return mp.fsum((-1 if kind < 3 and k % 2 else 1) * mp.exp(-(z - (k + shift) * mp.pi) ** 2 / (mp.pi * t))
                           for k in range(centre - 60, centre + 60)) / mp.sqrt(t)
    return f






def agm_slack(args, value):
    return mp.mpf("6.7e-16")



TABLE = {
    "math_AGM": (mp.agm, 3, agm_slack),
    "math_ellipticRF": (lambda x, y, z: NAN if min(x, y, z) < 0 else mp.elliprf(x, y, z), 4),
    "math_ellipticRD": (lambda x, y, z: NAN if min(x, y, z) < 0 else INF if z == 0 or x == y == 0 else mp.elliprd(x, y, z), 3),
    "math_ellipticRG": (lambda x, y, z: NAN if min(x, y, z) < 0 else mp.elliprg(x, y, z), 6),
    "math_ellipticRJ": (lambda x, y, z, p: NAN if min(x, y, z) < 0 or sorted((x, y, z))[1] <= 0 else rj(x, y, z, p), 4),
    "math_ellipticRC": (lambda x, y: NAN if x < 0 else INF if y == 0 else (0 if y < 0 else mp.elliprc(0, y)) if x == 0 else rc(x, y), 4),
    "math_ellipticRK": (lambda x, y: NAN if min(x, y) < 0 else 1 / mp.agm(mp.sqrt(x), mp.sqrt(y)),
                        4, lambda args, value: value ** 2 * mp.mpf("6.7e-16")),
    "math_ellipticRE": (lambda x, y: NAN if min(x, y) < 0 else 4 / mp.pi * mp.elliprg(x, y, 0), 8),
    "math_ellipticRM": (lambda x, y, p: NAN if min(x, y) <= 0 else 4 / (3 * mp.pi) * rj(x, y, mp.mpf(0), p), 14),
    "math_ellipticK": (lambda m: NAN if m >= 1 else mp.ellipk(m), 4),
    "math_ellipticE": (lambda m: NAN if m > 1 else mp.ellipe(m), 2),
    "math_ellipticPI2": (complete_pi, 12),
    "math_ellipticF": (ell_f, 6),
    "math_ellipticE2": (ell_e, 8),
    "math_ellipticPI": (ell_pi, 16),
    "math_bulirschCel": (cel, 10),
    "math_bulirschEl1": (lambda x, kc: el2(x, kc, mp.mpf(1), mp.mpf(1)), 6),
    "math_bulirschEl2": (el2, 10),
    "math_bulirschEl3": (lambda x, kc, p: el(x, kc, p, mp.mpf(1), mp.mpf(1)), 16),
    "math_heumannLambda": (heuman, 12),
    "math_jacobiZeta": (zeta, 14),
}
for name, kind in (("Sn", "sn"), ("Cn", "cn"), ("Dn", "dn")):
    TABLE[f"math_jacobiElliptic{name}"] = (jacobi(kind), 16)
TABLE["math_jacobiEllipticAm"] = (am, 8)
for kind in range(1, 5):
    f = theta(kind)
    if kind > 2:
        g = f
        f = (lambda g, other: lambda z, q: g(z, q) if q >= 0 or q <= -1 else other(z, -q))(theta(kind), theta(7 - kind))
    TABLE[f"math_jacobiTheta{kind}"] = (f, 12 if kind == 2 else 8)

def exact_rows(name):
    """Towards m = 1, and towards the zero of theta 2, the functions take the distance without loss."""
    if "Theta" in name:
        return lambda a: abs(a[0] - mp.pi / 2) < 1e-6
    if any(part in name for part in ("ellipticK", "ellipticF", "ellipticPI2", "jacobiElliptic")):
        return lambda a: 1 - mp.mpf(1e-5) < a[-1] <= 1
    return None


def check_principal_value():
    """RJ at p = -q by its integral: the pole's own part has the principal value 0 over (0, 2q)."""
    x, y, z, q = mp.mpf("0.5"), mp.mpf(2), mp.mpf(3), mp.mpf("0.7")
    f = lambda t: 1 / mp.sqrt((t + x) * (t + y) * (t + z))
    near = mp.quad(lambda t: (f(q + t) - f(q - t)) / t, [0, q / 2, q])
    far = mp.quad(lambda t: f(t) / (t - q), [2 * q, 4 * q, 20 * q, INF])
    assert abs((near + far) * 3 / 2 / rj(x, y, z, -q) - 1) < 1e-20


if __name__ == "__main__":
    check_principal_value()
    for name, (f, base, *slack) in TABLE.items():
        write(name, f, base, *slack, exact=exact_rows(name))
