// SPDX-License-Identifier: Apache-2.0
// Sums: flattened, numbers added, like terms merged, identities between two terms, sorted.
#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <utility>

#include "sym/kinds/kind.h"
#include "sym/node/edit.h"
#include "sym/normal/compare.h"
#include "sym/normal/identity_forms.h"
#include "sym/normal/update.h"

namespace Sym {
namespace {

struct Term {
  NodePtr node;
  double coef;     // the term's own, kept outside the node while terms are merged
  double largest;  // size of what was added into coef
  uint64_t hash;
};

bool sameCoefficient(double a, double b) {
  return within(a, b, kTol) && std::abs(a - b) <= kTol * std::max(std::abs(a), std::abs(b));
}

class Sum {
 public:
  // Takes the terms over, those of inner sums with the inner coefficient, and adds the numbers.
  void collect(Args& args, double scale) {
    for (NodePtr& arg : args) {
      if (arg->kind == Code::Add) {
        collect(arg->args, scale * arg->coef);
      } else if (arg->kind == Code::Number) {
        addNumber(arg->coef * scale);
      } else {
        const double coef = coefficientOf(*arg) * scale;
        terms.push_back({std::move(arg), coef, std::abs(coef), 0});
      }
    }
  }

  void addNumber(double value) {
    number += value;
    largestNumber = std::max(largestNumber, std::abs(value));
  }

  void merge() {
    constexpr std::size_t kFew = 8;  // pairs are compared directly up to here
    if (terms.size() < 2) return;
    if (terms.size() <= kFew) {
      for (std::size_t j = 1; j < terms.size(); ++j)
        for (std::size_t i = 0; i < j; ++i)
          if (terms[i].node && absorb(terms[i], terms[j])) break;
    } else {
      std::unordered_multimap<uint64_t, std::size_t> seen;
      seen.reserve(terms.size());
      for (std::size_t j = 0; j < terms.size(); ++j) {
        const uint64_t hash = hashOf(*terms[j].node);
        const auto [first, last] = seen.equal_range(hash);
        const auto same =
            std::find_if(first, last, [&](const auto& entry) { return absorb(terms[entry.second], terms[j]); });
        if (same == last) seen.emplace(hash, j);
      }
    }
    removeMarked();
  }

  // Pairs of terms that have a simpler sum. True when a new term arose, which may be like another.
  bool applyIdentities() {
    bool arose = false;
    std::vector<std::pair<std::size_t, Form>> forms;
    for (std::size_t i = 0; i < terms.size(); ++i)
      if (const Form form = identityFormOf(*terms[i].node); form.name != Name::none) forms.emplace_back(i, form);
    for (std::size_t p = 1; p < forms.size(); ++p)
      for (std::size_t q = 0; q < p; ++q) arose = applyIdentity(forms[q], forms[p]) || arose;
    removeMarked();
    return arose;
  }

  std::vector<Term, PoolAllocator<Term>> terms;
  double number = 0;
  double largestNumber = 0;

 private:
  using Form = IdentityForm;
  using Name = IdentityForm::Name;

  bool applyIdentity(std::pair<std::size_t, Form>& left, std::pair<std::size_t, Form>& right) {
    auto *p = &left, *q = &right;
    if (p->second.name > q->second.name) std::swap(p, q);
    const Name a = p->second.name, b = q->second.name;
    const bool toOne = (a == Name::sinSquared && b == Name::cosSquared) || (a == Name::erf && b == Name::erfc);
    const bool toDifference = a == Name::sinhSquared && b == Name::coshSquared;
    const bool toExp = a == Name::sinh && b == Name::cosh;
    if ((!toOne && !toDifference && !toExp) || p->second.hash != q->second.hash) return false;
    Term &s = terms[p->first], &c = terms[q->first];
    const bool equal = sameCoefficient(s.coef, c.coef), opposite = sameCoefficient(s.coef, -c.coef);
    if (!(toOne ? equal : toDifference ? opposite : equal || opposite)) return false;
    if (!sameNode(*p->second.argument, *q->second.argument, true)) return false;
    p->second.name = q->second.name = Name::none;  // both are spent
    s.node->flag = 1;
    if (toExp) {
      NodePtr u = cloneNode(*c.node->args.read()[0]);
      if (opposite) {
        multiplyValue(*u, -1);
        distributeCoef(*u);
      }
      const double coef = c.coef;
      NodePtr exp = makeUnary(Code::Exp, std::move(u));
      c = {exp, coef * coefficientOf(*exp), std::abs(coef), 0};
      return true;
    }
    c.node->flag = 1;
    addNumber(c.coef);
    return false;
  }

