// SPDX-License-Identifier: Apache-2.0
// The normal forms themselves: what a node is after it was built.
#include <cmath>
#include <functional>
#include <random>
#include <set>
#include <sstream>

#include "support/csv.h"
#include "sym/formula.h"
#include "sym/kinds/kind.h"
#include "sym/kinds/program.h"
#include "sym/normal/growing.h"
#include "sym/store/store.h"
#include "sym/text_reader.h"

namespace {

using namespace host;

// Coefficient (when it is not 1), kind and arguments, in the order in which they stand.
std::string shape(const Sym::SymObject& node) {
  std::ostringstream text;
  if (node.kind == Number) {
    text << node.coef;
    return text.str();
  }
  if (node.coef != 1) text << node.coef << "*";
  if (node.kind == Variable) return text.str() + node.var->name;
  text << node.bound().name << "(";
  for (std::size_t i = 0; i < node.args.size(); ++i) text << (i ? "," : "") << shape(*node.args[i]);
  return text.str() + ")";
}

std::string shape(Formula node) { return shape(Sym::built(*reinterpret_cast<Sym::SymObject*>(node.node))); }

Formula x() { return var("x"); }
Formula y() { return var("y"); }
Formula minus(Formula a) { return call(Mul, num(-1), a); }
Formula times(double c, Formula a) { return call(Mul, num(c), a); }

TEST(NormalForm, TableOfExpressions) {
  for (const Cells& row : readCsv("sym/normal_forms.csv"))
    EXPECT_EQ(shape(TextReader(row[0]).whole()), row[1]) << row[0] << (row.size() > 2 ? ": " + row[2] : "");
  EXPECT_EQ(shape(call(Add, std::vector<Formula>{})), "0");
  EXPECT_EQ(shape(call(Mul, std::vector<Formula>{})), "1");
  EXPECT_EQ(shape(call(Ln, times(std::exp(2), call(Exp, x())))), "Add(2,x)");
  EXPECT_TRUE(std::isinf(valueOf(call(Pow, num(0), num(-1)))));
  EXPECT_TRUE(isNumber(call(Sqrt, num(-1))));
  EXPECT_TRUE(std::isnan(valueOf(call(Sqrt, num(-1)))));
}

TEST(NormalForm, LongSumsAndProductsMergeLikeShortOnes) {
  std::vector<Formula> terms, factors;
  for (int i = 0; i < 60; ++i) {
    const std::string name = "z" + std::to_string(i % 3);
    terms.push_back(times(i % 2 ? 1 : -3, call(Sin, var(name.c_str()))));
    factors.push_back(i % 2 ? call(Sqrt, var(name.c_str())) : call(Pow, var(name.c_str()), num(2)));
  }
  EXPECT_EQ(shape(call(Add, terms)), "Add(-20*Sin(z0),-20*Sin(z1),-20*Sin(z2))");
  EXPECT_EQ(shape(call(Mul, factors)), "Mul(Pow(z0,25),Pow(z1,25),Pow(z2,25))");
}

TEST(NormalForm, ParityAndInverseKinds) {
  // The kinds that cancel, outer before inner; no other of them do.
  const std::set<std::pair<uint8_t, uint8_t>> cancelling{
      {50, 84}, {84, 50}, {98, 85},   {85, 98},   {97, 86},   {86, 97},   {51, 138}, {138, 51},
      {70, 83}, {83, 70}, {113, 135}, {135, 113}, {149, 139}, {139, 149}, {93, 140}, {94, 137}};
  for (const auto& [outer, ignored] : cancelling)
    for (const auto& [other, inner] : cancelling)
      EXPECT_EQ(shape(call(outer, call(inner, x()))) == "x", cancelling.count({outer, inner}) > 0)
          << int{outer} << " of " << int{inner};
  for (const int odd : {20, 22, 23, 24, 26, 27, 30, 32, 33, 34, 36, 37, 50, 86, 91, 93, 99, 101, 102}) {
    const auto code = static_cast<uint8_t>(odd);
    EXPECT_EQ(shape(call(code, minus(x()))), "-1*" + shape(call(code, x()))) << odd;
  }
}

TEST(NormalForm, InverseCircularAndHyperbolicFunctions) {
  // Every pair keeps its value, on both sides of zero.
  for (int outer = 0; outer < 8; ++outer)
    for (int inner = 0; inner < 4; ++inner) {
      const auto function = static_cast<uint8_t>(outer < 4 ? Sin + outer : Sinh + outer - 4);
      const auto inverse = static_cast<uint8_t>(outer < 4 ? Asin + inner : Asinh + inner);
      const Formula node = call(function, call(inverse, x()));
      EXPECT_EQ(shape(node).find(Sym::findKind(inverse)->name), std::string::npos) << shape(node);
      const bool beyondOne = inverse == Acosh || inverse == Acoth;
      for (const double at : {0.3, -0.6, 1.7, -2.5}) {
        if ((std::abs(at) > 1) != beyondOne || (inverse == Acosh && at < 1)) continue;
        sym_setSymValue("x", at);
        const double angle = valueOf(call(inverse, num(at)));
        const double expected = valueOf(call(function, num(angle)));
        EXPECT_NEAR(valueOf(node), expected, 1e-14 * (1 + std::abs(expected))) << shape(node) << " " << at;
      }
    }
}

// Rows of kept.csv.
TEST(Kept, Oddities) {
  Matrix sign(call(Sign, x())), step(call(StepFun, x()));
  y();  // a value goes to a variable that is there
  sym_setSymValue("x", -0.4);
  sym_setSymValue("y", 2);
  sym_selfMul(sign, 3);
  sym_selfMul(step, 3);
  EXPECT_EQ(sign.value(), -1);  // Sign_coef
  EXPECT_EQ(sign.coef(), 3);
  EXPECT_EQ(step.value(), -1);  // StepFun_coef
  EXPECT_EQ(valueOf(call(Divide, call(Sign, x()), num(4))), -0.25);

  // Pow_zero_coef, Pow_one_coef
  const char* names[] = {"y"};
  const char* zero[] = {"0"};
  const char* one[] = {"1"};
  const uint8_t flags[] = {0};
  Matrix power(times(5, call(Pow, x(), y()))), base(times(5, call(Pow, y(), x())));
  EXPECT_EQ(Matrix(sym_replaceSym(power, names, zero, flags, 1)).value(), 1);
  EXPECT_EQ(Matrix(sym_replaceSym(base, names, one, flags, 1)).value(), 1);
  // Ln_negative_exp
}

// Sums and products made by many single calls are built when they are looked at, and are what each call alone makes.
TEST(NormalForm, LongChainsOfCalls) {
  std::mt19937 random(11);
  const auto one = [&](std::size_t n) { return random() % n; };
  for (int i = 0; i < 40; ++i) {
    var(("v" + std::to_string(i)).c_str());
    sym_setSymValue(("v" + std::to_string(i)).c_str(), 0.1 + 0.05 * i);
  }
  for (int chain = 0; chain < 60; ++chain) {
    const bool sum = chain % 2 == 0;
    const auto part = [&]() -> Formula {
      const Formula u = var(("v" + std::to_string(one(40))).c_str()), few = var(("v" + std::to_string(one(5))).c_str());
      const double numbers[] = {2, -1, 0.5, -2, 1, 1e-17};
      switch (one(12)) {
        case 0:
          return num(sum ? numbers[one(6)] : numbers[one(5)]);
        case 1:
          return call(Pow, call(one(2) ? Sin : Cos, few), 2);
        case 2:
          return call(one(2) ? Sinh : Cosh, few);
        case 3:
          return call(one(2) ? Erf : Erfc, few);
        case 4:
          return one(2) ? call(Exp, few) : call(Sqrt, u);
        case 5:
          return call(one(2) ? Sign : StepFun, few);
        case 6:
          return one(2) ? u + few : u * few;
        case 7:
        case 8:
          return numbers[one(5)] * u;
        default:
          return u;
      }
    };
    Formula whole = part();
    Sym::NodePtr alone = Sym::cloneNode(*reinterpret_cast<Sym::SymObject*>(whole.node));
    for (int i = 0; i < 120; ++i) {
      const Formula next = part();
      const uint8_t code = sum ? (one(4) ? Add : Subtract) : (one(4) ? Mul : Divide);
      alone = Sym::makeNode2(*alone, Sym::built(*reinterpret_cast<Sym::SymObject*>(next.node)), code);
      whole = call(code, whole, next);
      if (one(40) == 0 || i == 119) {
        ASSERT_EQ(shape(whole), shape(*alone)) << chain << ": " << i;
      }
    }
    EXPECT_EQ(Sym::Program(*alone).value(), alone->fnValue());
    sym_clearTempVar();
  }
}

}  // namespace
