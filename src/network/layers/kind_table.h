// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "network/graph/net_layer.h"

namespace NetWork {

/// Groups of kinds that are wired alike; wiring.cpp has their rules.
enum class Wiring : uint8_t {
  kProduct = 1,  ///< a of one row an output
  kWithVar = 2,  ///< entry by entry with a, stretched
  kPair = 3,     ///< entry by entry with x2, stretched
  kElement = 4,  ///< one input of the same size
  kReduce = 5,   ///< one input, one output
  kSource = 6,   ///< a alone
  kGetPart = 7,
  kSetPart = 8,
  kConvolution = 9,
  kPool = 10,
  kAssembly = 11,
  kZoom = 12,
  kWithTwoVars = 13,  ///< entry by entry with a and b
  kSignMap = 14,
  kMask = 15,
  kLayerNorm = 16,
  kMaxOut = 17,
  kRotation = 18,
  kVarList = 20,
  kRadial = 21,
  kOuter = 22,
  kAppend = 23
};

/// One row a kind of layer: everything that the library knows of it.
struct LayerKind {
  int32_t code;
  std::string_view name;  ///< in the text export
  Wiring wiring;
  LayerFun forward;
  LayerFun backward;
  bool (*fits)(const NetLayer_s& layer) = nullptr;  ///< what the group alone does not say
};

/// The row of a kind whose two functions are members of F.
template <class F>
consteval LayerKind kind(int32_t code, std::string_view name, Wiring wiring) {
  return {code, name, wiring, F::forward, F::backward};
}

inline std::size_t samples(const NetLayer_s& layer) { return static_cast<std::size_t>(layer.samples); }

/// Null for a code without a kind.
const LayerKind* findKind(int32_t code);

/// The rows stand beside their functions.
std::span<const LayerKind> elementKinds();   ///< entry by entry of one input
std::span<const LayerKind> withVarKinds();   ///< entry by entry with one or two variables
std::span<const LayerKind> pairKinds();      ///< entry by entry of two inputs
std::span<const LayerKind> vectorKinds();    ///< norms, soft maximum, reductions
std::span<const LayerKind> productKinds();   ///< matrix products, quadratic and radial forms
std::span<const LayerKind> moveKinds();      ///< parts, joins, masks, sources
std::span<const LayerKind> windowKinds();    ///< convolution and pools
std::span<const LayerKind> geometryKinds();  ///< rotation, zoom

}  // namespace NetWork
