/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Dense real matrices: determinant, inverse, rank, singular values, Schur form, eigenvalues, products.
 *
 * Matrices are row-major: element (i, j) of an r x c matrix stands at index i*c + j. Arrays belong to the host. Inputs
 * are read before outputs are written, so an output may be an input's own array; two outputs must not overlap. A
 * negative count counts as 0. A matrix whose size cannot be addressed throws std::bad_alloc. A NaN or an infinite entry
 * makes every result NaN, and the rank 0. All functions may run at the same time on distinct arrays.
 */
#ifndef ORVANE_MATRIX_H
#define ORVANE_MATRIX_H

#include <orvane/frame.h>

/**
 * Determinant, by LU decomposition with partial pivoting.
 *
 * @param a  [n*n] matrix
 * @param n  order; 0 gives 1
 * @return det A; of a singular matrix 0 or a tiny number
 */
ORVANE_API double matrixDet(const double* a, int32_t n);

/**
 * Inverse, by LU decomposition with partial pivoting. A singular matrix gives non-finite entries (or, where rounding
 * hides it, huge ones), without a report.
 *
 * @param a    [n*n] matrix
 * @param out  [n*n] out
 * @param n    order; 0 does nothing
 */
ORVANE_API void matrixInverse(const double* a, double* out, int32_t n);

/**
 * Numerical rank: the number of singular values above max(k, 1)*2.220446049250313e-16 times the largest one (and above
 * 2.2250738585072014e-308), k = min(rows, cols).
 *
 * @param a     [rows*cols] matrix
 * @param rows  rows
 * @param cols  columns
 */
ORVANE_API int32_t matrixRank(const double* a, int32_t rows, int32_t cols);

/**
 * Full singular value decomposition A = U S V', U and V orthogonal.
 *
 * @param a     [rows*cols] matrix
 * @param rows  rows
 * @param cols  columns
 * @param u     [rows*rows] out
 * @param s     [rows*cols] out, the singular values on its diagonal in descending order, 0 elsewhere
 * @param v     [cols*cols] out, not transposed
 */
ORVANE_API void matrixSVD(const double* a, int32_t rows, int32_t cols, double* u, double* s, double* v);

/**
 * Thin singular value decomposition A = U S V', k = min(rows, cols); U and V have orthonormal columns.
 *
 * @param a     [rows*cols] matrix
 * @param rows  rows
 * @param cols  columns
 * @param u     [rows*k] out
 * @param s     [k*k] out, the singular values on its diagonal in descending order, 0 elsewhere
 * @param v     [cols*k] out, not transposed
 */
ORVANE_API void matrixSVD2(const double* a, int32_t rows, int32_t cols, double* u, double* s, double* v);

/**
 * Singular values in ascending order. Mind that matrixSVD and matrixSVD2 have the opposite order.
 *
 * @param a     [rows*cols] matrix
 * @param rows  rows
 * @param cols  columns
 * @param out   [min(rows, cols)] out
 * @return min(rows, cols)
 */
ORVANE_API int32_t matrixSingularValues(const double* a, int32_t rows, int32_t cols, double* out);

/**
 * Real Schur form A = U T U': U orthogonal, T upper triangular but for 2 x 2 blocks on its diagonal, one for each pair
 * of conjugate eigenvalues.
 *
 * @param a  [n*n] matrix
 * @param u  [n*n] out
 * @param t  [n*n] out
 * @param n  order
 */
ORVANE_API void matrixSchur(const double* a, double* u, double* t, int32_t n);

/**
 * Eigenvalues and eigenvectors of a general matrix, A v = lambda v with |v| = 1. Conjugate pairs stand side by side;
 * there is no other order. NaN throughout when an eigenvalue overflows.
 *
 * @param a          [n*n] matrix
 * @param n          order
 * @param values     [2*n] out, real and imaginary part of each eigenvalue in turn
 * @param vectorsRe  [n*n] out, real parts; column i belongs to eigenvalue i
 * @param vectorsIm  [n*n] out, imaginary parts
 */
ORVANE_API void matrixEig(const double* a, int32_t n, double* values, double* vectorsRe, double* vectorsIm);

/**
 * Eigenvalues and eigenvectors of a matrix with a real spectrum, in the order of matrixEig, unsorted.
 *
 * @param a        [n*n] matrix
 * @param n        order
 * @param values   [n] out
 * @param vectors  [n*n] out, column i belongs to value i
 * @return false at the first eigenvalue with an imaginary part above 1e-12 in size: those before it have been written,
 *         the rest is left untouched. True otherwise, also when the results are NaN.
 */
ORVANE_API bool matrixEVD(const double* a, int32_t n, double* values, double* vectors);

/**
 * Product C = A B. NaN and infinite entries act as in any sum of products.
 *
 * @param a     [r*m] left factor
 * @param b     [m*cols] right factor
 * @param c     [r*cols] out; 0 when m is 0
 * @param r     rows of A
 * @param m     columns of A, rows of B
 * @param cols  columns of B
 */
ORVANE_API void matrix_dot(const double* a, const double* b, double* c, int32_t r, int32_t m, int32_t cols);

/**
 * Position of the first maximum of each row, counted from 1, as a double. NaN is passed over; a row of nothing else
 * gives 1, a row without entries 0.
 *
 * @param table  read when rows is 0, out then has one entry for each of its rows; may be null otherwise
 * @param a      [rows*cols] matrix, read when rows is not 0
 * @param out    [rows] out
 * @param rows   rows of a, or 0 to read the table; a negative count does nothing
 * @param cols   columns of a
 */
ORVANE_API void matrix_findMaxIndexByRow(const Data2D* table, const double* a, double* out, int32_t rows, int32_t cols);

#endif
