// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>

#include "solver/base_solver.h"

namespace Solver {

/// A new solver of a kind 0..10 with all members at their start values; null for any other kind.
std::shared_ptr<BaseSolver> makeSolver(uint8_t kind);

}  // namespace Solver
