// SPDX-License-Identifier: Apache-2.0
#include "classify/svm/smo_solver.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>

#include "frame/numbers.h"
#include "frame/processor.h"

namespace Solver {
namespace {

constexpr double kTolerance = 5e-4;  ///< of an error, so that the gap of two is at most 1e-3
constexpr double kLeastMove = 1e-12;
constexpr uint32_t kSeed = 5489;     ///< one order of samples, so that a training can be repeated
constexpr int64_t kScoreEvery = 64;  ///< passes between two looks at a score that ends nothing
constexpr std::size_t kBlock = 64;

/// Sets `place` to that of the first smallest value(i) below `bound` among those that are allowed(i), and `bound` to
/// the value; leaves both where there is none. A block is asked with wide vectors whether it has one, and searched only
/// then.
template <class Value, class Allowed>
[[gnu::always_inline]] inline void firstSmallest(std::size_t n, const Value& value, const Allowed& allowed,
                                                 std::size_t& place, double& bound) {
  const auto search = [&](std::size_t from, std::size_t to) {
    for (std::size_t i = from; i < to; ++i)
      if (const double v = value(i); v < bound && allowed(i)) bound = v, place = i;
  };
  std::size_t from = 0;
  for (; from + kBlock <= n; from += kBlock) {
    int64_t smaller = 0;
    for (std::size_t i = from; i < from + kBlock; ++i) smaller |= int64_t{value(i) < bound} & int64_t{allowed(i)};
    if (smaller != 0) search(from, from + kBlock);
  }
  search(from, n);
}

}  // namespace

bool SolverBySMO_c::solve(NetWork::KernelRows& rows, std::span<const double> labels, double limit, const Limits& limits,
                          std::vector<double>& multipliers) {
  kernel = &rows;
  y = labels;
  C = limit;
  a = &multipliers;
  start();

  std::vector<std::size_t> shuffled(y.size());
  std::iota(shuffled.begin(), shuffled.end(), std::size_t{0});
  std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(kSeed));
  std::vector<bool> visited(y.size(), false);  // by the walk in the order of the samples
  std::size_t next = 0;                        // in the shuffled list
  int64_t steps = 0;
  for (int64_t pass = 0; pass < limits.passes; ++pass) {
    if (stop.load(std::memory_order_relaxed)) return false;
    const bool optimal = conditionsHold();
    if (optimal || limits.rate <= 1 || pass % kScoreEvery == 0) measureScore();
    if (optimal || score >= limits.rate) return true;
    if (limits.steps > 0 && steps >= limits.steps) return false;

    bool moved = examine(worst);
    for (std::size_t tried = 0; tried < shuffled.size() && !moved; ++tried) {
      moved = examine(shuffled[next]);
      next = next + 1 == shuffled.size() ? 0 : next + 1;
    }
    for (std::size_t i = 0; i < y.size() && !moved; ++i) {
      if (visited[i]) continue;
      visited[i] = true;
      moved = examine(i);
    }
    if (!moved) return false;  // rounding holds every pair where it is
    ++steps;
  }
  return false;
}

// A start that the host has set is taken when it is feasible.
void SolverBySMO_c::start() {
  std::vector<double>& start = *a;
  double balance = 0, size = 0;
  bool feasible = start.size() == y.size();
  for (std::size_t i = 0; feasible && i < y.size(); ++i) {
    feasible = start[i] >= 0 && start[i] <= C;
    balance += start[i] * y[i];
    size += start[i];
  }
  if (!feasible || std::abs(balance) > 1e-9 * size) start.assign(y.size(), 0);

  b = 0;
  errors.assign(y.size(), 0);
  notUp.assign(y.size(), 0);
  notDown.assign(y.size(), 0);
  for (std::size_t i = 0; i < y.size(); ++i) {
    errors[i] = -y[i];
    noteBounds(i);
  }
  for (std::size_t j = 0; j < y.size(); ++j) {
    if (start[j] == 0) continue;
    const std::span<const double> row = kernel->row(j);
    for (std::size_t i = 0; i < y.size(); ++i) errors[i] += start[j] * y[j] * row[i];
  }
}

// A sample may move up when a y can grow, and down when it can shrink.
void SolverBySMO_c::noteBounds(std::size_t i) {
  const bool atZero = (*a)[i] <= 0;
  notUp[i] = isFree(i) || atZero == (y[i] > 0) ? 0 : kInfinity;
  notDown[i] = isFree(i) || atZero == (y[i] < 0) ? 0 : kInfinity;
}

