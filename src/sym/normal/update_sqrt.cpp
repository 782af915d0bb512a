// SPDX-License-Identifier: Apache-2.0
#include <cmath>
#include <utility>

#include "sym/kinds/kind.h"
#include "sym/node/edit.h"
#include "sym/normal/compare.h"
#include "sym/normal/update.h"

namespace Sym {
namespace {

bool isExactInteger(double x) { return std::abs(x) < 9223372036854775807.0 && within(x, std::nearbyint(x), 1e-18); }

}  // namespace

void updateSqrt(SymObject& node) {
  const NodePtr inner = node.args[0];
  if (inner->kind == Code::Number) return setConstant(node, node.fnValue());
  const double c = coefficientOf(*inner);
  if (!(c > 0)) return;
  if (c != 1) {
    node.coef *= std::sqrt(c);
    node.text.clear();
    takeCoefficient(*inner);
  }
  if (inner->kind != Code::Pow || inner->args.read()[1]->kind != Code::Number) return;
  // Sqrt(b^e): an odd e or one that is no integer is defined for b >= 0 only; an even one leaves |b|, whose sign an
  // even half forgets.
  const double half = inner->args.read()[1]->coef / 2;
  NodePtr base = cloneNode(*inner->args.read()[0]);
  if (isExactInteger(half) && !isExactInteger(half / 2) && !neverNegative(*base))
    base = makeUnary(Code::Abs, std::move(base));
  setBinary(node, std::move(base), makeNumber(half), Code::Pow);
}

}  // namespace Sym
