// SPDX-License-Identifier: Apache-2.0
#include "frame/handle.h"
#include "orvane/loss.h"
#include "solver/losses/loss_table.h"

template <>
struct NativeOf<LossFun> {
  using type = Solver::BaseLossFun;
};

LossFun* api_initLossFun(int32_t kind) { return registered<LossFun>(Solver::makeLossFun(kind)); }

void api_setLossParam(LossFun* loss, double k) { native(loss).setParam(k); }

double api_calcLossFun(const LossFun* loss, const double* y, const double* t, int32_t n) {
  return native(loss).calcSum(y, t, n);
}
