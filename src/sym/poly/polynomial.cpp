// SPDX-License-Identifier: Apache-2.0
#include "sym/poly/polynomial.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "sym/matrix/matrix.h"
#include "sym/poly/poly_roots.h"
#include "sym/text/number_text.h"

namespace Sym {

namespace {

constexpr double kSmall = 1e-15;
constexpr int64_t kHighestExponent = 1000000;

struct Monomial {
  int64_t exponent = 0;
  double coefficient = 0;  ///< 0 when the term is no monomial
};

Monomial monomialOf(const SymObject& term) {
  const auto isKind = [&](size_t i, uint8_t kind) { return term.args[i] && term.args[i]->kind == kind; };
  switch (term.kind) {
    case Code::Number:
      return {0, term.coef};
    case Code::Variable:
      return {1, term.coef};
    case Code::Pow: {
      if (term.args.size() != 2 || !isKind(0, Code::Variable) || !isKind(1, Code::Number)) return {};
      const double exponent = term.args[1]->coef;
      if (!(exponent >= 0 && exponent <= static_cast<double>(kHighestExponent))) return {};
      const double integer = std::round(exponent);
      if (std::abs(exponent - integer) > kSmall) return {};
      return {static_cast<int64_t>(integer), term.coef * std::pow(term.args[0]->coef, integer)};
    }
    case Code::Mul: {
      if (term.args.size() != 2) return {};
      const bool product = (isKind(0, Code::Number) && isKind(1, Code::Variable)) ||
                           (isKind(0, Code::Variable) && isKind(1, Code::Number));
      return product ? Monomial{1, term.coef * term.args[0]->coef * term.args[1]->coef} : Monomial{};
    }
    default:
      return {};
  }
}

PolyTerms termsOf(const SymObject& node) {
  PolyTerms terms;
  if (node.kind == Code::Variable) return {{1, node.coef}};  // whatever its size
  if (node.kind != Code::Add) {
    const Monomial monomial = monomialOf(node);
    if (std::abs(monomial.coefficient) > kSmall) terms[monomial.exponent] = monomial.coefficient;
    return terms;
  }
  for (const ConstNodePtr& term : node.args) {
    const Monomial monomial = term ? monomialOf(*term) : Monomial{};
    if (!(std::abs(monomial.coefficient) > kSmall)) return {};
    terms[monomial.exponent] += monomial.coefficient * node.coef;
  }
  return terms;
}

/// numberText takes for an integer what is one to 1e-15, and 0 for what is below that: a root may be as small.
std::string exactText(double x) {
  if (x == std::round(x)) return numberText(x);
  char buffer[64];
  return {buffer, std::to_chars(buffer, buffer + sizeof buffer, x, std::chars_format::general, 20).ptr};
}

std::string signedText(double x) { return (x < 0 ? "" : "+") + exactText(x); }

/// True when the rules of a polynomial form would refuse the terms for the size of a coefficient or of an exponent.
bool isRefused(const PolyTerms& terms) {
  return std::any_of(terms.begin(), terms.end(), [](const auto& term) {
    return term.first > kHighestExponent || (term.second != 0 && std::abs(term.second) <= kSmall);
  });
}

/// The polynomial x^2 + b x + c or x + c in brackets, without the parts that are 0.
std::string bracket(const std::string& x, bool square, double b, double c) {
  std::string text = "(" + x + (square ? "^2" : "");
  if (square && b != 0) text += std::abs(b) == 1 ? (b < 0 ? "-" + x : "+" + x) : signedText(b) + "*" + x;
  if (c != 0) text += signedText(c);
  return text + ")";
}

}  // namespace

const PolyForm* polynomialForm(SymObject& node) {
  if (node.poly && !node.poly->terms.empty()) return node.poly.get();
  auto form = std::make_unique<PolyForm>();
  if (node.kind == Code::Number) {
    form->terms = {{0, node.coef}};  // a zero too
  } else {
    std::vector<VarPtr> variables;
    collectVariables(node, variables);
    if (variables.size() != 1) return nullptr;
    form->base = variables.front();
    form->terms = termsOf(node);
  }
  if (form->terms.empty()) return nullptr;
  node.poly = std::move(form);
  return node.poly.get();
}

NodePtr polynomialNode(const PolyTerms& terms, const VarPtr& variable) {
  std::vector<NodePtr> sum;
  for (const auto& [exponent, coefficient] : terms) {
    if (coefficient == 0) continue;
    if (exponent == 0) {
      sum.push_back(makeNumber(coefficient));
      continue;
    }
    NodePtr term = makeVariable(variable);
    if (exponent > 1) term = makeNode(Code::Pow, {std::move(term), makeNumber(static_cast<double>(exponent))});
    scaleNode(*term, coefficient);
    sum.push_back(std::move(term));
  }
  if (sum.empty()) return makeNumber(0);
  NodePtr node = sum.size() == 1 ? sum.front() : makeNode(Code::Add, std::move(sum));
  if (node->kind != Code::Number && isRefused(terms)) {
    node->fnText();  // first: by its form alone a sum would be written without the small terms
    node->poly = std::make_unique<PolyForm>(PolyForm{variable, terms});
    std::erase_if(node->poly->terms, [](const auto& term) { return term.second == 0; });
  }
  return node;
}

std::optional<PolyTerms> termsOf(std::span<const double> coefficients, std::span<const double> exponents) {
  PolyTerms terms;
  for (size_t i = 0; i < coefficients.size(); ++i) {
    const double exponent = exponents[i];
    if (!(exponent >= 0 && exponent <= 1e8) || std::abs(exponent - std::round(exponent)) > 1e-14) return {};
    if (!terms.emplace(static_cast<int64_t>(std::round(exponent)), coefficients[i]).second) return {};
  }
  return terms;
}

std::string factorText(const PolyForm& form) {
  const int64_t top = degree(form.terms);
  if (top > kRootDegreeLimit) return {};
  const double lead = form.terms.rbegin()->second;
  if (top == 0 || lead == 0) return exactText(lead);
  const std::string& x = form.base->name;
  std::string text;
  for (const PolyRoot_t& root : polyRoots(form.terms)) {
    if (root.im < 0) continue;  // stands with its partner
    if (!text.empty()) text += "*";
    if (root.im != 0)
      text += bracket(x, true, -2 * root.re, root.re * root.re + root.im * root.im);
    else
      text += root.re == 0 ? x : bracket(x, false, 0, -root.re);
    if (root.multiplicity > 1) text += "^" + std::to_string(root.multiplicity);
  }
  if (text.empty()) return {};  // a coefficient is not finite
  if (lead == 1) return text;
  return (lead == -1 ? "-" : exactText(lead) + "*") + text;
}

}  // namespace Sym
