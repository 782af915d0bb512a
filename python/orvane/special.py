# SPDX-License-Identifier: Apache-2.0
"""Special functions over arrays.

Where SciPy has the function, name and order of the arguments are SciPy's. Every function takes numbers or anything that
NumPy makes an array of, broadcasts its arguments, and gives a ``float`` for numbers alone, otherwise an array; ``out``
takes the result. Angles are in radians, elliptic functions take the parameter m = k^2. A domain error is NaN, a pole an
infinity. Functions of one and two arguments run over the whole array inside the library.

>>> from orvane import special
>>> special.gamma(5.0)
24.0
>>> special.jv(0, [0.0, 1.0, 2.0]).round(6)
array([1.      , 0.765198, 0.223891])
"""
from __future__ import annotations

from typing import Any, Callable

import numpy as np
from numpy.typing import ArrayLike

from ._check import Floats, floats, integer
from ._core import ffi, lib
from ._ufunc import EXAMPLES, Function, _by_one, _by_two, _export, _Kernel, _make, _own, _pointer

__test__ = EXAMPLES


# Gamma and relatives.
gamma = _make("gamma", "gamma", "x", "Gamma function.", 81, example="round(special.gamma(0.5) ** 2, 12)", value="3.14159265359")
gammaln = _make("gammaln", "lngamma", "x", "log |gamma(x)|.", 117, example="special.gammaln(1.0)", value="0.0")
gammainv = _make("gammainv", "invGamma", "y", "One x with gamma(x) = y.", 94)
digamma = _make("digamma", "digamma", "x", "Digamma function psi(x).", 57, example="round(special.digamma(1.0), 12)",
                value="-0.577215664902")
psi = digamma
polygamma = _make("polygamma", "polyGamma", "n x", "The n-th derivative of psi at x.", 129,
                  example="round(special.polygamma(1, 1.0), 12)", value="1.644934066848")
beta = _make("beta", "beta", "a b", "Beta function.", 31, example="special.beta(2.0, 3.0)", value="0.08333333333333333")
hyperfactorial = _make("hyperfactorial", "hyperfactorial", "x", "1^1 2^2 ... x^x, continued.", 86)
barnesg = _make("barnesg", "barnesG", "x", "Barnes' G, G(x+1) = gamma(x) G(x).", 46)
barnesgln = _make("barnesgln", "lnBarnesG", "x", "log of Barnes' G.", 115)


def _whole(a: float) -> bool:
    return a > 0 and abs(a - round(a)) <= 1e-15


def _regularised(direct: int, other: int) -> _Kernel:
    # The exports exchange their roles at positive integers a: there the other one is what is asked for.
    def kernel(arguments: list[Floats], out: Floats) -> None:
        a, x = np.broadcast_arrays(*arguments)
        whole = (a > 0) & (np.abs(a - np.round(a)) <= 1e-15)
        for mask, code in ((whole, other), (~whole, direct)):
            if mask.any():
                part = np.empty(int(mask.sum()))
                _by_two(code, False)([np.ascontiguousarray(a[mask]), np.ascontiguousarray(x[mask])], part)
                out[mask] = part

    return kernel


gammainc = _own(
    "gammainc", "a x", "Regularised lower incomplete gamma function P(a, x).",
    lambda a, x: (_export("RUpperIncompleteGamma") if _whole(a) else _export("RLowerIncompleteGamma"))(a, x),
    _regularised(134, 135), "special.gammainc(1.0, 1.0)", "0.6321205588285577")
gammaincc = _own(
    "gammaincc", "a x", "Regularised upper incomplete gamma function Q(a, x).",
    lambda a, x: (_export("RLowerIncompleteGamma") if _whole(a) else _export("RUpperIncompleteGamma"))(a, x),
    _regularised(135, 134), "special.gammaincc(1.0, 1.0)", "0.36787944117144233")
gamma_upper = _make("gamma_upper", "igamma", "a x", "Upper incomplete gamma function, not regularised.", 82)


