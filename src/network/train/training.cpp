// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numeric>
#include <random>

#include "frame/random.h"
#include "network/train/net_optimizer.h"

namespace NetWork {
namespace {

constexpr int kAttempts = 16;  // batches that may have no usable gradient
constexpr double kLeastGradient = 1e-16;

/// Sets a flag and clears it at the end, also when an exception passes.
class Running {
 public:
  explicit Running(std::atomic<uint8_t>& byte) : flag(byte), mine(byte.exchange(1) == 0) {}
  ~Running() {
    if (mine) flag.exchange(0);
  }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;
  explicit operator bool() const { return mine; }

 private:
  std::atomic<uint8_t>& flag;
  const bool mine;
};

/// A network in training; at the end it is free again and knows the optimiser's generator no more.
class InTraining {
 public:
  InTraining(NetWork_c& network, std::mt19937& rng) : net(network) {
    net.setTraining(true);
    net.rng = &rng;
  }
  ~InTraining() {
    net.rng = nullptr;
    net.setTraining(false);
  }
  InTraining(const InTraining&) = delete;
  InTraining& operator=(const InTraining&) = delete;

 private:
  NetWork_c& net;
};

/// Largest magnitude; NaN when an entry is NaN.
double largest(std::span<const double> v) {
  double size = 0.0, sum = 0.0;
  for (const double x : v) {
    size = std::max(size, std::abs(x));
    sum += x * 0.0;  // NaN for a NaN and for an infinity
  }
  return size + sum;
}

}  // namespace

void NetOptimizer_c::solve() {
  const Running mine(running);
  if (!mine) return;
  stop.exchange(0);
  if (ready && check({&store[0], &store[1], &store[2], &store[3]}) == 0) {
    use({&store[0], &store[1], &store[2], &store[3]});
    run();
  }
}

void NetOptimizer_c::solveOn(const DataSets& rows) {
  const Running mine(running);
  if (!mine || check(rows) != 0) return;
  slowVar.clear();
  use(rows);
  run();
}

void NetOptimizer_c::run() {
  tryIndex = 0;
  if (solver == nullptr) return;
  while (tryIndex < tryNum && !stop) {
    tryIndex = tryIndex + 1;
    oneTry();
  }
}

void NetOptimizer_c::beginTry() {
  const std::size_t n = net->varSize(), rows = data.trainX->size();
  for (auto* flat : {&grad, &current}) flat->resize(n);
  batchPos = 0;
  solver->init(static_cast<int32_t>(n));
  for (const auto& [layer, share] : regLayer) {
    const auto size = static_cast<double>(layer->size());
    const double count = std::floor(share * size);
    layer->dropCount = count > 0.0 ? static_cast<int32_t>(std::min(count, size)) : 0;
    layer->dropIndex.resize(layer->size());
    std::iota(layer->dropIndex.begin(), layer->dropIndex.end(), 0);
  }
  dxCorrection->rng = &rng;
  net->applySignRule();
  batchSize = std::max(1, static_cast<int32_t>(std::min<std::size_t>(static_cast<std::size_t>(batchSize), rows)));
  order.resize(rows);
  std::iota(order.begin(), order.end(), 0);
  // KEPT: seeds the process's rand, which nothing here draws from; expected: no touch (kept.csv: Train_srand)
  if (tryIndex > 1) return std::srand(static_cast<unsigned>(std::rand()));
  std::srand(20200923);
  bestEval = evalByClass ? 0.0 : 1e300;
  best.resize(n);
  net->getVar(best.data());
}

void NetOptimizer_c::oneTry() {
  const InTraining session(*net, rng);
  beginTry();
  if (!evaluate()) {
    net->setTraining(true);
    lookCount = 0;
    if (auto* dense = dynamic_cast<NetSolverByDogLeg*>(solver))
      makeDenseSteps(*dense);
    else
      makeSteps();
  }
  net->setTraining(true);  // nobody predicts while the variables change
  net->setVar(best.data());
}

void NetOptimizer_c::makeSteps() {
  int32_t sinceTest = 0;
  for (int64_t made = 0; made < iterCount && !stop; ++made) {
    iter = iter + 1;
    if (!batchStep()) break;
    if (++sinceTest < testPeriod) continue;
    sinceTest = 0;
    if (evaluate()) return;
    net->setTraining(true);
  }
  if (sinceTest != 0 && !stop) evaluate();
}

/// False: stopped, or no batch has a gradient.
bool NetOptimizer_c::batchStep() {
  if (lookPeriod != 0) lookAhead();
  if (!batchGradient()) return false;
  net->getVar(current.data());
  if (solver->needVar) solver->vars = current.data();
  solver->step(grad);
  dxCorrection->correct(grad);
  for (std::size_t i = 0; i < grad.size(); ++i) current[i] -= grad[i];
  net->setVar(current.data());
  net->applySignRule();
  return true;
}

/// Every lookPeriod steps the variables go back to a slow copy that has moved towards them (Zhang et al. 2019).
void NetOptimizer_c::lookAhead() {
  if (++lookCount != lookPeriod) return;
  lookCount = 0;
  net->getVar(current.data());
  if (slowVar.size() != current.size())
    slowVar = current;
  else
    for (std::size_t i = 0; i < current.size(); ++i)
      slowVar[i] = current[i] * lookAlpha + (1.0 - lookAlpha) * slowVar[i];
  net->setVar(slowVar.data());
}

bool NetOptimizer_c::batchGradient() {
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    if (!addBatch()) return false;
    const double share = 1.0 / batchSize;
    for (double& g : grad) g *= share;
    regularize();
    const double size = largest(grad);
    if (size >= kLeastGradient && std::isfinite(size)) return true;
  }
  return false;
}

