// SPDX-License-Identifier: Apache-2.0
#include <cmath>

#include "sym/edit.h"
#include "sym/rules/rules.h"

namespace Sym::Rules {

using namespace Notation;

namespace {

NodePtr product(double coef, std::vector<NodePtr> factors) {
  if (factors.empty()) return makeNumber(coef);
  NodePtr node = std::make_shared<SymObject>(Code::Mul, coef);
  node->args = std::move(factors);
  node->fnUpdate();
  return node;
}

/// The terms of a derivative, numbers apart, and their sum times a factor.
class Terms {
 public:
  void add(NodePtr term) {
    if (isNumber(*term))
      number_ += term->coef;
    else
      terms_.push_back(std::move(term));
  }

  NodePtr sum(double factor) && {
    const bool noNumber = std::abs(number_) < kEps;
    if (terms_.empty()) return makeNumber(number_ * factor);
    if (terms_.size() == 1 && noNumber) {
      multiplyValue(*terms_[0], factor);
      return std::move(terms_[0]);
    }
    if (!noNumber) terms_.push_back(makeNumber(number_));
    NodePtr node = std::make_shared<SymObject>(Code::Add, factor);
    node->args = std::move(terms_);
    node->fnUpdate();
    return node;
  }

 private:
  std::vector<NodePtr> terms_;
  double number_ = 0;
};

NodePtr diffNumber(const SymObject&, const VarPtr&, std::string&) { return makeNumber(0); }

NodePtr diffVariable(const SymObject& node, const VarPtr& variable, std::string&) {
  return makeNumber(node.var == variable ? node.coef : 0);
}

NodePtr diffAdd(const SymObject& node, const VarPtr& variable, std::string& message) {
  Terms terms;
  for (const NodePtr& arg : node.args) {
    NodePtr term = arg->fnDiff(variable, message);
    if (term == nullptr) return nullptr;
    terms.add(std::move(term));
  }
  return std::move(terms).sum(node.coef);
}

// The product rule: for each factor its derivative times clones of the others.
NodePtr diffMul(const SymObject& node, const VarPtr& variable, std::string& message) {
  Terms terms;
  for (std::size_t i = 0; i < node.args.size(); ++i) {
    if (isNumber(*node.args[i])) continue;
    NodePtr slope = node.args[i]->fnDiff(variable, message);
    if (slope == nullptr) return nullptr;
    if (isNumber(*slope, 0)) continue;
    std::vector<NodePtr> factors;
    factors.reserve(node.args.size());
    for (std::size_t j = 0; j < node.args.size(); ++j)
      if (j != i) factors.push_back(cloneNode(*node.args[j]));
    double coef = 1;
    if (isNumber(*slope))
      coef = slope->coef;
    else
      factors.push_back(std::move(slope));
    terms.add(product(coef, std::move(factors)));
  }
  return std::move(terms).sum(node.coef);
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
    return node.coef * (e * power * Expr(std::move(db)));
  };
  const auto byExponent = [&] { return node.coef * (Pow(b, e) * Ln(b) * Expr(std::move(de))); };
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
