// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace NetWork {

struct NetLayer_s;

/// Sizes what a layer works with. 0, or the code of what does not fit.
int32_t prepare(NetLayer_s& layer);

}  // namespace NetWork
