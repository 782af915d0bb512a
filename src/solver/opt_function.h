// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

#include "solver/base_optimize_object.h"

namespace Solver {

/// An objective made of a host's callbacks.
class OptFunction final : public BaseOptimizeObject {
 public:
  using BaseOptimizeObject::BaseOptimizeObject;

  double calcValue(const std::vector<double>& x) override;
  /// The host's gradient, or central differences; a difference with a NaN in it counts as 0.
  void calcGradient(std::vector<double>& x, double h, std::vector<double>& g, const std::vector<int32_t>& indexes,
                    int32_t count) override;
  /// Bounds and objective only: neither projection nor gradient.
  std::unique_ptr<BaseOptimizeObject> clone() const override;

  std::function<double(const double*)> valueFun;
  std::function<double(double*)> limitFun;
  void (*gradFun)(const double* x, double* g) = nullptr;
};

}  // namespace Solver
