// SPDX-License-Identifier: Apache-2.0
#include "filter/design/filter_by_iir.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "filter/apply/blow_up.h"
#include "filter/apply/recursion.h"

namespace Filter {

double BaseFilter::angleOf(double frequency) const { return 2.0 * std::numbers::pi * frequency / samplingFrequency; }

bool usableCoefficients(std::span<const double> values) {
  return !values.empty() && std::ranges::none_of(values, blownUp);
}

bool FilterByIIR::filter(const double* x, double* y, int32_t from, int32_t to) {
  std::fill(y, y + std::max(to, 0), 0.0);
  if (b.empty() || a.empty()) return false;
  return recurse(b, a, x, y, std::max(from, 0), to);
}

int32_t FilterByIIR::getNumerator(double* out) const {
  if (out != nullptr) std::ranges::copy(b, out);
  return static_cast<int32_t>(b.size());
}

int32_t FilterByIIR::getDenominator(double* out) const {
  if (out != nullptr) std::ranges::copy(a, out);
  return static_cast<int32_t>(a.size());
}

void FilterByIIR::setCoefficients(std::span<const double> numerator, std::span<const double> denominator) {
  b.assign(numerator.begin(), numerator.end());
  a.assign(denominator.begin(), denominator.end());
  if (a.empty()) return;
  const double first = a[0];
  for (double& value : b) value /= first;
  for (double& value : a) value /= first;
}

bool FilterByIIR::isValid() const { return usableCoefficients(b) && usableCoefficients(a); }

}  // namespace Filter
