// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>

/// Runs a work once, by the first thread that asks; the others wait for it. A std::once_flag would make a system call
/// each time, which costs more than most works that are done so.
class MadeOnce {
 public:
  /// A work that throws is not done: the next one who asks runs it again.
  template <class Work>
  void run(const Work& work) {
    for (State seen = state.load(std::memory_order_acquire); seen != State::done;) {
      if (seen == State::busy) {
        state.wait(State::busy, std::memory_order_acquire);
        seen = state.load(std::memory_order_acquire);
      } else if (state.compare_exchange_weak(seen, State::busy, std::memory_order_acquire)) {
        Turn turn{state};
        work();
        turn.end = State::done;
        return;
      }
    }
  }

 private:
  enum class State : int { open, busy, done };
  struct Turn {
    ~Turn() {
      state.store(end, std::memory_order_release);
      state.notify_all();
    }
    std::atomic<State>& state;
    State end = State::open;
  };
  std::atomic<State> state = State::open;
};
