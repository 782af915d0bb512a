/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Special functions of doubles.
 *
 * There is no failure channel beside the value: outside its domain a function gives the quiet NaN, at a pole an
 * infinity, where a result is known to be huge an infinity or 1e300. A search that reaches its limit of rounds gives
 * the best value that it has. The functions keep no state and may be called from any thread.
 */
#ifndef ORVANE_SPECIAL_H
#define ORVANE_SPECIAL_H

#include <orvane/export.h>

/* Trigonometric and hyperbolic functions. Angles are radians. From |x| = 1e22 on an angle m 2^e (1/2 <= m < 1) is
 * replaced by m (2^e mod 2 pi), which is bounded but not x mod 2 pi; from 2^1023 on it is used as it is. */

/** Sine of x. */
ORVANE_API double math_sin(double x);

/** Cosine of x. */
ORVANE_API double math_cos(double x);

/** Tangent of x. */
ORVANE_API double math_tan(double x);

/** 1/sin(x); an infinity at 0. */
ORVANE_API double math_csc(double x);

/** 1/cos(x). */
ORVANE_API double math_sec(double x);

/** 1/tan(x); an infinity at 0. */
ORVANE_API double math_cot(double x);

/** asin(1/x); NaN for |x| < 1. */
ORVANE_API double math_acsc(double x);

/** acos(1/x); NaN for |x| < 1. */
ORVANE_API double math_asec(double x);

/** atan(1/x), odd, between -pi/2 and pi/2. */
ORVANE_API double math_acot(double x);

/** 1/sinh(x). */
ORVANE_API double math_csch(double x);

/** 1/cosh(x). */
ORVANE_API double math_sech(double x);

/** 1/tanh(x). */
ORVANE_API double math_coth(double x);

/** asinh(1/x). */
ORVANE_API double math_acsch(double x);

/** acosh(1/x); NaN outside (0, 1]. */
ORVANE_API double math_asech(double x);

/** Inverse hyperbolic sine. */
ORVANE_API double math_asinh(double x);

/** Inverse hyperbolic cosine; NaN for x < 1. */
ORVANE_API double math_acosh(double x);

/** Inverse hyperbolic tangent; NaN for |x| > 1, an infinity at 1 and -1. */
ORVANE_API double math_atanh(double x);

/** log((x+1)/(x-1))/2; NaN for |x| < 1, +infinity at 1. */
ORVANE_API double math_acoth(double x);

/* Logarithms, powers, signs and steps. They differ on purpose in what 0 and NaN give. */

/** Logarithm to base 10; NaN for x < 0, -infinity at 0. */
ORVANE_API double math_log10(double x);

/** Logarithm to base 2; NaN for x < 0, -infinity at 0. */
ORVANE_API double math_log2(double x);

/** base to the power of exponent; NaN for a negative base with a broken exponent. */
ORVANE_API double math_pow(double base, double exponent);

/** 1 for x > 0, -1 for x < 0, otherwise 0 (also for NaN). */
ORVANE_API double math_sign(double x);

/** -1 for x < 0, otherwise 1 (also for 0 and NaN). */
ORVANE_API double math_stepFun(double x);

/** sign(x) log(1+|x|), the odd logarithm. */
ORVANE_API double math_logSign(double x);

/** sign(x) (exp(|x|)-1), the inverse of math_logSign. */
ORVANE_API double math_expSign(double x);

/** a when c < 0, otherwise b (also for c = 0 and c = NaN). */
ORVANE_API double math_ConSelect(double c, double a, double b);

/* Array helpers. */

/**
 * Polynomial values out[i] = c[0] + c[1] x + c[2] x^2 + ... at x = xs[i], added up in this order with a running
 * power.
 *
 * @param coefficients      [coefficientCount] in ascending order of power
 * @param xs                [pointCount] points
 * @param out               [pointCount] out; may be xs itself
 * @param coefficientCount  at least 1
 * @param pointCount        0 or less does nothing
 */
ORVANE_API void math_polyValue(const double* coefficients, const double* xs, double* out, int32_t coefficientCount,
                               int32_t pointCount);

