// SPDX-License-Identifier: Apache-2.0
#include "solver/least_squares/dog_leg.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "numeric/dense.h"

namespace Solver {
namespace {

constexpr double kShrink = 0.86;  // of a step that went uphill
constexpr double kShrinkSquare = 0.7396;

double norm2(std::span<const double> v) {
  double sum = 0.0;
  for (const double x : v) sum += x * x;
  return sum;
}

double dot(const double* a, const double* b, std::size_t n) {
  double sum = 0.0;
  for (std::size_t i = 0; i < n; ++i) sum += a[i] * b[i];
  return sum;
}

void addScaled(double* y, double factor, const double* x, std::size_t n) {
  for (std::size_t i = 0; i < n; ++i) y[i] += factor * x[i];
}

double largest(std::span<const double> v) {
  double size = 0.0;
  for (const double x : v) size = std::max(size, std::abs(x));
  return size;
}

}  // namespace

void SolverByDogLeg_c::init(int32_t vars, int32_t residuals) {
  DenseSolver_c::init(vars, residuals);
  tryVar.assign(var.size(), 0.0);
  tryRes.assign(res.size(), 0.0);
}

void SolverByDogLeg_c::solve(std::span<const double> x) {
  iterCount = 0;
  if (!start(x) || noImproveLimit < 1) return;
  while (iterCount < iterLimit && !stop) {
    ++iterCount;
    if (!iterate()) return;
  }
}

bool SolverByDogLeg_c::start(std::span<const double> x) {
  std::copy_n(x.begin(), std::min(x.size(), var.size()), var.begin());
  limitFun(var);
  resFun(var, res);
  error = norm2(res);
  if (!std::isfinite(error) || targetError >= error) return false;
  if (!sameRes) gradResFun(var, res);
  curVar = var;
  radius = varCount * 10000.0;
  prev = error;
  minStep = norm2(var) * 1e-12;
  count = 1;
  return true;
}

/// One step from curVar to newVar; false ends the solve.
bool SolverByDogLeg_c::iterate() {
  calcGradient();
  if (tol > largest(grad)) return false;
  calcNormalStep();
  if (std::ranges::any_of(step, [](double s) { return std::isnan(s); })) return false;
  bend();
  for (const int32_t i : fixedIndex)
    if (i >= 0 && i < varCount) step[static_cast<std::size_t>(i)] = 0.0;
  const double length = norm2(step);
  if (tol > largest(step) || minStep > length) return false;

  moveTo(curVar, step, newVar);
  limitFun(newVar);
  resFun(newVar, res);
  now = norm2(res);
  if (!std::isfinite(now)) return false;
  if (now > prev) backtrack(length);

  const double gain = (prev - now) / (prev + 1e-12);
  if (!keepBest(gain) || !resize(gain)) return false;
  if (!sameRes) gradResFun(newVar, res);
  curVar = newVar;
  minStep = norm2(curVar) * 1e-12;
  prev = now;
  return ++count <= noImproveLimit;
}

/// grad = J'r, and alpha, the length of the steepest descent step in units of the gradient: |g|^2 / |J g|^2.
void SolverByDogLeg_c::calcGradient() {
  const std::size_t n = grad.size();
  jacFun(curVar, jac);
  std::ranges::fill(grad, 0.0);
  for (std::size_t r = 0; r < res.size(); ++r) addScaled(grad.data(), res[r], &jac[r * n], n);
  double curvature = 0.0;
  for (std::size_t r = 0; r < res.size(); ++r) {
    const double slope = dot(&jac[r * n], grad.data(), n);
    curvature += slope * slope;
  }
  alpha = norm2(grad) / (curvature + 1e-16);
}

/// step = -(J'J)^-1 J'r
void SolverByDogLeg_c::calcNormalStep() {
  const std::size_t n = grad.size();
  std::ranges::fill(normal, 0.0);
  for (std::size_t r = 0; r < res.size(); ++r) {
    const double* row = &jac[r * n];
    for (std::size_t i = 0; i < n; ++i) addScaled(&normal[i * n], row[i], row, i + 1);
  }
  for (std::size_t i = 0; i < n; ++i)
    for (std::size_t k = 0; k < i; ++k) normal[k * n + i] = normal[i * n + k];
  rhs = grad;
  det = Dense::invert(normal, static_cast<std::ptrdiff_t>(n), inverse);
  for (std::size_t i = 0; i < n; ++i) step[i] = -dot(&inverse[i * n], rhs.data(), n);
}

/// The dog-leg, for a step beyond the radius.
void SolverByDogLeg_c::bend() {
  const double square = radius * radius, gradSquare = norm2(grad);
  if (square > norm2(step)) return;
  // KEPT: a gradient step to the radius is not the end, it is bent once more; expected: it stands (kept.csv:
  // DogLeg_bend)
  if (alpha * alpha * alpha * alpha * gradSquare >= square) {
    const double factor = (-alpha * radius) / (std::abs(alpha) * std::sqrt(gradSquare) + 1e-16);
    for (std::size_t i = 0; i < step.size(); ++i) step[i] = grad[i] * factor;
  }
  // KEPT: the corner lies at alpha^2 along the gradient; expected: alpha (kept.csv: DogLeg_corner)
  const double corner = alpha * alpha;
  double p = 0.0, s = 0.0, w = 0.0;
  for (std::size_t i = 0; i < step.size(); ++i) {
    const double c = corner * grad[i], sum = c + step[i];
    p += c * c;
    s += sum * c;
    w += sum * sum;
  }
  const double m = square - p;
  const double d = std::sqrt(s * s + m * w);
  beta = s >= 0.0 ? (d + s) / (w + 1e-16) : m / (d - s);
  for (std::size_t i = 0; i < step.size(); ++i) {
    const double c = corner * grad[i];
    step[i] = (step[i] + c) * beta - c;
  }
}

/// Shortens a step that went uphill until it goes down by a tenth, or by 1. Without success the uphill point stands.
void SolverByDogLeg_c::backtrack(double length) {
  for (int trial = 0; trial < 32; ++trial) {
    length *= kShrinkSquare;
    if (stop || minStep > length) return;
    for (double& s : step) s *= kShrink;
    moveTo(curVar, step, tryVar);
    limitFun(tryVar);
    resFun(tryVar, tryRes);
    const double square = norm2(tryRes);
    if (prev > square + 1.0 || prev >= square * 1.1) {
      now = square;
      std::swap(res, tryRes);
      std::swap(newVar, tryVar);
      return;
    }
  }
}

/// False when nothing moves any more, or when the error is small enough.
bool SolverByDogLeg_c::keepBest(double gain) {
  // KEPT: a last gain below 1e-6 is not taken; expected: the better point (kept.csv: DogLeg_last)
  if (std::abs(gain) < 1e-6 || gain < -1e6) return false;
  if (!(prev > now)) return true;
  if (error > now) {
    error = now;
    var = newVar;
    if (targetError >= error) return false;
  }
  count = 0;
  return true;
}

bool SolverByDogLeg_c::resize(double gain) {
  // KEPT: the radius shrinks on a good step and grows on a bad one; expected: the reverse (kept.csv: DogLeg_radius)
  if (gain > 0.1) {
    radius *= gain > 1.0 ? 0.5 : 0.86;
    return !(minStep > radius * radius);
  }
  if (gain < -1.0)
    radius *= 2.0;
  else if (gain < -0.1)
    radius *= 1.5;
  return true;
}

}  // namespace Solver
