// SPDX-License-Identifier: Apache-2.0
#include "orvane/loss.h"

#include <numbers>

#include "orvane/frame.h"
#include "support/numbers.h"
#include "support/reference.h"

namespace {

constexpr int32_t kKinds[] = {0, 1, 2, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 60, 61, 62, 63, 64, 100};

/// A loss for as long as a test needs it; k NaN leaves the scale as it starts.
struct Loss {
  explicit Loss(int32_t kind, double k = kNaN) : handle(api_initLossFun(kind)) {
    if (!std::isnan(k)) api_setLossParam(handle, k);
  }
  ~Loss() { api_FreeHandle(handle); }
  double operator()(const std::vector<double>& y, const std::vector<double>& t) const {
    return api_calcLossFun(handle, y.data(), t.data(), static_cast<int32_t>(y.size()));
  }
  LossFun* handle;
};

TEST(Losses, OnePair) {
  checkReference("solver/losses.csv", [](const ReferenceRow& row) {
    const auto& a = row.arguments;
    return Loss(static_cast<int32_t>(a[0]), a[1])({a[2]}, {a[3]});
  });
}

TEST(Losses, SumOverPairs) {
  const std::vector<double> y{0.1, 0.7, 0.4, 0.9}, t{0.3, 0.1, 0.9, 0.4};
  for (const int32_t kind : kKinds) {
    const Loss loss(kind, 0.5);
    EXPECT_EQ(api_PtrIsNullptr(loss.handle), 0) << kind;
    if (kind == 62 || kind == 63 || kind == 100) continue;
    double sum = 0;
    for (std::size_t i = 0; i < y.size(); ++i) sum += loss({y[i]}, {t[i]});
    EXPECT_EQ(loss(y, t), sum) << kind;
    EXPECT_EQ(loss({}, {}), 0.0) << kind;
    EXPECT_EQ(api_calcLossFun(loss.handle, y.data(), t.data(), -3), 0.0) << kind;
    EXPECT_TRUE(std::isnan(loss({kNaN}, {0.5})) || kind == 13 || kind == 14 || kind == 18) << kind;
  }
  for (const int32_t kind : {-1, 3, 9, 20, 59, 65, 99, 101, 2147483647}) EXPECT_EQ(api_initLossFun(kind), nullptr);
}

TEST(Losses, WholeArrays) {
  const std::vector<double> a{1, 2, -2}, b{2, 4, -4}, right{2, -1, 0}, opposite{-3, -6, 6}, zero{0, 0, 0};
  const Loss cos1(62), cos2(63), byClass(100);
  EXPECT_NEAR(cos1(a, b), 0.0, 4e-16);
  EXPECT_NEAR(cos1(a, opposite), 0.0, 4e-16);
  EXPECT_EQ(cos1(a, right), 1.0);
  EXPECT_EQ(cos1(a, zero), 0.0);
  EXPECT_NEAR(cos1({1, 0}, {1, 1}), 1.0 - 1.0 / std::numbers::sqrt2, 2e-16);
  EXPECT_EQ(cos2(a, b), 2.0);  // kept.csv: Loss_Cos2
  EXPECT_EQ(cos2(a, opposite), 0.0);
  EXPECT_EQ(cos2(a, zero), 0.0);
  EXPECT_NEAR(cos2({1, 0}, {-1, 1}), 0.5, 4e-16);
  EXPECT_EQ(byClass({1, 1, 1}, {1, -1, -1}), 0.0);  // kept.csv: Loss_Class
  EXPECT_EQ(byClass({-1, 1}, {1, -1}), 0.0);
  EXPECT_TRUE(std::isnan(byClass({}, {})));
}

TEST(Losses, Kept) {
  EXPECT_EQ(Loss(11)({0}, {10}), 200.0);      // Loss_Huber
  EXPECT_EQ(Loss(11, 10)({0}, {10}), 100.0);  // and with a parameter
  EXPECT_EQ(Loss(13, 10)({0}, {0}), -200.0);  // Loss_Andrews
  EXPECT_EQ(Loss(13, 10)({0}, {100}), 0.0);
  EXPECT_GT(Loss(14, 10)({0}, {9}), 16.0);  // Loss_Bisquare
  EXPECT_EQ(Loss(14, 10)({0}, {11}), 0.0);
  EXPECT_EQ(Loss(15)({0}, {5}), 0.0);  // Loss_Cauchy
  EXPECT_GT(Loss(15, 10)({0}, {5}), 11.0);
}

}  // namespace
