// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <random>
#include <span>
#include <vector>

#include "frame/base_data.h"
#include "frame/shared_value.h"
#include "network/graph/net_work.h"
#include "network/train/dx_correction.h"
#include "network/train/net_base_solver.h"
#include "network/train/net_solver_by_dog_leg.h"
#include "network/train/row_set.h"

namespace NetWork {

enum class Side { trainX, trainY, testX, testY };
inline Side sideOf(bool isTarget, bool isTrain) {
  return isTrain ? (isTarget ? Side::trainY : Side::trainX) : (isTarget ? Side::testY : Side::testX);
}

/// A penalty on a variable, added to its gradient.
struct Regularizer {
  double weight = 0.0;
  int32_t kind = 0;  ///< 1: weight*sign(value), 2: 2*weight*value
};

/// Trains a network by batches. A run belongs to the thread that calls solve; other threads may ask it to stop, see
/// whether it runs and read the numbers of result(). While a run goes on, the setters of data, network and solver do
/// nothing.
class NetOptimizer_c final : public BaseData {
 public:
  NetOptimizer_c();

  void setNetwork(NetWork_c* network);
  void setSolver(NetBaseSolver_c* rule);
  void setDxCorrection(std::unique_ptr<NetDxCorrection_c> correction);
  void setCost(int32_t kind);

  void setRows(Side side, const double* rows, int32_t count, int32_t cols);
  void setRows(Side side, const RowSet& rows);
  void addRows(Side side, const double* rows, int32_t count, int32_t cols);
  void clearData(bool isTrain);
  void split(const double* data, int32_t rows, int32_t inCols, int32_t outCols, double share);
  bool readFile(const char* path, int32_t rows, int32_t inCols, int32_t outCols, bool isTrain);

  void evaluateByClass(double rate);
  void evaluateBySquaredError(double target);
  void setRegularizer(NetVar_s* var, Regularizer penalty);
  void setRegularizer(Regularizer penalty);  ///< of all variables of the network
  void setDrop(NetLayer_s* layer, double share);
  void setIterCount(double count, double period, double batch);
  void setLookahead(double alpha, int32_t period);
  void getResult(double* out) const;
  int32_t varSize() const { return net == nullptr ? 0 : static_cast<int32_t>(net->varSize()); }
  void getVar(double* out) const;
  void setVar(const double* in);

  /// Code of the first thing that does not fit, or 0. `data` without a test side is tested on its training side.
  int32_t check(const DataSets& data) const;
  int32_t init();
  void solve();
  /// A run over rows of someone else; the own sets stay as they are. A stop that came before holds.
  void solveOn(const DataSets& rows);
  void requestStop() { stop.exchange(1); }
  void clearStop() { stop.exchange(0); }
  bool isRunning() const { return running.load() != 0; }

  DataSets data;  ///< sets in use
  RowSet store[4];
  std::vector<int32_t> order;
  uint8_t trainOnly = 0;
  NetWork_c* net = nullptr;
  uint8_t noPreprocess = 0;
  uint8_t preprocessType = 255;
  uint8_t ready = 0;
  std::atomic<uint8_t> running = 0;
  std::atomic<uint8_t> stop = 1;
  int32_t tryNum = 1;
  SharedValue<int32_t> tryIndex = 0;
  NetBaseSolver_c* solver = nullptr;  ///< the host's
  std::unique_ptr<NetDxCorrection_c> dxCorrection;
  CostGrad costGrad = nullptr;
  std::map<NetVar_s*, Regularizer> regVar;
  std::map<NetLayer_s*, double> regLayer;
  SharedValue<uint8_t> evalByClass = 0;
  double errorTarget = 1e-12;
  double rateTarget = 0.99;
  int64_t iterCount = 256;  ///< steps of a try
  int32_t testPeriod = 8;
  int32_t batchSize = 16;
  int32_t batchPos = 0;
  SharedValue<int64_t> iter = 0;  ///< steps of all tries
  SharedValue<int32_t> evalCount = 0;
  int32_t costKind = -1;
  SharedValue<double> bestEval = 1e300, curEval = 1e300;
  std::vector<double> grad;  ///< flat, of a batch; then the step
  std::mt19937 rng;
  int64_t lookCount = 0, lookPeriod = 0;
  double lookAlpha = 0.0;
  std::vector<double> slowVar;

 private:
  RowSet& of(Side side) { return store[static_cast<std::size_t>(side)]; }
  void use(const DataSets& rows);
  void preprocess();

  void run();
  void beginTry();
  void oneTry();
  void makeSteps();
  void makeDenseSteps(NetSolverByDogLeg& dense);
  struct PenaltyRow {
    std::size_t place;  ///< in the flat variables
    double factor;
  };
  std::vector<PenaltyRow> penaltyRows() const;
  bool residuals(std::span<double> r);
  bool jacobian(std::span<double> rows);

  bool batchStep();
  bool batchGradient();
  bool addBatch();
  void regularize();
  void lookAhead();

  bool evaluate();
  template <class Row>
  bool sumOverTest(Row row, double& sum);

  std::vector<const double*> sampleX, sampleY;
  std::vector<double> outputs;
  std::vector<double> current, best;  ///< flat variables
};

}  // namespace NetWork
