// SPDX-License-Identifier: Apache-2.0
#include "frame/random.h"

#include <algorithm>
#include <iterator>

#if __has_include(<sys/random.h>)
#include <sys/random.h>
#endif

uint32_t deviceSeed() {
  constexpr std::size_t kBlock = 32;
  thread_local uint32_t words[kBlock];
  thread_local std::size_t left = 0;
  if (left == 0) {
#if __has_include(<sys/random.h>)
    const bool filled = getentropy(words, sizeof words) == 0;
#else
    const bool filled = false;
#endif
    if (!filled) std::generate(std::begin(words), std::end(words), std::random_device());
    left = kBlock;
  }
  return words[--left];
}
