// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <utility>

#include "sym/node/edit.h"
#include "sym/node/operators.h"

/// Expressions written as formulas: `-Sin(u)`, `0.5 / Sqrt(u)`. Arithmetic goes through the collapsing operators.
namespace Sym {

/// An argument of the node at hand, borrowed. It becomes an expression of its own, by a clone, where it is used.
class Arg {
 public:
  explicit Arg(const SymObject& node) : node_(&node) {}
  const SymObject& node() const { return *node_; }

 private:
  const SymObject* node_;
};

/// An expression as a value: a copy is a deep clone, so a name may stand in a formula more than once.
class Expr {
 public:
  Expr(double value) : node_(makeNumber(value)) {}
  Expr(Arg arg) : node_(cloneNode(arg.node())) {}
  explicit Expr(NodePtr node) : node_(std::move(node)) {}
  Expr(const Expr& other) : node_(cloneNode(*other.node_)) {}
  Expr(Expr&&) noexcept = default;
  Expr& operator=(Expr other) noexcept {
    node_.swap(other.node_);
    return *this;
  }
  ~Expr() = default;

  const SymObject& node() const { return *node_; }
  NodePtr take() { return std::move(node_); }  ///< leaves the expression empty

 private:
  NodePtr node_;
};

inline Expr operator+(Expr a, Expr b) { return Expr(add(a.take(), b.take())); }
inline Expr operator-(Expr a, Expr b) { return Expr(sub(a.take(), b.take())); }
inline Expr operator+(Expr a, double k) { return Expr(addc(a.take(), k)); }
inline Expr operator-(Expr a, double k) { return Expr(subc(a.take(), k)); }
inline Expr operator*(Expr a, Expr b) { return Expr(mul(a.take(), b.take())); }
inline Expr operator/(Expr a, Expr b) { return Expr(div(a.take(), b.take())); }
inline Expr times(Expr a, Expr b, Expr c) { return Expr(mul3(a.take(), b.take(), c.take())); }
inline Expr pow(Expr a, double k) { return Expr(pow(a.take(), k)); }
inline Expr square(Expr a) { return pow(std::move(a), 2); }

inline Expr operator*(double k, Expr a) {
  NodePtr node = a.take();
  multiplyValue(*node, k);
  return Expr(std::move(node));
}
inline Expr operator-(Expr a) { return -1.0 * std::move(a); }

template <class... Args>
Expr KindCode::operator()(Args&&... args) const {
  std::vector<NodePtr> nodes;
  nodes.reserve(sizeof...(args));
  (nodes.push_back(Expr(std::forward<Args>(args)).take()), ...);
  return Expr(makeNode(code, std::move(nodes)));
}

}  // namespace Sym
