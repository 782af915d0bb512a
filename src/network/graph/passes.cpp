// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <random>

#include "frame/random.h"
#include "network/graph/net_work.h"

namespace NetWork {
namespace {

// Samples of a block share each weight that comes from memory; products take four at once. The rest of the time their
// activations should stay in the second cache, and a huge layer must not take all memory.
constexpr std::size_t kBlockBytes = std::size_t{1} << 20;
constexpr std::size_t kLeastSamples = 4, kMostSamples = 32;

/// Sets dropCount entries of every sample to 0: the first of dropIndex, shuffled anew for each.
void dropEntries(NetLayer_s& layer) {
  std::mt19937 rng(deviceSeed());
  std::vector<int32_t>& places = layer.dropIndex;
  const std::size_t count = std::min(static_cast<std::size_t>(layer.dropCount), places.size());
  for (std::size_t s = 0; s < static_cast<std::size_t>(layer.samples); ++s)
    for (std::size_t i = 0; i < count; ++i) {
      std::swap(places[i], places[std::uniform_int_distribution<std::size_t>(i, places.size() - 1)(rng)]);
      const std::size_t place = s * layer.size() + static_cast<std::size_t>(places[i]);
      layer.y[place] = 0;
      layer.dropped.push_back(place);
    }
}

/// Null for a layer of another class; a cast by the type's tag, as every pass asks every layer.
NetPoolLayer_s* asPool(NetLayer_s& layer) {
  return layer.typeCode == 18 ? static_cast<NetPoolLayer_s*>(&layer) : nullptr;
}

void useOwn(NetLayer_s& layer) {
  layer.samples = 1;
  layer.y = layer.value.data();
  layer.dy = layer.delta.data();
  layer.wantsDelta = true;
  if (NetPoolLayer_s* pool = asPool(layer)) pool->chosen = pool->poolIndex.data();
}

}  // namespace

void NetWork_c::planBlock() {
  std::size_t size = input->size();
  for (const NetLayer_s* layer : layers) size += layer->size();
  room = std::clamp(kBlockBytes / (2 * sizeof(double) * size) / kLeastSamples * kLeastSamples, kLeastSamples,
                    kMostSamples);
  block.clear();
  block.shrink_to_fit();
}

bool NetWork_c::bindOne() {
  if (!usable()) return false;
  useOwn(*input);
  for (NetLayer_s* layer : layers) useOwn(*layer);
  return true;
}

void NetWork_c::bindBlock(std::size_t samples) {
  std::size_t size = input->size();
  for (const NetLayer_s* layer : layers) size += layer->size();
  block.resize(2 * room * size);
  double *y = block.data(), *dy = y + samples * size;
  const auto use = [&](NetLayer_s& layer) {
    layer.samples = static_cast<int32_t>(samples);
    layer.y = y;
    layer.dy = dy;
    layer.wantsDelta = true;
    y += samples * layer.size();
    dy += samples * layer.size();
    if (NetPoolLayer_s* pool = asPool(layer)) {
      pool->blockIndex.resize(room * layer.size());
      pool->chosen = pool->blockIndex.data();
    }
  };
  use(*input);
  for (NetLayer_s* layer : layers) use(*layer);
}

void NetWork_c::forward(bool drop) {
  for (NetLayer_s* layer : layers) {
    layer->forward(*layer);
    layer->dropped.clear();
    if (drop && layer->dropCount > 0) dropEntries(*layer);
  }
}

void NetWork_c::backward() {
  for (auto layer = layers.rbegin(); layer != layers.rend(); ++layer) {
    if ((*layer)->back == 0) continue;
    for (const std::size_t place : (*layer)->dropped) (*layer)->dy[place] = 0;
    (*layer)->backward(**layer);
  }
}

void NetWork_c::clearDelta() {
  const auto clear = [](NetLayer_s& layer) {
    std::fill_n(layer.dy, static_cast<std::size_t>(layer.samples) * layer.size(), 0.0);
  };
  clear(*input);
  for (NetLayer_s* layer : layers) clear(*layer);
}

bool NetWork_c::predictOne(const double* in, double* out) {
  if (!bindOne()) return false;
  std::copy_n(in, input->size(), input->value.data());
  forward(false);
  std::copy_n(output->value.data(), output->size(), out);
  return true;
}

bool NetWork_c::runWork(const double* in, double* out) {
  const std::unique_lock lock(passes);
  return training == 0 && predictOne(in, out);
}

bool NetWork_c::predict(const double* in, double* out) {
  const std::lock_guard lock(passes);
  return predictOne(in, out);
}

bool NetWork_c::predict(SampleRows in, double* out) {
  const std::lock_guard lock(passes);
  if (!usable()) return false;
  while (!in.empty()) {
    const std::size_t samples = std::min(room, in.size());
    bindBlock(samples);
    for (std::size_t s = 0; s < samples; ++s) std::copy_n(in[s], input->size(), input->y + s * input->size());
    forward(false);
    out = std::copy_n(output->y, samples * output->size(), out);
    in = in.subspan(samples);
  }
  return true;
}

bool NetWork_c::addGradients(SampleRows in, SampleRows targets) {
  const std::lock_guard lock(passes);
  if (!usable() || costGrad == nullptr) return false;
  while (!in.empty()) {
    const std::size_t samples = std::min(room, in.size());
    bindBlock(samples);
    clearDelta();
    input->wantsDelta = false;
    for (std::size_t s = 0; s < samples; ++s) std::copy_n(in[s], input->size(), input->y + s * input->size());
    forward(training != 0);
    const std::size_t n = output->size();
    for (std::size_t s = 0; s < samples; ++s) costGrad({output->y + s * n, n}, targets[s], {output->dy + s * n, n});
    backward();
    in = in.subspan(samples);
    targets = targets.subspan(samples);
  }
  return true;
}

bool NetWork_c::inputJacobian(double* out) {
  const std::lock_guard lock(passes);
  if (!bindOne()) return false;
  forward(false);
  for (std::size_t o = 0; o < output->size(); ++o) {
    clearDelta();
    output->delta[o] = 1;
    backward();
    output->delta[o] = 0;
    out = std::ranges::copy(input->delta, out).out;
  }
  return true;
}

bool NetWork_c::varJacobian(const double* in, double* out, double* jacobian) {
  const std::lock_guard lock(passes);
  if (!predictOne(in, out)) return false;
  const std::size_t n = varSize();
  for (std::size_t o = 0; o < output->size(); ++o) {
    clearDelta();
    clearGrad();
    output->delta[o] = 1;
    backward();
    getGrad(jacobian + o * n);
  }
  return true;
}

void NetWork_c::setTraining(bool on) {
  const std::lock_guard lock(passes);
  training = on ? 1 : 0;
}

bool NetWork_c::isTraining() const {
  const std::lock_guard lock(passes);
  return training != 0;
}

}  // namespace NetWork
