// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace SpecialFunction {

inline constexpr int kBernoulliCount = 260;
extern const double kBernoulliTable[kBernoulliCount];  ///< B_0..B_259, B_1 = -1/2

/// B_0..B_(n-1) into out. From B_260 on the entries are placeholders: the largest double where n - index is odd, else
/// 0.
void copyBernoulli(int32_t n, double* out);

}  // namespace SpecialFunction
