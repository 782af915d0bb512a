#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/sym/diff.csv: partial derivatives of every kind of expression that has a rule, in every
argument that it may be taken in, by mpmath at 50 digits from the functions' own definitions."""
import sys

import mpmath
from mpmath import mp, mpf, inf, pi, sqrt, exp, log

from rows import line, save

mp.dps = 50

# Relative error allowed. A derivative in elementary functions is right to a few roundings; one that calls special
# functions is as right as they are, which their own tables hold; that of EllipticRG has a factor of eight digits.
ELEMENTARY, SPECIAL, COARSE = mpf(2) ** -48, mpf("1e-13"), mpf("1e-7")


def inverse(f, guess):
    return lambda y: mpmath.findroot(lambda x: f(x) - y, guess(y))


def faddeeva(x, y):
    z = mpmath.mpc(x, y)
    return exp(-z * z) * mpmath.erfc(-1j * z)


def ln_erfi(x):
    return log(mpmath.erfi(x))


def amplitude(u, m):
    return mpmath.findroot(lambda phi: mpmath.ellipf(phi, m) - u, u)


def jacobi_zeta(phi, m):
    return mpmath.ellipe(phi, m) - mpmath.ellipe(m) / mpmath.ellipk(m) * mpmath.ellipf(phi, m)


def wright_bessel(a, b, x):
    return sum(x ** k * mpmath.rgamma(k + 1) * mpmath.rgamma(a * k + b) for k in range(80))


def fresnel(trig):
    return lambda x: mpmath.quad(lambda t: trig(pi * t * t / 2), [0, x])


def sign_pair(positive):
    return lambda x: positive(x) if x >= 0 else -positive(-x)


