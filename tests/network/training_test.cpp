// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <limits>
#include <new>
#include <set>

#include "network/host.h"
#include "support/numbers.h"

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

/// y = x + a, trained on rows of input 0: the gradient is a less the target.
struct Shift {
  Host host;
  NetVar* a;
  NetLayer* output;
  NetGraph* net;
  NetSolver* rule;
  NetOptimizer* opt;

  Shift(const Numbers& start, const Numbers& targets, int32_t kind = ORVANE_STEPPER_SGD, double rate = 1)
      : net(host.shift(start, &a, &output)), opt(host.optimizer(net, kind, &rule)) {
    if (rate != 1) api_SetSolverVar(rule, 0, 0, 0, rate, rate, 0);
    trainOn(opt, Numbers(targets.size(), 0.0), targets, static_cast<int32_t>(targets.size() / start.size()));
  }
  Numbers after(double steps, int32_t batch = 1) {
    api_SetIterCount(opt, steps, 1e9, batch);
    run(opt);
    return flat(net);
  }
};

TEST(Training, StepsOfEveryRule) {
  Numbers start, targets;
  int cases = 0;
  for (const auto& [key, v] : referenceRows("steppers.csv")) {
    if (key == "start") start = v;
    if (key == "target") targets.insert(targets.end(), v.begin(), v.end());
    if (key != "rule") continue;
    Shift s(start, targets, static_cast<int32_t>(v[0]));
    if (v[1] != 0) api_SetSolverVar(s.rule, v[2], v[3], v[4], 0.5, 0.125, 30);
    // Tested by what is expected, so that the last variables are the best.
    api_SetTestData(s.opt, Numbers(5, 0.0).data(), &v[6], 1, 5, 5);
    api_SetEvaluateBySquaredError(s.opt, -1);
    const Numbers got = s.after(v[5]);
    for (std::size_t i = 0; i < 5; ++i)
      EXPECT_NEAR(got[i], v[6 + i], 1e-12 * std::abs(v[6 + i]))
          << "rule " << v[0] << " set " << v[1] << " steps " << v[5];
    ++cases;
  }
  EXPECT_EQ(cases, 16 * 2 * 3);
}

TEST(Training, AsPyTorch) {
  // The same weights, rows and numbers: steppers_torch.py has PyTorch's errors after 200 steps.
  Numbers x(64), t(64);
  for (std::size_t i = 0; i < 64; ++i) {
    x[i] = 2.0 * static_cast<double>(i) / 63.0 - 1.0;
    t[i] = std::sin(3 * x[i]) + 0.3 * x[i];
  }
  const auto rows = referenceRows("steppers_torch.csv");
  EXPECT_EQ(rows.size(), 8u);
  for (const auto& [name, v] : rows) {
    Host host;
    NetSolver* rule;
    NetOptimizer* opt = host.optimizer(host.tanhNet({1, 16, 16, 1}), static_cast<int32_t>(v[0]), &rule);
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
  }
}

TEST(Training, LookAhead) {
  Shift s({0.0}, {1.0}, ORVANE_STEPPER_SGD, 0.25);
  api_optSetLookahead(s.opt, 0.75, 3);
  // Before steps 3, 6 and 9: the first time the copy is made, then both meet.
  double a = 0.0, slow = kNaN;
  for (int step = 1; step <= 10; ++step) {
    if (step == 3) slow = a;
    if (step == 6 || step == 9) a = slow = 0.75 * a + 0.25 * slow;
    a -= 0.25 * (a - 1.0);
  }
  EXPECT_NEAR(s.after(10)[0], a, 1e-15);
  EXPECT_NEAR(Progress(s.opt).last, (a - 1) * (a - 1), 1e-15);
}

TEST(Training, StepLimit) {
  Numbers seen;
  for (int round = 0; round < 2; ++round) {
    Shift s({0, 0, 0}, {100.0, -100.0, 0.5});
    api_OptSetDxCorrectByMaxStep(s.opt, 2.0);
    api_optSetSeed(s.opt, 77);
    const Numbers a = s.after(1);
    EXPECT_TRUE(a[0] >= 1.6 && a[0] <= 2.0 && a[1] <= -1.6 && a[1] >= -2.0) << a[0] << " " << a[1];
    EXPECT_NE(a[0], -a[1]);
    EXPECT_EQ(a[2], 0.5);
    EXPECT_TRUE(round == 0 || a == seen);
    seen = a;
  }
}

