// SPDX-License-Identifier: Apache-2.0
// Values at the edges of the special functions, and the odd ones that hosts rely on.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <thread>
#include <vector>

#include "orvane/bessel.h"
#include "orvane/hypergeometric.h"
#include "orvane/special.h"

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

double lowerGamma(double a, double x) {
  double value = 0;
  math_incompleteGamma(a, x, 1, &value);
  return value;
}

TEST(Edges, Angles) {
  EXPECT_NEAR(math_sin(1e22), 0.48922149417731938, 1e-15);  // sin(1e22/2^74 (2^74 mod 2 pi)), mpmath
  EXPECT_NE(math_sin(1e22), std::sin(1e22));
  const double largest = std::numeric_limits<double>::max();
  EXPECT_EQ(math_sin(largest), std::sin(largest));
  EXPECT_TRUE(std::isnan(math_cos(kInf)));
  EXPECT_TRUE(std::isnan(math_tan(kNaN)));
  EXPECT_EQ(math_csc(0), kInf);
}

TEST(Edges, SignsAndSteps) {
  EXPECT_EQ(math_sign(kNaN), 0.0);
  EXPECT_EQ(math_stepFun(kNaN), 1.0);
  EXPECT_EQ(math_ConSelect(kNaN, 3, 4), 4.0);
  for (const double x : {1e-30, -0.4, 3.0, -700.0}) EXPECT_NEAR(math_logSign(math_expSign(x)), x, 4e-16 * std::abs(x));
  EXPECT_TRUE(std::isnan(math_acoth(0.5)));
  EXPECT_EQ(math_acoth(1), kInf);
}

TEST(Edges, ArrayHelpers) {
  const double coefficients[] = {0, 0, 0, 1}, x = 0.1;
  double out = 7;
  math_polyValue(coefficients, &x, &out, 4, 0);
  EXPECT_EQ(out, 7);
  math_polyValue(coefficients, &x, &out, 4, 1);
  EXPECT_EQ(out, (0.1 * 0.1) * 0.1);
}

TEST(Edges, Gamma) {
  for (const double pole : {-1.0, -2.0, -3.0}) EXPECT_EQ(math_gamma(pole), -kInf);
  EXPECT_EQ(math_gamma(0), kInf);
  EXPECT_EQ(math_digamma(1e-16), -1e-16);
  EXPECT_EQ(math_digamma(0), -kInf);
  EXPECT_EQ(math_digamma(-1e-300), kInf);
  EXPECT_EQ(math_polyGamma(161, 1), 1e300);
  EXPECT_TRUE(std::isnan(math_polyGamma(-1, 1)));
  EXPECT_EQ(math_polyGamma(0, 2.5), math_digamma(2.5));
  EXPECT_EQ(math_polyGamma(2, -10000.5), 0.0);  // far left of the sum's range
  // Sum of ten terms only: 6! sum of (300+k)^-7, k < 10.
  double sum = 0;
  for (int k = 0; k < 10; ++k) sum += std::pow(300 + k, -7.0);
  EXPECT_NEAR(math_polyGamma(6, 300) / (-720 * sum), 1, 1e-13);
  EXPECT_TRUE(std::isnan(math_invGamma(0.0)));
  EXPECT_TRUE(std::isnan(math_invGamma(-0.05)));
  EXPECT_EQ(math_beta(-1, 2.5), -kInf);
  EXPECT_TRUE(std::isnan(math_beta(100, 100)));  // Beta_overflow
  EXPECT_EQ(math_beta(1, 171), 0);               // Beta_overflow
  for (const double pole : {-1.0, -4.0, -1e6}) EXPECT_EQ(math_digamma(pole), -kInf);
}

