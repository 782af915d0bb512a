// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "sym/kinds/codes.h"
#include "sym/node/args.h"
#include "sym/node/cached_text.h"

namespace Sym {

/// A variable; every node that names it shares the one record.
struct BaseSym_s {
  int32_t id = 0;  ///< given when the store is written out
  double value = 0;
  std::string name;
};

struct Kind;
using VarPtr = std::shared_ptr<BaseSym_s>;

/// The polynomial form of a node in its single variable: exponent to coefficient.
struct PolyForm {
  VarPtr base;
  std::map<int64_t, double> terms;
};

/// One node of an expression: coef times the function named by kind, applied to args. Nodes are owned by shared
/// pointers alone; a subtree has one parent, as far as anyone can see (Args). A node keeps the row of its kind from the
/// last binding: what it does changes with bindHandlers, not with a bare write to kind.
class SymObject {
 public:
  explicit SymObject(uint8_t kind = 0, double coef = 1.0);  ///< binds; throws as bindHandlers does
  virtual ~SymObject();                                     ///< without recursion, however deep the tree

  SymObject(const SymObject&) = delete;
  SymObject& operator=(const SymObject&) = delete;

  static void* operator new(std::size_t bytes) { return poolTake(bytes); }
  static void operator delete(void* node, std::size_t bytes) noexcept { poolGive(node, bytes); }

  uint32_t owners = 0;  ///< counted by NodePtr
  uint8_t flag = 0;     ///< mark of a term absorbed in a merge, or of a node that is still to be built
  uint8_t kind;
  double coef;
  Args args;
  VarPtr var;                      ///< of a variable only
  mutable CachedText text;         ///< cached plain text, empty when not built
  std::unique_ptr<PolyForm> poly;  ///< cached polynomial form, null when not built or not a polynomial

  /// Takes the row of the present kind and drops the polynomial form. Throws "invalid map<K, T> key" for a code without
  /// a row.
  void bindHandlers();

  /// Normalises in place. Arguments beyond the kind's count go; too few throw std::invalid_argument.
  void fnUpdate();
  double fnValue() const;                                              ///< coef times the function
  void fnText() const;                                                 ///< fills text
  std::string fnLatex() const;                                         ///< LaTeX text
  NodePtr fnDiff(const VarPtr& variable, std::string& message) const;  ///< null with a message when there is no rule

  const Kind& bound() const { return *row_; }

 private:
  const Kind* row_ = nullptr;
};

inline bool NodePtr::alone() const { return node_->owners == 1; }
inline void NodePtr::take() const {
  if (node_ != nullptr) ++node_->owners;
}
inline void NodePtr::give() {
  if (node_ != nullptr && --node_->owners == 0) delete node_;
}

NodePtr newNode(uint8_t kind, double coef = 1.0);  ///< from the pool, without arguments
NodePtr makeNumber(double value);
NodePtr makeVariable(const VarPtr& variable);
NodePtr makeNode(uint8_t kind, std::vector<NodePtr> args);  ///< takes the arguments as they are, runs fnUpdate
NodePtr makeUnary(uint8_t kind, NodePtr a);
NodePtr makeBinary(uint8_t kind, NodePtr a, NodePtr b);
NodePtr makeNode2(const SymObject& a, const SymObject& b, uint8_t code);  ///< on clones
NodePtr cloneNode(const SymObject& node, double scale = 1.0);  ///< shares the arguments until one is written to
void scaleNode(SymObject& node, double factor);
bool containsVar(const SymObject& node, const VarPtr& variable);

}  // namespace Sym