TEST(Training, SignRules) {
  // One step of rate 1 goes to the target, then the rule.
  const Numbers start{-1, -2e-8, -1e-9, 0, 1e-9, 2e-8, 1};
  const std::pair<int, Numbers> rules[] = {{ORVANE_SIGN_FREE, start},
                                           {ORVANE_SIGN_POSITIVE, {0.001, 0.001, 0.001, 0.001, 0.001, 2e-8, 1}},
                                           {ORVANE_SIGN_NOT_NEGATIVE, {0, 0, -1e-9, 0, 1e-9, 2e-8, 1}},
                                           {ORVANE_SIGN_NEGATIVE, {-1, -2e-8, -0.001, -0.001, -0.001, -0.001, -0.001}},
                                           {ORVANE_SIGN_NOT_POSITIVE, {-1, -2e-8, -1e-9, 0, 1e-9, 0, 0}},
                                           {ORVANE_SIGN_NOT_ZERO, {-1, -2e-8, -0.001, -0.001, 0.001, 2e-8, 1}},
                                           {77, start}};
  for (const auto& [rule, expected] : rules) {
    Shift s(Numbers(7, 8.0), start);
    api_SetVarFlag(s.a, static_cast<uint8_t>(rule));
    const Numbers got = s.after(1);
    for (std::size_t i = 0; i < 7; ++i) EXPECT_NEAR(got[i], expected[i], 1e-15) << rule << " " << i;
  }
}

TEST(Training, Penalties) {
  // At rest: a - t + penalty = 0, where the batch's gradient is a mean and the penalty is not divided by its rows.
  for (const double side : {2.0, -2.0})
    for (const int32_t kind : {1, 2, 0, 3}) {
      Shift s({side * 0.005}, {side * 1.5, side * 0.5, side * 1.5, side * 0.5}, ORVANE_STEPPER_SGD, 0.25);
      api_setRegForAllVar(s.opt, 0.25, 2);
      api_setRegForVar(s.opt, s.a, 0.125, kind);
      const double at = kind == 0 ? 2.0 : kind == 1 ? 2.0 - 0.125 : kind == 2 ? 2.0 / 1.25 : 2.0 / 1.5;
      EXPECT_NEAR(s.after(400, 4)[0], side / 2 * at, 1e-12) << kind;
    }
}

TEST(Training, Drop) {
  for (const double share : {0.0, 0.5, 0.74, 1.0}) {
    Shift s({7, 7, 7, 7}, {1, 1, 1, 1});
    api_setRegForLayer(s.opt, s.output, share);
    const Numbers a = s.after(1);
    EXPECT_EQ(std::count(a.begin(), a.end(), 7.0), std::floor(share * 4)) << share;
    EXPECT_EQ(Progress(s.opt).tests, share == 1.0 ? 1 : 2) << "tests do not drop; without a gradient there is one";
    EXPECT_EQ(predict(s.net, Numbers(4, 0.0)), a);
  }
}

