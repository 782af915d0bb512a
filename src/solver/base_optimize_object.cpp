// SPDX-License-Identifier: Apache-2.0
#include "solver/base_optimize_object.h"

#include <algorithm>
#include <numeric>

namespace Solver {

void BaseOptimizeObject::setRange(double lo, double hi) {
  if (lo > hi) return setRange(hi, lo);
  std::ranges::fill(minVar, lo);
  std::ranges::fill(maxVar, hi);
}

void BaseOptimizeObject::setErrorList(const std::vector<double>& values) {
  lastValue = std::accumulate(values.begin(), values.end(), 0.0);
}

void BaseOptimizeObject::calcGradient(std::vector<double>& /*x*/, double /*h*/, std::vector<double>& g,
                                      const std::vector<int32_t>& /*indexes*/, int32_t /*count*/) {
  std::ranges::fill(g, 0.0);
}

}  // namespace Solver
