// SPDX-License-Identifier: Apache-2.0
// The functions of orvane/elliptic.h: their edges and their identities.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "orvane/elliptic.h"

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kPi = 3.141592653589793;

TEST(Elliptic, MeanStopsAtAnAbsoluteBound) {
  EXPECT_EQ(math_AGM(1e-20, 4e-20), 1e-20);
  EXPECT_EQ(math_AGM(1, 0), std::ldexp(1.0, -50));  // halved until below 1.33e-15
  EXPECT_TRUE(std::isnan(math_AGM(-1, 1)));
  EXPECT_TRUE(std::isnan(math_AGM(1, -1)));
  EXPECT_EQ(math_ellipticRK(1e-17, 1e-17), kInf);
  EXPECT_DOUBLE_EQ(math_ellipticRK(1e-17, 0.25), 1 / math_AGM(std::sqrt(1e-17), 0.5));
}

TEST(Elliptic, SmallArgumentsOfRF) {
  EXPECT_EQ(math_ellipticRF(1e-20, 1e-20, 1), kInf);
  EXPECT_EQ(math_ellipticRF(1e-17, 4, 4), kPi / 2 / 2);
  EXPECT_EQ(math_ellipticRF(4, 1e-17, 4), kPi / 2 / 2);
  EXPECT_GT(kPi / 2 - math_ellipticRF(1e-15, 1, 1), 2e-8);  // above the bound: pi/2 - sqrt(x) nearly
  EXPECT_EQ(math_ellipticRF(1, 0, 0), kInf);
  EXPECT_EQ(math_ellipticRF(0, kInf, 1), 0);
}

TEST(Elliptic, BandsAroundOne) {
  EXPECT_TRUE(std::isnan(math_ellipticK(1)));
  EXPECT_EQ(math_ellipticE(1), 1);
  EXPECT_EQ(math_ellipticE(0.9999999999999998), 1);
  EXPECT_EQ(math_ellipticE(1.0000000000000002), 1);
  EXPECT_TRUE(std::isnan(math_ellipticE(1.0000000000000004)));
  for (const double m : {0.9999999999999998, 1.0000000000000002}) {
    EXPECT_EQ(math_ellipticF(1.2, m), math_ellipticF(1.2, 1)) << m;
    EXPECT_EQ(math_ellipticF(2, m), kInf) << m;
  }
  EXPECT_TRUE(std::isnan(math_ellipticF(1.2, 1.0000000000000004)));
  EXPECT_TRUE(std::isnan(math_ellipticE2(1.2, 1.0000000000000002)));
}

TEST(Elliptic, FarAndInfiniteArguments) {
  EXPECT_DOUBLE_EQ(math_bulirschEl1(kInf, 0.5), math_ellipticK(0.75));
  EXPECT_DOUBLE_EQ(math_bulirschEl2(-1e200, 0.5, 1, 0.25), -math_ellipticE(0.75));
  EXPECT_DOUBLE_EQ(math_bulirschEl3(1e160, 0.5, 3), math_ellipticPI2(-2, 0.75));
  EXPECT_EQ(math_ellipticK(-kInf), 0);
  EXPECT_EQ(math_ellipticRG(kInf, 1, 1), kInf);
  EXPECT_TRUE(std::isnan(math_ellipticF(kInf, 0.5)));
  EXPECT_TRUE(std::isnan(math_jacobiTheta3(0, 1)));
  EXPECT_TRUE(std::isnan(math_jacobiTheta3(kInf, 0.5)));
  EXPECT_DOUBLE_EQ(math_jacobiEllipticSn(1e300, 1), 1);
  EXPECT_EQ(math_jacobiEllipticSn(1e-200, 0.5), 1e-200);
  for (const double u : {0.3, -2.0}) {
    EXPECT_TRUE(std::isnan(math_jacobiEllipticAm(u, -0.5)));
    EXPECT_TRUE(std::isnan(math_jacobiEllipticSn(u, -0.5)));
  }
  EXPECT_EQ(math_jacobiEllipticAm(800, 1), kPi / 2);
  // The double next to pi is 1.2246467991473532e-16 short of it: theta 1 there is that times its slope at 0.
  const double slope = math_jacobiTheta2(0, 0.1) * math_jacobiTheta3(0, 0.1) * math_jacobiTheta4(0, 0.1);
  EXPECT_NEAR(math_jacobiTheta1(kPi, 0.1) / (1.2246467991473532e-16 * slope), 1, 1e-12);
}

// Identities over many arguments, off the grids of the tables.
TEST(Elliptic, IdentitiesHold) {
  std::mt19937_64 bits(7);
  const auto unit = [&] { return static_cast<double>(bits() >> 11) * 0x1p-53; };
  for (int i = 0; i < 2000; ++i) {
    const double m = 0.999 * unit(), u = 8 * unit() - 4, phi = 6 * unit() - 3, q = 0.9 * unit(), x = 3 * unit();
    const double sn = math_jacobiEllipticSn(u, m), cn = math_jacobiEllipticCn(u, m), dn = math_jacobiEllipticDn(u, m);
    EXPECT_NEAR(sn * sn + cn * cn, 1, 1e-15);
    EXPECT_NEAR(dn * dn + m * sn * sn, 1, 1e-15);
    EXPECT_NEAR(math_ellipticF(math_jacobiEllipticAm(u, m), m), u, 3e-14 * (1 + std::abs(u) / (1 - m)));
    // Legendre's relation.
    const double k = math_ellipticK(m), e = math_ellipticE(m), k1 = math_ellipticK(1 - m), e1 = math_ellipticE(1 - m);
    EXPECT_NEAR(e * k1 + e1 * k - k * k1, kPi / 2, 3e-14);
    EXPECT_NEAR(math_jacobiZeta(phi, m), math_ellipticE2(phi, m) - e / k * math_ellipticF(phi, m), 1e-14);
    EXPECT_NEAR(math_bulirschEl1(std::tan(phi / 2), std::sqrt(1 - m)), math_ellipticF(phi / 2, m), 1e-13);
    // theta 3^4 = theta 2^4 + theta 4^4 at 0, and theta 1' = theta 2 theta 3 theta 4.
    const double t2 = math_jacobiTheta2(0, q), t3 = math_jacobiTheta3(0, q), t4 = math_jacobiTheta4(0, q);
    EXPECT_NEAR(std::pow(t2 / t3, 4) + std::pow(t4 / t3, 4), 1, 4e-15);
    EXPECT_NEAR(math_jacobiTheta1(1e-9, q) / (1e-9 * t2 * t3 * t4 + 1e-300), 1, q > 0.01 ? 1e-12 : 1e-6);
    EXPECT_NEAR(math_ellipticRG(x, m, 1), math_ellipticRG(1, x, m), 1e-15);
  }
}

}  // namespace
