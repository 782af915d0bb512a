/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Bernoulli numbers and polynomials of integer order.
 *
 * There is no failure channel beside the value (orvane/special.h). The functions keep no state and may be called from
 * any thread.
 */
#ifndef ORVANE_POLYNOMIAL_FUNCTIONS_H
#define ORVANE_POLYNOMIAL_FUNCTIONS_H

#include <orvane/export.h>

/**
 * Bernoulli numbers B_0, ..., B_(n-1), with B_1 = -1/2.
 *
 * @param n    count; 0 or less does nothing. There are 260 numbers: beyond them stand, by turns, 0 and
 *             1.7976931348623157e308, the last entry being the latter
 * @param out  [n] out
 */
ORVANE_API void math_bernoulli(int32_t n, double* out);

/** Bernoulli polynomial B_n(x); NaN for n < 0, 0 for n > 258. */
ORVANE_API double math_polyByBernoulli(int32_t n, double x);

/** Legendre polynomial P_n(x); NaN for n < 0. At n = 0 the value is 0, not 1. */
ORVANE_API double math_polyLegendre(int32_t n, double x);

/** Laguerre polynomial L_n(x); NaN for n < 0. Above order 10000000 by Bessel functions (orvane/bessel.h, signgam). */
ORVANE_API double math_polyLaguerre(int32_t n, double x);

/** Hermite polynomial H_n(x) with leading coefficient 2^n; NaN for n < 0. Where it overflows, the signed infinity. */
ORVANE_API double math_polyHermite(int32_t n, double x);

#endif