TEST(Edges, IncompleteGamma) {
  for (const double x : {0.3, 5.0, -2.0}) EXPECT_EQ(math_RLowerIncompleteGamma(1, x), std::exp(-x));
  EXPECT_EQ(math_RLowerIncompleteGamma(0, 3), 0);
  EXPECT_TRUE(std::isnan(math_RLowerIncompleteGamma(-2, 3)));
  EXPECT_TRUE(std::isnan(math_RLowerIncompleteGamma(1.5, -3)));
  EXPECT_EQ(math_RLowerIncompleteGamma(1.5, 1000), 1);
  EXPECT_EQ(math_RUpperIncompleteGamma(0, 3), 1);
  EXPECT_EQ(math_igamma(1.5, 100), 0);
  EXPECT_EQ(lowerGamma(1.5, 100), std::tgamma(1.5));
  EXPECT_NEAR(math_igamma(180, 700) / 2.4796324528330826e+205, 1, 1e-12);  // gamma(180) itself overflows
  EXPECT_GT(math_igamma(1.5, 40), 0);                                      // the table's x itself is not saturated
  EXPECT_EQ(lowerGamma(-3, 2), 8);
  EXPECT_EQ(lowerGamma(0.01, 1e-16), 0);
  EXPECT_NEAR(math_igamma(0, 2), 4.954234356001890, 1e-14);      // Ei(2)
  EXPECT_NEAR(math_igamma(-1, 2), 0.018767130910245226, 1e-16);  // UG(-1, 2)
  EXPECT_EQ(lowerGamma(0, 2), kInf);
  // gamma(30) (1 - exp(-1) (1 + 1 + ... + 1/18!)), mpmath; the integral itself is 0.013.
  EXPECT_NEAR(lowerGamma(30, 1) / 28142934620269.681, 1, 1e-12);
  EXPECT_EQ(lowerGamma(172, 1), kInf);
  EXPECT_EQ(lowerGamma(180.5, 20), kInf);
  EXPECT_LT(lowerGamma(180.5, 9), 1e180);
  const double nearThree = std::nextafter(3.0, 4.0);
  EXPECT_NEAR(lowerGamma(nearThree, 20), 2 * std::exp(-20.0) * 221, 1e-17);  // Q(3, 20): LowerGamma_exchanged
  EXPECT_TRUE(std::isnan(lowerGamma(std::nextafter(-3.0, -4.0), 2)));        // the series' pole
  EXPECT_EQ(math_igamma(2, kNaN), 0);                                        // UpperGamma_nan
  for (const double a : {1.0, 2.5, -1.5}) EXPECT_TRUE(std::isnan(math_igamma(a, kNaN))) << a;
  for (const double a : {2.0, 3.0, 2.5}) EXPECT_TRUE(std::isnan(math_RLowerIncompleteGamma(a, kNaN))) << a;
  EXPECT_TRUE(std::isnan(math_RLowerIncompleteGamma(kInf, 2)));
  EXPECT_EQ(math_RLowerIncompleteGamma(2, -kInf), -kInf);  // 1 + x, times exp(-x)
  EXPECT_EQ(math_RLowerIncompleteGamma(3, -kInf), kInf);
}

TEST(Edges, Inverses) {
  EXPECT_EQ(math_InverseRUpperIncompleteGamma(2.5, 1e-16), 1e-16 * 1e-16);
  EXPECT_EQ(math_InverseRUpperIncompleteGamma(2, 0.5), 1000 * std::pow(8.0, 20));
  EXPECT_TRUE(std::isnan(math_InverseRUpperIncompleteGamma(2.5, 1.1)));
  EXPECT_TRUE(std::isnan(math_InverseRUpperIncompleteGamma(-1, 0.5)));
  EXPECT_EQ(math_InverseBeta(1e-16, 2, 3), 1e-16 * 1e-16);
  EXPECT_DOUBLE_EQ(math_InverseBeta(1, 2, 3), -2.123);
  EXPECT_TRUE(std::isnan(math_InverseBeta(0.5, -1, 3)));
  EXPECT_EQ(math_ibeta(1e-65, 0.01, 1), 0);
  EXPECT_TRUE(std::isnan(math_ibeta(0.6, 100, 100)));  // IBeta_overflow
  EXPECT_TRUE(std::isnan(math_ibeta(kNaN, 1, 1)));
  // The alternating sum, ended at a term of 1e-17, by mpmath; the integral is 3.4e-138.
  EXPECT_NEAR(math_ibeta(0.3, 200, 200) / -2.9210586721339666e-126, 1, 1e-12);
  EXPECT_EQ(math_invErf(1.0000000000000002), 5.8);
  EXPECT_EQ(math_invErf(-1.0000000000000002), -5.8);
  EXPECT_TRUE(std::isnan(math_invErf(1.1)));
  EXPECT_NEAR(math_invErf(1), 5.36805338134, 1e-2);  // 28 steps of Newton from 1.2 at 40 digits
  EXPECT_EQ(math_invErf(-1), -math_invErf(1));
  EXPECT_EQ(math_invErfc(1e-20), math_invErf(1));
  EXPECT_TRUE(std::isnan(math_lnErfi(0)));
  EXPECT_EQ(math_invErfi(0), 0);
  EXPECT_EQ(math_invLnErfi(0), 0.7316971534684924);
}