def _betainc(a: float, b: float, x: float) -> float:
    whole: float = lib.math_beta(a, b)
    return float(lib.math_ibeta(x, a, b)) / whole if whole else float("nan")


betainc = _own("betainc", "a b x", "Regularised incomplete beta function I_x(a, b).", _betainc,
               example="round(special.betainc(2.0, 3.0, 0.5), 12)", value="0.6875")
betaincinv = _own("betaincinv", "a b y", "x with I_x(a, b) = y.", lambda a, b, y: float(lib.math_InverseBeta(y, a, b)))

# Error functions.
erf = _make("erf", "erf", "x", "Error function.", 72, example="special.erf(1.0)", value="0.8427007929497149")
erfc = _make("erfc", "erfc", "x", "1 - erf(x).", 73)
erfi = _make("erfi", "erfi", "x", "Imaginary error function -i erf(ix).", 74)
erfinv = _make("erfinv", "invErf", "y", "x with erf(x) = y.", 96)
erfcinv = _make("erfcinv", "invErfc", "y", "x with erfc(x) = y; a y near 0 has no more digits than 1 - y.", 97)
erfiinv = _make("erfiinv", "invErfi", "y", "x with erfi(x) = y.", 98)
dawsn = _make("dawsn", "drawson", "x", "Dawson's integral.", 47)
voigt_k = _make("voigt_k", "voigtFunK", "x y", "Re w(x + iy), the Voigt function.", 158)
voigt_l = _make("voigt_l", "voigtFunL", "x y", "Im w(x + iy).", 159)


def voigt_profile(x: ArrayLike, sigma: ArrayLike, gamma: ArrayLike) -> Any:
    """Voigt profile: a normal law of deviation sigma convolved with a Cauchy law of half-width gamma.

    Parameters
    ----------
    x, sigma, gamma : array_like

    Returns
    -------
    float or ndarray

    Examples
    --------
    >>> from orvane import special
    >>> round(special.voigt_profile(0.0, 1.0, 1.0), 10)
    0.2087092805
    """
    width = np.asarray(sigma, np.float64) * np.sqrt(2.0)
    value = voigt_k(np.asarray(x) / width, np.asarray(gamma) / width) / (width * np.sqrt(np.pi))
    return float(value) if np.ndim(value) == 0 else value


# Bessel functions and relatives.
jv = _make("jv", "BesselJ", "v x", "Bessel function of the first kind.", 28, example="round(special.jv(0, 1.0), 12)",
           value="0.765197686558")
yv = _make("yv", "BesselY", "v x", "Bessel function of the second kind.", 30)
iv = _make("iv", "BesselI", "v x", "Modified Bessel function of the first kind.", 27)
kv = _make("kv", "BesselK", "v x", "Modified Bessel function of the second kind.", 29)
spherical_jn = _make("spherical_jn", "SphericalBesselJ", "n x", "Spherical Bessel function of the first kind.", 143)
spherical_yn = _make("spherical_yn", "SphericalBesselY", "n x", "Spherical Bessel function of the second kind.", 144)
struve = _make("struve", "StruveH", "v x", "Struve function H.", 148)
modstruve = _make("modstruve", "StruveL", "v x", "Modified Struve function L.", 149)
anger_j = _make("anger_j", "angerJ", "v x", "Anger's function.", 17)
weber_e = _make("weber_e", "weberE", "v x", "Weber's function.", 161)
airy_ai = _make("airy_ai", "AiryAi", "x", "Airy function Ai.", 9)
airy_aip = _make("airy_aip", "DiffAiryAi", "x", "Derivative of Ai.", 51)
airy_bi = _make("airy_bi", "AiryBi", "x", "Airy function Bi.", 12)
airy_bip = _make("airy_bip", "DiffAiryBi", "x", "Derivative of Bi.", 53)
scorer_gi = _make("scorer_gi", "AiryGi", "x", "Scorer's function Gi.", 14)
scorer_hi = _make("scorer_hi", "AiryHi", "x", "Scorer's function Hi.", 16)
pbu = _make("pbu", "ParabolicCylinderU", "a x", "Parabolic cylinder function U.", 126)
pbd = _make("pbd", "ParabolicCylinderD", "v x", "Parabolic cylinder function D.", 125)
pbv = _make("pbv", "ParabolicCylinderV", "a x", "Parabolic cylinder function V.", 127)


