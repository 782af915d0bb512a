/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Polynomials among the expressions: coefficients, values, roots, factors, arithmetic, approximation.
 *
 * A 1-by-1 matrix is a polynomial when its expression is a number, a multiple of a variable, or depends on one variable
 * alone and is, as normalised, a monomial or a sum of monomials c x^k with integer k from 0 to 1000000 and |c| above
 * 1e-15: x^2 + 1 is one, x y, sin(x) and (x + 1)^2 are not. What the functions here make is a polynomial in any case,
 * with smaller coefficients and higher exponents too, until it is changed; copies of it go by the rule. Every function
 * answers for anything else with the value that it states, and changes nothing.
 */
#ifndef ORVANE_SYM_POLYNOMIAL_H
#define ORVANE_SYM_POLYNOMIAL_H

#include <orvane/sym.h>

/** True when the matrix is 1 by 1 and its element a polynomial. */
ORVANE_API bool sym_isPoly(SymMatrix2d* matrix);

/**
 * Coefficients of a polynomial, ascending.
 *
 * @param matrix    polynomial
 * @param out       [degree + 1] out; only the places of terms that are there are written, so zero the array first
 * @param capacity  length of `out`; nothing is written unless it is degree + 1
 * @return degree + 1, 1000001 for a higher degree than 1000000, 0 for what is no polynomial
 */
ORVANE_API int32_t sym_getPolyParam(SymMatrix2d* matrix, double* out, int32_t capacity);

/**
 * y[i] = sum of pow(x[i], exponent) times coefficient, in ascending exponents.
 *
 * @param matrix  polynomial
 * @param x       [n] points
 * @param y       [n] out
 * @param n       number of points
 * @return 1, or 0 for what is no polynomial
 */
ORVANE_API int32_t sym_calcPolyFun(SymMatrix2d* matrix, const double* x, double* y, int32_t n);

/**
 * Complex roots of a polynomial of degree 1000 at most with finite coefficients, each as often as its multiplicity,
 * ascending by real, then by imaginary part; those of a complex pair are exactly conjugate.
 *
 * Up to degree 200 they are the roots of the polynomial as its coefficients stand, located in as many bits as it takes:
 * multiplicities from the exact square-free decomposition (Yun 1976), places from Aberth's iteration (Math. Comp. 27,
 * 1973). Above that degree from the same iteration in double precision, each to the backward error of its evaluation.
 *
 * @param matrix    polynomial
 * @param re, im    [capacity] out; written only when all roots fit
 * @param capacity  length of each array
 * @return number of roots (0 for a constant), or 0xFFFFFFFF for what is no such polynomial
 */
ORVANE_API uint32_t sym_calcPolyRoot(SymMatrix2d* matrix, double* re, double* im, uint32_t capacity);

/** Operations of sym_runPolyFun on a and b. */
enum {
  ORVANE_POLY_SUM = 0,
  ORVANE_POLY_DIFFERENCE = 1,
  ORVANE_POLY_PRODUCT = 2,
  ORVANE_POLY_QUOTIENT = 3,
  ORVANE_POLY_REMAINDER = 4,
  ORVANE_POLY_GCD = 5,         /**< greatest common divisor, monic */
  ORVANE_POLY_LCM = 6,         /**< least common multiple, monic */
  ORVANE_POLY_COMPOSITION = 7, /**< a(b(x)) */
  ORVANE_POLY_DERIVATIVE = 8,  /**< of the product a b */
  ORVANE_POLY_RESULTANT = 9,   /**< a constant */
  ORVANE_POLY_POWER = 10       /**< a to the power of b, a non-negative integer constant */
};

/**
 * Arithmetic of two polynomials in the same variable (a constant goes with any). Terms below 1e-14 in size are left out
 * of the result; common divisor, common multiple and resultant take a remainder for zero that rounding explains.
 *
 * @param a, b       polynomials
 * @param operation  ORVANE_POLY_SUM to ORVANE_POLY_POWER
 * @return new matrix, released by sym_freeMatrix2d; null when there is no such polynomial or operation, or when no term
 *         is left of the result
 */
