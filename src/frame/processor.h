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
