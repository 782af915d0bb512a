// SPDX-License-Identifier: Apache-2.0
#include "sym/normal/classify.h"

#include <algorithm>

#include "sym/node/edit.h"

namespace Sym {
namespace {

// The variable of a two-factor product of a number and a variable, and its whole coefficient; null for another node.
std::pair<VarPtr, double> linearTerm(const SymObject& node) {
  if (node.kind == Code::Variable) return {node.var, node.coef};
  if (node.kind != Code::Mul || node.args.size() != 2) return {};
  const SymObject *a = node.args[0].get(), *b = node.args[1].get();
  if (a->kind == Code::Variable) std::swap(a, b);
  if (a->kind != Code::Number || b->kind != Code::Variable) return {};
  return {b->var, node.coef * a->coef * b->coef};
}

}  // namespace

bool isLineExpress(const SymObject& node) {
  if (node.kind == Code::Number || node.kind == Code::Variable) return true;
  if (node.kind != Code::Add) return false;
  return std::all_of(node.args.begin(), node.args.end(),
                     [](const ConstNodePtr& term) { return term->kind == Code::Number || linearTerm(*term).first; });
}

bool isQuadTerm(const SymObject& node) {
  if (node.args.size() != 2 || node.args[0]->kind != Code::Variable) return false;
  const SymObject& second = *node.args[1];
  if (node.kind == Code::Pow) return second.kind == Code::Number && within(second.coef, 2, kTol);
  return node.kind == Code::Mul && second.kind == Code::Variable;
}

bool isQuadExpress(const SymObject& node) {
  if (isQuadTerm(node)) return true;
  if (node.kind != Code::Add) return false;
  bool found = false;
  for (const ConstNodePtr& term : node.args) {
    const bool quadratic = isQuadTerm(*term);
    if (!quadratic && term->kind != Code::Number && term->kind != Code::Variable) return false;
    found = found || quadratic;
  }
  return found;
}

std::vector<std::pair<VarPtr, double>> getLineExpress(const SymObject& node) {
  if (!isLineExpress(node)) return {};
  if (node.kind != Code::Add) {
    if (node.kind == Code::Number) return {};
    return {{node.var, node.coef}};
  }
  std::vector<std::pair<VarPtr, double>> terms;
  for (const ConstNodePtr& term : node.args) {
    const auto [variable, coefficient] = linearTerm(*term);
    if (variable) terms.emplace_back(variable, coefficient * node.coef);
  }
  return terms;
}

}  // namespace Sym
