// SPDX-License-Identifier: Apache-2.0
#include "sym/diff/rules/rules.h"

namespace Sym::Rules {

using namespace Code;

const Rule refused{};
// Also of an argument that refuses.
const Rule flat(+[](const SymObject&, const VarPtr&, std::string&) { return makeNumber(0); });

const Rule dSqrt{[](Arg u) { return 0.5 / Sqrt(u); }};
const Rule dLn{[](Arg u) { return 1 / u; }};
const Rule dExp{[](Arg u) { return Exp(u); }};
const Rule dAbs{[](Arg u) { return Sign(u); }};
const Rule dLogSign{[](Arg u) { return 1 / (1 + Abs(u)); }};
const Rule dExpSign{[](Arg u) { return Exp(Abs(u)); }};

const Rule dLambertW{[](Arg u) { return LambertW(u) / (u * (1 + LambertW(u))); }};
const Rule dInverseLambertW{[](Arg u) { return (1 + u) * Exp(u); }};
const Rule dWrightOmega{[](Arg u) { return WrightOmega(u) / (1 + WrightOmega(u)); }};

}  // namespace Sym::Rules
