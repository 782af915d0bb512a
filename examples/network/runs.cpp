// SPDX-License-Identifier: Apache-2.0
#include "runs.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

constexpr double kFirstMoment = 0.9, kSecondMoment = 0.999;
constexpr double kRateFalls = 20;  // times from the first step to the last
constexpr int32_t kCompared = 8;   // epochs of a step rule
// Weights of w^2 in the cost. The judge sees answers to rows that the others know by heart: it must not trust them
// much.
constexpr double kPenalty = 5e-4, kJudgePenalty = 5e-3;

struct Rule {
  const char* name;
  int32_t kind;
  double rate;   // as many times the rate of Adam
  double extra;  // the third number of api_SetSolverVar
};

constexpr Rule kAdam = {"Adam", ORVANE_STEPPER_ADAM, 1, 0};
constexpr Rule kRules[] = {kAdam,
                           {"AdamW", ORVANE_STEPPER_ADAMW, 1, 0.01},
                           {"Nadam", ORVANE_STEPPER_NADAM, 1, 0},
                           {"RAdam", ORVANE_STEPPER_RADAM, 1, 0},
                           {"AMSGrad", ORVANE_STEPPER_AMSGRAD, 1, 0},
                           {"AdaMax", ORVANE_STEPPER_ADAMAX, 1, 0},
                           {"AdaBelief", ORVANE_STEPPER_ADABELIEF, 1, 0},
                           {"AdaMod", ORVANE_STEPPER_ADAMOD, 1, 0.98},
                           {"AdaBound", ORVANE_STEPPER_ADABOUND, 1, 0.001},
                           {"AdEMAMix", ORVANE_STEPPER_ADEMAMIX, 1, 0.9968},
                           {"Lion", ORVANE_STEPPER_LION, 0.2, 0.01},
                           {"gradient", ORVANE_STEPPER_SGD, 20, 0}};

constexpr double kDrop = 0.25;  // share of the hidden numbers that a training pass leaves out

/// An optimiser with its step rule.
struct Trainer {
  Trainer(NetGraph* net, const Rule& rule, const Options& options, int32_t epochs, int32_t rows, double penalty)
      : step(api_CreateSolver(rule.kind)), name(rule.name), perEpoch(std::max(rows / options.batch, 1)) {
    const int32_t steps = perEpoch * epochs;
    rate = std::min(options.rate * rule.rate, 1.0);
    api_SetSolverVar(step.get(), kFirstMoment, kSecondMoment, rule.extra, rate, rate / kRateFalls, steps);
    api_SetNewWork(optimizer.get(), net);
    api_SetSolver(optimizer.get(), step.get());
    api_SetCostFun(optimizer.get(), ORVANE_COST_SOFTMAX_CROSS);
    api_SetEvaluateByClass(optimizer.get(), 1.0);
    api_setRegForAllVar(optimizer.get(), penalty, 2);
    api_SetIterCount(optimizer.get(), steps, perEpoch, options.batch);
  }

  Owned<NetSolver> step;
  Owned<NetOptimizer> optimizer{api_CreateOptimizer()};
  std::string name;
  double rate = 0;
  int32_t perEpoch;
};

/// Reads what an optimiser tells while it runs and keeps the result of every test once.
class Recorder {
 public:
  Recorder(const Trainer& source, std::string name, int32_t epochs) : trainer(source), epochs(epochs) {
    curve.name = std::move(name);
    curve.rate = source.rate;
  }

  Progress look(bool finished) {
    double now[7];
    api_GetOptRes(trainer.optimizer.get(), now);
    const double tests = now[1], last = now[4], best = now[5], steps = now[6];
    if (tests > 0) {
      if (!started) start = Clock::now(), started = true;
      // A test is counted when it begins; its result is there as soon as the next step is under way.
      const double epoch = std::min(tests - 1, steps / trainer.perEpoch);
      const bool isThere = finished || steps > (tests - 1) * trainer.perEpoch;
      if (isThere && (curve.epochs.empty() || epoch > curve.epochs.back())) {
        curve.epochs.push_back(epoch);
        curve.rates.push_back(last);
        curve.seconds = std::chrono::duration<double>(Clock::now() - start).count();
      }
      curve.best = best;
    }
    return {curve.name, std::min(steps / trainer.perEpoch, static_cast<double>(epochs)), static_cast<double>(epochs),
            best};
  }

  const Curve& result() const { return curve; }
  bool isOf(const NetOptimizer* optimizer) const { return trainer.optimizer.get() == optimizer; }

 private:
  const Trainer& trainer;
  const double epochs;
  Curve curve;
  bool started = false;
  Clock::time_point start;
};

/// Runs `work` on a thread of its own and calls `poll` until it is done.
void runBeside(const std::function<void()>& work, const std::function<void()>& poll) {
  std::atomic<bool> done = false;
  std::thread worker([&] {
    work();
    done = true;
  });
  while (!done) {
    poll();
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  worker.join();
}

void setSlots(OptNetSet* driver, const Parts& parts) {
  const Digits* const sides[] = {&parts.train, &parts.choose};
  for (int32_t side = 0; side < 2; ++side) {
    const Digits& digits = *sides[side];
    action_OptNetSet_SetDataByArray(driver, digits.pixels.data(), digits.count(), kPixels, 2 * side);
    action_OptNetSet_SetDataByArray(driver, digits.targets.data(), digits.count(), kClasses, 2 * side + 1);
  }
}

}  // namespace

