// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <orvane/sym_polynomial.h>

#include <algorithm>

#include "sym/formula.h"

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

TEST_F(Text, NumbersAndVariables) {
  check({
      {3.0, "3", "3"},
      {-2.0, "-2", "-2"},
      {0.1, "0.10000000000000000555", "0.10000000000000000555"},
      {0.5, "0.5", "0.5"},
      {1e30, "1.0000000000000000199e+30", "1.0000000000000000199e+30"},
      {1e19, "10000000000000000000", "10000000000000000000"},
      {"x", "x", "x"},
      {"x12", "x12", "x_{12}"},
      {"x1y", "x1y", "x1y"},
      {"1a", "1a", "1a"},
      {"12", "12", "12"},
      {"alpha", "alpha", "alpha"},
      {2.0 * Formula("x1"), "2*x1", "2x_{1}"},
      {-1.0 * Formula("x"), "-x", "-x"},
      {0.5 * Formula("x"), "0.5*x", "0.5x"},
  });
}

TEST_F(Text, SumsProductsAndPowers) {
  const Formula x("x"), y("y"), z("z");
  check({
      {x + y, "x+y", "x+y"},
      {x - y, "x-y", "x-y"},
      {x + 1.0, "1+x", "1+x"},
      {times(-1, x + y), "-(x+y)", "-(x+y)"},
      {times(2, x + y), "2*(x+y)", "2(x+y)"},
      {x * y, "x*y", "x\\times y"},
      {3.0 * (x * y), "3*x*y", "3\\times x\\times y"},
      {-1.0 * (x * y), "-x*y", "-x\\times y"},
      {x * (y + z), "x*(y+z)", "x\\times (y+z)"},
      {x / y, "x/y", "\\dfrac{x}{y}"},
      {2.0 * (x / y), "2*x/y", "2\\times\\dfrac{x}{y}"},
      {-1.0 * (x / y), "-x/y", "-\\dfrac{x}{y}"},
      {x / (y * z), "x/(y*z)", "\\dfrac{x}{y\\times z}"},
      {x / (1.0 + y), "x/(1+y)", "\\dfrac{x}{1+y}"},
      {1.0 / (x * y), "1/(x*y)", "\\dfrac{1}{x\\times y}"},
      {-1.0 / (x * y), "-1/(x*y)", "-\\dfrac{1}{x\\times y}"},
      {3.0 / (x * y), "3/(x*y)", "3\\times\\dfrac{1}{x\\times y}"},
      {x / (y ^ 2.0), "x/y^2", "\\dfrac{x}{y^{2}}"},
      {x / ((1.0 + y) ^ 2.0), "x/(1+y)^2", "\\dfrac{x}{(1+y)^{2}}"},
      {x * (y ^ (-1.0 * z)), "x/y^z", "\\dfrac{x}{y^{z}}"},
      {x * (y ^ (-2.0 * z)), "x/y^(2*z)", "\\dfrac{x}{y^{2z}}"},
      {3.0 / x, "3/x", "\\dfrac{3}{x}"},
      {1.0 / (1.0 + x), "1/(1+x)", "\\dfrac{1}{1+x}"},
      {3.0 * (x ^ -2.0), "3*x^(-2)", "\\dfrac{3}{x^{2}}"},
      {(1.0 + x) ^ -2.0, "(1+x)^(-2)", "\\dfrac{1}{(1+x)^{2}}"},
      {x ^ 2.0, "x^2", "x^{2}"},
      {-1.0 * (x ^ 2.0), "-x^2", "-x^{2}"},
      {2.5 * (x ^ y), "2.5*x^y", "2.5\\times x^{y}"},
      {(x + y) ^ 2.0, "(x+y)^2", "(x+y)^{2}"},
      {x ^ (y + 1.0), "x^(1+y)", "x^{1+y}"},
      {x ^ (2.0 * y), "x^(2*y)", "x^{2y}"},
      {2.0 ^ x, "2^x", "2^{x}"},
      {call(20, x) ^ 2.0, "Sin(x)^2", "\\sin(x)^{2}"},
      {x ^ -0.5, "x^(-0.5)", "\\dfrac{1}{\\sqrt{x}}"},
  });
}

