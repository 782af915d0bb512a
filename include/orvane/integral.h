/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Integrals of functions and of samples, and initial value problems.
 *
 * Callbacks run on the calling thread. All functions may run at the same time on distinct arrays.
 */
#ifndef ORVANE_INTEGRAL_H
#define ORVANE_INTEGRAL_H

#include <orvane/export.h>

/** Modes of data_Integral. */
enum { ORVANE_INTEGRAL_TRAPEZOIDS = 0, ORVANE_INTEGRAL_SIMPSON = 1, ORVANE_INTEGRAL_SPLINE = 2 };

/**
 * Integral of f from a to b, by adaptive three-point Gauss-Legendre panels; either limit may be infinite. For a > b it
 * is minus the integral from b to a.
 *
 * An interval is halved until its halves agree with it to 2.2e-16, it is under 1e-8 wide, or the number of intervals
 * has passed maxIntervals. Infinite ranges are mapped to a finite one, with 128 intervals; when that fails they are
 * summed over pieces that grow by the factor 16.
 *
 * @param f             integrand
 * @param a             lower limit; infinite or not
 * @param b             upper limit; infinite or not
 * @param maxIntervals  0 means 1000000; -1 means 16 where |b-a| is under 10, beyond that its integer part, at most 128;
 *                      without influence on infinite ranges
 * @return the integral; NaN when a limit or a value of f is NaN; 1e+300 when a panel passes 1e10 in size, whatever its
 *         sign, as at a pole (-1e+300 for an infinite range taken backwards)
 */
ORVANE_API double math_Integral1D(double (*f)(double), double a, double b, int32_t maxIntervals);

/**
 * math_Integral1D over several ranges, with maxIntervals -1.
 *
 * @param f      integrand
 * @param lows   [count] lower limits
 * @param highs  [count] upper limits
 * @param count  number of ranges; 0 or less does nothing
 * @param out    [count] out, integrals
 */
ORVANE_API void math_Integral(double (*f)(double), const double* lows, const double* highs, int32_t count, double* out);

/**
 * Running integral of a sampled curve: out[i] is the integral from sample 0 to sample i, out[0] = 0.
 *
 * @param values  [count] samples
 * @param out     [count] out; may be the array values
 * @param step    distance of neighbouring samples
 * @param count   number of samples; 0 or less does nothing
 * @param mode    0 trapezoids; 1 Simpson's rule, at odd i with the last interval under the parabola through samples
 *                i-1, i, i+1 (i-2, i-1, i at the end of the curve); 2 and others the natural cubic spline through all
 *                samples. Two samples are a straight line in every mode.
 */
ORVANE_API void data_Integral(const double* values, double* out, double step, int32_t count, uint8_t mode);

/**
 * Solves dy/dt = f(t, y), y(t0) = y0, by the Runge-Kutta-Fehlberg formulas of orders 4 and 5 with step control.
 *
 * A step is accepted when the largest difference of the two orders is below the tolerance, or when the step is below
 * 1e-6: a tolerance that cannot be met is not reported. Time has the bound that this gives and no other: steps of half
 * of 1e-6 at least, each tried twice with six values of f, so up to 2.4e7 values for each unit of t. A stiff problem
 * comes near it.
 *
 * @param f          writes the derivatives at (t, y[dimension]) into dy[dimension]
 * @param t0         start
 * @param y0         [dimension] state at the start
 * @param dimension  number of components
 * @param ts         [count] positions in any order, on both sides of t0; equal ones allowed
 * @param out        [count*dimension] row-major, out: the states, in the order of ts; NaN at a position that is not
 * finite
 * @param count      number of positions; 0 or less does nothing
 * @param tolerance  absolute error of a step; its size is taken, and 1e-12 when it is below that or NaN
 */
ORVANE_API void math_SolveODE45(void (*f)(double t, const double* y, double* dy), double t0, const double* y0,
                                int32_t dimension, const double* ts, double* out, int32_t count, double tolerance);

#endif
