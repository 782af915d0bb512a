// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <random>
#include <thread>

#include "pdf/manager_support.h"

namespace {

using namespace std::chrono_literals;

Values normalSample(std::size_t count) {
  std::mt19937 generator(20240611);
  std::normal_distribution<double> normal(3.0, 2.0);
  Values sample(count);
  for (double& v : sample) v = normal(generator);
  return sample;
}

// Every distribution gets a run: the fit ends, and an error that is not 1e300 is that of the parameters left behind.
TEST(FitSlow, AllDistributionsEndWithTheirOwnError) {
  std::vector<int32_t> codes(342);
  ASSERT_EQ(pdf_getAllPDFFun(codes.data(), 342), 342);
  Manager manager;
  manager.sample(normalSample(40));
  int fitted = 0;
  for (std::size_t first = 0; first < codes.size(); first += 9) {
    Distributions funs({codes.begin() + static_cast<std::ptrdiff_t>(first),
                        codes.begin() + static_cast<std::ptrdiff_t>(std::min(first + 9, codes.size()))});
    ASSERT_EQ(manager.fit(funs.bare, {1}, 8, 6, 9, 1e-12), 1);
    for (std::size_t i = 0; i < funs.bare.size(); ++i) {
      const double error = pdf_getError(funs.bare[i]);
      EXPECT_TRUE(std::isfinite(error)) << codes[first + i];
      EXPECT_GE(error, 0.0) << codes[first + i];
      if (error == 1e300) continue;
      ++fitted;
      EXPECT_EQ(distance(manager, funs.bare[i]), error) << codes[first + i];
    }
  }
  EXPECT_GT(fitted, 300);
}

TEST(FitSlow, StopsAtRandomMoments) {
  Manager manager;
  manager.sample(normalSample(30));
  Distributions funs({43, 9, 34, 19, 26, 57, 21, 48});
  std::mt19937 generator(7);
  const uint8_t solvers[] = {1, 2, 3, 4, 5, 6, 7, 9, 10, 0};
  for (int i = 0; i < 300; ++i) {
    const uint8_t solver = solvers[i % 10];
    const auto wait = std::chrono::microseconds(generator() % 4000);
    const auto threads = static_cast<int32_t>(1 + generator() % 4);
    std::thread fit([&] { manager.fit(funs.bare, {solver, 1}, 12, 100'000'000, threads, 0.0); });
    while (!pdfManger_isRun(manager.handle.get())) std::this_thread::yield();
    std::this_thread::sleep_for(wait);
    pdfManger_stop(manager.handle.get());
    fit.join();  // hangs if the stop was lost
    ASSERT_EQ(pdfManger_isRun(manager.handle.get()), 0);
    for (const auto& [fun, error] : manager.ranking(funs.bare.size()))
      if (error < 1e300) {
        ASSERT_EQ(error, distance(manager, fun)) << "solver " << int(solver) << ", try " << i;
      }
  }
}

TEST(FitSlow, ProgressRisesAndTwoManagersStopIndependently) {
  Manager one, two;
  one.sample(normalSample(50));
  two.sample(normalSample(60));
  Distributions first({43, 9, 34, 19}), second({43, 9, 34, 19});
  std::thread endless([&] { one.fit(first.bare, {1}, 20, 100'000'000, 4, 0.0); });
  std::atomic<bool> ended = false;
  std::thread finite([&] {
    two.fit(second.bare, {1, 3, 7, 9, 10}, 20, 300, 4, 0.0);
    ended = true;
  });
  int64_t last = 0;
  bool between = false;
  while (!pdfManger_isRun(two.handle.get()) && !ended) std::this_thread::yield();
  for (last = pdfManger_getProcess(two.handle.get()); !ended; std::this_thread::sleep_for(100us)) {
    const int64_t now = pdfManger_getProcess(two.handle.get());
    between = between || (now > 0 && now < 1000);
    if (last < 1000) {
      EXPECT_GE(now, last);
    }
    last = now;
  }
  finite.join();
  EXPECT_TRUE(between);
  EXPECT_EQ(pdfManger_isRun(one.handle.get()), 1) << "the other manager's fit goes on";
  pdfManger_stop(one.handle.get());
  endless.join();
  for (PDFFun* fun : second.bare) EXPECT_LT(pdf_getError(fun), 10.0);
}

}  // namespace
