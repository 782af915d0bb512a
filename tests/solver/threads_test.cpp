// SPDX-License-Identifier: Apache-2.0
// Starting, watching, stopping and releasing at random moments; ThreadSanitizer and AddressSanitizer hold it too.
#include <atomic>
#include <cmath>
#include <random>

#include "solver/host.h"

namespace {

std::atomic<int> told{0};

double cost(const double* x) { return 1.0 + sphere2(x); }

void pause(std::mt19937& rng, int most) {
  std::this_thread::sleep_for(std::chrono::microseconds(std::uniform_int_distribution<int>(0, most)(rng)));
}

class Load : public testing::TestWithParam<int> {};

TEST_P(Load, StopsAtAnyMoment) {
  std::mt19937 rng(static_cast<uint32_t>(GetParam()));
  const auto kind = static_cast<uint8_t>(GetParam());
  told = 0;
  const int rounds = 40;
  for (int i = 0; i < rounds; ++i) {
    Host host(5);
    host.fun(cost, 2, -5.0, 5.0);
    os_setDoneFun(host.os, [](int32_t one) { told += one; });
    host.solver(kind, 6, int64_t{1} << 40, -1.0);
    ASSERT_EQ(os_solve(host.os), 1);
    std::thread watcher([&host] {
      double info[4];
      double x[2];
      for (int k = 0; k < 50; ++k) {
        os_getCurrentInfo(host.os, info);
        os_getState(host.os);
        os_getOptVar(host.os, x);
        os_solve(host.os);
      }
    });
    pause(rng, 1500);
    watcher.join();
    std::thread stopper([&host] { os_stop(host.os); });
    stopper.join();
    ASSERT_TRUE(host.wait()) << "a stop was lost in round " << i;
    EXPECT_EQ(host.info()[0], 1.0);
    EXPECT_GE(host.best(), 1.0);
  }
  for (int i = 0; i < 5000 && told < rounds; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  EXPECT_EQ(told, rounds);
}

TEST_P(Load, EndsWhereNextRunsBegin) {
  // Short runs in a row, stopped from another thread: many stops fall between two runs.
  std::mt19937 rng(static_cast<uint32_t>(100 + GetParam()));
  if (GetParam() == 0) GTEST_SKIP() << "a run of the automatic solver is never short";
  for (int i = 0; i < 20; ++i) {
    Host host(4000000000u);
    host.fun(cost, 2, -5.0, 5.0);
    host.solver(static_cast<uint8_t>(GetParam()), 4, 2, -1.0);
    ASSERT_EQ(os_solve(host.os), 1);
    pause(rng, 3000);
    EXPECT_EQ(os_stop(host.os), 1);
    ASSERT_TRUE(host.wait()) << "a stop was lost in round " << i;
    EXPECT_GE(host.info()[0], 1.0);
  }
}

TEST_P(Load, SurvivesAReleaseDuringARun) {
  std::mt19937 rng(static_cast<uint32_t>(200 + GetParam()));
  for (int i = 0; i < 20; ++i) {
    Host host(3);
    host.fun(cost, 2, -5.0, 5.0);
    host.solver(static_cast<uint8_t>(GetParam()), 6, 1000000, -1.0);
    ASSERT_EQ(os_solve(host.os), 1);
    pause(rng, 300);
    api_FreeHandle(std::exchange(host.os, nullptr));  // without a stop
  }
}

OptSolver* asked = nullptr;
std::atomic<int> evaluations{0};
int stopAt = 0;

// Asks for the stop from within an evaluation: that one is the last.
double stoppingCost(const double* x) {
  if (++evaluations == stopAt) os_stop(asked);
  return 1.0 + sphere2(x) + std::cos(40.0 * x[0]);
}

TEST_P(Load, HearsAStopAfterEachEvaluation) {
  std::mt19937 rng(static_cast<uint32_t>(300 + GetParam()));
  Host host(3);
  host.fun(stoppingCost, 2, -5.0, 5.0);
  asked = host.os;
  for (const uint32_t gradients : {0u, 2u}) {
    os_setOptimizer(host.os, static_cast<uint8_t>(GetParam()), gradients, 20, 0, 0, int64_t{1} << 40, -1e9);
    for (int round = 0; round < 60; ++round) {
      // In the first population, in the first iterations and far on.
      stopAt = round < 30 ? 1 + round : std::uniform_int_distribution<int>(1, round < 50 ? 400 : 4000)(rng);
      evaluations = 0;
      ASSERT_EQ(os_solve(host.os), 1);
      ASSERT_TRUE(host.wait());
      EXPECT_EQ(evaluations, stopAt) << gradients;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Kinds, Load, testing::Range(0, 11));

OptSolver* again = nullptr;
std::atomic<int> left{0};

TEST(DoneFunction, MayStartTheNextSearchAndReleaseTheHandle) {
  again = os_createOptSolver(1);
  os_setFun(again, cost, nullptr, nullptr, 1, 2);
  os_setOptimizer(again, 1, 0, 5, 0, 0, 10, -1.0);
  left = 3;
  os_setDoneFun(again, [](int32_t) {
    double x[2];
    EXPECT_GE(os_getOptVar(again, x), 1.0);
    EXPECT_LT(os_getOptVar(again, x), 1e300);
    if (left.load() > 1) {
      --left;
      EXPECT_EQ(os_solve(again), 1);
    } else {
      api_FreeHandle(again);
      left = 0;
    }
  });
  ASSERT_EQ(os_solve(again), 1);
  for (int i = 0; i < 20000 && left != 0; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  EXPECT_EQ(left, 0);
}

}  // namespace