/**
 * Asymmetric raised-sine pulse: amplitude (1 + cos(pi (x-centre)/width))/2 within the width of its side, 0 outside.
 *
 * @param amplitude   height of the peak
 * @param centre      place of the peak
 * @param leftWidth   half width for x < centre
 * @param rightWidth  half width for x >= centre
 * @param xs          [count] points
 * @param out         [count] out; may be xs itself
 * @param count       0 or less does nothing
 */
ORVANE_API void math_calcUnsymSin(double amplitude, double centre, double leftWidth, double rightWidth,
                                  const double* xs, double* out, int32_t count);

/* Gamma function and relatives. */

/**
 * Gamma function; -infinity at every negative integer (within 2.2e-16), an infinity at 0, overflow from 171.63 on.
 */
ORVANE_API double math_gamma(double x);

/** log |gamma(x)|; +infinity at the poles. */
ORVANE_API double math_lngamma(double x);

/**
 * One x with gamma(x) = y: in (0, 1.47) for y >= 0.886, in (-6, -5.66) down to 0.0093, in (-10, -9.7) for smaller
 * positive y; in (-1, 0) for y < -3.55 and in (-5, -4.65) up to -0.0528. NaN from there to 2.2e-16.
 */
ORVANE_API double math_invGamma(double y);

/**
 * Digamma function psi(x) = gamma'(x)/gamma(x); -x for 1e-200 <= |x| < 1e-15, at 0 an infinity of the pole's side.
 */
ORVANE_API double math_digamma(double x);

/**
 * Polygamma function, the n-th derivative of psi at x.
 *
 * @param n  order, rounded; negative gives NaN, above 160 gives 1e300
 * @param x  argument; 0 and negative integers give an infinity. From order 6 on the sum behind it stops at a block of
 * ten terms below 1e-15, so a small value keeps few digits.
 */
ORVANE_API double math_polyGamma(double n, double x);

/** Beta function gamma(a) gamma(b)/gamma(a+b); each gamma as math_gamma at its poles. */
ORVANE_API double math_beta(double a, double b);

/* Incomplete gamma functions.
 *
 * LG(a, x) is the integral of t^(a-1) exp(-t) from 0 to x, UG(a, x) from x to infinity. Functions that use a series at
 * 128 bits change GMP's process-wide default precision for the length of a call. */

/**
 * Lower or upper incomplete gamma function, not regularised.
 *
 * The lower one is 0 for 0 <= x < 2.2e-16 at broken a, x^-a at negative integer a, and the full gamma(a) beyond an x
 * that
 * depends on a (40 for a < 2, ..., 210 for a < 100). The upper one is math_igamma.
 *
 * @param a       order
 * @param x       limit; negative gives NaN unless a is an integer
 * @param lower   not 0 for LG(a, x), 0 for UG(a, x)
 * @param result  out
 * @return true when the value is NaN
 */
ORVANE_API bool math_incompleteGamma(double a, double x, uint8_t lower, double* result);

/**
 * Upper incomplete gamma function UG(a, x), not regularised; Ei(x) at a = 0; 0 where the lower one is taken to be
 * gamma(a).
 *
 * @param a  order
 * @param x  limit; negative gives NaN unless a is a positive integer
 */
ORVANE_API double math_igamma(double a, double x);

/**
 * Regularised lower incomplete gamma function LG(a, x)/gamma(a) at broken a. At a positive integer a (within 1e-15)
 * it is
 * the upper one, UG(a, x)/gamma(a); 0 at a = 0, NaN at negative integers.
 *
 * @param a  order
 * @param x  limit; negative gives NaN unless a is an integer
 */
ORVANE_API double math_RLowerIncompleteGamma(double a, double x);

/** 1 - math_RLowerIncompleteGamma(a, x), with all digits of a small difference. */
ORVANE_API double math_RUpperIncompleteGamma(double a, double x);

/**
 * x with math_RUpperIncompleteGamma(a, x) = q, to 1e-15 in q.
 *
 * @param a  order, broken; at an integer the function rises and no bracket is found: the result is then 1000 8^20
 * @param q  value in [0, 1]; below 1e-15 the result is q^2; outside NaN
 */
