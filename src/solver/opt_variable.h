// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "solver/base_optimize_object.h"

namespace Solver {

/// One candidate of a population: where it stands, the best point it has been at, and the point that it tries next.
struct OptVariable {
  explicit OptVariable(std::size_t varSize) : bestVar(varSize), curVar(varSize), trialVar(varSize) {}

  /// Moves the candidate to its trial point.
  void accept();

  int32_t age = 1;       ///< trials since the last move
  int32_t index = 0;     ///< place in the population at the start of the run
  uint8_t evaluate = 1;  ///< the start of a run evaluates it
  uint8_t mark = 1;
  double weight = 0.0;
  double factor = 2.0;
  double prevValue = kNoValue;
  double bestValue = kNoValue;
  double curValue = kNoValue;
  double trialValue = kNoValue;
  double spareValue = kNoValue;
  std::vector<double> bestVar;
  std::vector<double> curVar;
  std::vector<double> trialVar;
};

using Candidate = std::shared_ptr<OptVariable>;

/// One line of a run's history.
struct OptResult {
  int32_t iter;
  double minError;
};

}  // namespace Solver