def airy(x: ArrayLike) -> tuple[Any, Any, Any, Any]:
    """Airy functions and their derivatives.

    Parameters
    ----------
    x : array_like

    Returns
    -------
    Ai, Aip, Bi, Bip : float or ndarray

    Examples
    --------
    >>> from orvane import special
    >>> [round(v, 9) for v in special.airy(0.0)]
    [0.355028054, -0.258819404, 0.614926627, 0.448288357]
    """
    return airy_ai(x), airy_aip(x), airy_bi(x), airy_bip(x)


def _zeros(count: int, names: tuple[str, str], values: tuple[Function, Function]) -> tuple[Floats, ...]:
    n = np.arange(1.0, integer(count, "nt", 0) + 1)
    at = [Function(name, "n", _export(name))(n) for name in names]
    return at[0], at[1], values[0](at[1]), values[1](at[0])


def ai_zeros(nt: int) -> tuple[Floats, ...]:
    """The first zeros of Ai and Ai', Ai at the latter, Ai' at the former.

    Examples
    --------
    >>> from orvane import special
    >>> special.ai_zeros(2)[0].round(8)
    array([-2.33810741, -4.08794944])
    """
    return _zeros(nt, ("AiryAiZero", "DiffAiryAiZero"), (airy_ai, airy_aip))


def bi_zeros(nt: int) -> tuple[Floats, ...]:
    """The first negative zeros of Bi and Bi', Bi at the latter, Bi' at the former.

    Examples
    --------
    >>> from orvane import special
    >>> special.bi_zeros(1)[0].round(8)
    array([-1.17371322])
    """
    return _zeros(nt, ("AiryBiZero", "DiffAiryBiZero"), (airy_bi, airy_bip))


# Elliptic integrals and functions.
def _at_one(function: float, m: float) -> float:
    return float("inf") if m == 1.0 else function


def _ellipk_kernel(arguments: list[Floats], out: Floats) -> None:
    _by_one(61)(arguments, out)
    out[arguments[0] == 1.0] = np.inf


ellipk = _own("ellipk", "m", "Complete elliptic integral K(m); infinite at m = 1.",
              lambda m: _at_one(lib.math_ellipticK(m), m), _ellipk_kernel, "special.ellipk(0.0)", "1.5707963267948966")
ellipkm1 = _own("ellipkm1", "p", "K(1 - p), exact for small p.", lambda p: _ellipkm1(p), _by_one(62))


def _ellipkm1(p: float) -> float:
    out = np.empty(1)
    _by_one(62)([np.array([float(p)])], out)
    return float(out[0])


