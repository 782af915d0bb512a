// SPDX-License-Identifier: Apache-2.0
#include "sym/diff/rules/rules.h"

namespace Sym::Rules {

using namespace Code;

const Rule dBesselI{kRefused, [](Arg n, Arg u) { return 0.5 * (BesselI(n + 1, u) + BesselI(n - 1, u)); }};
const Rule dBesselJ{kRefused, [](Arg n, Arg u) { return 0.5 * (BesselJ(n - 1, u) - BesselJ(n + 1, u)); }};
const Rule dBesselK{kRefused, [](Arg n, Arg u) { return -0.5 * (BesselK(n + 1, u) + BesselK(n - 1, u)); }};
const Rule dBesselY{kRefused, [](Arg n, Arg u) { return 0.5 * (BesselY(n - 1, u) - BesselY(n + 1, u)); }};
const Rule dAngerJ{kRefused, [](Arg n, Arg u) { return 0.5 * (AngerJ(n - 1, u) - AngerJ(n + 1, u)); }};
const Rule dWeberE{kRefused, [](Arg n, Arg u) { return 0.5 * (WeberE(n - 1, u) - WeberE(n + 1, u)); }};

// DLMF 11.4.27 and 11.4.31: the term (u/2)^n/(2 sqrt(pi) Gamma(n + 3/2)) joins the recurrence of the Bessel functions.
static Expr struveTerm(Arg n, Arg u) { return Pow(0.5 * u, n) / (3.5449077018110318 * Gamma(n + 1.5)); }

const Rule dStruveH{kRefused,
                    [](Arg n, Arg u) { return 0.5 * (StruveH(n - 1, u) - StruveH(n + 1, u)) + struveTerm(n, u); }};
const Rule dStruveL{kRefused,
                    [](Arg n, Arg u) { return 0.5 * (StruveL(n - 1, u) + StruveL(n + 1, u)) + struveTerm(n, u); }};

// The sum of u^k/(k! Gamma(a k + b)).
const Rule dWrightBessel{kRefused, kRefused, [](Arg a, Arg b, Arg u) { return WrightBessel(a, a + b, u); }};

const Rule dAiryAi{[](Arg u) { return AiryAiDiff(u); }};
const Rule dAiryBi{[](Arg u) { return AiryBiDiff(u); }};
const Rule dAiryGi{[](Arg u) { return AiryGiDiff(u); }};
const Rule dAiryHi{[](Arg u) { return AiryHiDiff(u); }};

}  // namespace Sym::Rules
