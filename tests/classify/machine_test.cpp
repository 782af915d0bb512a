// SPDX-License-Identifier: Apache-2.0
#include <orvane/frame.h>
#include <orvane/support_vector_machine.h>

#include <random>
#include <thread>

#include "support/reference.h"

namespace {

using Values = std::vector<double>;

struct Machine {
  Machine(int32_t code, double p0, double c, const Values& x, const Values& y)
      : dim(x.size() / y.size()), count(y.size()) {
    const double params[] = {p0, 0, 2};
    svm_setXDim(handle, static_cast<int32_t>(dim));
    svm_setData(handle, x.data(), y.data(), static_cast<int32_t>(count));
    svm_setOther(handle, params, c);
    svm_setType(handle, code);
    svm_limit(handle, 2, 0, 1000000000);
  }
  ~Machine() { api_FreeHandle(handle); }
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  double value(const double* x) const { return svm_predict(handle, x, false); }
  Values multipliers() const {
    Values a(static_cast<std::size_t>(svm_getA(handle, nullptr)));
    svm_getA(handle, a.data());
    return a;
  }

  std::size_t dim, count;
  SVM* handle = svm_create();
};

struct Cloud {
  explicit Cloud(unsigned seed, std::size_t n = 60) {
    std::mt19937 generator(seed);
    std::normal_distribution<double> normal;
    for (std::size_t i = 0; i < n; ++i) {
      const double u = normal(generator), v = normal(generator);
      x.insert(x.end(), {u, v});
      y.push_back(u * u + v + normal(generator) * 0.3 > 0.5 ? 1 : -1);
    }
  }
  Values x, y;
};

// A machine of one sample with the multiplier 1 shows its kernel.
TEST(Kernels, AgreeWithTheirFormulas) {
  checkReference("classify/kernels.csv", [](const ReferenceRow& row) {
    const Values& v = row.arguments;
    const Machine machine(static_cast<int32_t>(v[0]), v[1], 1, {v[4], v[5]}, {1});
    svm_setOther(machine.handle, &v[1], 1);
    const double one = 1;
    svm_setA(machine.handle, &one, 1);
    return machine.value(&v[6]);
  });
}

// The dual is convex for the definite kernels, so that the conditions of Karush, Kuhn and Tucker prove the optimum. The
// other three have no one optimum and need not come to their end.
TEST(Machine, MeetsTheOptimalityConditions) {
  const Cloud cloud(3);
  for (int32_t code = 0; code <= 10; ++code)
    for (const double c : {0.05, 2.0, 100.0}) {
      SCOPED_TRACE(::testing::Message() << "kernel " << code << " C " << c);
      const Machine machine(code, 1, c, cloud.x, cloud.y);
      const bool solved = svm_solve(machine.handle);
      if (code == ORVANE_SVM_TANH || code == ORVANE_SVM_MULTIQUADRIC || code == ORVANE_SVM_CIRCULAR) continue;
      EXPECT_TRUE(solved);
      const Values a = machine.multipliers();
      double balance = 0;
      for (std::size_t i = 0; i < cloud.y.size(); ++i) {
        const double excess = cloud.y[i] * machine.value(&cloud.x[2 * i]) - 1;
        EXPECT_TRUE(a[i] >= 0 && a[i] <= c);
        EXPECT_GE(excess, a[i] < c ? -1e-3 : -HUGE_VAL) << i;
        EXPECT_LE(excess, a[i] > 0 ? 1e-3 : HUGE_VAL) << i;
        balance += a[i] * cloud.y[i];
      }
      EXPECT_NEAR(balance, 0, 1e-9 * c);
    }
}

TEST(Machine, KeepsModelTableAndLimits) {
  const Cloud cloud(4);
  const Machine machine(ORVANE_SVM_LINEAR, 1, 1, cloud.x, cloud.y);
  EXPECT_EQ(svm_getScore(machine.handle), 0);
  ASSERT_TRUE(svm_solve(machine.handle));
  Values w(static_cast<std::size_t>(svm_getW(machine.handle, nullptr)));
  svm_getW(machine.handle, w.data());
  ASSERT_EQ(w.size(), 2u);
  EXPECT_NEAR(machine.value(cloud.x.data()), w[0] * cloud.x[0] + w[1] * cloud.x[1] + svm_getB(machine.handle), 1e-12);

  // The same kernel as a table of the host's gives the same machine.
  const auto n = static_cast<int32_t>(cloud.y.size());
  Values table;
  for (std::size_t i = 0; i < cloud.y.size(); ++i)
    for (std::size_t j = 0; j < cloud.y.size(); ++j)
      table.push_back(cloud.x[2 * i] * cloud.x[2 * j] + cloud.x[2 * i + 1] * cloud.x[2 * j + 1]);
  const Machine byTable(ORVANE_SVM_LINEAR, 1, 1, cloud.x, cloud.y);
  EXPECT_FALSE(svm_setKernelData(byTable.handle, table.data(), n, cloud.y.data(), n - 1));
  ASSERT_TRUE(svm_setKernelData(byTable.handle, table.data(), n, cloud.y.data(), n));
  ASSERT_TRUE(svm_solve(byTable.handle));
  EXPECT_NEAR(byTable.value(table.data()), machine.value(cloud.x.data()), 1e-9);

  // Multipliers above C, though balanced, are no start.
  Values above(cloud.y.size());
  for (const double label : {1.0, -1.0})
    above[static_cast<std::size_t>(std::ranges::find(cloud.y, label) - cloud.y.begin())] = 50;
  svm_setA(byTable.handle, above.data(), n);
  ASSERT_TRUE(svm_solve(byTable.handle));
  EXPECT_NEAR(byTable.value(table.data()), machine.value(cloud.x.data()), 1e-9);

  svm_limit(machine.handle, 2, 1, 1000);
  svm_setA(machine.handle, nullptr, 0);
  EXPECT_FALSE(svm_solve(machine.handle));  // one step is not enough
  const Values a = machine.multipliers();
  EXPECT_EQ(std::count_if(a.begin(), a.end(), [](double v) { return v > 0; }), 2);

  const double params[] = {1, 2, 3};
  svm_setOther(machine.handle, params, -5);
  double back[3], c = -1;
  svm_getOther(machine.handle, back, &c);
  EXPECT_EQ(c, 0);
  EXPECT_EQ(back[2], 3);
  svm_setType(machine.handle, 77);
  EXPECT_EQ(svm_getType(machine.handle), 77);
}

TEST(Machine, BearsWrongData) {
  SVM* empty = svm_create();
  EXPECT_FALSE(svm_solve(empty));
  EXPECT_EQ(svm_predict(empty, nullptr, false), 0);
  svm_stop(empty);
  api_FreeHandle(empty);
  const Machine odd(ORVANE_SVM_GAUSS, 1, 1, {std::nan(""), 1, HUGE_VAL, 0, 0, 0}, {1, std::nan(""), 7});
  svm_solve(odd.handle);
  const Machine oneClass(ORVANE_SVM_GAUSS, 1, 1, {1, 2, 3}, {1, 1, 1});
  EXPECT_TRUE(svm_solve(oneClass.handle));
  const double point = 9;
  EXPECT_EQ(svm_predict(oneClass.handle, &point, true), 1);
}

// Labels by chance, a narrow kernel and a large C: minutes of work, if nobody stops it.
TEST(Machine, StopsFromAnotherThread) {
  std::mt19937 generator(1);
  Values x(4000), y(2000);
  for (double& v : x) v = std::uniform_real_distribution<double>(0, 1)(generator);
  for (double& v : y) v = generator() % 2 ? 1 : -1;
  const Machine machine(ORVANE_SVM_POLYNOMIAL, 1, 1e9, x, y);
  bool solved = true;
  std::thread worker([&] { solved = svm_solve(machine.handle); });
  while (svm_getScore(machine.handle) == 0) std::this_thread::yield();
  svm_stop(machine.handle);
  worker.join();
  EXPECT_FALSE(solved);
}

}  // namespace
