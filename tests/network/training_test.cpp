// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <new>
#include <numbers>
#include <set>
#include <sstream>

#include "network/training_host.h"

namespace {

std::size_t allocations = 0;

}  // namespace

// Counts what a step asks for; the library's requests come here too.
[[gnu::noinline]] void* operator new(std::size_t size) {
  ++allocations;
  if (void* block = std::malloc(size)) return block;
  throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* block) noexcept { std::free(block); }
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept { std::free(block); }

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// One row, input 0: the gradient of y = x + a is a less the target.
NetOptimizer* toTarget(Host& host, NetGraph* net, const Values& target, int32_t kind = ORVANE_STEPPER_SGD,
                       NetSolver** rule = nullptr) {
  NetOptimizer* opt = host.optimizer(net, kind, rule);
  trainOn(opt, Values(target.size(), 0.0), target, 1);
  return opt;
}

TEST(Training, AsPyTorch) {
  // The same weights, rows and numbers: steppers_torch.py has PyTorch's errors after 200 steps.
  std::ifstream file(ORVANE_REFERENCE_DIR "/network/steppers_torch.csv");
  int cases = 0;
  Values x(64), t(64);
  for (std::size_t i = 0; i < 64; ++i) {
    x[i] = 2.0 * static_cast<double>(i) / 63.0 - 1.0;
    t[i] = std::sin(3 * x[i]) + 0.3 * x[i];
  }
  for (std::string line; std::getline(file, line);) {
    if (line[0] == '#') continue;
    const std::string name = line.substr(0, line.find(','));
    std::istringstream cells(line.substr(name.size() + 1));
    Values v;
    for (std::string cell; std::getline(cells, cell, ',');) v.push_back(std::strtod(cell.c_str(), nullptr));
    Host host;
    NetSolver* rule;
    NetGraph* net = host.tanhNet({1, 16, 16, 1});
    NetOptimizer* opt = host.optimizer(net, static_cast<int32_t>(v[0]), &rule);
    api_SetSolverVar(rule, v[2], v[3], v[4], v[1], v[1], 0);
    trainOn(opt, x, t, 64);
    api_SetCostFun(opt, ORVANE_COST_MEAN_SQUARE);
    api_SetIterCount(opt, 200, 200, 64);
    const Progress after = run(opt);
    std::printf("%-9s %.6g, PyTorch %.6g\n", name.c_str(), after.last, v[6]);
    EXPECT_EQ(after.tests, 2);
    EXPECT_EQ(after.steps, 200);
    EXPECT_NEAR(after.last, v[6], 0.05 * v[6]) << name;
    EXPECT_NEAR(v[5] - after.last, v[5] - v[6], 0.05 * (v[5] - v[6])) << name;
    ++cases;
  }
  EXPECT_EQ(cases, 8);
}

TEST(Training, EveryStepperLearns) {
  for (int32_t kind = 0; kind <= 17; ++kind) {
    Host host;
    NetSolver* rule;
    NetOptimizer* opt = toTarget(host, host.shift(3, 0.5), {1.0, -2.0, 0.25}, kind, &rule);
    if (kind == ORVANE_STEPPER_ADADELTA)
      api_SetSolverVar(rule, 0.8, 0.6, 0, 3, 0.01, 300);
    else
      api_SetSolverVar(rule, 0.8, 0.6, kind == 9 ? 0.98 : kind == 15 || kind == 16 ? 1e-4 : 0.001, 0.1, 1e-4, 300);
    api_SetIterCount(opt, 300, 10, 1);
    EXPECT_LT(run(opt).best, 1e-3) << kind;
  }
}

TEST(Training, RateRamp) {
  Host host;
  NetSolver* rule;
  NetGraph* net = host.shift(1, 0.0);
  NetOptimizer* opt = toTarget(host, net, {1.0}, ORVANE_STEPPER_SGD, &rule);
  api_SetSolverVar(rule, 0, 0, 0, 0.5, 0.1, 4);
  api_SetIterCount(opt, 7, 100, 1);
  double a = 0.0;
  for (const double lr : {0.5, 0.4, 0.3, 0.2, 0.1, 0.1, 0.1}) a -= lr * (a - 1.0);
  run(opt);
  EXPECT_NEAR(variables(net)[0], a, 1e-15);
}

