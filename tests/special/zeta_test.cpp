// SPDX-License-Identifier: Apache-2.0
// The functions of orvane/zeta.h: their identities and their edges.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "orvane/zeta.h"

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kPi = 3.141592653589793;

TEST(ZetaFamily, ZetaFunctions) {
  EXPECT_EQ(math_zeta(kInf), 1);
  EXPECT_EQ(math_invZeta(1), kInf);
  EXPECT_EQ(math_invZeta(1e15), 1);
  for (const double y : {0.00916, 0.5, 0.999}) EXPECT_TRUE(std::isnan(math_invZeta(y))) << y;
  EXPECT_EQ(math_hurwitzZeta(2.5, -3), kInf);
  EXPECT_EQ(math_hurwitzZeta(1, 3.5), 0);
  EXPECT_EQ(math_hurwitzZeta(1, 1), kInf);
  EXPECT_EQ(math_hurwitzZeta(3, -10000.5), 0);
  EXPECT_TRUE(std::isnan(math_hurwitzZeta(2.5, -0.3)));
  EXPECT_EQ(math_dirichletBeta(1), 0);  // DirichletBeta_one
  EXPECT_NEAR(math_dirichletBeta(1 + 1e-12), kPi / 4, 1e-11);
}

TEST(ZetaFamily, QuantumIntegrals) {
  EXPECT_EQ(math_fermiDirac(-1, 31), 1);
  EXPECT_EQ(math_boseEinstein(-1, 31), -1);
  // Quantum_negative
  EXPECT_EQ(math_fermiDirac(-2, 41), 0);
  EXPECT_EQ(math_boseEinstein(-3, 41), 0);
  EXPECT_NEAR(math_fermiDirac(-2, 39) / std::exp(-39.0), 1, 1e-12);
  EXPECT_TRUE(std::isnan(math_boseEinstein(0, 0.5)));
  EXPECT_TRUE(std::isnan(math_polyLog(1, 1)));
  EXPECT_TRUE(std::isnan(math_polyLog(2, 1.5)));
  // F_0(x) = log(1 + exp(x)), and F_s' = F_(s-1).
  for (const double x : {-3.0, 0.2, 50.0, 800.0})
    EXPECT_NEAR(math_fermiDirac(0, x) / (std::max(x, 0.0) + std::log1p(std::exp(-std::abs(x)))), 1, 1e-15) << x;
  for (const double x : {-2.0, 1.3, 6.1, 38.9, 42.0}) {
    const double h = 1e-3 * std::abs(x);
    const double slope = (8 * (math_fermiDirac(1.5, x + h) - math_fermiDirac(1.5, x - h)) -
                          (math_fermiDirac(1.5, x + 2 * h) - math_fermiDirac(1.5, x - 2 * h))) /
                         (12 * h);
    EXPECT_NEAR(slope / math_fermiDirac(0.5, x), 1, 1e-9) << x;
  }
  EXPECT_EQ(math_polyLogarithm2(1), 1.64493406684822);  // PolyLogarithm2_one
  EXPECT_TRUE(std::isnan(math_polyLogarithm2(1.001)));
}

TEST(ZetaFamily, ClausenSums) {
  EXPECT_TRUE(std::isnan(math_ClausenS(1.5, 1)));
  EXPECT_TRUE(std::isnan(math_ClausenC(0, 1)));
  EXPECT_TRUE(std::isnan(math_Clausen(-2, 1)));
  EXPECT_EQ(math_ClausenS(1, 0), kPi / 2);  // ClausenS_zero
  EXPECT_EQ(math_ClausenC(1, 0), kInf);
  for (const double n : {3.0, 5.0}) {
    EXPECT_EQ(math_Clausen(n, 0.8), math_ClausenC(n, 0.8));
    EXPECT_EQ(math_Clausen(n + 1, 0.8), math_ClausenS(n + 1, 0.8));
  }
  // Clausen_tail: the terms from k^3 >= 1e17 on are missing, sum about K^-2/2 with K = 1e17^(1/3).
  const double missing = 1.2020569031595942854 - math_ClausenC(3, 0);
  EXPECT_NEAR(missing, 0.5 * std::pow(1e17, -2.0 / 3), 1e-14);
  EXPECT_GT(missing, 2e-12);
}

TEST(ZetaFamily, BarnesFunctions) {
  EXPECT_EQ(math_barnesG(28.5), kInf);
  EXPECT_EQ(math_barnesG(-28.5), -kInf);  // BarnesG_left
  EXPECT_EQ(math_barnesG(-30), 0);
  EXPECT_EQ(math_barnesG(6), 288);
  EXPECT_EQ(math_lnBarnesG(0), -kInf);
  EXPECT_TRUE(std::isnan(math_lnBarnesG(-2.5)));
  EXPECT_EQ(math_hyperfactorial(23), kInf);
  EXPECT_EQ(math_hyperfactorial(3), 108);
  // BarnesG_small: the coefficient of x^4 is -0.758..., not -0.491...
  const double x = 9e-5;
  EXPECT_NEAR(math_barnesG(x) / x - (1 + x * (0.9961541981062056 + x * -1.1149132726725708)), -0.7582546 * x * x * x,
              5e-16);
}

}  // namespace