ellipe = _make("ellipe", "ellipticE", "m", "Complete elliptic integral E(m).", 60)
ellippi = _make("ellippi", "ellipticPI2", "n m", "Complete elliptic integral of the third kind.", 65)
ellipkinc = _make("ellipkinc", "ellipticF", "phi m", "Incomplete elliptic integral F(phi, m).", 64)
ellipeinc = _make("ellipeinc", "ellipticE2", "phi m", "Incomplete elliptic integral E(phi, m).", 63)
ellippiinc = _make("ellippiinc", "ellipticPI", "n phi m", "Incomplete elliptic integral of the third kind.")
elliprc = _make("elliprc", "ellipticRC", "x y", "Carlson's RC.", 66)
elliprf = _make("elliprf", "ellipticRF", "x y z", "Carlson's RF.", example="special.elliprf(1.0, 1.0, 1.0)", value="1.0")
elliprd = _make("elliprd", "ellipticRD", "x y z", "Carlson's RD.")
elliprg = _make("elliprg", "ellipticRG", "x y z", "Carlson's RG.")
elliprj = _make("elliprj", "ellipticRJ", "x y z p", "Carlson's RJ.")
heuman_lambda = _make("heuman_lambda", "heumannLambda", "phi m", "Heuman's lambda function.", 84)
jacobi_zeta = _make("jacobi_zeta", "jacobiZeta", "phi m", "Jacobi's zeta function.", 112)
cel = _make("cel", "bulirschCel", "kc p a b", "Bulirsch's complete integral.")
theta1 = _make("theta1", "jacobiTheta1", "z q", "Theta function 1.", 108)
theta2 = _make("theta2", "jacobiTheta2", "z q", "Theta function 2.", 109)
theta3 = _make("theta3", "jacobiTheta3", "z q", "Theta function 3.", 110)
theta4 = _make("theta4", "jacobiTheta4", "z q", "Theta function 4.", 111)
agm = _make("agm", "AGM", "a b", "Arithmetic-geometric mean.", 8, example="round(special.agm(24.0, 6.0), 12)",
            value="13.458171481726")
_am = _make("am", "jacobiEllipticAm", "u m", "", 104)
_sn = _make("sn", "jacobiEllipticSn", "u m", "", 107)
_cn = _make("cn", "jacobiEllipticCn", "u m", "", 105)
_dn = _make("dn", "jacobiEllipticDn", "u m", "", 106)


def ellipj(u: ArrayLike, m: ArrayLike) -> tuple[Any, Any, Any, Any]:
    """Jacobi's elliptic functions.

    Parameters
    ----------
    u : array_like
        Argument.
    m : array_like
        Parameter.

    Returns
    -------
    sn, cn, dn, ph : float or ndarray
        ph is the amplitude.

    Examples
    --------
    >>> from orvane import special
    >>> special.ellipj(0.0, 0.5)
    (0.0, 1.0, 1.0, 0.0)
    """
    return _sn(u, m), _cn(u, m), _dn(u, m), _am(u, m)


# Hypergeometric functions and relatives.
hyp0f1 = _make("hyp0f1", "Hypergeometric0F1", "v z", "Confluent limit function 0F1(; v; z).", 87)
hyp1f1 = _make("hyp1f1", "Hypergeometric1F1", "a b z", "Kummer's function.", example="special.hyp1f1(1.0, 1.0, 0.0)",
               value="1.0")
hyp2f1 = _make("hyp2f1", "Hypergeometric2F1", "a b c z", "Gauss's function, for |z| < 1.")
hyperu = _make("hyperu", "hypergeometricU", "a b x", "Tricomi's function.")
whittaker_m = _make("whittaker_m", "whittakerM", "k m x", "Whittaker's function M.")
whittaker_w = _make("whittaker_w", "whittakerW", "k m x", "Whittaker's function W.")
wright_bessel = _make("wright_bessel", "wrightBessel", "a b x", "Wright's generalised Bessel function.")
mittag_leffler = _make("mittag_leffler", "mittagLeffler", "a b x", "Mittag-Leffler function.")


def hyper(a: ArrayLike, b: ArrayLike, z: float) -> float:
    """Generalised hypergeometric series pFq(a; b; z).

    Parameters
    ----------
    a, b : array_like
        Upper and lower parameters.
    z : float

    Returns
    -------
    float

    Examples
    --------
    >>> from orvane import special
    >>> round(special.hyper([1.0], [], 0.5), 12)
    2.0
    """
    from ._check import vector

    above, below = vector(a, "a"), vector(b, "b")
    return float(lib.math_Hypergeometric_mFn(_pointer(above), above.size, _pointer(below), below.size, z))


# Zeta functions and polylogarithms.
_zeta1 = _make("zeta", "zeta", "x", "", 160)
_zeta2 = _make("zeta", "hurwitzZeta", "x q", "", 85)