// The offset lies between the lowest error of the samples that may move up and the highest of those that may move down.
bool SolverBySMO_c::conditionsHold() {
  double lowestUp = kInfinity, lowestDown = kInfinity;
  std::size_t mostDown = 0;
  vectorised([&] {
    const double *e = errors.data(), *up = notUp.data(), *down = notDown.data();
    firstSmallest(
        y.size(), [=](std::size_t i) { return e[i]; }, [=](std::size_t i) { return up[i] == 0; }, worst, lowestUp);
    firstSmallest(
        y.size(), [=](std::size_t i) { return -e[i]; }, [=](std::size_t i) { return down[i] == 0; }, mostDown,
        lowestDown);
  });
  const double highestDown = -lowestDown;
  if (lowestUp == kInfinity)
    b = -highestDown;
  else if (highestDown == -kInfinity)
    b = -lowestUp;
  else
    b = -(lowestUp + highestDown) / 2;
  return !(highestDown - lowestUp > 2 * kTolerance);
}

void SolverBySMO_c::measureScore() {
  int64_t right = 0;
  vectorised([&] {
    const double *e = errors.data(), *sign = y.data(), offset = b;
    for (std::size_t i = 0; i < y.size(); ++i) right += (e[i] + sign[i] + offset) * sign[i] > 0;
  });
  score = static_cast<double>(right) / static_cast<double>(y.size());
}

// A multiplier that rounding holds off its bound would be moved by nothing, again and again.
double SolverBySMO_c::snapped(double multiplier) const {
  const double slack = 1e-12 * C;
  return multiplier < slack ? 0 : multiplier > C - slack ? C : multiplier;
}

bool SolverBySMO_c::violates(std::size_t i) const {
  const double r = (errors[i] + b) * y[i];
  return (r < -kTolerance && (*a)[i] < C) || (r > kTolerance && (*a)[i] > 0);
}

// The partner is the one on the other side with which the objective gains most, gap^2/eta: the widest gap of errors
// alone takes ten times as many steps (Fan, Chen, Lin 2005). Where it fails, the free samples, then all.
bool SolverBySMO_c::examine(std::size_t i2) {
  if (!violates(i2)) return false;
  const bool wantsUp = errors[i2] + b < 0;  // a y of i2 has to grow, so that of the partner shrinks
  const std::span<const double> row2 = kernel->row(i2);
  std::size_t best = y.size();
  double bound = 0;
  vectorised([&] {
    const double *e = errors.data(), *own = kernel->owns().data(), *with2 = row2.data();
    const double* const forbidden = wantsUp ? notDown.data() : notUp.data();
    const double side = wantsUp ? 1 : -1, own2 = own[i2], error2 = e[i2];
    const auto gap = [=](std::size_t i) { return side * (e[i] - error2); };
    const auto loss = [=](std::size_t i) {
      const double eta = own[i] + own2 - 2 * with2[i];
      return -(gap(i) * gap(i)) / (eta > kLeastMove ? eta : kLeastMove);
    };
    firstSmallest(
        y.size(), loss, [=](std::size_t i) { return gap(i) > forbidden[i]; }, best, bound);
  });
  if (best != y.size() && step(best, i2)) return true;
  for (std::size_t i1 = 0; i1 < y.size(); ++i1)
    if (i1 != i2 && isFree(i1) && step(i1, i2)) return true;
  for (std::size_t i1 = 0; i1 < y.size(); ++i1)
    if (i1 != i2 && step(i1, i2)) return true;
  return false;
}

// With a1 y1 + a2 y2 fixed the dual objective gains d y2 (E1 - E2) - eta d^2/2 when a2 moves by d.
bool SolverBySMO_c::step(std::size_t i1, std::size_t i2) {
  double& a1 = (*a)[i1];
  double& a2 = (*a)[i2];
  const bool alike = y[i1] == y[i2];
  const double low = alike ? std::max(0.0, a1 + a2 - C) : std::max(0.0, a2 - a1);
  const double high = alike ? std::min(C, a1 + a2) : std::min(C, C + a2 - a1);
  if (!(low < high)) return false;

  const double slope = y[i2] * (errors[i1] - errors[i2]);
  const std::span<const double> row2 = kernel->row(i2);
  const double eta = kernel->own(i1) + kernel->own(i2) - 2 * row2[i1];
  double moved;
  if (eta > 0) {
    moved = snapped(std::clamp(a2 + slope / eta, low, high));
  } else {
    const auto gain = [&](double end) { return (end - a2) * slope - eta * (end - a2) * (end - a2) / 2; };
    moved = gain(low) > gain(high) ? low : high;
    if (!(gain(moved) > kLeastMove)) return false;
  }
  const double d2 = moved - a2;
  if (!(std::abs(d2) > kLeastMove * (moved + a2 + kLeastMove))) return false;
  const double other = snapped(a1 - y[i1] * y[i2] * d2);
  const double d1 = other - a1;

  const std::span<const double> row1 = kernel->row(i1);
  const double f1 = d1 * y[i1], f2 = d2 * y[i2];
  vectorised([&] {
    double* const e = errors.data();
    const double *with1 = row1.data(), *with2 = row2.data();
    for (std::size_t i = 0; i < errors.size(); ++i) e[i] += f1 * with1[i] + f2 * with2[i];
  });
  a1 = other;
  a2 = moved;
  noteBounds(i1);
  noteBounds(i2);
  return true;
}

}  // namespace Solver
