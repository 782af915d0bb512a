// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "solver/moving_solver.h"

namespace Solver {

/// A position kept after its candidate has left it.
struct OneOptVar_t {
  std::vector<double> var;
};

/// "LG2": moves between the best, the mean and positions of the past; the leaders walk and descend. At least 2
/// candidates.
class LGSolver2 final : public BaseNormSolver {
 public:
  LGSolver2();

  bool descend(const Candidate& c);

  int16_t stuck = 0;
  double rate = 0.68;
  std::size_t archiveUsed = 0;
  std::vector<double> mean;
  std::vector<std::shared_ptr<OneOptVar_t>> archive;

 private:
  bool init();
  bool iterate();
  bool lead();
  void adaptRate();
  void store();
  bool move(const Candidate& c, bool force);
  const std::vector<double>& pick(bool past);
  void narrowMove(const Candidate& c, double w, const std::vector<double>& p1);
  void wideMove(const Candidate& c, double w, const std::vector<double>* const (&picked)[5]);
  void both(const Candidate& c, const std::vector<double>& p1);
};

}  // namespace Solver
