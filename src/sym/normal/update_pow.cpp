// SPDX-License-Identifier: Apache-2.0
#include <cmath>
#include <utility>

#include "sym/kinds/kind.h"
#include "sym/node/edit.h"
#include "sym/normal/compare.h"
#include "sym/normal/update.h"

namespace Sym {
namespace {

bool nearInteger(double x) { return std::abs(x) < 0x1p63 && within(x, std::nearbyint(x), kEpsilon); }

// KEPT: a power that is 1 loses its coefficient; expected: the coefficient (kept.csv: Pow_zero_coef,
// Pow_one_coef)
void becomeOne(SymObject& node) { setConstant(node, 1); }

void powerOfNumber(SymObject& node, double base, const SymObject& exponent) {
  const bool numeric = exponent.kind == Code::Number;
  if (base == 0) {
    if (numeric && within(exponent.coef, 0, kEpsilon)) return becomeOne(node);
    if (!numeric) return setConstant(node, 0);
  }
  if (within(base, 1, kEpsilon)) return becomeOne(node);
  if (numeric) setConstant(node, node.coef * std::pow(base, exponent.coef));
}

uint8_t reciprocalKind(uint8_t kind) {
  switch (kind) {
    case Code::Tan:
      return Code::Cot;
    case Code::Cot:
      return Code::Tan;
    case Code::Tanh:
      return Code::Coth;
    case Code::Coth:
      return Code::Tanh;
    default:
      return 0;
  }
}

// Moves the coefficient of the base out where that is a real power of it.
void moveCoefficientOut(SymObject& node, SymObject& base, double exponent) {
  const double c = coefficientOf(base);
  if (c == 1 || c == 0) return;
  const double factor = std::pow(c, exponent);  // NaN for a fractional power of c < 0
  if (!std::isfinite(factor) || factor == 0) return;
  takeCoefficient(base);
  node.coef *= factor;
  node.text.clear();
}

// (u^k)^E = u^(kE), with |u| where u^k has lost the sign of u and E does not bring it back.
void powerOfPower(SymObject& node, const NodePtr& base, double exponent) {
  if (base->coef != 1) return;
  NodePtr u = base->args[0], k = base->args[1];
  const bool integer = nearInteger(exponent);
  if (!integer && !neverNegative(*u)) {
    if (k->kind != Code::Number) return;
    if (nearInteger(k->coef / 2)) u = makeUnary(Code::Abs, std::move(u));
  }
  NodePtr product = makeBinary(Code::Mul, std::move(k), makeNumber(exponent));
  setBinary(node, std::move(u), std::move(product), Code::Pow);
}

void becomeBase(SymObject& node, const NodePtr& base) { copyFrom(node, *base, node.coef); }

}  // namespace

void updatePow(SymObject& node) {
  const NodePtr base = node.args[0], exponent = node.args[1];
  if (base->kind == Code::Number) return powerOfNumber(node, base->coef, *exponent);
  if (exponent->kind != Code::Number) return;
  double e = exponent->coef;
  if (within(e, 0, kTol)) return becomeOne(node);
  if (const uint8_t other = reciprocalKind(base->kind); other != 0 && e < 0) {
    moveCoefficientOut(node, *base, e);
    if (base->coef == 1) {
      base->kind = other;
      base->bindHandlers();
      base->text.clear();
      node.text.clear();
      e = exponent->coef = -e;
      exponent->text.clear();
      exponent->poly.reset();
    }
  }
  if (within(e, 1, kTol)) return becomeBase(node, base);
  moveCoefficientOut(node, *base, e);
  if (base->kind == Code::Pow) return powerOfPower(node, base, e);
  if (within(e, -1, kTol)) return distributeCoef(*base);
  if (within(e, 0.5, kTol)) return setUnary(node, base, Code::Sqrt);
  if (base->kind == Code::Sqrt && base->coef == 1) {
    if (within(e, 2, kTol)) return becomeBase(node, base->args[0]);
    return setBinary(node, base->args[0], makeNumber(e / 2), Code::Pow);
  }
  distributeCoef(*base);
}

}  // namespace Sym
