// SPDX-License-Identifier: Apache-2.0
#include "sym/diff/rules/rules.h"

namespace Sym::Rules {

using namespace Code;

const Rule dGamma{[](Arg u) { return DiGamma(u) * Gamma(u); }};
const Rule dLnGamma{[](Arg u) { return DiGamma(u); }};
const Rule dDiGamma{[](Arg u) { return PolyGamma(1, u); }};
const Rule dPolyGamma{kRefused, [](Arg n, Arg u) { return PolyGamma(n + 1, u); }};

const Rule dBeta{[](Arg a, Arg b) { return Beta(a, b) * (DiGamma(a) - DiGamma(a + b)); },
                 [](Arg a, Arg b) { return Beta(a, b) * (DiGamma(b) - DiGamma(a + b)); }};

// The upper function: the integral of t^(a-1) exp(-t) from u to infinity.
const Rule dIncompleteGamma{kRefused, [](Arg a, Arg u) { return -(Pow(u, a - 1) * Exp(-u)); }};

// (ln G(u))' = (u - 1) psi(u) - u + (1 + ln 2 pi)/2.
static Expr logBarnesGSlope(Arg u) { return 0.5 * (2.8378770664093453 - 2 * u + 2 * ((u - 1) * DiGamma(u))); }

const Rule dBarnesG{[](Arg u) { return BarnesG(u) * logBarnesGSlope(u); }};
const Rule dLnBarnesG{[](Arg u) { return logBarnesGSlope(u); }};

// ln H(u) = u ln Gamma(u + 1) - ln G(u + 1); (1 - ln 2 pi)/2 = -0.4189...
const Rule dHyperfactorial{[](Arg u) { return Hyperfactorial(u) * (LnGamma(u + 1) + u - 0.4189385332046727); }};

}  // namespace Sym::Rules
