// SPDX-License-Identifier: Apache-2.0
#include "solver/least_squares/dense_solver.h"

#include <algorithm>

namespace Solver {

void DenseSolver_c::init(int32_t vars, int32_t residuals) {
  varCount = std::max(vars, 0);
  resCount = std::max(residuals, 0);
  const auto n = static_cast<std::size_t>(varCount), m = static_cast<std::size_t>(resCount);
  minVar.clear();
  maxVar.clear();
  for (auto* vector : {&var, &curVar, &newVar, &rhs, &step, &grad}) vector->assign(n, 0.0);
  res.assign(m, 0.0);
  jac.assign(m * n, 0.0);
  inverse.assign(n * n, 0.0);
  normal.assign(n * n, 0.0);
  limitFun = [](std::span<double>) {};
}

void DenseSolver_c::moveTo(std::span<const double> x, std::span<const double> move, std::span<double> out) {
  // The bounds may come after init and be shorter than the point: what they do not name is free.
  const auto stopAt = [&](double from, double bound) {
    return (bound - from) * ((rng != nullptr ? uniform(*rng) : 0.0) * 0.4 + 0.6) + from;
  };
  for (std::size_t i = 0; i < x.size(); ++i) {
    const double target = x[i] + move[i];
    if (i < minVar.size() && target < minVar[i])
      out[i] = stopAt(x[i], minVar[i]);
    else if (i < maxVar.size() && target > maxVar[i])
      out[i] = stopAt(x[i], maxVar[i]);
    else
      out[i] = target;
  }
}

}  // namespace Solver
