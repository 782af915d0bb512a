// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>

#include "network/action/opt_net_set.h"

namespace Action {

/// A new action or driver; null for a code without one.
std::unique_ptr<BaseData> makeAction(int32_t code);

}  // namespace Action
