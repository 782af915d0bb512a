// SPDX-License-Identifier: Apache-2.0
#include "sym/diff/rules/rules.h"

namespace Sym::Rules {

using namespace Code;

// The inverse f of g has f' = 1/g'(f).
const Rule dInverseErf{[](Arg u) { return 0.886226925452758 * Exp(square(InverseErf(u))); }};  // sqrt(pi)/2
const Rule dInverseErfc{[](Arg u) { return -0.886226925452758 * Exp(square(InverseErfc(u))); }};
const Rule dInverseErfi{[](Arg u) { return 0.886226925452758 * Exp(-square(InverseErfi(u))); }};
const Rule dInverseLnErfi{[](Arg u) { return Dawson(InverseLnErfi(u)); }};
const Rule dInverseGamma{[](Arg u) { return 1 / (u * DiGamma(InverseGamma(u))); }};
const Rule dInverseCoshIntegral{[](Arg u) { return InverseCoshIntegral(u) / Cosh(InverseCoshIntegral(u)); }};
const Rule dInverseSinhIntegral{[](Arg u) { return InverseSinhIntegral(u) / Sinh(InverseSinhIntegral(u)); }};

}  // namespace Sym::Rules
