// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <thread>
#include <vector>

#include "orvane/frame.h"
#include "orvane/optimizer.h"

/// A host's view of one optimisation: sets it up, waits for it, releases it.
class Host {
 public:
  explicit Host(uint32_t tryNum = 1) : os(os_createOptSolver(tryNum)) {}
  ~Host() {
    if (os == nullptr) return;
    os_stop(os);
    api_FreeHandle(os);
  }
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  void fun(OptCostFun cost, int32_t n, double lo, double hi, OptLimitFun limit = nullptr) {
    os_setFun(os, cost, nullptr, limit, 1, n);
    os_setMinVar(os, &lo, 1);
    os_setMaxVar(os, &hi, 1);
    variables = n;
  }
  void solver(uint8_t kind, uint32_t popSize, int64_t maxIter, double target) {
    os_setOptimizer(os, kind, 0, popSize, 0, 0, maxIter, target);
  }
  /// Waits until the search has ended; false after a minute.
  bool wait() const {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (os_getState(os) == 4) {
      if (std::chrono::steady_clock::now() > end) return false;
      std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    return true;
  }
  double run() {
    EXPECT_EQ(os_solve(os), 1);
    EXPECT_TRUE(wait());
    return best();
  }
  double best() {
    x.assign(static_cast<std::size_t>(variables), 0.0);
    return os_getOptVar(os, x.data());
  }
  std::vector<double> info() const {
    std::vector<double> values(4, -7.0);
    EXPECT_EQ(os_getCurrentInfo(os, values.data()), 1);
    return values;
  }

  OptSolver* os;
  int32_t variables = 0;
  std::vector<double> x;
};

inline double sphere2(const double* x) { return x[0] * x[0] + x[1] * x[1]; }
