// SPDX-License-Identifier: Apache-2.0
#include "classify/svm/kernel_rows.h"

#include <algorithm>
#include <utility>

namespace NetWork {

KernelRows::KernelRows(std::size_t count, std::function<void(std::size_t, std::span<double>)> fill)
    : diagonal(count),
      fill(std::move(fill)),
      most(std::max<std::size_t>(2, kBytes / (sizeof(double) * std::max<std::size_t>(count, 1)))),
      kept(count) {}

std::span<const double> KernelRows::row(std::size_t i) {
  Kept& wanted = kept[i];
  if (!wanted.values.empty()) {
    turns.splice(turns.begin(), turns, wanted.turn);
    return wanted.values;
  }
  if (turns.size() == most) {
    wanted.values.swap(kept[turns.back()].values);
    turns.pop_back();
  }
  wanted.values.resize(size());
  fill(i, wanted.values);
  turns.push_front(i);
  wanted.turn = turns.begin();
  return wanted.values;
}

}  // namespace NetWork
