/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Integrals of elementary functions: exponential, sine, cosine, logarithmic and Fresnel integrals.
 *
 * There is no failure channel beside the value (orvane/special.h). The functions keep no state and may be called from
 * any thread.
 */
#ifndef ORVANE_INTEGRAL_FUNCTIONS_H
#define ORVANE_INTEGRAL_FUNCTIONS_H

#include <orvane/export.h>

/** Ei(x), the principal value of the integral of exp(t)/t from -infinity to x; -infinity at 0. */
ORVANE_API double math_expIntegral(double x);

/**
 * E_p(x), the integral of exp(-xt)/t^p over t > 1.
 *
 * @param p  order. At p = 1 the value is Ei(x), not E_1(x); for 0 < p < 1 it is 0 from x > 40 on, as math_igamma is
 * @param x  argument; |x| < 2.220446049250313e-16 gives 1/(p-1). x <= 0 gives NaN, but for integer p <= 1
 */
ORVANE_API double math_expIntegralP(double p, double x);

/** Si(x), the integral of sin(t)/t from 0 to x. */
ORVANE_API double math_sineIntegral(double x);

/** Ci(x) = gamma + log x + the integral of (cos(t)-1)/t from 0 to x; NaN for x < 0, -infinity at 0. */
ORVANE_API double math_cosineIntegral(double x);

/** Shi(x), the integral of sinh(t)/t from 0 to x; infinite for |x| > 739. */
ORVANE_API double math_sinhIntegral(double x);

/** Chi(x) = gamma + log x + the integral of (cosh(t)-1)/t from 0 to x; NaN for x < 0, infinity for x > 739. */
ORVANE_API double math_coshIntegral(double x);

/** li(x), the principal value of the integral of 1/log(t) from 0 to x; NaN for x < 0, -infinity at 1. */
ORVANE_API double math_logIntegral(double x);

/** x with Shi(x) = y; y itself for |y| < 1e-5, infinite for |y| > 5.191571403e+306. */
ORVANE_API double math_invSinhIntegral(double y);

/** x > 0 with Chi(x) = y; infinity for y > 5.191571403e+306. */
ORVANE_API double math_invCoshIntegral(double y);

/** C(x), the integral of cos(pi t^2/2) from 0 to x; 1/2 in size from |x| > 2e9 on. */
ORVANE_API double math_fresnelC(double x);

/** S(x), the integral of sin(pi t^2/2) from 0 to x; 1/2 in size from |x| > 1e16 on. */
ORVANE_API double math_fresnelS(double x);

/** Goodwin-Staton integral of exp(-t^2)/(t+x) over t > 0, for x < 0 its principal value; infinity at 0. */
ORVANE_API double math_goodwinStaton(double x);

#endif
