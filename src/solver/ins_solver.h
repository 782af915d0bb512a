// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "solver/moving_solver.h"

namespace Solver {

/// "INS": each candidate goes to a weighted mean of a random set of others; some of them then walk away from the rest.
class INSSolver final : public BaseNormSolver {
 public:
  INSSolver();

  std::vector<std::size_t> order;
  std::vector<Candidate> neighbours;

 private:
  bool iterate();
  void gather(const Candidate& c, LocalMersenne& local);
};

}  // namespace Solver
