/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Calculus on expressions. All functions here evaluate by writing the values of variables: those stand at some argument
 * of the evaluation afterwards, and nothing else may use the variables meanwhile.
 */
#ifndef ORVANE_SYM_CALCULUS_H
#define ORVANE_SYM_CALCULUS_H

#include <orvane/sym.h>

/**
 * Taylor polynomials: each element becomes the sum over k from 0 to order of its k-th derivative at the centre, divided
 * by k!, times (x - centre)^k. Other variables enter with their present values.
 *
 * @param matrix  expressions
 * @param name    variable; one that does not exist leaves the elements as they are
 * @param centre  point of expansion; the variable's value afterwards
 * @param order   highest power; below 0 the elements become 0
 * @return new matrix, released by sym_freeMatrix2d; null when an element has no derivative
 */
ORVANE_API SymMatrix2d* sym_taylor(const SymMatrix2d* matrix, const char* name, double centre, int32_t order);

/**
 * out[i] = integral of element i, row by row, over the variable from a to b, by the adaptive rule of math_Integral1D
 * with up to 1000000 intervals.
 *
 * @param matrix  expressions
 * @param name    variable; for one that does not exist the elements are constants
 * @param a, b    limits, finite or infinite, in any order
 * @param out     [rows*cols] out; NaN and 1e300 as math_Integral1D
 */
ORVANE_API void sym_integral1D(const SymMatrix2d* matrix, const char* name, double a, double b, double* out);

/**
 * Initial value problem dy_i/dt = element i, by Fehlberg's formulas of orders 4 and 5 (math_SolveODE45).
 *
 * @param matrix     [n] right-hand sides, row by row
 * @param names      independent variable and then the n dependent ones in the order of the elements, separated by ",";
 *                   a comma behind the last one and further names are ignored, so that the text of sym_getAllBaseSym2
 *                   will do
 * @param start      initial value of the independent variable
 * @param initial    [n] initial state
 * @param n          number of equations
 * @param positions  [count] where the solution is wanted, on either side of the start, in any order
 * @param out        [count*n] out, a row for each position; NaN throughout when there are more or fewer elements than
 *                   n, or too few names
 * @param count      number of positions
 * @param method     reserved; every value means Fehlberg's formulas
 * @param tolerance  error of a step, absolute; 1e-15 or less in size means 1e-12. Time is bounded as that of
 *                   math_SolveODE45
 */
ORVANE_API void sym_solveODE(const SymMatrix2d* matrix, const char* names, double start, const double* initial,
                             int32_t n, const double* positions, double* out, int32_t count, uint8_t method,
                             double tolerance);

/**
 * Fredholm equation of the second kind: y(x) = f(x) + integral from a to b of K(x, t) y(t) dt, by Nystrom's method on
 * up to 64 panels of eight Gauss points, refined until the solution stands to 1e-13. A kernel may have a kink on x = t.
 *
 * @param kernel  1-by-1, K in the variables "x" and "t"
 * @param free    1-by-1, f in the variable "x"
 * @param a, b    interval
 * @param xs      [n] points
 * @param ys      [n] out; not finite where the equation has no solution
 * @param n       number of points
 */
ORVANE_API void sym_integralEquByFredholm(const SymMatrix2d* kernel, const SymMatrix2d* free, double a, double b,
                                          const double* xs, double* ys, int32_t n);

/**
 * Volterra equation of the second kind: y(x) = f(x) + integral from a to x of K(x, t) y(t) dt, by collocation on grids
 * of |x - a|/0.1 intervals (20 at least), refined until two values agree to 1e-12, 32 times at most and with under 6000
 * intervals. From |x - a| = 600 on there is one grid of 6000, and the intervals grow with the distance.
 *
 * A grid of N intervals takes 8 N^2 values of K: 16,000 for two grids over a short way, 3e8 for a point beyond 600.
 *
 * @param kernel  1-by-1, K in the variables "x" and "t"
 * @param free    1-by-1, f in the variable "x"
 * @param a       lower limit
 * @param xs      [n] points
 * @param ys      [n] out; NaN at once where the point or the limit is not finite
 * @param n       number of points
 */
ORVANE_API void sym_integralEquByVolterra(const SymMatrix2d* kernel, const SymMatrix2d* free, double a,
                                          const double* xs, double* ys, int32_t n);

#endif
