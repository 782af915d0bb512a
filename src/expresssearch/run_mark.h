// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>

namespace Search {

/// Marks a search as running while it lives; `first` is false where one runs already.
class RunMark {
 public:
  explicit RunMark(std::atomic<bool>& running) : first(!running.exchange(true)), flag(running) {}
  ~RunMark() {
    if (first) flag = false;
  }
  RunMark(const RunMark&) = delete;
  RunMark& operator=(const RunMark&) = delete;

  const bool first;

 private:
  std::atomic<bool>& flag;
};

}  // namespace Search
