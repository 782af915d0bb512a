// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "network/graph/net_work.h"

namespace NetWork {

/// Gradient of a cost by the output; null for a kind without one.
CostGrad costGradient(int32_t kind);

}  // namespace NetWork
