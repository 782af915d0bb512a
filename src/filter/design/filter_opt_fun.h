// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "filter/design/base_filter.h"

namespace Filter {

/// The error of a filter's response over a grid of angles, as an objective for an optimiser.
class FilterOptFun final : public BaseFilter {
 public:
  /// Runs the coefficients as a recursive filter.
  bool filter(const double* x, double* y, int32_t from, int32_t to) override;

  bool setFIROpt(int32_t nb);
  bool setIIROpt(int32_t nb, int32_t na);
  void setParam(const double* p);
  void setImagWeight(double value) { imagWeight = value * value; }
  void setSampleData(std::span<const double> angle, std::span<const double> target);
  void setSampleSize(int32_t m);
  double optFun(const double* p);
  /// The error of the coefficients b and a.
  double calcError(std::span<const double> b, std::span<const double> a) const;

 private:
  void addRun(double from, double edge, int32_t m);
  double targetAt(double angle) const;

  double imagWeight = 1.0;
  std::vector<double> numerator, denominator{1.0};
  std::vector<double> sampleAngle, sampleTarget;
};

}  // namespace Filter
