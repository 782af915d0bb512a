// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace SpecialFunction {

/// Two doubles that one instruction divides.
using TwoDoubles [[gnu::vector_size(16)]] = double;

}  // namespace SpecialFunction
