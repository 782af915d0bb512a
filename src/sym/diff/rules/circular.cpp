// SPDX-License-Identifier: Apache-2.0
#include "sym/diff/rules/rules.h"

namespace Sym::Rules {

using namespace Code;

const Rule dSin{[](Arg u) { return Cos(u); }};
const Rule dCos{[](Arg u) { return -Sin(u); }};
const Rule dTan{[](Arg u) { return 1 / square(Cos(u)); }};
const Rule dCot{[](Arg u) { return -1 / square(Sin(u)); }};

const Rule dAsin{[](Arg u) { return 1 / Sqrt(1 - square(u)); }};
const Rule dAcos{[](Arg u) { return -1 / Sqrt(1 - square(u)); }};
const Rule dAtan{[](Arg u) { return 1 / (1 + square(u)); }};
const Rule dAcot{[](Arg u) { return -1 / (1 + square(u)); }};

const Rule dSinh{[](Arg u) { return Cosh(u); }};
const Rule dCosh{[](Arg u) { return Sinh(u); }};
const Rule dTanh{[](Arg u) { return 1 / square(Cosh(u)); }};
const Rule dCoth{[](Arg u) { return -1 / square(Sinh(u)); }};

const Rule dAsinh{[](Arg u) { return 1 / Sqrt(square(u) + 1); }};
const Rule dAcosh{[](Arg u) { return 1 / Sqrt(square(u) - 1); }};
const Rule dAtanh{[](Arg u) { return 1 / (1 - square(u)); }};

}  // namespace Sym::Rules
