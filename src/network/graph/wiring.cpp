// SPDX-License-Identifier: Apache-2.0
#include "network/graph/wiring.h"

#include <algorithm>

#include "frame/code_table.h"
#include "network/layers/kind_table.h"

namespace NetWork {
namespace {

using Layer = const NetLayer_s&;

enum Part : unsigned { kVar1 = 1, kVar2 = 2, kInput1 = 4, kInput2 = 8, kAll = 15 };

unsigned parts(Layer layer) {
  return (layer.var1 != nullptr ? kVar1 : 0u) | (layer.var2 != nullptr ? kVar2 : 0u) |
         (layer.input1 != nullptr ? kInput1 : 0u) | (layer.input2 != nullptr ? kInput2 : 0u);
}

/// The needed parts are there and none of the others in `tested`.
bool has(Layer layer, unsigned needed, unsigned tested = kAll) { return (parts(layer) & tested) == needed; }

std::size_t in1(Layer layer) { return layer.input1->size(); }
std::size_t in2(Layer layer) { return layer.input2->size(); }

/// Operands of the lengths m and k, one of them stretched or none, give n entries.
bool stretches(std::size_t m, std::size_t k, std::size_t n) { return m == 1 ? k == n : m == n && (k == 1 || k == n); }

template <class Class>
const Class& as(Layer layer) {
  return static_cast<const Class&>(layer);
}

std::size_t start(int32_t index) { return static_cast<std::size_t>(index); }

bool windowFits(Layer layer) {
  const auto& pool = as<NetPoolLayer_s>(layer);
  const auto steps = [](int32_t input, int32_t window, int32_t move) -> int64_t {
    return window >= 1 && move >= 1 && input >= window ? (int64_t{input} - window) / move + 1 : 0;
  };
  const int64_t rows = steps(pool.inputRow, pool.windowRow, pool.moveRow);
  const int64_t cols = steps(pool.inputCol, pool.windowCol, pool.moveCol);
  return pool.startIndex >= 0 && rows > 0 && cols > 0 && rows * cols == static_cast<int64_t>(layer.size()) &&
         int64_t{pool.inputRow} * pool.inputCol <= static_cast<int64_t>(in1(layer)) - pool.startIndex;
}

bool convolutionFits(Layer layer) {
  const auto& pool = as<NetPoolLayer_s>(layer);
  return has(layer, kVar1 | kVar2 | kInput1) && layer.var2->isRow(1) && windowFits(layer) &&
         layer.var1->hasShape(start(pool.windowRow), start(pool.windowCol));
}

bool assemblyFits(Layer layer) {
  const auto& members = as<NetAssemblyLayer_s>(layer).layers;
  std::size_t size = 0;
  for (const NetLayer_s* member : members) size += member->size();
  return has(layer, 0) && !members.empty() && size == layer.size();
}

bool maxOutFits(Layer layer) {
  const auto& members = as<NetAssemblyLayer_s>(layer).layers;
  return has(layer, 0) && !members.empty() &&
         std::ranges::all_of(members, [&](const NetLayer_s* member) { return member->size() == layer.size(); });
}

template <class Class>
std::unique_ptr<NetLayer_s> make(int32_t size, uint8_t kind) {
  return std::make_unique<Class>(size, kind);
}

/// A group of kinds: its class of layers and its rules.
struct WiringRow {
  int32_t code;
  std::unique_ptr<NetLayer_s> (*make)(int32_t size, uint8_t kind);
  bool (*fits)(Layer layer);
};

constexpr int32_t code(Wiring wiring) { return static_cast<int32_t>(wiring); }

constexpr WiringRow kWirings[] = {
    {code(Wiring::kProduct), make<NetLayer_s>,
     [](Layer l) { return has(l, kVar1 | kInput1, kVar1 | kInput1 | kInput2) && l.var1->hasShape(l.size(), in1(l)); }},
    {code(Wiring::kWithVar), make<NetLayer_s>,
     [](Layer l) {
       return has(l, kVar1 | kInput1, kVar1 | kInput1 | kInput2) && l.var1->isRow() &&
              stretches(in1(l), l.var1->value.colCount(), l.size());
     }},
    {code(Wiring::kPair), make<NetLayer_s>,
     [](Layer l) {
       return has(l, kInput1 | kInput2, kInput1 | kInput2 | kVar1) && stretches(in1(l), in2(l), l.size());
     }},
    {code(Wiring::kElement), make<NetLayer_s>, [](Layer l) { return has(l, kInput1) && in1(l) == l.size(); }},
    {code(Wiring::kReduce), make<NetLayer_s>, [](Layer l) { return has(l, kInput1) && l.size() == 1; }},
    {code(Wiring::kSource), make<NetLayer_s>, [](Layer l) { return has(l, kVar1) && l.var1->isRow(l.size()); }},
    // KEPT: a part may not reach the last entry of the longer vector; expected: it may (kept.csv: Part_end)
    {code(Wiring::kGetPart), make<NetPartLayer_s>,
     [](Layer l) {
       const int32_t from = as<NetPartLayer_s>(l).startIndex;
       return has(l, kInput1) && from >= 0 && l.size() + start(from) < in1(l);
     }},
    {code(Wiring::kSetPart), make<NetPartLayer_s>,
     [](Layer l) {
       const int32_t from = as<NetPartLayer_s>(l).startIndex;
       return has(l, kInput1) && from >= 0 && in1(l) + start(from) < l.size();
     }},
    {code(Wiring::kConvolution), make<NetPoolLayer_s>, convolutionFits},
    {code(Wiring::kPool), make<NetPoolLayer_s>, [](Layer l) { return has(l, kInput1) && windowFits(l); }},
    {code(Wiring::kAssembly), make<NetAssemblyLayer_s>, assemblyFits},
    {code(Wiring::kZoom), make<NetLayer_s>, [](Layer l) { return has(l, kVar1 | kInput1) && l.var1->isRow(); }},
    {code(Wiring::kWithTwoVars), make<NetLayer_s>,
     [](Layer l) {
       return has(l, kVar1 | kVar2 | kInput1) && in1(l) == l.size() && l.var1->isRow(in1(l)) && l.var2->isRow(in1(l));
     }},
    {code(Wiring::kSignMap), make<NetLayer_s>, [](Layer l) { return has(l, kInput1) && in1(l) == 1 && l.size() == 2; }},
    {code(Wiring::kMask), make<NetLayer_s>,
     [](Layer l) { return has(l, kVar1 | kInput1) && in1(l) == l.size() && l.var1->isRow(l.size()); }},
    {code(Wiring::kLayerNorm), make<NetLayer_s>, [](Layer l) { return has(l, kInput1) && in1(l) == l.size(); }},
    {code(Wiring::kMaxOut), make<NetAssemblyLayer_s>, maxOutFits},
    {code(Wiring::kRotation), make<NetLayer_s>,
     [](Layer l) { return has(l, kVar1 | kInput1) && in1(l) == 3 && l.size() == 3 && l.var1->isRow(3); }},
    {code(Wiring::kVarList), make<NetMulVarLayer_s>, [](Layer l) { return has(l, kInput1); }},
    {code(Wiring::kRadial), make<NetLayer_s>,
     [](Layer l) {
       return has(l, kVar1 | kVar2 | kInput1) && l.var1->hasShape(l.size(), in1(l)) && l.var2->isRow(l.size());
     }},
    {code(Wiring::kOuter), make<NetLayer_s>,
     [](Layer l) { return has(l, kInput1 | kInput2) && in1(l) * in2(l) == l.size(); }},
    {code(Wiring::kAppend), make<NetLayer_s>,
     [](Layer l) { return has(l, kInput1 | kInput2) && in1(l) + in2(l) == l.size(); }},
};
using Wirings = CodeTable<kWirings>;

}  // namespace

std::unique_ptr<NetLayer_s> makeLayer(int32_t size, uint8_t kind) {
  const LayerKind* row = findKind(kind);
  return row == nullptr ? make<NetLayer_s>(size, kind) : Wirings::find(code(row->wiring))->make(size, kind);
}

bool wellWired(const NetLayer_s& layer) {
  const LayerKind* row = findKind(layer.kind);
  if (row == nullptr) return true;
  return Wirings::find(code(row->wiring))->fits(layer) && (row->fits == nullptr || row->fits(layer));
}

}  // namespace NetWork
