// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "filter/design/wide_polynomial.h"

namespace Filter {

/// An analog low-pass filter with the edge 1 rad/s: the ratio of two polynomials in s.
struct Prototype {
  WidePolynomial numerator, denominator;
};

}  // namespace Filter