TEST(Training, LookAhead) {
  Host host;
  NetSolver* rule;
  NetGraph* net = host.shift(1, 0.0);
  NetOptimizer* opt = toTarget(host, net, {1.0}, ORVANE_STEPPER_SGD, &rule);
  api_SetSolverVar(rule, 0, 0, 0, 0.25, 0.25, 0);
  api_optSetLookahead(opt, 0.75, 3);
  api_SetIterCount(opt, 10, 100, 1);
  // Before steps 3, 6 and 9: the first time the copy is made, then both meet.
  double a = 0.0, slow = kNaN;
  for (int step = 1; step <= 10; ++step) {
    if (step == 3) slow = a;
    if (step == 6 || step == 9) a = slow = 0.75 * a + 0.25 * slow;
    a -= 0.25 * (a - 1.0);
  }
  const Progress after = run(opt);
  EXPECT_NEAR(variables(net)[0], a, 1e-15);
  EXPECT_NEAR(after.last, (a - 1) * (a - 1), 1e-15);
}

TEST(Training, StepLimit) {
  Values seen;
  for (int round = 0; round < 2; ++round) {
    Host host;
    NetGraph* net = host.shift(3, 0.0);
    NetOptimizer* opt = toTarget(host, net, {100.0, -100.0, 0.5});
    api_OptSetDxCorrectByMaxStep(opt, 2.0);
    api_optSetSeed(opt, 77);
    api_SetIterCount(opt, 1, 1, 1);
    run(opt);
    const Values a = variables(net);
    EXPECT_TRUE(a[0] >= 1.6 && a[0] <= 2.0) << a[0];
    EXPECT_TRUE(a[1] <= -1.6 && a[1] >= -2.0) << a[1];
    EXPECT_NE(a[0], -a[1]);
    EXPECT_EQ(a[2], 0.5);
    if (round == 1) {
      EXPECT_EQ(a, seen);
    }
    seen = a;
  }
}

TEST(Training, SignRules) {
  // One step of rate 1 goes to the target, then the rule.
  const std::vector<std::pair<uint8_t, Values>> cases{{0, {-4, 3, 5e-9, -5e-9}}, {1, {0.001, 3, 0.001, 0.001}},
                                                      {2, {0, 3, 5e-9, -5e-9}},  {3, {-4, -0.001, -0.001, -0.001}},
                                                      {4, {-4, 0, 5e-9, -5e-9}}, {5, {-4, 3, 0.001, -0.001}}};
  for (const auto& [flag, expected] : cases) {
    Host host;
    NetVar* a;
    NetGraph* net = host.shift(4, 7.0, &a);
    api_SetVarFlag(a, flag);
    NetOptimizer* opt = toTarget(host, net, {-4, 3, 5e-9, -5e-9});
    api_SetIterCount(opt, 1, 1, 1);
    run(opt);
    const Values got = variables(net);
    for (std::size_t i = 0; i < 4; ++i) EXPECT_NEAR(got[i], expected[i], 1e-15) << int{flag} << " " << i;
  }
}

TEST(Training, Penalties) {
  // At rest: a - t + penalty = 0, where the batch's gradient is a mean and the penalty is not divided by its rows.
  for (const int32_t kind : {1, 2, 0, 3}) {
    Host host;
    NetVar* a;
    NetSolver* rule;
    NetGraph* net = host.shift(2, 0.01, &a);
    NetOptimizer* opt = host.optimizer(net, ORVANE_STEPPER_SGD, &rule);
    trainOn(opt, Values(8, 0.0), {3, 2, 1, 2, 3, 2, 1, 2}, 4);  // targets 2 and 2 on average
    api_SetSolverVar(rule, 0, 0, 0, 0.25, 0.25, 0);
    api_setRegForAllVar(opt, 0.25, 2);
    api_setRegForVar(opt, a, 0.125, kind);
    api_SetIterCount(opt, 400, 400, 4);
    run(opt);
    const double expected = kind == 0 ? 2.0 : kind == 1 ? 2.0 - 0.125 : kind == 2 ? 2.0 / 1.25 : 2.0 / 1.5;
    EXPECT_NEAR(variables(net)[0], expected, 1e-12) << kind;
    EXPECT_NEAR(variables(net)[1], expected, 1e-12) << kind;
  }
}

