// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace SpecialFunction {

inline constexpr int kBernoulliCount = 260;
extern const double kBernoulliTable[kBernoulliCount];  ///< B_0..B_259, B_1 = -1/2

/// Bernoulli polynomial B_n(x); NaN for n < 0, 0 beyond the table (n > 258).
double calcPolyByBernoulli(int64_t n, double x);

}  // namespace SpecialFunction
