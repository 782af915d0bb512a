// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <math.h>

namespace SpecialFunction {

struct LnGamma {
  double value;  // log |gamma(x)|
  double sign;   // of gamma(x), 1 or -1
};

/// The logarithm with its sign beside it. lgamma and std::lgamma leave the sign in a variable of the process, signgam.
inline LnGamma lnGamma(double x) {
  int sign = 1;
  const double value = ::lgamma_r(x, &sign);
  return {value, sign < 0 ? -1.0 : 1.0};
}

}  // namespace SpecialFunction
