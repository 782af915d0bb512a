// SPDX-License-Identifier: Apache-2.0
// What api_NetWorkInit refuses: every kind, from a right layer with one thing changed.
#include <functional>
#include <limits>
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
    if (all.back().second.size == 0) all.pop_back();
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
    change(var + " missing", [k](LayerCase& c) { c.vars[k].missing = true; });
    for (const auto& [rows, cols] : {std::pair{1, 0}, {-1, 0}, {0, 1}, {0, -1}})
      change(var + " resized", [=](LayerCase& c) {
        const int r = c.vars[k].rows + rows, n = c.vars[k].cols + cols;
        c.vars[k] = {r, n, Numbers(static_cast<std::size_t>(std::max(r, 0) * std::max(n, 0)), 1)};
      });
  }
  for (std::size_t k = 0; k < right.window.size(); ++k)
    for (const int value : k < 5 ? std::vector{-1, std::min(right.window[k], 99) + 1, std::numeric_limits<int>::max()}
                                 : std::vector{0, -1, -std::numeric_limits<int>::max()})
      change("number " + std::to_string(k), [=](LayerCase& c) { c.window[k] = value; });
  return all;
}

/// What may be changed, by kind; everything else is refused.
std::set<std::string> allowed(int kind) {
  const auto within = [kind](int low, int high) { return kind >= low && kind <= high; };
  // A second variable is not read.
  if (within(ORVANE_LAYER_W_DOT_X, ORVANE_LAYER_W_SUB_X_SQUARED) || within(ORVANE_LAYER_X_ADD_A, ORVANE_LAYER_PRELU) ||
      within(ORVANE_LAYER_SQNL, ORVANE_LAYER_S_LINE))
    return {"more variables"};
  if (within(ORVANE_LAYER_MAX, ORVANE_LAYER_SUM)) return {"input 1 longer", "input 1 shorter"};
  // As long as one entry of the longer vector stays free behind the part.
  if (kind == ORVANE_LAYER_GET_PART) return {"smaller", "input 1 longer"};
  if (kind == ORVANE_LAYER_SET_PART) return {"larger", "input 1 shorter"};
  // The grid of a window may begin anywhere and be any part of the input.
  if (within(ORVANE_LAYER_CONVOLUTION, ORVANE_LAYER_POOL_VAR)) return {"input 1 longer"};
  return {};
}

TEST(Wiring, OneWrongThingIsRefused) {
  std::set<int> seen;
  for (const LayerCase& right : LayerCase::all()) {
    if (right.label != "ordinary" || !seen.insert(right.kind).second) continue;
    for (const auto& [what, changed] : mutations(right))
      EXPECT_EQ(CaseGraph(changed).result,
                allowed(right.kind).contains(what) ? ORVANE_NETWORK_READY : ORVANE_NETWORK_WIRING)
          << right.name << " " << what;
  }
}

/// Two things changed at once, and numbers that no formula likes: what is not refused computes something. The
/// sanitizers watch.
TEST(Wiring, WhatIsNotRefusedIsSafe) {
  std::mt19937 rng(11);
  const double awkward[] = {0, -1.5, 2, std::nan(""), 1e308, -INFINITY};
  int ready = 0;
  for (const LayerCase& right : LayerCase::all()) {
    if (right.label == "edge" || right.label == "far") continue;  // as ordinary
    for (const auto& [what, once] : mutations(right)) {
      const Changed again = mutations(once);
      LayerCase c = again[rng() % again.size()].second;
      for (CaseVar& var : c.vars)
        if (rng() % 4 == 0) std::fill(var.values.begin(), var.values.end(), awkward[rng() % 6]);
      CaseGraph graph(c);
      if (graph.result != ORVANE_NETWORK_READY) continue;
      ++ready;
      for (double& v : graph.x) v = awkward[rng() % 6];
      Numbers jacobian(predict(graph.net, graph.x).size() * graph.x.size());
      api_NetRandValue(graph.net, 2);
      api_NetWorkGetDiffValue(graph.net, jacobian.data());
    }
  }
  EXPECT_GT(ready, 200);
}

}  // namespace
