// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <unordered_map>

#include "sym/node/node.h"

namespace Sym {

/// The derivative of a sum of products, collected as coefficients times powers of numbered bases. Products that come to
/// the same powers are added before any of them is built, and each distinct base is differentiated once: a node is made
/// only for what stays.
class DerivativeSum {
 public:
  DerivativeSum(const VarPtr& variable, std::string& message) : variable_(variable), message_(message) {}

  /// Adds the derivative of a term, by the product rule if it is a product. False when a factor refuses.
  bool addDerivative(const SymObject& term);

  /// The sum times a factor.
  NodePtr build(double factor);

 private:
  struct Power {
    uint32_t base;
    double exponent;
    bool operator==(const Power&) const = default;
  };

  struct Monomial {
    double coef = 1;
    double largest = 0;         // size of what was added into coef
    std::vector<Power> powers;  // by ascending base
  };

  struct Base {
    const SymObject* node;  // of the expression, of a slope, or owned
    NodePtr owned;          // when its coefficient is another one than in the expression
    bool differentiated = false;
    NodePtr slope;
    Monomial asMonomial;  // the slope
  };

  uint32_t number(const SymObject& node, double coef);
  Power split(const SymObject& factor, double& coef);
  Monomial describe(const SymObject& node);
  void multiply(Monomial& product, Power power) const;
  const Monomial* slopeOf(uint32_t base);
  bool addSlopeOf(const Monomial& product, std::size_t factor);
  void add(const Monomial& product);
  NodePtr buildProduct(const Monomial& product) const;

  const VarPtr& variable_;
  std::string& message_;
  std::deque<Base> bases_;  // addresses stay
  std::unordered_multimap<uint64_t, uint32_t> baseByHash_;
  Monomial scratch_;  // one product at a time, so that those that meet others take no memory
  std::vector<Monomial> sum_;
  std::unordered_multimap<uint64_t, std::size_t> termByHash_;
};

}  // namespace Sym
