// SPDX-License-Identifier: Apache-2.0
#include "sym/diff/rules/rules.h"

namespace Sym::Rules {

using namespace Code;

const Rule dSinIntegral{[](Arg u) { return Sin(u) / u; }};
const Rule dCosIntegral{[](Arg u) { return Cos(u) / u; }};
const Rule dSinhIntegral{[](Arg u) { return Sinh(u) / u; }};
const Rule dCoshIntegral{[](Arg u) { return Cosh(u) / u; }};
const Rule dLogIntegral{[](Arg u) { return 1 / Ln(u); }};

// Ei(u) with one argument, the generalised E_p(u) with two.
static const Rule dEi{[](Arg u) { return Exp(u) / u; }};
const Rule dExpIntegral{{kRefused, [](Arg p, Arg u) { return -ExpIntegral(p - 1, u); }}, &dEi};

const Rule dFresnelC{[](Arg u) { return Cos(1.5707963267948966 * square(u)); }};
const Rule dFresnelS{[](Arg u) { return Sin(1.5707963267948966 * square(u)); }};
const Rule dGlasser{[](Arg u) { return Sin(u * Sin(u)); }};

}  // namespace Sym::Rules
