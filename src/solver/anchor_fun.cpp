// SPDX-License-Identifier: Apache-2.0
#include "solver/anchor_fun.h"

#include <cmath>

namespace Solver {
namespace {

// Period of the waves: it grows with the argument, so that a large argument is not folded into noise.
double wavePeriod(double t) {
  if (t < 10.0) return 1.0;
  if (t < 100.0) return 10.0;
  if (t < 1000.0) return 100.0;
  return t < 10000.0 ? 1000.0 : 10000.0;
}

}  // namespace

AnchorFun::AnchorFun() : BaseOptimizeObject(1) { setModes(1, 1); }

double AnchorFun::transform(uint8_t mode, double t) {
  const double c = wavePeriod(t);
  switch (mode) {
    case 0:
      return 32.0 * t / (t * t + 1.0);
    case 2:
      return 10.0 * std::cos(t / c);
    case 3:
      return std::sin(10.0 * std::log(t));
    case 4:
      return std::cos(10.0 * std::log(t));
    case 5:
      return std::log(t) * 10.0 * std::sin(t / c);
    case 6:
      return std::log(t) * 10.0 * std::cos(t / c);
    default:
      return 10.0 * std::sin(t / c);
  }
}

void AnchorFun::setModes(uint8_t first, uint8_t second) {
  mode1 = first;
  mode2 = second;
  transform1 = [first](double t) { return transform(first, t); };
  transform2 = [second](double t) { return transform(second, t); };
}

double AnchorFun::deflate(double a, double s) const {
  if (!(a < 10.0)) a = std::abs(transform1(a));
  double distance = std::log(s / static_cast<double>(anchorVar.size()) + 1.0);
  if (!(distance < 10.0)) distance = std::abs(transform2(distance)) + 0.001;
  return 1.0 / ((a + 0.001) * (distance + 1e-12));
}

double AnchorFun::calcValue(const std::vector<double>& x) {
  const double value = inner->calcValue(x);
  innerValue = value;
  if (anchorBest > value) {
    anchorBest = value;
    anchorBestVar = x;
  }
  const double d = value - anchorValue;
  if (d < -1.0) return d;
  double s = 0.0;
  for (std::size_t i = 0; i < anchorVar.size(); ++i) s += (x[i] - anchorVar[i]) * (x[i] - anchorVar[i]);
  return s < 0.1 || !(d < -0.001) ? deflate(std::abs(d), s) : d;
}

std::unique_ptr<BaseOptimizeObject> AnchorFun::clone() const {
  auto copy = std::make_unique<AnchorFun>();
  copy->active = active;
  copy->anchorVar = anchorVar;
  copy->anchorValue = anchorValue;
  copy->inner = inner;
  copy->anchorBest = anchorBest;
  copy->anchorBestVar = anchorBestVar;
  copy->setModes(mode1, mode2);
  return copy;
}

}  // namespace Solver
