// SPDX-License-Identifier: Apache-2.0
// The functions of orvane/elliptic.h against tables of references, at their edges, and for any bits at all.
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <thread>
#include <vector>

#include "special/elliptic_exports.h"
#include "support/reference.h"

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kPi = 3.141592653589793;

TEST(Elliptic, AgreesWithReferences) {
  for (const EllipticExport& f : kEllipticExports)
    checkReference(std::string("special/") + f.name + ".csv", [&](const ReferenceRow& row) {
      EXPECT_EQ(row.arguments.size(), static_cast<std::size_t>(f.arguments)) << f.name;
      return f.call(row.arguments.data());
    });
}

// A NaN in any place comes out as NaN.
TEST(Elliptic, NanComesOut) {
  for (const EllipticExport& f : kEllipticExports)
    for (int place = 0; place < f.arguments; ++place) {
      double a[] = {0.5, 0.25, 0.75, 0.5};
      EXPECT_FALSE(std::isnan(f.call(a))) << f.name;
      a[place] = kNaN;
      EXPECT_TRUE(std::isnan(f.call(a))) << f.name << ", argument " << place;
    }
}

// Doubles of any bits, mixed with the numbers at which routines switch: every call comes back, and soon.
TEST(Elliptic, AnyBitsReturn) {
  const double special[] = {0.0,
                            -0.0,
                            1.0,
                            -1.0,
                            kInf,
                            -kInf,
                            kNaN,
                            5e-324,
                            -5e-324,
                            2.3e-308,
                            1e300,
                            -1e300,
                            1e22,
                            0.5,
                            1e-300,
                            1e-8,
                            kPi,
                            -kPi,
                            2 * kPi,
                            1e-16,
                            0.1,
                            0.7,
                            2.0,
                            1e10,
                            1e16,
                            1.7976931348623157e308,
                            0.9999999999999999,
                            1.0000000000000002,
                            kPi / 2,
                            -0.7};
  std::mt19937_64 bits(20240611);
  const auto draw = [&] {
    const uint64_t word = bits();
    switch (word % 4) {
      case 0:
        return special[(word >> 8) % std::size(special)];
      case 1:
        return std::ldexp(static_cast<double>(word >> 12), static_cast<int>(word >> 4 & 63) - 84);
      default: {
        const uint64_t any = bits();
        double value;
        std::memcpy(&value, &any, sizeof value);
        return value;
      }
    }
  };
  for (const EllipticExport& f : kEllipticExports) {
    double slowest = 0, worst[4] = {};
    for (int i = 0; i < 50000; ++i) {
      double a[4];
      for (double& x : a) x = draw();
      const auto start = std::chrono::steady_clock::now();
      const double value = f.call(a);
      const double time = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
      if (time > slowest) {
        slowest = time;
        std::memcpy(worst, a, sizeof worst);
      }
      for (int k = 0; k < f.arguments; ++k) EXPECT_TRUE(!std::isnan(a[k]) || std::isnan(value)) << f.name;
    }
    // Far above any call (some microseconds), far below a loop that runs away; a busy machine may stop a thread.
    EXPECT_LT(slowest, 0.5) << f.name << " at " << worst[0] << " " << worst[1] << " " << worst[2] << " " << worst[3];
  }
}

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

TEST(Elliptic, SameOnManyThreads) {
  std::vector<double> expected;
  const double a[] = {0.4, 0.3, 0.9, 0.6};
  for (const EllipticExport& f : kEllipticExports) expected.push_back(f.call(a));
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t)
    threads.emplace_back([&] {
      for (int i = 0; i < 100; ++i)
        for (std::size_t f = 0; f < kEllipticExports.size(); ++f) EXPECT_EQ(kEllipticExports[f].call(a), expected[f]);
    });
  for (auto& thread : threads) thread.join();
}

}  // namespace
