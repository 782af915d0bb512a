// SPDX-License-Identifier: Apache-2.0
// Every scalar function at any arguments at all: no call throws or runs away, a NaN stays one, threads do not meet.
#include <gtest/gtest.h>
#include <time.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <set>
#include <thread>

#include "support/functions.h"
#include "support/numbers.h"

namespace {

// Ends of the range and the numbers at which routines switch.
constexpr double kSpecial[] = {0.0,
                               -0.0,
                               5e-324,
                               -5e-324,
                               2.3e-308,
                               -1e-300,
                               1e-300,
                               1e-16,
                               1e-8,
                               0.1,
                               0.5,
                               -0.5,
                               0.7,
                               -0.7,
                               1.0,
                               -1.0,
                               1.5,
                               2.0,
                               -3.7,
                               10.0,
                               -40.0,
                               170.5,
                               1e4,
                               1e10,
                               -1e10,
                               1e16,
                               1e22,
                               1e300,
                               -1e300,
                               kInf,
                               -kInf,
                               kNaN,
                               kPi,
                               -kPi,
                               kPi / 2,
                               2 * kPi,
                               0.9999999999999999,
                               1.0000000000000002,
                               std::numeric_limits<double>::max()};

/// A special number, any bits, or sizes from 1e-3 to 1e7 with integers and halves among them.
double number(std::mt19937_64& random) {
  std::uniform_real_distribution<double> unit(0.0, 1.0);
  const double sign = random() % 2 ? 1 : -1;
  switch (random() % 5) {
    case 0:
      return kSpecial[random() % std::size(kSpecial)];
    case 1:
      return std::bit_cast<double>(random());
    case 2:
      return sign * std::pow(10.0, 10 * unit(random) - 3);
    case 3:
      return sign * std::pow(10.0, 7 * unit(random) - 3);
    default:
      return sign * std::round(std::pow(10.0, 5 * unit(random))) / 2;
  }
}

double threadSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

/// Microseconds a call at the most, so that many of them can be drawn and a NaN is looked for in all.
bool isQuick(const functions::Function& f) {
  return f.family == "elementary" || f.family == "error" || f.family == "elliptic";
}

/// Functions that give a number for some NaN, as their headers say.
bool mayForgetNaN(const functions::Function& f) {
  static const std::set<std::string> names = {"math_sign", "math_stepFun", "math_ConSelect", "math_pow", "math_igamma"};
  return names.contains(f.name);
}

/// The longest call of a function, sanitizers and a busy machine included.
class Watch {
 public:
  explicit Watch(const functions::Function& watched) : f(watched), call(functions::callOf(watched)) {}
  ~Watch() {
    EXPECT_LT(slowest, isQuick(f) ? 0.5 : 5)
        << f.name << "(" << worst[0] << ", " << worst[1] << ", " << worst[2] << ", " << worst[3] << ")";
  }
  void run(const double (&v)[4]) {
    const double start = threadSeconds();
    const double value = call(v);
    const double time = threadSeconds() - start;
    if (isQuick(f) && !mayForgetNaN(f) && std::any_of(v, v + f.count, [](double x) { return std::isnan(x); })) {
      EXPECT_TRUE(std::isnan(value)) << f.name << "(" << v[0] << ", " << v[1] << ", " << v[2] << ", " << v[3] << ")";
    }
    if (time <= slowest) return;
    slowest = time;
    std::copy(v, v + 4, worst);
  }

 private:
  const functions::Function& f;
  functions::Call call;
  double slowest = 0, worst[4] = {};
};

/// Exports, and what only the array functions have.
std::vector<functions::Function> scalarFunctions(bool ofOrder) {
  std::vector<functions::Function> found;
  for (const functions::Function& f : functions::all())
    if (f.ofOrder == ofOrder && (f.isExport() || f.name == "calcGlasser")) found.push_back(f);
  return found;
}

TEST(AnyArgument, EndsSoon) {
  std::mt19937_64 random(20240611);
  for (const functions::Function& f : scalarFunctions(false)) {
    Watch watch(f);
    for (const double x : kSpecial) {
      if (f.count == 1) watch.run({x, 0, 0, 0});
      if (f.count != 2) continue;
      for (const double y : kSpecial) watch.run({x, y, 0, 0});
    }
    for (int round = 0; round < (isQuick(f) ? 10000 : 500); ++round)
      watch.run({number(random), number(random), number(random), number(random)});
  }
}

TEST(AnyArgument, OrdersOfPolynomialsEndSoon) {
  std::mt19937_64 random(5);
  for (const functions::Function& f : scalarFunctions(true)) {
    Watch watch(f);
    const functions::Call call = functions::callOf(f);
    for (const double n : {-2147483648.0, -1.0, 0.0, 1.0, 9999999.0, 10000001.0, 2147483647.0})
      for (const double x : {0.0, 5e-324, -1e-12, 0.3, 1.0, -1.0, 1.0000001, 30.0, -2.0, 1e12, -1e300, kInf, -kInf}) {
        watch.run({n, x, 0, 0});
        if (n < 0) {
          EXPECT_TRUE(std::isnan(call(std::vector{n, x}.data()))) << f.name;
        }
      }
    for (int round = 0; round < 200; ++round)
      watch.run({static_cast<double>(random() % 400), std::bit_cast<double>(random()), 0, 0});
  }
}

// With ordinary values in the other places.
TEST(AnyArgument, NaNStays) {
  for (const functions::Function& f : functions::all()) {
    if (!f.isExport() || mayForgetNaN(f)) continue;
    const functions::Call call = functions::callOf(f);
    for (int place = f.ofOrder; place < f.count; ++place)
      for (const double first : {0.5, 5.0}) {
        if (f.ofOrder && first < 1) continue;
        std::vector<double> v = {first, 0.25, 0.75, 0.5};
        v[static_cast<std::size_t>(place)] = kNaN;
        EXPECT_TRUE(std::isnan(call(v.data()))) << f.name << ", argument " << place;
      }
  }
}

TEST(AnyArgument, SameOnManyThreads) {
  const std::vector<functions::Function> all = scalarFunctions(false);
  const double v[] = {0.4, 0.3, 0.9, 0.6};
  std::vector<functions::Call> calls;
  std::vector<uint64_t> expected;
  for (const functions::Function& f : all) {
    calls.push_back(functions::callOf(f));
    expected.push_back(std::bit_cast<uint64_t>(calls.back()(v)));
  }
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t)
    threads.emplace_back([&] {
      for (int i = 0; i < 100; ++i)
        for (std::size_t f = 0; f < calls.size(); ++f)
          EXPECT_EQ(std::bit_cast<uint64_t>(calls[f](v)), expected[f]) << all[f].name;
    });
  for (std::thread& thread : threads) thread.join();
}

}  // namespace
