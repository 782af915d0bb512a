// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "frame/handle.h"
#include "prog/line/line_prog_dense.h"

/// A host's matrix as a span; null or a negative size is empty.
inline std::span<const double> block(const double* values, int32_t rows, int32_t cols) {
  if (values == nullptr || rows <= 0 || cols <= 0) return {};
  return {values, static_cast<std::size_t>(rows) * static_cast<std::size_t>(cols)};
}

/// A host's dense problem. Rows without their matrix or their right side do not count.
inline LineProg::DenseProblem denseProblem(const double* c, const double* A, const double* b, const double* Aeq,
                                           const double* beq, int32_t n, int32_t m, int32_t meq) {
  if (A == nullptr || b == nullptr) m = 0;
  if (Aeq == nullptr || beq == nullptr) meq = 0;
  return {span(c, n),         block(A, m, n), span(b, m),
          block(Aeq, meq, n), span(beq, meq), n > 0 ? static_cast<std::size_t>(n) : 0};
}
