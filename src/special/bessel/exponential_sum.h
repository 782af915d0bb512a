// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>

namespace SpecialFunction {

/// Integral of exp(f(t)) dt over (0, infinity) by the trapezoid rule in s = log(t/scale) (H. Takahasi, M. Mori, Publ.
/// RIMS 9, 1974): for f that falls from t of the order of `scale` on and is analytic in a sector about the axis. The
/// step sets the digits: exp(-2 pi angle/step) is the relative error, `angle` the half angle of the sector.
template <class Exponent>
double integralOfExponential(double scale, double step, Exponent&& f) {
  double sum = 0;
  for (int direction = -1; direction <= 1; direction += 2)
    for (int i = direction < 0 ? -1 : 0; i > -2000 && i < 2000; i += direction) {
      const double t = scale * std::exp(i * step), term = t * std::exp(f(t));
      sum += term;
      if (!(term > sum * 1e-18)) break;
    }
  return sum * step;
}

}  // namespace SpecialFunction
