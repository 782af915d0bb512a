// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <thread>
#include <vector>

namespace Filter {

/// Calls work(first, last) over contiguous parts of 0..n, ceil(n/threads) each, every part on a thread of its own, and
/// joins them. Below 2 threads the caller's does it all. Parts must not touch the same memory.
template <class Work>
void inParts(std::size_t n, int32_t threads, const Work& work) {
  constexpr int32_t kMostThreads = 256;
  const auto count = static_cast<std::size_t>(std::clamp(threads, 1, kMostThreads));
  const std::size_t part = (n + count - 1) / count;
  if (part >= n) return work(0, n);
  std::vector<std::jthread> workers;
  for (std::size_t first = 0; first < n; first += part)
    workers.emplace_back([&work, first, last = std::min(first + part, n)] { work(first, last); });
}

}  // namespace Filter
