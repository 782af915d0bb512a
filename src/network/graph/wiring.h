// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>

#include "network/graph/net_layer.h"

namespace NetWork {

/// A layer of the class that its kind needs; a kind without functions is a plain layer.
std::unique_ptr<NetLayer_s> makeLayer(int32_t size, uint8_t kind);

/// Whether inputs, variables and sizes are what the kind needs. Functions rely on it. True for a kind without
/// functions.
bool wellWired(const NetLayer_s& layer);

}  // namespace NetWork