def zeta(x: ArrayLike, q: ArrayLike | None = None) -> Any:
    """Riemann's zeta function, or Hurwitz's with the shift q.

    Parameters
    ----------
    x : array_like
    q : array_like, optional

    Returns
    -------
    float or ndarray

    Examples
    --------
    >>> from orvane import special
    >>> round(special.zeta(2.0) * 6, 12)
    9.869604401089
    """
    return _zeta1(x) if q is None else _zeta2(x, q)


zetainv = _make("zetainv", "invZeta", "y", "s with zeta(s) = y.", 102)
dirichlet_eta = _make("dirichlet_eta", "dirichletEta", "s", "Dirichlet's eta.", 59)
dirichlet_beta = _make("dirichlet_beta", "dirichletBeta", "s", "Dirichlet's beta.", 58)
polylog = _make("polylog", "polyLog", "s z", "Polylogarithm Li_s(z).", 130)
fermi_dirac = _make("fermi_dirac", "fermiDirac", "s x", "Fermi-Dirac integral.", 162)
bose_einstein = _make("bose_einstein", "boseEinstein", "s x", "Bose-Einstein integral.", 32)
clausen = _make("clausen", "Clausen", "n x", "Clausen function.", 34)
spence = _own("spence", "z", "Spence's function, the dilogarithm of 1 - z.",
              lambda z: float(lib.math_polyLogarithm2(1.0 - z)),
              lambda arguments, out: _by_one(131)([1.0 - arguments[0]], out))

# Integrals of elementary functions.
expi = _make("expi", "expIntegral", "x", "Exponential integral Ei.", 75)
exp1 = _own("exp1", "x", "Exponential integral E1, for x > 0.",
            lambda x: -float(lib.math_expIntegral(-x)) if x >= 0 else float("nan"),
            lambda arguments, out: _exp1(arguments[0], out), "round(special.exp1(1.0), 12)", "0.219383934396")


def _exp1(x: Floats, out: Floats) -> None:
    _by_one(75)([-x], out)
    np.negative(out, out=out)
    out[x < 0] = np.nan


logint = _make("logint", "logIntegral", "x", "Logarithmic integral li.", 120)
goodwin_staton = _make("goodwin_staton", "goodwinStaton", "x", "Goodwin-Staton integral.", 83)
_si = _make("si", "sineIntegral", "x", "", 140)
_ci = _make("ci", "cosineIntegral", "x", "", 41)
_shi = _make("shi", "sinhIntegral", "x", "", 142)
_chi = _make("chi", "coshIntegral", "x", "", 40)
_fresnel_s = _make("fresnel_s", "fresnelS", "x", "", 80)
_fresnel_c = _make("fresnel_c", "fresnelC", "x", "", 79)


def sici(x: ArrayLike) -> tuple[Any, Any]:
    """Sine and cosine integral.

    Examples
    --------
    >>> from orvane import special
    >>> [round(v, 9) for v in special.sici(1.0)]
    [0.94608307, 0.337403923]
    """
    return _si(x), _ci(x)


def shichi(x: ArrayLike) -> tuple[Any, Any]:
    """Hyperbolic sine and cosine integral.

    Examples
    --------
    >>> from orvane import special
    >>> [round(v, 9) for v in special.shichi(1.0)]
    [1.057250875, 0.837866941]
    """
    return _shi(x), _chi(x)


def fresnel(x: ArrayLike) -> tuple[Any, Any]:
    """Fresnel integrals S and C.

    Examples
    --------
    >>> from orvane import special
    >>> [round(v, 9) for v in special.fresnel(1.0)]
    [0.438259147, 0.7798934]
    """
    return _fresnel_s(x), _fresnel_c(x)


# Lambert's W and elementary functions.
lambertw = _make("lambertw", "lambertW", "z", "Real principal branch of w exp(w) = z; z up to about 1e14.", 113,
                 example="round(special.lambertw(1.0), 12)", value="0.56714329041")
wrightomega = _make("wrightomega", "wrightOmega", "z", "w with log(w) + w = z.", 165)


