// SPDX-License-Identifier: Apache-2.0
// Routines of the special functions that no export reaches by itself.
#include <gmp.h>
#include <gtest/gtest.h>

#include <cmath>

#include "special/bernoulli.h"
#include "special/special_function.h"

namespace {

using namespace SpecialFunction;

TEST(HurwitzZeta, AgreesWithClosedForms) {
  const double zeta2 = kPi * kPi / 6, catalan = 0.915965594177219015;
  EXPECT_NEAR(calcHurwitzZeta(2, 3), zeta2 - 1.25, 1e-14);
  EXPECT_NEAR(calcHurwitzZeta(2, 0.25), kPi * kPi + 8 * catalan, 1e-13);
  EXPECT_NEAR(calcHurwitzZeta(2, -1.75), kPi * kPi + 8 * catalan + 1 / (1.75 * 1.75) + 1 / (0.75 * 0.75), 1e-13);
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
  for (const double a : {0.5, 1.7, 6.25, 90.0})
    for (const double b : {0.4, 2.0, 5.5, 120.0})
      EXPECT_NEAR(BaseFunction::incompleteBeta(a, b, x), calcIBeta(x, a, b) / calcBeta(a, b), 2e-12) << a << " " << b;
  EXPECT_TRUE(std::isnan(BaseFunction::incompleteBeta(1, 1, 1.5)));
  EXPECT_TRUE(std::isnan(BaseFunction::incompleteBeta(-1, 1, 0.5)));
}

TEST(Precision, IntegerSumsRestoreTheGmpDefault) {
  const mp_bitcnt_t before = mpf_get_default_prec();
  mpf_set_default_prec(512);
  calcRLowerIncompleteGamma(200, 150);
  EXPECT_EQ(mpf_get_default_prec(), 512u);
  mpf_set_default_prec(before);
}

}  // namespace