TEST(Edges, ComplexErrorFunctions) {
  EXPECT_EQ(math_voigtFunK(0, -1), -math_voigtFunK(0, 1));
  EXPECT_EQ(math_voigtDiffLY(1.25, 0.75), math_voigtDiffKX(1.25, 0.75));
  // Beyond the range of exp(-z^2): Re w = y/(sqrt(pi) |z|^2) nearly, and the kept form lacks the root.
  EXPECT_NEAR(math_voigtFunK(1e-5, 40) * 40, 1, 1e-3);
  // Near the imaginary axis 100 levels do not converge; the value is from mpmath.
  double nearRe = 0, nearIm = 0;
  math_erfz(0.05, 3, &nearRe, &nearIm);
  EXPECT_GT(std::abs(nearRe - (449.97036886788081)), 1e-6);
  double re = 0, im = 0;
  math_erfz(1e-9, 0.5e-9, &re, &im);
  EXPECT_NEAR(re, 1.1283791670955126e-9, 1e-15);
  EXPECT_NEAR(math_voigtDiffLX(1e-9, 1e-9), 1.1283791670955126, 1e-8);
}

TEST(Edges, LambertW) {
  EXPECT_EQ(math_lambertW(-0.36787944117144233), -1);
  EXPECT_TRUE(std::isnan(math_lambertW(-0.3678794411714426)));
  EXPECT_DOUBLE_EQ(math_lambertW(2.718281828459045), 1);
  EXPECT_EQ(math_lambertW(1e300), 1);
  EXPECT_GT(math_wrightOmega(-40), 1e-16);  // exp(-40) is 4e-18
  EXPECT_LT(math_wrightOmega(-40), 1e-15);
}

TEST(Threads, LgammaAndSeriesGiveTheSameOnManyThreads) {
  const double one = math_lngamma(-3.3), two = math_RLowerIncompleteGamma(90, 85);
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t)
    threads.emplace_back([=] {
      for (int i = 0; i < 200; ++i) {
        EXPECT_EQ(math_lngamma(-3.3), one);
        EXPECT_EQ(math_RLowerIncompleteGamma(90, 85), two);
      }
    });
  for (auto& thread : threads) thread.join();
}

// What the C library's lgamma writes, and its re-entrant form does not.
TEST(Edges, SignOfGammaStaysInTheFunctions) {
  const auto call = [] {
    math_lngamma(-0.5);
    math_StruveH(-3.75, 0.5);
    math_StruveL(300.5, 2.5);
    math_ParabolicCylinderU(-12.3, -1.5);
    math_ParabolicCylinderV(-20.3, 2.5);
    math_ParabolicCylinderV(-5000.3, 2.5);
    math_Hypergeometric1F1(-3.3, 0.7, -700);
    math_Hypergeometric0F1(-0.5, -5000);
    math_RUpperIncompleteGamma(-180.5, 200);
  };
  for (const int mark : {-77, 77}) {
    signgam = mark;
    call();
    EXPECT_EQ(signgam, mark);
  }
}

}  // namespace
