// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <initializer_list>
#include <type_traits>

#include "sym/node/expr.h"

namespace Sym {

/// The partial derivative of a kind by one of its arguments, made of a lambda of the arguments, for instance
/// `[](Arg n, Arg u) { return PolyGamma(n + 1, u); }`. Empty when there is none.
class Partial {
 public:
  constexpr Partial() = default;

  template <class Formula>
  requires(!std::is_same_v<Formula, Partial>) constexpr Partial(Formula) : call_(run<Formula>) {}

  constexpr explicit operator bool() const { return call_ != nullptr; }
  NodePtr operator()(const SymObject& node) const { return call_(node); }

 private:
  template <class F>
  static NodePtr run(const SymObject& node) {
    const auto arg = [&](std::size_t i) { return Arg(*node.args[i]); };
    if constexpr (std::is_invocable_v<F, Arg>)
      return Expr(F{}(arg(0))).take();
    else if constexpr (std::is_invocable_v<F, Arg, Arg>)
      return Expr(F{}(arg(0), arg(1))).take();
    else if constexpr (std::is_invocable_v<F, Arg, Arg, Arg>)
      return Expr(F{}(arg(0), arg(1), arg(2))).take();
    else
      return Expr(F{}(arg(0), arg(1), arg(2), arg(3))).take();
  }

  NodePtr (*call_)(const SymObject&) = nullptr;
};

/// A position that cannot be differentiated.
inline constexpr Partial kRefused{};

/// The derivative of a kind: a formula for each argument, the chain rule and the node's coefficient being understood.
struct Rule {
  using Whole = NodePtr (*)(const SymObject& node, const VarPtr& variable, std::string& message);

  constexpr Rule(std::initializer_list<Partial> partials, const Rule* shorter = nullptr)
      : count(static_cast<uint8_t>(partials.size())), fewer(shorter) {
    std::size_t i = 0;
    for (const Partial& p : partials) partial[i++] = p;
  }
  constexpr explicit Rule(Whole rule) : whole(rule) {}

  std::array<Partial, 4> partial{};
  uint8_t count = 0;            ///< arguments; 0 refuses them all
  const Rule* fewer = nullptr;  ///< for a node with fewer arguments than count
  Whole whole = nullptr;        ///< in place of all that, for the kinds of structure
};

/// The derivative of a node by the rule of its kind; null with a message when an argument that holds the variable has
/// no rule.
NodePtr differentiate(const SymObject& node, const Rule& rule, const VarPtr& variable, std::string& message);

/// Whether one of the arguments at the 0-based positions (none listed: of all arguments) holds the variable. Then the
/// message, in GBK, says that the word cannot be differentiated there.
bool refuseDiff(const SymObject& node, const char* word, const std::vector<int>& positions, const VarPtr& variable,
                std::string& message);

}  // namespace Sym
