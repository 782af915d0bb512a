// SPDX-License-Identifier: Apache-2.0
// Random arrays by their distributions and their fixed streams; the shuffle.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <numeric>
#include <random>
#include <vector>

#include "orvane/array.h"

namespace {

std::vector<double> drawn(int32_t count, uint8_t wide, uint64_t seed, uint8_t code) {
  std::vector<double> values(static_cast<std::size_t>(count));
  apiFun_randFun(values.data(), count, wide, seed, code);
  return values;
}

double normalCdf(double x) { return std::erfc(-x / std::sqrt(2.0)) / 2; }

struct Distribution {
  uint8_t code;
  double (*cdf)(double);
};

constexpr Distribution kDistributions[] = {
    {200, normalCdf},
    {201, [](double x) { return 0.5 + std::atan(x) / 3.141592653589793; }},
    {202, [](double x) { return 1 - std::exp(-x); }},
    {203, [](double x) { return normalCdf(std::log(x)); }},
    {204, [](double x) { return 1 - std::exp(-x * x / 2); }},
};

TEST(RandFun, FollowsItsDistribution) {
  constexpr int32_t kCount = 20000;
  for (const Distribution& d : kDistributions)
    for (const uint8_t wide : {0, 1}) {
      std::vector<double> values = drawn(kCount, wide, 2024, d.code);
      // Neighbours are independent: the correlation of their probabilities is normal with deviation 1/sqrt(count).
      double correlation = 0;
      for (std::size_t i = 1; i < values.size(); ++i)
        correlation += 12 * (d.cdf(values[i]) - 0.5) * (d.cdf(values[i - 1]) - 0.5);
      EXPECT_LT(std::abs(correlation / std::sqrt(kCount)), 4) << int{d.code};
      std::sort(values.begin(), values.end());
      double distance = 0;
      for (std::size_t i = 0; i < values.size(); ++i) {
        const double p = d.cdf(values[i]);
        distance = std::max({distance, p - static_cast<double>(i) / kCount, (static_cast<double>(i) + 1) / kCount - p});
      }
      EXPECT_LT(distance * std::sqrt(kCount), 1.95) << int{d.code};  // Kolmogorov, 0.1 %
    }
}

TEST(RandFun, StreamIsFixedBySeedAndGenerator) {
  for (const Distribution& d : kDistributions)
    for (const uint8_t wide : {0, 1}) {
      const std::vector<double> values = drawn(50, wide, 5, d.code);
      EXPECT_EQ(values, drawn(50, wide == 0 ? 0 : 200, 5, d.code));
      const std::vector<double> longer = drawn(51, wide, 5, d.code);
      EXPECT_TRUE(std::equal(values.begin(), values.end(), longer.begin()));
      EXPECT_NE(values, drawn(50, wide, 6, d.code));
      EXPECT_NE(values, drawn(50, wide, 5 + (uint64_t{1} << 32), d.code));  // the seed's upper half counts
      EXPECT_NE(values, drawn(50, 1 - wide, 5, d.code));
    }
  // The 64-bit generator of the standard has 9981545732273789042 as its 10000th word from seed 5489.
  const double u = static_cast<double>(9981545732273789042u >> 11) * 0x1p-53;
  EXPECT_NEAR(drawn(10000, 1, 5489, 202).back(), -std::log(1 - u), 1e-14);
}

TEST(RandFun, OtherCodesDoNothing) {
  for (int code = 0; code < 256; ++code) {
    double value = 123.456;
    apiFun_randFun(&value, 0, 0, 1, static_cast<uint8_t>(code));
    EXPECT_EQ(value, 123.456);
    apiFun_randFun(&value, 1, 0, 1, static_cast<uint8_t>(code));
    EXPECT_EQ(value != 123.456, code >= 200 && code <= 204) << code;
  }
}

template <class Element>
void checkShuffle(int32_t type) {
  std::vector<Element> values(100), sorted(100);
  std::iota(sorted.begin(), sorted.end(), Element{1});
  values = sorted;
  api_RandomShuffle(values.data(), 100, type);
  EXPECT_NE(values, sorted);  // equal once in 100!
  std::sort(values.begin(), values.end());
  EXPECT_EQ(values, sorted);
}

TEST(RandomShuffle, KeepsTheElements) {
  checkShuffle<int32_t>(0);
  checkShuffle<double>(1);
  checkShuffle<uint8_t>(2);
  std::vector<double> values = {1, 2, 3};
  const std::vector<double> original = values;
  for (const int32_t type : {3, -1, 1000}) api_RandomShuffle(values.data(), 3, type);
  for (const int32_t count : {0, 1, -4}) api_RandomShuffle(values.data(), count, 1);
  EXPECT_EQ(values, original);
}

TEST(RandomShuffle, AllOrdersAreEquallyLikely) {
  constexpr int kRounds = 6000;
  std::map<std::array<int32_t, 3>, int> counts;
  for (int i = 0; i < kRounds; ++i) {
    std::array<int32_t, 3> values = {1, 2, 3};
    api_RandomShuffle(values.data(), 3, 0);
    ++counts[values];
  }
  ASSERT_EQ(counts.size(), 6u);
  double chiSquare = 0;
  for (const auto& [order, count] : counts) chiSquare += std::pow(count - kRounds / 6.0, 2) / (kRounds / 6.0);
  EXPECT_LT(chiSquare, 70);  // five degrees of freedom: exceeded once in 10^13
}

}  // namespace
