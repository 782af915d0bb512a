// SPDX-License-Identifier: Apache-2.0
// The value of every kind, at numbers and through variables, has the bits of the function behind it.
#include <bit>
#include <cmath>

#include "support/functions.h"
#include "sym/formula.h"

namespace {

using namespace host;

/// Arguments that tell the places apart, inside the domain of most kinds; of one number from both sides of zero, at
/// ties, and far enough out for the expansions.
const std::vector<std::vector<double>>& places(int count) {
  static const std::vector<std::vector<double>> byCount[] = {
      {{0.375}, {-0.375}, {1.25}, {2.5}, {-2.5}, {-2.7}, {7.25}, {-12.75}, {40.5}},
      {{0.375, 1.25}, {2.0, 0.625}, {-0.375, 12.75}},
      {{0.375, 1.25, 0.625}, {0.625, 0.375, 2.5}, {0, 5, 6}, {-1, 5, 6}},
      {{0.375, 1.25, 0.625, 2.5}, {2.5, 0.625, 1.25, 0.375}},
  };
  return byCount[count - 1];
}

bool sameBits(double x, double y) {
  return (std::isnan(x) && std::isnan(y)) || std::bit_cast<uint64_t>(x) == std::bit_cast<uint64_t>(y);
}

void holdAgainst(uint8_t code, const std::string& text, const std::vector<double>& args, double expected) {
  std::vector<Formula> numbers, variables;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string name = "value" + std::to_string(i);
    numbers.push_back(num(args[i]));
    variables.push_back(var(name.c_str()));
    sym_setSymValue(name.c_str(), args[i]);
  }
  const std::string label = text + " at " + std::to_string(args[0]);
  const double value = valueOf(call(code, variables));
  EXPECT_TRUE(sameBits(value, expected)) << label << ": " << value << " for " << expected;
  const Formula folded = call(code, numbers);
  const bool stays = code == Ln && args[0] <= 0;
  EXPECT_TRUE(sameBits(stays ? expected : valueOf(folded), expected)) << label << " folded";
  EXPECT_EQ(isNumber(folded), !stays) << label;
  // The coefficient multiplies, but for the two kinds that ignore it.
  Matrix scaled(call(code, variables));
  sym_selfMul(scaled, 4);
  const bool bare = code == Sign || code == StepFun;
  EXPECT_TRUE(sameBits(scaled.value(), bare ? expected : 4 * expected)) << label << " scaled";
  sym_clearTempVar();
}

TEST(Values, EveryKindHasTheBitsOfItsFunction) {
  for (const functions::Function& f : functions::all()) {
    if (f.kindCode == functions::kNone) continue;
    const functions::Call expected = functions::callOf(f);
    for (const std::vector<double>& args : places(f.count))
      holdAgainst(static_cast<uint8_t>(f.kindCode), f.text, args, expected(args.data()));
  }
  holdAgainst(Sign, "Sign", {0}, 0);
  holdAgainst(StepFun, "StepFun", {0}, 1);
}

TEST(Values, StructuralKinds) {
  sym_setSymValue("value0", 3);
  const Formula x = var("value0");
  sym_setSymValue("value0", 3);
  EXPECT_EQ(valueOf(num(2.5)), 2.5);
  EXPECT_EQ(valueOf(call(Mul, num(2), x)), 6);
  EXPECT_EQ(valueOf(call(Add, std::vector<Formula>{})), 0);
  EXPECT_EQ(valueOf(call(Mul, std::vector<Formula>{})), 1);
  EXPECT_EQ(valueOf(call(Add, {x, call(Exp, x), num(1)})), 3 + std::exp(3.0) + 1);
  // Beta_sign, BesselK_value
  EXPECT_NEAR(valueOf(call(Beta, num(-0.5), num(2.25))), -math_beta(-0.5, 2.25), 1e-13);
  const double j = math_BesselJ(1, 3), k = valueOf(call(BesselK, num(1), x));
  EXPECT_TRUE(sameBits(k, j));
}

}  // namespace
