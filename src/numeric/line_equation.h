// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <vector>

/// Systems of linear equations. Matrices are row-major.
namespace LineEqu {

/// Solves A X = B, A rows x cols, B rowsB x colsB, by the singular value decomposition of A: least squares, and of the
/// least-squares solutions the one of least norm. Fills x with X, cols x colsB. False, with x untouched, when
/// rows != rowsB. A non-finite entry of A or B gives NaN: in A everywhere, in B in its column.
bool solveLineEqu(std::span<const double> a, int rows, int cols, std::span<const double> b, int rowsB, int colsB,
                  std::vector<double>& x);

/// The same with A, B and X stored column by column; B has the rows of A.
std::vector<double> solveByColumns(std::span<const double> a, int rows, int cols, std::span<const double> b, int colsB);

/// Solves A X + X B = C, A n x n, B m x m, X and C n x m. Returns |A X + X B - C| / ((|A| + |B|) |X| + |C|) in the
/// Frobenius norm, 0 for an empty system. Where A and -B share an eigenvalue there is no single solution, and X is
/// non-finite or huge; non-finite input gives NaN.
double solveSylvester(std::span<const double> a, std::span<const double> b, std::span<const double> c, std::ptrdiff_t n,
                      std::ptrdiff_t m, std::span<double> x);

/// A tridiagonal matrix by its lower, main and upper diagonal: row i is lower[i], main[i], upper[i]. lower[0] and
/// upper[n-1] are not read.
struct Tridiagonal {
  const double *lower, *main, *upper;
  std::ptrdiff_t n;
};

/// Factors of the matrix with s added to its main diagonal: L unit lower bidiagonal with l below the diagonal, U with
/// main diagonal u and the matrix's own upper one. s is 0 unless a pivot is below 1e-15 in size; then 1e-6, doubled
/// until no pivot is. l[0] is set to 0.
void factorTridiagonal(const Tridiagonal& a, double* u, double* l);

/// Solves L U x = d; y takes the intermediate L^-1 d. x may be y or d.
void solveTridiagonalFactored(const double* u, const double* upper, const double* l, double* y, double* x,
                              const double* d, std::ptrdiff_t n);

/// Factors and solves; x as a new array.
std::vector<double> solveTridiagonal(const Tridiagonal& a, const double* d);

}  // namespace LineEqu
