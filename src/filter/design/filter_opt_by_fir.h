// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "frame/base_data.h"

namespace Filter {

inline constexpr double kNoFit = 1e300;  ///< error of a design that could not be made

/// Records of what goes into a filter and what shall come out, and the system of equations made of them.
class FilterByOptmizer : public BaseData {
 public:
  /// Appends n samples of each.
  void addSample(std::span<const double> x, std::span<const double> y);
  void clear();

 protected:
  std::vector<std::vector<double>> inputs, outputs;
  std::vector<double> designMatrix, rightSide;
};

/// Coefficients h that make sum over k of h[k] x[i - centre + k] the closest to y[i] over all records in the sense of
/// least squares; centre = (size - 1)/2.
class FilterOptByFIR final : public FilterByOptmizer {
 public:
  /// Method 0: h symmetric about its middle, 1: antisymmetric but for the centre of an odd size, else: free. Returns
  /// the sum of squares over all samples, or kNoFit for fewer full windows than unknowns; `result` then stays.
  double solve(std::size_t size, uint8_t method);

  std::vector<double> result;

 private:
  double error() const;

  std::size_t unknowns = 0;
};

}  // namespace Filter
