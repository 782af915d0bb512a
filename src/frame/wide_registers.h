// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "frame/processor.h"

/// Loops over doubles compiled twice: for the base instruction set and for AVX2 where the processor may have it.
/// Without fused multiply-add both give the same bits.

#if ORVANE_DISPATCH_AVX2

template <class Body>
__attribute__((target("avx2"), noinline)) auto withAvx2(const Body& body) {
  return body();
}

#endif

/// Calls body, a lambda marked __attribute__((always_inline)) as all that it calls on its hot path.
template <class Body>
auto onWidest(const Body& body) {
#if ORVANE_DISPATCH_AVX2
  if (hasAvx2()) return withAvx2(body);
#endif
  return body();
}
