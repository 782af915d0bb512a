// SPDX-License-Identifier: Apache-2.0
#include "network/graph/net_var.h"

#include <algorithm>
#include <ctime>

#include "frame/random.h"
#include "orvane/network_layer.h"

namespace NetWork {
namespace {

constexpr double kZero = 1e-8, kAway = 1e-3;

std::size_t count(int32_t n) { return n > 0 ? static_cast<std::size_t>(n) : 0; }

double allowed(uint8_t rule, double v) {
  switch (rule) {
    case ORVANE_SIGN_POSITIVE:
      return v < kZero ? kAway : v;
    case ORVANE_SIGN_NOT_NEGATIVE:
      return v < -kZero ? 0 : v;
    case ORVANE_SIGN_NEGATIVE:
      return v > -kZero ? -kAway : v;
    case ORVANE_SIGN_NOT_POSITIVE:
      return v > kZero ? 0 : v;
    case ORVANE_SIGN_NOT_ZERO:
      if (v > 0 && v < kZero) return kAway;
      return v > -kZero && v <= 0 ? -kAway : v;
    default:
      return v;
  }
}

}  // namespace

// KEPT: variables of one shape made within one second hold the same numbers; expected: different ones (kept.csv:
// Var_seed)
NetVar_s::NetVar_s(int32_t rows, int32_t cols) : value(count(rows), count(cols)), grad(count(rows), count(cols)) {
  typeCode = 15;
  std::mt19937 rng(static_cast<uint32_t>(std::time(nullptr)));
  for (double& v : value.all()) v = UniformDistribution{}(rng);
}

void NetVar_s::setValue(const double* data) { std::copy_n(data, value.size(), value.data()); }

void NetVar_s::getValue(double* data) const { std::copy_n(value.data(), value.size(), data); }

void NetVar_s::fill(double v) { std::ranges::fill(value.all(), v); }

void NetVar_s::applySignRule() {
  if (varFlag == ORVANE_SIGN_FREE) return;
  for (double& v : value.all()) v = allowed(varFlag, v);
}

}  // namespace NetWork
