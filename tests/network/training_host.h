// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>
#include <orvane/action.h>

#include <cmath>
#include <vector>

using Values = std::vector<double>;

/// Objects of a host, released in the reverse order of their creation.
class Host {
 public:
  Host() = default;
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;
  ~Host() {
    for (auto handle = handles.rbegin(); handle != handles.rend(); ++handle) api_FreeHandle(*handle);
  }

  template <class Handle>
  Handle* own(Handle* handle) {
    handles.push_back(handle);
    return handle;
  }

  NetVar* var(int32_t rows, int32_t cols, double value) {
    NetVar* v = own(api_CreateNetVar(rows, cols));
    api_SetNetVarV(v, value);
    return v;
  }
  NetLayer* layer(int32_t size, uint8_t kind, NetLayer* input = nullptr, NetVar* a = nullptr) {
    NetLayer* l = own(api_CreateNetLayer(size, kind));
    if (input != nullptr) api_SetInput1ToNetLayer(l, input);
    if (a != nullptr) api_SetVarToNetLayer(l, a);
    return l;
  }
  NetGraph* network(NetLayer* input, NetLayer* output) {
    NetGraph* net = own(api_CreateNetWork());
    EXPECT_EQ(api_NetWorkInit(net, input, output), ORVANE_NETWORK_READY);
    return net;
  }

  /// y = x + a with one entry of a for each output.
  NetGraph* shift(int32_t size, double start, NetVar** a = nullptr, NetLayer** output = nullptr) {
    NetVar* v = var(1, size, start);
    NetLayer* input = layer(size, ORVANE_LAYER_COPY);
    NetLayer* sum = layer(size, ORVANE_LAYER_X_ADD_A, input, v);
    if (a != nullptr) *a = v;
    if (output != nullptr) *output = sum;
    return network(input, sum);
  }

  /// Layers of W x + b with tanh between, entry k of all numbers 0.6 sin(1.7 k + 0.3).
  NetGraph* tanhNet(const std::vector<int32_t>& sizes) {
    NetLayer *input = layer(sizes[0], ORVANE_LAYER_COPY), *last = input;
    for (std::size_t i = 1; i < sizes.size(); ++i) {
      last = layer(sizes[i], ORVANE_LAYER_W_DOT_X, last, var(sizes[i], sizes[i - 1], 0.0));
      last = layer(sizes[i], ORVANE_LAYER_X_ADD_A, last, var(1, sizes[i], 0.0));
      if (i + 1 < sizes.size()) last = layer(sizes[i], ORVANE_LAYER_TANH, last);
    }
    NetGraph* net = network(input, last);
    Values all(static_cast<std::size_t>(api_NetWorkGetVarSize(net)));
    for (std::size_t k = 0; k < all.size(); ++k) all[k] = 0.6 * std::sin(1.7 * static_cast<double>(k) + 0.3);
    api_NetWorkSetVar(net, all.data());
    return net;
  }

  /// An optimiser of `net` with the step rule `kind`.
  NetOptimizer* optimizer(NetGraph* net, int32_t kind, NetSolver** rule = nullptr) {
    NetOptimizer* opt = own(api_CreateOptimizer());
    NetSolver* solver = own(api_CreateSolver(kind));
    api_SetNewWork(opt, net);
    api_SetSolver(opt, solver);
    if (rule != nullptr) *rule = solver;
    return opt;
  }

 private:
  std::vector<void*> handles;
};

inline Values variables(NetGraph* net) {
  Values all(static_cast<std::size_t>(api_NetWorkGetVarSize(net)));
  api_NetWorkGetVar(net, all.data());
  return all;
}

/// What api_GetOptRes gives.
struct Progress {
  explicit Progress(const NetOptimizer* opt) {
    double v[7];
    api_GetOptRes(opt, v);
    EXPECT_EQ(v[0], 1.0);
    tests = v[1];
    byClass = v[2];
    tryIndex = v[3];
    last = v[4];
    best = v[5];
    steps = v[6];
  }
  double tests, byClass, tryIndex, last, best, steps;
};

inline void trainOn(NetOptimizer* opt, const Values& x, const Values& y, int32_t rows) {
  api_SetTrainData(opt, x.data(), y.data(), rows, static_cast<int32_t>(x.size()) / rows,
                   static_cast<int32_t>(y.size()) / rows);
}

inline Progress run(NetOptimizer* opt) {
  EXPECT_EQ(api_SolveInit(opt), ORVANE_TRAINING_READY);
  api_Solve(opt);
  EXPECT_FALSE(api_IsRun(opt));
  return Progress(opt);
}
