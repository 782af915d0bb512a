// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <vector>

namespace NetWork {

/// A kernel is a formula of the product x.y or of the squared distance |x-y|^2, with up to three parameters.
struct KernelKind {
  int32_t code;
  enum Argument : uint8_t { product, squaredDistance } argument;
  uint8_t paramCount;
  std::array<double, 3> defaults;
  double (*formula)(double s, const double* p);
};

const KernelKind& kernelOf(int32_t code);  ///< the linear kernel for an unknown code
bool isLinear(const KernelKind& kind);

/// Fills the parameters that are missing with the kernel's defaults.
void fillParams(const KernelKind& kind, std::vector<double>& params);

inline double productOf(const double* x, const double* y, std::size_t dim) {
  double sum = 0;
  for (std::size_t i = 0; i < dim; ++i) sum += x[i] * y[i];
  return sum;
}

inline double squaredDistanceOf(const double* x, const double* y, std::size_t dim) {
  double sum = 0;
  for (std::size_t i = 0; i < dim; ++i) sum += (x[i] - y[i]) * (x[i] - y[i]);
  return sum;
}

/// Values between a point and `n` samples, given coordinate by coordinate: [dim][n]. The sums of valueOf, the samples
/// side by side.
void rowOf(const KernelKind& kind, const double* p, const double* x, const double* samples, std::size_t dim,
           std::span<double> out);

inline double valueOf(const KernelKind& kind, const double* p, const double* x, const double* y, std::size_t dim) {
  const double s = kind.argument == KernelKind::product ? productOf(x, y, dim) : squaredDistanceOf(x, y, dim);
  return kind.formula(s, p);
}

}  // namespace NetWork
