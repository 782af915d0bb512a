// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "solver/base_solver.h"

namespace Solver {

/// One row a solver kind: everything the library knows of it.
struct SolverRow {
  uint8_t code;
  std::string_view name;
  std::shared_ptr<BaseSolver> (*make)();
};

/// All kinds, in the order of their codes.
std::span<const SolverRow> solverTable();

}  // namespace Solver
