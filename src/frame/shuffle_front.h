// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "frame/random.h"

/// What std::shuffle brings to the first three places of 0, 1, ..., n-1, each time with a new local generator. A place
/// holds what the last draw for it put there, so that no list need be shuffled: the draws of a whole batch of
/// generators are made side by side, with the words and the rule of std::shuffle.
class ShuffleFronts : public LocalMersennes {
 public:
  using Front = std::array<uint32_t, 3>;  ///< entries that a short list does not have keep their own number

  /// With the generator that next(seed, ahead) gives; n >= 1 elements.
  Front nextFront(uint32_t (*seed)(), std::size_t ahead, std::size_t n);

 private:
  static constexpr std::size_t kMostElements = 400;  // the first words of a batch are enough

  Front whole(LocalMersenne local, std::size_t n);
  void draw(std::size_t n);

  std::size_t drawnBatch = 0, drawnElements = 0;
  uint32_t places[3][kLanes];
  uint32_t doubtful[kLanes];  // not 0: a draw that may have to be made again
  std::vector<uint32_t> list;
};
