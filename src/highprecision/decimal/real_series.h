// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "highprecision/decimal/integer.h"

namespace HP {

// Taylor series in fixed point: y and the sums are integers with `point` bits behind the binary point, |y| < 1. A sum
// is right to a few units in its last place for each of its terms. Terms that share a block of powers need only
// products by single words (rectangular splitting: D. M. Smith, Math. Comp. 52 (1989) 131).

/// Sum of y^k / (step k + first)! for step 1 or 2 and first 0, 1 or 2.
Integer factorialSeries(const Integer& y, int64_t point, unsigned step, unsigned first);

/// Sum of y^k / (2k + 1).
Integer reciprocalSeries(const Integer& y, int64_t point);

}  // namespace HP
