// SPDX-License-Identifier: Apache-2.0
#include <cmath>

#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr int kFirstExponent = 3;
constexpr double kPowerOfTwoResidues[] = {
#include "special/elementary/power_of_two_residues_data.inc"
};
static_assert(sizeof(kPowerOfTwoResidues) / sizeof(double) == 1021);

}  // namespace

double reduceBigAngle(double x) {
  int exponent = 0;
  const double mantissa = std::frexp(x, &exponent);
  if (!std::isfinite(x) || exponent < kFirstExponent || exponent > 1023) return x;
  // KEPT: the mantissa multiplies the residue of 2^e; expected: the residue of x itself (kept.csv: BigAngle)
  return mantissa * kPowerOfTwoResidues[exponent - kFirstExponent];
}

}  // namespace SpecialFunction
