// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace SpecialFunction {

inline constexpr int kBernoulliCount = 260;
extern const double kBernoulliTable[kBernoulliCount];  ///< B_0..B_259, B_1 = -1/2

}  // namespace SpecialFunction
