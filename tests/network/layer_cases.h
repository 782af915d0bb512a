// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include "network/host.h"

inline std::vector<std::string> splitText(const std::string& text, char separator) {
  std::vector<std::string> all;
  std::istringstream stream(text);
  for (std::string cell; std::getline(stream, cell, separator);) all.push_back(cell);
  return all;
}

inline Numbers parseNumbers(const std::string& text) {
  Numbers all;
  for (const std::string& word : splitText(text, ' ')) all.push_back(std::strtod(word.c_str(), nullptr));
  return all;
}

/// Expected numbers and how far a result may be off.
struct Expected {
  Numbers values, tolerances;

  explicit Expected(const std::string& text) : values(parseNumbers(text)) {
    for (const std::string& word : splitText(text, ' '))
      tolerances.push_back(std::strtod(word.c_str() + word.find('~') + 1, nullptr));
  }
  /// times scales the whole.
  void check(std::span<const double> results, const std::string& what, double times = 1) const {
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
  explicit LayerCase(const std::string& line) {
    std::vector<std::string> cells = splitText(line, ';');
    cells.resize(11);
    kind = std::atoi(cells[0].c_str()), name = cells[1], label = cells[2], size = std::atoi(cells[3].c_str());
    for (const double v : parseNumbers(cells[4])) window.push_back(static_cast<int>(v));
    for (const std::string& input : splitText(cells[5], '/')) inputs.push_back(parseNumbers(input));
    for (const std::string& text : splitText(cells[6], '/')) {
      const Numbers var = parseNumbers(text);
      vars.push_back({static_cast<int>(var[0]), static_cast<int>(var[1]), Numbers(var.begin() + 2, var.end())});
    }
    cotangent = parseNumbers(cells[7]);
    for (std::size_t k = 8; k < 11; ++k)
      for (const std::string& text : splitText(cells[k], '/')) expected[k - 8].emplace_back(text);
  }
  static std::vector<LayerCase> all() {
    std::ifstream file(ORVANE_REFERENCE_DIR "/network/layers.csv");
    std::vector<LayerCase> cases;
    for (std::string line; std::getline(file, line);)
      if (line[0] != '#') cases.emplace_back(line);
    EXPECT_FALSE(cases.empty());
    return cases;
  }

  int kind, size;
  std::string name, label;
  std::vector<int> window;  ///< startIndex, inputRow, inputCol, windowRow, windowCol, moveRow, moveCol
  std::vector<Numbers> inputs;
  std::vector<CaseVar> vars;
  Numbers cotangent;
  std::vector<Expected> expected[3];  ///< values, gradients by inputs, by variables

  std::string text() const { return name + " " + label; }
  bool hasVarList() const { return kind == ORVANE_LAYER_QUADRATIC || kind == ORVANE_LAYER_POLY3; }
  bool hasLayerList() const { return kind == ORVANE_LAYER_ASSEMBLY || kind == ORVANE_LAYER_MAX_OUT_MUL; }
};

/// A network around the layer of a case. Its input is the inputs of the case one after another and one entry more; a
/// layer without inputs is followed by that entry in the output.
struct CaseGraph {
  Host host;
  Numbers x;
  NetGraph* net = host.own(api_CreateNetWork());
  int32_t result;

  explicit CaseGraph(const LayerCase& c) {
    for (const Numbers& input : c.inputs) x.insert(x.end(), input.begin(), input.end());
    x.push_back(1);
    NetLayer* in = host.layer(static_cast<int32_t>(x.size()), ORVANE_LAYER_COPY);
    NetLayer* layer = host.layer(c.size, c.kind);
    int start = 0;
    for (std::size_t k = 0; k < c.inputs.size(); ++k) {
      NetLayer* part = host.layer(static_cast<int32_t>(c.inputs[k].size()), ORVANE_LAYER_GET_PART, in);
      api_SetLayerIndex(part, start);
      start += static_cast<int>(c.inputs[k].size());
      (c.hasLayerList() ? api_AddAssemblyLayer
       : k == 0         ? api_SetInput1ToNetLayer
                        : api_SetInput2ToNetLayer)(layer, part);
    }
    for (std::size_t k = 0; k < c.vars.size(); ++k) {
      NetVar* var = c.vars[k].missing ? nullptr : host.var(c.vars[k].rows, c.vars[k].cols, c.vars[k].values);
      (c.hasVarList() ? api_AddVarToNetLayer : k == 0 ? api_SetVarToNetLayer : api_SetVar2ToNetLayer)(layer, var);
    }
    if (!c.window.empty()) api_SetLayerIndex(layer, c.window[0]);
    if (c.window.size() > 1) {
      EXPECT_TRUE(api_SetLayerInputDim(layer, c.window[1], c.window[2]));
      EXPECT_TRUE(api_SetLayerWindowDim(layer, c.window[3], c.window[4]));
      EXPECT_TRUE(api_SetMoveDiff(layer, c.window[5], c.window[6]));
    }
    NetLayer* out = c.inputs.empty() ? host.layer(c.size + 1, ORVANE_LAYER_APPEND_X1_X2, layer, in) : layer;
    result = api_NetWorkInit(net, in, out);
  }
};
