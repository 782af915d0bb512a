// SPDX-License-Identifier: Apache-2.0
// What is written means what it was written from: texts of random expressions and of their derivatives, read by a small
// reader of arithmetic, give the value of the expression. LaTeX of the same keeps its braces and brackets in balance.
#include <gtest/gtest.h>

#include <cctype>
#include <cstdlib>
#include <functional>
#include <map>

#include "sym/random_formula.h"

namespace {

using namespace host;

/// sum = ["-"] product {("+"|"-") product}; product = power {("*"|"/") power}; power = atom ["^" atom].
class Reader {
 public:
  Reader(const std::string& text, double x, double y) : at_(text.c_str()), x_(x), y_(y) {}

  double whole() {
    const double value = sum();
    return *at_ == '\0' ? value : std::nan("");
  }

 private:
  bool take(char c) {
    if (*at_ != c) return false;
    ++at_;
    return true;
  }

  double sum() {
    double value = take('-') ? -product() : product();
    while (*at_ == '+' || *at_ == '-') value += *at_++ == '+' ? product() : -product();
    return value;
  }

  double product() {
    double value = power();
    while (*at_ == '*' || *at_ == '/') {
      const bool times = *at_++ == '*';
      const double factor = power();
      value = times ? value * factor : value / factor;
    }
    return value;
  }

  double power() {
    const double base = atom();
    return take('^') ? std::pow(base, atom()) : base;
  }

  double atom() {
    if (take('(')) {
      const double value = sum();
      return take(')') ? value : std::nan("");
    }
    if (*at_ >= '0' && *at_ <= '9') {
      char* end = nullptr;
      const double value = std::strtod(at_, &end);
      at_ = end;
      return value;
    }
    std::string word;
    while (std::isalnum(static_cast<unsigned char>(*at_))) word += *at_++;
    if (word == "x") return x_;
    if (word == "y") return y_;
    const auto found = kFunctions.find(word);
    if (found == kFunctions.end() || *at_ != '(') return std::nan("");
    return found->second(atom());
  }

  static const std::map<std::string, std::function<double(double)>> kFunctions;

  const char* at_;
  double x_, y_;
};

const std::map<std::string, std::function<double(double)>> Reader::kFunctions = {
    {"Sin", [](double u) { return std::sin(u); }},   {"Cos", [](double u) { return std::cos(u); }},
    {"Exp", [](double u) { return std::exp(u); }},   {"Ln", [](double u) { return std::log(u); }},
    {"Sqrt", [](double u) { return std::sqrt(u); }}, {"Atan", [](double u) { return std::atan(u); }},
    {"Tanh", [](double u) { return std::tanh(u); }}, {"Cosh", [](double u) { return std::cosh(u); }},
    {"Abs", [](double u) { return std::abs(u); }},   {"Asinh", [](double u) { return std::asinh(u); }},
};

// Brackets nest and close, no sign follows another, no group is empty.
std::string faultOf(const std::string& latex) {
  std::string open;
  for (std::size_t i = 0; i < latex.size(); ++i) {
    const char c = latex[i], next = i + 1 < latex.size() ? latex[i + 1] : '\0';
    if (c == '{' || c == '(') {
      open += c;
      if (next == '}' || next == ')') return "an empty group";
    }
    if (c == '}' || c == ')') {
      if (open.empty() || open.back() != (c == '}' ? '{' : '(')) return "brackets that do not match";
      open.pop_back();
    }
    if ((c == '+' || c == '-') && (next == '+' || next == '-')) return "two signs";
  }
  return open.empty() ? "" : "an open bracket";
}

TEST(TextReadBack, RandomExpressionsAndTheirDerivatives) {
  int checked = 0;
  for (unsigned seed = 1; seed <= 1500; ++seed) {
    const double x = 0.2 + 0.001 * seed, y = 1.7 - 0.0005 * seed;
    const Pair pair = RandomFormula(seed, x, y).make(1 + static_cast<int>(seed % 4));
    sym_setSymValue("x", x);
    sym_setSymValue("y", y);
    const Derivative derivative(pair.formula, "x");
    const Matrix itself = row({pair.formula});
    for (const Matrix* written : {&itself, &derivative.matrix}) {
      SymMatrix2d* matrix = *written;
      const double value = sym_calcExpressValue(matrix, 0, 0);
      const std::string text = textOf(matrix), latex = handedOut(sym_getLatexStr, matrix, 0, 0);
      EXPECT_EQ(faultOf(latex), "") << latex;
      if (!(std::abs(value) < 1e6)) continue;
      EXPECT_NEAR(Reader(text, x, y).whole(), value, 1e-9 * (1 + std::abs(value))) << text;
      ++checked;
    }
    sym_clearTempVar();
  }
  EXPECT_GE(checked, 2600);
}

}  // namespace
