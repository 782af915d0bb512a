// SPDX-License-Identifier: Apache-2.0
#include "sym/store/store.h"

#include <utility>

#include "sym/normal/growing.h"

namespace Sym {
namespace {

NodePtr cloneOrNull(const NodePtr& node) { return node ? cloneNode(*node) : nullptr; }

NodePtr reciprocal(NodePtr node) { return makeNode2(*makeNumber(1), *node, Code::Divide); }

// Codes 38 to 45 are no kinds: 1/f(x), or the inverse function at 1/x.
struct Reciprocal {
  uint8_t kind;
  bool inside;
};
constexpr Reciprocal kReciprocals[] = {{Code::Sin, false},  {Code::Cos, false}, {Code::Sinh, false},
                                       {Code::Cosh, false}, {Code::Asin, true}, {Code::Acos, true},
                                       {Code::Asinh, true}, {Code::Acosh, true}};
constexpr uint8_t kFirstReciprocal = ORVANE_KIND_CSC;

}  // namespace

SymManger& SymManger::instance() {
  static SymManger store;
  return store;
}

SymObject* SymManger::keep(NodePtr node) {
  SymObject* address = node.get();
  tempNodes.insert(std::move(node));
  return address;
}

SymMatrix2d_t* SymManger::keep(MatrixPtr matrix) {
  SymMatrix2d_t* address = matrix.get();
  if (address != nullptr) matrices[address] = std::move(matrix);
  return address;
}

NodePtr SymManger::find(SymObject* address) const {
  const NodePtr* node = tempNodes.find(address);
  if (node == nullptr) return nullptr;
  buildGrown(**node);
  return *node;
}

VarPtr SymManger::variable(const std::string& name) {
  VarPtr& record = symbols[name];
  if (!record) {
    record = std::make_shared<BaseSym_s>();
    record->name = name;
  }
  return record;
}

NodePtr makeNamed(const std::string& name) {
  if (name == "pi") return makeNumber(3.141592653589793);
  return makeVariable(SymManger::instance().variable(name));
}

NodePtr applyOne(const NodePtr& argument, uint8_t code) {
  if (code < kFirstReciprocal || code >= kFirstReciprocal + std::size(kReciprocals))
    return makeNode(code, {cloneOrNull(argument)});
  const Reciprocal& form = kReciprocals[code - kFirstReciprocal];
  if (!argument) return makeNode(form.kind, {nullptr});
  if (form.inside) return makeNode(form.kind, {reciprocal(argument)});
  return reciprocal(makeNode(form.kind, {cloneNode(*argument)}));
}

NodePtr applyTwo(const NodePtr& a, const NodePtr& b, uint8_t code) {
  if (a && b) return makeNode2(*a, *b, code);
  if (code == Code::Subtract) code = Code::Add;
  if (code == Code::Divide) code = Code::Mul;
  return makeNode(code, {cloneOrNull(a), cloneOrNull(b)});
}

NodePtr combine(SymObject* a, SymObject* b, uint8_t code) {
  const SymManger& store = SymManger::instance();
  const NodePtr second = store.find(b);
  if (const NodePtr* first = store.tempNodes.find(a); first != nullptr && second)
    if (NodePtr grown = grow(**first, *second, code)) return grown;
  return applyTwo(store.find(a), second, code);
}

NodePtr applyMany(Args clones, uint8_t code) {
  NodePtr node = newNode(code);
  node->args = std::move(clones);
  node->fnUpdate();
  return node;
}

}  // namespace Sym
