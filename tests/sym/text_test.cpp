// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <orvane/sym_polynomial.h>

#include "support/csv.h"
#include "support/functions.h"
#include "sym/formula.h"
#include "sym/text_reader.h"

namespace {

using namespace host;

class Text : public testing::Test {
 protected:
  void TearDown() override { sym_clearTempVar(); }
};

struct Written {
  Formula f;
  const char* text;
  const char* latex;
};

void check(const std::vector<Written>& cases) {
  for (const Written& written : cases) {
    EXPECT_EQ(textOf(written.f), written.text);
    EXPECT_EQ(latexOf(written.f), written.latex) << written.text;
  }
}

/// The expression times a factor that stays in front of it, as sym_selfMul leaves it.
Formula times(double factor, Formula f) {
  const Matrix matrix = row({f});
  sym_selfMul(matrix, factor);
  return f;
}

TEST_F(Text, TableOfExpressions) {
  for (const Cells& cells : readCsv("sym/texts.csv")) {
    const Formula f = TextReader(cells[0]).whole();
    EXPECT_EQ(textOf(f), cells[1]);
    EXPECT_EQ(latexOf(f), cells[2]) << cells[1];
  }
  const Formula sum = Formula("x") + Formula("y");
  check({
      {1e30, "1.0000000000000000199e+30", "1.0000000000000000199e+30"},
      {1e19, "10000000000000000000", "10000000000000000000"},
      {"x1y", "x1y", "x1y"},
      {"1a", "1a", "1a"},
      {"12", "12", "12"},
      {times(2, sum), "2*(x+y)", "2(x+y)"},
  });
}

// A sum that has been looked at as a polynomial is written by ascending exponents, with six digits a coefficient.
TEST_F(Text, PolynomialForm) {
  const Formula x("x12");
  struct {
    Formula f;
    const char* text;
  } const cases[] = {
      {(x ^ 3.0) + 2.0 * x + 1.0, "1+2*x12+x12^3"},
      {times(2, x + 1.0), "2+2*x12"},
      {times(-1, x + (x ^ 2.0)), "-x12-x12^2"},
      {(1.0 / 3.0) * x - 2.5, "-2.5+0.333333*x12"},
      {(x ^ 10.0) - (x ^ 2.0) - 123456789.0 * x, "-1.23457e+08*x12-x12^2+x12^10"},
      {(x + 0.1) + (x ^ 2.0), "0.10000000000000000555+x12+x12^2"},
  };
  for (const auto& [f, text] : cases) {
    const Matrix matrix = row({f});
    EXPECT_TRUE(sym_isPoly(matrix));
    EXPECT_EQ(textOf(matrix), text);
  }
}

// Every kind but those of structure, on the variables a, b, c, d as many as it takes.
TEST_F(Text, EveryKindHasItsWord) {
  const std::vector<Formula> letters{"a", "b", "c", "d"};
  for (const functions::Function& kind : functions::all()) {
    if (kind.kindCode == functions::kNone) continue;
    const Formula f = call(static_cast<uint8_t>(kind.kindCode), {letters.begin(), letters.begin() + kind.count});
    EXPECT_EQ(textOf(f), kind.text);
    EXPECT_EQ(latexOf(f), kind.latex);
  }
}

// A text in place, or its length alone when there is no room.
TEST_F(Text, TwoCallPattern) {
  const Matrix matrix = row({Formula("x") + Formula("y"), 2.0});
  char buffer[8] = "*******";
  EXPECT_EQ(sym_getSymStr(matrix, 0, 0, buffer, 2), 3);
  EXPECT_EQ(std::string(buffer), "*******");
  EXPECT_EQ(sym_getSymStr(matrix, 0, 0, buffer, 3), 3);
  EXPECT_EQ(std::string(buffer), "x+y****");
  EXPECT_EQ(sym_getLatexStr(matrix, 0, 1, buffer, 8), 1);
  EXPECT_EQ(std::string(buffer), "2+y****");
}

// A cached text never outlives a change below or at its node.
TEST_F(Text, CacheFollowsEdits) {
  const Matrix matrix = row({call(20, "x")});
  EXPECT_EQ(textOf(matrix), "Sin(x)");
  sym_selfMul(matrix, 3);
  EXPECT_EQ(textOf(matrix), "3*Sin(x)");
  sym_setSymMatrixData3(matrix, 0, 0, 4);
  EXPECT_EQ(textOf(matrix), "4");
  const Formula x("x");
  EXPECT_EQ(textOf(x), "x");
  EXPECT_EQ(textOf(2.0 * (x + 1.0)), "2+2*x");
}

}  // namespace
