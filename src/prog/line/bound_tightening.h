// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace LineProg {

/// The arrays of a constraint sum coefs[k] x[indices[k]] <= rhs over variables with bounds.
struct BoundedSum {
  double* upper;
  double* lower;
  const double* coefs;
  const int32_t* indices;
  const uint8_t* kinds;
  double rhs;
  int32_t n;
};

/// Tightens the bounds by what the constraint leaves each variable; true when one changed.
bool resetMaxMin(const BoundedSum& sum);

}  // namespace LineProg
