// SPDX-License-Identifier: Apache-2.0
#include <orvane/integral.h>

#include "numeric/dense_support.h"
#include "support/numbers.h"
#include "support/reference.h"

namespace {

using Callback = double (*)(double);

constexpr uint8_t kModes[] = {0, 1, 2};
int calls = 0;

// A value without any smoothness: no interval of it ever agrees with its halves.
double rough(double x) {
  ++calls;
  return std::fmod(std::abs(std::sin(1e7 * x + 1)) * 1e5, 1.0);
}

// Evaluations of one call: three for the whole, six for each interval of the list.
int intervals(double a, double b, int32_t maxIntervals) {
  calls = 0;
  math_Integral1D(rough, a, b, maxIntervals);
  EXPECT_EQ((calls - 3) % 6, 0);
  return (calls - 3) / 6;
}

double gauss(double x) { return std::exp(-x * x); }
double decay(double x) { return std::exp(-std::abs(x)); }
double lorentz(double x) { return 1 / (1 + x * x); }
double skew(double x) { return std::exp(-(x - 1) * (x - 1)); }

TEST(Integral, ExactForPolynomialsOfDegreeFive) {
  const Callback f = [](double x) { return ((((6 * x + 5) * x - 4) * x + 3) * x - 2) * x + 1; };
  const auto primitive = [](double x) { return (((((x + 1) * x - 1) * x + 1) * x - 1) * x + 1) * x; };
  for (const auto& [a, b] : {std::pair{0.0, 1.0}, {-2.0, 3.0}, {3.0, -2.0}, {0.0, 1e-9}, {1.0, 1.0}})
    EXPECT_NEAR(math_Integral1D(f, a, b, -1), primitive(b) - primitive(a), 1e-13 * (1 + std::abs(primitive(a))))
        << a << " " << b;
}

TEST(Integral, SmoothFunctions) {
  const Callback sine = [](double x) { return std::sin(x); }, root = [](double x) { return std::sqrt(x); },
                 logarithm = [](double x) { return std::log(x); };
  EXPECT_NEAR(math_Integral1D(sine, 0, kPi, 0), 2.0, 1e-14);
  EXPECT_NEAR(math_Integral1D(sine, kPi, 0, 0), -2.0, 1e-14);
  EXPECT_NEAR(math_Integral1D(root, 0, 1, 0), 2.0 / 3, 1e-12);
  EXPECT_NEAR(math_Integral1D(logarithm, 0, 1, 0), -1.0, 1e-8);  // the last interval at 0 is 1e-8 wide
}

TEST(Integral, NumberOfIntervals) {
  // The list grows by two with each split and one split follows the last length that is not above the limit.
  EXPECT_EQ(intervals(0, 5, -1), 17);
  EXPECT_EQ(intervals(5, 0, -1), 17);
  EXPECT_EQ(intervals(0, 9.99, -1), 17);
  EXPECT_EQ(intervals(0, 10, -1), 11);
  EXPECT_EQ(intervals(0, 50.5, -1), 51);
  EXPECT_EQ(intervals(-64, 63.9, -1), 129);
  EXPECT_EQ(intervals(0, 128, -1), 129);
  EXPECT_EQ(intervals(0, 1000, -1), 129);
  EXPECT_EQ(intervals(0, 5, 3), 5);
  EXPECT_EQ(intervals(0, 5, -7), 1);
  EXPECT_EQ(intervals(0, 5, 0), 1000001);
  EXPECT_EQ(intervals(0, 9e-9, 0), 1);  // under 1e-8 wide
  EXPECT_EQ(intervals(0, 1.1e-8, 0), 3);
  EXPECT_EQ(intervals(2, 2, -1), 1);
}

TEST(Integral, FailuresAreValues) {  // kept.csv: Integral_poleSign
  const Callback pole = [](double x) { return 1 / x; }, downwards = [](double x) { return -1 / (x * x); },
                 nan = [](double x) { return x > 0.9 ? kNaN : 1.0; }, steep = [](double) { return 1.01e10; },
                 edge = [](double) { return 0.99e10; };
  EXPECT_EQ(math_Integral1D(pole, -1, 1, -1), 1e300);
  EXPECT_EQ(math_Integral1D(downwards, -1, 1, -1), 1e300);
  EXPECT_EQ(math_Integral1D(steep, 0, 1, -1), 1e300);
  EXPECT_NEAR(math_Integral1D(edge, 0, 1, -1), 0.99e10, 1e-3);
  EXPECT_TRUE(std::isnan(math_Integral1D(nan, 0, 1, -1)));
  EXPECT_EQ(math_Integral1D(nan, 0, 0.5, -1), 0.5);
  for (const auto& [a, b] : {std::pair{kNaN, 1.0}, {1.0, kNaN}, {kNaN, kInf}, {-kInf, kNaN}})
    EXPECT_TRUE(std::isnan(math_Integral1D(gauss, a, b, -1)));
  const Callback undefined = [](double) { return kNaN; };
  for (const auto& [a, b] : {std::pair{0.0, kInf}, {-kInf, 0.0}, {-kInf, kInf}})
    EXPECT_TRUE(std::isnan(math_Integral1D(undefined, a, b, -1)));
}

TEST(Integral, InfiniteRanges) {
  const double rootPi = std::sqrt(kPi);
  const auto check = [](Callback f, double a, double b, double expected) {
    EXPECT_NEAR(math_Integral1D(f, a, b, -1), expected, 1e-9 * (1 + std::abs(expected))) << a << " to " << b;
    EXPECT_NEAR(math_Integral1D(f, b, a, 5), -expected, 1e-9 * (1 + std::abs(expected))) << b << " to " << a;
  };
  check(gauss, 0, kInf, rootPi / 2);
  check(gauss, -kInf, 0, rootPi / 2);
  check(gauss, -kInf, kInf, rootPi);
  check(gauss, 1, kInf, rootPi / 2 * std::erfc(1.0));
  check(gauss, -kInf, 1, rootPi / 2 * std::erfc(-1.0));
  check(skew, 0, kInf, rootPi / 2 * std::erfc(-1.0));  // without the mirror symmetry that hides a wrong sign
  check(skew, -kInf, 0, rootPi / 2 * std::erfc(1.0));
  check(skew, -kInf, kInf, rootPi);
  check(decay, 2, kInf, std::exp(-2.0));
  check(decay, -kInf, -2, std::exp(-2.0));
  check(lorentz, -3, kInf, kPi / 2 + std::atan(3.0));
  check(lorentz, -kInf, 3, kPi / 2 + std::atan(3.0));
  check(lorentz, -kInf, kInf, kPi);
  EXPECT_EQ(math_Integral1D(gauss, kInf, kInf, -1), 0.0);
  EXPECT_EQ(math_Integral1D(gauss, -kInf, -kInf, -1), 0.0);
}

// Bumps whose mapped integrand passes 1e10 while no panel of the direct pieces does: only the pieces give a value.
TEST(Integral, PiecesOfInfiniteRanges) {
  const Callback right = [](double x) { return 1e9 * std::exp(-(x - 7) * (x - 7) / 2); };
  const Callback left = [](double x) { return 1e9 * std::exp(-(x + 7) * (x + 7) / 2); };
  const Callback wide = [](double x) { return 4.2e8 * std::exp(-(x - 11.3) * (x - 11.3) / 18); };
  const double bump = 1e9 * std::sqrt(2 * kPi) * 0.5 * std::erfc(-7 / std::sqrt(2.0));
  EXPECT_NEAR(math_Integral1D(right, 0, kInf, -1) / bump, 1.0, 1e-11);
  EXPECT_NEAR(math_Integral1D(left, -kInf, 0, -1) / bump, 1.0, 1e-11);
  EXPECT_NEAR(math_Integral1D(right, kInf, 0, -1) / -bump, 1.0, 1e-11);
  EXPECT_NEAR(math_Integral1D(wide, -kInf, kInf, -1) / (4.2e8 * 3 * std::sqrt(2 * kPi)), 1.0, 1e-11);
  // A tail that only ends beyond 1e20.
  const Callback tailed = [](double x) { return 1e9 * std::exp(-(x - 7) * (x - 7) / 2) + 1e6 * std::pow(1 + x, -1.5); };
  EXPECT_NEAR(math_Integral1D(tailed, 0, kInf, -1) / (bump + 2e6), 1.0, 1e-11);
  // Where the pieces diverge too, so does the answer; taken backwards it changes its sign.
  const Callback constant = [](double) { return 1e9; };
  for (const auto& [a, b] : {std::pair{0.0, kInf}, {100.0, kInf}, {-kInf, 0.0}, {-kInf, -100.0}, {-kInf, kInf}}) {
    EXPECT_EQ(math_Integral1D(constant, a, b, -1), 1e300);
    EXPECT_EQ(math_Integral1D(constant, b, a, -1), -1e300);
  }
}

TEST(Integral, SeveralRanges) {
  const double lows[] = {0, 0, kInf, 1}, highs[] = {1, kInf, 0, kNaN};
  double out[5] = {7, 7, 7, 7, 7};
  math_Integral(decay, lows, highs, 4, out);
  EXPECT_NEAR(out[0], 1 - std::exp(-1.0), 1e-13);
  EXPECT_NEAR(out[1], 1.0, 1e-9);
  EXPECT_NEAR(out[2], -1.0, 1e-9);
  EXPECT_TRUE(std::isnan(out[3]));
  EXPECT_EQ(out[4], 7);
  calls = 0;
  math_Integral(rough, lows, highs, 1, out);
  EXPECT_EQ(calls, 3 + 6 * 17);
  math_Integral(rough, lows, highs, -1, out);
  EXPECT_EQ(calls, 3 + 6 * 17);
}

std::vector<double> sampled(int32_t count, double step, double (*f)(double)) {
  std::vector<double> v;
  for (int32_t i = 0; i < count; ++i) v.push_back(f(i * step));
  return v;
}

std::vector<double> running(const std::vector<double>& values, double step, uint8_t mode) {
  std::vector<double> out(values.size() + 1, 7.0);
  data_Integral(values.data(), out.data(), step, static_cast<int32_t>(values.size()), mode);
  EXPECT_EQ(out.back(), 7.0);  // count values and no more
  out.pop_back();
  return out;
}

TEST(SampledIntegral, ExactnessOfEachRule) {
  const Callback line = [](double x) { return 3 - 2 * x; }, parabola = [](double x) { return 1 + x - 3 * x * x; },
                 cubic = [](double x) { return 4 * x * x * x; };
  for (double step : {0.5, -0.25})
    for (int32_t count : {1, 2, 3, 4, 9, 10}) {
      for (uint8_t mode : kModes) {
        const std::vector<double> out = running(sampled(count, step, line), step, mode);
        for (int32_t i = 0; i < count; ++i) EXPECT_NEAR(out[i], 3 * i * step - std::pow(i * step, 2), 1e-13);
      }
      if (count < 3) continue;
      const std::vector<double> second = running(sampled(count, step, parabola), step, 1);
      const std::vector<double> third = running(sampled(count, step, cubic), step, 1);
      for (int32_t i = 0; i < count; ++i) {
        const double x = i * step;
        EXPECT_NEAR(second[i], x + x * x / 2 - x * x * x, 1e-12) << count << " " << i;
        if (i % 2 == 0) {
          EXPECT_NEAR(third[i], std::pow(x, 4), 1e-11);
        }
      }
    }
  // One trapezoid under the parabola x^2 is too large by step^3/6.
  const std::vector<double> out = running({0, 1, 4}, 1, 0);
  EXPECT_EQ(out, (std::vector<double>{0, 0.5, 3}));
}

TEST(SampledIntegral, NaturalSpline) {
  const std::vector<double> samples{0, 1, 4, 2, -3, 0.5, 7};
  checkReference("numeric/samples.csv", [&](const ReferenceRow& row) {
    const auto count = static_cast<std::ptrdiff_t>(row.arguments[0]);
    return running({samples.begin(), samples.begin() + count}, 0.25, 2)[static_cast<std::size_t>(row.arguments[1])];
  });
}

TEST(SampledIntegral, EdgesAndPlace) {
  double values[] = {1, 2, 5}, out = 7;
  for (uint8_t mode : kModes) {
    data_Integral(values, &out, 1, 0, mode);
    data_Integral(values, &out, 1, -4, mode);
    EXPECT_EQ(out, 7);
  }
  data_Integral(values, values, 1, 3, 0);
  EXPECT_EQ(std::vector<double>(values, values + 3), (std::vector<double>{0, 1.5, 5}));
  const std::vector<double> gap = running({1, 2, kNaN, 3}, 1, 0);
  EXPECT_EQ(gap[1], 1.5);
  EXPECT_TRUE(std::isnan(gap[2]) && std::isnan(gap[3]));
}

}  // namespace
