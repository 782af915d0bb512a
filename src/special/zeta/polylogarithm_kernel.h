// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace SpecialFunction {

/// Li_s(sign exp(x)) for sign 1 (x <= 0) or -1 (any x), s not one of -2..1.
double polyLogOfExp(double s, double x, int sign);

}  // namespace SpecialFunction
