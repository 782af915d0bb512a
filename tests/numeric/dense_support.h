// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include "support/numbers.h"

constexpr double kEps = 2.220446049250313e-16;

/// A row-major matrix with just enough arithmetic to state residuals.
struct Mat {
  int32_t rows, cols;
  std::vector<double> v;

  Mat(int32_t rows, int32_t cols, double fill = 0.0)
      : rows(rows), cols(cols), v(static_cast<std::size_t>(rows) * static_cast<std::size_t>(cols), fill) {}
  Mat(int32_t rows, int32_t cols, std::vector<double> values) : rows(rows), cols(cols), v(std::move(values)) {}

  double& operator()(int32_t i, int32_t j) { return v[static_cast<std::size_t>(i) * cols + j]; }
  double operator()(int32_t i, int32_t j) const { return v[static_cast<std::size_t>(i) * cols + j]; }
  double* data() { return v.data(); }
  const double* data() const { return v.data(); }

  static Mat identity(int32_t n) {
    Mat m(n, n);
    for (int32_t i = 0; i < n; ++i) m(i, i) = 1;
    return m;
  }
  static Mat random(int32_t rows, int32_t cols, unsigned seed) {
    std::mt19937 engine(seed);
    std::uniform_real_distribution<double> uniform(-1, 1);
    Mat m(rows, cols);
    for (double& x : m.v) x = uniform(engine);
    return m;
  }
};

inline Mat operator*(const Mat& a, const Mat& b) {
  Mat c(a.rows, b.cols);
  for (int32_t i = 0; i < a.rows; ++i)
    for (int32_t k = 0; k < a.cols; ++k)
      for (int32_t j = 0; j < b.cols; ++j) c(i, j) += a(i, k) * b(k, j);
  return c;
}

inline Mat combine(const Mat& a, double factor, const Mat& b) {
  Mat c = a;
  for (std::size_t i = 0; i < c.v.size(); ++i) c.v[i] += factor * b.v[i];
  return c;
}
inline Mat operator+(const Mat& a, const Mat& b) { return combine(a, 1, b); }
inline Mat operator-(const Mat& a, const Mat& b) { return combine(a, -1, b); }

inline Mat transpose(const Mat& a) {
  Mat t(a.cols, a.rows);
  for (int32_t i = 0; i < a.rows; ++i)
    for (int32_t j = 0; j < a.cols; ++j) t(j, i) = a(i, j);
  return t;
}

inline double norm(const Mat& a) {
  double sum = 0;
  for (double x : a.v) sum += x * x;
  return std::sqrt(sum);
}

/// |a - b| / max(|b|, tiny); NaN when either has one.
inline double distance(const Mat& a, const Mat& b) { return norm(a - b) / std::max(norm(b), 1e-300); }

inline bool allNaN(const std::vector<double>& v) {
  for (double x : v)
    if (!std::isnan(x)) return false;
  return true;
}
