/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Error functions of real and complex arguments, Dawson's integral, their inverses.
 *
 * There is no failure channel beside the value (orvane/special.h). The functions keep no state and may be called from
 * any thread.
 */
#ifndef ORVANE_ERROR_H
#define ORVANE_ERROR_H

#include <orvane/export.h>

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

#endif
