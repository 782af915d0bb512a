// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include "prog/quad/osqp_solve.h"
#include "sym/store/store.h"

namespace QuadProg {

/// Solves the programme that a matrix of expressions states: its first element is the objective, to be maximised, each
/// other one a constraint, at most 0, or equal to 0 where its top node is `Abs`. On success the symbols take their
/// values, and `values` too, in the order of the symbols.
ResType_E solveSym(std::span<Sym::BaseSym_s* const> symbols, const Sym::SymMatrix2d_t& expressions, double* values);

}  // namespace QuadProg
