// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>
#include <random>
#include <ranges>

#include "frame/random.h"
#include "network/graph/net_work.h"
#include "orvane/network.h"

namespace NetWork {
namespace {

auto trainable(const std::vector<NetVar_s*>& vars) {
  return vars | std::views::filter([](const NetVar_s* var) { return var->fixed == 0; });
}

}  // namespace

std::size_t NetWork_c::varSize() const {
  std::size_t size = 0;
  for (const NetVar_s* var : trainable(vars)) size += var->value.size();
  return size;
}

void NetWork_c::getVar(double* out) const {
  for (const NetVar_s* var : trainable(vars)) out = std::ranges::copy(var->value.all(), out).out;
}

void NetWork_c::setVar(const double* in) {
  for (NetVar_s* var : trainable(vars)) {
    var->setValue(in);
    in += var->value.size();
  }
}

void NetWork_c::getGrad(double* out) const {
  for (const NetVar_s* var : trainable(vars)) out = std::ranges::copy(var->grad.all(), out).out;
}

void NetWork_c::clearGrad() {
  for (NetVar_s* var : vars) std::ranges::fill(var->grad.all(), 0.0);
}

void NetWork_c::applySignRule() {
  for (NetVar_s* var : trainable(vars)) var->applySignRule();
}

void NetWork_c::randValue(double scale) {
  constexpr uint32_t kSeed = 5489;
  constexpr double kLeastScale = 0.1, kOffZero = 1e-12;
  std::mt19937 own(kSeed);
  std::mt19937& generator = rng != nullptr ? *rng : own;
  const double s = scale > kLeastScale ? scale : kLeastScale;
  const UniformDistribution uniform;

  std::vector<double> draws(varSize());
  for (double& r : draws) r = s * uniform(generator);
  const double largest = draws.empty() ? 1 : std::max(1.0, *std::ranges::max_element(draws));

  auto r = draws.begin();
  for (NetVar_s* var : trainable(vars)) {
    const uint8_t rule = var->varFlag;
    const bool positive = rule == ORVANE_SIGN_POSITIVE || rule == ORVANE_SIGN_NOT_NEGATIVE;
    const bool negative = rule == ORVANE_SIGN_NEGATIVE || rule == ORVANE_SIGN_NOT_POSITIVE;
    const double limit = s * std::sqrt(6.0 / static_cast<double>(var->value.rowCount() + var->value.colCount()));
    for (double& v : var->value.all()) {
      const double size = (*r++ + kOffZero) / largest;
      v = positive ? size : negative ? -size : limit * (2 * uniform(generator) - 1);
    }
  }
}

}  // namespace NetWork
