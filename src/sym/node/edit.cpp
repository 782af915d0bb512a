// SPDX-License-Identifier: Apache-2.0
#include "sym/node/edit.h"

#include <utility>

#include "sym/kinds/kind.h"

namespace Sym {
namespace {

void forget(SymObject& node) {
  node.text.clear();
  node.poly.reset();
}

void become(SymObject& node, uint8_t kind) {
  node.kind = kind;
  node.var.reset();
  node.text.clear();
  node.bindHandlers();
}

}  // namespace

void setConstant(SymObject& node, double value) {
  become(node, Code::Number);
  node.coef = value;
  node.args = Args();
}

void setUnary(SymObject& node, NodePtr arg, uint8_t kind) {
  Args args;
  args.push_back(std::move(arg));
  become(node, kind);
  node.args.swap(args);
  node.fnUpdate();
}

void setBinary(SymObject& node, NodePtr a, NodePtr b, uint8_t kind) {
  if (kind == Code::Subtract) {
    multiplyValue(*b, -1);
    kind = Code::Add;
  } else if (kind == Code::Divide) {
    b = makeBinary(Code::Pow, std::move(b), makeNumber(-1));
    kind = Code::Mul;
  }
  Args args;
  args.reserve(2);
  args.push_back(std::move(a));
  args.push_back(std::move(b));
  become(node, kind);
  node.args.swap(args);
  node.fnUpdate();
}

void copyFrom(SymObject& node, SymObject& source, double scale) {
  // The source may lie below the node: take it over before anything of the node goes.
  Args args = std::move(source.args);
  const double coef = source.coef;
  const VarPtr var = source.var;
  const uint8_t kind = source.kind;
  become(node, kind);
  node.coef = coef;
  node.var = var;
  node.args.swap(args);
  if (!within(scale, 1, kTol)) multiplyValue(node, scale);
}

void distributeCoef(SymObject& node) {
  forget(node);
  if (node.kind != Code::Add || within(node.coef, 1, kTol)) return;
  for (const NodePtr& term : node.args) {
    multiplyValue(*term, node.coef);
    distributeCoef(*term);
  }
  node.coef = 1;
}

void multiplyValue(SymObject& node, double factor) {
  forget(node);
  if (!node.bound().is(Property::bare)) {
    node.coef *= factor;
    return;
  }
  if (factor == 1) return;
  NodePtr inner = newNode(node.kind);
  inner->args = std::move(node.args);
  Args args;
  args.push_back(std::move(inner));
  become(node, Code::Mul);
  node.coef = factor;
  node.args = std::move(args);
}

NodePtr scaledClone(const SymObject& node, double factor) {
  NodePtr copy = cloneNode(node);
  if (!within(factor, 1, kTol)) multiplyValue(*copy, factor);
  return copy;
}

double coefficientOf(const SymObject& node) { return node.bound().is(Property::bare) ? 1 : node.coef; }

double takeCoefficient(SymObject& node) {
  const double c = coefficientOf(node);
  if (node.coef != 1) forget(node);
  node.coef = 1;
  return c;
}

}  // namespace Sym