TEST(Training, Costs) {
  // One small step takes the gradient off. Finite differences of the losses.
  const Numbers t{0.2, 0.7, 0.1}, y{0.3, 0.6, 0.25};
  using Term = std::function<double(double, double)>;
  const auto sum = [&](const Numbers& v, const Term& term) {
    return term(v[0], t[0]) + term(v[1], t[1]) + term(v[2], t[2]);
  };
  const auto each = [&](Term term) { return [=](const Numbers& v) { return sum(v, term); }; };
  const std::vector<std::function<double(const Numbers&)>> losses{
      each([](double v, double u) { return (v - u) * (v - u) / 2; }),
      each([](double v, double u) { return (v - u) * (v - u) / 6; }),
      each([](double v, double u) { return -(u * std::log(v) + (1 - u) * std::log(1 - v)) / 3; }),
      [&](const Numbers& v) {
        const double norm = sum(v, [](double p, double) { return std::exp(p); });
        return sum(v, [&](double p, double u) { return -u * (p - std::log(norm)); });
      },
      [&](const Numbers& v) {
        const double a = sum(v, [](double p, double u) { return p * u; });
        const double p = sum(v, [](double q, double) { return q * q; }),
                     q = sum(t, [](double, double u) { return u * u; });
        return 1 - a / std::sqrt(p * q);
      },
      each([](double v, double u) { return std::abs(v - u); })};
  for (int32_t kind = -1; kind <= 6; ++kind) {
    Shift s({0, 0, 0}, t, ORVANE_STEPPER_SGD, 1e-3);
    trainOn(s.opt, y, t, 1);
    api_SetCostFun(s.opt, kind);
    const Numbers a = s.after(1);
    const auto& loss = losses[kind < 0 || kind > 5 ? 0 : static_cast<std::size_t>(kind)];
    for (std::size_t i = 0; i < 3; ++i) {
      Numbers up = y, down = y;
      up[i] += 1e-5, down[i] -= 1e-5;
      EXPECT_NEAR(-a[i] / 1e-3, (loss(up) - loss(down)) / 2e-5, 1e-8) << kind << " " << i;
    }
  }
  Shift nothing({0, 0}, {1, 2});  // a vector without a direction has no gradient
  api_SetCostFun(nothing.opt, ORVANE_COST_COSINE);
  EXPECT_EQ(nothing.after(9), (Numbers{0, 0}));
  EXPECT_EQ(Progress(nothing.opt).steps, 1);
}

TEST(Training, LooksForAGradientSixteenTimes) {
  for (const std::size_t dull : {15, 16}) {  // rows in front without a gradient, then one with
    Numbers t(40, 0.0);
    t[dull] = 1.0;
    t[2] = dull == 15 ? kNaN : 0.0;  // a gradient that is not a number is none
    Shift s({0}, t);
    api_SetTestData(s.opt, t.data(), Numbers{1.0}.data(), 1, 1, 1);
    EXPECT_EQ(s.after(1)[0], dull == 15 ? 1.0 : 0.0);
    EXPECT_EQ(Progress(s.opt).tests, dull == 15 ? 2 : 1);
  }
}

TEST(Training, BestOfAllTests) {
  // Steps of rate 3 jump away from the target: 0 -> 3 -> -3 -> 9 for target 1; the start is the best.
  Shift s({0}, {1}, ORVANE_STEPPER_SGD, 3);
  api_SetIterCount(s.opt, 3, 1, 1);
  api_SetTryNum(s.opt, 2);
  Progress after = run(s.opt);
  EXPECT_EQ(flat(s.net)[0], 0.0);
  EXPECT_EQ(after.best, 1.0);
  EXPECT_EQ(after.last, 64.0);
  EXPECT_EQ(after.tests, 8) << "no second test of the same variables";
  EXPECT_EQ(after.steps, 6) << "each try has its own steps, all are counted";
  EXPECT_EQ(after.tryIndex, 2);
  api_SetTryNum(s.opt, 0);
  api_Solve(s.opt);
  EXPECT_EQ(Progress(s.opt).tests, 8);
  api_SetTryNum(s.opt, 1);
  api_SetEvaluateBySquaredError(s.opt, 1.0);
  EXPECT_EQ(Progress(s.opt).best, 1e300);
  api_Solve(s.opt);
  EXPECT_EQ(Progress(s.opt).steps, 6) << "good enough before the first step";

  // By class: a row scores when the place of its largest output is the target's.
  trainOn(s.opt = s.host.optimizer(s.host.shift({0, 0}), ORVANE_STEPPER_SGD), {1, 0, 0, 0.5, 2, 1.9, 0.5, 0},
          {1, 0, 1, 0, 1, 0, 1, 0}, 4);
  for (const double enough : {0.75, 1.0}) {
    api_SetEvaluateByClass(s.opt, enough);
    after = run(s.opt);
    EXPECT_EQ(after.byClass, 1);
    EXPECT_EQ(after.best, enough);
    EXPECT_EQ(after.steps == 0, enough == 0.75);
  }
}

