// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace SpecialFunction {

double calcExpIntegralN(long long n, double x);

}  // namespace SpecialFunction
