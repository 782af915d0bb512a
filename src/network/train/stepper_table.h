// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>

#include "network/train/net_base_solver.h"

namespace NetWork {

/// A new step rule; null for a kind without one.
std::unique_ptr<NetBaseSolver_c> makeStepper(int32_t kind);

}  // namespace NetWork
