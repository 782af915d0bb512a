// SPDX-License-Identifier: Apache-2.0
#include "sym/diff/product_rule.h"
#include "sym/diff/rules/rules.h"
#include "sym/node/edit.h"

namespace Sym::Rules {

using namespace Code;

namespace {

NodePtr diffNumber(const SymObject&, const VarPtr&, std::string&) { return makeNumber(0); }

NodePtr diffVariable(const SymObject& node, const VarPtr& variable, std::string&) {
  return makeNumber(node.var == variable ? node.coef : 0);
}

NodePtr diffAdd(const SymObject& node, const VarPtr& variable, std::string& message) {
  DerivativeSum sum(variable, message);
  for (const ConstNodePtr& term : node.args)
    if (!sum.addDerivative(*term)) return nullptr;
  return sum.build(node.coef);
}

NodePtr diffMul(const SymObject& node, const VarPtr& variable, std::string& message) {
  DerivativeSum sum(variable, message);
  return sum.addDerivative(node) ? sum.build(1) : nullptr;
}

// With b^e: e b^(e-1) b' where the base varies, b^e ln(b) e' where the exponent does.
NodePtr diffPow(const SymObject& node, const VarPtr& variable, std::string& message) {
  const Arg b(*node.args[0]), e(*node.args[1]);
  NodePtr db = b.node().fnDiff(variable, message);
  if (db == nullptr) return nullptr;
  NodePtr de = e.node().fnDiff(variable, message);
  if (de == nullptr) return nullptr;
  const bool baseVaries = !isNumber(*db, 0), exponentVaries = !isNumber(*de, 0);
  if (!baseVaries && !exponentVaries) return makeNumber(0);

  const auto byBase = [&] {
    Expr power = isNumber(e.node()) ? pow(b, e.node().coef - 1) : Pow(b, e - 1);
    return node.coef * times(e, std::move(power), Expr(std::move(db)));
  };
  const auto byExponent = [&] { return node.coef * times(Pow(b, e), Ln(b), Expr(std::move(de))); };
  if (!exponentVaries) return byBase().take();
  if (!baseVaries) return byExponent().take();
  return (byBase() + byExponent()).take();
}

NodePtr diffConSelect(const SymObject& node, const VarPtr& variable, std::string& message) {
  NodePtr below = node.args[1]->fnDiff(variable, message);
  if (below == nullptr) return nullptr;
  NodePtr above = node.args[2]->fnDiff(variable, message);
  if (above == nullptr) return nullptr;
  if (isNumber(*below, 0) && isNumber(*above, 0)) return makeNumber(0);
  return (node.coef * ConSelect(Arg(*node.args[0]), Expr(std::move(below)), Expr(std::move(above)))).take();
}

}  // namespace

const Rule dNumber(diffNumber);
const Rule dVariable(diffVariable);
const Rule dAdd(diffAdd);
const Rule dMul(diffMul);
const Rule dPow(diffPow);
const Rule dConSelect(diffConSelect);

}  // namespace Sym::Rules
