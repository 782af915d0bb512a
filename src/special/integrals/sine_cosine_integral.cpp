// SPDX-License-Identifier: Apache-2.0
// Sine and cosine integral by the rational fits of A. J. MacLeod, Numerical Algorithms 12 (1996).
#include <cmath>

#include "frame/numbers.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr int kFits = 14, kMostCoefficients = 9;

constexpr double kCoefficients[kFits][kMostCoefficients] = {
#include "special/integrals/sine_cosine_data.inc"
};

constexpr int degree(int code) {
  int last = kMostCoefficients - 1;
  while (last > 0 && kCoefficients[code][last] == 0) --last;
  return last;
}

template <int kCode>
double fit(double t) {
  static_assert(kCode >= 0 && kCode < kFits);
  constexpr int kDegree = degree(kCode);
  double sum = kCoefficients[kCode][kDegree];
  for (int i = kDegree - 1; i >= 0; --i) sum = sum * t + kCoefficients[kCode][i];
  return sum;
}

// Si = pi/2 - f cos x - g sin x, Ci = f sin x - g cos x, x >= 6.
struct SineCosineParts {
  double f, g;
};

SineCosineParts sineCosineParts(double x) {
  const double t = 1 / (x * x);
  if (x < 12) return {fit<6>(t) / (fit<7>(t) * x), t * fit<8>(t) / fit<9>(t)};
  return {(1 - t * fit<10>(t) / fit<11>(t)) / x, t * (1 - t * fit<12>(t) / fit<13>(t))};
}

// Ci around a root of it, r + rest: log(x/r) + (x-r)(x+r) num/den.
double aroundRoot(double x, double root, double rest, double ratio) {
  const double step = (x - root) - rest;
  return (std::abs(step) < root / 2 ? std::log1p(step / root) : std::log(x / root)) + step * (x + root) * ratio;
}

double cosineByFits(double x) {
  if (std::abs(x) < kEpsilon) return 0;
  const double t = x * x;
  if (x < 3) return aroundRoot(x, 0.6165054856207163, -4.2099203214332e-17, fit<2>(t) / fit<3>(t));
  if (x < 6) return aroundRoot(x, 3.3841804225511863, 1.9721254623634e-16, fit<4>(t) / fit<5>(t));
  const SineCosineParts a = sineCosineParts(x);
  const double angle = guardAngle(x);
  return a.f * std::sin(angle) - a.g * std::cos(angle);
}

}  // namespace

double calcSineIntegral(double x) {
  constexpr double kHalfPi = pi / 2;
  if (std::isnan(x)) return x;
  if (x < 0) return -calcSineIntegral(-x);
  if (x < 4.2e-09) return x;
  const double t = x * x;
  if (x <= 0.01)
    return x * (1 + t * (-1.0 / 18 + t * (1.0 / 600 + t * (-1.0 / 35280 + t * (1.0 / 3265920 - t / 439084800)))));
  if (x < 6) return x * fit<0>(t) / fit<1>(t);
  if (x > 2e16) return kHalfPi;
  const double s = std::sin(x), c = std::cos(x);
  if (x > 2450000000) return kHalfPi - (s + x * c) / t;
  const SineCosineParts a = sineCosineParts(x);
  return kHalfPi - (a.f * c + a.g * s);
}

double calcCosineIntegral(double x) {
  if (!(x >= 0)) return kNaN;
  if (std::isinf(x)) return 0;
  if (x < 0.01) {
    const double t = x * x;
    return std::log(x) + egamma + t * (-0.25 + t * (1.0 / 96 + t * (-1.0 / 4320 + t / 322560)));
  }
  return cosineByFits(x);
}

}  // namespace SpecialFunction