# Polynomials and numbers.
def _poly(code: int, raw: Callable[..., float]) -> _Kernel:
    def kernel(arguments: list[Floats], out: Floats) -> None:
        n, x = arguments
        orders = n.astype(np.int32)
        if (orders != n).any():
            raise ValueError(f"n: must be integers, not {n[orders != n][0]}")
        lib.apiFun_calcPoly(
            _pointer(x), x.size, ffi.from_buffer("int32_t[]", orders), orders.size, _pointer(out), code
        )
        if code == 161:
            out[np.broadcast_to(orders == 0, out.shape)] = 1.0  # the export has 0 there

    return kernel


def _polynomial(name: str, export: str, code: int, summary: str, example: str, value: str) -> Function:
    raw = _export(export)

    def scalar(n: float, x: float) -> float:
        order = int(n)
        if order != n:
            raise ValueError(f"{name}: n: must be an integer, not {n}")
        return 1.0 if order == 0 else raw(order, x)

    return _own(name, "n x", summary, scalar, _poly(code, raw), example, value)


eval_legendre = _polynomial("eval_legendre", "polyLegendre", 161, "Legendre polynomial P_n(x).",
                            "special.eval_legendre(2, 0.5)", "-0.125")
eval_laguerre = _polynomial("eval_laguerre", "polyLaguerre", 179, "Laguerre polynomial L_n(x).",
                            "special.eval_laguerre(1, 0.25)", "0.75")
eval_hermite = _polynomial("eval_hermite", "polyHermite", 178, "Hermite polynomial H_n(x), leading coefficient 2^n.",
                           "special.eval_hermite(3, 1.0)", "-4.0")
eval_bernoulli = _polynomial("eval_bernoulli", "polyByBernoulli", 171, "Bernoulli polynomial B_n(x).",
                             "special.eval_bernoulli(1, 1.0)", "0.5")


def _expn_raw(n: float, x: float) -> float:
    return float(exp1(float(x))) if n == 1 else float(lib.math_expIntegralP(n, x))


def _expn_kernel(arguments: list[Floats], out: Floats) -> None:
    n, x = np.broadcast_arrays(*arguments)
    _by_two(76, False)([np.ascontiguousarray(n), np.ascontiguousarray(x)], out)
    one = n == 1
    if one.any():
        out[one] = exp1(np.ascontiguousarray(x[one]))


expn = _own("expn", "n x", "Generalised exponential integral E_n(x).", _expn_raw, _expn_kernel,
            "round(special.expn(2, 1.0), 12)", "0.148495506776")


def bernoulli(n: int) -> Floats:
    """Bernoulli numbers B_0 to B_n.

    Parameters
    ----------
    n : int
        0 to 259.

    Returns
    -------
    ndarray

    Examples
    --------
    >>> from orvane import special
    >>> special.bernoulli(4).round(6)
    array([ 1.      , -0.5     ,  0.166667,  0.      , -0.033333])
    """
    out = np.empty(integer(n, "n", 0, 259) + 1)
    lib.math_bernoulli(out.size, _pointer(out))
    return out


