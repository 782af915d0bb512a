// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "solver/least_squares/dense_solver.h"

namespace Solver {

/// Gauss-Newton steps inside a trust region, bent towards the gradient where they leave it (after Powell 1970), with
/// backtracking. Steps come from the inverse of the normal matrix J'J, so that digits are lost with its condition.
class SolverByDogLeg_c final : public DenseSolver_c {
 public:
  SolverByDogLeg_c() { typeCode = 50; }

  void init(int32_t varCount, int32_t resCount) override;
  void solve(std::span<const double> x) override;

  double radius = 0.0, alpha = 0.0, beta = 0.0;

 private:
  bool start(std::span<const double> x);
  bool iterate();
  void calcGradient();
  void calcNormalStep();
  void bend();
  void backtrack(double length);
  bool keepBest(double gain);
  bool resize(double gain);

  double prev = 0.0, now = 0.0;  ///< sums of squares at curVar and newVar
  double minStep = 0.0;          ///< squared length below which a step is none
  int32_t count = 0;             ///< iterations since the last one that went down
  std::vector<double> tryVar, tryRes;
};

}  // namespace Solver
