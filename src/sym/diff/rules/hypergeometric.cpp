// SPDX-License-Identifier: Apache-2.0
#include "sym/diff/rules/rules.h"

namespace Sym::Rules {

using namespace Code;

const Rule dHypergeometric0F1{kRefused, [](Arg b, Arg u) { return Hypergeometric0F1(b + 1, u) / b; }};
const Rule dHypergeometric1F1{kRefused, kRefused,
                              [](Arg a, Arg b, Arg u) { return a * Hypergeometric1F1(a + 1, b + 1, u) / b; }};
const Rule dHypergeometric2F1{kRefused, kRefused, kRefused, [](Arg a, Arg b, Arg c, Arg u) {
                                return a * b * Hypergeometric2F1(a + 1, b + 1, c + 1, u) / c;
                              }};
const Rule dHypergeometricU{kRefused, kRefused,
                            [](Arg a, Arg b, Arg u) { return -(a * HypergeometricU(a + 1, b + 1, u)); }};

// DLMF 13.15.1 and its like for W: u f' is f (u/2 - k) and the function of the next k.
const Rule dWhittakerM{kRefused, kRefused, [](Arg k, Arg m, Arg u) {
                         return (0.5 - k / u) * WhittakerM(k, m, u) + (0.5 + m + k) * WhittakerM(k + 1, m, u) / u;
                       }};
const Rule dWhittakerW{kRefused, kRefused, [](Arg k, Arg m, Arg u) {
                         return (0.5 - k / u) * WhittakerW(k, m, u) - WhittakerW(k + 1, m, u) / u;
                       }};

// DLMF 12.8.3, 12.8.7; D with index n is U with a = -n - 1/2.
const Rule dParabolicCylinderD{
    kRefused, [](Arg n, Arg u) { return 0.5 * (u * ParabolicCylinderD(n, u)) - ParabolicCylinderD(n + 1, u); }};
const Rule dParabolicCylinderU{
    kRefused, [](Arg a, Arg u) { return 0.5 * (u * ParabolicCylinderU(a, u)) - ParabolicCylinderU(a - 1, u); }};
const Rule dParabolicCylinderV{
    kRefused, [](Arg a, Arg u) { return ParabolicCylinderV(a + 1, u) - 0.5 * (u * ParabolicCylinderV(a, u)); }};

}  // namespace Sym::Rules
