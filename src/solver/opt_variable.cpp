// SPDX-License-Identifier: Apache-2.0
#include "solver/opt_variable.h"

namespace Solver {

void OptVariable::accept() {
  prevValue = curValue;
  curValue = trialValue;
  age = 0;
  curVar = trialVar;
  if (bestValue > curValue) {
    bestValue = curValue;
    bestVar = trialVar;
  }
}

}  // namespace Solver
