// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace SpecialFunction::Kernel {

/// I_x(a, b) = B_x(a, b)/B(a, b) for a, b > 0, 0 < x < 1, also where both integrals leave the range of double.
double regularisedBeta(double a, double b, double x);

}  // namespace SpecialFunction::Kernel
