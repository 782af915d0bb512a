/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Hypergeometric functions and their relatives: confluent functions, Whittaker, Wright and Mittag-Leffler functions.
 *
 * There is no failure channel beside the value (orvane/special.h). The functions keep no state; those that run the
 * shared series may change the GMP default precision of the process for the length of a call.
 */
#ifndef ORVANE_HYPERGEOMETRIC_H
#define ORVANE_HYPERGEOMETRIC_H

#include <orvane/export.h>

/**
 * 0F1(; b; z) = sum of z^n/((b)_n n!).
 *
 * @param b  lower parameter; 0, -1, -2, ... give NaN
 * @param z  argument
 */
ORVANE_API double math_Hypergeometric0F1(double b, double z);

/**
 * Kummer's function 1F1(a; b; z) = sum of (a)_n z^n/((b)_n n!). Where its terms cancel, as many bits are taken as it
 * takes, while the largest term stays below about exp(5000): microseconds, some milliseconds for parameters above 100.
 *
 * @param a  upper parameter
 * @param b  lower parameter; 0, -1, -2, ... give NaN
 * @param z  argument
 */
ORVANE_API double math_Hypergeometric1F1(double a, double b, double z);

/**
 * Gauss's function 2F1(a, b; c; z) by its power series, which converges for |z| < 1; outside, the partial sum at which
 * the series was cut is returned (an integer a or b <= 0 ends it and is right anywhere). Where the terms cancel beyond
 * 128 bits, more are taken if |z| < 0.99 or the series ends, while the largest term stays below about exp(5000): up to
 * tens of milliseconds for parameters near 200.
 *
 * @param a  upper parameter
 * @param b  upper parameter
 * @param c  lower parameter; 0, -1, -2, ... give NaN
 * @param z  argument
 */
ORVANE_API double math_Hypergeometric2F1(double a, double b, double c, double z);

/**
 * pFq(a; b; z) = sum of (a_1)_n...(a_p)_n/((b_1)_n...(b_q)_n) z^n/n!, in floats of 128 bits. The series ends at a term
 * of 1e-17 (absolute), at one beyond the range of doubles, or after 1000000 terms, with the sum reached.
 *
 * @param a  [p] upper parameters
 * @param p  their number, 0 or more
 * @param b  [q] lower parameters; one that is 0, -1, -2, ... gives NaN
 * @param q  their number, 0 or more
 * @param z  argument; p = 1, q = 0 and |z| < 1 give (1-z)^-a[0]
 */
ORVANE_API double math_Hypergeometric_mFn(const double* a, int32_t p, const double* b, int32_t q, double z);

/**
 * Tricomi's function U(a, b, x) = pi/sin(pi b) (1F1(a; b; x)/(gamma(1+a-b) gamma(b))
 * - x^(1-b) 1F1(1+a-b; 2-b; x)/(gamma(a) gamma(2-b))): right to about 1e-12 times the condition for parameters up to
 * some hundreds, in up to some milliseconds.
 *
 * @param a  parameter
 * @param b  parameter; an integer other than 1 gives NaN, as one of the two series has a pole there
 * @param x  argument; x < 0 gives NaN unless a is 0, -1, -2, ...
 */
ORVANE_API double math_hypergeometricU(double a, double b, double x);

/**
 * Whittaker's function M_(k,m)(x) = x^(m+1/2) exp(-x/2) 1F1(m+1/2-k; 2m+1; x).
 *
 * @param k  first index
 * @param m  second index; 2m = -1, -2, ... gives NaN
 * @param x  argument; x < 0 gives NaN unless m+1/2 is an integer
 */
ORVANE_API double math_whittakerM(double k, double m, double x);

/**
 * Whittaker's function W_(k,m)(x) = x^(m+1/2) exp(-x/2) U(m+1/2-k, 2m+1, x).
 *
 * @param k  first index
 * @param m  second index; an integer 2m other than 0 gives NaN, as for math_hypergeometricU
 * @param x  argument, positive
 */
ORVANE_API double math_whittakerW(double k, double m, double x);

/**
 * Wright's function phi(a, b, x) = sum of x^k/(k! gamma(ak+b)), at most 10000 terms.
 *
 * @param a  0 or more, else NaN
 * @param b  0 or more, else NaN
 * @param x  -8 or more, else NaN; |x| < 1e-32 gives |x| (and not 1/gamma(b))
 */
ORVANE_API double math_wrightBessel(double a, double b, double x);

/**
 * Mittag-Leffler function E_(a,b)(x) = sum of x^k/gamma(ak+b). Beyond x = 3.98 by
 * (E_(a/2,b)(sqrt x) + E_(a/2,b)(-sqrt x))/2; a series has at most 2048 terms, and its partial sum is returned when
 * they do not suffice (small a with x above 1).
 *
 * @param a  at least 2.220446049250313e-16, else NaN
 * @param b  at least 2.220446049250313e-16, else NaN
 * @param x  argument
 */
ORVANE_API double math_mittagLeffler(double a, double b, double x);

#endif