TEST(Training, Drop) {
  for (const double share : {0.0, 0.5, 0.74, 1.0}) {
    Host host;
    NetLayer* output;
    NetGraph* net = host.shift(4, 7.0, nullptr, &output);
    NetOptimizer* opt = toTarget(host, net, {1, 1, 1, 1});
    api_setRegForLayer(opt, output, share);
    api_SetIterCount(opt, 1, 1, 1);
    const Progress after = run(opt);
    const Values a = variables(net);
    EXPECT_EQ(std::count(a.begin(), a.end(), 7.0), std::floor(share * 4)) << share;
    EXPECT_EQ(after.tests, share == 1.0 ? 1 : 2) << "tests do not drop, and without a gradient there is no second";
    Values out(4);
    EXPECT_TRUE(api_RunWork(net, Values(4, 0.0).data(), out.data()));
    EXPECT_EQ(out, a);
  }
}

TEST(Training, Costs) {
  // One step of rate 1 and batch 1 takes the gradient off: a = y - gradient. Finite differences of the losses.
  const Values t{0.2, 0.7, 0.1}, y{0.3, 0.6, 0.25};
  const auto squares = [&](const Values& v, double divisor) {
    double sum = 0;
    for (std::size_t i = 0; i < 3; ++i) sum += (v[i] - t[i]) * (v[i] - t[i]) / 2 / divisor;
    return sum;
  };
  const std::vector<std::function<double(const Values&)>> losses{
      [&](const Values& v) { return squares(v, 1); },
      [&](const Values& v) { return squares(v, 3); },
      [&](const Values& v) {
        double sum = 0;
        for (std::size_t i = 0; i < 3; ++i) sum -= (t[i] * std::log(v[i]) + (1 - t[i]) * std::log(1 - v[i])) / 3;
        return sum;
      },
      [&](const Values& v) {
        double norm = 0, sum = 0;
        for (const double x : v) norm += std::exp(x);
        for (std::size_t i = 0; i < 3; ++i) sum -= t[i] * (v[i] - std::log(norm));
        return sum;
      },
      [&](const Values& v) {
        double a = 0, p = 0, q = 0;
        for (std::size_t i = 0; i < 3; ++i) {
          a += v[i] * t[i];
          p += v[i] * v[i];
          q += t[i] * t[i];
        }
        return 1 - a / std::sqrt(p * q);
      },
      [&](const Values& v) { return std::abs(v[0] - t[0]) + std::abs(v[1] - t[1]) + std::abs(v[2] - t[2]); }};
  for (int32_t kind = -1; kind <= 6; ++kind) {
    Host host;
    NetSolver* rule;
    NetGraph* net = host.shift(3, 0.0);
    NetOptimizer* opt = host.optimizer(net, ORVANE_STEPPER_SGD, &rule);
    api_SetSolverVar(rule, 0, 0, 0, 1e-3, 1e-3, 0);
    trainOn(opt, y, t, 1);
    api_SetCostFun(opt, kind);
    api_SetIterCount(opt, 1, 1, 1);
    run(opt);
    const Values a = variables(net);
    const auto& loss = losses[kind < 0 || kind > 5 ? 0 : static_cast<std::size_t>(kind)];
    for (std::size_t i = 0; i < 3; ++i) {
      Values up = y, down = y;
      up[i] += 1e-5;
      down[i] -= 1e-5;
      EXPECT_NEAR(-a[i] / 1e-3, (loss(up) - loss(down)) / 2e-5, 1e-8) << kind << " " << i;
    }
  }
}

TEST(Training, CosineOfNothing) {
  Host host;
  NetGraph* net = host.shift(2, 0.0);
  NetOptimizer* opt = toTarget(host, net, {1.0, 2.0});
  api_SetCostFun(opt, ORVANE_COST_COSINE);
  const Progress after = run(opt);
  EXPECT_EQ(after.steps, 1) << "no gradient at the origin";
  EXPECT_EQ(variables(net), (Values{0, 0}));
}

TEST(Training, LooksForAGradientSixteenTimes) {
  for (const int dull : {15, 16}) {  // rows in front without a gradient, then one with
    Host host;
    NetGraph* net = host.shift(1, 0.0);
    NetOptimizer* opt = host.optimizer(net, ORVANE_STEPPER_SGD);
    Values t(40, 0.0);
    t[static_cast<std::size_t>(dull)] = 1.0;
    t[2] = dull == 15 ? kNaN : 0.0;  // a gradient that is not a number is none
    const Values zero(40, 0.0);
    trainOn(opt, zero, t, 40);
    api_SetTestData(opt, zero.data(), Values(1, 1.0).data(), 1, 1, 1);
    api_SetIterCount(opt, 1, 1, 1);
    const Progress after = run(opt);
    EXPECT_EQ(variables(net)[0], dull == 15 ? 1.0 : 0.0);
    EXPECT_EQ(after.tests, dull == 15 ? 2 : 1);
  }
}

