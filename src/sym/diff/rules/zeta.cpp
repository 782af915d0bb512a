// SPDX-License-Identifier: Apache-2.0
#include "sym/diff/rules/rules.h"

namespace Sym::Rules {

using namespace Code;

const Rule dHurwitzZeta{kRefused, [](Arg s, Arg a) { return -(s * HurwitzZeta(s + 1, a)); }};
const Rule dPolyLog{kRefused, [](Arg s, Arg u) { return PolyLog(s - 1, u) / u; }};
const Rule dPolyLogarithm2{[](Arg u) { return -(Ln(1 - u) / u); }};

// Li of order s + 1 at exp(u), and minus that at -exp(u).
const Rule dBoseEinstein{kRefused, [](Arg s, Arg u) { return BoseEinstein(s - 1, u); }};
const Rule dFermiDirac{kRefused, [](Arg s, Arg u) { return FermiDirac(s - 1, u); }};

// C and S of order n are the sums of cos(k u)/k^n and sin(k u)/k^n; order 0, where they diverge, is written out.
const Rule dClausenC{kRefused,
                     [](Arg n, Arg u) { return isNumber(n.node(), 1) ? -0.5 * Cot(0.5 * u) : -ClausenS(n - 1, u); }};
const Rule dClausenS{kRefused, [](Arg n, Arg u) { return isNumber(n.node(), 1) ? Expr(-0.5) : ClausenC(n - 1, u); }};

}  // namespace Sym::Rules
