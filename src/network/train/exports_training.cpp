// SPDX-License-Identifier: Apache-2.0
#include "frame/native_data2d.h"
#include "network/native_training.h"
#include "network/train/stepper_table.h"

using NetWork::nativeOrNull;
using NetWork::Side;

NetOptimizer* api_CreateOptimizer(void) {
  return registered<NetOptimizer>(std::make_unique<NetWork::NetOptimizer_c>());
}

NetSolver* api_CreateSolver(int32_t kind) { return registered<NetSolver>(NetWork::makeStepper(kind)); }

void api_SetSolverVar(NetSolver* solver, double beta1, double beta2, double extra, double lrStart, double lrEnd,
                      int32_t steps) {
  native(solver).setVar(beta1, beta2, extra, lrStart, lrEnd, steps);
}

void api_SetNewWork(NetOptimizer* opt, NetGraph* net) { native(opt).setNetwork(nativeOrNull(net)); }

void api_SetSolver(NetOptimizer* opt, NetSolver* solver) { native(opt).setSolver(nativeOrNull(solver)); }

void api_SetTrainData(NetOptimizer* opt, const double* x, const double* y, int32_t rows, int32_t inCols,
                      int32_t outCols) {
  native(opt).setRows(Side::trainX, x, rows, inCols);
  native(opt).setRows(Side::trainY, y, rows, outCols);
}

void api_SetTestData(NetOptimizer* opt, const double* x, const double* y, int32_t rows, int32_t inCols,
                     int32_t outCols) {
  native(opt).setRows(Side::testX, x, rows, inCols);
  native(opt).setRows(Side::testY, y, rows, outCols);
}

void api_AddTrainData(NetOptimizer* opt, const double* x, const double* y, int32_t rows, int32_t inCols,
                      int32_t outCols) {
  native(opt).addRows(Side::trainX, x, rows, inCols);
  native(opt).addRows(Side::trainY, y, rows, outCols);
}

void api_AddTestData(NetOptimizer* opt, const double* x, const double* y, int32_t rows, int32_t inCols,
                     int32_t outCols) {
  native(opt).addRows(Side::testX, x, rows, inCols);
  native(opt).addRows(Side::testY, y, rows, outCols);
}

void api_OptSetData(NetOptimizer* opt, const Data2D* data, int32_t column, uint8_t isTrain) {
  native(opt).setRows(NetWork::sideOf(column != 0, isTrain != 0), native(data).rows);
}

void api_OptSetData2(NetOptimizer* opt, const double* data, int32_t rows, int32_t cols, uint8_t flag, uint8_t isTrain) {
  native(opt).setRows(NetWork::sideOf(flag != 0, isTrain != 0), data, rows, cols);
}

void api_SetData(NetOptimizer* opt, const double* data, int32_t rows, int32_t inCols, int32_t outCols, double share) {
  native(opt).split(data, rows, inCols, outCols, share);
}

void api_ClearData(NetOptimizer* opt, uint8_t isTrain) { native(opt).clearData(isTrain != 0); }

void api_OptReadDataFromFile(NetOptimizer* opt, const char* path, int32_t rows, int32_t inCols, int32_t outCols,
                             uint8_t isTrain) {
  native(opt).readFile(path, rows, inCols, outCols, isTrain != 0);
}

void api_SetPreprocessType(NetOptimizer* opt, uint8_t type) { native(opt).preprocessType = type; }

void api_SetEvaluateByClass(NetOptimizer* opt, double rate) { native(opt).evaluateByClass(rate); }

void api_SetEvaluateBySquaredError(NetOptimizer* opt, double err) { native(opt).evaluateBySquaredError(err); }

void api_setRegForVar(NetOptimizer* opt, NetVar* var, double weight, int32_t kind) {
  if (var != nullptr) native(opt).setRegularizer(&native(var), {weight, kind});
}

void api_setRegForAllVar(NetOptimizer* opt, double weight, int32_t kind) { native(opt).setRegularizer({weight, kind}); }

void api_setRegForLayer(NetOptimizer* opt, NetLayer* layer, double drop) {
  if (layer != nullptr) native(opt).setDrop(&native(layer), drop);
}

void api_OptSetDxCorrectByMaxStep(NetOptimizer* opt, double maxStep) {
  native(opt).setDxCorrection(std::make_unique<NetWork::NetDxCorrectionByMaxStep_c>(maxStep));
}

void api_SetCostFun(NetOptimizer* opt, int32_t kind) { native(opt).setCost(kind); }

void api_SetIterCount(NetOptimizer* opt, double iterCount, double testPeriod, double batchSize) {
  native(opt).setIterCount(iterCount, testPeriod, batchSize);
}

void api_SetTryNum(NetOptimizer* opt, int32_t tryNum) { native(opt).tryNum = tryNum; }

void api_optSetSeed(NetOptimizer* opt, uint32_t seed) { native(opt).rng.seed(seed); }

void api_optSetLookahead(NetOptimizer* opt, double alpha, int32_t period) { native(opt).setLookahead(alpha, period); }

int32_t api_SolveInit(NetOptimizer* opt) { return native(opt).init(); }

void api_Solve(NetOptimizer* opt) { native(opt).solve(); }

void api_Stop(NetOptimizer* opt) { native(opt).requestStop(); }

bool api_IsRun(const NetOptimizer* opt) { return native(opt).isRunning(); }

void api_GetOptRes(const NetOptimizer* opt, double* out) { native(opt).getResult(out); }

int32_t api_GetOptVarSize(const NetOptimizer* opt) { return native(opt).varSize(); }

void api_OptGetOptVarValue(const NetOptimizer* opt, double* data) { native(opt).getVar(data); }

void api_OptSetOptVarValue(NetOptimizer* opt, const double* data) { native(opt).setVar(data); }
