// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>

#include "solver/losses/base_loss_fun.h"

namespace Solver {

/// A new loss of that kind; null for a kind without one.
std::unique_ptr<BaseLossFun> makeLossFun(int32_t kind);

}  // namespace Solver
