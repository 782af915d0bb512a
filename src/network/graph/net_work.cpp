// SPDX-License-Identifier: Apache-2.0
#include "network/graph/net_work.h"

#include <algorithm>
#include <map>
#include <set>

#include "network/graph/prepare.h"
#include "network/graph/wiring.h"
#include "network/layers/kind_table.h"
#include "orvane/network.h"

namespace NetWork {

int32_t NetWork_c::init(NetLayer_s* in, NetLayer_s* out) {
  ready = 0;
  if (in == nullptr || out == nullptr || in == out) return ORVANE_NETWORK_NO_ENDS;
  input = in;
  output = out;
  vars.clear();
  if (const int32_t code = collectLayers(); code != ORVANE_NETWORK_READY) return code;
  collectVars();
  if (const int32_t code = testLayers(); code != ORVANE_NETWORK_READY) return code;
  planBlock();
  ready = 1;
  return ORVANE_NETWORK_READY;
}

bool NetWork_c::usable() const {
  return ready != 0 &&
         std::ranges::equal(layers, testedEdits, {}, [](const NetLayer_s* layer) { return layer->edits; });
}

// Depth first from the output; a layer comes after everything that it reads from. Its own stack: graphs may be deep.
int32_t NetWork_c::collectLayers() {
  struct Visit {
    NetLayer_s* layer;
    std::vector<NetLayer_s*> inputs;
    std::size_t next = 0;
  };
  enum class State { kOpen, kDone };
  std::map<const NetLayer_s*, State> states{{input, State::kDone}};
  std::set<const NetLayer_s*> reached{input};
  std::vector<Visit> stack;
  const auto open = [&](NetLayer_s* layer) {
    states[layer] = State::kOpen;
    stack.push_back({layer, layer->inputs()});
  };
  layers.clear();
  open(output);
  while (!stack.empty()) {
    Visit& visit = stack.back();
    if (visit.next < visit.inputs.size()) {
      NetLayer_s* below = visit.inputs[visit.next++];
      const auto known = states.find(below);
      if (known == states.end())
        open(below);
      else if (known->second == State::kOpen)
        return ORVANE_NETWORK_CYCLE;
      continue;
    }
    if (std::ranges::any_of(visit.inputs, [&](const NetLayer_s* below) { return reached.contains(below); }))
      reached.insert(visit.layer);
    states[visit.layer] = State::kDone;
    layers.push_back(visit.layer);
    stack.pop_back();
  }
  return reached.contains(output) ? ORVANE_NETWORK_READY : ORVANE_NETWORK_NOT_REACHED;
}

void NetWork_c::collectVars() {
  std::set<const NetVar_s*> known;
  for (const NetLayer_s* layer : layers)
    for (NetVar_s* var : layer->variables())
      if (known.insert(var).second) vars.push_back(var);
}

int32_t NetWork_c::testLayers() {
  for (NetLayer_s* layer : layers)
    if (const int32_t code = prepare(*layer); code != 0) return code;
  if (const int32_t code = prepare(*input); code != 0) return code;
  testedEdits.clear();
  for (NetLayer_s* layer : layers) {
    if (!wellWired(*layer)) return ORVANE_NETWORK_WIRING;
    const LayerKind* kind = findKind(layer->kind);
    if (kind == nullptr) return ORVANE_NETWORK_NO_KIND;
    layer->forward = kind->forward;
    layer->backward = kind->backward;
    testedEdits.push_back(layer->edits);
  }
  return ORVANE_NETWORK_READY;
}

}  // namespace NetWork
