// SPDX-License-Identifier: Apache-2.0
#include "numeric/svd.h"

#include <Eigen/SVD>
#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

#include "frame/numbers.h"

namespace Dense {
namespace {

using RowMajor = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

Eigen::MatrixXd load(std::span<const double> a, std::ptrdiff_t rows, std::ptrdiff_t cols) {
  area(rows, cols);
  return Eigen::Map<const RowMajor>(a.data(), rows, cols);
}

std::vector<double> store(const Eigen::MatrixXd& m) {
  std::vector<double> out(area(m.rows(), m.cols()));
  Eigen::Map<RowMajor>(out.data(), m.rows(), m.cols()) = m;
  return out;
}

std::vector<double> identity(std::ptrdiff_t n) { return store(Eigen::MatrixXd::Identity(n, n)); }

}  // namespace

std::size_t area(std::ptrdiff_t rows, std::ptrdiff_t cols) {
  constexpr std::ptrdiff_t limit = std::numeric_limits<std::ptrdiff_t>::max() / static_cast<int>(sizeof(double));
  if (rows < 0 || cols < 0 || (cols > 0 && rows > limit / cols)) throw std::bad_alloc();
  return static_cast<std::size_t>(rows) * static_cast<std::size_t>(cols);
}

bool allFinite(std::span<const double> values) {
  return std::all_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); });
}

SVD svd(std::span<const double> a, std::ptrdiff_t rows, std::ptrdiff_t cols, Vectors vectors) {
  const std::ptrdiff_t k = std::min(rows, cols);
  SVD out;
  if (vectors != Vectors::none) {
    out.uCols = vectors == Vectors::full ? rows : k;
    out.vCols = vectors == Vectors::full ? cols : k;
  }
  const std::size_t sizeU = area(rows, out.uCols), sizeV = area(cols, out.vCols);  // before anything is read
  // The decomposition refuses both an empty matrix and one with a NaN; neither has anything to compute.
  if (k == 0) {
    if (vectors == Vectors::full) {
      out.u = identity(rows);
      out.v = identity(cols);
    }
    return out;
  }
  if (!allFinite(a)) {
    out.values.assign(static_cast<std::size_t>(k), kNaN);
    out.u.assign(sizeU, kNaN);
    out.v.assign(sizeV, kNaN);
    return out;
  }
  const unsigned options = vectors == Vectors::full   ? Eigen::ComputeFullU | Eigen::ComputeFullV
                           : vectors == Vectors::thin ? Eigen::ComputeThinU | Eigen::ComputeThinV
                                                      : 0;
  const Eigen::BDCSVD<Eigen::MatrixXd> decomposition(load(a, rows, cols), options);
  const auto& values = decomposition.singularValues();
  out.values.assign(values.data(), values.data() + values.size());
  if (vectors != Vectors::none) {
    out.u = store(decomposition.matrixU());
    out.v = store(decomposition.matrixV());
  }
  return out;
}

std::vector<double> diagonal(std::span<const double> values, std::ptrdiff_t rows, std::ptrdiff_t cols) {
  std::vector<double> out(area(rows, cols), 0.0);
  for (std::size_t i = 0; i < values.size(); ++i) out[i * static_cast<std::size_t>(cols) + i] = values[i];
  return out;
}

std::ptrdiff_t rank(std::span<const double> a, std::ptrdiff_t rows, std::ptrdiff_t cols) {
  if (rows <= 0 || cols <= 0 || !allFinite(a)) return 0;
  return Eigen::BDCSVD<Eigen::MatrixXd>(load(a, rows, cols), 0).rank();
}

std::vector<double> leastSquares(std::span<const double> a, std::ptrdiff_t rows, std::ptrdiff_t cols,
                                 std::span<const double> b, std::ptrdiff_t colsB) {
  const std::size_t size = area(cols, colsB);
  if (!allFinite(a)) return std::vector<double>(size, kNaN);
  if (size == 0 || rows == 0) return std::vector<double>(size, 0.0);
  // Columns of U and V beyond the rank never enter the pseudo-inverse, so the thin factors give the same solution as
  // the full ones without a rows x rows matrix.
  const Eigen::BDCSVD<Eigen::MatrixXd> decomposition(load(a, rows, cols), Eigen::ComputeThinU | Eigen::ComputeThinV);
  const std::ptrdiff_t rank = decomposition.rank();
  // Products of plain matrices: each other form costs seconds of compile time.
  const Eigen::MatrixXd ut = decomposition.matrixU().leftCols(rank).transpose();
  const Eigen::MatrixXd v = decomposition.matrixV().leftCols(rank);
  const auto s = decomposition.singularValues().head(rank);
  Eigen::MatrixXd projected = ut * load(b, rows, colsB);
  projected.array().colwise() /= s.array();
  std::vector<double> x = store(Eigen::MatrixXd(v * projected));
  for (std::ptrdiff_t i = 0; i < rows * colsB; ++i)
    if (!std::isfinite(b[i]))
      for (std::ptrdiff_t j = 0; j < cols; ++j) x[j * colsB + i % colsB] = kNaN;
  return x;
}

}  // namespace Dense
