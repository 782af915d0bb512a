// SPDX-License-Identifier: Apache-2.0
#include "filter/design/filter_opt_fun.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "filter/angles.h"
#include "filter/apply/recursion.h"
#include "orvane/filter.h"

namespace Filter {

bool FilterOptFun::filter(const double* x, double* y, int32_t from, int32_t to) {
  std::fill(y, y + std::max(to, 0), 0.0);
  return !numerator.empty() && recurse(numerator, denominator, x, y, std::max(from, 0), to);
}

bool FilterOptFun::setFIROpt(int32_t nb) { return setIIROpt(nb, 0); }

bool FilterOptFun::setIIROpt(int32_t nb, int32_t na) {
  if (nb <= 0 || na < 0) return false;
  numerator.resize(static_cast<std::size_t>(nb));
  denominator.resize(static_cast<std::size_t>(na) + 1);
  return true;
}

void FilterOptFun::setParam(const double* p) {
  std::copy_n(p, numerator.size(), numerator.begin());
  std::copy_n(p + numerator.size(), denominator.size() - 1, denominator.begin() + 1);
}

void FilterOptFun::setSampleData(std::span<const double> angle, std::span<const double> target) {
  sampleAngle.assign(angle.begin(), angle.end());
  sampleTarget.assign(target.begin(), target.end());
  sampleTarget.resize(sampleAngle.size());
}

/// m angles between `from` and an edge, their distances from the edge as squares: dense at the edge, neither end hit.
void FilterOptFun::addRun(double from, double edge, int32_t m) {
  if (!(edge > 0.0 && edge < std::numbers::pi)) return;
  for (int32_t j = 0; j < m; ++j) {
    const double share = (j + 0.5) / m;
    sampleAngle.push_back(edge + (from - edge) * share * share);
  }
}

double FilterOptFun::targetAt(double angle) const {
  const bool below = angle <= angleOf(limitFrequency);
  const bool inside = angle >= angleOf(lowLimitFrequency) && angle <= angleOf(highLimitFrequency);
  switch (filterType) {
    case ORVANE_FILTER_LOW_PASS:
      return below ? 1.0 : 0.0;
    case ORVANE_FILTER_HIGH_PASS:
      return below ? 0.0 : 1.0;
    case ORVANE_FILTER_BAND_PASS:
      return inside ? 1.0 : 0.0;
    case ORVANE_FILTER_BAND_STOP:
      return inside ? 0.0 : 1.0;
    default:
      return 0.0;
  }
}

void FilterOptFun::setSampleSize(int32_t m) {
  sampleAngle.clear();
  sampleTarget.clear();
  if (m <= 0) return;
  sampleAngle.reserve(5 * static_cast<std::size_t>(m) + 1);
  const double kPi = std::numbers::pi;
  double angle = 0.0;
  for (int32_t i = 0; i < m; ++i, angle += kPi / m) sampleAngle.push_back(angle);
  sampleAngle.push_back(kPi);
  if (filterType <= ORVANE_FILTER_HIGH_PASS) {
    const double edge = angleOf(limitFrequency);
    addRun(0.0, edge, m);
    addRun(kPi, edge, m);
  } else if (filterType <= ORVANE_FILTER_BAND_STOP) {
    const double low = angleOf(lowLimitFrequency), high = angleOf(highLimitFrequency);
    addRun(0.0, low, m);
    addRun(kPi, high, m);
    addRun(low, high, m);
    addRun(high, low, m);
  }
  std::ranges::sort(sampleAngle);
  for (const double at : sampleAngle) sampleTarget.push_back(targetAt(at));
}

double FilterOptFun::optFun(const double* p) {
  setParam(p);
  return calcError(numerator, denominator);
}

double FilterOptFun::calcError(std::span<const double> b, std::span<const double> a) const {
  const auto at = [](std::span<const double> list, std::size_t i) { return i < list.size() ? list[i] : 0.0; };
  double error = 0.0;
  for (std::size_t k = 0; k < sampleAngle.size(); ++k) {
    double ac = at(a, 0), as = 0.0, bc = at(b, 0), bs = 0.0, phase = 0.0;
    for (std::size_t i = 1; i < std::max(a.size(), b.size()); ++i) {
      phase += sampleAngle[k];
      const double c = cosOf(phase), s = sinOf(phase);
      bc += at(b, i) * c;
      bs += at(b, i) * s;
      ac += at(a, i) * c;
      as += at(a, i) * s;
    }
    // KEPT: the product B conj(A) with a plus in its imaginary part; expected: the quotient B/A, whose imaginary part
    // has bs ac - as bc (kept.csv: OptFun_product)
    const double re = sampleTarget[k] - (as * bs + ac * bc), im = bs * ac + as * bc;
    error += re * re + imagWeight * im * im;
  }
  return error;
}

}  // namespace Filter
