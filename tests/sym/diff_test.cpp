// SPDX-License-Identifier: Apache-2.0
#include <map>
#include <set>

#include "support/csv.h"
#include "support/functions.h"
#include "support/reference.h"
#include "sym/text_reader.h"

namespace {

using namespace host;

// In GBK: "cannot be differentiated", "argument(s) number", "cannot be differentiated".
const std::string kRefuses = "\xb2\xbb\xd6\xa7\xb3\xd6\xc7\xf3\xb5\xbc";
const std::string kOf = "\xb5\xc4\xb5\xda", kPosition = "\xb8\xf6\xb2\xce\xca\xfd";

/// A row of the table of partial derivatives: kind, code, position, arguments.
struct Partial {
  explicit Partial(const ReferenceRow& row)
      : code(static_cast<uint8_t>(row.arguments[0])),
        position(static_cast<std::size_t>(row.arguments[1])),
        at(row.arguments.begin() + 2, row.arguments.end()) {}

  uint8_t code;
  std::size_t position;
  std::vector<double> at;
};

// The kind with numbers at all positions but one, where the inner expression stands.
Formula along(const Partial& partial, Formula inner) {
  std::vector<Formula> args;
  for (std::size_t i = 0; i < partial.at.size(); ++i) args.push_back(i == partial.position ? inner : partial.at[i]);
  return call(partial.code, args);
}

class Diff : public testing::Test {
 protected:
  void TearDown() override { sym_clearTempVar(); }
};

// Every rule in every argument, bare and under a coefficient and a chain: 3 f(2 x - c) by x is 6 f'.
TEST_F(Diff, EachRuleIsThePartialDerivative) {
  checkReference("sym/diff.csv", [](const ReferenceRow& row) {
    const Partial partial(row);
    const double u = partial.at[partial.position];
    sym_createBaseSymVar("x");
    sym_setSymValue("x", u);
    return Derivative(along(partial, "x"), "x").value();
  });
  checkReference("sym/diff.csv", [](const ReferenceRow& row) {
    const Partial partial(row);
    const double u = partial.at[partial.position];
    const Formula f = 3.0 * along(partial, 2.0 * Formula("x") - u);
    sym_setSymValue("x", u);
    return Derivative(f, "x").value() / 6;
  });
}

// By the chain rule over all arguments at once the partial derivatives add up.
TEST_F(Diff, ArgumentsThatVaryTogetherAddUp) {
  struct Sum {
    double value = 0, size = 0;
    double relative = 0;
  };
  std::map<std::pair<uint8_t, std::vector<double>>, Sum> sums;
  std::map<std::pair<uint8_t, std::vector<double>>, std::set<std::size_t>> positions;
  for (const ReferenceRow& row : readReference("sym/diff.csv")) {
    const Partial partial(row);
    Sum& sum = sums[{partial.code, partial.at}];
    const double weight = 1.0 + static_cast<double>(partial.position);
    sum.value += weight * row.expected;
    sum.size += std::abs(weight * row.expected);
    sum.relative = row.ulps * 0x1p-53;
    positions[{partial.code, partial.at}].insert(partial.position);
  }
  int checked = 0;
  for (const auto& [key, varying] : positions) {
    if (varying.size() < 2) continue;
    const auto& [code, at] = key;
    const Sum& sum = sums[key];
    std::vector<Formula> args;
    for (std::size_t i = 0; i < at.size(); ++i)
      args.push_back(varying.count(i) > 0 ? at[i] + (1.0 + static_cast<double>(i)) * Formula("x") : Formula(at[i]));
    sym_setSymValue("x", 0);
    EXPECT_NEAR(Derivative(call(code, args), "x").value(), sum.value, 4 * sum.relative * sum.size)
        << "code " << int{code};
    ++checked;
  }
  EXPECT_GE(checked, 25);
}

struct Refusal {
  uint8_t code;
  std::string name;
  int arguments;
  std::string positions;  // as the message counts them; "" all
};

// Codes of the kinds that refuse at the same positions; their names and arguments are those of the list of functions.
const std::map<std::string, std::set<int>> kRefusing = {
    {"", {113, 115, 117, 119, 121, 123, 124, 125, 128, 130, 135, 136, 145,
          146, 147, 148, 151, 152, 153, 154, 160, 161, 164, 165, 166, 167}},
    {"1", {54, 55, 56, 57, 65, 66, 67, 68, 73, 74, 75, 76, 77, 82, 95, 105, 132, 159, 168, 169, 170}},
    {"1,2", {72, 79, 80, 131, 133}},
    {"1,2,3", {134}},
};

std::vector<Refusal> refusals() {
  std::vector<Refusal> all;
  for (const functions::Function& f : functions::all())
    for (const auto& [positions, codes] : kRefusing)
      if (codes.count(f.kindCode) > 0 && (f.count > 1 || positions.empty()))
        all.push_back({static_cast<uint8_t>(f.kindCode), f.text.substr(0, f.text.find('(')), f.count, positions});
  return all;
}

bool refuses(const Refusal& r, int position) {
  return r.positions.empty() || r.positions.find(std::to_string(position + 1)) != std::string::npos;
}

// The kind with one variable among other variables, so that nothing is folded.
Formula withXAt(uint8_t code, int arguments, int position) {
  const char* others[] = {"p", "q", "r", "s"};
  std::vector<Formula> args;
  for (int i = 0; i < arguments; ++i) args.push_back(i == position ? "x" : others[i]);
  return call(code, args);
}

TEST_F(Diff, RefusalsNameTheFunctionAndThePositions) {
  EXPECT_EQ(refusals().size(), 53u);
  for (const Refusal& r : refusals()) {
    const std::string message = r.name + (r.positions.empty() ? kRefuses : kOf + r.positions + kPosition + kRefuses);
    for (int i = 0; i < r.arguments; ++i) {
      const Derivative d(withXAt(r.code, r.arguments, i), "x");
      if (refuses(r, i))
        EXPECT_EQ(d.message, message) << "argument " << i;
      else
        EXPECT_NE(d.matrix, nullptr) << r.name << " argument " << i;
      // By a variable that does not occur the derivative is 0, whatever the kind.
      EXPECT_EQ(Derivative(withXAt(r.code, r.arguments, i), "y_elsewhere").text(), "0");
      sym_createBaseSymVar("y");
      EXPECT_EQ(Derivative(withXAt(r.code, r.arguments, i), "y").text(), "0") << r.name;
    }
  }
}

// No kind and no position without a derivative that was checked, a refusal, or a step.
TEST_F(Diff, EveryKindIsCovered) {
  std::set<std::pair<int, int>> known;  // code, position
  for (const ReferenceRow& row : readReference("sym/diff.csv")) {
    const Partial partial(row);
    known.insert({partial.code, static_cast<int>(partial.position)});
  }
  for (const Refusal& r : refusals())
    for (int i = 0; i < r.arguments; ++i)
      if (refuses(r, i)) known.insert({r.code, i});
  const std::set<int> steps{6, 107, 108, 109, 110, 111, 112, 155, 156};
  const std::set<int> structure{2, 3, 56, 157};  // tested below; 56 evaluates as another function
  for (int code = 2; code < 256; ++code) {
    try {
      call(static_cast<uint8_t>(code), std::vector<Formula>(4, "x"));
    } catch (const std::out_of_range&) {
      continue;  // no such kind
    }
    if (steps.count(code) > 0) {
      EXPECT_EQ(Derivative(call(static_cast<uint8_t>(code), "x"), "x").text(), "0") << code;
      // Whatever the argument, even one that refuses.
      EXPECT_EQ(Derivative(call(static_cast<uint8_t>(code), call(113, "x")), "x").text(), "0") << code;
    } else if (structure.count(code) == 0) {
      EXPECT_TRUE(known.count({code, 0}) > 0) << "code " << code;
    }
  }
  for (const auto& [code, position] : known)
    for (int i = 0; i < position; ++i) EXPECT_TRUE(known.count({code, i}) > 0) << "code " << code << " position " << i;
}

TEST_F(Diff, StructureAndChainAsText) {
  for (const Cells& row : readCsv("sym/derivatives.csv"))
    EXPECT_EQ(Derivative(TextReader(row[0]).whole(), "x").text(), row[1]) << row[0];
  const Formula x("x");
  EXPECT_EQ(Derivative(x ^ 3.0, "x", 2).text(), "6*x");
  EXPECT_EQ(Derivative(x ^ 3.0, "x", 4).text(), "0");
  const Derivative lnGamma(call(53, 2.0 * x), "x");
  sym_setSymValue("x", 100);
  EXPECT_EQ(lnGamma.value(), 2 * math_digamma(200)) << "Gamma(200) would be infinite";
}

TEST_F(Diff, HigherOrdersAgreeWithClosedForms) {
  // The n-th derivative of exp(2 x) x is 2^n exp(2 x) (x + n/2).
  const Formula x("x");
  sym_setSymValue("x", 0.25);
  for (uint32_t n = 1; n <= 8; ++n) {
    const double expected = std::ldexp(std::exp(0.5), static_cast<int>(n)) * (0.25 + n / 2.0);
    EXPECT_NEAR(Derivative(call(12, 2.0 * x) * x, "x", n).value(), expected, 1e-13 * expected) << n;
  }
}

TEST_F(Diff, MatricesKeepTheirShapeOrFailWhole) {
  const Formula x("x"), y("y");
  char message[256] = {};
  const Matrix functions = row({x * y, call(20, x), Formula(7.0)});
  const Matrix variables = row({x, y, 2.0 * x});
  const Matrix table = Matrix(sym_diffVector(functions, variables, message));
  int32_t shape[2];
  sym_getDataDim(table, shape);
  ASSERT_EQ(shape[0], 3);
  ASSERT_EQ(shape[1], 3);
  const char* expected[3][3] = {{"y", "x", "0"}, {"Cos(x)", "0", "0"}, {"0", "0", "0"}};
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) EXPECT_EQ(textOf(table, i, j), expected[i][j]) << i << " " << j;

  const Matrix unknown = Matrix(sym_diff(functions, 1, "never used", message));
  for (int j = 0; j < 3; ++j) EXPECT_EQ(textOf(unknown, 0, j), "0");

  const Matrix mixed = row({x, call(113, x)});
  EXPECT_EQ(sym_diff(mixed, 1, "x", message), nullptr);
  EXPECT_EQ(message, "Zeta" + kRefuses);
  char second[256] = {};
  EXPECT_EQ(sym_diffVector(mixed, variables, second), nullptr);
  EXPECT_EQ(second, "Zeta" + kRefuses);
  // A second derivative refuses where the first does not.
  EXPECT_EQ(Derivative(call(114, x), "x", 2).message, "AiryAiDiff" + kRefuses);
}

TEST_F(Diff, KeptFactorOfEllipticRG) {
  const Derivative d(call(127, {"x", 1.0, 1.0}), "x");
  sym_setSymValue("x", 1);
  // RF = RD = 1 there, and the true slope is 1/6.
  EXPECT_NEAR(d.value(), 0.25 - 0.08333333, 1e-13);
}

}  // namespace
