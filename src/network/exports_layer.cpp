// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "network/graph/wiring.h"
#include "network/native_network.h"

using NetWork::nativeOrNull;

namespace {

using NetWork::NetLayer_s;
using NetWork::NetPoolLayer_s;

/// Sets a member of a layer that its networks have to test.
template <class Member, class Value>
void wire(NetLayer* layer, Member NetLayer_s::*member, Value value) {
  native(layer).*member = value;
  native(layer).rewired();
}

/// Does something to a layer of one class; false for another.
template <class Class, class Change>
bool rewire(NetLayer* layer, const Change& change) {
  auto* object = dynamic_cast<Class*>(&native(layer));
  if (object == nullptr) return false;
  change(*object);
  object->rewired();
  return true;
}

}  // namespace

NetVar* api_CreateNetVar(int32_t rows, int32_t cols) {
  return registered<NetVar>(std::make_unique<NetWork::NetVar_s>(rows, cols));
}

NetLayer* api_CreateNetLayer(int32_t size, uint8_t kind) {
  return registered<NetLayer>(NetWork::makeLayer(size, kind));
}

void api_SetNetVarValue(NetVar* var, const double* data) { native(var).setValue(data); }

void api_GetNetVarValue(const NetVar* var, double* data) { native(var).getValue(data); }

void api_SetNetVarV(NetVar* var, double v) { native(var).fill(v); }

void api_SetNetVarFixed(NetVar* var, uint8_t flag) { native(var).fixed = flag; }

void api_SetVarFlag(NetVar* var, uint8_t flag) { native(var).varFlag = flag; }

int32_t api_GetNetVarRowNum(const NetVar* var) { return static_cast<int32_t>(native(var).value.rowCount()); }

int32_t api_GetNetVarColNum(const NetVar* var) { return static_cast<int32_t>(native(var).value.colCount()); }

void api_SetVarToNetLayer(NetLayer* layer, NetVar* var) { wire(layer, &NetLayer_s::var1, nativeOrNull(var)); }

void api_SetVar2ToNetLayer(NetLayer* layer, NetVar* var) { wire(layer, &NetLayer_s::var2, nativeOrNull(var)); }

void api_AddVarToNetLayer(NetLayer* layer, NetVar* var) {
  if (var != nullptr) rewire<NetWork::NetMulVarLayer_s>(layer, [&](auto& list) { list.vars.push_back(&native(var)); });
}

void api_SetInput1ToNetLayer(NetLayer* layer, NetLayer* input) {
  wire(layer, &NetLayer_s::input1, nativeOrNull(input));
}

void api_SetInput2ToNetLayer(NetLayer* layer, NetLayer* input) {
  wire(layer, &NetLayer_s::input2, nativeOrNull(input));
}

void api_AddAssemblyLayer(NetLayer* layer, NetLayer* member) {
  if (member != nullptr)
    rewire<NetWork::NetAssemblyLayer_s>(layer, [&](auto& list) { list.layers.push_back(&native(member)); });
}

void api_SetLayerIndex(NetLayer* layer, int32_t index) {
  const auto set = [&](auto& part) { part.startIndex = index; };
  if (!rewire<NetWork::NetPartLayer_s>(layer, set)) rewire<NetPoolLayer_s>(layer, set);
}

bool api_SetLayerInputDim(NetLayer* layer, int32_t row, int32_t col) {
  return rewire<NetPoolLayer_s>(layer, [&](auto& pool) { pool.inputRow = row, pool.inputCol = col; });
}

bool api_SetLayerWindowDim(NetLayer* layer, int32_t row, int32_t col) {
  return rewire<NetPoolLayer_s>(layer, [&](auto& pool) { pool.windowRow = row, pool.windowCol = col; });
}

bool api_SetMoveDiff(NetLayer* layer, int32_t row, int32_t col) {
  return rewire<NetPoolLayer_s>(layer, [&](auto& pool) { pool.moveRow = row, pool.moveCol = col; });
}

void api_SetNetLayerValue(NetLayer* layer, const double* data) {
  std::copy_n(data, native(layer).size(), native(layer).value.data());
}

void api_GetNetLayerValue(const NetLayer* layer, double* data) { std::ranges::copy(native(layer).value, data); }

int32_t api_GetNetLayerSize(const NetLayer* layer) { return static_cast<int32_t>(native(layer).size()); }
