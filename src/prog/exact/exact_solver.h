// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "prog/exact/revised_simplex.h"
#include "prog/line/problem.h"

namespace LineProg {

/// Runs a linear programme to its true optimum: a revised simplex in doubles, whose last basis is looked at again, and
/// led on where it has to be, in long doubles; above it branch and bound.
class ExactSolver {
 public:
  /// The problem's objective is prepared. `solution` is written when there is one.
  Status solve(const LineProblem& problem, std::vector<double>& solution);

 private:
  Basis last;  ///< of the relaxation, where a further call goes on
};

}  // namespace LineProg
