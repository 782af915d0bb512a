// SPDX-License-Identifier: Apache-2.0
#include <charconv>
#include <cmath>

#include "sym/kinds/kind.h"
#include "sym/node/edit.h"
#include "sym/node/operators.h"
#include "sym/text/number_text.h"
#include "sym/text/writers.h"

namespace Sym {
namespace {

// What a stream writes at its default precision.
std::string shortNumber(double x) {
  char buffer[32];
  return {buffer, std::to_chars(buffer, buffer + sizeof buffer, x, std::chars_format::general, 6).ptr};
}

std::string bracketed(const std::string& text) { return "(" + text + ")"; }

std::string operandText(const SymObject& operand) {
  return needsBrackets(operand) ? bracketed(plainText(operand)) : plainText(operand);
}

// The sum's sign rule: no plus before a term that brings its own minus.
bool bringsSign(const std::string& term) {
  if (term[0] == '-') return true;
  // KEPT: nor before one with "-" second, such as (-2)^x; expected: a plus there (kept.csv: Add_secondMinus)
  return term.size() > 2 && term[1] == '-';
}

// The form has the coefficient of the sum in its terms.
std::string polynomialText(const PolyForm& poly) {
  std::string text;
  for (const auto& [exponent, value] : poly.terms) {
    double a = value;
    if (std::abs(a) < 1e-15) continue;
    if (a > 0 && !text.empty()) text += "+";
    if (exponent == 0) {
      text += numberText(a);
      continue;
    }
    if (a < 0) {
      text += "-";
      a = -a;
    }
    if (std::abs(a - 1) > 1e-15) text += shortNumber(a) + "*";
    text += poly.base->name;
    if (exponent > 1) text += "^" + std::to_string(exponent);
  }
  return text.empty() ? "0" : text;
}

// A factor below the line: the base, and the exponent with its sign changed unless that is 1.
std::string denominatorText(const SymObject& power) {
  const SymObject& exponent = *power.args[1];
  std::string text = operandText(*power.args[0]);
  if (isNumber(exponent, -1)) return text;
  return text + "^" + operandText(*cloneNode(exponent, -1));
}

std::string numeratorText(const SymObject& product, const std::vector<const SymObject*>& factors) {
  if (factors.empty()) return within(product.coef, -1, kTol) ? "-1" : numberText(product.coef);
  std::string text;
  coefPrefix(product.coef, "*", text);
  for (std::size_t i = 0; i < factors.size(); ++i) {
    if (i > 0) text += "*";
    text += factorNeedsBrackets(*factors[i]) ? bracketed(plainText(*factors[i])) : plainText(*factors[i]);
  }
  return text;
}

}  // namespace

void coefPrefix(double coef, const char* times, std::string& out) {
  if (within(coef, 1, kEpsilon)) return;
  if (within(coef, -1, kEpsilon))
    out += "-";
  else
    out.append(numberText(coef)).append(times);
}

bool needsBrackets(const SymObject& operand) {
  return operand.kind == Code::Add || operand.kind == Code::Mul || operand.kind == Code::Pow || operand.coef < 0 ||
         (operand.kind != Code::Number && !within(operand.coef, 1, kTol));
}

bool factorNeedsBrackets(const SymObject& factor) { return factor.kind == Code::Add || !within(factor.coef, 1, kTol); }

Fraction::Fraction(const SymObject& product) {
  for (const ConstNodePtr& factor : product.args) {
    const bool below = factor->kind == Code::Pow && factor->args[1]->coef < 0 && within(factor->coef, 1, kTol);
    (below ? denominator : numerator).push_back(factor.get());
  }
}

const std::string& plainText(const SymObject& node) {
  if (node.text.empty()) node.fnText();
  return node.text;
}

void textNumber(const SymObject& node) { node.text = numberText(node.coef); }

void textVariable(const SymObject& node) {
  node.text.clear();
  coefPrefix(node.coef, "*", node.text);
  node.text += node.var->name;
}

void textCall(const SymObject& node) {
  std::string text;
  coefPrefix(node.coef, "*", text);
  text.append(node.bound().name).append("(");
  for (std::size_t i = 0; i < node.args.size(); ++i) {
    if (i > 0) text += ",";
    text += plainText(*node.args[i]);
  }
  node.text = text + ")";
}

void textAdd(const SymObject& node) {
  if (node.poly != nullptr && !node.poly->terms.empty()) {
    node.text = polynomialText(*node.poly);
    return;
  }
  std::string text;
  for (const ConstNodePtr& term : node.args) {
    const std::string& s = plainText(*term);
    if (!text.empty() && !bringsSign(s)) text += "+";
    text += s;
  }
  if (within(node.coef, 1, kTol))
    node.text = std::move(text);
  else if (within(node.coef, -1, kTol))
    node.text = "-" + bracketed(text);
  else
    node.text = numberText(node.coef) + "*" + bracketed(text);
}

void textMul(const SymObject& node) {
  const Fraction parts(node);
  std::string text = numeratorText(node, parts.numerator);
  std::string below;
  for (const SymObject* power : parts.denominator) {
    if (!below.empty()) below += "*";
    below += denominatorText(*power);
  }
  if (parts.denominator.size() == 1)
    text += "/" + below;
  else if (!below.empty())
    text += "/" + bracketed(below);
  node.text = std::move(text);
}

void textPow(const SymObject& node) {
  const SymObject &base = *node.args[0], &exponent = *node.args[1];
  if (isNumber(exponent, -1)) {
    node.text = numberText(node.coef) + "/" + operandText(base);
    return;
  }
  std::string text;
  coefPrefix(node.coef, "*", text);
  node.text = text + operandText(base) + "^" + operandText(exponent);
}

}  // namespace Sym