TEST(Training, TakesTheRowsInOrderFirst) {
  // 6 rows in batches of 2 at rate 1: after a batch a is the mean of its targets.
  const Numbers targets{1, 2, 4, 8, 16, 32}, means{1.5, 6, 24};
  for (std::size_t step = 1; step <= 3; ++step) {
    Shift s({0}, targets);
    api_SetTestData(s.opt, Numbers{0.0}.data(), &means[step - 1], 1, 1, 1);
    EXPECT_EQ(s.after(static_cast<double>(step), 2)[0], means[step - 1]);
  }
}

TEST(Training, Rescales) {
  // y = x + a with a = 0 and targets that are the rescaled inputs: nothing to learn. Test rows have the training's
  // scale.
  const double d = std::sqrt(1.5);
  const std::pair<uint8_t, Numbers> cases[] = {{0, {0, 0, 0.5, 0, 1, 0, 2, -4}}, {1, {-d, 0, 0, 0, d, 0, 3 * d, -4}}};
  for (const auto& [type, scaled] : cases) {
    Shift s({0, 0}, {0, 0});
    const Numbers x{2, 5, 4, 5, 6, 5};
    api_SetPreprocessType(s.opt, type);
    api_SetEvaluateBySquaredError(s.opt, 1e-28);
    for (int round = 0; round < 2; ++round) {
      api_SetTrainData(s.opt, x.data(), scaled.data(), 3, 2, 2);
      if (round == 1) api_SetTestData(s.opt, Numbers{10, 9}.data(), Numbers{scaled[6], 0}.data(), 1, 2, 2);
      EXPECT_EQ(run(s.opt).steps, 0) << int{type};
      EXPECT_LT(Progress(s.opt).last, 1e-28);
    }
  }
}

TEST(Training, CodesOfInit) {
  Host host;
  NetOptimizer* opt = host.own(api_CreateOptimizer());
  api_SetSolver(opt, host.own(api_CreateSolver(3)));
  const Progress before(opt);
  EXPECT_EQ(before.tests + before.byClass + before.tryIndex + before.steps, 0);
  EXPECT_TRUE(before.last == 1e300 && before.best == 1e300 && !api_IsRun(opt));
  api_setRegForVar(opt, nullptr, 1, 1);
  api_setRegForLayer(opt, nullptr, 0.5);
  const Numbers one(8, 1.0);
  NetVar* a;
  NetGraph *empty = host.own(api_CreateNetWork()), *net = host.shift({0, 0}, &a);
  const auto train = [&](int32_t rows, int32_t in, int32_t out) {
    api_SetTrainData(opt, one.data(), one.data(), rows, in, out);
  };
  const auto test = [&](int32_t in, int32_t out) { api_SetTestData(opt, one.data(), one.data(), 2, in, out); };
  const std::pair<int32_t, std::function<void()>> steps[] = {
      {11, [] {}},
      {12, [&] { train(2, 2, 2); }},
      {13, [&] { api_SetNewWork(opt, empty); }},
      {0, [&] { api_SetNewWork(opt, net); }},
      {14, [&] { train(2, 1, 2); }},
      {15, [&] { train(2, 2, 3); }},
      {14, [&] { train(2, 2, 2), api_AddTrainData(opt, one.data(), one.data(), 1, 1, 2); }},  // every row is looked at
      {11, [&] { train(2, 2, 2), api_OptSetData2(opt, one.data(), 3, 2, 1, 1); }},
      {16, [&] { train(2, 2, 2), api_SetNetVarFixed(a, 1); }},
      {17, [&] { api_SetNetVarFixed(a, 0), test(3, 2); }},
      {18, [&] { test(2, 1); }},
      {11, [&] { api_AddTestData(opt, nullptr, one.data(), 2, 2, 1); }},
      {0, [&] { api_ClearData(opt, 0); }},
      {11, [&] { api_SetTrainData(opt, nullptr, nullptr, 5, 2, 2); }},
      {11, [&] { train(-5, 2, 2); }},
      {14, [&] { train(2, 0, -3); }}};
  for (const auto& [code, change] : steps) {
    change();
    EXPECT_EQ(api_SolveInit(opt), code);
  }
  train(2, 2, 2);
  EXPECT_EQ(api_SolveInit(opt), 0);
  EXPECT_EQ(api_GetOptVarSize(opt), 2);
  Numbers v{4, 5};
  api_OptSetOptVarValue(opt, v.data());
  v = {0, 0};
  api_OptGetOptVarValue(opt, v.data());
  EXPECT_EQ(v, (Numbers{4, 5}));

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
  for (const int32_t kind : {18, -1, 300}) EXPECT_EQ(api_CreateSolver(kind), nullptr);
}

