/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Systems of linear equations: dense least squares, Sylvester's equation, tridiagonal systems.
 *
 * Arrays belong to the host. A negative count counts as 0. Non-finite input gives non-finite output, without a report
 * (but an infinite entry on the main diagonal of a tridiagonal matrix makes its unknown 0).
 * All functions may run at the same time on distinct arrays.
 */
#ifndef ORVANE_LINE_EQUATION_H
#define ORVANE_LINE_EQUATION_H

#include <orvane/export.h>

/**
 * Solves A X = B by the singular value decomposition of A: in the least-squares sense, and of the least-squares
 * solutions the one of least norm. Singular values up to the threshold of matrixRank count as 0. A rank-deficient or
 * non-square system is not reported.
 *
 * @param a      [rows*cols] row-major
 * @param rows   equations
 * @param cols   unknowns
 * @param b      [rowsB*colsB] row-major, one right side a column
 * @param rowsB  rows of B
 * @param colsB  number of right sides
 * @param x      [cols*colsB] row-major, out; may be the array b. NaN in A makes it NaN, NaN in B its column
 * @return false, with x untouched, when rows and rowsB differ
 */
ORVANE_API bool math_solveLineEqu(const double* a, int32_t rows, int32_t cols, const double* b, int32_t rowsB,
                                  int32_t colsB, double* x);

/**
 * math_solveLineEqu for arrays that are stored column by column.
 *
 * @param a         [rows*cols] column by column
 * @param b         [rows*rhsCount] the right sides one after another
 * @param rows      equations
 * @param cols      unknowns
 * @param rhsCount  number of right sides
 * @param x         [cols*rhsCount] the solutions one after another, out
 */
ORVANE_API void api_solveLineEquation(const double* a, const double* b, int32_t rows, int32_t cols, int32_t rhsCount,
                                      double* x);

/**
 * Solves Sylvester's equation A X + X B = C through Schur forms of A and B.
 *
 * @param a  [n*n] row-major
 * @param b  [m*m] row-major
 * @param c  [n*m] row-major
 * @param n  order of A
 * @param m  order of B
 * @param x  [n*m] row-major, out; may be one of the arrays in; huge or non-finite when A and -B share an eigenvalue
 * @return relative residual |A X + X B - C| / ((|A| + |B|) |X| + |C|) in the Frobenius norm, about 1e-16 for a good
 *         solution; 0 when n or m is 0
 */
ORVANE_API double lineEqu_solveEquBySylvester(const double* a, const double* b, const double* c, int32_t n, int32_t m,
                                              double* x);

/**
 * Factors of a tridiagonal matrix, for lineEqu_solveTridiagonalEquByLU:
 * u[0] = b[0] + s, l[i] = a[i]/u[i-1], u[i] = b[i] + s - l[i]*c[i-1].
 *
 * The shift s is 0, unless a pivot u[i] is below 1e-15 in size: then the sweep starts again with s = 1e-6, and with s
 * doubled as often as needed. A singular matrix is so replaced by a slightly shifted one; b[0] and u[0] tell the shift.
 *
 * @param c  [n] upper diagonal, c[i] in row i; c[n-1] is not read
 * @param b  [n] main diagonal
 * @param a  [n] lower diagonal, a[i] in row i; a[0] is not read
 * @param u  [n] out, pivots
 * @param l  [n] out, multipliers; l[0] is 0
 * @param n  number of unknowns
 */
ORVANE_API void lineEqu_solveTridiagonalEquLU(const double* c, const double* b, const double* a, double* u, double* l,
                                              int32_t n);

/**
 * Solves a tridiagonal system by its factors: y[i] = d[i] - l[i]*y[i-1], x[i] = (y[i] - c[i]*x[i+1])/u[i].
 *
 * @param u     [n] pivots, from lineEqu_solveTridiagonalEquLU
 * @param c     [n] upper diagonal; c[n-1] is not read
 * @param l     [n] multipliers
 * @param work  [n] out, y
 * @param x     [n] out; may be work or d
 * @param d     [n] right side; may be work
 * @param n     number of unknowns
 */
ORVANE_API void lineEqu_solveTridiagonalEquByLU(const double* u, const double* c, const double* l, double* work,
                                                double* x, const double* d, int32_t n);

/**
 * Solves a tridiagonal system: both steps, with the shift of lineEqu_solveTridiagonalEquLU.
 *
 * @param c  [n] upper diagonal; c[n-1] is not read
 * @param b  [n] main diagonal
 * @param a  [n] lower diagonal; a[0] is not read
 * @param d  [n] right side
 * @param x  [n] out; may be d
 * @param n  number of unknowns
 */
ORVANE_API void lineEqu_solveTridiagonalEqu(const double* c, const double* b, const double* a, const double* d,
                                            double* x, int32_t n);

#endif
