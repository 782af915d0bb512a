// SPDX-License-Identifier: Apache-2.0
// Jacobi's theta functions of the nome q: by their series, and for |q| near 1, where those cancel, by the same series
// after Jacobi's imaginary transformation (Poisson's summation, DLMF 20.7(viii)).
#include <cmath>

#include "frame/numbers.h"
#include "special/elliptic/elliptic.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr int kTerms = 16;        // below kNearOne the powers of the 16th term are under 1e-56
constexpr double kNearOne = 0.6;  // from here on theta 4 is below 0.04 and its series cancels; three centres do

constexpr double kHalfPiLow = 6.123233995736766e-17;  // pi/2 - pi/2

bool outside(double z, double q) { return !(std::abs(q) < 1) || !std::isfinite(z); }

HalfTurns reduced(double z) { return halfTurns(guardAngle(z)); }

bool isOdd(double s) { return std::fmod(s, 2) != 0; }

// With t = -ln(q)/pi: 1/(pi t) and 1/sqrt(t), for sums of exp(-(r - c)^2/(pi t))/sqrt(t) over centres c.
struct Gauss {
  double scale, front;
  explicit Gauss(double q) {
    const double t = -std::log(q) / pi;
    scale = 1 / (pi * t);
    front = 1 / std::sqrt(t);
  }
  double bell(double distance) const { return std::exp(-distance * distance * scale); }
};

// Theta 3 and theta 4 for q near 1 and 0 <= r <= pi/2: centres at multiples and at odd halves of pi.
double evenGauss(double r, double q, bool shifted) {
  const Gauss g(q);
  const double first = shifted ? pi / 2 : 0;
  return g.front * (g.bell(r - first) + g.bell(r - first - pi) + g.bell(r - first + pi));
}

// Theta 1 for q near 1 and r >= 0: centres at odd halves of pi with changing signs; each with its mirror image, so that
// small differences keep their digits.
double oddGauss(double r, double q) {
  const Gauss g(q);
  const auto pair = [&](double centre) { return -g.bell(r - centre) * std::expm1(-4 * r * centre * g.scale); };
  return g.front * (pair(pi / 2) - pair(3 * pi / 2));
}

// 2 q^(1/4) times the sum over n >= 0 of sign^n q^(n(n+1)) wave((2n+1) r).
template <class Wave>
double oddSeries(double r, double q, double sign, Wave wave) {
  const double square = q * q;
  double sum = wave(r), factor = 1, power = 1;
  for (int n = 1; n <= kTerms && std::abs(power) * n > kEpsilon * kEpsilon; ++n) {
    factor *= square;        // q^(2n)
    power *= sign * factor;  // sign^n q^(n(n+1))
    sum += power * wave((2 * n + 1) * r);
  }
  return 2 * std::sqrt(std::sqrt(q)) * sum;
}

// 1 + 2 sum of sign^n q^(n^2) cos(2 n r).
double evenSeries(double r, double q, double sign) {
  const double square = q * q;
  double sum = 0, factor = q, power = 1;
  for (int n = 1; n <= kTerms && std::abs(power) > kEpsilon * kEpsilon; ++n) {
    power *= sign * factor;  // sign^n q^(n^2)
    factor *= square;        // q^(2n+1)
    sum += power * std::cos(2 * n * r);
  }
  return 1 + 2 * sum;
}

// Theta 1 for r >= 0.
double odd(double r, double q) {
  return q < kNearOne ? oddSeries(r, q, -1, [](double angle) { return std::sin(angle); }) : oddGauss(r, q);
}

// A negative nome exchanges theta 3 and theta 4.
double even(double z, double q, bool shifted) {
  if (outside(z, q)) return kNaN;
  if (q < 0) {
    shifted = !shifted;
    q = -q;
  }
  const double r = reduced(z).r;
  if (q < kNearOne) return evenSeries(r, q, shifted ? -1 : 1);
  return evenGauss(std::abs(r), q, shifted);
}

}  // namespace

// Theta 1 is theta 2 at z - pi/2; taken by the sines, which keep its digits near 0.
double calcJacobiTheta1(double z, double q) {
  if (outside(z, q)) return kNaN;
  const auto [s, r] = reduced(z);
  const double value = std::copysign(odd(std::abs(r), q), r);
  return isOdd(s) ? -value : value;
}

double calcJacobiTheta2(double z, double q) {
  if (outside(z, q)) return kNaN;
  const auto [s, r] = reduced(z);
  const double size = std::abs(r);
  const double value = q < kNearOne && size < pi / 4
                           ? oddSeries(size, q, 1, [](double angle) { return std::cos(angle); })
                           : odd(pi / 2 - size + kHalfPiLow, q);
  return isOdd(s) ? -value : value;
}

double calcJacobiTheta3(double z, double q) { return even(z, q, false); }

double calcJacobiTheta4(double z, double q) { return even(z, q, true); }

}  // namespace SpecialFunction
