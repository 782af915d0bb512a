/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Bessel functions and relatives of doubles: cylindrical and spherical Bessel, Airy, Scorer, Struve, Anger, Weber and
 * parabolic cylinder functions.
 *
 * There is no failure channel beside the value: outside its domain a function gives the quiet NaN, at a pole an
 * infinity. A NaN argument gives NaN. The functions keep no state and may be called from any thread. Scorer's
 * functions may change the GMP default precision for the length of the call. J, Y and I, and what rests on them
 * (spherical Bessel, Airy, Scorer, Struve, Anger, Weber), may write the C library's variable `signgam`: the standard
 * library's Bessel functions call lgamma. No other function of this library does, but Laguerre polynomials above order
 * 10000000, which rest on J and I, and expressions with these. No argument takes longer than about a
 * second; ordinary ones take microseconds, Anger's and Weber's functions of small arguments some tenths of a
 * millisecond. J and Y have the accuracy of the standard library, about x/8 ulps times the condition up to x = 1000.
 */
#ifndef ORVANE_BESSEL_H
#define ORVANE_BESSEL_H

#include <orvane/export.h>

/* Cylindrical Bessel functions of real order nu. Negative orders follow the reflection formulas, as in J(-nu, x) =
 * cos(pi nu) J(nu, x) - sin(pi nu) Y(nu, x). */

/**
 * Bessel function of the first kind J(nu, x).
 *
 * @param nu  order, any
 * @param x   point; negative with a non-integer order gives NaN
 *
 * At x = 0 with a negative non-integer order the value is an infinity.
 */
ORVANE_API double math_BesselJ(double nu, double x);

/**
 * Bessel function of the second kind Y(nu, x).
 *
 * @param nu  order, any
 * @param x   point; negative gives NaN, 0 an infinity
 */
ORVANE_API double math_BesselY(double nu, double x);

/**
 * Modified Bessel function of the first kind I(nu, x).
 *
 * @param nu  order, any
 * @param x   point; negative with a non-integer order gives NaN
 */
ORVANE_API double math_BesselI(double nu, double x);

/**
 * Modified Bessel function of the second kind K(nu, x) = K(-nu, x).
 *
 * @param nu  order, any
 * @param x   point; negative gives NaN, 0 +infinity
 */
ORVANE_API double math_BesselK(double nu, double x);

/**
 * Spherical Bessel function of the first kind sqrt(pi/(2x)) J(n + 1/2, x).
 *
 * @param n  order, integer or not
 * @param x  point; negative with a non-integer order gives NaN
 */
ORVANE_API double math_SphericalBesselJ(double n, double x);

/**
 * Spherical Bessel function of the second kind sqrt(pi/(2x)) Y(n + 1/2, x).
 *
 * @param n  order, integer or not
 * @param x  point; negative with a non-integer order gives NaN
 */
ORVANE_API double math_SphericalBesselY(double n, double x);

/* Airy functions, the solutions of y'' = x y. */

/** Airy function Ai(x). On (36, 100] exp(-2/3 x^1.5)/(2 sqrt(3) x^0.25), which is 1.024 of its value; 0 above. */
ORVANE_API double math_AiryAi(double x);

/** Airy function Bi(x); infinite from about 104 on. */
ORVANE_API double math_AiryBi(double x);

/** Derivative Ai'(x); NaN at -infinity. */
ORVANE_API double math_DiffAiryAi(double x);

/** Derivative Bi'(x); NaN at -infinity. */
ORVANE_API double math_DiffAiryBi(double x);

/**
 * The n-th zero of Ai, negative; n counts from 1.
 *
 * @param n  number of the zero, an integer (to 1e-15) of at most 1e18; otherwise NaN
 */
ORVANE_API double math_AiryAiZero(double n);

/**
 * The n-th zero of Bi on the negative axis; n counts from 1.
 *
 * @param n  number of the zero, an integer (to 1e-15) of at most 1e18; otherwise NaN
 */
ORVANE_API double math_AiryBiZero(double n);

/**
 * The n-th zero of Ai', negative; n counts from 1. The first ten have 15 digits.
 *
 * @param n  number of the zero, an integer (to 1e-15) of at most 1e18; otherwise NaN
 */
ORVANE_API double math_DiffAiryAiZero(double n);

/**
 * The n-th zero of Bi' on the negative axis; n counts from 1. The first nine have 15 digits.
 *
 * @param n  number of the zero, an integer (to 1e-15) of at most 1e18; otherwise NaN
 */
ORVANE_API double math_DiffAiryBiZero(double n);

/* Scorer's functions, the solutions of y'' - x y = -1/pi (Gi) and 1/pi (Hi); Gi + Hi = Bi. */

/** Scorer's function Gi(x), 1/pi times the integral of sin(t^3/3 + xt) over t > 0. */
ORVANE_API double math_AiryGi(double x);

/** Scorer's function Hi(x), 1/pi times the integral of exp(-t^3/3 + xt) over t > 0; infinite from about 104 on. */
ORVANE_API double math_AiryHi(double x);

/** Derivative Gi'(x); NaN at -infinity. */
ORVANE_API double math_DiffAiryGi(double x);

/** Derivative Hi'(x); infinite from about 104 on. */
ORVANE_API double math_DiffAiryHi(double x);

/* Struve functions. They use 0.88622692545275 for gamma(3/2), which makes them 9e-15 of their value too large. */

/**
 * Struve function H(nu, x), the sum of (-1)^k (x/2)^(2k+nu+1)/(gamma(k+3/2) gamma(k+nu+3/2)).
 *
 * @param nu  order, any
 * @param x   point; negative with a non-integer order gives NaN
 *
 * NaN where the series takes more than 1,000,000 pairs of terms to fall under 1e-15, from about x = 1.47e6 on at order
 * 0.
 */
ORVANE_API double math_StruveH(double nu, double x);

/**
 * Modified Struve function L(nu, x), the same sum with all signs positive and the same limit.
 *
 * @param nu  order, any
 * @param x   point; negative with a non-integer order gives NaN
 */
ORVANE_API double math_StruveL(double nu, double x);

/**
 * Anger's function, 1/pi times the integral of cos(nu t - x sin t) from 0 to pi; the Bessel function J at integer
 * order.
 *
 * @param nu  order, any; infinite gives NaN
 * @param x   point, any; infinite gives NaN
 */
ORVANE_API double math_angerJ(double nu, double x);

/**
 * Weber's function, 1/pi times the integral of sin(nu t - x sin t) from 0 to pi.
 *
 * @param nu  order, any; infinite gives NaN
 * @param x   point, any; infinite gives NaN
 */
ORVANE_API double math_weberE(double nu, double x);

/* Parabolic cylinder functions, the solutions of y'' = (x^2/4 + a) y. */

/**
 * Whittaker's D(nu, x) = U(-nu - 1/2, x).
 *
 * @param nu  order, any; infinite gives NaN
 * @param x   point, any
 */
ORVANE_API double math_ParabolicCylinderD(double nu, double x);

/**
 * U(a, x), which falls like x^(-a-1/2) exp(-x^2/4). Where it overflows the value is the infinity of its sign: for a
 * below about -340 everywhere between the turning points +-2 sqrt(-a).
 *
 * @param a  parameter, any; infinite gives NaN
 * @param x  point, any
 */
ORVANE_API double math_ParabolicCylinderU(double a, double x);

/**
 * V(a, x), which rises like sqrt(2/pi) x^(a-1/2) exp(x^2/4).
 *
 * @param a  parameter, any; infinite gives NaN
 * @param x  point, any
 */
ORVANE_API double math_ParabolicCylinderV(double a, double x);

#endif