ORVANE_API SymMatrix2d* sym_runPolyFun(SymMatrix2d* a, SymMatrix2d* b, uint8_t operation);

/**
 * The product of the factors over the real numbers as text, such as "3*(x^2+x+1)*x^2*(x-1)^2": the leading coefficient
 * when it is not 1 ("-" for -1), then a factor for each different root, ascending: x for a root at 0, (x-r) for a real
 * one, (x^2+b*x+c) for a complex pair, and "^" with the multiplicity above 1. A constant is its number alone.
 *
 * @param matrix    polynomial of degree 1000 at most
 * @param out       [capacity] out, UTF-8 without a terminator; written only when the text fits
 * @param capacity  bytes of `out`
 * @return length of the text in bytes; 0 for what is no such polynomial, 0xFFFFFFFF when the matrix is not 1 by 1
 */
ORVANE_API uint32_t sym_polyFactor(SymMatrix2d* matrix, char* out, int32_t capacity);

/**
 * New polynomial in the variable "x": the sum of coefficients[i] x^exponents[i].
 *
 * @param coefficients  [n]
 * @param exponents     [n], integers (to 1e-14) from 0 to 1e8, each at most once
 * @param n             number of terms; 0 gives the number 0
 * @return new matrix, released by sym_freeMatrix2d; null for another exponent
 */
ORVANE_API SymMatrix2d* sym_createPolyByParam(const double* coefficients, const double* exponents, int32_t n);

/**
 * New polynomial in the variable "x".
 *
 * @param data  the number n of coefficients, an integer from 1 to 1000001, and behind it n coefficients, ascending
 * @return new matrix, released by sym_freeMatrix2d; null for null or another n
 */
ORVANE_API SymMatrix2d* sym_createPoly(const double* data);

/**
 * Polynomial that approximates the element on [a, b]: its Chebyshev interpolation at degree + 1 nodes, written in
 * powers of the element's one variable. The variable's value is that of the last node afterwards.
 *
 * Coefficients of the Chebyshev series below 1e-30 are left out. Besides those only what is the samples' rounding for
 * certain: of an element that is a polynomial of degree d, also in factors such as (x + 1)^2, all beyond d. On an
 * interval about 0 the coefficients of the other parity are 0 for an odd or even element. All others stay, noise of
 * some 1e-16 of the samples among them, and powers of x multiply that by up to 2.4^degree times the scale of the
 * interval: ask for no higher degree than the accuracy needs, 15 for exp on [-1, 1].
 *
 * @param matrix  1-by-1 matrix of any expression in one variable; a constant gives itself
 * @param a, b    interval, a not b
 * @param degree  0 to 1000
 * @return new matrix, released by sym_freeMatrix2d; null for another shape, interval or degree, for more than one
 *         variable, or when the element at a node or a coefficient is not finite
 */
ORVANE_API SymMatrix2d* sym_polyApp(const SymMatrix2d* matrix, double a, double b, int32_t degree);

/**
 * Polynomial in the variable "x" that fits a table: least squares of sum_k c[k] x^exponents[k] - y.
 *
 * @param x, y       [n] points
 * @param n          number of points
 * @param weights    [n] of the squared residuals, or null for 1
 * @param exponents  [terms] integers from 0, each at most once, or null for 0 to terms - 1
 * @param terms      number of powers; when the points do not determine them, the coefficients of least norm. The
 *                   table takes n times terms doubles in memory, and time of that times terms
 * @return new matrix, released by sym_freeMatrix2d; null without points or powers, for a bad exponent, or when a value
 * is not finite
 */
ORVANE_API SymMatrix2d* sym_solveRPoly(const double* x, const double* y, int32_t n, const double* weights,
                                       const int32_t* exponents, int32_t terms);

#endif