/// Adds up the gradients of the next batch; false when stopped. What is left of the rows before a new round is skipped.
bool NetOptimizer_c::addBatch() {
  const auto batch = static_cast<std::size_t>(batchSize);
  if (static_cast<std::size_t>(batchPos) + batch > order.size()) {
    batchPos = 0;
    std::shuffle(order.begin(), order.end(), std::mt19937(deviceSeed()));
  }
  sampleX.resize(batch);
  sampleY.resize(batch);
  for (std::size_t i = 0; i < batch; ++i) {
    const auto row = static_cast<std::size_t>(order[static_cast<std::size_t>(batchPos) + i]);
    sampleX[i] = (*data.trainX)[row].data();
    sampleY[i] = (*data.trainY)[row].data();
  }
  batchPos += batchSize;
  net->clearGrad();
  const std::size_t block = net->blockSamples();
  for (std::size_t i = 0; i < batch; i += block) {
    if (stop) return false;
    const std::size_t samples = std::min(block, batch - i);
    net->addGradients({&sampleX[i], samples}, {&sampleY[i], samples});
  }
  net->getGrad(grad.data());
  return !stop;
}

void NetOptimizer_c::regularize() {
  if (regVar.empty()) return;
  double* slice = grad.data();
  for (const NetVar_s* var : net->vars) {
    if (var->fixed) continue;
    const auto found = regVar.find(const_cast<NetVar_s*>(var));
    if (found != regVar.end()) {
      const auto [weight, kind] = found->second;
      const auto values = var->value.all();
      for (std::size_t i = 0; i < values.size(); ++i) {
        const double w = values[i];
        slice[i] += kind == 2 ? 2.0 * weight * w : w > 0.0 ? weight : w < 0.0 ? -weight : 0.0;
      }
    }
    slice += var->value.size();
  }
}

/// Adds row(output, target) over the test rows; false when stopped on the way.
template <class Row>
bool NetOptimizer_c::sumOverTest(Row row, double& sum) {
  const RowSet &x = *data.testX, &y = *data.testY;
  const std::size_t block = net->blockSamples(), width = net->outputSize();
  sampleX.resize(std::max(sampleX.size(), block));
  outputs.resize(block * width);
  sum = 0.0;
  for (std::size_t i = 0; i < x.size(); i += block) {
    if (stop) return false;
    const std::size_t samples = std::min(block, x.size() - i);
    for (std::size_t k = 0; k < samples; ++k) sampleX[k] = x[i + k].data();
    net->predict({sampleX.data(), samples}, outputs.data());
    for (std::size_t k = 0; k < samples; ++k) sum += row(std::span(&outputs[k * width], width), y[i + k]);
  }
  return true;
}

/// Tests the variables and remembers the best. True when they are good enough, or past help.
bool NetOptimizer_c::evaluate() {
  net->setTraining(false);
  evalCount = evalCount + 1;
  const auto rows = static_cast<double>(data.testX->size());
  double sum;
  if (evalByClass) {
    const auto hit = [](std::span<const double> y, std::span<const double> t) {
      const auto place = [](auto v) { return std::ranges::max_element(v) - v.begin(); };
      return place(y) == place(t) ? 1.0 : 0.0;
    };
    if (!sumOverTest(hit, sum)) return false;
    curEval = sum / rows;
  } else {
    const auto distance = [](std::span<const double> y, std::span<const double> t) {
      double square = 0.0;
      for (std::size_t i = 0; i < y.size(); ++i) square += (y[i] - t[i]) * (y[i] - t[i]);
      return square;
    };
    if (!sumOverTest(distance, sum)) return false;
    curEval = sum / (rows * static_cast<double>(net->outputSize()));
  }
  if (!std::isfinite(curEval)) return true;
  if (evalByClass ? curEval > bestEval : curEval < bestEval) {
    bestEval = curEval;
    net->getVar(best.data());
  }
  return evalByClass ? curEval >= rateTarget : curEval <= errorTarget;
}

}  // namespace NetWork
