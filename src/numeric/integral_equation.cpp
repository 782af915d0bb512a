// SPDX-License-Identifier: Apache-2.0
#include "numeric/integral_equation.h"

#include <Eigen/LU>
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

#include "frame/numbers.h"

namespace Integral {

namespace {

/// Points and weights of Gauss and Legendre on [0, 1], by Newton's iteration on the polynomial, and the Lagrange
/// polynomials of the points.
template <int n>
struct GaussLegendre {
  std::array<double, n> c, w;

  GaussLegendre() {
    for (int i = 0; i < n; ++i) {
      double x = std::cos(std::numbers::pi * (i + 0.75) / (n + 0.5));
      double slope = 1;
      for (int pass = 0; pass < 8; ++pass) {
        double p = 1, before = 0;
        for (int k = 1; k <= n; ++k) before = std::exchange(p, ((2 * k - 1) * x * p - (k - 1) * before) / k);
        slope = n * (x * p - before) / (x * x - 1);
        x -= p / slope;
      }
      c[i] = 0.5 - 0.5 * x;
      w[i] = 1 / ((1 - x * x) * slope * slope);
    }
  }

  /// The values at s of the polynomials that are 1 at one point and 0 at the others.
  std::array<double, n> lagrange(double s) const {
    std::array<double, n> result;
    for (int j = 0; j < n; ++j) {
      result[j] = 1;
      for (int m = 0; m < n; ++m)
        if (m != j) result[j] *= (s - c[m]) / (c[j] - c[m]);
    }
    return result;
  }
};

constexpr int kStages = 4;  // of an interval of the Volterra grid
constexpr int kPoints = 8;  // of a panel of the Fredholm grid

template <int n>
const GaussLegendre<n>& rule() {
  static const GaussLegendre<n> instance;
  return instance;
}

}  // namespace

double IntegralEquByVolterra::solve(double x, int intervals) {
  const GaussLegendre<kStages>& gauss = rule<kStages>();
  std::array<std::array<std::array<double, kStages>, kStages>, kStages> inner;  // between 0 and each point
  for (int i = 0; i < kStages; ++i)
    for (int k = 0; k < kStages; ++k) inner[i][k] = gauss.lagrange(gauss.c[i] * gauss.c[k]);
  const double h = (x - a) / intervals;
  std::vector<double> t, y;  // the points and the solution there, interval after interval
  const auto history = [&](double at) {
    double sum = 0;
    for (size_t k = 0; k < y.size(); ++k) sum += gauss.w[k % kStages] * kernel(at, t[k]) * y[k];
    return h * sum;
  };
  for (int n = 0; n < intervals; ++n) {
    const double left = a + n * h;
    Eigen::Matrix<double, kStages, kStages> system = Eigen::Matrix<double, kStages, kStages>::Identity();
    Eigen::Matrix<double, kStages, 1> right;
    for (int i = 0; i < kStages; ++i) {
      const double at = left + gauss.c[i] * h;
      right[i] = freeTerm(at) + history(at);
      for (int k = 0; k < kStages; ++k) {
        const double part = h * gauss.c[i] * gauss.w[k] * kernel(at, left + gauss.c[i] * gauss.c[k] * h);
        for (int j = 0; j < kStages; ++j) system(i, j) -= part * inner[i][k][j];
      }
    }
    const Eigen::Matrix<double, kStages, 1> stage = system.partialPivLu().solve(right);
    for (int i = 0; i < kStages; ++i) {
      t.push_back(left + gauss.c[i] * h);
      y.push_back(stage[i]);
    }
  }
  return freeTerm(x) + history(x);
}

double IntegralEquByVolterra::value(double x) {
  const double wanted = std::abs(x - a) / 0.1;
  if (!std::isfinite(wanted)) return kNaN;
  if (wanted >= 6000) return solve(x, 6000);
  int intervals = std::max(20, static_cast<int>(wanted));
  double previous = 0.0;
  double v = 0.0;
  for (int pass = 0; pass < 32 && intervals < 6000; ++pass) {
    v = solve(x, intervals);
    if (pass > 0 && std::abs(previous - v) <= 1e-12) break;
    if (std::isnan(v)) break;
    previous = v;
    intervals = intervals <= 60 ? intervals * 2 : intervals + 60;
  }
  return v;
}

std::vector<double> IntegralEquByFredholm::weightsAt(double x) const {
  const GaussLegendre<kPoints>& gauss = rule<kPoints>();
  const double h = (b - a) / panels;
  std::vector<double> result(static_cast<size_t>(panels) * kPoints);
  for (int p = 0; p < panels; ++p) {
    const double left = a + p * h;
    double* const weights = result.data() + p * kPoints;
    const double place = (x - left) / h;
    if (!(place > 0 && place < 1)) {
      for (int k = 0; k < kPoints; ++k) weights[k] = h * gauss.w[k] * kernel(x, left + gauss.c[k] * h);
      continue;
    }
    for (const auto& [from, width] : {std::pair(0.0, place), std::pair(place, 1 - place)})
      for (int k = 0; k < kPoints; ++k) {
        const double s = from + width * gauss.c[k];
        const double part = h * width * gauss.w[k] * kernel(x, left + s * h);
        const std::array<double, kPoints> share = gauss.lagrange(s);
        for (int j = 0; j < kPoints; ++j) weights[j] += part * share[j];
      }
  }
  return result;
}

void IntegralEquByFredholm::solveAt(int panelCount) {
  panels = panelCount;
  const int count = panels * kPoints;
  Eigen::MatrixXd system = Eigen::MatrixXd::Identity(count, count);
  Eigen::VectorXd right(count);
  for (int i = 0; i < count; ++i) {
    const double x = a + (b - a) / panels * (i / kPoints + rule<kPoints>().c[i % kPoints]);
    right[i] = freeTerm(x);
    const std::vector<double> weights = weightsAt(x);
    for (int j = 0; j < count; ++j) system(i, j) -= weights[j];
  }
  const Eigen::VectorXd solution = system.partialPivLu().solve(right);
  values.assign(solution.begin(), solution.end());
}

void IntegralEquByFredholm::prepare() {
  constexpr int kPlaces = 9;
  std::array<double, kPlaces> before{};
  for (int count = 2; count <= 64; count *= 2) {
    solveAt(count);
    bool agrees = count > 2;
    for (int k = 0; k < kPlaces; ++k) {
      const double v = solve(a + (b - a) * k / (kPlaces - 1));
      if (!(std::abs(v - before[k]) <= 1e-13 * std::max(1.0, std::abs(v)))) agrees = false;
      before[k] = v;
      if (std::isnan(v)) return;
    }
    if (agrees) return;
  }
}

double IntegralEquByFredholm::solve(double x) {
  const std::vector<double> weights = weightsAt(x);
  double sum = freeTerm(x);
  for (size_t j = 0; j < weights.size(); ++j) sum += weights[j] * values[j];
  return sum;
}

}  // namespace Integral
