// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "frame/handle.h"
#include "frame/native_data2d.h"
#include "numeric/dense.h"
#include "numeric/integral.h"
#include "numeric/line_equation.h"
#include "numeric/ode.h"
#include "numeric/sampled_integral.h"
#include "numeric/svd.h"
#include "orvane/integral.h"
#include "orvane/line_equation.h"
#include "orvane/matrix.h"

namespace {

std::ptrdiff_t length(int32_t n) { return std::max(n, 0); }

// A host's matrix, row-major; a negative count is 0.
template <class T>
std::span<T> block(T* values, int32_t rows, int32_t cols) {
  return {values, Dense::area(length(rows), length(cols))};
}

void handOver(const std::vector<double>& values, double* out) { std::copy(values.begin(), values.end(), out); }

void handOverSVD(Dense::Vectors form, const double* a, int32_t rows, int32_t cols, double* u, double* s, double* v) {
  const Dense::SVD svd = Dense::svd(block(a, rows, cols), length(rows), length(cols), form);
  handOver(svd.u, u);
  handOver(Dense::diagonal(svd.values, svd.uCols, svd.vCols), s);
  handOver(svd.v, v);
}

}  // namespace

double matrixDet(const double* a, int32_t n) { return Dense::determinant(block(a, n, n), length(n)); }

void matrixInverse(const double* a, double* out, int32_t n) {
  handOver(Dense::inverse(block(a, n, n), length(n)), out);
}

int32_t matrixRank(const double* a, int32_t rows, int32_t cols) {
  return static_cast<int32_t>(Dense::rank(block(a, rows, cols), length(rows), length(cols)));
}

void matrixSVD(const double* a, int32_t rows, int32_t cols, double* u, double* s, double* v) {
  handOverSVD(Dense::Vectors::full, a, rows, cols, u, s, v);
}

void matrixSVD2(const double* a, int32_t rows, int32_t cols, double* u, double* s, double* v) {
  handOverSVD(Dense::Vectors::thin, a, rows, cols, u, s, v);
}

int32_t matrixSingularValues(const double* a, int32_t rows, int32_t cols, double* out) {
  const std::vector<double> values =
      Dense::svd(block(a, rows, cols), length(rows), length(cols), Dense::Vectors::none).values;
  // KEPT: ascending; expected: the descending order of matrixSVD (kept.csv: SingularValues_order)
  std::copy(values.rbegin(), values.rend(), out);
  return static_cast<int32_t>(values.size());
}

void matrixSchur(const double* a, double* u, double* t, int32_t n) {
  const Dense::Schur schur = Dense::schur(block(a, n, n), length(n));
  handOver(schur.u, u);
  handOver(schur.t, t);
}

void matrixEig(const double* a, int32_t n, double* values, double* vectorsRe, double* vectorsIm) {
  const Dense::Eig eig = Dense::eig(block(a, n, n), length(n));
  handOver(Dense::interleaved(eig.valuesRe, eig.valuesIm), values);
  handOver(eig.vectorsRe, vectorsRe);
  handOver(eig.vectorsIm, vectorsIm);
}

bool matrixEVD(const double* a, int32_t n, double* values, double* vectors) {
  return Dense::realEig(block(a, n, n), length(n), block(values, n, 1), block(vectors, n, n));
}

void matrix_dot(const double* a, const double* b, double* c, int32_t r, int32_t m, int32_t cols) {
  handOver(Dense::dot(block(a, r, m), block(b, m, cols), length(r), length(m), length(cols)), c);
}

void matrix_findMaxIndexByRow(const Data2D* table, const double* a, double* out, int32_t rows, int32_t cols) {
  if (rows == 0)
    for (const std::vector<double>& row : native(table).rows) *out++ = static_cast<double>(Dense::firstMaximum(row));
  for (std::ptrdiff_t i = 0; i < rows; ++i)
    out[i] = static_cast<double>(Dense::firstMaximum(span(a + i * length(cols), cols)));
}

bool math_solveLineEqu(const double* a, int32_t rows, int32_t cols, const double* b, int32_t rowsB, int32_t colsB,
                       double* x) {
  std::vector<double> solution;
  if (!LineEqu::solveLineEqu(block(a, rows, cols), rows, cols, block(b, rowsB, colsB), rowsB, colsB, solution))
    return false;
  handOver(solution, x);
  return true;
}

void api_solveLineEquation(const double* a, const double* b, int32_t rows, int32_t cols, int32_t rhsCount, double* x) {
  handOver(LineEqu::solveByColumns(block(a, rows, cols), rows, cols, block(b, rows, rhsCount), rhsCount), x);
}

double lineEqu_solveEquBySylvester(const double* a, const double* b, const double* c, int32_t n, int32_t m, double* x) {
  return LineEqu::solveSylvester(block(a, n, n), block(b, m, m), block(c, n, m), length(n), length(m), block(x, n, m));
}

void lineEqu_solveTridiagonalEquLU(const double* c, const double* b, const double* a, double* u, double* l, int32_t n) {
  LineEqu::factorTridiagonal({a, b, c, length(n)}, u, l);
}

void lineEqu_solveTridiagonalEquByLU(const double* u, const double* c, const double* l, double* work, double* x,
                                     const double* d, int32_t n) {
  LineEqu::solveTridiagonalFactored(u, c, l, work, x, d, length(n));
}

void lineEqu_solveTridiagonalEqu(const double* c, const double* b, const double* a, const double* d, double* x,
                                 int32_t n) {
  handOver(LineEqu::solveTridiagonal({a, b, c, length(n)}, d), x);
}

void math_Integral(double (*f)(double), const double* lows, const double* highs, int32_t count, double* out) {
  for (std::ptrdiff_t i = 0; i < count; ++i) out[i] = Integral::integralByRange(f, lows[i], highs[i], -1);
}

double math_Integral1D(double (*f)(double), double a, double b, int32_t maxIntervals) {
  return Integral::integralByRange(f, a, b, maxIntervals);
}

void data_Integral(const double* values, double* out, double step, int32_t count, uint8_t mode) {
  handOver(Integral::runningIntegral(span(values, count), step, mode), out);
}

void math_SolveODE45(void (*f)(double t, const double* y, double* dy), double t0, const double* y0, int32_t dimension,
                     const double* ts, double* out, int32_t count, double tolerance) {
  ODE::solveByRKF45(f, t0, span(y0, dimension), span(ts, count), block(out, count, dimension), tolerance);
}
