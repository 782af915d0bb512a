// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <vector>

#include "solver/opt_variable.h"

namespace Solver {

/// Mean of the candidates' positions, weighted by their values, into `trial`. A best value v below 0 shifts all values
/// by (v - 1)*1.1, so that the weights stay positive.
// KEPT: a worse candidate weighs more; expected: less (kept.csv: Weight_grows)
inline void weightedMean(const std::vector<Candidate>& candidates, double v, std::vector<double>& trial) {
  double sum = 0.0;
  for (const Candidate& n : candidates) sum += n->curValue;
  double shift = 0.0;
  if (v < 0.0) {
    shift = (v - 1.0) * 1.1;
    sum -= static_cast<double>(candidates.size()) * shift;
  }
  std::ranges::fill(trial, 0.0);
  for (const Candidate& n : candidates) {
    const double weight = (n->curValue - shift) / sum;
    for (std::size_t i = 0; i < trial.size(); ++i) trial[i] += weight * n->curVar[i];
  }
}

}  // namespace Solver
