// SPDX-License-Identifier: Apache-2.0
// Ln and Exp.
#include <algorithm>
#include <cmath>
#include <utility>

#include "sym/kinds/kind.h"
#include "sym/node/edit.h"
#include "sym/normal/update.h"

namespace Sym {
namespace {

// A function beside its logarithm.
struct Logarithm {
  uint8_t function, logarithm;
};
constexpr Logarithm kLogarithms[] = {
    {Code::Gamma, Code::LnGamma}, {Code::Erfi, Code::LnErfi}, {Code::BarnesG, Code::LnBarnesG}};

}  // namespace

void updateLn(SymObject& node) {
  const NodePtr inner = node.args[0];
  const double c = inner->coef;
  if (inner->kind == Code::Number) {
    if (c > 0) setConstant(node, node.fnValue());
    return;
  }
  if (inner->kind == Code::Exp) {
    const NodePtr u = inner->args[0];
    if (within(c, 1, kTol)) return copyFrom(node, *u, node.coef);
    if (c > 0) return setBinary(node, makeNumber(std::log(c)), u, Code::Add);
    // KEPT: takes the logarithm of the own coefficient; expected: that of the negative c (kept.csv:
    // Ln_negative_exp)
    return setBinary(node, makeUnary(Code::Ln, makeNumber(node.coef)), u, Code::Add);
  }
  for (const Logarithm& pair : kLogarithms)
    if (inner->kind == pair.function && within(c, 1, kTol)) return setUnary(node, inner->args[0], pair.logarithm);
}

void updateExp(SymObject& node) {
  const NodePtr inner = node.args[0];
  if (inner->kind == Code::Number) return setConstant(node, node.fnValue());
  const double c = inner->coef;
  if (inner->kind == Code::Ln) {
    const NodePtr u = inner->args[0];
    if (within(c, 1, kTol)) return copyFrom(node, *u, node.coef);
    return setBinary(node, u, makeNumber(c), Code::Pow);
  }
  if (inner->kind == Code::Mul) {
    const Args& factors = inner->args;
    const auto ln = std::find_if(factors.begin(), factors.end(), [](const auto& f) { return f->kind == Code::Ln; });
    if (ln == factors.end()) return;
    const NodePtr u = cloneNode(*ln->get()->args[0]);
    const std::ptrdiff_t place = ln - factors.begin();
    inner->args.erase(inner->args.begin() + place);
    inner->fnUpdate();
    return setBinary(node, u, inner, Code::Pow);
  }
  for (const Logarithm& pair : kLogarithms) {
    if (inner->kind != pair.logarithm) continue;
    if (within(c, 1, kTol)) return setUnary(node, inner->args[0], pair.function);
    if (pair.logarithm == Code::LnGamma)
      return setBinary(node, makeUnary(Code::Gamma, inner->args[0]), makeNumber(c), Code::Pow);
  }
}

}  // namespace Sym
