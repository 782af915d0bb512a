// SPDX-License-Identifier: Apache-2.0
// Training and prediction through the exports, as a host; network_peers.py runs the same beside PyTorch and
// scikit-learn.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

#include "orvane/network_training.h"

namespace {

using Values = std::vector<double>;

/// Layers one after another, with small random numbers.
class Model {
 public:
  explicit Model(int32_t size) : input(layer(size, ORVANE_LAYER_COPY)) {}
  ~Model() {
    for (auto handle = handles.rbegin(); handle != handles.rend(); ++handle) api_FreeHandle(*handle);
  }
  template <class Handle>
  Handle* own(Handle* handle) {
    handles.push_back(handle);
    return handle;
  }
  NetLayer* layer(int32_t size, uint8_t kind, NetVar* a = nullptr) {
    NetLayer* made = own(api_CreateNetLayer(size, kind));
    if (last != nullptr) api_SetInput1ToNetLayer(made, last);
    if (a != nullptr) api_SetVarToNetLayer(made, a);
    return last = made;
  }
  NetVar* var(int32_t rows, int32_t cols) {
    NetVar* made = own(api_CreateNetVar(rows, cols));
    Values values(static_cast<std::size_t>(rows) * static_cast<std::size_t>(cols));
    std::normal_distribution<double> normal(0, 1 / std::sqrt(cols));
    for (double& v : values) v = normal(rng);
    api_SetNetVarValue(made, values.data());
    return made;
  }
  Model& dense(int32_t size) {
    const int32_t before = api_GetNetLayerSize(last);
    layer(size, ORVANE_LAYER_W_DOT_X, var(size, before));
    layer(size, ORVANE_LAYER_X_ADD_A, var(1, size));
    return *this;
  }
  Model& element(uint8_t kind) {
    layer(api_GetNetLayerSize(last), kind);
    return *this;
  }
  Model& window(int32_t size, uint8_t kind, int32_t side, int32_t width, int32_t move) {
    NetLayer* made = layer(size, kind);
    api_SetLayerInputDim(made, side, side);
    api_SetLayerWindowDim(made, width, width);
    api_SetMoveDiff(made, move, move);
    if (kind == ORVANE_LAYER_CONVOLUTION) {
      api_SetVarToNetLayer(made, var(width, width));
      api_SetVar2ToNetLayer(made, var(1, 1));
    }
    return *this;
  }
  NetGraph* done() {
    NetGraph* net = own(api_CreateNetWork());
    return api_NetWorkInit(net, input, last) == ORVANE_NETWORK_READY ? net : nullptr;
  }

 private:
  std::vector<void*> handles;
  std::mt19937 rng{3};
  NetLayer* last = nullptr;
  NetLayer* input;
};

/// `steps` Adam steps of `batch` rows, drawn once, per iteration; the two tests of a run see one row.
void train(benchmark::State& state, Model& model, NetGraph* net, int32_t rows, double steps, double batch) {
  if (net == nullptr) return state.SkipWithError("the network is not ready");
  const int32_t in = api_GetInputSize(net), out = api_GetOutputSize(net);
  std::mt19937 rng(5);
  std::uniform_real_distribution<double> uniform;
  Values x(static_cast<std::size_t>(rows * in)), t(static_cast<std::size_t>(rows * out), 0.0);
  for (double& v : x) v = uniform(rng);
  for (int32_t i = 0; i < rows; ++i) t[static_cast<std::size_t>(i * out + i % out)] = 1.0;
  NetOptimizer* opt = model.own(api_CreateOptimizer());
  NetSolver* rule = model.own(api_CreateSolver(ORVANE_STEPPER_ADAM));
  api_SetSolverVar(rule, 0.9, 0.99, 0, 1e-3, 1e-3, 0);
  api_SetNewWork(opt, net);
  api_SetSolver(opt, rule);
  api_SetTrainData(opt, x.data(), t.data(), rows, in, out);
  api_SetTestData(opt, x.data(), t.data(), 1, in, out);
  api_SetEvaluateBySquaredError(opt, -1);
  api_SetIterCount(opt, steps, steps + 1, batch);
  if (api_SolveInit(opt) != ORVANE_TRAINING_READY) return state.SkipWithError("the optimiser is not ready");
  for (auto _ : state) api_Solve(opt);
  state.SetItemsProcessed(static_cast<int64_t>(static_cast<double>(state.iterations()) * steps * batch));
}

NetGraph* tanhNet(Model& model) {
  return model.dense(32).element(ORVANE_LAYER_TANH).dense(32).element(ORVANE_LAYER_TANH).dense(1).done();
}

void FullBatch(benchmark::State& state) {
  Model model(1);
  train(state, model, tanhNet(model), 1000, 200, 1000);
}
BENCHMARK(FullBatch)->Unit(benchmark::kMillisecond);

void SmallBatches(benchmark::State& state) {
  Model model(1);
  train(state, model, tanhNet(model), 1000, 640, 32);
}
BENCHMARK(SmallBatches)->Unit(benchmark::kMillisecond);

void Classifier(benchmark::State& state) {
  Model model(64);
  train(state, model, model.dense(128).element(ORVANE_LAYER_RELU).dense(10).done(), 1797, 560, 32);
}
BENCHMARK(Classifier)->Unit(benchmark::kMillisecond);

void Pictures(benchmark::State& state) {
  Model model(64);
  model.window(36, ORVANE_LAYER_CONVOLUTION, 8, 3, 1).element(ORVANE_LAYER_RELU);
  train(state, model, model.window(9, ORVANE_LAYER_POOL_MAX, 6, 2, 2).dense(10).done(), 1797, 560, 32);
}
BENCHMARK(Pictures)->Unit(benchmark::kMillisecond);

void OneRow(benchmark::State& state) {
  Model model(1);
  NetGraph* net = tanhNet(model);
  double x = 0.3, y = 0;
  for (auto _ : state) {
    api_RunWork(net, &x, &y);
    benchmark::DoNotOptimize(y);
  }
}
BENCHMARK(OneRow);

}  // namespace
