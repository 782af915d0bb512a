// SPDX-License-Identifier: Apache-2.0
// Products: flattened, numbers and coefficients taken out, equal bases merged, sorted.
#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <utility>

#include "sym/kinds/kind.h"
#include "sym/node/edit.h"
#include "sym/normal/compare.h"
#include "sym/normal/growing.h"
#include "sym/normal/update.h"

namespace Sym {
namespace {

// One factor as base to the power of number + symbols.
struct Factor {
  NodePtr node;                  // as it stands, while nothing was merged into it
  const SymObject* base;         // within node
  double number;                 // numeric exponent
  std::vector<NodePtr> symbols;  // exponents that are no numbers
  enum Shape : uint8_t { plain, root, power, exponential } shape;
  bool merged = false;
  uint64_t hash = 0;
};

bool isNumber(const SymObject& node, double value) {
  return node.kind == Code::Number && within(node.coef, value, kTol);
}

Factor describe(NodePtr node) {
  Factor factor{std::move(node), nullptr, 1, {}, Factor::plain};
  const SymObject& f = *factor.node;
  factor.base = baseOf(f);
  if (f.kind == Code::Sqrt) {
    factor.number = 0.5;
    factor.shape = Factor::root;
  } else if (f.kind == Code::Pow) {
    const SymObject& exponent = *f.args[1];
    factor.number = exponent.kind == Code::Number ? exponent.coef : 0;
    factor.shape = Factor::power;
    if (factor.base != f.args[0].get()) factor.number /= 2;
  } else if (f.kind == Code::Exp) {
    factor.shape = Factor::exponential;
  }
  return factor;
}

class Product {
 public:
  double coef;
  std::vector<Factor, PoolAllocator<Factor>> factors;

  // Takes the factors over: those of inner products and of their reciprocals, without numbers and coefficients.
  void collect(Args& args) {
    for (NodePtr& arg : args) take(std::move(arg));
  }

  // True when a merge gave a factor that may be like another one or fall apart.
  bool merge() {
    constexpr std::size_t kFew = 12;  // pairs are compared directly up to here
    if (factors.size() < 2) return false;
    if (factors.size() <= kFew) {
      for (std::size_t j = 1; j < factors.size(); ++j)
        for (std::size_t i = 0; i < j; ++i)
          if (absorb(factors[i], factors[j])) break;
    } else {
      std::unordered_multimap<uint64_t, std::size_t> seen;
      seen.reserve(factors.size());
      for (std::size_t j = 0; j < factors.size(); ++j) {
        const uint64_t hash = factors[j].shape == Factor::exponential ? 0 : hashWithCoefficient(*factors[j].base);
        const auto [first, last] = seen.equal_range(hash);
        const auto same =
            std::find_if(first, last, [&](const auto& entry) { return absorb(factors[entry.second], factors[j]); });
        if (same == last) seen.emplace(hash, j);
      }
    }
    std::erase_if(factors, [](const Factor& factor) { return factor.node->flag != 0; });
    bool again = false;
    for (Factor& factor : factors) {
      if (!factor.merged) continue;
      const bool fresh = rebuild(factor);
      again = again || fresh || factors.size() > 1;
    }
    return again;
  }

 private:
  void take(NodePtr factor) {
    if (factor->kind == Code::Number) {
      coef *= factor->coef;
    } else if (factor->kind == Code::Mul) {
      coef *= factor->coef;
      collect(factor->args);
    } else if (factor->kind == Code::Pow && factor->args.read()[0]->kind == Code::Mul &&
               isNumber(*factor->args.read()[1], -1)) {
      SymObject& inner = *factor->args[0];
      coef *= factor->coef / inner.coef;
      for (NodePtr& arg : inner.args) take(makeBinary(Code::Pow, std::move(arg), makeNumber(-1)));
    } else {
      coef *= takeCoefficient(*factor);
      factors.push_back(describe(std::move(factor)));
    }
  }

  static bool absorb(Factor& into, Factor& from) {
    if (into.node->flag) return false;
    if (into.shape == Factor::exponential || from.shape == Factor::exponential) {
      if (into.shape != from.shape) return false;
      if (!into.merged) into.symbols.push_back(cloneNode(*into.node->args.read()[0]));
      into.symbols.push_back(cloneNode(*from.node->args.read()[0]));
    } else {
      // x Sqrt(x) stays as it is.
      const bool plainAndRoot =
          !into.merged && into.shape != Factor::power && from.shape != Factor::power && into.shape != from.shape;
      if (plainAndRoot || !sameNode(*into.base, *from.base, true)) return false;
      if (!into.merged) giveExponent(into, into);
      giveExponent(from, into);
      into.number += from.number;
    }
    into.merged = true;
    from.node->flag = 1;
    return true;
  }

  // The symbolic exponent of one factor joins those of another.
  static void giveExponent(const Factor& from, Factor& into) {
    const Args& args = from.node->args;
    if (from.shape == Factor::power && args[1]->kind != Code::Number) into.symbols.push_back(cloneNode(*args[1]));
  }

  // Makes the node of a merged factor anew. True when it is more than a power of the same base.
  static bool rebuild(Factor& factor) {
    if (factor.shape == Factor::exponential) {
      factor.node = makeUnary(Code::Exp, makeNode(Code::Add, std::move(factor.symbols)));
      return true;
    }
    NodePtr base = factor.base == factor.node.get() ? factor.node : cloneNode(*factor.base);
    NodePtr exponent;
    if (factor.symbols.empty()) {
      exponent = makeNumber(factor.number);
    } else {
      if (factor.number != 0) factor.symbols.push_back(makeNumber(factor.number));
      exponent = makeNode(Code::Add, std::move(factor.symbols));
    }
    const uint8_t kind = base->kind;
    factor.node = makeBinary(Code::Pow, std::move(base), std::move(exponent));
    return factor.node->kind != Code::Pow || factor.node->args.read()[0]->kind != kind || factor.node->coef != 1;
  }
};

}  // namespace

const SymObject* baseOf(const SymObject& factor) {
  if (factor.kind == Code::Sqrt) return factor.args[0].get();
  if (factor.kind != Code::Pow) return &factor;
  const SymObject &base = *factor.args[0], &exponent = *factor.args[1];
  // A power of a root is a power of what stands under it; the root gives the sign that its domain allows.
  const bool ofRoot = exponent.kind == Code::Number && base.kind == Code::Sqrt && base.coef == 1;
  return ofRoot ? base.args[0].get() : &base;
}

void updateMul(SymObject& node) {
  node.text.clear();
  Product product;
  product.coef = node.coef;
  Args args = std::move(node.args);
  product.factors.reserve(args.size());
  while (true) {
    product.collect(args);
    if (product.coef == 0) return setConstant(node, 0);
    const bool again = product.merge();
    args.clear();
    for (Factor& factor : product.factors) args.push_back(std::move(factor.node));
    if (!again) break;
    product.factors.clear();
  }
  node.coef = product.coef;
  if (args.empty()) return setConstant(node, node.coef);
  const bool bare = args[0]->bound().is(Property::bare);
  if (args.size() == 1 && (!bare || within(node.coef, 1, kTol))) {
    const NodePtr only = std::move(args[0]);
    copyFrom(node, *only, node.coef);
    return distributeCoef(node);
  }
  sortNodes(args);
  node.args = std::move(args);
}

}  // namespace Sym
