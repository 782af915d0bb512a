// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>

#include "pdf/quick_math.h"

/// The functions that most activations are made of, without branches, so that loops over them become vector
/// instructions.
namespace NetWork {

using PDF::quickExp;
using PDF::quickExpm1;
using PDF::quickLog1p;

/// |x| with the sign of s.
inline double withSign(double x, double s) { return std::copysign(x, s); }

/// Derivative of |x|: 0 at 0.
inline double signOf(double x) { return x > 0 ? 1.0 : x < 0 ? -1.0 : x; }

/// tanh x = -expm1(-2|x|)/(2 + expm1(-2|x|)) with the sign of x.
inline double tanhOf(double x) {
  const double e = quickExpm1(-2 * std::abs(x));
  return withSign(e / (2 + e), x);
}

/// 1/(1 + exp(-x)).
inline double sigmoid(double x) { return 1 / (1 + quickExp(-x)); }

/// Derivative of the sigmoid, exact in both tails.
inline double sigmoidSlope(double x) {
  const double q = quickExp(-std::abs(x));
  return q / ((1 + q) * (1 + q));
}

/// 1 - tanh^2 x, exact in both tails.
inline double tanhSlope(double x) { return 4 * sigmoidSlope(2 * x); }

}  // namespace NetWork