ORVANE_API double math_InverseRUpperIncompleteGamma(double a, double q);

/* Incomplete beta functions. B_x(a, b) is the integral of t^(a-1) (1-t)^(b-1) from 0 to x. */

/**
 * Incomplete beta function B_x(a, b), not regularised.
 *
 * @param x  limit in [0, 1], outside NaN; below 1e-64 the value is 0
 * @param a  first exponent
 * @param b  second exponent
 */
ORVANE_API double math_ibeta(double x, double a, double b);

/**
 * x with B_x(a, b)/B(a, b) = y, by bisection to 1e-15 in B_x.
 *
 * @param y  value in [0, 1], outside NaN; below 1e-15 the result is y^2, within 1e-15 of 1 it is 1 - 3.123 y
 * @param a  first exponent; negative gives NaN
 * @param b  second exponent; negative gives NaN
 */
ORVANE_API double math_InverseBeta(double y, double a, double b);

/* Error functions of a real argument. */

/** Error function 2/sqrt(pi) times the integral of exp(-t^2) from 0 to x. */
ORVANE_API double math_erf(double x);

/** 1 - erf(x). */
ORVANE_API double math_erfc(double x);

/** Imaginary error function -i erf(ix); odd. */
ORVANE_API double math_erfi(double x);

/** Dawson's integral exp(-x^2) times the integral of exp(t^2) from 0 to x; odd. */
ORVANE_API double math_drawson(double x);

/** log(erfi(x)); NaN for x < 1e-16. */
ORVANE_API double math_lnErfi(double x);

/**
 * x with erf(x) = y.
 *
 * @param y  value in [-1, 1]. At 1 the result is the best x met, near 5.4; up to 1e-15 beyond 1 it is 5.8; further out
 * NaN.
 */
ORVANE_API double math_invErf(double y);

/** math_invErf(1 - y), so a y near 0 has no more digits than 1 - y. */
ORVANE_API double math_invErfc(double y);

/** x with erfi(x) = y; odd. */
ORVANE_API double math_invErfi(double y);

/** x > 0 with log(erfi(x)) = y. */
ORVANE_API double math_invLnErfi(double y);

/* Error functions of a complex argument z = x + iy. w(z) = exp(-z^2) erfc(-iz) is Faddeeva's function. */

/**
 * Complex error function erf(re + i im).
 *
 * @param re     real part
 * @param im     imaginary part
 * @param outRe  out, real part of the value
 * @param outIm  out, imaginary part of the value
 */
ORVANE_API void math_erfz(double re, double im, double* outRe, double* outIm);

/**
 * Re w(x + iy). For |x| < 1e-6 it is odd in y; where exp(-z^2) leaves the range it is i (1/z + ...) without
 * 1/sqrt(pi).
 */
ORVANE_API double math_voigtFunK(double x, double y);

/** Im w(x + iy), with the same form where exp(-z^2) leaves the range. */
ORVANE_API double math_voigtFunL(double x, double y);

/** Re w'(z), the derivative of math_voigtFunK by x. */
ORVANE_API double math_voigtDiffKX(double x, double y);

/** -Im w'(z), the derivative of math_voigtFunK by y. */
ORVANE_API double math_voigtDiffKY(double x, double y);

/** Im w'(z), the derivative of math_voigtFunL by x. */
ORVANE_API double math_voigtDiffLX(double x, double y);

/** Re w'(z), the derivative of math_voigtFunL by y; the same value as math_voigtDiffKX. */
ORVANE_API double math_voigtDiffLY(double x, double y);

/* Lambert's W and Wright's omega. */

/**
 * Principal branch of w exp(w) = x; NaN for x < -1/e. At most 16 steps from w = 1, which do not reach x above about
 * 1e14.
 */
ORVANE_API double math_lambertW(double x);

/** x exp(x). */
ORVANE_API double math_invLambertW(double x);

/** w with log(w) + w = x, to 1e-15 absolute; below x = -35 it stays at a few 1e-16. */
ORVANE_API double math_wrightOmega(double x);

#endif
