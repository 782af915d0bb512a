// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "solver/moving_solver.h"

namespace Solver {

/// "GTO", a gorilla troops optimiser (after Abdollahzadeh et al. 2021): a phase of exploration, then one around the
/// best.
class GTOSolver final : public BaseNormSolver {
 public:
  GTOSolver();

  double C = 0.0, Lc = 0.0;
  double p = 0.03;
  double w = 0.8;
  double beta = 3.0;

 private:
  bool explore();
  bool exploit();
  bool followBest();
  bool followSum();
};

}  // namespace Solver
