/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Zeta functions, polylogarithms and the integrals of quantum statistics, Clausen sums, Barnes' G.
 *
 * There is no failure channel beside the value (orvane/special.h). The functions keep no state and may be called from
 * any thread.
 */
#ifndef ORVANE_ZETA_H
#define ORVANE_ZETA_H

#include <orvane/export.h>

/** Riemann's zeta(s), the sum of n^-s and its continuation; +infinity at s = 1. */
ORVANE_API double math_zeta(double s);

/**
 * s with zeta(s) = y.
 *
 * @param y  value. Below 0.009156248996 the s in (-2.7, 1), from there to 1 NaN, at 1 infinity, above 1 the s > 1;
 * above 900719925474100 it is 1
 */
ORVANE_API double math_invZeta(double y);

/**
 * Hurwitz's zeta(s, a), the sum of (n+a)^-s over n = 0, 1, ... and its continuation.
 *
 * @param s  exponent. At s = 1 the value is 0, unless a is 1 or 1/2 (infinity). Above 6 the sum is taken directly and
 *           ends at a block of ten terms below 1e-15
 * @param a  shift; 0, -1, -2, ... give infinity, a < -10000 gives 0. For other a < 0 only integer s have a value,
 *           otherwise NaN
 */
ORVANE_API double math_hurwitzZeta(double s, double a);

/** Dirichlet's eta(s) = (1 - 2^(1-s)) zeta(s), the sum of (-1)^(n-1) n^-s. */
ORVANE_API double math_dirichletEta(double s);

/** Dirichlet's beta(s) = (zeta(s, 1/4) - zeta(s, 3/4))/4^s, the sum of (-1)^n (2n+1)^-s; 0 at s = 1, as both are there.
 */
ORVANE_API double math_dirichletBeta(double s);

/**
 * Polylogarithm Li_s(z), the sum of z^k/k^s and its continuation along the real axis.
 *
 * @param s  order
 * @param z  argument. z > 1 gives NaN, but for integer s <= 0, where Li_s is rational; z = 1 gives zeta(s), NaN for
 *           s <= 1
 */
ORVANE_API double math_polyLog(double s, double z);

/**
 * Bose-Einstein integral Li_(s+1)(exp(x)): 1/gamma(s+1) times the integral of t^s/(exp(t-x)-1) over t > 0.
 *
 * @param s  order
 * @param x  argument; x > 0 gives NaN unless s is -1, -2, ...: there s = -1 gives -1 from x > 30, s < -1 gives 0 from
 *           x > 40
 */
ORVANE_API double math_boseEinstein(double s, double x);

/**
 * Fermi-Dirac integral -Li_(s+1)(-exp(x)): 1/gamma(s+1) times the integral of t^s/(exp(t-x)+1) over t > 0.
 *
 * @param s  order; s = -1 gives 1 from x > 30, s = -2, -3, ... give 0 from x > 40
 * @param x  argument
 */
ORVANE_API double math_fermiDirac(double s, double x);

/** Dilogarithm Li_2(x); NaN for x > 1.0000000000000002, and 1.64493406684822 at 1. */
ORVANE_API double math_polyLogarithm2(double x);

/**
 * Clausen function Cl_n(x): math_ClausenC for odd n, math_ClausenS for even n.
 *
 * @param n  order, an integer from 1 on, else NaN
 * @param x  angle in radians
 */
ORVANE_API double math_Clausen(double n, double x);

/**
 * S_n(x), the sum of sin(kx)/k^n. Closed forms for n = 1, 2, 3 and 5 ((pi-x)/2 at n = 1, so pi/2 at x = 0), else the
 * terms with k^n < 1e17.
 *
 * @param n  order, an integer from 1 on, else NaN
 * @param x  angle in radians
 */
ORVANE_API double math_ClausenS(double n, double x);

/**
 * C_n(x), the sum of cos(kx)/k^n. Closed forms for n = 1 (infinite at x = 0), 2 and 4, else the terms with k^n < 1e17.
 *
 * @param n  order, an integer from 1 on, else NaN
 * @param x  angle in radians
 */
ORVANE_API double math_ClausenC(double n, double x);

/** log G(x) of Barnes' function, G(x+1) = gamma(x) G(x), G(1) = 1; -infinity at 0, -1, ..., NaN at other x < 0. */
ORVANE_API double math_lnBarnesG(double x);

/** Barnes' G(x); infinity for x > 28.48, 0 at 0, -1, -2, ..., -infinity at other x < -28.02. */
ORVANE_API double math_barnesG(double x);

/** Hyperfactorial H(x) = 1^1 2^2 ... x^x = exp(x log gamma(x+1) - log G(x+1)); infinity for x > 22.67524, NaN at x < -1
 * but for integers. */
ORVANE_API double math_hyperfactorial(double x);

#endif
