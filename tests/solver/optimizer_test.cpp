// SPDX-License-Identifier: Apache-2.0
#include <atomic>
#include <cmath>
#include <limits>
#include <tuple>

#include "solver/host.h"

namespace {

constexpr double kNoValue = 1.449459118e308;

std::atomic<int> notified{0};
std::atomic<int> calls{0};
std::atomic<bool> gate{false};
std::atomic<double> firstSeen{0.0};
std::atomic<int> limited{0};

double shiftedSphere(const double* x) { return (x[0] - 3.0) * (x[0] - 3.0) + (x[1] + 4.0) * (x[1] + 4.0); }
double gated(const double* x) {
  while (!gate) std::this_thread::yield();
  return 1.0 + sphere2(x);
}
double counted(const double* x) {
  if (calls++ == 0) firstSeen = x[0];
  return 1.0 + sphere2(x);
}
double undefined(const double*) { return std::numeric_limits<double>::quiet_NaN(); }
double halfUndefined(const double* x) { return x[0] < 0.0 ? std::nan("") : 1.0 + sphere2(x); }
void ontoDiagonal(double* x) {
  ++limited;
  x[1] = x[0];
}

TEST(State, FollowsSolverFunctionAndRun) {
  Host host;
  double x[2] = {7.0, 7.0}, info[4];
  EXPECT_EQ(os_getState(host.os), 1);
  EXPECT_EQ(os_solve(host.os), 0);
  EXPECT_EQ(os_stop(host.os), 0);
  EXPECT_EQ(os_randValue(host.os), 0);
  EXPECT_EQ(os_getCurrentInfo(host.os, info), 0);
  EXPECT_EQ(os_getOptVar(host.os, x), kNoValue);
  host.solver(11, 10, 10, 0.0);
  EXPECT_EQ(os_getState(host.os), 1);
  host.solver(1, 10, 10, 0.0);
  EXPECT_EQ(os_getState(host.os), 2);
  EXPECT_EQ(os_solve(host.os), 0);
  const double bound = 1.0;
  os_setMaxVar(host.os, &bound, 1);  // no function yet: nothing
  for (const int32_t n : {0, -1, 1000001}) {
    os_setFun(host.os, sphere2, nullptr, nullptr, 1, n);
    EXPECT_EQ(os_getState(host.os), 2) << n;
  }
  EXPECT_EQ(os_getOptVar(host.os, x), kNoValue);
  EXPECT_EQ(x[0], 7.0);
  os_setFun(host.os, sphere2, nullptr, nullptr, 1, 2);
  EXPECT_EQ(os_getState(host.os), 0);
  os_setFun(host.os, shiftedSphere, nullptr, nullptr, 1, 1000001);  // leaves sphere2 in place
  host.variables = 2;
  EXPECT_LT(host.run(), 2.0 * 100.0 * 100.0);
  EXPECT_NEAR(host.best(), sphere2(host.x.data()), 1e-12);
}

TEST(State, RefusesEverythingWhileItRuns) {
  gate = false;
  Host host;
  host.fun(gated, 2, -5.0, 5.0);
  host.solver(1, 5, 20, 0.0);
  EXPECT_EQ(os_solve(host.os), 1);
  EXPECT_EQ(os_getState(host.os), 4);
  EXPECT_EQ(os_solve(host.os), 0);
  EXPECT_EQ(os_randValue(host.os), 0);
  double x[2] = {7.0, 8.0};
  EXPECT_EQ(os_getOptVar(host.os, x), kNoValue);
  EXPECT_EQ(x[0], 7.0);
  EXPECT_EQ(x[1], 8.0);
  gate = true;
  EXPECT_TRUE(host.wait());
  EXPECT_EQ(host.info()[0], 1.0);  // the refused one did not count
  EXPECT_EQ(host.info()[1], 20.0);
  EXPECT_GE(host.best(), 1.0);
  EXPECT_EQ(os_randValue(host.os), 1);
}

TEST(Stop, IsHonouredBeforeTheLoopHasBegun) {
  // The worker stands in its first evaluation, before the run lowers the stop flag.
  gate = false;
  Host host(3);
  host.fun(gated, 2, -5.0, 5.0);
  host.solver(1, 5, int64_t{1} << 60, 0.0);
  os_setDoneFun(host.os, [](int32_t one) { notified += one; });
  notified = 0;
  EXPECT_EQ(os_solve(host.os), 1);
  EXPECT_EQ(os_stop(host.os), 1);
  gate = true;
  ASSERT_TRUE(host.wait());
  EXPECT_EQ(host.info()[0], 1.0);  // no further run after a stop
  EXPECT_EQ(host.info()[1], 0.0);
  for (int i = 0; i < 5000 && notified == 0; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  EXPECT_EQ(notified, 1);
}

TEST(Tries, AreCountedOverTheObjectsLifeAndToldOnce) {
  Host host(3);
  host.fun(counted, 2, -5.0, 5.0);
  host.solver(1, 6, 15, 0.0);
  os_setDoneFun(host.os, [](int32_t one) { notified += one; });
  notified = 0;
  calls = 0;
  double last = 1e300;
  for (const double tries : {3.0, 4.0}) {
    const double value = host.run();
    EXPECT_LE(value, last);  // a later run continues from the population
    last = value;
    EXPECT_EQ(host.info()[0], tries);
  }
  for (int i = 0; i < 5000 && notified < 2; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  EXPECT_EQ(notified, 2);
  EXPECT_EQ(calls, 4 * (6 + 15 * 6));  // one evaluation of each candidate at the start and in each iteration
}

TEST(Tries, ReachedTargetEndsARunWithoutIterations) {
  for (uint8_t kind = 1; kind <= 10; ++kind) {
    if (kind == 5 || kind == 6) continue;  // their iterations count from 1
    Host host;
    host.fun(sphere2, 2, -5.0, 5.0);
    host.solver(kind, 5, 1000, 1e6);
    EXPECT_LT(host.run(), 50.0 + 1e-9);
    EXPECT_EQ(host.info()[1], 0.0) << "kind " << int{kind};
  }
}

TEST(Bounds, TakeOneValueOrOneEach) {
  Host host;
  host.fun(shiftedSphere, 2, -1.0, 1.0);
  const double hi[] = {2.0, -2.0}, lo[] = {-10.0, -3.0}, wrong[] = {50.0, 50.0, 50.0};
  os_setMaxVar(host.os, hi, 2);
  os_setMinVar(host.os, lo, 2);
  os_setMaxVar(host.os, wrong, 3);
  os_setMinVar(host.os, wrong, 0);
  host.solver(2, 20, 200, 1e-12);
  EXPECT_NEAR(host.run(), 2.0, 1e-6);  // (2, -3) is the nearest corner to (3, -4)
  EXPECT_NEAR(host.x[0], 2.0, 1e-6);
  EXPECT_NEAR(host.x[1], -3.0, 1e-6);
}

TEST(Bounds, SwappedOnesArePutRightAndNewVariablesLoseThem) {
  Host host;
  host.fun(shiftedSphere, 2, 4.0, -4.0);
  host.solver(2, 20, 200, 1e-12);
  EXPECT_LT(host.run(), 1e-6);
  os_setFun(
      host.os, [](const double* x) { return std::abs(x[0] - 90.0); }, nullptr, nullptr, 1, 1);
  host.variables = 1;
  os_randValue(host.os);
  EXPECT_EQ(host.x.size(), 2u);
  EXPECT_LT(host.run(), 1e-6);  // the best of the old function stays: it is the lower value
  Host fresh;
  os_setFun(
      fresh.os, [](const double* x) { return 1.0 + std::abs(x[0] - 90.0); }, nullptr, nullptr, 1, 1);
  fresh.variables = 1;
  fresh.solver(2, 20, 300, 1.0 + 1e-9);
  EXPECT_NEAR(fresh.run(), 1.0, 1e-6);
  EXPECT_NEAR(fresh.x[0], 90.0, 1e-6);  // default bounds reach to 100
}

TEST(Limit, ProjectsEveryCandidate) {
  limited = 0;
  Host host;
  host.fun(shiftedSphere, 2, -10.0, 10.0, ontoDiagonal);
  host.solver(10, 15, 150, 0.0);
  EXPECT_NEAR(host.run(), 24.5, 1e-3);  // on x = y the minimum is at -1/2
  EXPECT_EQ(host.x[0], host.x[1]);
  EXPECT_GT(limited, 15);
  // A null limit function clears the projection; a null cost keeps the objective.
  os_setFun(host.os, nullptr, nullptr, nullptr, 1, 2);
  EXPECT_LT(host.run(), 1.0);
}

TEST(InitValue, IsEvaluatedFirstAndOnce) {
  Host host;
  host.fun(counted, 2, -5.0, 5.0);
  host.solver(1, 6, 1, 0.0);
  const double start[] = {4.25, 1.0}, wrong[] = {4.25};
  os_setInitValue(host.os, start, 2);
  calls = 0;
  host.run();
  EXPECT_EQ(firstSeen, 4.25);
  EXPECT_LE(host.best(), 1.0 + sphere2(start));
  os_randValue(host.os);
  os_setInitValue(host.os, wrong, 1);
  calls = 0;
  host.run();
  EXPECT_NE(firstSeen, 4.25);
}

TEST(NaN, NeitherCrashesNorWins) {
  for (uint8_t kind = 1; kind <= 10; ++kind) {
    Host host;
    host.fun(undefined, 2, -5.0, 5.0);
    host.solver(kind, 6, 20, 0.0);
    EXPECT_GE(host.run(), 1e300) << "kind " << int{kind};
    EXPECT_EQ(host.info()[3], kNoValue);
    Host half;
    half.fun(halfUndefined, 2, -5.0, 5.0);
    half.solver(kind, 10, 30, 0.0);
    const double value = half.run();
    EXPECT_GE(half.x[0], 0.0);
    EXPECT_DOUBLE_EQ(value, halfUndefined(half.x.data())) << "kind " << int{kind};
  }
}

TEST(Population, TooSmallNeverEndsItsStart) {
  for (const auto& [kind, few, least] : {std::tuple<uint8_t, uint32_t, uint32_t>{2, 1, 2},
                                         {7, 2, 3},
                                         {8, 2, 3},
                                         {9, 2, 3},
                                         {1, 0, 1},
                                         {3, 1u << 31, 1}}) {
    Host host;
    host.fun(sphere2, 2, -5.0, 5.0);
    os_setDoneFun(host.os, [](int32_t) { ++notified; });
    notified = 0;
    host.solver(kind, few, 5, 0.0);
    EXPECT_EQ(host.info(), (std::vector<double>{0, 0, 0, 0}));  // before the first evaluation
    EXPECT_EQ(os_solve(host.os), 1);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(os_getState(host.os), 4) << "kind " << int{kind};
    EXPECT_EQ(os_solve(host.os), 0);
    EXPECT_EQ(notified, 0);
    host.solver(kind, least, 5, 0.0);
    EXPECT_LE(host.run(), 50.0);
  }
  for (const uint8_t kind : {1, 3, 4, 5, 6, 10}) {
    Host host;
    host.fun(sphere2, 2, -5.0, 5.0);
    host.solver(kind, 1, 50, 0.0);
    EXPECT_LE(host.run(), 50.0) << "one candidate, kind " << int{kind};
  }
}

}  // namespace