# name, code, function, tolerance, argument lists, positions (default all)
TABLE = [
    ("Pow", 5, lambda b, e: b ** e, ELEMENTARY, [(1.7, 2.5), (0.3, -1.25), (2.0, 3.0)]),
    ("Sqrt", 10, sqrt, ELEMENTARY, [(0.37,), (5.5,)]),
    ("Ln", 11, log, ELEMENTARY, [(0.37,), (5.5,)]),
    ("Exp", 12, exp, ELEMENTARY, [(0.37,), (-2.5,)]),
    ("Abs", 13, abs, ELEMENTARY, [(0.37,), (-2.5,)]),
    ("Sin", 20, mpmath.sin, ELEMENTARY, [(0.37,), (-2.5,)]),
    ("Cos", 21, mpmath.cos, ELEMENTARY, [(0.37,), (-2.5,)]),
    ("Tan", 22, mpmath.tan, ELEMENTARY, [(0.37,), (-2.5,)]),
    ("Cot", 23, mpmath.cot, ELEMENTARY, [(0.37,), (-2.5,)]),
    ("Asin", 24, mpmath.asin, ELEMENTARY, [(0.37,), (-0.8,)]),
    ("Acos", 25, mpmath.acos, ELEMENTARY, [(0.37,), (-0.8,)]),
    ("Atan", 26, mpmath.atan, ELEMENTARY, [(0.37,), (-2.5,)]),
    ("Acot", 27, lambda x: mpmath.atan(1 / x), ELEMENTARY, [(0.37,), (-2.5,)]),
    ("Sinh", 30, mpmath.sinh, ELEMENTARY, [(0.37,), (-2.5,)]),
    ("Cosh", 31, mpmath.cosh, ELEMENTARY, [(0.37,), (-2.5,)]),
    ("Tanh", 32, mpmath.tanh, ELEMENTARY, [(0.37,), (-2.5,)]),
    ("Coth", 33, mpmath.coth, ELEMENTARY, [(0.37,), (-2.5,)]),
    ("Asinh", 34, mpmath.asinh, ELEMENTARY, [(0.37,), (-2.5,)]),
    ("Acosh", 35, mpmath.acosh, ELEMENTARY, [(1.37,), (6.5,)]),
    ("Atanh", 36, mpmath.atanh, ELEMENTARY, [(0.37,), (-0.8,)]),
    ("Acoth", 37, lambda x: mpmath.atanh(1 / x), ELEMENTARY, [(1.37,), (-6.5,)]),
    ("Erf", 50, mpmath.erf, ELEMENTARY, [(0.37,), (-1.5,)]),
    ("Gamma", 51, mpmath.gamma, SPECIAL, [(0.37,), (4.5,), (-1.3,)]),
    ("Beta", 52, mpmath.beta, SPECIAL, [(0.4, 2.25), (3.5, 1.75)]),
    ("LnGamma", 53, mpmath.loggamma, SPECIAL, [(0.37,), (4.5,)]),
    ("BesselI", 54, mpmath.besseli, SPECIAL, [(0, 1.25), (1.5, 2.5)], [1]),
    ("BesselJ", 55, mpmath.besselj, SPECIAL, [(0, 1.25), (1.5, 2.5), (3, 7.0)], [1]),
    ("BesselY", 57, mpmath.bessely, SPECIAL, [(0, 1.25), (1.5, 2.5), (3, 7.0)], [1]),
    ("DiGamma", 58, mpmath.digamma, SPECIAL, [(0.37,), (4.5,)]),
    ("EllipticF", 62, mpmath.ellipf, SPECIAL, [(0.75, 0.3), (1.25, 0.8)]),
    ("EllipticK", 63, mpmath.ellipk, SPECIAL, [(0.3,), (0.8,)]),
    ("EllipticE", 64, mpmath.ellipe, SPECIAL, [(0.3,), (0.8,), (0.75, 0.3), (1.25, 0.8)]),
    ("StruveH", 65, mpmath.struveh, SPECIAL, [(0, 1.25), (1.5, 2.5)], [1]),
    ("StruveL", 66, mpmath.struvel, SPECIAL, [(0, 1.25), (1.5, 2.5)], [1]),
    ("AngerJ", 67, mpmath.angerj, SPECIAL, [(0.5, 1.25), (1.5, 2.5)], [1]),
    ("WeberE", 68, mpmath.webere, SPECIAL, [(0.5, 1.25), (1.5, 2.5)], [1]),
    ("BarnesG", 69, mpmath.barnesg, SPECIAL, [(1.75,), (3.5,)]),
    ("LambertW", 70, mpmath.lambertw, SPECIAL, [(0.37,), (4.5,)]),
    ("WrightOmega", 71, lambda x: mpmath.lambertw(exp(x)), SPECIAL, [(0.37,), (4.5,)]),
    ("WrightBessel", 72, wright_bessel, SPECIAL, [(0.5, 1.5, 0.75), (1.25, 0.5, 2.0)], [2]),
    ("ParabolicCylinderD", 73, mpmath.pcfd, SPECIAL, [(0.75, 1.25), (1.3, 0.5)], [1]),
    ("ParabolicCylinderU", 74, mpmath.pcfu, SPECIAL, [(0.75, 1.25), (1.3, 0.5)], [1]),
    ("ParabolicCylinderV", 75, mpmath.pcfv, SPECIAL, [(0.75, 1.25), (1.3, 0.5)], [1]),
    ("ClausenC", 76, mpmath.clcos, SPECIAL, [(1, 1.25), (2, 1.25), (3, 2.5), (4, 0.5)], [1]),
    ("ClausenS", 77, mpmath.clsin, SPECIAL, [(1, 1.25), (2, 1.25), (3, 2.5), (4, 0.5)], [1]),
    ("Hyperfactorial", 78, mpmath.hyperfac, SPECIAL, [(1.75,), (3.5,)]),
    ("WhittakerM", 79, mpmath.whitm, SPECIAL, [(0.25, 0.4, 1.25), (1.5, 0.3, 2.5)], [2]),
    ("WhittakerW", 80, mpmath.whitw, SPECIAL, [(0.25, 0.4, 1.25), (1.5, 0.3, 2.5)], [2]),
    ("JacobiZeta", 81, jacobi_zeta, SPECIAL, [(0.75, 0.3), (1.25, 0.8)]),
    ("Gamma", 82, mpmath.gammainc, SPECIAL, [(0.75, 1.25), (2.5, 0.5)], [1]),
    ("InverseLambertW", 83, lambda x: x * exp(x), ELEMENTARY, [(0.37,), (-2.5,)]),
    ("InverseErf", 84, mpmath.erfinv, SPECIAL, [(0.37,), (-0.8,)]),
    ("InverseErfc", 85, lambda y: mpmath.erfinv(1 - y), SPECIAL, [(0.37,), (1.8,)]),
    ("InverseErfi", 86, inverse(mpmath.erfi, lambda y: y / 2), SPECIAL, [(0.37,), (-0.8,)]),
    ("SinIntegral", 91, mpmath.si, ELEMENTARY, [(0.37,), (-2.5,)]),
    ("CosIntegral", 92, mpmath.ci, ELEMENTARY, [(0.37,), (2.5,)]),
    ("SinhIntegral", 93, mpmath.shi, ELEMENTARY, [(0.37,), (-2.5,)]),
    ("CoshIntegral", 94, mpmath.chi, ELEMENTARY, [(0.37,), (2.5,)]),
    ("PolyGamma", 95, lambda n, x: mpmath.psi(int(n), x), SPECIAL, [(0, 0.75), (1, 1.25), (3, 2.5)], [1]),
    ("AGM", 96, mpmath.agm, SPECIAL, [(0.75, 2.5), (3.0, 1.25)]),
    ("Erfi", 97, mpmath.erfi, ELEMENTARY, [(0.37,), (-1.5,)]),
    ("Erfc", 98, mpmath.erfc, ELEMENTARY, [(0.37,), (-1.5,)]),
    ("Dawson", 99, lambda x: sqrt(pi) / 2 * exp(-x * x) * mpmath.erfi(x), SPECIAL, [(0.37,), (-2.5,)]),
    ("PolyLogarithm2", 100, lambda x: mpmath.polylog(2, x), ELEMENTARY, [(0.37,), (-2.5,)]),
    ("LogSign", 101, sign_pair(lambda x: log(1 + x)), ELEMENTARY, [(0.37,), (-2.5,)]),
    ("ExpSign", 102, sign_pair(lambda x: exp(x) - 1), ELEMENTARY, [(0.37,), (-2.5,)]),
    ("FresnelC", 103, fresnel(mpmath.cos), ELEMENTARY, [(0.37,), (-2.5,)]),
    ("FresnelS", 104, fresnel(mpmath.sin), ELEMENTARY, [(0.37,), (-2.5,)]),
    ("ExpIntegral", 105, mpmath.ei, ELEMENTARY, [(0.37,), (-2.5,)]),
    ("ExpIntegral", 105, mpmath.expint, SPECIAL, [(2.5, 1.25), (4, 0.75)], [1]),
    ("LogIntegral", 106, mpmath.li, ELEMENTARY, [(0.37,), (2.5,)]),
    ("AiryAi", 114, mpmath.airyai, SPECIAL, [(0.37,), (-2.5,)]),
    ("AiryBi", 116, mpmath.airybi, SPECIAL, [(0.37,), (-2.5,)]),
    ("AiryGi", 118, mpmath.scorergi, SPECIAL, [(0.37,), (-2.5,)]),
    ("AiryHi", 120, mpmath.scorerhi, SPECIAL, [(0.37,), (-2.5,)]),
    ("EllipticPI", 122, mpmath.ellippi, SPECIAL, [(0.4, 0.3), (-0.5, 0.8), (0.4, 0.75, 0.3), (-0.5, 1.25, 0.8)]),
    ("EllipticRF", 126, mpmath.elliprf, SPECIAL, [(0.75, 1.5, 2.5), (3.0, 0.5, 1.0)]),
    ("EllipticRG", 127, mpmath.elliprg, COARSE, [(0.75, 1.5, 2.5), (3.0, 0.5, 1.0)]),
    ("EllipticRK", 129, lambda x, y: 1 / mpmath.agm(sqrt(x), sqrt(y)), SPECIAL, [(0.75, 2.5), (3.0, 1.25)]),
    ("HypergeometricU", 131, mpmath.hyperu, SPECIAL, [(0.75, 1.3, 1.25), (1.5, 0.4, 2.5)], [2]),
    ("Hypergeometric0F1", 132, mpmath.hyp0f1, SPECIAL, [(0.75, 1.25), (2.5, -0.75)], [1]),
    ("Hypergeometric1F1", 133, mpmath.hyp1f1, SPECIAL, [(0.75, 1.3, 1.25), (1.5, 0.4, -0.5)], [2]),
    ("Hypergeometric2F1", 134, mpmath.hyp2f1, SPECIAL, [(0.75, 1.3, 2.25, 0.4), (1.5, 0.4, 0.75, -0.5)], [3]),
    ("InverseCoshIntegral", 137, inverse(mpmath.chi, lambda y: 1 + y / 4), SPECIAL, [(0.37,), (2.5,)]),
    ("InverseGamma", 138, inverse(mpmath.gamma, lambda y: 1 / (y + 0.5)), SPECIAL, [(1.75,), (9.0,)]),
    ("InverseLnErfi", 139, inverse(ln_erfi, lambda y: sqrt(1 + max(y, 0))), SPECIAL, [(0.37,), (2.5,)]),
    ("InverseSinhIntegral", 140, inverse(mpmath.shi, lambda y: y / (1 + abs(y) / 4)), SPECIAL, [(0.37,), (2.5,)]),
    ("JacobianAmp", 141, amplitude, SPECIAL, [(0.75, 0.3), (1.25, 0.8)]),
    ("JacobianCn", 142, lambda u, m: mpmath.ellipfun("cn", u, m=m), SPECIAL, [(0.75, 0.3), (1.25, 0.8)]),
    ("JacobianDn", 143, lambda u, m: mpmath.ellipfun("dn", u, m=m), SPECIAL, [(0.75, 0.3), (1.25, 0.8)]),
    ("JacobianSn", 144, lambda u, m: mpmath.ellipfun("sn", u, m=m), SPECIAL, [(0.75, 0.3), (1.25, 0.8)]),
    ("LnErfi", 149, ln_erfi, SPECIAL, [(0.37,), (2.5,)]),
    ("LnBarnesG", 150, lambda x: log(mpmath.barnesg(x)), SPECIAL, [(1.75,), (3.5,)]),
    ("GoodwinStaton", 158, lambda x: mpmath.quad(lambda t: exp(-t * t) / (t + x), [0, 1, 4, inf]), SPECIAL,
     [(0.37,), (2.5,)]),
    ("HurwitzZeta", 159, mpmath.zeta, SPECIAL, [(2.5, 0.75), (1.5, 3.25)], [1]),
    ("VoigtFunK", 162, lambda x, y: faddeeva(x, y).real, SPECIAL, [(0.75, 0.4), (-1.5, 2.0)]),
    ("VoigtFunL", 163, lambda x, y: faddeeva(x, y).imag, SPECIAL, [(0.75, 0.4), (-1.5, 2.0)]),
    ("PolyLog", 168, lambda s, z: mpmath.polylog(s, z).real, SPECIAL, [(2, 0.4), (2.5, 0.3), (3, -0.75)], [1]),
    ("BoseEinstein", 169, lambda s, x: mpmath.polylog(s + 1, exp(x)).real, SPECIAL, [(1.5, -0.75), (2, -1.5)], [1]),
    ("FermiDirac", 170, lambda s, x: -mpmath.polylog(s + 1, -exp(x)).real, SPECIAL, [(1.5, -0.75), (2, 0.5)], [1]),
    ("Glasser", 171, lambda x: mpmath.quad(lambda t: mpmath.sin(t * mpmath.sin(t)), [0, x]), ELEMENTARY,
     [(0.37,), (2.5,)]),
]


def slope(f, args, position):
    def along(x):
        return mpmath.re(f(*[x if i == position else a for i, a in enumerate(args)]))

    # Central differences with two extrapolations: the step's error falls to its sixth power.
    x, values = args[position], []
    for h in (mpf("1e-6"), mpf("2e-6"), mpf("4e-6")):
        values.append((along(x + h) - along(x - h)) / (2 * h))
    first = [(4 * values[i] - values[i + 1]) / 3 for i in range(2)]
    return (16 * first[0] - first[1]) / 15


def main():
    lines = ["# kind, code, position, arguments, partial derivative, ulps"]
    for row in TABLE:
        name, code, f, tolerance, points = row[:5]
        for point in points:
            args = [mpf(a) for a in point]
            for position in row[5] if len(row) > 5 else range(len(args)):
                value = slope(f, args, position)
                ulps = int(tolerance * mpf(2) ** 53)
                lines.append(line(name, (code, position, *point), value, ulps))
        print(name, file=sys.stderr)
    save("sym/diff", lines)


main()
