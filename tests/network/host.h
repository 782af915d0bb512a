// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>
#include <orvane/action.h>
#include <orvane/network.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

using Numbers = std::vector<double>;

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

  NetVar* var(int32_t rows, int32_t cols, const Numbers& values = {}) {
    NetVar* made = own(api_CreateNetVar(rows, cols));
    if (!values.empty()) api_SetNetVarValue(made, values.data());
    return made;
  }
  NetLayer* layer(int32_t size, int kind, NetLayer* input1 = nullptr, NetLayer* input2 = nullptr) {
    NetLayer* made = own(api_CreateNetLayer(size, static_cast<uint8_t>(kind)));
    api_SetInput1ToNetLayer(made, input1);
    api_SetInput2ToNetLayer(made, input2);
    return made;
  }
  NetLayer* layer(int32_t size, int kind, NetVar* a, NetLayer* input) {
    NetLayer* made = layer(size, kind, input);
    api_SetVarToNetLayer(made, a);
    return made;
  }
  /// A window layer over the whole of `rows` by `cols` cells of its input.
  NetLayer* window(int32_t size, int kind, NetLayer* input, int rows, int cols, int high, int wide, int down = 1) {
    NetLayer* made = layer(size, kind, input);
    EXPECT_TRUE(api_SetLayerInputDim(made, rows, cols) && api_SetLayerWindowDim(made, high, wide));
    EXPECT_TRUE(api_SetMoveDiff(made, down, 1));
    return made;
  }
  NetGraph* network(NetLayer* input, NetLayer* output) {
    NetGraph* net = own(api_CreateNetWork());
    EXPECT_EQ(api_NetWorkInit(net, input, output), ORVANE_NETWORK_READY);
    return net;
  }

  /// y = x + a with one entry of a for each output.
  NetGraph* shift(const Numbers& start, NetVar** a = nullptr, NetLayer** output = nullptr) {
    const auto n = static_cast<int32_t>(start.size());
    NetVar* v = var(1, n, start);
    NetLayer* input = layer(n, ORVANE_LAYER_COPY);
    NetLayer* sum = layer(n, ORVANE_LAYER_X_ADD_A, v, input);
    if (a != nullptr) *a = v;
    if (output != nullptr) *output = sum;
    return network(input, sum);
  }

  /// Layers of W x + b with tanh between, entry k of all numbers 0.6 sin(1.7 k + 0.3).
  NetGraph* tanhNet(const std::vector<int32_t>& sizes) {
    NetLayer *input = layer(sizes[0], ORVANE_LAYER_COPY), *last = input;
    for (std::size_t i = 1; i < sizes.size(); ++i) {
      last = layer(sizes[i], ORVANE_LAYER_W_DOT_X, var(sizes[i], sizes[i - 1]), last);
      last = layer(sizes[i], ORVANE_LAYER_X_ADD_A, var(1, sizes[i]), last);
      if (i + 1 < sizes.size()) last = layer(sizes[i], ORVANE_LAYER_TANH, last);
    }
    NetGraph* net = network(input, last);
    Numbers all(static_cast<std::size_t>(api_NetWorkGetVarSize(net)));
    for (std::size_t k = 0; k < all.size(); ++k) all[k] = 0.6 * std::sin(1.7 * static_cast<double>(k) + 0.3);
    api_NetWorkSetVar(net, all.data());
    return net;
  }

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

inline Numbers flat(NetGraph* net) {
  Numbers all(static_cast<std::size_t>(api_NetWorkGetVarSize(net)));
  api_NetWorkGetVar(net, all.data());
  return all;
}

inline Numbers predict(NetGraph* net, const Numbers& x) {
  Numbers y(static_cast<std::size_t>(api_GetOutputSize(net)));
  EXPECT_TRUE(api_RunWork(net, x.data(), y.data()));
  return y;
}

/// Lines of a table of tests/reference/network: a name, then numbers.
inline std::vector<std::pair<std::string, Numbers>> referenceRows(const std::string& table) {
  std::ifstream file(ORVANE_REFERENCE_DIR "/network/" + table);
  std::vector<std::pair<std::string, Numbers>> rows;
  for (std::string line, cell; std::getline(file, line);) {
    if (line[0] == '#') continue;
    std::istringstream cells(line);
    std::getline(cells, cell, ',');
    rows.push_back({cell, {}});
    while (std::getline(cells, cell, ',')) rows.back().second.push_back(std::strtod(cell.c_str(), nullptr));
  }
  EXPECT_FALSE(rows.empty()) << table;
  return rows;
}

/// What api_GetOptRes gives.
struct Progress {
  explicit Progress(const NetOptimizer* opt) {
    double v[7];
    api_GetOptRes(opt, v);
    EXPECT_EQ(v[0], 1.0);
    tests = v[1], byClass = v[2], tryIndex = v[3], last = v[4], best = v[5], steps = v[6];
  }
  double tests, byClass, tryIndex, last, best, steps;
};

inline void trainOn(NetOptimizer* opt, const Numbers& x, const Numbers& y, int32_t rows) {
  api_SetTrainData(opt, x.data(), y.data(), rows, static_cast<int32_t>(x.size()) / rows,
                   static_cast<int32_t>(y.size()) / rows);
}

inline Progress run(NetOptimizer* opt) {
  EXPECT_EQ(api_SolveInit(opt), ORVANE_TRAINING_READY);
  api_Solve(opt);
  EXPECT_FALSE(api_IsRun(opt));
  return Progress(opt);
}
