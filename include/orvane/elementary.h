/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Trigonometric, hyperbolic and other elementary functions, Lambert's W.
 *
 * There is no failure channel beside the value (orvane/special.h). The functions keep no state and may be called from
 * any thread.
 */
#ifndef ORVANE_ELEMENTARY_H
#define ORVANE_ELEMENTARY_H

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

/** base to the power of exponent; NaN for a negative base with an exponent that is no integer. */
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
