// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace SpecialFunction {

double calcHurwitzZeta(double s, double a);

/// The sums behind it, for a that is none of the special points 1, 1/2, 0, -1, -2, ...
double calcHurwitzZeta_Call4(double s, double a);

}  // namespace SpecialFunction
