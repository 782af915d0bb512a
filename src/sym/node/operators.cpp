// SPDX-License-Identifier: Apache-2.0
#include "sym/node/operators.h"

#include <cmath>
#include <utility>

#include "sym/node/edit.h"

namespace Sym {
namespace {

template <class... Nodes>
NodePtr node(uint8_t kind, Nodes... args) {
  std::vector<NodePtr> list;
  list.reserve(sizeof...(args));
  (list.push_back(std::move(args)), ...);
  return makeNode(kind, std::move(list));
}

NodePtr scaled(NodePtr a, double factor) {
  multiplyValue(*a, factor);
  return a;
}

}  // namespace

bool isNumber(const SymObject& node) { return node.kind == Code::Number; }

bool isNumber(const SymObject& node, double value) { return isNumber(node) && std::abs(node.coef - value) < kTol; }

NodePtr add(NodePtr a, NodePtr b) {
  if (isNumber(*a) && isNumber(*b)) return makeNumber(a->coef + b->coef);
  if (isNumber(*a, 0)) return b;
  if (isNumber(*b, 0)) return a;
  return node(Code::Add, std::move(a), std::move(b));
}

NodePtr sub(NodePtr a, NodePtr b) {
  if (isNumber(*a) && isNumber(*b)) return makeNumber(a->coef - b->coef);
  if (isNumber(*b, 0)) return a;
  b = scaled(std::move(b), -1);
  if (isNumber(*a, 0)) return b;
  return node(Code::Add, std::move(a), std::move(b));
}

NodePtr mul(NodePtr a, NodePtr b) {
  if (isNumber(*a, 0) || isNumber(*b, 0)) return makeNumber(0);
  if (isNumber(*a, 1)) return b;
  if (isNumber(*b, 1)) return a;
  if (isNumber(*a)) return scaled(std::move(b), a->coef);
  if (isNumber(*b)) return scaled(std::move(a), b->coef);
  return node(Code::Mul, std::move(a), std::move(b));
}

NodePtr mul3(NodePtr a, NodePtr b, NodePtr c) {
  if (isNumber(*b)) return mul(mul(std::move(a), std::move(b)), std::move(c));
  if (isNumber(*a) || isNumber(*c)) return mul(mul(std::move(a), std::move(c)), std::move(b));
  return node(Code::Mul, std::move(a), std::move(b), std::move(c));
}

NodePtr div(NodePtr a, NodePtr b) {
  if (isNumber(*a, 0)) return makeNumber(0);
  if (isNumber(*b)) return scaled(std::move(a), 1 / b->coef);
  NodePtr inverse = node(Code::Pow, std::move(b), makeNumber(-1));
  if (isNumber(*a)) return scaled(std::move(inverse), a->coef);
  return node(Code::Mul, std::move(a), std::move(inverse));
}

NodePtr pow(NodePtr a, double k) {
  if (std::abs(k - 1) < kTol) return a;
  if (std::abs(k - 0.5) < kTol) return node(Code::Sqrt, std::move(a));
  return node(Code::Pow, std::move(a), makeNumber(k));
}

NodePtr addc(NodePtr a, double k) {
  if (isNumber(*a)) return makeNumber(a->coef + k);
  return node(Code::Add, std::move(a), makeNumber(k));
}

NodePtr subc(NodePtr a, double k) { return addc(std::move(a), -k); }

}  // namespace Sym
