/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Gamma and beta functions, complete and incomplete, and their inverses.
 *
 * There is no failure channel beside the value (orvane/special.h). The functions keep no state and may be called from
 * any thread.
 */
#ifndef ORVANE_GAMMA_H
#define ORVANE_GAMMA_H

#include <orvane/export.h>

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
 * The lower one is 0 for 0 <= x < 2.2e-16 at a that is no integer, x^-a at negative integer a, and the full gamma(a)
 * beyond an x that depends on a (40 for a < 2, ..., 210 for a < 100). The upper one is math_igamma.
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
 * Regularised lower incomplete gamma function LG(a, x)/gamma(a) at a that is no integer. At a positive integer a
 * (within 1e-15) it is the upper one, UG(a, x)/gamma(a); 0 at a = 0, NaN at negative integers.
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
 * @param a  order, not an integer; at an integer the function rises and no bracket is found: the result is then 1000
 * 8^20
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

#endif
