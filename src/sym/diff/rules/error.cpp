// SPDX-License-Identifier: Apache-2.0
#include "sym/diff/rules/rules.h"

namespace Sym::Rules {

using namespace Code;

const Rule dErf{[](Arg u) { return 1.1283791670955126 * Exp(-square(u)); }};  // 2/sqrt(pi)
const Rule dErfc{[](Arg u) { return -1.1283791670955126 * Exp(-square(u)); }};
const Rule dErfi{[](Arg u) { return 1.1283791670955126 * Exp(square(u)); }};
const Rule dDawson{[](Arg u) { return 1 - 2 * (u * Dawson(u)); }};

// erfi'(u)/erfi(u) with erfi(u) = 2/sqrt(pi) exp(u^2) D(u).
const Rule dLnErfi{[](Arg u) { return 1 / Dawson(u); }};

// G(u) = (pi erfi(u) - Ei(u^2)) exp(-u^2)/2, so G' = sqrt(pi) - 1/u - 2 u G.
const Rule dGoodwinStaton{[](Arg u) { return 1.7724538509055161 - 1 / u - 2 * (u * GoodwinStaton(u)); }};

// K + iL = w(x + iy).
const Rule dVoigtFunK{[](Arg x, Arg y) { return VoigtDiffKX(x, y); }, [](Arg x, Arg y) { return VoigtDiffKY(x, y); }};
const Rule dVoigtFunL{[](Arg x, Arg y) { return VoigtDiffLX(x, y); }, [](Arg x, Arg y) { return VoigtDiffLY(x, y); }};

}  // namespace Sym::Rules
