// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <stdexcept>

#include "numeric/csc_sparse.h"
#include "numeric/dense_support.h"
#include "numeric/integral.h"
#include "numeric/ode.h"

namespace {

using Sparse::CSCSparse;

TEST(CSCSparse, DenseThereAndBack) {
  const std::vector<double> a{0, 2, 0, 4, 1, 0, 0, 0, 3, 0, 0, kNaN};
  const CSCSparse m = CSCSparse::fromDense(a, 3, 4);
  EXPECT_EQ(m.colStart, (std::vector<int64_t>{0, 2, 3, 3, 5}));
  EXPECT_EQ(m.rowIndex, (std::vector<int64_t>{1, 2, 0, 0, 2}));
  EXPECT_EQ(std::vector<double>(m.values.begin(), m.values.end() - 1), (std::vector<double>{1, 3, 2, 4}));
  const std::vector<double> back = m.toDense();
  EXPECT_EQ(std::vector<double>(back.begin(), back.end() - 1), std::vector<double>(a.begin(), a.end() - 1));
  EXPECT_TRUE(std::isnan(back.back()));
  EXPECT_EQ(CSCSparse().toDense().size(), 0u);
  EXPECT_EQ(CSCSparse::fromDense({}, 0, 3).colStart, (std::vector<int64_t>{0, 0, 0, 0}));
}

TEST(CSCSparse, TripletsInAnyOrderAddUp) {
  const std::vector<Sparse::Triplet> entries{{1, 1, 5}, {0, 1, 2}, {1, 0, 3}, {1, 1, -1}, {0, 0, 1}};
  const CSCSparse m = CSCSparse::fromTriplets(entries, 2, 2);
  EXPECT_EQ(m.toDense(), (std::vector<double>{1, 2, 3, 4}));
  EXPECT_EQ(m.values.size(), 4u);
  const CSCSparse upper = m.upperTriangle();
  EXPECT_EQ(upper.toDense(), (std::vector<double>{1, 2, 0, 4}));
  EXPECT_EQ(upper.rowIndex, (std::vector<int64_t>{0, 0, 1}));
  for (const Sparse::Triplet& bad : {Sparse::Triplet{2, 0, 1}, {0, 2, 1}, {-1, 0, 1}, {0, -1, 1}})
    EXPECT_THROW(CSCSparse::fromTriplets(std::vector{bad}, 2, 2), std::out_of_range);
}

TEST(IntegralRoutines, PanelPositionsAndWeights) {
  std::vector<double> seen;
  const double value = Integral::integralPanel3(
      [&](double x) {
        seen.push_back(x);
        return 1.0;
      },
      1, 3);
  EXPECT_DOUBLE_EQ(value, 2.0);
  ASSERT_EQ(seen.size(), 3u);
  EXPECT_EQ(seen[0], 2.0);
  EXPECT_NEAR(seen[1], 2 - std::sqrt(0.6), 4 * kEps);
  EXPECT_NEAR(seen[2], 2 + std::sqrt(0.6), 4 * kEps);
}

TEST(IntegralRoutines, RawHasNoGuardsAndAcceptsEquality) {
  const auto big = [](double) { return 1e12; };
  EXPECT_EQ(Integral::integralAdaptive(big, 0, 1, 8), 1e300);
  EXPECT_NEAR(Integral::integralAdaptiveRaw(big, 0, 1, 8), 1e12, 1e-3);
  int calls = 0;
  const auto zero = [&](double) {
    ++calls;
    return 0.0;
  };
  Integral::integralAdaptiveRaw(zero, 0, 1, 8, 0.0);
  EXPECT_EQ(calls, 9);  // a difference of 0 is <= 0 ...
  calls = 0;
  Integral::integralAdaptive(zero, 0, 1, 8, 0.0);
  EXPECT_EQ(calls, 3 + 6 * 9);  // ... but not < 0
  EXPECT_TRUE(std::isnan(Integral::integralAdaptiveRaw([](double) { return kNaN; }, 0, 1, 8)));
}

TEST(ODESolver, StopEndsBothDirections) {
  ODE::BaseODESolver* running = nullptr;
  int calls = 0;
  const auto slope = [&](double, const double* y, double* dy) {
    dy[0] = -y[0];
    EXPECT_EQ(running->running, 1);
    if (++calls == 60) running->stopFlag = 1;
  };
  ODE::ODESolverByRKF45 solver(slope, 0.0, {1.0});
  running = &solver;
  const std::vector<double> ts{100, -1, 0};
  solver.setPositions(ts);
  ASSERT_EQ(solver.ahead.size(), 2u);
  EXPECT_EQ(solver.ahead[0].index, 2);
  solver.solve();
  EXPECT_EQ(calls, 60);
  EXPECT_EQ(solver.running, 0);
  EXPECT_EQ(solver.ahead[0].state, std::vector<double>{1.0});
  EXPECT_TRUE(solver.behind[0].state.empty());
  solver.solve();  // a new run clears the stop
  EXPECT_NEAR(solver.behind[0].state[0], std::exp(1.0), 1e-10);
}

TEST(ODESolver, LargestErrorIsThatOfAcceptedSteps) {
  const auto slope = [](double, const double* y, double* dy) { dy[0] = -y[0]; };
  ODE::ODESolverByRKF45 solver(slope, 0.0, {1.0});
  solver.errorLimit = 1e-8;
  solver.setPositions(std::vector<double>{5.0});
  solver.solve();
  EXPECT_GT(solver.maxError, 0.0);
  EXPECT_LT(solver.maxError, 1e-8);
  // With a minimum step above the whole distance the first step is taken as it is.
  solver.minStep = 10;
  solver.solve();
  EXPECT_GT(solver.maxError, 1e-3);
}

}  // namespace
