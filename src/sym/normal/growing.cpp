// SPDX-License-Identifier: Apache-2.0
#include "sym/normal/growing.h"

#include <algorithm>
#include <cmath>
#include <memory_resource>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "sym/kinds/kind.h"
#include "sym/node/edit.h"
#include "sym/normal/compare.h"
#include "sym/normal/identity_forms.h"

namespace Sym {
namespace {

// More than the rules of sums and products compare pair by pair: like parts are found by their hash from here on.
constexpr std::size_t kFewParts = 16;

/// A sum to which terms are added one by one. What the rules of a whole sum could do to it beside merging like terms is
/// recognised and refused.
class GrowingSum {
 public:
  GrowingSum(const SymObject& sum, std::size_t more) {
    terms.reserve(sum.args.size() + more);
    places.reserve(sum.args.size() + more);
    for (const ConstNodePtr& arg : sum.args) {
      if (arg->kind == Code::Number) {
        number = arg->coef;
        continue;
      }
      const uint64_t hash = hashOf(*arg);
      refused = refused || places.contains(hash);
      enter(*arg, hash, identityFormOf(*arg));
    }
  }

  /// False, without effect, where only the whole rule knows what happens.
  bool add(const SymObject& term) {
    if (refused || live < kFewParts) return false;
    if (term.kind == Code::Number) {
      const double total = number + term.coef;
      const double largest = std::max(std::max(0.0, std::abs(number)), std::abs(term.coef));
      number = isResidue(total, largest) ? 0 : total;
      return true;
    }
    const bool wrapped = term.kind == Code::Mul && term.args.size() == 1;
    if (term.kind == Code::Add || wrapped || term.bound().is(Property::bare) || !std::isfinite(term.coef)) return false;
    if (term.coef == 0) return true;
    const IdentityForm form = identityFormOf(term);
    const uint64_t hash = hashOf(term);
    const auto [first, last] = places.equal_range(hash);
    const auto like =
        std::find_if(first, last, [&](const auto& entry) { return sameNode(*terms[entry.second].node, term, false); });
    const bool named = form.name != IdentityForm::Name::none;
    if (named && forms[form.hash] > (like == last ? 0 : 1)) return false;
    if (like == last) {
      enter(term, hash, form);
      return true;
    }
    Term& known = terms[like->second];
    const double largest = std::max(std::abs(known.coef), std::abs(term.coef));
    known.coef += term.coef;
    if (!isResidue(known.coef, largest)) return true;
    known.node = nullptr;
    places.erase(like);
    if (named) --forms[form.hash];
    --live;
    return true;
  }

  /// The terms in their order; none where that could depend on the way to it: where coefficients count as equal that
  /// are not.
  Args finish() {
    std::vector<double> coefs;
    coefs.reserve(live);
    for (const Term& term : terms)
      if (term.node) coefs.push_back(term.coef);
    std::sort(coefs.begin(), coefs.end());
    const auto close = [](double a, double b) { return a != b && !(b - a > kEpsilon); };
    if (std::adjacent_find(coefs.begin(), coefs.end(), close) != coefs.end()) return {};
    Args args;
    args.reserve(live + 1);
    for (Term& term : terms) {
      if (!term.node) continue;
      settleTerm(*term.node, term.coef);
      args.push_back(std::move(term.node));
    }
    if (number != 0) args.push_back(makeNumber(number));
    sortNodes(args);
    return args;
  }
  double coef() const { return 1; }

 private:
  struct Term {
    NodePtr node;
    double coef;
  };

  void enter(const SymObject& term, uint64_t hash, const IdentityForm& form) {
    places.emplace(hash, terms.size());
    terms.push_back({cloneNode(term), coefficientOf(term)});
    if (form.name != IdentityForm::Name::none) ++forms[form.hash];
    ++live;
  }

  std::pmr::monotonic_buffer_resource scratch;  // apart from the nodes that stay, so that it goes back as a whole
  std::vector<Term> terms;
  std::pmr::unordered_multimap<uint64_t, std::size_t> places{&scratch};  // by hash
  std::unordered_map<uint64_t, int> forms;  // terms that have identities, by the hash of their argument
  double number = 0;
  std::size_t live = 0;
  bool refused = false;  // the sum holds terms that the next rule may merge, as one that ignores its coefficient leaves
};

/// The same for a product: a factor that could meet another one is refused.
class GrowingProduct {
 public:
  GrowingProduct(const SymObject& product, std::size_t more) : product_(product.coef) {
    factors.reserve(product.args.size() + more);
    places.reserve(product.args.size() + more);
    for (const ConstNodePtr& arg : product.args) enter(*arg, meetingPlace(*arg));
    refused = places.size() < factors.size();
  }

