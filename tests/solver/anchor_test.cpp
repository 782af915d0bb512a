// SPDX-License-Identifier: Apache-2.0
#include "solver/anchor_fun.h"

#include <cmath>

#include "solver/opt_function.h"
#include "support/reference.h"

namespace {

using namespace Solver;

uint8_t mode(double value) { return static_cast<uint8_t>(value); }

TEST(Anchor, TransformsAgreeWithMpmath) {
  checkReference("solver/anchor_transform.csv", [](const ReferenceRow& row) {
    return AnchorFun::transform(mode(row.arguments[0]), row.arguments[1]);
  });
}

TEST(Anchor, DeflatedSurfaceAgreesWithMpmath) {
  checkReference("solver/anchor_deflate.csv", [](const ReferenceRow& row) {
    AnchorFun anchor;
    anchor.setModes(mode(row.arguments[0]), mode(row.arguments[1]));
    anchor.anchorVar.resize(static_cast<std::size_t>(row.arguments[4]));
    return anchor.deflate(row.arguments[2], row.arguments[3]);
  });
}

TEST(Anchor, TunnelsDownAndKeepsTheBest) {
  AnchorFun anchor;
  auto function = std::make_shared<OptFunction>(1);
  function->valueFun = [](const double* x) { return x[0] * x[0] - 4.0; };
  anchor.inner = function;
  anchor.anchorVar = {1.0};
  anchor.anchorBestVar = {1.0};
  anchor.anchorValue = -3.0;
  anchor.anchorBest = -3.0;
  EXPECT_EQ(anchor.calcValue({1.0}), anchor.deflate(0.0, 0.0));
  EXPECT_NEAR(anchor.calcValue({1.0}), 1e15, 1e3);  // 1/(0.001 * 1e-12)
  EXPECT_EQ(anchor.calcValue({3.0}), anchor.deflate(8.0, 4.0));
  EXPECT_EQ(anchor.calcValue({0.9}), anchor.deflate(std::abs(0.9 * 0.9 - 4.0 + 3.0), (0.9 - 1.0) * (0.9 - 1.0)));
  EXPECT_EQ(anchor.anchorBest, 0.9 * 0.9 - 4.0);
  EXPECT_EQ(anchor.calcValue({0.5}), -0.75);  // below and away: the difference itself
  EXPECT_EQ(anchor.anchorBestVar, std::vector<double>{0.5});
  anchor.anchorValue = 0.0;
  EXPECT_EQ(anchor.calcValue({0.99}), 0.99 * 0.99 - 4.0);  // more than 1 below: near the anchor too
  EXPECT_EQ(anchor.innerValue, 0.99 * 0.99 - 4.0);
}

TEST(Anchor, CloneSharesTheInnerObjective) {
  AnchorFun anchor;
  anchor.inner = std::make_shared<OptFunction>(2);
  anchor.active = uint8_t{1};
  anchor.anchorVar = {1.0, 2.0};
  anchor.setModes(3, 4);
  const auto copy = anchor.clone();
  auto& other = dynamic_cast<AnchorFun&>(*copy);
  EXPECT_EQ(other.inner, anchor.inner);
  EXPECT_EQ(other.active, 1);
  EXPECT_EQ(other.deflate(50.0, 1e9), anchor.deflate(50.0, 1e9));
  EXPECT_EQ(other.varSize, 1);
}

TEST(Objective, RangeListAndDifferences) {
  OptFunction function(3);
  function.setRange(5.0, -2.0);
  EXPECT_EQ(function.minVar, std::vector<double>(3, -2.0));
  EXPECT_EQ(function.maxVar, std::vector<double>(3, 5.0));
  function.setErrorList({1.0, 2.5, -0.5});
  EXPECT_EQ(function.lastValue, 3.0);
  EXPECT_EQ(function.calcValue({0.0, 0.0, 0.0}), kNoValue);
  function.valueFun = [](const double* x) { return x[0] * x[0] + 3.0 * x[1] + (x[2] > 0.0 ? std::nan("") : 0.0); };
  std::vector<double> x = {2.0, 1.0, 0.0}, g(3, 9.0);
  function.calcGradient(x, 1e-4, g, {0, 2, 1}, 2);
  EXPECT_NEAR(g[0], 4.0, 1e-8);
  EXPECT_EQ(g[1], 0.0);  // not among the first two
  EXPECT_EQ(g[2], 0.0);  // NaN on one side
  EXPECT_EQ(x, (std::vector<double>{2.0, 1.0, 0.0}));
  EXPECT_TRUE(std::isnan(function.calcValue({0.0, 0.0, 1.0})));
  EXPECT_EQ(function.lastValue, kNoValue);
  function.gradFun = [](const double*, double* out) { out[0] = 42.0; };
  function.calcGradient(x, 1e-4, g, {0, 2, 1}, 0);
  EXPECT_EQ(g[0], 42.0);
  const auto copy = function.clone();
  EXPECT_EQ(dynamic_cast<OptFunction&>(*copy).gradFun, nullptr);
  EXPECT_EQ(copy->calcValue({1.0, 1.0, 0.0}), 4.0);
  EXPECT_EQ(copy->minVar, function.minVar);
}

}  // namespace
