// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "prog/line/simplex.h"

namespace LineProg {

/// Whether a run in doubles stands: its point keeps the constraints as well as their data let it. A real problem that
/// ended without a point is looked at again, as rounding may have taken it there; a search over integers, where
/// most nodes end so, is not.
bool trusted(const LineProblem& problem, const Node<double>& root, bool hasWhole);

}  // namespace LineProg