TEST(Training, BestOfAllTests) {
  // Steps of rate 3 jump away from the target: 0 -> 3 -> -3 -> 9 for target 1; the start is the best.
  Host host;
  NetSolver* rule;
  NetGraph* net = host.shift(1, 0.0);
  NetOptimizer* opt = toTarget(host, net, {1.0}, ORVANE_STEPPER_SGD, &rule);
  api_SetSolverVar(rule, 0, 0, 0, 3, 3, 0);
  api_SetIterCount(opt, 3, 1, 1);
  api_SetTryNum(opt, 2);
  Progress after = run(opt);
  EXPECT_EQ(variables(net)[0], 0.0);
  EXPECT_EQ(after.best, 1.0);
  EXPECT_EQ(after.last, 64.0);
  EXPECT_EQ(after.tests, 8);
  EXPECT_EQ(after.steps, 6) << "each try has its own steps, all are counted";
  EXPECT_EQ(after.tryIndex, 2);
  api_SetTryNum(opt, 0);
  api_Solve(opt);
  after = Progress(opt);
  EXPECT_EQ(after.tests, 8);
  api_SetTryNum(opt, 1);
  api_SetEvaluateBySquaredError(opt, 1.0);
  EXPECT_EQ(Progress(opt).best, 1e300);
  api_Solve(opt);
  EXPECT_EQ(Progress(opt).steps, 6) << "good enough before the first step";
}

TEST(Training, ByClass) {
  // Two outputs x + a: the largest decides. A row scores when its place is the target's.
  Host host;
  NetGraph* net = host.shift(2, 0.0);
  NetOptimizer* opt = host.optimizer(net, ORVANE_STEPPER_SGD);
  const Values x{1, 0, 0, 0.5, 2, 1.9, 0.5, 0}, t{1, 0, 1, 0, 1, 0, 1, 0};
  trainOn(opt, x, t, 4);
  api_SetEvaluateByClass(opt, 0.75);
  const Progress after = run(opt);
  EXPECT_EQ(after.byClass, 1);
  EXPECT_EQ(after.last, 0.75);
  EXPECT_EQ(after.best, 0.75);
  EXPECT_EQ(after.steps, 0);
  api_SetEvaluateByClass(opt, 1.0);
  EXPECT_EQ(run(opt).best, 1.0);
}

TEST(Training, Rescales) {
  // y = x + a with a = 0 and targets that are the rescaled inputs: nothing to learn. Test rows have the training's
  // scale.
  const double d = std::sqrt(1.5);
  const std::vector<std::pair<uint8_t, Values>> cases{{0, {0, 0, 0.5, 0, 1, 0, 2, -4}},
                                                      {1, {-d, 0, 0, 0, d, 0, 3 * d, -4}}};
  for (const auto& [type, scaled] : cases) {
    Host host;
    NetOptimizer* opt = host.optimizer(host.shift(2, 0.0), ORVANE_STEPPER_SGD);
    const Values x{2, 5, 4, 5, 6, 5};
    api_SetTrainData(opt, x.data(), scaled.data(), 3, 2, 2);
    api_SetPreprocessType(opt, type);
    api_SetEvaluateBySquaredError(opt, 1e-28);
    EXPECT_EQ(run(opt).steps, 0) << int{type};
    api_SetTestData(opt, Values{10, 9}.data(), Values{scaled[6], 0}.data(), 1, 2, 2);
    api_SetTrainData(opt, x.data(), scaled.data(), 3, 2, 2);
    EXPECT_EQ(run(opt).steps, 0) << int{type};
    EXPECT_LT(Progress(opt).last, 1e-28);
  }
}