# Further functions of the library, under names of their own.
clausen_c = _make("clausen_c", "ClausenC", "n x", "Sum of cos(kx)/k^n.", 35)
clausen_s = _make("clausen_s", "ClausenS", "n x", "Sum of sin(kx)/k^n.", 36)
scorer_gip = _make("scorer_gip", "DiffAiryGi", "x", "Derivative of Gi.", 55)
scorer_hip = _make("scorer_hip", "DiffAiryHi", "x", "Derivative of Hi.", 56)
bulirsch_el1 = _make("bulirsch_el1", "bulirschEl1", "x kc", "Bulirsch's incomplete integral el1.", 69)
bulirsch_el2 = _make("bulirsch_el2", "bulirschEl2", "x kc a b", "Bulirsch's incomplete integral el2.")
bulirsch_el3 = _make("bulirsch_el3", "bulirschEl3", "x kc p", "Bulirsch's incomplete integral el3.")
elliprk = _make("elliprk", "ellipticRK", "x y", "1/agm(sqrt(x), sqrt(y)).", 68)
ellipre = _make("ellipre", "ellipticRE", "x y", "4/pi RG(x, y, 0).", 67)
elliprm = _make("elliprm", "ellipticRM", "x y p", "4/(3 pi) RJ(x, y, 0, p).")
log_sign = _make("log_sign", "logSign", "x", "sign(x) log(1 + |x|).", 121)
exp_sign = _make("exp_sign", "expSign", "x", "sign(x) (exp(|x|) - 1).", 77)
shiinv = _make("shiinv", "invSinhIntegral", "y", "x with Shi(x) = y.", 101)
chiinv = _make("chiinv", "invCoshIntegral", "y", "x > 0 with Chi(x) = y.", 95)
erfiln = _make("erfiln", "lnErfi", "x", "log(erfi(x)).", 116)
erfilninv = _make("erfilninv", "invLnErfi", "y", "x > 0 with log(erfi(x)) = y.", 100)
lambertw_inv = _make("lambertw_inv", "invLambertW", "x", "x exp(x).", 99)
voigt_kx = _make("voigt_kx", "voigtDiffKX", "x y", "Derivative of voigt_k by x.", 154)
voigt_ky = _make("voigt_ky", "voigtDiffKY", "x y", "Derivative of voigt_k by y.", 155)
voigt_lx = _make("voigt_lx", "voigtDiffLX", "x y", "Derivative of voigt_l by x.", 156)
voigt_ly = _make("voigt_ly", "voigtDiffLY", "x y", "Derivative of voigt_l by y.", 157)
sec = _make("sec", "sec", "x", "1/cos(x).", 139)
csc = _make("csc", "csc", "x", "1/sin(x).", 44)
cot = _make("cot", "cot", "x", "1/tan(x).", 42)
asec = _make("asec", "asec", "x", "acos(1/x).", 19)
acsc = _make("acsc", "acsc", "x", "asin(1/x).", 5)
acot = _make("acot", "acot", "x", "atan(1/x).", 3)
sech = _make("sech", "sech", "x", "1/cosh(x).", 128)
csch = _make("csch", "csch", "x", "1/sinh(x).", 45)
coth = _make("coth", "coth", "x", "1/tanh(x).")
asech = _make("asech", "asech", "x", "acosh(1/x).", 20)
acsch = _make("acsch", "acsch", "x", "asinh(1/x).", 6)
acoth = _make("acoth", "acoth", "x", "atanh(1/x).")


def erfz(z: Any) -> Any:
    """Complex error function.

    Examples
    --------
    >>> from orvane import special
    >>> abs(special.erfz(1j) - 1j * special.erfi(1.0)) < 1e-14
    True
    """
    values = np.asarray(z, np.complex128)
    out, re, im = np.empty(values.shape, np.complex128), ffi.new("double*"), ffi.new("double*")
    for place, value in enumerate(values.ravel().tolist()):
        lib.math_erfz(value.real, value.imag, re, im)
        out.flat[place] = complex(re[0], im[0])
    return complex(out) if out.ndim == 0 else out


def polyval(c: ArrayLike, x: ArrayLike) -> Any:
    """Polynomial with ascending coefficients.

    Examples
    --------
    >>> from orvane import special
    >>> special.polyval([1.0, 0.0, 2.0], [0.0, 3.0])
    array([ 1., 19.])
    """
    from ._check import vector

    coefficients, points = vector(c, "c", least=1), floats(x, "x")
    out = np.empty(points.shape)
    flat, target = _pointer(points.reshape(-1)), _pointer(out.reshape(-1))
    lib.math_polyValue(_pointer(coefficients), flat, target, coefficients.size, points.size)
    return float(out) if out.ndim == 0 else out


__all__ = sorted(name for name in globals() if not name.startswith("_") and name not in (
    "annotations", "Any", "Callable", "ArrayLike", "EXAMPLES", "Floats", "floats", "integer", "ffi", "lib", "np"))
