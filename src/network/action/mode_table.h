// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "network/action/net_action.h"
#include "network/train/row_set.h"

namespace Action {

class OptNetSetAction_c;

/// Trains the members of a set; false when one of them cannot be trained.
using Train = bool (*)(OptNetSetAction_c& set, const NetWork::DataSets& data);

/// How a set makes one row out of its members' rows, and how the members are trained.
struct ModeRow {
  int32_t code;
  Combine combine;
  Train train;
};

/// The row of modes 1 to 4 and 301 to 304; that of mode 1 for any other.
const ModeRow& modeRow(uint16_t mode);

}  // namespace Action
