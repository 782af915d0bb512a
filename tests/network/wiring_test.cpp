// SPDX-License-Identifier: Apache-2.0
// What api_NetWorkInit refuses: every kind, from a right layer with one thing changed.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>
#include <set>

#include "network/layer_cases.h"

namespace {

using Changed = std::vector<std::pair<std::string, LayerCase>>;

/// The case with one part or one size changed, each with a name for it.
Changed mutations(const LayerCase& right) {
  Changed all;
  const auto change = [&](const std::string& what, const std::function<void(LayerCase&)>& apply) {
    all.emplace_back(what, right);
    apply(all.back().second);
  };
  change("larger", [](LayerCase& c) { ++c.size; });
  change("smaller", [](LayerCase& c) { --c.size; });
  if (right.inputs.size() < 2)
    change("more inputs", [](LayerCase& c) { c.inputs.push_back(c.inputs.empty() ? Numbers(1) : c.inputs[0]); });
  for (std::size_t k = 0; k < right.inputs.size(); ++k) {
    const std::string input = "input " + std::to_string(k + 1);
    change(input + " longer", [k](LayerCase& c) { c.inputs[k].push_back(1); });
    if (right.inputs[k].size() > 1) change(input + " shorter", [k](LayerCase& c) { c.inputs[k].pop_back(); });
  }
  if (!right.inputs.empty()) change("no inputs", [](LayerCase& c) { c.inputs.clear(); });
  if (right.vars.size() < 2 || right.hasVarList())
    change("more variables", [](LayerCase& c) { c.vars.push_back({1, 1, {1}}); });
  for (std::size_t k = 0; k < right.vars.size(); ++k) {
    const std::string var = "variable " + std::to_string(k + 1);
    const auto resize = [](CaseVar& v, int rows, int cols) {
      v = {rows, cols, Numbers(static_cast<std::size_t>(std::max(rows, 0) * std::max(cols, 0)), 1)};
    };
    change(var + " missing", [k](LayerCase& c) { c.vars[k].missing = true; });
    change(var + " one row more", [=](LayerCase& c) { resize(c.vars[k], c.vars[k].rows + 1, c.vars[k].cols); });
    change(var + " one row less", [=](LayerCase& c) { resize(c.vars[k], c.vars[k].rows - 1, c.vars[k].cols); });
    change(var + " one column more", [=](LayerCase& c) { resize(c.vars[k], c.vars[k].rows, c.vars[k].cols + 1); });
    change(var + " one column less", [=](LayerCase& c) { resize(c.vars[k], c.vars[k].rows, c.vars[k].cols - 1); });
  }
  static const char* const kNumbers[] = {"start", "input rows", "input columns", "window rows", "window columns"};
  for (std::size_t k = 0; k < std::min<std::size_t>(right.window.size(), 5); ++k) {
    change(std::string(kNumbers[k]) + " negative", [k](LayerCase& c) { c.window[k] = -1; });
    change(std::string(kNumbers[k]) + " more", [k](LayerCase& c) { c.window[k] = std::min(c.window[k], 99) + 1; });
    change(std::string(kNumbers[k]) + " huge", [k](LayerCase& c) { c.window[k] = 2147483647; });
  }
  for (std::size_t k = 5; k < right.window.size(); ++k)
    for (const int step : {0, -1, -2147483647}) change("step", [=](LayerCase& c) { c.window[k] = step; });
  return all;
}

/// What may be changed, by kind; everything else is refused.
std::set<std::string> allowed(const LayerCase& c) {
  switch (c.kind) {
    case ORVANE_LAYER_W_DOT_X:
    case ORVANE_LAYER_W_SUB_X_SQUARED:
      return {"more variables"};  // a second one is not read
    case ORVANE_LAYER_MAX:
    case ORVANE_LAYER_SUM:
      return {"input 1 longer", "input 1 shorter"};
    // As long as one entry of the longer vector stays free behind the part.
    case ORVANE_LAYER_GET_PART:
      return {"smaller", "input 1 longer"};
    case ORVANE_LAYER_SET_PART:
      return {"larger", "input 1 shorter"};
    default:
      break;
  }
  if (c.kind >= ORVANE_LAYER_X_ADD_A && c.kind <= ORVANE_LAYER_PRELU) return {"more variables"};
  if (c.kind == ORVANE_LAYER_SQNL || c.kind == ORVANE_LAYER_S_LINE) return {"more variables"};
  // The grid of a window may begin anywhere and be any part of the input.
  if (c.kind >= ORVANE_LAYER_CONVOLUTION && c.kind <= ORVANE_LAYER_POOL_VAR) return {"input 1 longer"};
  return {};
}

TEST(Wiring, OneWrongThingIsRefused) {
  std::set<int> seen;
  for (const LayerCase& right : layerCases()) {
    if (right.label != "ordinary" || !seen.insert(right.kind).second) continue;
    for (const auto& [what, changed] : mutations(right)) {
      if (changed.size == 0) continue;
      CaseGraph graph(changed);
      EXPECT_EQ(graph.result, allowed(right).contains(what) ? ORVANE_NETWORK_READY : ORVANE_NETWORK_WIRING)
          << right.name << " " << what;
    }
  }
}

/// Two things changed at once, and numbers that no formula likes: what is not refused computes something. The
/// sanitizers watch.
TEST(Wiring, WhatIsNotRefusedIsSafe) {
  std::mt19937 rng(11);
  const double awkward[] = {0, -1.5, 2, std::nan(""), 1e308, -INFINITY};
  int ready = 0;
  for (const LayerCase& right : layerCases()) {
    if (right.label == "edge" || right.label == "far") continue;  // as ordinary
    for (const auto& [what, once] : mutations(right)) {
      if (once.size == 0) continue;
      const Changed again = mutations(once);
      LayerCase c = again[rng() % again.size()].second;
      for (CaseVar& var : c.vars)
        if (rng() % 4 == 0) std::fill(var.values.begin(), var.values.end(), awkward[rng() % 6]);
      CaseGraph graph(c);
      if (graph.result != ORVANE_NETWORK_READY) continue;
      ++ready;
      for (double& v : graph.x) v = awkward[rng() % 6];
      const auto n = static_cast<std::size_t>(api_GetOutputSize(graph.net));
      Numbers y(n), jacobian(n * graph.x.size());
      EXPECT_TRUE(api_RunWork(graph.net, graph.x.data(), y.data())) << right.text() << " " << what;
      api_NetRandValue(graph.net, 2);
      api_NetWorkGetDiffValue(graph.net, jacobian.data());
    }
  }
  EXPECT_GT(ready, 200);
}

}  // namespace
