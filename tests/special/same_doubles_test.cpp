// SPDX-License-Identifier: Apache-2.0
// Shortened ways against the plain ones, bit by bit, on random arguments of all regions.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "special/bessel/bessel_standard.h"
#include "special/elliptic/elliptic.h"
#include "special/special_function.h"

namespace {

using namespace SpecialFunction;

constexpr int kArguments = 100000;

/// A function of two numbers, which may leave the second alone, and what its doubles must be.
struct Way {
  const char* name;
  double (*quick)(double, double);
  double (*plain)(double, double);
  double mostFirst, leastSecond, mostSecond;
};

double plainInverseErf(double y, double) {
  static const std::vector<double> coefficients{
#include "special/error/inverse_erf_data.inc"
  };
  constexpr struct {
    double below;
    std::size_t count;
  } kCounts[] = {{0.12, 7},  {0.19, 9},  {0.29, 12}, {0.39, 16}, {0.49, 21},
                 {0.59, 28}, {0.68, 38}, {0.78, 59}, {0.86, 95}};
  const auto* row = kCounts;
  while (y >= row->below) ++row;
  double sum = 0;
  for (std::size_t k = row->count; k-- > 0;) sum = coefficients[k] + y * y * sum;
  return y * sum;
}

const Way kWays[] = {
    {"J", besselJStandard, [](double nu, double x) { return std::cyl_bessel_j(nu, x); }, 60, 1e-3, 150},
    {"J far out", besselJStandard, [](double nu, double x) { return std::cyl_bessel_j(nu, x); }, 30, 1000, 1e4},
    {"Y", besselYStandard, [](double nu, double x) { return std::cyl_neumann(nu, x); }, 60, 1e-3, 150},
    {"Y near 0", besselYStandard, [](double nu, double x) { return std::cyl_neumann(nu, x); }, 5, 1e-9, 2.1},
    {"I", besselIStandard, [](double nu, double x) { return std::cyl_bessel_i(nu, x); }, 30, 1e-3, 60},
    {"K", besselKStandard, [](double nu, double x) { return std::cyl_bessel_k(nu, x); }, 30, 1e-3, 60},
    {"I beside K", [](double nu, double x) { return besselIKStandard(nu, x).first; }, besselIStandard, 30, 1e-3, 60},
    {"K beside I", [](double nu, double x) { return besselIKStandard(nu, x).second; }, besselKStandard, 30, 1e-3, 60},
    {"Ei", [](double, double x) { return calcExpIntegral(x); }, [](double, double x) { return std::expint(x); }, 1,
     1e-9, 40},
    {"inverse erf", [](double y, double) { return calcInvErf(y); }, plainInverseErf, 0.85999999, 0, 1},
    {"gamma", [](double x, double) { return standardGamma(x - 30); },
     [](double x, double) { return std::tgamma(x - 30); }, 210, 0, 1},
    {"RF beside RD", [](double x, double y) { return duplicateRFAndRD(x, y, 1, false).first; },
     [](double x, double y) { return duplicateRF(x, y, 1); }, 4, 1e-9, 40},
    {"RD beside RF", [](double x, double y) { return duplicateRFAndRD(x, y, 1, false).second; },
     [](double x, double y) { return duplicateRD(x, y, 1); }, 4, 1e-9, 40},
    {"RD beside RF, swapped", [](double x, double y) { return duplicateRFAndRD(x, y, 1, true).second; },
     [](double x, double y) { return duplicateRD(x, 1, y); }, 4, 1e-9, 40},
};

// Whole and half orders come as often as others; points lie evenly and evenly in their logarithms.
TEST(SameDoubles, ShortWaysAndPlainOnes) {
  std::mt19937_64 random(5);
  std::uniform_real_distribution<double> unit(0, 1);
  for (const Way& way : kWays) {
    int others = 0;
    std::string first;
    for (int i = 0; i < kArguments; ++i) {
      double x = way.mostFirst * unit(random), y = way.leastSecond + (way.mostSecond - way.leastSecond) * unit(random);
      if (i % 3 == 0 && way.mostFirst > 1) x = std::floor(2 * x) / 2;
      if (i % 5 == 0 && way.leastSecond > 0)
        y = way.leastSecond * std::pow(way.mostSecond / way.leastSecond, unit(random));
      const double quick = way.quick(x, y), plain = way.plain(x, y);
      if (std::bit_cast<std::uint64_t>(quick) == std::bit_cast<std::uint64_t>(plain)) continue;
      if (std::isnan(quick) && std::isnan(plain)) continue;
      if (others++ == 0) first = std::to_string(x) + ", " + std::to_string(y);
    }
    EXPECT_EQ(others, 0) << way.name << ", first at " << first;
  }
}

}  // namespace
