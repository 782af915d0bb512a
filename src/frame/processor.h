// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What the processor can do beyond the instructions that the library is built for.

#if defined(__GNUC__) && defined(__x86_64__) && !defined(__AVX2__)
#define ORVANE_DISPATCH_AVX2 1

inline bool hasAvx2() {
  static const bool has = __builtin_cpu_supports("avx2");
  return has;
}

#else
#define ORVANE_DISPATCH_AVX2 0
#endif

#if ORVANE_DISPATCH_AVX2
template <class Work>
[[gnu::target("avx2"), gnu::flatten]] void runAvx2(const Work& work) {
  work();
}
#endif

/// Runs loops, compiled once more for wide vectors where the processor has them. The bits are the same: nothing is
/// fused or reordered.
template <class Work>
[[gnu::always_inline]] inline void vectorised(const Work& work) {
#if ORVANE_DISPATCH_AVX2
  if (hasAvx2()) return runAvx2(work);
#endif
  work();
}
