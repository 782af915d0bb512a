// SPDX-License-Identifier: Apache-2.0
// N. Temme, J. Comput. Phys. 19 (1975) and 21 (1976); A. R. Barnett et al., Comput. Phys. Commun. 8 (1974); Hankel's
// expansion.
#include "special/bessel/bessel_standard.h"

#include <algorithm>
#include <cmath>

#include "frame/numbers.h"
#include "special/bessel/bessel_fractions.h"
#include "special/gamma/ln_gamma.h"
#include "special/kept.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kSeriesBelow = 2;  // Temme's series, beyond it fractions
constexpr double kSmallJ = 0x1p-511, kSmallI = 10 * kEpsilon;

struct LnGammaAbove {
  double s, value;  // log gamma(s+1)
  explicit LnGammaAbove(double nu) : s(nu), value(lnGamma(nu + 1).value) {}
};

/// (x/2)^nu/gamma(nu+1) sum (sign x^2/4)^i/(i! (nu+1)_i), where x^2 < 10 (nu+1).
double ascendingSeries(double nu, double x, double sign) {
  const double half = x / 2, scale = std::exp(nu * std::log(half) - keptFor<LnGammaAbove>(nu).value);
  const double square = sign * half * half;
  double sum = 1, term = 1;
  for (int i = 1; i < 200; ++i) {
    term *= square / (i * (nu + i));
    sum += term;
    if (std::abs(term) < kEpsilon * std::abs(sum)) break;
  }
  return scale * sum;
}

bool hasAscendingSeries(double nu, double x) { return x * x < 10 * (nu + 1); }

/// Hankel's expansion, x > 1000.
BesselPair hankel(double nu, double x) {
  const double mu = 4 * nu * nu, eight = 8 * x;
  double even = 0, odd = 0, term = 1;
  for (double k = 0; k < 1000; k += 1) {
    if (k != 0) term *= -(mu - (2 * k - 1) * (2 * k - 1)) / (k * eight);
    const bool evenStands = std::abs(term) < kEpsilon * std::abs(even);
    even += term;
    k += 1;
    term *= (mu - (2 * k - 1) * (2 * k - 1)) / (k * eight);
    const bool oddStands = std::abs(term) < kEpsilon * std::abs(odd);
    odd += term;
    // At half-integer orders the expansion ends.
    if ((evenStands && oddStands && k > nu / 2) || term == 0) break;
  }
  const double angle = x - (nu + 0.5) * (pi / 2), c = std::cos(angle), s = std::sin(angle);
  const double size = std::sqrt(2 / (pi * x));
  return {size * (c * even - s * odd), size * (s * even + c * odd)};
}

/// What Temme's series takes from the order mu, |mu| <= 1/2.
struct TemmeOrder {
  double s;
  double turn;         // pi mu/sin(pi mu)
  double plus, minus;  // 1/gamma(1 +- mu)
  double difference, mean;
  double r;  // pi^2 mu/2 (sin(pi mu/2)/(pi mu/2))^2

  explicit TemmeOrder(double mu) : s(mu), plus(1 / std::tgamma(1 + mu)), minus(1 / std::tgamma(1 - mu)) {
    const double angle = pi * mu, half = angle / 2;
    turn = std::abs(angle) < kEpsilon ? 1 : angle / std::sin(angle);
    difference = std::abs(mu) < kEpsilon ? -egamma : (minus - plus) / (2 * mu);
    mean = (minus + plus) / 2;
    const double quotient = std::abs(half) < kEpsilon ? 1 : std::sin(half) / half;
    r = pi * half * quotient * quotient;
  }
};

struct TwoOrders {
  double low, high;  // at mu and mu + 1
};

/// Temme's series for x < 2: -Y_mu and -Y_(mu+1) x/2 (kSign -1), K_mu and K_(mu+1) x/2 (+1).
template <int kSign>
TwoOrders temme(double mu, double x) {
  const TemmeOrder& order = keptFor<TemmeOrder>(mu);
  const double half = x / 2, logarithm = -std::log(half), e = mu * logarithm, square = mu * mu;
  const double sinhOverE = std::abs(e) < kEpsilon ? 1 : std::sinh(e) / e;
  const double power = e == 0 ? 1 : std::exp(e), cosh = e == 0 ? 1 : std::cosh(e);
  const double start = order.difference * cosh + order.mean * sinhOverE * logarithm;
  double f, r = 0;
  TwoDoubles pq;
  if (kSign < 0) {
    f = 2 / pi * order.turn * start;
    pq = TwoDoubles{power, 1} / TwoDoubles{pi * order.plus, power * pi * order.minus};
    r = order.r;
  } else {
    f = order.turn * start;
    pq = TwoDoubles{power, 1} / TwoDoubles{2 * order.plus, 2 * power * order.minus};
  }
  const double d = kSign * half * half;
  double c = 1, low = kSign < 0 ? f + r * pq[1] : f, high = pq[0];
  for (double i = 1; i < 15000; i += 1) {
    const TwoDoubles next = TwoDoubles{i * f + pq[0] + pq[1], d} / TwoDoubles{i * i - square, i};
    f = next[0];
    c *= next[1];
    pq /= TwoDoubles{i - mu, i + mu};
    if (kSign < 0) {
      const double term = c * (f + r * pq[1]);
      low += term;
      high += c * pq[0] - i * term;
      if (std::abs(term) < kEpsilon * (1 + std::abs(low))) break;
    } else {
      const double term = c * f;
      low += term;
      high += c * (pq[0] - i * f);
      if (std::abs(term) < kEpsilon * std::abs(low)) break;
    }
  }
  return {low, high};
}

