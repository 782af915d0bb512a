// SPDX-License-Identifier: Apache-2.0
#include "solver/opt_function.h"

#include <algorithm>
#include <cmath>

namespace Solver {

double OptFunction::calcValue(const std::vector<double>& x) {
  const double value = valueFun ? valueFun(x.data()) : kNoValue;
  lastValue = std::isnan(value) ? kNoValue : value;
  return value;
}

void OptFunction::calcGradient(std::vector<double>& x, double h, std::vector<double>& g,
                               const std::vector<int32_t>& indexes, int32_t count) {
  if (gradFun != nullptr) {
    gradFun(x.data(), g.data());
    return;
  }
  std::ranges::fill(g, 0.0);
  if (!valueFun) return;
  const double scale = 1.0 / (2.0 * h);
  for (int32_t k = 0; k < count && !stopped(); ++k) {
    const auto i = static_cast<std::size_t>(indexes[static_cast<std::size_t>(k)]);
    const double here = x[i];
    x[i] = here + h;
    const double above = valueFun(x.data());
    if (!std::isnan(above) && !stopped()) {
      x[i] = here - h;
      const double below = valueFun(x.data());
      if (!std::isnan(below)) g[i] = (above - below) * scale;
    }
    x[i] = here;
  }
}

std::unique_ptr<BaseOptimizeObject> OptFunction::clone() const {
  auto copy = std::make_unique<OptFunction>(varSize);
  copy->minVar = minVar;
  copy->maxVar = maxVar;
  copy->valueFun = valueFun;
  return copy;
}

}  // namespace Solver
