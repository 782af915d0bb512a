// SPDX-License-Identifier: Apache-2.0
#include "numeric/dense.h"

#include <Eigen/Dense>
#include <Eigen/Eigenvalues>
#include <algorithm>
#include <cmath>
#include <complex>

#include "frame/numbers.h"

namespace Dense {
namespace {

using Eigen::MatrixXcd;
using Eigen::MatrixXd;
using RowMajor = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

MatrixXd load(std::span<const double> a, std::ptrdiff_t rows, std::ptrdiff_t cols) {
  area(rows, cols);
  return Eigen::Map<const RowMajor>(a.data(), rows, cols);
}

template <class Derived>
std::vector<double> store(const Eigen::MatrixBase<Derived>& m) {
  std::vector<double> out(area(m.rows(), m.cols()));
  Eigen::Map<RowMajor>(out.data(), m.rows(), m.cols()) = m;
  return out;
}

}  // namespace

double determinant(std::span<const double> a, std::ptrdiff_t n) {
  if (n == 0) return 1.0;
  return allFinite(a) ? Eigen::PartialPivLU<MatrixXd>(load(a, n, n)).determinant() : kNaN;
}

std::vector<double> inverse(std::span<const double> a, std::ptrdiff_t n) {
  std::vector<double> out(area(n, n));
  invert(a, n, out);
  return out;
}

double invert(std::span<const double> a, std::ptrdiff_t n, std::span<double> out) {
  if (n == 0) return 1.0;
  if (!allFinite(a)) {
    std::ranges::fill(out, kNaN);
    return kNaN;
  }
  const Eigen::PartialPivLU<MatrixXd> decomposition(load(a, n, n));
  Eigen::Map<RowMajor>(out.data(), n, n) = decomposition.inverse();
  return decomposition.determinant();
}

Schur schur(std::span<const double> a, std::ptrdiff_t n) {
  const std::size_t size = area(n, n);
  if (n > 0 && allFinite(a)) {
    const Eigen::RealSchur<MatrixXd> decomposition(load(a, n, n));
    if (decomposition.info() == Eigen::Success) return {store(decomposition.matrixU()), store(decomposition.matrixT())};
  }
  return {std::vector<double>(size, kNaN), std::vector<double>(size, kNaN)};
}

Eig eig(std::span<const double> a, std::ptrdiff_t n) {
  const std::size_t size = area(n, n);
  if (n > 0 && allFinite(a)) {
    const Eigen::EigenSolver<MatrixXd> solver(load(a, n, n), true);
    if (solver.info() == Eigen::Success) {
      const auto& values = solver.eigenvalues();
      const MatrixXcd vectors = solver.eigenvectors();
      return {store(values.real()), store(values.imag()), store(vectors.real()), store(vectors.imag())};
    }
  }
  const std::vector<double> values(static_cast<std::size_t>(n), kNaN), vectors(size, kNaN);
  return {values, values, vectors, vectors};
}

std::vector<double> interleaved(std::span<const double> re, std::span<const double> im) {
  std::vector<double> out;
  for (std::size_t i = 0; i < re.size(); ++i) out.insert(out.end(), {re[i], im[i]});
  return out;
}

bool realEig(std::span<const double> a, std::ptrdiff_t n, std::span<double> values, std::span<double> vectors) {
  const Eig all = eig(a, n);
  for (std::ptrdiff_t i = 0; i < n; ++i) {
    // KEPT: pairs before the first complex value have been written; expected: all or nothing (kept.csv: EVD_partial)
    if (std::abs(all.valuesIm[i]) > 1e-12) return false;
    values[i] = all.valuesRe[i];
    for (std::ptrdiff_t j = 0; j < n; ++j) vectors[j * n + i] = all.vectorsRe[j * n + i];
  }
  return true;
}

std::vector<double> dot(std::span<const double> a, std::span<const double> b, std::ptrdiff_t r, std::ptrdiff_t m,
                        std::ptrdiff_t c) {
  area(r, c);
  return store(load(a, r, m) * load(b, m, c));
}

std::ptrdiff_t firstMaximum(std::span<const double> row) {
  if (row.empty()) return 0;
  std::size_t best = 0;
  for (std::size_t i = 1; i < row.size(); ++i)
    if (row[i] > row[best] || (std::isnan(row[best]) && !std::isnan(row[i]))) best = i;
  return static_cast<std::ptrdiff_t>(best) + 1;
}

}  // namespace Dense