  static bool absorb(Term& into, Term& from) {
    if (into.node->flag || !sameNode(*into.node, *from.node, false)) return false;
    into.coef += from.coef;
    into.largest = std::max(into.largest, from.largest);
    from.node->flag = 1;
    return true;
  }

  void removeMarked() {
    std::erase_if(terms, [](const Term& term) { return term.node->flag != 0 || isResidue(term.coef, term.largest); });
  }
};

// A form by the argument of its function.
IdentityForm form(IdentityForm::Name name, const SymObject& function) {
  const SymObject& argument = *function.args[0];
  return {name, &argument, hashWithCoefficient(argument)};
}

}  // namespace

IdentityForm identityFormOf(const SymObject& term) {
  using Name = IdentityForm::Name;
  switch (term.kind) {
    case Code::Pow: {
      const SymObject &base = *term.args[0], &exponent = *term.args[1];
      if (exponent.kind != Code::Number || !within(exponent.coef, 2, kTol)) break;
      if (base.kind == Code::Sin) return form(Name::sinSquared, base);
      if (base.kind == Code::Cos) return form(Name::cosSquared, base);
      if (base.kind == Code::Sinh) return form(Name::sinhSquared, base);
      if (base.kind == Code::Cosh) return form(Name::coshSquared, base);
      break;
    }
    case Code::Erf:
      return form(Name::erf, term);
    case Code::Erfc:
      return form(Name::erfc, term);
    case Code::Sinh:
      return form(Name::sinh, term);
    case Code::Cosh:
      return form(Name::cosh, term);
    default:
      break;
  }
  return {Name::none, nullptr, 0};
}

void settleTerm(SymObject& node, double coef) {
  if (coefficientOf(node) == coef && !node.bound().is(Property::bare)) return;
  takeCoefficient(node);
  multiplyValue(node, coef);
  if (node.kind == Code::Mul && node.args.size() == 1) node.fnUpdate();
}

void updateAdd(SymObject& node) {
  node.text.clear();
  Sum sum;
  sum.terms.reserve(node.args.size());
  Args args = std::move(node.args);
  sum.collect(args, 1);
  do {
    sum.merge();
    if (!sum.applyIdentities()) break;
    // A new exponential may be a number, a sum or like another term.
    args.clear();
    for (Term& term : sum.terms) {
      settleTerm(*term.node, term.coef);
      args.push_back(std::move(term.node));
    }
    sum.terms.clear();
    sum.collect(args, 1);
  } while (true);
  const double c = node.coef;
  if (sum.terms.empty() || c == 0) return setConstant(node, (c == 0 ? 0 : sum.number) * c);
  args.clear();
  args.reserve(sum.terms.size() + 1);
  for (Term& term : sum.terms) {
    settleTerm(*term.node, term.coef * c);
    args.push_back(std::move(term.node));
  }
  if (!isResidue(sum.number, sum.largestNumber)) args.push_back(makeNumber(sum.number * c));
  node.coef = 1;
  if (args.size() == 1) {
    const NodePtr only = std::move(args[0]);
    return copyFrom(node, *only, 1);
  }
  sortNodes(args);
  node.args = std::move(args);
}

}  // namespace Sym