TEST(Training, CodesOfInit) {
  Host host;
  NetOptimizer* opt = host.own(api_CreateOptimizer());
  api_SetSolver(opt, host.own(api_CreateSolver(3)));
  const Values one(8, 1.0);
  const auto train = [&](int32_t rows, int32_t in, int32_t out) {
    api_SetTrainData(opt, one.data(), one.data(), rows, in, out);
  };
  EXPECT_EQ(api_SolveInit(opt), 11);
  const Progress before(opt);
  EXPECT_EQ(before.tests + before.byClass + before.tryIndex + before.steps, 0);
  EXPECT_TRUE(before.last == 1e300 && before.best == 1e300 && !api_IsRun(opt));
  api_setRegForVar(opt, nullptr, 1, 1);
  api_setRegForLayer(opt, nullptr, 0.5);
  train(2, 2, 2);
  EXPECT_EQ(api_SolveInit(opt), 12);
  NetGraph* empty = host.own(api_CreateNetWork());
  api_SetNewWork(opt, empty);
  EXPECT_EQ(api_SolveInit(opt), 13);
  NetVar* a;
  NetGraph* net = host.shift(2, 0.0, &a);
  api_SetNewWork(opt, net);
  EXPECT_EQ(api_SolveInit(opt), 0);
  EXPECT_EQ(api_GetOptVarSize(opt), 2);
  Values v{4, 5};
  api_OptSetOptVarValue(opt, v.data());
  v = {0, 0};
  api_OptGetOptVarValue(opt, v.data());
  EXPECT_EQ(v, (Values{4, 5}));
  train(2, 1, 2);
  EXPECT_EQ(api_SolveInit(opt), 14);
  train(2, 2, 3);
  EXPECT_EQ(api_SolveInit(opt), 15);
  train(2, 2, 2);
  api_AddTrainData(opt, one.data(), one.data(), 1, 1, 2);
  EXPECT_EQ(api_SolveInit(opt), 14) << "every row is looked at";
  train(2, 2, 2);
  api_OptSetData2(opt, one.data(), 3, 2, 1, 1);
  EXPECT_EQ(api_SolveInit(opt), 11) << "3 targets for 2 inputs";
  train(2, 2, 2);
  api_SetNetVarFixed(a, 1);
  EXPECT_EQ(api_SolveInit(opt), 16);
  api_SetNetVarFixed(a, 0);
  api_SetTestData(opt, one.data(), one.data(), 2, 3, 2);
  EXPECT_EQ(api_SolveInit(opt), 17);
  api_SetTestData(opt, one.data(), one.data(), 2, 2, 1);
  EXPECT_EQ(api_SolveInit(opt), 18);
  api_AddTestData(opt, nullptr, one.data(), 2, 2, 1);
  EXPECT_EQ(api_SolveInit(opt), 11);
  api_ClearData(opt, 0);
  EXPECT_EQ(api_SolveInit(opt), 0);

  // Data that changes after the check and does not fit is not run on; neither is an optimiser without a rule.
  train(2, 1, 2);
  api_Solve(opt);
  EXPECT_EQ(Progress(opt).tests, 0);
  train(2, 2, 2);
  api_SetSolver(opt, nullptr);
  EXPECT_EQ(run(opt).tests, 0);
  api_SetNewWork(opt, nullptr);
  EXPECT_EQ(api_GetOptVarSize(opt), 0);
  api_OptGetOptVarValue(opt, v.data());
  api_OptSetOptVarValue(opt, v.data());
  api_setRegForAllVar(opt, 1, 1);
  api_Solve(opt);
  EXPECT_EQ(Progress(opt).tests, 0);
}

TEST(Training, DataFromTablesAndArrays) {
  Host host;
  NetOptimizer* opt = host.optimizer(host.shift(2, 0.0), ORVANE_STEPPER_SGD);
  Data2D* table = host.own(api_Data2D_Create(3, 2));
  api_Data2D_SetValue(table, Values{1, 2, 3, 4, 5, 6}.data());
  api_OptSetData(opt, table, 0, 1);
  EXPECT_EQ(api_SolveInit(opt), 11);
  api_OptSetData(opt, table, 1, 1);
  EXPECT_EQ(run(opt).last, 0.0) << "inputs are the targets";
  api_OptSetData2(opt, Values{1, 2, 3, 4, 5, 9}.data(), 3, 2, 1, 1);
  api_SetIterCount(opt, 0, 1, 1);
  EXPECT_EQ(run(opt).last, 1.5) << "9/6 the mean of six entries";
  api_OptSetData(opt, table, 0, 0);
  api_OptSetData2(opt, Values{1, 2, 3, 4, 5, 8}.data(), 3, 2, 1, 0);
  EXPECT_EQ(run(opt).last, 4.0 / 6.0) << "test rows of their own";
  api_ClearData(opt, 1);
  EXPECT_EQ(api_SolveInit(opt), 11);
}

