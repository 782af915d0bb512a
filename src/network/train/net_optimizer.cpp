// SPDX-License-Identifier: Apache-2.0
#include "network/train/net_optimizer.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <limits>
#include <utility>

#include "frame/random.h"
#include "network/train/cost.h"
#include "orvane/network_training.h"

namespace NetWork {
namespace {

/// A host's count as an integer; what is not a number or out of range goes to the nearest end.
template <class T>
T truncated(double x) {
  constexpr double most = static_cast<double>(std::numeric_limits<T>::max());
  if (!(x > 0.0)) return 0;
  return x >= most ? std::numeric_limits<T>::max() : static_cast<T>(x);
}

}  // namespace

NetOptimizer_c::NetOptimizer_c() : rng(static_cast<uint32_t>(std::time(nullptr))) { typeCode = 38; }

void NetOptimizer_c::setNetwork(NetWork_c* network) {
  if (isRunning()) return;
  ready = 0;
  net = network;
  slowVar.clear();
}

void NetOptimizer_c::setSolver(NetBaseSolver_c* rule) {
  if (!isRunning()) solver = rule;
}

void NetOptimizer_c::setDxCorrection(std::unique_ptr<NetDxCorrection_c> correction) {
  if (!isRunning()) dxCorrection = std::move(correction);
}

void NetOptimizer_c::setCost(int32_t kind) {
  const CostGrad gradient = costGradient(kind);
  if (gradient == nullptr || isRunning()) return;
  costKind = kind;
  costGrad = gradient;
}

void NetOptimizer_c::setRows(Side side, const double* rows, int32_t count, int32_t cols) {
  if (isRunning()) return;
  of(side).clear();
  appendRows(of(side), rows, count, cols);
}

void NetOptimizer_c::setRows(Side side, const RowSet& rows) {
  if (!isRunning()) of(side) = rows;
}

void NetOptimizer_c::addRows(Side side, const double* rows, int32_t count, int32_t cols) {
  if (!isRunning()) appendRows(of(side), rows, count, cols);
}

void NetOptimizer_c::clearData(bool isTrain) {
  if (isRunning()) return;
  of(sideOf(false, isTrain)).clear();
  of(sideOf(true, isTrain)).clear();
}

void NetOptimizer_c::split(const double* rows, int32_t count, int32_t inCols, int32_t outCols, double share) {
  if (isRunning() || rows == nullptr || count <= 0 || inCols < 0 || outCols < 0) return;
  const auto n = static_cast<std::size_t>(count);
  std::vector<char> isTrain(n, 0);
  const double chosen = std::clamp(std::round(share * count), 0.0, static_cast<double>(count));
  std::fill_n(isTrain.begin(), std::isnan(chosen) ? 0 : static_cast<std::size_t>(chosen), 1);
  std::shuffle(isTrain.begin(), isTrain.end(), std::mt19937(deviceSeed()));
  for (RowSet& set : store) set.clear();
  for (const bool train : isTrain) {
    appendRows(of(sideOf(false, train)), rows, 1, inCols);
    appendRows(of(sideOf(true, train)), rows + inCols, 1, outCols);
    rows += static_cast<std::size_t>(inCols) + static_cast<std::size_t>(outCols);
  }
}

bool NetOptimizer_c::readFile(const char* path, int32_t rows, int32_t inCols, int32_t outCols, bool isTrain) {
  return !isRunning() &&
         readRecords(path, rows, inCols, outCols, of(sideOf(false, isTrain)), of(sideOf(true, isTrain)));
}

void NetOptimizer_c::evaluateByClass(double rate) {
  evalByClass = 1;
  rateTarget = rate;
  bestEval = curEval = 0.0;
}

void NetOptimizer_c::evaluateBySquaredError(double target) {
  evalByClass = 0;
  errorTarget = target;
  bestEval = curEval = 1e300;
}

void NetOptimizer_c::setRegularizer(NetVar_s* var, Regularizer penalty) {
  if (penalty.kind == 0)
    regVar.erase(var);
  else if (penalty.kind == 1 || penalty.kind == 2)
    regVar[var] = penalty;
}

void NetOptimizer_c::setRegularizer(Regularizer penalty) {
  if (net == nullptr) return;
  for (NetVar_s* var : net->vars) setRegularizer(var, penalty);
}

void NetOptimizer_c::setDrop(NetLayer_s* layer, double share) { regLayer[layer] = share; }

void NetOptimizer_c::setIterCount(double count, double period, double batch) {
  iterCount = truncated<int64_t>(count);
  testPeriod = std::max(truncated<int32_t>(period), 1);
  batchSize = std::max(truncated<int32_t>(batch), 1);
}

void NetOptimizer_c::setLookahead(double alpha, int32_t period) {
  lookAlpha = alpha;
  lookPeriod = std::max(period, 2);
}

void NetOptimizer_c::getResult(double* out) const {
  const double values[] = {1.0,
                           static_cast<double>(evalCount.get()),
                           static_cast<double>(evalByClass.get()),
                           static_cast<double>(tryIndex.get()),
                           curEval,
                           bestEval,
                           static_cast<double>(iter.get())};
  std::ranges::copy(values, out);
}

void NetOptimizer_c::getVar(double* out) const {
  if (net != nullptr) net->getVar(out);
}

void NetOptimizer_c::setVar(const double* in) {
  if (net != nullptr && !isRunning()) net->setVar(in);
}

int32_t NetOptimizer_c::check(const DataSets& rows) const {
  const bool hasTest = rows.testX != nullptr && (!rows.testX->empty() || !rows.testY->empty());
  if (rows.trainX == nullptr || rows.trainX->empty() || rows.trainX->size() != rows.trainY->size())
    return ORVANE_TRAINING_ROWS;
  if (hasTest && rows.testX->size() != rows.testY->size()) return ORVANE_TRAINING_ROWS;
  if (net == nullptr) return ORVANE_TRAINING_NO_NETWORK;
  const std::size_t in = net->inputSize(), out = net->outputSize();
  if (in == 0 || out == 0 || !net->usable()) return ORVANE_TRAINING_NETWORK;
  if (!allOfLength(*rows.trainX, in)) return ORVANE_TRAINING_INPUT;
  if (!allOfLength(*rows.trainY, out)) return ORVANE_TRAINING_TARGET;
  if (net->varSize() == 0) return ORVANE_TRAINING_NO_VARIABLE;
  if (hasTest && !allOfLength(*rows.testX, in)) return ORVANE_TRAINING_TEST_INPUT;
  if (hasTest && !allOfLength(*rows.testY, out)) return ORVANE_TRAINING_TEST_TARGET;
  return ORVANE_TRAINING_READY;
}

int32_t NetOptimizer_c::init() {
  if (isRunning()) return ORVANE_TRAINING_RUNS;
  ready = 0;
  const DataSets own{&store[0], &store[1], &store[2], &store[3]};
  if (const int32_t code = check(own); code != ORVANE_TRAINING_READY) return code;
  use(own);
  if (noPreprocess == 0) preprocess();
  ready = 1;
  return ORVANE_TRAINING_READY;
}

/// Makes the sets those of the next run. Without test rows the training rows are tested.
void NetOptimizer_c::use(const DataSets& rows) {
  data = rows;
  trainOnly = rows.testX == nullptr || rows.testX->empty();
  if (trainOnly) {
    data.testX = data.trainX;
    data.testY = data.trainY;
  }
  if (dxCorrection == nullptr) dxCorrection = std::make_unique<NetDxCorrectionByNothing_c>();
  if (costGrad == nullptr) costGrad = costGradient(0);
  net->costGrad = costGrad;
}

/// Rescales the own inputs in place, test rows by the numbers of the training rows.
void NetOptimizer_c::preprocess() {
  if (preprocessType > 1) return;
  const ColumnScales scales = preprocessType == 0 ? unitRange(store[0]) : standardize(store[0]);
  rescale(store[0], scales);
  rescale(store[2], scales);
}

}  // namespace NetWork
