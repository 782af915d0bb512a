// SPDX-License-Identifier: Apache-2.0
// Fresnel integrals C(x) and S(x) of cos(pi t^2/2) and sin(pi t^2/2).
#include <cmath>

#include "numeric/integral.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kSeriesEnd = 2.5, kQuadratureEnd = 5;

// pi x^2/2 less full turns: x^2 with its rounding error, modulo 4.
double angle(double x) {
  const double square = x * x;
  if (!(pi / 2 * square < 1e22)) return guardAngle(pi / 2 * square);
  return pi / 2 * (std::fmod(square, 4.0) + std::fma(x, x, -square));
}

double seriesC(double x) {
  const double t = pi / 4 * x * x, a = 0.25, b[] = {0.5, 1.25};
  return x * calcHypergeometricPFQ(&a, 1, b, 2, -t * t);
}

double seriesS(double x) {
  const double t = pi / 4 * x * x, a = 0.75, b[] = {1.5, 1.75};
  return pi / 6 * x * x * x * calcHypergeometricPFQ(&a, 1, b, 2, -t * t);
}

// f and g of C = 1/2 + f sin - g cos, S = 1/2 - f cos - g sin (Abramowitz and Stegun 7.3.27, 7.3.28).
struct Auxiliary {
  double f, g;
};

template <std::size_t N>
double alternating(const double (&c)[N], double r) {
  double sum = 0;
  for (std::size_t k = N; k-- > 0;) sum = c[k] - r * sum;
  return sum;
}

Auxiliary auxiliary(double x) {
  static constexpr double kF[] = {
      1, 3, 105, 10395, 2027025, 654729075, 316234143225, 213458046676875, 1.9189878396251062e+17};
  static constexpr double kG[] = {1, 15, 945, 135135, 34459425, 13749310575, 7905853580625, 6190283353629375};
  const double t = pi * x * x, r = 1 / (t * t);
  return {alternating(kF, r) / (pi * x), alternating(kG, r) / (pi * x * t)};
}

double calcFresnelCQuadrature(double x) {
  static const double start = seriesC(kSeriesEnd);
  return start + Integral::integralAdaptive([](double t) { return std::cos(pi / 2 * t * t); }, kSeriesEnd, x, 1000000);
}

double calcFresnelSQuadrature(double x) {
  static const double start = seriesS(kSeriesEnd);
  return start + Integral::integralAdaptive([](double t) { return std::sin(pi / 2 * t * t); }, kSeriesEnd, x, 1000000);
}

}  // namespace

double calcFresnelC(double x) {
  if (std::isnan(x)) return x;
  if (x < 0) return -calcFresnelC(-x);
  if (x <= kSeriesEnd) return seriesC(x);
  if (x <= kQuadratureEnd) return calcFresnelCQuadrature(x);
  if (x > 2e9) return 0.5;
  const double phase = angle(x);
  if (x > 1e6) return 0.5 + std::sin(phase) / (pi * x);
  const Auxiliary a = auxiliary(x);
  return 0.5 + a.f * std::sin(phase) - a.g * std::cos(phase);
}

double calcFresnelS(double x) {
  if (std::isnan(x)) return x;
  if (x < 0) return -calcFresnelS(-x);
  if (x <= kSeriesEnd) return seriesS(x);
  if (x <= kQuadratureEnd) return calcFresnelSQuadrature(x);
  if (x > 1e16) return 0.5;
  const double phase = angle(x);
  if (x > 1e6) return 0.5 - std::cos(phase) / (pi * x);
  const Auxiliary a = auxiliary(x);
  return 0.5 - a.f * std::cos(phase) - a.g * std::sin(phase);
}

}  // namespace SpecialFunction