TEST(Training, DataFromTablesAndArrays) {
  Shift s({0, 0}, {0, 0});
  api_SetIterCount(s.opt, 0, 1, 1);
  Data2D* table = s.host.own(api_Data2D_Create(3, 2));
  api_Data2D_SetValue(table, Numbers{1, 2, 3, 4, 5, 6}.data());
  api_OptSetData(s.opt, table, 0, 1);
  EXPECT_EQ(api_SolveInit(s.opt), 11);
  api_OptSetData(s.opt, table, 1, 1);
  EXPECT_EQ(run(s.opt).last, 0.0) << "inputs are the targets";
  api_OptSetData2(s.opt, Numbers{1, 2, 3, 4, 5, 9}.data(), 3, 2, 1, 1);
  EXPECT_EQ(run(s.opt).last, 1.5) << "9/6 the mean of six entries";
  api_OptSetData(s.opt, table, 0, 0);
  api_OptSetData2(s.opt, Numbers{1, 2, 3, 4, 5, 8}.data(), 3, 2, 1, 0);
  EXPECT_EQ(run(s.opt).last, 4.0 / 6.0) << "test rows of their own";
  api_ClearData(s.opt, 1);
  EXPECT_EQ(api_SolveInit(s.opt), 11);
}

TEST(Training, SplitsAtRandom) {
  // Row i has target 2^i, so that the test error tells which rows are tested.
  std::set<std::string> seen;
  Numbers rows;
  for (int i = 0; i < 10; ++i) rows.insert(rows.end(), {0.0, std::ldexp(1.0, i)});
  Shift s({0}, {0});
  api_SetIterCount(s.opt, 0, 1, 1);
  for (int round = 0; round < 12; ++round) {
    api_SetData(s.opt, rows.data(), 10, 1, 1, 0.7);
    double sum = run(s.opt).last * 3;
    std::string chosen;
    for (int i = 0; i < 10; ++i, sum = std::floor(sum / 4)) chosen += std::fmod(sum, 4) == 1 ? 'x' : '.';
    EXPECT_EQ(std::count(chosen.begin(), chosen.end(), 'x'), 3) << chosen;
    seen.insert(chosen);
  }
  EXPECT_GT(seen.size(), 3u);
  api_SetData(s.opt, rows.data(), 10, 1, 1, 0.0);
  EXPECT_EQ(api_SolveInit(s.opt), 11);
  api_SetData(s.opt, rows.data(), 10, 1, 1, 5.0);
  EXPECT_EQ(api_SolveInit(s.opt), 0);
  api_SetData(s.opt, nullptr, 10, 1, 1, 0.0);
  api_SetData(s.opt, rows.data(), 0, 1, 1, 0.0);
  api_SetData(s.opt, rows.data(), 10, -1, 1, 0.0);
  EXPECT_EQ(api_SolveInit(s.opt), 0) << "nothing changed";
}

