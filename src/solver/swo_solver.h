// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "solver/moving_solver.h"

namespace Solver {

/// "SWO", a spider wasp optimiser (after Abdel-Basset et al. 2023): candidates hunt around each other or mate. At least
/// 3 candidates.
class SWOSolver : public BaseNormSolver {
 public:
  SWOSolver();

  uint8_t swoFlag = 0;  ///< kept for its host; nothing reads it
  double tr2 = 0.0, a = 0.0, k = 0.0;
  std::vector<std::size_t> indexList;
  std::vector<double> diff1, diff2;

 protected:
  void schedule();
  void hunt();
  void mate();

 private:
  bool init();
  bool iterate();
  void search(const Candidate& c, const std::vector<double>& q, double r1, double r2, double r4, double m, double n);
  void follow(const Candidate& c, double r3);
  const OptVariable& listed(std::size_t i) const { return *population[indexList[i]]; }
};

/// "ISWO": the same with a third step, in which the last candidate goes to the weighted centroid and walks.
class ISWOSolver final : public SWOSolver {
 public:
  ISWOSolver();

 private:
  bool iterateCentroid();
  void centroid();
};

}  // namespace Solver