TEST(Training, SplitsAtRandom) {
  // Row i has target 4^i, so that the test error tells which rows are tested.
  std::set<std::string> seen;
  for (int round = 0; round < 12; ++round) {
    Host host;
    NetOptimizer* opt = host.optimizer(host.shift(1, 0.0), ORVANE_STEPPER_SGD);
    Values rows;
    for (int i = 0; i < 10; ++i) rows.insert(rows.end(), {0.0, std::ldexp(1.0, i)});
    api_SetData(opt, rows.data(), 10, 1, 1, 0.7);
    api_SetIterCount(opt, 0, 1, 1);
    double sum = run(opt).last * 3;
    std::string chosen;
    for (int i = 0; i < 10; ++i, sum = std::floor(sum / 4)) chosen += std::fmod(sum, 4) == 1 ? 'x' : '.';
    EXPECT_EQ(std::count(chosen.begin(), chosen.end(), 'x'), 3) << chosen;
    seen.insert(chosen);
    api_SetData(opt, rows.data(), 10, 1, 1, 0.0);
    EXPECT_EQ(api_SolveInit(opt), 11);
    api_SetData(opt, rows.data(), 10, 1, 1, 5.0);
    EXPECT_EQ(api_SolveInit(opt), 0);
    api_SetData(opt, nullptr, 10, 1, 1, 0.0);
    api_SetData(opt, rows.data(), 0, 1, 1, 0.0);
    api_SetData(opt, rows.data(), 10, -1, 1, 0.0);
    EXPECT_EQ(api_SolveInit(opt), 0) << "nothing changed";
  }
  EXPECT_GT(seen.size(), 3u);
}

TEST(Training, Files) {
  Host host;
  NetOptimizer* opt = host.optimizer(host.shift(1, 0.0), ORVANE_STEPPER_SGD);
  const auto path = std::filesystem::temp_directory_path() / ("orvane_training_" + std::to_string(std::rand()));
  const auto write = [&](const Values& values, std::size_t bytes) {
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(values.data()), static_cast<std::streamsize>(bytes));
  };
  const auto read = [&](int32_t rows, int32_t in, int32_t out) {
    api_OptReadDataFromFile(opt, path.c_str(), rows, in, out, 1);
  };
  api_SetIterCount(opt, 0, 1, 1);
  const Values records{1, 1.5, 2, 3, 3, 5};
  write(records, 48);
  read(3, 1, 1);
  EXPECT_EQ(run(opt).last, (0.25 + 1 + 4) / 3);
  write(records, 47);
  read(3, 1, 1);
  EXPECT_EQ(run(opt).last, (0.25 + 1 + 4) / 3) << "too short: as before";
  read(2, 1, 1);
  EXPECT_EQ(run(opt).last, 1.25 / 2) << "longer than asked: the first records";
  for (const auto& [rows, in, out] : std::vector<std::array<int32_t, 3>>{
           {2147483647, 2147483647, 2147483647}, {2147483647, 1, 1}, {-1, 1, 1}, {2, -1, 2}, {1, 100, 100}}) {
    read(rows, in, out);
    EXPECT_EQ(run(opt).last, 1.25 / 2) << rows;
  }
  api_OptReadDataFromFile(opt, (path.string() + ".no").c_str(), 1, 1, 1, 1);
  api_OptReadDataFromFile(opt, std::filesystem::temp_directory_path().c_str(), 1, 1, 1, 1);
  api_OptReadDataFromFile(opt, nullptr, 1, 1, 1, 1);
  EXPECT_EQ(run(opt).last, 1.25 / 2);
  api_OptReadDataFromFile(opt, path.c_str(), 2, 1, 1, 0);
  read(1, 1, 1);
  EXPECT_EQ(run(opt).last, 1.25 / 2) << "the test set";
  read(0, 1, 1);
  EXPECT_EQ(api_SolveInit(opt), 11);
  std::filesystem::remove(path);
}

