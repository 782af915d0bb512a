// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace SpecialFunction {

double calcHurwitzZeta(double s, double a);

/// The sums behind it, for a that is none of the special points 1, 1/2, 0, -1, -2, ...
double calcHurwitzZeta_Call4(double s, double a);

/// zeta(s, a) - zeta(s, b) for 0 <= s <= 6 and positive a, b, right at s = 1 too.
double hurwitzDifference(double s, double a, double b);

}  // namespace SpecialFunction
