// SPDX-License-Identifier: Apache-2.0
#include "network/graph/net_layer.h"

namespace NetWork {
namespace {

template <class Object>
void putIndex(DataStream& stream, const std::map<const Object*, int32_t>& index, const Object* object) {
  const auto found = index.find(object);
  stream.put<int32_t>(found == index.end() ? -1 : found->second);
}

template <class Object>
Object* takeIndexed(DataStream& stream, std::span<Object* const> objects) {
  const auto i = stream.take<int32_t>();
  if (stream.bad() || i == -1) return nullptr;
  if (i >= 0 && static_cast<std::size_t>(i) < objects.size()) return objects[static_cast<std::size_t>(i)];
  stream.makeBad();
  return nullptr;
}

template <class Object>
void putList(DataStream& stream, const std::map<const Object*, int32_t>& index, const std::vector<Object*>& list) {
  stream.put<uint32_t>(static_cast<uint32_t>(list.size()));
  for (const Object* object : list) putIndex(stream, index, object);
}

template <class Object>
void takeList(DataStream& stream, std::span<Object* const> objects, std::vector<Object*>& list) {
  list.clear();
  for (auto left = stream.take<uint32_t>(); left > 0 && !stream.bad(); --left)
    if (Object* object = takeIndexed(stream, objects)) list.push_back(object);
}

/// The numbers of a window layer, in the order of the stream.
constexpr int32_t NetPoolLayer_s::*kWindowNumbers[] = {
    &NetPoolLayer_s::startIndex, &NetPoolLayer_s::inputRow, &NetPoolLayer_s::inputCol, &NetPoolLayer_s::windowRow,
    &NetPoolLayer_s::windowCol,  &NetPoolLayer_s::moveRow,  &NetPoolLayer_s::moveCol};

}  // namespace

NetLayer_s::NetLayer_s(int32_t size, uint8_t kind)
    : kind(kind), value(size > 0 ? static_cast<std::size_t>(size) : 0), delta(value.size()) {
  typeCode = 16;
}

std::vector<NetLayer_s*> NetLayer_s::inputs() const {
  std::vector<NetLayer_s*> all;
  if (input1 != nullptr) all.push_back(input1);
  if (input2 != nullptr) all.push_back(input2);
  if (const auto* assembly = dynamic_cast<const NetAssemblyLayer_s*>(this))
    all.insert(all.end(), assembly->layers.begin(), assembly->layers.end());
  return all;
}

std::vector<NetVar_s*> NetLayer_s::variables() const {
  std::vector<NetVar_s*> all;
  if (var1 != nullptr) all.push_back(var1);
  if (var2 != nullptr) all.push_back(var2);
  if (const auto* list = dynamic_cast<const NetMulVarLayer_s*>(this))
    all.insert(all.end(), list->vars.begin(), list->vars.end());
  return all;
}

void NetLayer_s::write(DataStream& stream, const VarIndex& varIndex, const LayerIndex& layerIndex) const {
  stream.put<uint32_t>(static_cast<uint32_t>(name.size()));
  stream.putText(name);
  stream.put<uint8_t>(back);
  for (const NetVar_s* var : {var1, var2}) putIndex(stream, varIndex, var);
  for (const NetLayer_s* input : {input1, input2}) putIndex(stream, layerIndex, input);
  stream.put<int32_t>(dropCount);
}

void NetLayer_s::read(DataStream& stream, std::span<NetVar_s* const> vars, std::span<NetLayer_s* const> layers) {
  name = stream.takeText(stream.take<uint32_t>());
  back = stream.take<uint8_t>();
  for (NetVar_s** var : {&var1, &var2}) *var = takeIndexed(stream, vars);
  for (NetLayer_s** input : {&input1, &input2}) *input = takeIndexed(stream, layers);
  dropCount = stream.take<int32_t>();
  rewired();
}

void NetPartLayer_s::write(DataStream& stream, const VarIndex& varIndex, const LayerIndex& layerIndex) const {
  NetLayer_s::write(stream, varIndex, layerIndex);
  stream.put(startIndex);
}

void NetPartLayer_s::read(DataStream& stream, std::span<NetVar_s* const> vars, std::span<NetLayer_s* const> layers) {
  NetLayer_s::read(stream, vars, layers);
  startIndex = stream.take<int32_t>();
}

void NetPoolLayer_s::write(DataStream& stream, const VarIndex& varIndex, const LayerIndex& layerIndex) const {
  NetLayer_s::write(stream, varIndex, layerIndex);
  for (const auto number : kWindowNumbers) stream.put(this->*number);
}

void NetPoolLayer_s::read(DataStream& stream, std::span<NetVar_s* const> vars, std::span<NetLayer_s* const> layers) {
  NetLayer_s::read(stream, vars, layers);
  for (const auto number : kWindowNumbers) this->*number = stream.take<int32_t>();
}

void NetAssemblyLayer_s::write(DataStream& stream, const VarIndex& varIndex, const LayerIndex& layerIndex) const {
  NetLayer_s::write(stream, varIndex, layerIndex);
  putList(stream, layerIndex, layers);
}

void NetAssemblyLayer_s::read(DataStream& stream, std::span<NetVar_s* const> vars, std::span<NetLayer_s* const> all) {
  NetLayer_s::read(stream, vars, all);
  takeList(stream, all, layers);
}

void NetMulVarLayer_s::write(DataStream& stream, const VarIndex& varIndex, const LayerIndex& layerIndex) const {
  NetLayer_s::write(stream, varIndex, layerIndex);
  putList(stream, varIndex, vars);
}

void NetMulVarLayer_s::read(DataStream& stream, std::span<NetVar_s* const> all, std::span<NetLayer_s* const> layers) {
  NetLayer_s::read(stream, all, layers);
  takeList(stream, all, vars);
}

}  // namespace NetWork
