// SPDX-License-Identifier: Apache-2.0
// Starting, watching, stopping and releasing at random moments; ThreadSanitizer and AddressSanitizer hold it too.
#include <atomic>
#include <chrono>
#include <random>
#include <thread>

#include "network/host.h"

namespace {

using Clock = std::chrono::steady_clock;

/// A network on 64 rows, for as long as nobody stops it.
NetOptimizer* endless(Host& host, NetGraph* net, int32_t kind) {
  NetOptimizer* opt = host.optimizer(net, kind);
  Numbers x(64), t(64);
  for (std::size_t i = 0; i < 64; ++i) {
    x[i] = static_cast<double>(i) / 32 - 1;
    t[i] = std::sin(3 * x[i]);
  }
  trainOn(opt, x, t, 64);
  api_SetIterCount(opt, 1e15, 7, 16);
  api_SetEvaluateBySquaredError(opt, -1.0);
  api_setRegForAllVar(opt, 1e-3, 2);
  return opt;
}

void pause(std::mt19937& rng, int most) {
  std::this_thread::sleep_for(std::chrono::microseconds(std::uniform_int_distribution<int>(0, most)(rng)));
}

TEST(TrainingThreads, StartStopFree) {
  std::mt19937 rng(3);
  for (int round = 0; round < 300; ++round) {
    Host host;
    NetGraph* net = host.tanhNet({1, 8, 8, 1});
    NetOptimizer* opt = endless(host, net, round % 18);
    ASSERT_EQ(api_SolveInit(opt), 0);
    std::atomic<bool> done = false;
    std::thread worker([&] {
      api_Solve(opt);
      done = true;
    });
    std::thread watcher([&] {
      double in = 0.5, out = 0;
      while (!done) {
        EXPECT_LE(Progress(opt).best, 1e300);
        if (!api_RunWork(net, &in, &out)) std::this_thread::yield();
        if (api_IsRun(opt)) {
          EXPECT_TRUE(api_SolveInit(opt) == 10 || !api_IsRun(opt));
        }
      }
    });
    pause(rng, 600);
    while (!done) {  // one that comes before the start is cleared by it
      api_Stop(opt);
      std::this_thread::yield();
    }
    worker.join();
    watcher.join();
    EXPECT_FALSE(api_IsRun(opt));
    predict(net, {0.5});
  }
}

TEST(TrainingThreads, StopsWithinABatchAndRefusesChanges) {
  Host host;
  const int32_t rows = 100000;
  NetOptimizer* opt = endless(host, host.tanhNet({1, 64, 64, 1}), ORVANE_STEPPER_ADAM);
  trainOn(opt, Numbers(rows, 0.5), Numbers(rows, 0.25), rows);
  api_SetTestData(opt, Numbers{0.5}.data(), Numbers{0.25}.data(), 1, 1, 1);
  api_SetIterCount(opt, 1, 1e9, rows);
  const auto start = Clock::now();
  run(opt);
  const auto batch = Clock::now() - start;
  api_SetIterCount(opt, 1e9, 1e9, rows);
  ASSERT_EQ(api_SolveInit(opt), 0);
  const Progress before(opt);
  std::thread worker([&] { api_Solve(opt); });
  while (Progress(opt).steps == before.steps) std::this_thread::yield();
  api_Solve(opt);  // returns
  EXPECT_EQ(api_SolveInit(opt), 10);
  api_SetTrainData(opt, nullptr, nullptr, 0, 1, 1);  // none of these touches a run
  api_ClearData(opt, 1);
  api_SetNewWork(opt, nullptr);
  api_SetSolver(opt, nullptr);
  api_OptSetOptVarValue(opt, nullptr);
  api_OptSetDxCorrectByMaxStep(opt, 1.0);
  const auto asked = Clock::now();
  api_Stop(opt);
  worker.join();
  EXPECT_LT(Clock::now() - asked, batch / 2);
  EXPECT_EQ(Progress(opt).steps, before.steps + 1);
  EXPECT_EQ(Progress(opt).tests, before.tests + 1) << "no test after a stop";
  EXPECT_EQ(api_SolveInit(opt), 0);
}

TEST(TrainingThreads, ActionsStop) {
  std::mt19937 rng(5);
  for (int round = 0; round < 100; ++round) {
    Host host;
    auto* root = static_cast<NetAction*>(host.own(action_Create(301 + round % 4)));
    for (int i = 0; i < 3; ++i) {
      NetGraph* net = host.tanhNet({round % 4 == 3 && i == 2 ? 2 : 1, 6, 1});
      auto* member = static_cast<NetAction*>(host.own(action_Create(ORVANE_ACTION_OPT_NET)));
      NetOptimizer* opt = endless(host, net, ORVANE_STEPPER_ADAM);
      if (i == 0) api_SetIterCount(opt, 20, 10, 16);
      action_NetAction_SetNetWork(member, net);
      action_OptNetAction_SetNetOptimizer(member, opt);
      action_OptNetSetAction_AddOptNet(root, member);
    }
    auto* set = static_cast<OptNetSet*>(host.own(action_Create(ORVANE_ACTION_DRIVER)));
    const Numbers data(32, 0.5);
    for (const int32_t slot : {0, 1}) action_OptNetSet_SetDataByArray(set, data.data(), 32, 1, slot);
    action_OptNetSet_SetRoot(set, root);
    action_OptNetSet_Stop(set);  // not ready
    ASSERT_EQ(action_OptNetSet_Init(set), 1);
    std::thread worker([&] { EXPECT_TRUE(action_OptNetSet_Optimize(set)); });
    while (action_OptNetSet_CurrentOptimizer(set) == nullptr) std::this_thread::yield();
    pause(rng, 400);
    EXPECT_EQ(action_OptNetSet_Init(set), 0) << "runs";
    action_OptNetSet_Stop(set);  // once: it is not lost between two members
    worker.join();
    EXPECT_FALSE(api_IsRun(action_OptNetSet_CurrentOptimizer(set)));
  }
}

}  // namespace
