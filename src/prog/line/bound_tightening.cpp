// SPDX-License-Identifier: Apache-2.0
#include "prog/line/bound_tightening.h"

#include <algorithm>
#include <cmath>

#include "prog/line/base_var.h"

namespace LineProg {

namespace {

constexpr int kSweeps = 128;
constexpr double kNoCoefficient = 1e-16;
constexpr double kNoLimit = 1e100;
constexpr double kNearWhole = 1e-14;
constexpr double kGain = 0.001;

// What the constraint leaves for term k; above kNoLimit, or NaN, when the other terms have no limit.
double leftFor(const BoundedSum& sum, int32_t k) {
  double left = sum.rhs;
  for (int32_t j = 0; j < sum.n; ++j) {
    if (j == k) continue;
    const double a = sum.coefs[j];
    left -= a * (a > 0 ? sum.lower : sum.upper)[sum.indices[j]];
    if (!(left <= kNoLimit)) break;
  }
  return left;
}

bool tighten(const BoundedSum& sum, int32_t k) {
  const double a = sum.coefs[k], left = leftFor(sum, k);
  if (!(left <= kNoLimit)) return false;
  double x = left / a;
  const uint8_t kind = sum.kinds[sum.indices[k]];
  const bool whole = std::abs(x - std::round(x)) <= kNearWhole;
  if (whole) x = std::round(x);
  if (a < 0) {
    if (!whole && kind == kBinary) x = x < 0 ? 0 : 1;
    if (!whole && kind == kInteger) x = std::ceil(x);
    double& lower = sum.lower[sum.indices[k]];
    if (!(x > lower + kGain)) return false;
    lower = x;
  } else {
    if (!whole && kind == kBinary) x = x > 1 ? 1 : 0;
    if (!whole && kind == kInteger) x = std::floor(x);
    double& upper = sum.upper[sum.indices[k]];
    if (!(upper > x + kGain)) return false;
    upper = x;
  }
  return true;
}

}  // namespace

bool resetMaxMin(const BoundedSum& sum) {
  if (sum.n <= 0 || std::any_of(sum.indices, sum.indices + sum.n, [](int32_t index) { return index < 0; }))
    return false;
  bool any = false;
  for (int sweep = 0; sweep < kSweeps; ++sweep) {
    bool changed = false;
    for (int32_t k = 0; k < sum.n; ++k)
      if (std::abs(sum.coefs[k]) >= kNoCoefficient && tighten(sum, k)) changed = true;
    if (!changed) break;
    any = true;
  }
  return any;
}

}  // namespace LineProg
