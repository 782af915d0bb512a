// SPDX-License-Identifier: Apache-2.0
#include "network/train/net_base_solver.h"

#include <algorithm>

namespace NetWork {

void NetBaseSolver_c::init(int32_t varCount) {
  const auto n = static_cast<std::size_t>(std::max(varCount, 0));
  m.assign(n, 0.0);
  v.assign(n, 0.0);
  pow1 = pow2 = 1.0;
  lrCount = 0;
  lr = lrStart;
}

void NetBaseSolver_c::setVar(double b1, double b2, double third, double start, double end, int64_t steps) {
  beta1 = b1;
  beta2 = b2;
  extra = third;
  lr = lrStart = start;
  lrEnd = end;
  lrSteps = steps > 0 ? steps : kNoRamp;
  lrSlope = steps > 0 ? (end - start) / static_cast<double>(steps) : 0.0;
}

void NetBaseSolver_c::advanceRate() {
  ++lrCount;
  lr = lrCount >= lrSteps ? lrEnd : static_cast<double>(lrCount) * lrSlope + lrStart;
}

void NetBaseSolver_c::write(DataStream& stream) const {
  for (const double x : {lr, beta1, beta2, extra, pow1, pow2, lrStart, lrEnd, lrSlope}) stream.put(x);
  stream.put(lrSteps);
  stream.put(lrCount);
  stream.put(static_cast<uint64_t>(m.size()));
  for (const double x : m) stream.put(x);
  for (const double x : v) stream.put(x);
}

void NetBaseSolver_c::read(DataStream& stream) {
  for (double* x : {&lr, &beta1, &beta2, &extra, &pow1, &pow2, &lrStart, &lrEnd, &lrSlope}) *x = stream.take<double>();
  lrSteps = stream.take<int64_t>();
  lrCount = stream.take<int64_t>();
  const auto n = stream.take<uint64_t>();
  if (n > stream.left() / (2 * sizeof(double))) stream.makeBad();
  m.resize(stream.bad() ? 0 : n);
  v.resize(m.size());
  for (double& x : m) x = stream.take<double>();
  for (double& x : v) x = stream.take<double>();
}

}  // namespace NetWork
