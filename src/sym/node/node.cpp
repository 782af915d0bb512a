// SPDX-License-Identifier: Apache-2.0
#include "sym/node/node.h"

#include <cmath>
#include <stdexcept>
#include <utility>

#include "sym/diff/diff.h"
#include "sym/kinds/kind.h"
#include "sym/node/edit.h"

namespace Sym {
namespace {

// Moves out the children that have children of their own and no other owner: what is left falls without recursion.
void gather(Args& args, std::vector<NodePtr>& pending) {
  if (args.shared()) return;
  for (NodePtr& arg : args)
    if (arg && arg.alone() && !arg->args.empty()) pending.push_back(std::move(arg));
}

}  // namespace

SymObject::SymObject(uint8_t kindCode, double coefficient) : kind(kindCode), coef(coefficient) { bindHandlers(); }

SymObject::~SymObject() {
  if (args.empty()) return;
  std::vector<NodePtr> pending;
  gather(args, pending);
  while (!pending.empty()) {
    const NodePtr node = std::move(pending.back());
    pending.pop_back();
    gather(node->args, pending);
  }
}

void Args::copy() {
  Args own;
  own.block_ = newBlock(std::max<std::size_t>(size(), 1));
  for (std::size_t i = 0; i < size(); ++i) own.push_back(nodes()[i] ? cloneNode(*nodes()[i]) : nullptr);
  swap(own);
}

void SymObject::bindHandlers() {
  const Kind* row = findKind(kind);
  if (row == nullptr) throw std::out_of_range("invalid map<K, T> key");
  row_ = row;
  poly.reset();
}

void SymObject::fnUpdate() {
  text.clear();
  poly.reset();
  if (row_->maxArgs != kAnyArgs) args.shorten(row_->maxArgs);
  if (args.size() < row_->minArgs) throw std::invalid_argument(std::string("too few arguments for ") + row_->name);
  // A null argument: nothing to normalise, and the writers of the host's mistake find it later.
  for (const ConstNodePtr& arg : args.read())
    if (!arg) return;
  row_->update(*this);
}

double SymObject::fnValue() const { return row_->value(*this); }

void SymObject::fnText() const { row_->text(*this); }

std::string SymObject::fnLatex() const {
  std::string out;
  writeLatex(*this, out);
  return out;
}

NodePtr SymObject::fnDiff(const VarPtr& variable, std::string& message) const {
  return differentiate(*this, *row_->diff, variable, message);
}

NodePtr newNode(uint8_t kind, double coef) { return NodePtr(new SymObject(kind, coef)); }

NodePtr makeNumber(double value) { return newNode(Code::Number, value); }

NodePtr makeVariable(const VarPtr& variable) {
  NodePtr node = newNode(Code::Variable);
  node->var = variable;
  return node;
}

NodePtr makeNode(uint8_t kind, std::vector<NodePtr> args) {
  NodePtr node = newNode(kind);
  node->args = std::move(args);
  node->fnUpdate();
  return node;
}

NodePtr makeUnary(uint8_t kind, NodePtr a) {
  NodePtr node = newNode(kind);
  node->args.push_back(std::move(a));
  node->fnUpdate();
  return node;
}

NodePtr makeBinary(uint8_t kind, NodePtr a, NodePtr b) {
  NodePtr node = newNode(kind);
  node->args.reserve(2);
  node->args.push_back(std::move(a));
  node->args.push_back(std::move(b));
  node->fnUpdate();
  return node;
}

NodePtr makeNode2(const SymObject& a, const SymObject& b, uint8_t code) {
  if (code == Code::Divide && b.kind == Code::Number) return scaledClone(a, 1 / b.coef);
  NodePtr node = newNode(Code::Number);
  setBinary(*node, cloneNode(a), cloneNode(b), code == Code::Gamma ? Code::IncompleteGamma : code);
  return node;
}

NodePtr cloneNode(const SymObject& node, double scale) {
  // A node that was read back from a block has no arguments for the handlers of its kind: its copy is the number that
  // it is worth.
  const bool hollow = node.bound().code != node.kind && node.kind > Code::Variable;
  NodePtr copy = newNode(hollow ? uint8_t{Code::Number} : node.kind, node.coef);
  const bool same = std::abs(scale - 1) < kTol;
  if (!same) copy->coef *= scale;
  if (hollow) return copy;
  if (node.var) copy->var = node.var;
  if (same && !node.text.empty()) copy->text = node.text;
  copy->args.share(node.args);
  return copy;
}

void scaleNode(SymObject& node, double factor) {
  node.coef *= factor;
  node.text.clear();
  node.poly.reset();
}

bool containsVar(const SymObject& node, const VarPtr& variable) {
  std::vector<const SymObject*> pending{&node};
  while (!pending.empty()) {
    const SymObject* at = pending.back();
    pending.pop_back();
    if (at->kind == Code::Variable && at->var == variable) return true;
    for (const ConstNodePtr& arg : at->args)
      if (arg) pending.push_back(arg.get());
  }
  return false;
}

}  // namespace Sym
