// SPDX-License-Identifier: Apache-2.0
// The functions of orvane/hypergeometric.h: their identities and their edges.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "orvane/hypergeometric.h"

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(HypergeometricFamily, GeneralSeries) {
  // exp, (1-z)^-a, -log(1-z)/z, and Si(2)/2 = 1F2(1/2; 3/2, 3/2; -1).
  EXPECT_NEAR(math_Hypergeometric_mFn(nullptr, 0, nullptr, 0, 1.5), std::exp(1.5), 2e-15);
  const double half = 0.5, ones[] = {1, 1}, two = 2, lower[] = {1.5, 1.5};
  EXPECT_NEAR(math_Hypergeometric_mFn(&half, 1, nullptr, 0, 0.75), 2, 1e-15);
  EXPECT_NEAR(math_Hypergeometric_mFn(ones, 2, &two, 1, 0.5), 2 * std::log(2.0), 1e-15);
  EXPECT_NEAR(math_Hypergeometric_mFn(&half, 1, lower, 2, -1), 1.6054129768026948485767 / 2, 1e-15);
  const double poles[] = {1.5, -2.0}, bent[] = {1.5, -2.5};
  EXPECT_TRUE(std::isnan(math_Hypergeometric_mFn(ones, 2, poles, 2, 0.5)));
  EXPECT_FALSE(std::isnan(math_Hypergeometric_mFn(ones, 2, bent, 2, 0.5)));
  EXPECT_NEAR(math_Hypergeometric2F1(-0.5, 0.5, 1, 0.5), 0.859846600102238, 1e-15);
  EXPECT_NEAR(math_Hypergeometric2F1(1.3, 1, 2.3, 0.995), 6.4009067299903, 1e-13);
  EXPECT_TRUE(std::isnan(math_Hypergeometric1F1(1, kNaN, -1)));
}

// W[M, W] = M W' - M' W = -gamma(1+2m)/gamma(1/2+m-k) (DLMF 13.14.26) ties both functions, without a table.
TEST(HypergeometricFamily, WronskianOfWhittaker) {
  const double k = 0.3, m = 0.7, x = 2.5, h = 1e-3;
  const auto slope = [&](double (*f)(double, double, double)) {
    return (8 * (f(k, m, x + h) - f(k, m, x - h)) - (f(k, m, x + 2 * h) - f(k, m, x - 2 * h))) / (12 * h);
  };
  const double wronskian =
      math_whittakerM(k, m, x) * slope(math_whittakerW) - slope(math_whittakerM) * math_whittakerW(k, m, x);
  EXPECT_NEAR(wronskian, -std::tgamma(1 + 2 * m) / std::tgamma(0.5 + m - k), 1e-10);
}

TEST(HypergeometricFamily, EdgesAndOddities) {
  // HypergeometricU_integer
  for (const double b : {-1.0, 0.0, 2.0, 3.0}) EXPECT_TRUE(std::isnan(math_hypergeometricU(0.5, b, 1))) << b;
  EXPECT_TRUE(std::isnan(math_whittakerW(0.3, 0.5, 1)));
  EXPECT_FALSE(std::isnan(math_hypergeometricU(0.5, 1, 1)));
  EXPECT_EQ(math_hypergeometricU(0, 0.5, 3), 1);
  EXPECT_EQ(math_hypergeometricU(0.5, 1.5, 0), kInf);
  EXPECT_EQ(math_whittakerM(0.3, 0.7, 3000), kInf);
  EXPECT_EQ(math_whittakerW(0.3, 0.7, 3000), 0);
  // WrightBessel_zero
  EXPECT_EQ(math_wrightBessel(1, 2, 1e-33), 1e-33);
  EXPECT_EQ(math_wrightBessel(1, 2, -1e-33), 1e-33);
  EXPECT_NEAR(math_wrightBessel(1, 2, 1e-31), 1, 1e-15);
  // MittagLeffler_cap: 2048 terms end before the largest, that of k = 2500; E_(1/4,1)(5) is about 4 exp(5^4).
  EXPECT_LT(math_mittagLeffler(0.25, 1, 5), 3 * std::exp(625.0));
  EXPECT_GT(math_mittagLeffler(0.25, 1, 5), 1);
  EXPECT_NEAR(math_mittagLeffler(0.25, 1, 4) / (4 * std::exp(256.0)), 1, 1e-10);
}

}  // namespace
