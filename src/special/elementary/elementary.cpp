// SPDX-License-Identifier: Apache-2.0
#include "special/elementary/elementary.h"

#include <numbers>

namespace SpecialFunction {

double calcClampedCoth(double x) {
  const double size = std::abs(x);
  // KEPT: 1 from 18 on; expected: two further ulps up to 19 (kept.csv: Coth_clamp)
  const double value = size > 18 ? 1 : 1 + 2 / std::expm1(2 * size);  // (exp(2x) + 1)/(exp(2x) - 1)
  return std::copysign(value, x);
}

// In this form |x| < 1 gives NaN through the logarithm of a negative number.
double calcAcoth(double x) { return 0.5 * std::log((x + 1) / (x - 1)); }

double calcSign(double x) { return x > 0 ? 1.0 : x < 0 ? -1.0 : 0.0; }

double calcStepFun(double x) { return 0 > x ? -1.0 : 1.0; }

// log(1+|x|) and exp(|x|)-1 keep all digits of a small argument only in these forms.
double calcLogSign(double x) { return x < 0 ? -std::log1p(-x) : std::log1p(x); }

double calcExpSign(double x) { return x < 0 ? -std::expm1(-x) : std::expm1(x); }

double calcTolerantLn(double x) {
  const double size = std::abs(x);
  return std::log(size < 1e-32 ? 1e-32 : size);
}

double calcPolyValue(const double* coefficients, int32_t count, double x) {
  // KEPT: a running power in ascending order; expected: Horner's rule (kept.csv: PolyValue_order)
  double power = 1, sum = coefficients[0];
  for (int32_t i = 1; i < count; ++i) {
    power *= x;
    sum += coefficients[i] * power;
  }
  return sum;
}

double calcUnsymSin(double amplitude, double centre, double leftWidth, double rightWidth, double x) {
  if (x < centre - leftWidth || x > centre + rightWidth) return 0.0;
  if (x < centre)
    return 0.5 * amplitude * (1 + std::sin((x - centre) * (std::numbers::pi / leftWidth) + std::numbers::pi / 2));
  return 0.5 * amplitude * (1 - std::sin((x - centre) * (std::numbers::pi / rightWidth) - std::numbers::pi / 2));
}

}  // namespace SpecialFunction