Stack::Stack(const Options& options, std::mt19937& rng)
    : all(static_cast<NetAction*>(action_Create(ORVANE_ACTION_OPT_STACK))) {
  models.push_back(denseModel(options.hidden, rng));
  models.push_back(convolutionModel(options.kernels, rng));
  models.push_back(judgeModel(2, rng));
  for (const Model& model : models) {
    each.emplace_back(static_cast<NetAction*>(action_Create(ORVANE_ACTION_OPT_NET)));
    action_NetAction_SetNetWork(each.back().get(), model.net.get());
    action_OptNetSetAction_AddOptNet(all.get(), each.back().get());
  }
}

std::vector<Curve> Stack::train(const Parts& parts, const Options& options, const Watcher& watcher) {
  std::vector<Trainer> trainers;
  trainers.reserve(models.size());
  for (const Model& model : models)
    trainers.emplace_back(model.net.get(), kAdam, options, options.epochs, parts.train.count(),
                          &model == &models.back() ? kJudgePenalty : kPenalty);
  std::vector<Recorder> recorders;
  for (size_t i = 0; i < models.size(); ++i) {
    if (models[i].hidden != nullptr) api_setRegForLayer(trainers[i].optimizer.get(), models[i].hidden, kDrop);
    recorders.emplace_back(trainers[i], models[i].name, options.epochs);
    action_OptNetAction_SetNetOptimizer(each[i].get(), trainers[i].optimizer.get());
  }
  const Owned<OptNetSet> driver(static_cast<OptNetSet*>(action_Create(ORVANE_ACTION_DRIVER)));
  setSlots(driver.get(), parts);
  action_OptNetSet_SetRoot(driver.get(), all.get());
  if (action_OptNetSet_Init(driver.get()) != ORVANE_ACTION_OK) throw std::logic_error("the stack cannot be trained");

  const auto look = [&](bool finished) {
    const NetOptimizer* current = action_OptNetSet_CurrentOptimizer(driver.get());
    for (Recorder& recorder : recorders) {
      const bool runs = recorder.isOf(current);
      const Progress progress = recorder.look(finished || !runs);
      if (runs) watcher.show(progress);
    }
  };
  runBeside([&] { action_OptNetSet_Optimize(driver.get()); },
            [&] {
              look(false);
              if (watcher.stopAsked()) action_OptNetSet_Stop(driver.get());
            });
  look(true);

  std::vector<Curve> curves;
  for (size_t i = 0; i < models.size(); ++i) {
    action_OptNetAction_SetNetOptimizer(each[i].get(), nullptr);
    if (!recorders[i].result().epochs.empty()) curves.push_back(recorders[i].result());
  }
  return curves;
}

std::vector<Curve> compareSteppers(const Parts& parts, const Options& options, const Watcher& watcher) {
  std::mt19937 rng(options.seed);
  Model model = denseModel(options.hidden, rng);
  const std::vector<double> start = model.weights();
  const int32_t epochs = std::min(options.epochs, kCompared);
  std::vector<Curve> curves;
  for (const Rule& rule : kRules) {
    if (watcher.stopAsked()) break;
    model.setWeights(start);
    const Trainer trainer(model.net.get(), rule, options, epochs, parts.train.count(), 0.0);
    NetOptimizer* optimizer = trainer.optimizer.get();
    api_SetTrainData(optimizer, parts.train.pixels.data(), parts.train.targets.data(), parts.train.count(), kPixels,
                     kClasses);
    api_SetTestData(optimizer, parts.choose.pixels.data(), parts.choose.targets.data(), parts.choose.count(), kPixels,
                    kClasses);
    api_SolveInit(optimizer);
    Recorder recorder(trainer, rule.name, epochs);
    runBeside([&] { api_Solve(optimizer); },
              [&] {
                watcher.show(recorder.look(false));
                if (watcher.stopAsked()) api_Stop(optimizer);
              });
    recorder.look(true);
    curves.push_back(recorder.result());
  }
  return curves;
}

std::vector<double> outputsOf(NetAction* action, const Digits& digits) {
  std::vector<double> outputs(static_cast<size_t>(digits.count()) * kClasses);
  for (int32_t i = 0; i < digits.count(); ++i)
    action_NetAction_Predict(action, digits.picture(i), &outputs[static_cast<size_t>(i) * kClasses]);
  return outputs;
}

int answerOf(const double* outputs) {
  return static_cast<int>(std::max_element(outputs, outputs + kClasses) - outputs);
}

double rateOf(const std::vector<double>& outputs, const Digits& digits) {
  int32_t right = 0;
  for (int32_t i = 0; i < digits.count(); ++i)
    right += answerOf(&outputs[static_cast<size_t>(i) * kClasses]) == digits.labels[static_cast<size_t>(i)];
  return static_cast<double>(right) / digits.count();
}
