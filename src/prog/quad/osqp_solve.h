// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <vector>

#include "numeric/csc_sparse.h"

namespace QuadProg {

/// Results of a solve.
enum ResType_E : int { kSolved = 1, kNoObjective = 5, kSetupFailed = 6, kSolveFailed = 7, kNoInteger = 8 };

/// The least 1/2 x'Px + q.x under l <= Ax <= u; of the symmetric P the upper triangle.
struct BoxedProblem {
  Sparse::CSCSparse P, A;
  std::vector<double> q, l, u;
};

/// Solves by OSQP, with its default settings and polishing; x is touched by a success alone.
ResType_E solveByOsqp(const BoxedProblem& problem, std::vector<double>& x);

}  // namespace QuadProg
