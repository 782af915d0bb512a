// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <orvane/integral.h>

#include <algorithm>

#include "numeric/dense_support.h"

namespace {

using Slope = void (*)(double, const double*, double*);

void decay(double, const double* y, double* dy) { dy[0] = -y[0]; }

// y'' = -4 y: y = cos 2t, y' = -2 sin 2t
void oscillator(double, const double* y, double* dy) {
  dy[0] = y[1];
  dy[1] = -4 * y[0];
}

std::vector<double> solve(Slope f, double t0, std::vector<double> y0, std::vector<double> ts,
                          double tolerance = 1e-12) {
  std::vector<double> out(y0.size() * ts.size() + 1, 7.0);
  math_SolveODE45(f, t0, y0.data(), static_cast<int32_t>(y0.size()), ts.data(), out.data(),
                  static_cast<int32_t>(ts.size()), tolerance);
  EXPECT_EQ(out.back(), 7.0);
  out.pop_back();
  return out;
}

TEST(ODE, OscillatorAtPositionsInAnyOrder) {
  const std::vector<double> ts{3, -1, 0.5, 0.25, 10, 0.5, -7.5, 0.3, 0};
  const std::vector<double> out = solve(oscillator, 0.25, {std::cos(0.5), -2 * std::sin(0.5)}, ts);
  for (std::size_t i = 0; i < ts.size(); ++i) {
    EXPECT_NEAR(out[2 * i], std::cos(2 * ts[i]), 1e-9) << ts[i];
    EXPECT_NEAR(out[2 * i + 1], -2 * std::sin(2 * ts[i]), 1e-9) << ts[i];
  }
  EXPECT_EQ(out[6], std::cos(0.5));  // at the start: the start state itself
  EXPECT_EQ(out[4], out[10]);        // equal positions
}

TEST(ODE, TimeDependentAndStiff) {
  // y' = 2t, exact for the method
  const Slope ramp = [](double t, const double*, double* dy) { dy[0] = 2 * t; };
  EXPECT_NEAR(solve(ramp, -1, {1}, {5})[0], 25.0, 1e-12);
  EXPECT_NEAR(solve(ramp, -1, {1}, {-4})[0], 16.0, 1e-12);
  // y' = -50 (y - cos t), y(0) = 0: a fast transient, then y = (2500 cos t + 50 sin t)/2501
  const Slope stiff = [](double t, const double* y, double* dy) { dy[0] = -50 * (y[0] - std::cos(t)); };
  for (double t : {0.01, 0.1, 2.0, 10.0}) {
    const double expected = (2500 * std::cos(t) + 50 * std::sin(t) - 2500 * std::exp(-50 * t)) / 2501;
    EXPECT_NEAR(solve(stiff, 0, {0}, {t}, 1e-10)[0], expected, 1e-8) << t;
  }
  // logistic growth, forward and backward
  const Slope logistic = [](double, const double* y, double* dy) { dy[0] = y[0] * (1 - y[0]); };
  const std::vector<double> s = solve(logistic, 0, {0.5}, {-8, 8});
  EXPECT_NEAR(s[0], 1 / (1 + std::exp(8.0)), 1e-10);
  EXPECT_NEAR(s[1], 1 / (1 + std::exp(-8.0)), 1e-10);
}

// Robertson's chemical kinetics (1966), rates of 0.04, 1e4 and 3e7: what an explicit method does with a stiff problem.
// The states are those of SciPy's Radau and LSODA at 1e-12, which agree to 1e-11.
TEST(ODE, RobertsonsProblem) {
  const Slope kinetics = [](double, const double* y, double* dy) {
    dy[0] = -0.04 * y[0] + 1e4 * y[1] * y[2];
    dy[2] = 3e7 * y[1] * y[1];
    dy[1] = -dy[0] - dy[2];
  };
  const std::vector<double> y = solve(kinetics, 0, {1, 0, 0}, {0.4, 4, 40}, 1e-10);
  const double expected[] = {0.98517211386, 3.386395379e-05, 0.014794022185, 0.90551867858, 2.2404756876e-05,
                             0.0944589166,  0.71582706872,   9.18553476e-06, 0.28416374574};
  for (std::size_t i = 0; i < y.size(); ++i) EXPECT_NEAR(y[i], expected[i], i % 3 == 1 ? 1e-10 : 1e-8) << i;
}

TEST(ODE, ErrorFollowsTheTolerance) {
  double last = 1;
  for (double tolerance : {1e-4, 1e-6, 1e-8, 1e-10}) {
    const double error = std::abs(solve(decay, 0, {1}, {4}, tolerance)[0] - std::exp(-4.0));
    EXPECT_LE(error, 30 * tolerance);
    EXPECT_LT(error, last);
    last = error;
  }
}

TEST(ODE, ToleranceIsClampedAndUnsigned) {
  const std::vector<double> finest = solve(oscillator, 0, {1, 0}, {2}, 1e-12);
  for (double tolerance : {0.0, 1e-13, -1e-13, -1e-12, kNaN})
    EXPECT_EQ(solve(oscillator, 0, {1, 0}, {2}, tolerance), finest) << tolerance;
  EXPECT_EQ(solve(oscillator, 0, {1, 0}, {2}, -1e-3), solve(oscillator, 0, {1, 0}, {2}, 1e-3));
  EXPECT_NE(solve(oscillator, 0, {1, 0}, {2}, 1e-3), finest);
}

std::vector<double> seen;

TEST(ODE, StepsAreTheDistanceHalvedAndDoubled) {
  // Without error one step leads to each position: six evaluations at Fehlberg's nodes.
  const Slope constant = [](double t, const double* y, double* dy) {
    EXPECT_NEAR(y[0], t, 1e-14 * (1 + t));  // the rows of the method add up to its nodes
    seen.push_back(t);
    dy[0] = 1;
  };
  seen.clear();
  EXPECT_EQ(solve(constant, 0, {0}, {4, 52}), (std::vector<double>{4, 52}));
  ASSERT_GE(seen.size(), 12u);
  EXPECT_EQ(std::vector<double>(seen.begin(), seen.begin() + 6), (std::vector<double>{0, 1, 1.5, 48.0 / 13, 4, 2}));
  EXPECT_EQ(seen[6], 4.0);
  EXPECT_EQ(seen[7], 6.0);         // twice the last step
  EXPECT_EQ(seen[13], 16.0);       // from 12, twice that
  EXPECT_EQ(seen.size(), 6u * 4);  // 4, 12, 28, and 52 by a step of 32 clipped to 24
  // A refused step is halved and starts at the same place.
  const Slope growth = [](double t, const double* y, double* dy) {
    seen.push_back(t);
    dy[0] = 10 * y[0];
  };
  seen.clear();
  EXPECT_NEAR(solve(growth, 0, {1}, {1}, 1e-6)[0] / std::exp(10.0), 1.0, 1e-6);
  EXPECT_EQ(seen[1], 0.25);
  EXPECT_EQ(seen[6], 0.0);
  EXPECT_EQ(seen[7], 0.125);
}

TEST(ODE, MinimumStepIsAcceptedWhateverItsError) {  // kept.csv: ODE_minStep
  // A jump of the slope to 1e9: the step across it cannot meet the tolerance and is off by some 1e9 * 1e-6.
  const Slope jump = [](double t, const double*, double* dy) { dy[0] = t < 1.0 / 3 ? 0 : 1e9; };
  const double y = solve(jump, 0, {0}, {1}, 1e-3)[0];
  EXPECT_NEAR(y, 1e9 * 2 / 3, 1e3);
}

TEST(ODE, OddInputsEnd) {
  const std::vector<double> out = solve(decay, 0, {1}, {kNaN, 1, kInf, -kInf, -1, 5e-16});
  EXPECT_TRUE(std::isnan(out[0]) && std::isnan(out[2]) && std::isnan(out[3]));
  EXPECT_NEAR(out[1], std::exp(-1.0), 1e-10);
  EXPECT_NEAR(out[4], std::exp(1.0), 1e-10);
  EXPECT_EQ(out[5], 1.0);  // nearer to the start than 1e-15
  EXPECT_TRUE(allNaN(solve(decay, kNaN, {1}, {0, 1})));
  EXPECT_TRUE(allNaN(solve(decay, 0, {kNaN}, {1, -1})));
  EXPECT_TRUE(allNaN(solve(decay, 0, {kInf}, {1e6})));

  const Slope root = [](double t, const double*, double* dy) { dy[0] = std::sqrt(1 - t); };  // undefined beyond 1
  const std::vector<double> beyond = solve(root, 0, {0}, {0.75, 2e5});
  EXPECT_NEAR(beyond[0], (1 - std::pow(0.25, 1.5)) * 2 / 3, 1e-11);
  EXPECT_TRUE(std::isnan(beyond[1]));

  // So far out that a step of 1e-6 no longer moves t.
  EXPECT_NEAR(solve(decay, 1e12, {1}, {1e12 + 1})[0], std::exp(-1.0), 1e-3);
  EXPECT_NEAR(solve(decay, -1e12, {1}, {-1e12 - 1})[0], std::exp(1.0), 1e-3);

  double untouched = 7;
  math_SolveODE45(decay, 0, &untouched, 1, &untouched, &untouched, 0, 1e-9);
  math_SolveODE45(decay, 0, &untouched, 0, &untouched, &untouched, 1, 1e-9);
  math_SolveODE45(decay, 0, &untouched, -1, &untouched, &untouched, -2, 1e-9);
  EXPECT_EQ(untouched, 7);
}

}  // namespace
