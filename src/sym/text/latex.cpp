// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "sym/kinds/kind.h"
#include "sym/node/edit.h"
#include "sym/node/operators.h"
#include "sym/text/number_text.h"
#include "sym/text/writers.h"

namespace Sym {
namespace {

constexpr const char* kTimes = "\\times ";

bool isDigit(char c) { return c >= '0' && c <= '9'; }

void writeBracketed(const SymObject& node, bool brackets, std::string& out) {
  if (brackets) out += "(";
  writeLatex(node, out);
  if (brackets) out += ")";
}

// base^{exponent times sign}
void writePower(const SymObject& base, const SymObject& exponent, double sign, std::string& out) {
  writeBracketed(base, needsBrackets(base), out);
  out += "^{";
  if (sign < 0)
    writeLatex(*cloneNode(exponent, -1), out);
  else
    writeLatex(exponent, out);
  out += "}";
}

// A power below the fraction line: what it is the reciprocal of.
void writeReciprocalOf(const SymObject& power, bool alone, std::string& out) {
  const SymObject &base = *power.args[0], &exponent = *power.args[1];
  if (isNumber(exponent, -1)) return writeBracketed(base, !alone && needsBrackets(base), out);
  if (isNumber(exponent, -0.5)) {
    out += "\\sqrt{";
    writeLatex(base, out);
    out += "}";
    return;
  }
  writePower(base, exponent, -1, out);
}

void writeFactors(const std::vector<const SymObject*>& factors, std::string& out) {
  if (factors.empty()) out += "1";
  for (std::size_t i = 0; i < factors.size(); ++i) {
    if (i > 0) out += kTimes;
    writeBracketed(*factors[i], factorNeedsBrackets(*factors[i]), out);
  }
}

void writeArguments(const SymObject& node, std::size_t first, std::string& out) {
  for (std::size_t i = first; i < node.args.size(); ++i) {
    if (i > first) out += ",";
    writeLatex(*node.args[i], out);
  }
}

void writeByName(const SymObject& node, bool indexed, std::string& out) {
  out.append("\\mathbf{").append(node.bound().name).append("}");
  if (indexed) {
    out += "_{";
    writeLatex(*node.args[0], out);
    out += "}";
  }
  out += "(";
  writeArguments(node, indexed ? 1 : 0, out);
  out += ")";
}

}  // namespace

void writeLatex(const SymObject& node, std::string& out) {
  const LatexForm& form = node.bound().latex;
  if (form.layout == LatexForm::Whole) return form.whole(node, out);
  coefPrefix(node.coef, kTimes, out);
  if (form.layout != LatexForm::Around)
    return writeByName(node, form.layout == LatexForm::Indexed && node.args.size() > 1, out);
  out += form.open;
  writeArguments(node, 0, out);
  out += form.close;
}

void latexNumber(const SymObject& node, std::string& out) { out += numberText(node.coef); }

void latexVariable(const SymObject& node, std::string& out) {
  if (within(node.coef, -1, kTol))
    out += "-";
  else if (!within(node.coef, 1, kTol))
    out += numberText(node.coef);
  const std::string& name = node.var->name;
  const bool letterAndDigits =
      name.size() > 1 && !isDigit(name[0]) && std::all_of(name.begin() + 1, name.end(), isDigit);
  out += letterAndDigits ? name.substr(0, 1) + "_{" + name.substr(1) + "}" : name;
}

void latexAdd(const SymObject& node, std::string& out) {
  const bool plain = within(node.coef, 1, kTol);
  if (!plain) out += within(node.coef, -1, kTol) ? "-(" : numberText(node.coef) + "(";
  for (std::size_t i = 0; i < node.args.size(); ++i) {
    const std::size_t start = out.size();
    writeLatex(*node.args[i], out);
    if (i > 0 && out[start] != '-') out.insert(start, "+");
  }
  if (!plain) out += ")";
}

void latexMul(const SymObject& node, std::string& out) {
  const Fraction parts(node);
  if (parts.denominator.empty()) {
    if (parts.numerator.empty()) {
      out += numberText(node.coef);
      return;
    }
    coefPrefix(node.coef, kTimes, out);
    return writeFactors(parts.numerator, out);
  }
  if (within(node.coef, -1, kTol))
    out += "-";
  else if (!within(node.coef, 1, kTol))
    out.append(numberText(node.coef)).append("\\times");
  out += "\\dfrac{";
  writeFactors(parts.numerator, out);
  out += "}{";
  const bool alone = parts.denominator.size() == 1;
  for (std::size_t i = 0; i < parts.denominator.size(); ++i) {
    if (i > 0) out += kTimes;
    writeReciprocalOf(*parts.denominator[i], alone, out);
  }
  out += "}";
}

void latexPow(const SymObject& node, std::string& out) {
  const SymObject &base = *node.args[0], &exponent = *node.args[1];
  if (isNumber(exponent) && exponent.coef < 0) {
    out.append("\\dfrac{").append(numberText(node.coef)).append("}{");
    writeReciprocalOf(node, true, out);
    out += "}";
    return;
  }
  coefPrefix(node.coef, kTimes, out);
  writePower(base, exponent, 1, out);
}

}  // namespace Sym
