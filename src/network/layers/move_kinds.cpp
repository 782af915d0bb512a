// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "network/layers/kind_table.h"
#include "orvane/network_layer.h"

namespace NetWork {
namespace {

void addTo(double* to, const double* from, std::size_t n) {
  for (std::size_t i = 0; i < n; ++i) to[i] += from[i];
}

/// Copies or adds back `from`, all of it, at the place `at` of every sample of l.
void putWhole(NetLayer_s& l, const NetLayer_s& from, std::size_t at) {
  for (std::size_t s = 0; s < samples(l); ++s)
    std::copy_n(from.y + s * from.size(), from.size(), l.y + s * l.size() + at);
}

void returnWhole(const NetLayer_s& l, NetLayer_s& from, std::size_t at) {
  for (std::size_t s = 0; s < samples(l); ++s) addTo(from.dy + s * from.size(), l.dy + s * l.size() + at, from.size());
}

struct Append {
  static void forward(NetLayer_s& l) {
    putWhole(l, *l.input1, 0);
    putWhole(l, *l.input2, l.input1->size());
  }
  static void backward(NetLayer_s& l) {
    returnWhole(l, *l.input1, 0);
    returnWhole(l, *l.input2, l.input1->size());
  }
};

const std::vector<NetLayer_s*>& members(const NetLayer_s& l) {
  return static_cast<const NetAssemblyLayer_s&>(l).layers;
}

struct Assembly {
  static void forward(NetLayer_s& l) {
    std::size_t at = 0;
    for (const NetLayer_s* member : members(l)) {
      putWhole(l, *member, at);
      at += member->size();
    }
  }
  static void backward(NetLayer_s& l) {
    std::size_t at = 0;
    for (NetLayer_s* member : members(l)) {
      returnWhole(l, *member, at);
      at += member->size();
    }
  }
};

std::size_t start(const NetLayer_s& l) {
  return static_cast<std::size_t>(static_cast<const NetPartLayer_s&>(l).startIndex);
}

struct SetPart {
  static void forward(NetLayer_s& l) {
    std::fill_n(l.y, samples(l) * l.size(), 0.0);
    putWhole(l, *l.input1, start(l));
  }
  static void backward(NetLayer_s& l) { returnWhole(l, *l.input1, start(l)); }
};

struct GetPart {
  static void forward(NetLayer_s& l) {
    const NetLayer_s& x = *l.input1;
    for (std::size_t s = 0; s < samples(l); ++s)
      std::copy_n(x.y + s * x.size() + start(l), l.size(), l.y + s * l.size());
  }
  static void backward(NetLayer_s& l) {
    const NetLayer_s& x = *l.input1;
    for (std::size_t s = 0; s < samples(l); ++s) addTo(x.dy + s * x.size() + start(l), l.dy + s * l.size(), l.size());
  }
};

struct CopyVar {
  static void forward(NetLayer_s& l) {
    for (std::size_t s = 0; s < samples(l); ++s) std::copy_n(l.var1->value.data(), l.size(), l.y + s * l.size());
  }
  static void backward(NetLayer_s& l) {
    for (std::size_t s = 0; s < samples(l); ++s) addTo(l.var1->grad.data(), l.dy + s * l.size(), l.size());
  }
};

/// Outer product, row after row.
struct MixProduct2 {
  static void forward(NetLayer_s& l) {
    const std::size_t m = l.input1->size(), m2 = l.input2->size();
    for (std::size_t s = 0; s < samples(l); ++s)
      for (std::size_t i = 0; i < m; ++i)
        for (std::size_t j = 0; j < m2; ++j)
          l.y[(s * m + i) * m2 + j] = l.input1->y[s * m + i] * l.input2->y[s * m2 + j];
  }
  static void backward(NetLayer_s& l) {
    const std::size_t m = l.input1->size(), m2 = l.input2->size();
    for (std::size_t s = 0; s < samples(l); ++s)
      for (std::size_t i = 0; i < m; ++i)
        for (std::size_t j = 0; j < m2; ++j) {
          const double d = l.dy[(s * m + i) * m2 + j];
          l.input1->dy[s * m + i] += d * l.input2->y[s * m2 + j];
          l.input2->dy[s * m2 + j] += d * l.input1->y[s * m + i];
        }
  }
};

/// The halves of a sign: how far x is at -1 and how far at 1.
struct SignMap {
  static void forward(NetLayer_s& l) {
    for (std::size_t s = 0; s < samples(l); ++s) {
      l.y[2 * s] = (1 - l.input1->y[s]) * 0.5;
      l.y[2 * s + 1] = (l.input1->y[s] + 1) * 0.5;
    }
  }
  static void backward(NetLayer_s& l) {
    for (std::size_t s = 0; s < samples(l); ++s) l.input1->dy[s] += (l.dy[2 * s + 1] - l.dy[2 * s]) * 0.5;
  }
};

struct VecMask {
  static void forward(NetLayer_s& l) {
    const double* mask = l.var1->value.data();
    for (std::size_t p = 0; p < samples(l) * l.size(); ++p) l.y[p] = mask[p % l.size()] != 0 ? l.input1->y[p] : 0;
  }
  static void backward(NetLayer_s& l) {
    const double* mask = l.var1->value.data();
    for (std::size_t p = 0; p < samples(l) * l.size(); ++p)
      if (mask[p % l.size()] != 0) l.input1->dy[p] += l.dy[p];
  }
};

struct MaxOutMul {
  /// The first member that is largest at a place.
  static NetLayer_s* winner(const NetLayer_s& l, std::size_t place) {
    NetLayer_s* best = members(l).front();
    for (NetLayer_s* member : members(l))
      if (member->y[place] > best->y[place]) best = member;
    return best;
  }
  static void forward(NetLayer_s& l) {
    for (std::size_t p = 0; p < samples(l) * l.size(); ++p) l.y[p] = winner(l, p)->y[p];
  }
  static void backward(NetLayer_s& l) {
    for (std::size_t p = 0; p < samples(l) * l.size(); ++p) winner(l, p)->dy[p] += l.dy[p];
  }
};

constexpr LayerKind kMoveKinds[] = {
    kind<Append>(ORVANE_LAYER_APPEND_X1_X2, "Append_x1_x2", Wiring::kAppend),
    kind<MixProduct2>(ORVANE_LAYER_MIX_PRODUCT2, "MixProduct2", Wiring::kOuter),
    kind<SignMap>(ORVANE_LAYER_SIGN_MAP, "SignMap", Wiring::kSignMap),
    kind<VecMask>(ORVANE_LAYER_VEC_MASK, "VecMask", Wiring::kMask),
    kind<CopyVar>(ORVANE_LAYER_COPY_VAR, "CopyVar", Wiring::kSource),
    kind<Assembly>(ORVANE_LAYER_ASSEMBLY, "Assembly", Wiring::kAssembly),
    kind<SetPart>(ORVANE_LAYER_SET_PART, "SetPart", Wiring::kSetPart),
    kind<GetPart>(ORVANE_LAYER_GET_PART, "GetPart", Wiring::kGetPart),
    kind<MaxOutMul>(ORVANE_LAYER_MAX_OUT_MUL, "MaxOutMul", Wiring::kMaxOut),
};

}  // namespace

std::span<const LayerKind> moveKinds() { return kMoveKinds; }

}  // namespace NetWork
