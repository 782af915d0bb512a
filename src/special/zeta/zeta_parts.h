// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace SpecialFunction {

/// zeta(1+e) - 1/e for |e| <= 0.1.
double zetaRestAtOne(double e);

}  // namespace SpecialFunction