TEST(Training, LeastSquares) {
  Host host;
  NetGraph* net = host.tanhNet({1, 6, 1});
  NetOptimizer* opt = host.optimizer(net, ORVANE_STEPPER_DOG_LEG);
  Values x(40), t(40);
  for (std::size_t i = 0; i < 40; ++i) {
    x[i] = static_cast<double>(i) / 20 - 1;
    t[i] = std::sin(3 * x[i]);
  }
  trainOn(opt, x, t, 40);
  api_SetIterCount(opt, 100, 4, 1);
  api_SetEvaluateBySquaredError(opt, 1e-4);
  api_setRegForAllVar(opt, 1e-6, 2);  // without it the first step is one that the dog-leg's rules refuse
  const Progress after = run(opt);
  EXPECT_LE(after.best, 1e-4);
  EXPECT_LT(after.steps, 100);
  EXPECT_GT(after.tests, 1);

  // A linear problem takes one step; a sign rule holds.
  NetVar* a;
  NetGraph* shift = host.shift(2, 1.0, &a);
  NetOptimizer* linear = toTarget(host, shift, {4.0, -3.0}, 1);
  api_SetIterCount(linear, 10, 5, 1);
  EXPECT_LT(run(linear).best, 1e-20);
  EXPECT_NEAR(variables(shift)[1], -3.0, 1e-9);
  api_setRegForVar(linear, a, 0.5, 2);  // (a - t)^2 + a^2
  api_SetNetVarV(a, 0.5);
  run(linear);
  EXPECT_NEAR(variables(shift)[0], 2.0, 1e-9);
  api_SetVarFlag(a, ORVANE_SIGN_NOT_NEGATIVE);
  run(linear);
  EXPECT_EQ(variables(shift)[1], 0.0);
}

TEST(Training, SeedsTheProcess) {  // kept.csv: Train_srand
  Host host;
  NetOptimizer* opt = toTarget(host, host.shift(1, 0.0), {1.0});
  api_SetIterCount(opt, 1, 1, 1);
  std::srand(5);
  run(opt);
  const int after = std::rand();
  std::srand(20200923);
  EXPECT_EQ(after, std::rand());
}

TEST(Training, StepsDoNotAllocate) {
  for (int32_t kind = 2; kind <= 17; ++kind) {
    Host host;
    NetOptimizer* opt = host.optimizer(host.tanhNet({1, 8, 1}), kind);
    trainOn(opt, Values(3200, 0.5), Values(3200, 0.25), 3200);
    api_setRegForAllVar(opt, 1e-3, 2);
    api_OptSetDxCorrectByMaxStep(opt, 0.1);
    api_optSetLookahead(opt, 0.5, 3);
    api_SetEvaluateBySquaredError(opt, -1);
    std::size_t counts[3];
    for (std::size_t round = 0; round < 3; ++round) {  // the first run sizes what stays
      api_SetIterCount(opt, round < 2 ? 10 : 100, 5, 32);
      EXPECT_EQ(api_SolveInit(opt), 0);
      const std::size_t before = allocations;
      api_Solve(opt);
      counts[round] = allocations - before;
    }
    EXPECT_EQ(counts[1], counts[2]) << kind;
    EXPECT_GT(counts[0], 0u);
  }
}

TEST(Training, HostileNumbers) {
  Host host;
  NetGraph* net = host.shift(2, 0.0);
  NetOptimizer* opt = host.optimizer(net, ORVANE_STEPPER_ADAM);
  const Values x{kNaN, 1, 2, 1.7e308}, t{1, kNaN, -1, -1.7e308};
  trainOn(opt, x, t, 2);
  api_SetIterCount(opt, kNaN, -1e300, 1e300);
  EXPECT_EQ(run(opt).steps, 0);
  api_SetIterCount(opt, 5.9, 0.0, -7.0);
  EXPECT_TRUE(std::isnan(run(opt).last)) << "a test that is not finite ends the try";
  EXPECT_EQ(Progress(opt).steps, 0);
  api_SetTestData(opt, Values{1, 1}.data(), Values{2, 2}.data(), 1, 2, 2);
  EXPECT_EQ(run(opt).steps, 1) << "no batch has a finite gradient";
  EXPECT_EQ(variables(net), (Values{0, 0}));
  api_SetTrainData(opt, nullptr, nullptr, 5, 2, 2);
  EXPECT_EQ(api_SolveInit(opt), 11);
  api_SetTrainData(opt, x.data(), t.data(), -5, 2, 2);
  EXPECT_EQ(api_SolveInit(opt), 11);
  api_SetTrainData(opt, x.data(), t.data(), 2, 0, -3);
  EXPECT_EQ(api_SolveInit(opt), 14);
  EXPECT_EQ(api_CreateSolver(18), nullptr);
  EXPECT_EQ(api_CreateSolver(-1), nullptr);
}

}  // namespace
