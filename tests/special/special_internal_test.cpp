// SPDX-License-Identifier: Apache-2.0
// Routines of the special functions that no export reaches by itself.
#include <gmp.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "special/special_function.h"
#include "special/zeta/bernoulli.h"

namespace {

using namespace SpecialFunction;

TEST(HurwitzZeta, AgreesWithClosedForms) {
  const double zeta2 = pi * pi / 6, catalan = 0.915965594177219015;
  EXPECT_NEAR(calcHurwitzZeta(2, 3), zeta2 - 1.25, 1e-14);
  EXPECT_NEAR(calcHurwitzZeta(2, 0.25), pi * pi + 8 * catalan, 1e-13);
  EXPECT_NEAR(calcHurwitzZeta(2, -1.75), pi * pi + 8 * catalan + 1 / (1.75 * 1.75) + 1 / (0.75 * 0.75), 1e-13);
  EXPECT_NEAR(calcHurwitzZeta(-0.5, 2.25), calcHurwitzZeta(-0.5, 1.25) - std::sqrt(1.25), 1e-13);
  EXPECT_NEAR(calcHurwitzZeta(-3, 0.3), -(std::pow(0.3, 4) - 2 * std::pow(0.3, 3) + 0.09 - 1.0 / 30) / 4, 1e-16);
  EXPECT_EQ(calcHurwitzZeta(1e-16, 0.3), 0.5 - 0.3);
  EXPECT_TRUE(std::isinf(calcHurwitzZeta(2.5, -4)));
  EXPECT_EQ(calcHurwitzZeta(1, 3.5), 0);
  EXPECT_EQ(calcHurwitzZeta(3, -10000.5), 0);
}

TEST(Bernoulli, PolynomialsObeyTheDifferenceEquation) {
  for (const int n : {1, 2, 3, 4, 5, 6, 7, 12})
    EXPECT_NEAR(calcPolyByBernoulli(n, 1.3) - calcPolyByBernoulli(n, 0.3), n * std::pow(0.3, n - 1), 2e-14);
  EXPECT_TRUE(std::isnan(calcPolyByBernoulli(-1, 0.5)));
  EXPECT_EQ(calcPolyByBernoulli(259, 0.5), 0);
  EXPECT_NEAR(kBernoulliTable[20], -174611.0 / 330, 1e-12);
}

TEST(ExpIntegralN, AgreesWithReferencesAndRecurrence) {
  EXPECT_NEAR(calcExpIntegralN(2, 1), 0.14849550677592205, 5e-16);  // mpmath
  EXPECT_NEAR(calcExpIntegralN(3, 0.5), 0.22160436427517846, 5e-16);
  EXPECT_NEAR(calcExpIntegralN(10, 2) / 0.012092085136400296, 1, 2e-15);
  for (const double x : {0.2, 0.999, 1.001, 10.0, 40.0, 150.0})
    for (const int n : {2, 3, 7, 30})
      EXPECT_NEAR((std::exp(-x) - x * calcExpIntegralN(n, x)) / n / calcExpIntegralN(n + 1, x), 1, 3e-12)
          << n << " " << x;
  EXPECT_DOUBLE_EQ(calcExpIntegralN(0, 2), std::exp(-2.0) / 2);
  EXPECT_DOUBLE_EQ(calcExpIntegralN(-1, 2), std::exp(-2.0) * 3 / 4);
  EXPECT_DOUBLE_EQ(calcExpIntegralN(4, 0), 1.0 / 3);
  EXPECT_EQ(calcExpIntegralN(1, 2), std::expint(2.0));
  EXPECT_DOUBLE_EQ(calcExpIntegralN(2, 300), std::exp(-300.0) * (1.0 / 302 + 1.0 / 301) / 2);
  EXPECT_TRUE(std::isnan(calcExpIntegralN(2, -1)));
}

TEST(IncompleteBeta, AgreesWithPolynomialsAndTheSeries) {
  const double x = 0.3, y = 0.7;
  EXPECT_NEAR(BaseFunction::incompleteBeta(2, 3, x), 1 - y * y * y * y - 4 * x * y * y * y, 1e-13);
  EXPECT_NEAR(BaseFunction::incompleteBeta(0, 2.5, x), 1, 1e-12);
  for (const double a : {0.5, 1.7, 6.25, 50.0})
    for (const double b : {0.4, 2.0, 5.5, 60.0})
      EXPECT_NEAR(BaseFunction::incompleteBeta(a, b, x), calcIBeta(x, a, b) / calcBeta(a, b), 2e-12) << a << " " << b;
  EXPECT_TRUE(std::isnan(BaseFunction::incompleteBeta(1, 1, 1.5)));
  EXPECT_TRUE(std::isnan(BaseFunction::incompleteBeta(-1, 1, 0.5)));
}

// The quick forms against the definitions, x^a/a M(a, a+1, -x) and the rest, through the 128-bit series.
double bySeries(double a, double x) {
  const double upper = a <= 1 ? a : 1, lower = a + 1;
  return std::exp(a * std::log(x) - (a <= 1 ? 0 : x)) * calcHypergeometricPFQ(&upper, 1, &lower, 1, a <= 1 ? -x : x) /
         a;
}

TEST(IncompleteGamma, QuickFormsAreTheSeriesOnBothSidesOfEverySwitch) {
  for (const double a :
       {-7.3, -0.5, 0.03, 0.2501, 0.4999, 0.51, 0.999999, 1.000001, 2.5, 9.7, 19.99, 20.01, 60.3, 160.25})
    for (const double x :
         {1e-5, 0.2999, 0.3001, 0.999, 1.001, 1.0999, 1.1001, 2.0, 9.9999, 10.0001, 20.5, 33.0, 61.2}) {
      const double full = std::tgamma(a), lower = bySeries(a, x), share = lower / full;
      EXPECT_NEAR(calcRLowerIncompleteGamma(a, x), share, 1e-12 * std::abs(share)) << a << " " << x;
      if (x > 30 || std::abs(lower) < 1e-290) continue;  // before the full gamma is taken for it
      EXPECT_NEAR(calcIncompleteGammaLower(a, x) / lower, 1, 1e-12) << a << " " << x;
      EXPECT_NEAR(calcIGamma(a, x), full - lower, 1e-12 * std::max(std::abs(full), std::abs(lower))) << a << " " << x;
    }
}

TEST(IncompleteGamma, WholeOrdersAreThePartialSums) {
  for (const int n : {2, 3, 20, 64, 65, 170})
    for (const double x : {1e-3, 0.5, 19.0, 25.0, 64.5, 650.0}) {
      double term = std::exp(-x), upper = term;
      for (int k = 1; k < n; ++k) upper += term *= x / k;
      EXPECT_NEAR(calcRLowerIncompleteGamma(n, x), upper, 1e-12 * upper) << n << " " << x;
      EXPECT_NEAR(calcIGamma(n, x) / std::tgamma(n), upper, 1e-12 * upper) << n << " " << x;
      EXPECT_NEAR(calcIncompleteGammaLower(n, x) / std::tgamma(n), 1 - upper, 1e-12) << n << " " << x;
    }
}

TEST(IncompleteBeta, QuickFormIsTheSeriesOnBothSidesOfEverySwitch) {
  const auto series = [](double x, double a, double b) {
    const double upper[] = {a, 1 - b}, lower = a + 1;
    return calcHypergeometricPFQ(upper, 2, &lower, 1, x) * std::pow(x, a) / a;
  };
  for (const double a : {0.05, 0.7, 1.0, 3.5, 12.25, 40.0})
    for (const double b : {0.3, 1.0, 2.0, 7.75, 19.5, 38.0})
      for (const double x : {0x1p-20, 0.01, 0.2, 0.37, 0.4999999, 0.5000000000000009}) {
        const double expected = series(x, a, b), full = calcBeta(b, a);
        EXPECT_NEAR(calcIBeta(x, a, b) / expected, 1, 1e-11) << x << " " << a << " " << b;
        EXPECT_NEAR(calcIBeta(1 - x, b, a), full - series(1 - (1 - x), a, b), 1e-12 * full)
            << x << " " << a << " " << b;
      }
  // (1+x)^b beyond the range: the terms of the series are, and its sum 1/(b (b+1)) is not.
  EXPECT_NEAR(calcIBeta(0.45, 2, 2000) * 2000 * 2001, 1, 1e-14);
}

TEST(Precision, IntegerSumsRestoreTheGmpDefault) {
  const mp_bitcnt_t before = mpf_get_default_prec();
  mpf_set_default_prec(512);
  calcRLowerIncompleteGamma(200, 150);
  EXPECT_EQ(mpf_get_default_prec(), 512u);
  mpf_set_default_prec(before);
}

}  // namespace
