// SPDX-License-Identifier: Apache-2.0
#include "sym/diff/product_rule.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "sym/kinds/kind.h"
#include "sym/node/edit.h"
#include "sym/node/operators.h"
#include "sym/normal/compare.h"

namespace Sym {
namespace {

bool isNumericPower(const SymObject& node) {
  return node.kind == Code::Pow && node.args.size() == 2 && isNumber(*node.args[1]);
}

// Coefficients that cancel but for rounding.
bool cancels(double sum, double largest) {
  return sum == 0 || (std::abs(sum) < kEpsilon && std::abs(sum) <= 4 * kEpsilon * largest);
}

}  // namespace

uint32_t DerivativeSum::number(const SymObject& node, double coef) {
  const uint64_t hash = hashOf(node);
  const auto [first, last] = baseByHash_.equal_range(hash);
  for (auto entry = first; entry != last; ++entry) {
    const Base& known = bases_[entry->second];
    if (coefficientOf(*known.node) == coef && sameNode(*known.node, node, false)) return entry->second;
  }
  const auto index = static_cast<uint32_t>(bases_.size());
  Base base{&node, nullptr, false, nullptr, {}};
  if (coefficientOf(node) != coef) {
    base.owned = cloneNode(node);
    takeCoefficient(*base.owned);
    multiplyValue(*base.owned, coef);
    base.node = base.owned.get();
  }
  bases_.push_back(std::move(base));
  baseByHash_.emplace(hash, index);
  return index;
}

DerivativeSum::Power DerivativeSum::split(const SymObject& factor, double& coef) {
  coef *= coefficientOf(factor);
  if (!isNumericPower(factor)) return {number(factor, 1), 1};
  const SymObject& base = *factor.args[0];
  return {number(base, coefficientOf(base)), factor.args[1]->coef};
}

DerivativeSum::Monomial DerivativeSum::describe(const SymObject& node) {
  Monomial product;
  if (isNumber(node)) {
    product.coef = node.coef;
  } else if (node.kind == Code::Mul) {
    product.coef = node.coef;
    product.powers.reserve(node.args.size());
    for (const ConstNodePtr& factor : node.args) {
      if (isNumber(*factor))
        product.coef *= factor->coef;
      else
        multiply(product, split(*factor, product.coef));
    }
  } else {
    multiply(product, split(node, product.coef));
  }
  return product;
}

void DerivativeSum::multiply(Monomial& product, Power power) const {
  auto& powers = product.powers;
  const auto place = std::lower_bound(powers.begin(), powers.end(), power,
                                      [](const Power& a, const Power& b) { return a.base < b.base; });
  // Exponentials meet in a sum of their arguments, not in a power.
  const bool meets = place != powers.end() && place->base == power.base && bases_[power.base].node->kind != Code::Exp;
  if (!meets) {
    powers.insert(place, power);
    return;
  }
  place->exponent += power.exponent;
  if (within(place->exponent, 0, kTol)) powers.erase(place);
}

const DerivativeSum::Monomial* DerivativeSum::slopeOf(uint32_t index) {
  Base& base = bases_[index];
  if (!base.differentiated) {
    base.slope = base.node->fnDiff(variable_, message_);
    if (base.slope == nullptr) return nullptr;
    base.differentiated = true;
    base.asMonomial = describe(*base.slope);
  }
  return &base.asMonomial;
}

// The other factors times k b^(k-1) b'.
bool DerivativeSum::addSlopeOf(const Monomial& product, std::size_t factor) {
  const auto [base, exponent] = product.powers[factor];
  const Monomial* slope = slopeOf(base);
  if (slope == nullptr) return false;
  if (slope->powers.empty() && std::abs(slope->coef) < kTol) return true;
  scratch_.coef = product.coef * (exponent * slope->coef);
  scratch_.powers = product.powers;
  scratch_.powers.erase(scratch_.powers.begin() + static_cast<std::ptrdiff_t>(factor));
  if (!within(exponent, 1, kTol)) multiply(scratch_, {base, exponent - 1});
  for (const Power& power : slope->powers) multiply(scratch_, power);
  add(scratch_);
  return true;
}

bool DerivativeSum::addDerivative(const SymObject& term) {
  const Monomial product = describe(term);
  for (std::size_t i = 0; i < product.powers.size(); ++i)
    if (!addSlopeOf(product, i)) return false;
  return true;
}

void DerivativeSum::add(const Monomial& product) {
  uint64_t hash = 0;
  for (const Power& power : product.powers)
    hash = (hash ^ power.base) * 0x9e3779b97f4a7c15u + std::bit_cast<uint64_t>(power.exponent);
  const auto [first, last] = termByHash_.equal_range(hash);
  for (auto entry = first; entry != last; ++entry) {
    Monomial& known = sum_[entry->second];
    if (known.powers != product.powers) continue;
    known.coef += product.coef;
    known.largest = std::max(known.largest, std::abs(product.coef));
    return;
  }
  termByHash_.emplace(hash, sum_.size());
  sum_.push_back(product);
  sum_.back().largest = std::abs(product.coef);
}

NodePtr DerivativeSum::buildProduct(const Monomial& product) const {
  std::vector<NodePtr> factors;
  factors.reserve(product.powers.size());
  for (const Power& power : product.powers) {
    NodePtr node = cloneNode(*bases_[power.base].node);
    factors.push_back(within(power.exponent, 1, kTol) ? std::move(node) : pow(std::move(node), power.exponent));
  }
  if (factors.size() == 1) {
    multiplyValue(*factors[0], product.coef);
    return std::move(factors[0]);
  }
  NodePtr node = newNode(Code::Mul, product.coef);
  node->args = std::move(factors);
  node->fnUpdate();
  return node;
}

NodePtr DerivativeSum::build(double factor) {
  std::vector<NodePtr> terms;
  double number = 0;
  for (const Monomial& product : sum_) {
    if (cancels(product.coef, product.largest)) continue;
    if (product.powers.empty()) {
      number += product.coef;
      continue;
    }
    NodePtr term = buildProduct(product);
    if (isNumber(*term))
      number += term->coef;
    else
      terms.push_back(std::move(term));
  }
  const bool noNumber = std::abs(number) < kEpsilon;
  if (terms.empty()) return makeNumber(number * factor);
  if (terms.size() == 1 && noNumber) {
    multiplyValue(*terms[0], factor);
    return std::move(terms[0]);
  }
  if (!noNumber) terms.push_back(makeNumber(number));
  NodePtr node = newNode(Code::Add, factor);
  node->args = std::move(terms);
  node->fnUpdate();
  return node;
}

}  // namespace Sym
