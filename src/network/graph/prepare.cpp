// SPDX-License-Identifier: Apache-2.0
#include "network/graph/prepare.h"

#include "network/graph/net_layer.h"
#include "orvane/network.h"

namespace NetWork {
namespace {

constexpr uint32_t kStochasticSeed = 5489;

/// Empty: sized. Whether it then has that size.
template <class Vector>
bool sized(Vector& vector, std::size_t size) {
  if (vector.empty()) vector.resize(size);
  return vector.size() == size;
}

bool remembersPlace(uint8_t kind) {
  return kind == ORVANE_LAYER_POOL_MAX || kind == ORVANE_LAYER_POOL_MIN || kind == ORVANE_LAYER_POOL_NORM2 ||
         kind == ORVANE_LAYER_POOL_STOCHASTIC || kind == ORVANE_LAYER_POOL_MEDIAN;
}

bool ordersWindow(uint8_t kind) { return kind == ORVANE_LAYER_POOL_MEDIAN || kind == ORVANE_LAYER_POOL_STOCHASTIC; }

/// A window that has no cells, or more than the input, is left to the test of the wiring.
void makeCells(NetPoolLayer_s& pool, int64_t cells) {
  const auto most = static_cast<int64_t>(pool.input1 == nullptr ? 0 : pool.input1->size());
  for (int64_t i = 0; cells <= most && i < cells; ++i)
    pool.windowCells.push_back(std::make_unique<NetPoolLayer_s::Cell>());
}

int32_t prepareWindow(NetPoolLayer_s& pool) {
  if (remembersPlace(pool.kind) && !sized(pool.poolIndex, pool.size())) return ORVANE_NETWORK_POOL_SIZE;
  if (ordersWindow(pool.kind)) {
    const int64_t cells = int64_t{pool.windowRow} * pool.windowCol;
    if (pool.windowCells.empty())
      makeCells(pool, cells);
    else if (static_cast<int64_t>(pool.windowCells.size()) != cells)
      return ORVANE_NETWORK_WINDOW_SIZE;
  }
  if (pool.kind == ORVANE_LAYER_POOL_STOCHASTIC && pool.rng == nullptr)
    pool.rng = std::make_unique<std::mt19937>(kStochasticSeed);
  return 0;
}

}  // namespace

int32_t prepare(NetLayer_s& layer) {
  if (layer.value.empty()) return ORVANE_NETWORK_NO_VALUE;
  if (!sized(layer.delta, layer.size())) return ORVANE_NETWORK_DELTA_SIZE;
  auto* pool = dynamic_cast<NetPoolLayer_s*>(&layer);
  return pool == nullptr ? 0 : prepareWindow(*pool);
}

}  // namespace NetWork
