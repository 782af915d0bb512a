// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "highprecision/decimal/hp_number.h"

namespace HighPrecision {

/// Angles whose integer part has more limbs are not reduced: their sine and cosine are infinite.
constexpr int64_t kMaxAngleLimbs = 100000;

/// The function of one argument with this code of hp_Fun1; zero for a code that is none.
HPNumber_c functionOf(const HPNumber_c& x, uint8_t code, int32_t precision);

/// The operation of two arguments with this code of hp_Fun2; zero for a code that is none.
HPNumber_c functionOf(const HPNumber_c& a, const HPNumber_c& b, uint8_t code, int32_t precision);

HPNumber_c exponential(const HPNumber_c& x, int32_t precision);
HPNumber_c logarithm(const HPNumber_c& x, int32_t precision);

/// base^exponent; 1 for the exponent 0, whatever the base.
HPNumber_c integerPower(const HPNumber_c& base, int64_t exponent, int32_t precision);
HPNumber_c realPower(const HPNumber_c& base, const HPNumber_c& exponent, int32_t precision);

}  // namespace HighPrecision
