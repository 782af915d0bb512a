// SPDX-License-Identifier: Apache-2.0
#include "numeric/line_equation.h"

#include <algorithm>
#include <cmath>

#include "numeric/svd.h"

namespace LineEqu {
namespace {

constexpr double kSmallestPivot = 1e-15;
constexpr double kFirstShift = 1e-6;

// The array of a rows x cols matrix, from row-major to column-major order; exchange the counts for the way back.
std::vector<double> transposed(std::span<const double> a, std::ptrdiff_t rows, std::ptrdiff_t cols) {
  std::vector<double> out(Dense::area(rows, cols));
  for (std::ptrdiff_t i = 0; i < rows; ++i)
    for (std::ptrdiff_t j = 0; j < cols; ++j) out[j * rows + i] = a[i * cols + j];
  return out;
}

// One elimination sweep; false at the first pivot that is too small.
bool eliminate(const Tridiagonal& a, double shift, double* u, double* l) {
  for (std::ptrdiff_t i = 0; i < a.n; ++i) {
    l[i] = i == 0 ? 0.0 : a.lower[i] / u[i - 1];
    u[i] = a.main[i] + shift - (i == 0 ? 0.0 : l[i] * a.upper[i - 1]);
    if (std::abs(u[i]) < kSmallestPivot) return false;
  }
  return true;
}

}  // namespace

bool solveLineEqu(std::span<const double> a, int rows, int cols, std::span<const double> b, int rowsB, int colsB,
                  std::vector<double>& x) {
  if (rows != rowsB) return false;
  x = Dense::leastSquares(a, std::max(rows, 0), std::max(cols, 0), b, std::max(colsB, 0));
  return true;
}

std::vector<double> solveByColumns(std::span<const double> a, int rows, int cols, std::span<const double> b,
                                   int colsB) {
  rows = std::max(rows, 0);
  cols = std::max(cols, 0);
  colsB = std::max(colsB, 0);
  std::vector<double> x;
  solveLineEqu(transposed(a, cols, rows), rows, cols, transposed(b, colsB, rows), rows, colsB, x);
  return transposed(x, cols, colsB);
}

void factorTridiagonal(const Tridiagonal& a, double* u, double* l) {
  // KEPT: a singular matrix is shifted without a report; expected: a failure (kept.csv: Tridiagonal_shift)
  for (double shift = 0.0; !eliminate(a, shift, u, l);) shift = shift < kSmallestPivot ? kFirstShift : 2 * shift;
}

void solveTridiagonalFactored(const double* u, const double* upper, const double* l, double* y, double* x,
                              const double* d, std::ptrdiff_t n) {
  for (std::ptrdiff_t i = 0; i < n; ++i) y[i] = i == 0 ? d[0] : d[i] - l[i] * y[i - 1];
  for (std::ptrdiff_t i = n - 1; i >= 0; --i) x[i] = (i == n - 1 ? y[i] : y[i] - upper[i] * x[i + 1]) / u[i];
}

std::vector<double> solveTridiagonal(const Tridiagonal& a, const double* d) {
  const auto n = static_cast<std::size_t>(a.n);
  std::vector<double> u(n), l(n), x(n);
  factorTridiagonal(a, u.data(), l.data());
  solveTridiagonalFactored(u.data(), a.upper, l.data(), x.data(), x.data(), d, a.n);
  return x;
}

}  // namespace LineEqu
