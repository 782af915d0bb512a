// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

#include "solver/base_optimize_object.h"

namespace Solver {

/// An objective that stands for another one and is large near an anchored point, falling away from it. A stalled run
/// searches it to tunnel out of the minimum that it is caught in.
class AnchorFun final : public BaseOptimizeObject {
 public:
  AnchorFun();

  double calcValue(const std::vector<double>& x) override;
  std::unique_ptr<BaseOptimizeObject> clone() const override;
  /// 1/((a + 0.001)(L + 1e-12)), L = ln(s/n + 1); arguments of 10 and more are folded back by the transforms, so that
  /// the surface has no flat far field.
  double deflate(double a, double s) const;
  void setModes(uint8_t first, uint8_t second);
  static double transform(uint8_t mode, double t);

  uint8_t mode1 = 1, mode2 = 1;
  std::function<double(double)> transform1, transform2;
  SharedValue<uint8_t> active = uint8_t{0};
  std::shared_ptr<BaseOptimizeObject> inner;
  SharedValue<double> innerValue = 0.0;
  SharedValue<double> anchorBest = 0.0;
  double anchorValue = 0.0;
  std::vector<double> anchorVar, anchorBestVar;
};

}  // namespace Solver
