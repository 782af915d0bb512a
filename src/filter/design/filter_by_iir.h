// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "filter/design/base_filter.h"

namespace Filter {

/// A recursive filter: y[i] = sum of b[k] x[i-k] - sum over k >= 1 of a[k] y[i-k], with a[0] = 1.
class FilterByIIR : public BaseFilter {
 public:
  bool filter(const double* x, double* y, int32_t from, int32_t to) override;
  /// Fills b and a for what is asked; false when that allows no filter: both are empty where the formulas have no
  /// values.
  virtual bool designIIR(const std::vector<double>& params) = 0;
  virtual void setOrder(int32_t value) { order = value; }
  virtual void setGain(double value) { gain = value; }
  virtual void setNorm(double limit) { normLimit = limit; }
  virtual int32_t getNumerator(double* out) const;
  virtual int32_t getDenominator(double* out) const;
  /// Copies and divides by denominator[0].
  virtual void setCoefficients(std::span<const double> numerator, std::span<const double> denominator);
  virtual bool isValid() const;

  int32_t order = 1;
  double gain = 1.0;
  double normLimit = 1e300;  ///< kept for the host; designs have the gain 1 in the pass band by themselves
  std::vector<double> b, a;
};

/// All finite and within 1e100 in size; false for none.
bool usableCoefficients(std::span<const double> values);

}  // namespace Filter
