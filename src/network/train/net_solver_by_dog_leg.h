// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>

#include "network/train/net_base_solver.h"
#include "solver/least_squares/dog_leg.h"

namespace NetWork {

/// Trains by the dog-leg over all rows at once: a residual for every output of every row, a Jacobian row for each. The
/// optimiser binds the callables and runs it in place of the batch steps; a gradient alone gives it no step.
class NetSolverByDogLeg final : public NetBaseSolver_c {
 public:
  NetSolverByDogLeg() { typeCode = 60; }
  void init(int32_t) override { NetBaseSolver_c::init(0); }
  void step(std::span<double> grad) override { std::ranges::fill(grad, 0.0); }

  Solver::SolverByDogLeg_c dogLeg;
};

}  // namespace NetWork