  bool add(const SymObject& factor) {
    if (refused || factors.size() < kFewParts || factor.kind == Code::Mul) return false;
    const bool number = factor.kind == Code::Number;
    const double product = product_ * (number ? factor.coef : coefficientOf(factor));
    if (product == 0) return false;
    if (!number) {
      if (factor.kind == Code::Pow && factor.args[0]->kind == Code::Mul) return false;
      const NodePtr plain = cloneNode(factor);
      takeCoefficient(*plain);
      const uint64_t place = meetingPlace(*plain);
      if (places.contains(place)) return false;
      enter(*plain, place);
    }
    product_ = product;
    return true;
  }

  Args finish() {
    Args args(std::move(factors));
    sortNodes(args);
    return args;
  }
  double coef() const { return product_; }

 private:
  // Factors with different ones have nothing to do with each other; exponentials all have the same.
  static uint64_t meetingPlace(const SymObject& factor) {
    return factor.kind == Code::Exp ? 0 : hashWithCoefficient(*baseOf(factor));
  }

  void enter(const SymObject& factor, uint64_t place) {
    places.insert(place);
    factors.push_back(cloneNode(factor));
  }

  std::pmr::monotonic_buffer_resource scratch;  // as in a sum
  std::vector<NodePtr> factors;
  std::pmr::unordered_set<uint64_t> places{&scratch};
  double product_;
  bool refused = false;  // the product holds factors of one base
};

// Adds parts one by one up to the first that is refused; returns how many. Without effect where the order of the result
// is not certain.
template <class Growing>
std::size_t addSome(NodePtr& whole, std::span<const NodePtr> parts, bool& certain) {
  Growing growing(*whole, parts.size());
  const auto refused = std::find_if(parts.begin(), parts.end(), [&](const NodePtr& p) { return !growing.add(*p); });
  if (refused == parts.begin()) return 0;
  Args args = growing.finish();
  certain = !args.empty();
  if (!certain) return 0;
  whole->args = std::move(args);
  whole->coef = growing.coef();
  return static_cast<std::size_t>(refused - parts.begin());
}

}  // namespace

GrownNode::GrownNode(std::shared_ptr<Growth> of, std::size_t parts)
    : SymObject(Code::Number), growth(std::move(of)), count(parts) {
  flag = kToBuild;
}

NodePtr grow(const SymObject& a, const SymObject& b, uint8_t code) {
  const bool sum = code == Code::Add || code == Code::Subtract, turned = code == Code::Divide;
  if (!sum && code != Code::Mul && !turned) return nullptr;
  if (turned && b.kind == Code::Number) return nullptr;
  const uint8_t kind = sum ? Code::Add : Code::Mul;
  std::shared_ptr<Growth> growth;
  if (a.flag == kToBuild) {
    const auto& partial = static_cast<const GrownNode&>(a);
    if (partial.growth->kind == kind && partial.count == partial.growth->parts.size()) growth = partial.growth;
  } else if (a.kind == kind && a.args.size() >= kFewParts && (kind == Code::Mul || a.coef == 1)) {
    growth = std::make_shared<Growth>(Growth{kind, cloneNode(a), {}});
  }
  if (!growth) return nullptr;
  NodePtr part = cloneNode(b);
  if (code == Code::Subtract) multiplyValue(*part, -1);
  if (turned) part = makeBinary(Code::Pow, std::move(part), makeNumber(-1));
  growth->parts.push_back(std::move(part));
  const std::size_t count = growth->parts.size();
  return NodePtr(new GrownNode(std::move(growth), count));
}

void buildGrownNode(SymObject& node) {
  auto& grown = static_cast<GrownNode&>(node);
  const std::shared_ptr<Growth> growth = std::move(grown.growth);
  const std::span<const NodePtr> parts(growth->parts.data(), grown.count);
  NodePtr whole = cloneNode(*growth->base);
  bool certain = true;
  for (std::size_t i = 0; i < parts.size();) {
    if (certain && whole->kind == growth->kind && whole->args.size() >= kFewParts)
      i += growth->kind == Code::Add ? addSome<GrowingSum>(whole, parts.subspan(i), certain)
                                     : addSome<GrowingProduct>(whole, parts.subspan(i), certain);
    if (i < parts.size()) whole = makeBinary(growth->kind, std::move(whole), cloneNode(*parts[i++]));
  }
  node.flag = 0;
  copyFrom(node, *whole, 1);
}

}  // namespace Sym