// A term with "-" second, longer than two characters, takes no plus in the plain text.
TEST_F(Text, KeptSignRuleOfSums) {
  const Formula x("x");
  check({{x + (Formula(-2.0) ^ x), "x(-2)^x", "x+(-2)^{x}"}});
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

TEST_F(Text, PrefixOfFunctions) {
  const Formula x("x");
  check({
      {2.0 * call(20, x), "2*Sin(x)", "2\\times \\sin(x)"},
      {-1.0 * call(20, x), "-Sin(x)", "-\\sin(x)"},
      {0.25 * call(55, {"n", x}), "0.25*BesselJ(n,x)", "0.25\\times \\mathbf{BesselJ}_{n}(x)"},
      {call(20, 1.0 + call(12, 2.0 * x)), "Sin(1+Exp(2*x))", "\\sin(1+\\exp(2x))"},
  });
}

struct Form {
  uint8_t code;
  const char* text;
  const char* latex;
};

// Every kind but those of structure, on the variables a, b, c, d as many as it takes.
const Form kForms[] = {
    {6, "Sign(a)", "\\mathbf{Sign}(a)"},
    {10, "Sqrt(a)", "\\sqrt{a}"},
    {11, "Ln(a)", "\\ln(a)"},
    {12, "Exp(a)", "\\exp(a)"},
    {13, "Abs(a)", "|a|"},
    {20, "Sin(a)", "\\sin(a)"},
    {21, "Cos(a)", "\\cos(a)"},
    {22, "Tan(a)", "\\tan(a)"},
    {23, "Cot(a)", "\\cot(a)"},
    {24, "Asin(a)", "\\arcsin(a)"},
    {25, "Acos(a)", "\\arccos(a)"},
    {26, "Atan(a)", "\\arctan(a)"},
    {27, "Acot(a)", "\\mathbf{arccot}(a)"},
    {30, "Sinh(a)", "\\sinh(a)"},
    {31, "Cosh(a)", "\\cosh(a)"},
    {32, "Tanh(a)", "\\tanh(a)"},
    {33, "Coth(a)", "\\coth(a)"},
    {34, "Asinh(a)", "\\mathbf{arcsinh}(a)"},
    {35, "Acosh(a)", "\\mathbf{arccosh}(a)"},
    {36, "Atanh(a)", "\\mathbf{arctanh}(a)"},
    {37, "Acoth(a)", "\\mathbf{arccoth}(a)"},
    {51, "Gamma(a)", "\\Gamma(a)"},
    {53, "LnGamma(a)", "\\ln(\\Gamma(a))"},
    {54, "BesselI(a,b)", "\\mathbf{BesselI}_{a}(b)"},
    {55, "BesselJ(a,b)", "\\mathbf{BesselJ}_{a}(b)"},
    {56, "BesselK(a,b)", "\\mathbf{BesselK}_{a}(b)"},
    {57, "BesselY(a,b)", "\\mathbf{BesselY}_{a}(b)"},
    {58, "DiGamma(a)", "\\Gamma'(a)"},
    {62, "EllipticF(a,b)", "\\mathbf{EllipticF}_{a}(b)"},
    {64, "EllipticE(a)", "\\mathbf{EllipticE}(a)"},
    {64, "EllipticE(a,b)", "\\mathbf{EllipticE}_{a}(b)"},
    {65, "StruveH(a,b)", "\\mathbf{StruveH}_{a}(b)"},
    {66, "StruveL(a,b)", "\\mathbf{StruveL}_{a}(b)"},
    {67, "AngerJ(a,b)", "\\mathbf{AngerJ}_{a}(b)"},
    {68, "WeberE(a,b)", "\\mathbf{WeberE}_{a}(b)"},
    {69, "BarnesG(a)", "\\mathbf{barnesG}(a)"},
    {82, "Gamma(a,b)", "\\Gamma(a,b)"},
    {95, "PolyGamma(a,b)", "\\mathbf{PolyGamma}_{a}(b)"},
    {122, "EllipticPI(a,b)", "\\mathbf{EllipticPI}(a,b)"},
    {122, "EllipticPI(a,b,c)", "\\mathbf{EllipticPI}(a,b,c)"},
};

// The kinds without a form of their own: the name, in bold in LaTeX.
struct Plain {
  uint8_t code;
  const char* name;
  int arguments = 1;
};

const Plain kPlain[] = {
    {50, "Erf"},
    {52, "Beta", 2},
    {63, "EllipticK"},
    {70, "LambertW"},
    {71, "WrightOmega"},
    {72, "WrightBessel", 3},
    {73, "ParabolicCylinderD", 2},
    {74, "ParabolicCylinderU", 2},
    {75, "ParabolicCylinderV", 2},
    {76, "ClausenC", 2},
    {77, "ClausenS", 2},
    {78, "Hyperfactorial"},
    {79, "WhittakerM", 3},
    {80, "WhittakerW", 3},
    {81, "JacobiZeta", 2},
    {83, "InverseLambertW"},
    {84, "InverseErf"},
    {85, "InverseErfc"},
    {86, "InverseErfi"},
    {91, "SinIntegral"},
    {92, "CosIntegral"},
    {93, "SinhIntegral"},
    {94, "CoshIntegral"},
    {96, "AGM", 2},
    {97, "Erfi"},
    {98, "Erfc"},
    {99, "Dawson"},
    {100, "PolyLogarithm2"},
    {101, "LogSign"},
    {102, "ExpSign"},
    {103, "FresnelC"},
    {104, "FresnelS"},
    {105, "ExpIntegral"},
    {105, "ExpIntegral", 2},
    {106, "LogIntegral"},
    {107, "StepFun"},
    {108, "Round"},
    {109, "RoundDown"},
    {110, "RoundUp"},
    {111, "Rounding"},
    {112, "RoundZero"},
    {113, "Zeta"},
    {114, "AiryAi"},
    {115, "AiryAiDiff"},
    {116, "AiryBi"},
    {117, "AiryBiDiff"},
    {118, "AiryGi"},
    {119, "AiryGiDiff"},
    {120, "AiryHi"},
    {121, "AiryHiDiff"},
    {123, "EllipticRC", 2},
    {124, "EllipticRD", 3},
    {125, "EllipticRE", 2},
    {126, "EllipticRF", 3},
    {127, "EllipticRG", 3},
    {128, "EllipticRJ", 4},
    {129, "EllipticRK", 2},
    {130, "EllipticRM", 3},
    {131, "HypergeometricU", 3},
    {132, "Hypergeometric0F1", 2},
    {133, "Hypergeometric1F1", 3},
    {134, "Hypergeometric2F1", 4},
    {135, "InverseZeta"},
    {136, "InverseBeta", 3},
    {137, "InverseCoshIntegral"},
    {138, "InverseGamma"},
    {139, "InverseLnErfi"},
    {140, "InverseSinhIntegral"},
    {141, "JacobianAmp", 2},
    {142, "JacobianCn", 2},
    {143, "JacobianDn", 2},
    {144, "JacobianSn", 2},
    {145, "JacobiTheta1", 2},
    {146, "JacobiTheta2", 2},
    {147, "JacobiTheta3", 2},
    {148, "JacobiTheta4", 2},
    {149, "LnErfi"},
    {150, "LnBarnesG"},
    {151, "EllipticBulirschCel", 4},
    {152, "EllipticBulirschEl1", 2},
    {153, "EllipticBulirschEl2", 4},
    {154, "EllipticBulirschEl3", 3},
    {155, "Truncate"},
    {156, "Frac"},
    {157, "ConSelect", 3},
    {158, "GoodwinStaton"},
    {159, "HurwitzZeta", 2},
    {160, "DirichletEta"},
    {161, "DirichletBeta"},
    {162, "VoigtFunK", 2},
    {163, "VoigtFunL", 2},
    {164, "VoigtDiffLX", 2},
    {165, "VoigtDiffLY", 2},
    {166, "VoigtDiffKY", 2},
    {167, "VoigtDiffKX", 2},
    {168, "PolyLog", 2},
    {169, "BoseEinstein", 2},
    {170, "FermiDirac", 2},
    {171, "Glasser"},
};

Formula onLetters(uint8_t code, int count) {
  const std::vector<Formula> letters{"a", "b", "c", "d"};
  return call(code, {letters.begin(), letters.begin() + count});
}

TEST_F(Text, EveryKindHasItsWord) {
  for (const Form& form : kForms) {
    const std::string text = form.text;
    const Formula f = onLetters(form.code, 1 + static_cast<int>(std::count(text.begin(), text.end(), ',')));
    EXPECT_EQ(textOf(f), form.text);
    EXPECT_EQ(latexOf(f), form.latex);
  }
  const char* letters[] = {"", "a", "a,b", "a,b,c", "a,b,c,d"};
  for (const Plain& kind : kPlain) {
    const Formula f = onLetters(kind.code, kind.arguments);
    const std::string arguments = std::string("(") + letters[kind.arguments] + ")";
    EXPECT_EQ(textOf(f), kind.name + arguments);
    EXPECT_EQ(latexOf(f), "\\mathbf{" + std::string(kind.name) + "}" + arguments);
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