/// Up from mu by `count` orders: kSign +1 for K, -1 for Y.
template <int kSign>
double climbFrom(TwoOrders at, double mu, double two, int count) {
  for (int i = 1; i <= count; ++i) {
    const double next = (mu + i) * two * at.high + kSign * at.low;
    at.low = at.high;
    at.high = next;
  }
  return at.low;
}

/// Down from a value and its slope by `count` orders: kSign +1 for I, -1 for J.
template <int kSign>
TwoOrders descend(double value, double slope, double nu, double xi, int count) {
  double fact = nu * xi;
  for (int i = 0; i < count; ++i) {
    const double next = fact * value + slope;
    fact -= xi;
    slope = fact * next + kSign * value;
    value = next;
  }
  return {value, slope};
}

/// K_mu and K_(mu+1) from the fraction.
TwoOrders decaying(const DecayFraction& fraction, double mu, double x, double xi) {
  const double low = std::sqrt(pi / (2 * x)) * std::exp(-x) / fraction.sum();
  return {low, low * (mu + x + 0.5 - fraction.ratio()) * xi};
}

double growing(const SlopeFraction<1>& fraction, TwoOrders k, double mu, double nu, double xi, int count) {
  const TwoOrders down = descend<1>(kSmallI, fraction.value * kSmallI, nu, xi, count);
  const double slopeOfK = mu * xi * k.low - k.high;
  return xi / (down.high / down.low * k.low - slopeOfK) * kSmallI / down.low;
}

TwoOrders besselKBelow(double mu, double x) {
  const TwoOrders at = temme<1>(mu, x);
  return {at.low, at.high * (2 * (1 / x))};
}

int stepsBelow(double nu, double x) { return std::max(0, static_cast<int>(nu - x + 1.5)); }

/// From `steps` orders below nu on, which is then not beyond the turning point; J starts from `small`.
BesselPair besselJYByFractions(double nu, double x, int steps, double small) {
  const double mu = nu - steps, xi = 1 / x;
  SlopeFraction<-1> slope(nu, xi, small);
  PhaseFraction phase(mu, x, xi, small);
  settleBoth(slope, phase);
  const double top = slope.negative ? -small : small, p = phase.p, q = phase.q;
  TwoOrders down = descend<-1>(top, slope.value * top, nu, xi, steps);
  if (down.low == 0) down.low = kEpsilon;
  const double rest = p - down.high / down.low, gamma = rest / q;
  const double first = std::copysign(std::sqrt(2 * xi / pi / (rest * gamma + q)), down.low);
  const double second = gamma * first;
  const TwoOrders up{second, mu * xi * second - (p + q / gamma) * second};
  return {first / down.low * top, climbFrom<-1>(up, mu, 2 * xi, steps)};
}

}  // namespace

BesselPair besselJYSteed(double nu, double x) {
  return besselJYByFractions(nu, x, nu > x ? static_cast<int>(nu - x + 1.5) : 0, 1e-150);
}

double besselJStandard(double nu, double x) {
  if (hasAscendingSeries(nu, x)) return ascendingSeries(nu, x, -1);
  if (x > 1000) return hankel(nu, x).first;
  return besselJYByFractions(nu, x, stepsBelow(nu, x), kSmallJ).first;
}

double besselYStandard(double nu, double x) {
  if (x > 1000) return hankel(nu, x).second;
  if (x >= kSeriesBelow) return besselJYByFractions(nu, x, stepsBelow(nu, x), kSmallJ).second;
  const int steps = static_cast<int>(nu + 0.5);
  const double mu = nu - steps, two = 2 * (1 / x);
  const TwoOrders at = temme<-1>(mu, x);
  return climbFrom<-1>({-at.low, -at.high * two}, mu, two, steps);
}

double besselKStandard(double nu, double x) {
  const int steps = static_cast<int>(nu + 0.5);
  const double mu = nu - steps, xi = 1 / x;
  if (x < kSeriesBelow) return climbFrom<1>(besselKBelow(mu, x), mu, 2 * xi, steps);
  return climbFrom<1>(decaying(settled(DecayFraction(mu, x)), mu, x, xi), mu, 2 * xi, steps);
}

BesselPair besselIKStandard(double nu, double x) {
  if (hasAscendingSeries(nu, x)) return {ascendingSeries(nu, x, 1), besselKStandard(nu, x)};
  const int steps = static_cast<int>(nu + 0.5);
  const double mu = nu - steps, xi = 1 / x;
  SlopeFraction<1> slope(nu, xi, kSmallI);
  DecayFraction decay(mu, x);
  settleBoth(slope, decay);
  const TwoOrders k = decaying(decay, mu, x, xi);
  return {growing(slope, k, mu, nu, xi, steps), climbFrom<1>(k, mu, 2 * xi, steps)};
}

double besselIStandard(double nu, double x) {
  return hasAscendingSeries(nu, x) ? ascendingSeries(nu, x, 1) : besselIKStandard(nu, x).first;
}

}  // namespace SpecialFunction
