// SPDX-License-Identifier: Apache-2.0
// No argument hangs a function, and a NaN never becomes a number.
#include <time.h>

#include <bit>
#include <cstdint>
#include <iterator>
#include <limits>
#include <random>
#include <vector>

#include "special/special_function.h"
#include "zeta_functions.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kMostSeconds = 5;  // of one call, sanitizers included; the longest takes about half a second

double threadSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

constexpr NamedFunction kGlasser = {"calcGlasser", 1,
                                    [](const double* v) { return SpecialFunction::calcGlasser(v[0]); }};

std::vector<NamedFunction> everyFunction() {
  std::vector<NamedFunction> all(std::begin(kHypergeometricFamily), std::end(kHypergeometricFamily));
  all.insert(all.end(), std::begin(kZetaFamily), std::end(kZetaFamily));
  all.insert(all.end(), std::begin(kIntegralFamily), std::end(kIntegralFamily));
  all.push_back(kGlasser);
  return all;
}

struct Timer {
  const NamedFunction& f;
  double slowest = 0, worst[4] = {};
  void run(const double* v) {
    const double start = threadSeconds();
    f.call(v);
    const double time = threadSeconds() - start;
    if (time <= slowest) return;
    slowest = time;
    std::copy(v, v + f.count, worst);
  }
  ~Timer() {
    EXPECT_LT(slowest, kMostSeconds) << f.name << "(" << worst[0] << ", " << worst[1] << ", " << worst[2] << ", "
                                     << worst[3] << ")";
    if (slowest > 0.05)
      std::cout << f.name << ": " << slowest << " s at " << worst[0] << ", " << worst[1] << ", " << worst[2] << ", "
                << worst[3] << "\n";
  }
};

TEST(Fuzz, RandomBitPatternsEnd) {
  std::mt19937_64 random(20240607);
  for (const NamedFunction& f : everyFunction()) {
    Timer timer{f};
    for (int round = 0; round < 600; ++round) {
      double v[4];
      for (double& x : v) x = std::bit_cast<double>(random());
      timer.run(v);
    }
  }
}

TEST(Fuzz, RandomScalesEnd) {
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> exponent(-3, 4), unit(-1, 1);
  for (const NamedFunction& f : everyFunction()) {
    Timer timer{f};
    for (int round = 0; round < 60; ++round) {
      double v[4];
      for (double& x : v) {
        x = std::copysign(std::pow(10.0, exponent(random)), unit(random));
        if (random() % 3 == 0) x = std::round(x);
      }
      timer.run(v);
    }
  }
}

TEST(Fuzz, SpecialValuesEnd) {
  const double values[] = {0.0,  -0.0, 5e-324, -1e-300, 1e-16, 0.5,   -0.5,  1,     -1,   1.5, 2,
                           -3.7, 10,   -40,    170.5,   1e4,   -1e10, 1e300, -kInf, kInf, kNaN};
  constexpr std::size_t kValues = std::size(values);
  std::mt19937_64 random(11);
  for (const NamedFunction& f : everyFunction()) {
    Timer timer{f};
    if (f.count <= 2) {
      for (const double x : values)
        for (const double y : values) {
          const double v[4] = {x, y, 0, 0};
          timer.run(v);
        }
      continue;
    }
    for (int round = 0; round < 600; ++round) {
      double v[4];
      for (double& x : v) x = values[random() % kValues];
      timer.run(v);
    }
  }
}

TEST(Fuzz, OrdersOfPolynomialsEnd) {
  std::mt19937_64 random(5);
  std::uniform_real_distribution<double> unit(-1, 1);
  for (const NamedPolynomial& p : kPolynomialFamily) {
    for (const int32_t n : {std::numeric_limits<int32_t>::min(), -1, 0, 1, 9999999, 10000001, 2147483647})
      for (const double x :
           {0.0, 5e-324, -1e-12, 0.3, 1.0, -1.0, 1.0000001, 30.0, -2.0, 1e12, -1e300, kInf, -kInf, kNaN}) {
        const double start = threadSeconds();
        const double value = p.call(n, x);
        EXPECT_LT(threadSeconds() - start, kMostSeconds) << p.name << "(" << n << ", " << x << ")";
        EXPECT_TRUE(n >= 0 || std::isnan(value)) << p.name;
      }
    for (int round = 0; round < 200; ++round) {
      const auto n = static_cast<int32_t>(random() % 400);
      p.call(n, std::bit_cast<double>(random()));
    }
  }
}

// With ordinary values in the other places.
TEST(Fuzz, NotANumberStays) {
  for (const NamedFunction& f : everyFunction())
    for (int place = 0; place < f.count; ++place) {
      double v[4] = {2, 3, 0.5, 0.25};
      v[place] = kNaN;
      EXPECT_TRUE(std::isnan(f.call(v))) << f.name << ", argument " << place;
    }
  for (const NamedPolynomial& p : kPolynomialFamily) EXPECT_TRUE(std::isnan(p.call(5, kNaN))) << p.name;
}

}  // namespace