TEST(Training, Files) {
  Shift s({0}, {0});
  const auto folder = std::filesystem::temp_directory_path();
  const auto path = folder / ("orvane_training_" + std::to_string(std::rand()));
  const Numbers records{1, 1.5, 2, 3, 3, 5};
  const auto write = [&](std::streamsize bytes) {
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(records.data()), bytes);
  };
  const auto read = [&](int32_t rows, int32_t in, int32_t out, bool isTrain = true) {
    api_OptReadDataFromFile(s.opt, path.c_str(), rows, in, out, isTrain);
    return run(s.opt).last;
  };
  api_SetIterCount(s.opt, 0, 1, 1);
  write(48);
  EXPECT_EQ(read(3, 1, 1), (0.25 + 1 + 4) / 3);
  write(47);
  EXPECT_EQ(read(3, 1, 1), (0.25 + 1 + 4) / 3) << "too short: as before";
  EXPECT_EQ(read(2, 1, 1), 1.25 / 2) << "longer than asked: the first records";
  constexpr int32_t most = std::numeric_limits<int32_t>::max();
  for (const auto& [rows, in, out] :
       std::vector<std::array<int32_t, 3>>{{most, most, most}, {most, 1, 1}, {-1, 1, 1}, {2, -1, 2}, {1, 100, 100}})
    EXPECT_EQ(read(rows, in, out), 1.25 / 2) << rows;
  for (const char* other : {"/no/such/file", folder.c_str(), static_cast<const char*>(nullptr)})
    api_OptReadDataFromFile(s.opt, other, 1, 1, 1, 1);
  EXPECT_EQ(read(2, 1, 1, false), 1.25 / 2);
  EXPECT_EQ(read(1, 1, 1), 1.25 / 2) << "the test set";
  api_OptReadDataFromFile(s.opt, path.c_str(), 0, 1, 1, 1);
  EXPECT_EQ(api_SolveInit(s.opt), 11);
  std::filesystem::remove(path);
}

TEST(Training, LeastSquares) {
  Host host;
  NetOptimizer* opt = host.optimizer(host.tanhNet({1, 6, 1}), ORVANE_STEPPER_DOG_LEG);
  Numbers x(40), t(40);
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

  // A linear problem takes one step; a penalty and a sign rule hold.
  Shift linear({1, 1}, {4, -3}, 1);
  EXPECT_NEAR(linear.after(10)[1], -3.0, 1e-9);
  EXPECT_LT(Progress(linear.opt).best, 1e-20);
  api_setRegForVar(linear.opt, linear.a, 0.5, 2);  // (a - t)^2 + a^2
  api_SetNetVarV(linear.a, 0.5);
  EXPECT_NEAR(linear.after(10)[0], 2.0, 1e-9);
  api_SetVarFlag(linear.a, ORVANE_SIGN_NOT_NEGATIVE);
  EXPECT_EQ(linear.after(10)[1], 0.0);
}

TEST(Training, SeedsTheProcess) {  // kept.csv: Train_srand
  Shift s({0}, {1});
  std::srand(5);
  s.after(1);
  const int after = std::rand();
  std::srand(20200923);
  EXPECT_EQ(after, std::rand());
}

TEST(Training, StepsDoNotAllocate) {
  for (int32_t kind = 2; kind <= 17; ++kind) {
    Host host;
    NetOptimizer* opt = host.optimizer(host.tanhNet({1, 8, 1}), kind);
    trainOn(opt, Numbers(3200, 0.5), Numbers(3200, 0.25), 3200);
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
  Shift s({0, 0}, {0, 0}, ORVANE_STEPPER_ADAM);
  const Numbers x{kNaN, 1, 2, 1.7e308}, t{1, kNaN, -1, -1.7e308};
  trainOn(s.opt, x, t, 2);
  api_SetIterCount(s.opt, kNaN, -1e300, 1e300);
  EXPECT_EQ(run(s.opt).steps, 0);
  api_SetIterCount(s.opt, 5.9, 0.0, -7.0);
  EXPECT_TRUE(std::isnan(run(s.opt).last)) << "a test that is not finite ends the try";
  EXPECT_EQ(Progress(s.opt).steps, 0);
  api_SetTestData(s.opt, Numbers{1, 1}.data(), Numbers{2, 2}.data(), 1, 2, 2);
  EXPECT_EQ(run(s.opt).steps, 1) << "no batch has a finite gradient";
  EXPECT_EQ(flat(s.net), (Numbers{0, 0}));
}

}  // namespace
