// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>
#include <orvane/frame.h>
#include <orvane/network.h>

#include <cstdlib>
#include <fstream>
#include <numeric>
#include <sstream>
#include <string>
#include <vector>

/// Handles that are released together.
class Parts {
 public:
  Parts() = default;
  Parts(const Parts&) = delete;
  Parts& operator=(const Parts&) = delete;
  ~Parts() {
    for (void* handle : handles) api_FreeHandle(handle);
  }

  NetGraph* net() { return keep(api_CreateNetWork()); }
  NetLayer* layer(std::size_t size, int kind, NetLayer* input1 = nullptr, NetLayer* input2 = nullptr) {
    NetLayer* made = keep(api_CreateNetLayer(static_cast<int32_t>(size), static_cast<uint8_t>(kind)));
    api_SetInput1ToNetLayer(made, input1);
    api_SetInput2ToNetLayer(made, input2);
    return made;
  }
  NetLayer* layer(std::size_t size, int kind, NetVar* var, NetLayer* input) {
    NetLayer* made = layer(size, kind, input);
    api_SetVarToNetLayer(made, var);
    return made;
  }
  NetVar* var(int rows, int cols, const std::vector<double>& values = {}) {
    NetVar* made = keep(api_CreateNetVar(rows, cols));
    if (!values.empty()) api_SetNetVarValue(made, values.data());
    return made;
  }

 private:
  template <class Handle>
  Handle* keep(Handle* handle) {
    handles.insert(handles.begin(), handle);
    return handle;
  }
  std::vector<void*> handles;
};

using Numbers = std::vector<double>;

inline Numbers parseNumbers(const std::string& text) {
  Numbers all;
  std::istringstream stream(text);
  for (std::string word; stream >> word;) all.push_back(std::strtod(word.c_str(), nullptr));
  return all;
}

inline std::vector<std::string> splitText(const std::string& text, char separator) {
  std::vector<std::string> all;
  std::istringstream stream(text);
  for (std::string cell; std::getline(stream, cell, separator);) all.push_back(cell);
  return all;
}

/// Expected numbers and how far a result may be off.
struct Expected {
  Numbers values, tolerances;

  Expected() = default;
  explicit Expected(const std::string& text) {
    for (const std::string& word : splitText(text, ' ')) {
      values.push_back(std::strtod(word.c_str(), nullptr));
      tolerances.push_back(std::strtod(word.c_str() + word.find('~') + 1, nullptr));
    }
  }
  /// times scales the whole.
  void check(const Numbers& results, const std::string& what, double times = 1) const {
    ASSERT_EQ(results.size(), values.size()) << what;
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (results[i] == times * values[i]) continue;  // equal infinities
      EXPECT_NEAR(results[i], times * values[i], times * tolerances[i]) << what << " entry " << i;
    }
  }
};

struct CaseVar {
  int rows, cols;
  Numbers values;
  bool missing = false;
};

/// One layer with what it reads from: a line of tests/reference/network/layers.csv.
struct LayerCase {
  int kind;
  std::string name, label;
  int size;
  std::vector<int> window;  ///< startIndex, inputRow, inputCol, windowRow, windowCol, moveRow, moveCol
  std::vector<Numbers> inputs;
  std::vector<CaseVar> vars;
  Numbers cotangent;
  Expected values;
  std::vector<Expected> byInput, byVar;

  std::string text() const { return name + " " + label; }
  bool hasVarList() const { return kind == ORVANE_LAYER_QUADRATIC || kind == ORVANE_LAYER_POLY3; }
  bool hasLayerList() const { return kind == ORVANE_LAYER_ASSEMBLY || kind == ORVANE_LAYER_MAX_OUT_MUL; }
};

inline LayerCase parseCase(const std::string& line) {
  std::vector<std::string> cells = splitText(line, ';');
  cells.resize(11);
  LayerCase c;
  c.kind = std::atoi(cells[0].c_str());
  c.name = cells[1];
  c.label = cells[2];
  c.size = std::atoi(cells[3].c_str());
  for (const double v : parseNumbers(cells[4])) c.window.push_back(static_cast<int>(v));
  for (const std::string& input : splitText(cells[5], '/')) c.inputs.push_back(parseNumbers(input));
  for (const std::string& text : splitText(cells[6], '/')) {
    const Numbers var = parseNumbers(text);
    c.vars.push_back({static_cast<int>(var[0]), static_cast<int>(var[1]), Numbers(var.begin() + 2, var.end())});
  }
  c.cotangent = parseNumbers(cells[7]);
  c.values = Expected(cells[8]);
  for (const std::string& text : splitText(cells[9], '/')) c.byInput.emplace_back(text);
  for (const std::string& text : splitText(cells[10], '/')) c.byVar.emplace_back(text);
  return c;
}

inline std::vector<LayerCase> layerCases() {
  std::ifstream file(std::string(ORVANE_REFERENCE_DIR) + "/network/layers.csv");
  std::vector<LayerCase> all;
  for (std::string line; std::getline(file, line);)
    if (!line.empty() && line[0] != '#') all.push_back(parseCase(line));
  EXPECT_FALSE(all.empty());
  return all;
}

/// A network around the layer of a case. Its input is the inputs of the case one after another and one entry more; a
/// layer without inputs is followed by that entry in the output.
struct CaseGraph {
  Parts parts;
  Numbers x;
  NetLayer *in, *layer;
  std::vector<NetVar*> vars;
  NetGraph* net;
  int32_t result;

  explicit CaseGraph(const LayerCase& c) {
    for (const Numbers& input : c.inputs) x.insert(x.end(), input.begin(), input.end());
    x.push_back(1);
    in = parts.layer(x.size(), ORVANE_LAYER_COPY);
    layer = parts.layer(static_cast<std::size_t>(c.size), c.kind);
    joinInputs(c);
    joinVars(c);
    if (!c.window.empty()) api_SetLayerIndex(layer, c.window[0]);
    if (c.window.size() > 1) {
      EXPECT_TRUE(api_SetLayerInputDim(layer, c.window[1], c.window[2]));
      EXPECT_TRUE(api_SetLayerWindowDim(layer, c.window[3], c.window[4]));
      EXPECT_TRUE(api_SetMoveDiff(layer, c.window[5], c.window[6]));
    }
    net = parts.net();
    NetLayer* out = layer;
    if (c.inputs.empty()) out = parts.layer(static_cast<std::size_t>(c.size) + 1, ORVANE_LAYER_APPEND_X1_X2, layer, in);
    result = api_NetWorkInit(net, in, out);
  }

 private:
  void joinInputs(const LayerCase& c) {
    int start = 0;
    for (std::size_t k = 0; k < c.inputs.size(); ++k) {
      NetLayer* part = parts.layer(c.inputs[k].size(), ORVANE_LAYER_GET_PART, in);
      api_SetLayerIndex(part, start);
      start += static_cast<int>(c.inputs[k].size());
      if (c.hasLayerList())
        api_AddAssemblyLayer(layer, part);
      else
        (k == 0 ? api_SetInput1ToNetLayer : api_SetInput2ToNetLayer)(layer, part);
    }
  }
  void joinVars(const LayerCase& c) {
    for (std::size_t k = 0; k < c.vars.size(); ++k) {
      NetVar* var = c.vars[k].missing ? nullptr : parts.var(c.vars[k].rows, c.vars[k].cols, c.vars[k].values);
      vars.push_back(var);
      if (c.hasVarList())
        api_AddVarToNetLayer(layer, var);
      else
        (k == 0 ? api_SetVarToNetLayer : api_SetVar2ToNetLayer)(layer, var);
    }
  }
};
