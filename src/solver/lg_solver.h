// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "solver/moving_solver.h"

namespace Solver {

/// "LG": candidates mix with the leading ones, with neighbours or with the best, by weights that sum to one.
class LGSolver final : public BaseNormSolver {
 public:
  LGSolver();

  bool mix2(const Candidate& c, const OptVariable& p, const OptVariable& q);
  bool mix3(const Candidate& c, const OptVariable& p, const OptVariable& q, const OptVariable& r);
  bool mix4(const Candidate& c, const OptVariable& p, const OptVariable& q, const OptVariable& r);

 private:
  bool iterate();
  bool move(const Candidate& c);
  bool towardsBest(const Candidate& c);
  bool mixLeaders(const Candidate& c, std::size_t leaders);
  bool mutate(const Candidate& c);
  bool settle(const Candidate& c);
};

}  // namespace Solver
