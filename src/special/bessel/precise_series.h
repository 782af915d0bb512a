// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <cstdint>

namespace SpecialFunction {

/// mantissa 2^exponent, for sums beyond the range of the doubles. NaN in the mantissa: no value.
struct ScaledValue {
  double mantissa = 0;
  long exponent = 0;

  double value() const { return std::ldexp(mantissa, static_cast<int>(exponent)); }
  double logSize() const { return std::log(std::abs(mantissa)) + static_cast<double>(exponent) * 0.6931471805599453; }
};

/// pFq(a; b; z) to about double precision, however much its terms cancel: floats of as many bits as the cancellation
/// takes, up to 8192. Ends at 200,000 terms without a value.
ScaledValue preciseHypergeometric(const double* a, int32_t p, const double* b, int32_t q, double z);

/// sum over k of weight[k mod 3] t_k x^k, k = 0, 1, ..., where t_(k+3)/t_k = 1/((k+2)(k+3)) when `derivative` is false,
/// else 1/((k+1)(k+3)): the power series of the Scorer functions. Weights are decimal digits; signs[] multiplies them.
double preciseThirds(const char* const weights[3], const int signs[3], bool derivative, double x);

}  // namespace SpecialFunction
