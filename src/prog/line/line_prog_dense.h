// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

namespace LineProg {

/// A dense problem: A x <= b, Aeq x = beq, matrices row-major with c.size() columns.
struct DenseProblem {
  std::span<const double> c, A, b, Aeq, beq;
  std::size_t n = 0;
};

/// True when no entry exceeds 1e-15 in size; an empty array has none.
bool allSmall(std::span<const double> values);

/// The maximum of c.x over x >= 0, x written; NaN, with x untouched, on failure.
double solveDense(const DenseProblem& problem, std::span<double> x);

}  // namespace LineProg
