// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Loops over doubles compiled twice: for the base instruction set and, on x86-64, for AVX2. Without fused multiply-add
/// both give the same bits.

#if defined(__x86_64__) && defined(__GNUC__) && !defined(__AVX2__)
#define ORVANE_DISPATCH_AVX2 1
#else
#define ORVANE_DISPATCH_AVX2 0
#endif

namespace Filter {

#if ORVANE_DISPATCH_AVX2

inline bool hasAvx2() {
  static const bool has = __builtin_cpu_supports("avx2");
  return has;
}

template <class Body>
__attribute__((target("avx2"), noinline)) auto withAvx2(const Body& body) {
  return body();
}

/// Calls body, a lambda marked __attribute__((always_inline)) as all that it calls on its hot path.
template <class Body>
auto onWidest(const Body& body) {
  return hasAvx2() ? withAvx2(body) : body();
}

#else

template <class Body>
auto onWidest(const Body& body) {
  return body();
}

#endif

}  // namespace Filter
