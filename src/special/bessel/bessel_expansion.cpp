// SPDX-License-Identifier: Apache-2.0
// Sources: N. Temme, J. Comput. Phys. 19 (1975) and 21 (1976); DLMF 10.17, 10.19, 10.40, 10.41.
#include "special/bessel/bessel_expansion.h"

#include <array>
#include <cmath>

#include "frame/numbers.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kLn2 = 0.6931471805599453;

// Coefficients of u_k(p) = p^k sum c[k][j] p^(2j) by u_(k+1) = p^2(1-p^2)/2 u_k' + 1/8 integral of (1-5t^2) u_k (DLMF
// 10.41.9).
constexpr int kDebyeTerms = 18;
using DebyeTable = std::array<std::array<double, kDebyeTerms + 1>, kDebyeTerms + 1>;
constexpr DebyeTable debyeTable() {
  DebyeTable c{};
  c[0][0] = 1;
  for (int k = 0; k < kDebyeTerms; ++k)
    for (int j = 0; j <= k; ++j) {
      const double power = k + 2 * j;
      c[k + 1][j] += c[k][j] * (power / 2 + 1 / (8 * (power + 1)));
      c[k + 1][j + 1] -= c[k][j] * (power / 2 + 5 / (8 * (power + 3)));
    }
  return c;
}
constexpr DebyeTable kDebye = debyeTable();

/// (p/nu)^k sum c[k][j] square^j for k = 0, 1, ...: handed to `take` until a term is negligible.
template <class Take>
void debyeSum(double ratio, double square, Take&& take) {
  double power = 1;
  for (int k = 0; k <= kDebyeTerms; ++k, power *= ratio) {
    double u = kDebye[k][k];
    for (int j = k - 1; j >= 0; --j) u = u * square + kDebye[k][j];
    take(k, power * u);
    if (std::abs(power * u) < kEpsilon / 16 && k > 0) break;
  }
}

struct Temme {
  double first, next;  // order mu and mu + 1
};

// gamma1 = (1/gamma(1-mu) - 1/gamma(1+mu))/(2 mu), gamma2 = half their sum; near 0 by the Taylor series of 1/gamma
// (DLMF 5.7.1), as the difference would cancel.
struct GammaPair {
  double first, second;
};
GammaPair gammaPair(double mu) {
  const double square = mu * mu;
  if (std::abs(mu) <= 1e-3)
    return {-(egamma - square * (0.0420026350340952 + square * 0.0421977345555443)),
            1 - square * (0.6558780715202538 - square * 0.1665386113822915)};
  const double minus = 1 / standardGamma(1 - mu), plus = 1 / standardGamma(1 + mu);
  return {(minus - plus) / (2 * mu), (minus + plus) / 2};
}

/// The leading term of K_mu, |mu| <= 1/2: logHalf = log(2/x).
double temmeStart(double mu, double logHalf) {
  const GammaPair gamma = gammaPair(mu);
  const double e = mu * logHalf, turn = mu == 0 ? 1.0 : pi * mu / std::sin(pi * mu);
  return turn * (gamma.first * std::cosh(e) + gamma.second * (e == 0 ? 1.0 : std::sinh(e) / e) * logHalf);
}

/// Temme's series for 0 < |mu| < 1e-3, x < 2. sign -1: -Y_mu and -Y_(mu+1); +1: K_mu and K_(mu+1), whose constants
/// differ by 2/pi.
Temme temmeSeries(double mu, double x, double sign) {
  const double logHalf = std::log(2 / x), e = mu * logHalf, square = mu * mu;
  const GammaPair gamma = gammaPair(mu);
  const double gammaPlus = gamma.second - mu * gamma.first, gammaMinus = gamma.second + mu * gamma.first;
  const double scale = sign < 0 ? 2 / pi : 1.0;
  double f = scale * temmeStart(mu, logHalf);
  double p = scale * 0.5 * std::exp(e) / gammaPlus, q = scale * 0.5 * std::exp(-e) / gammaMinus;
  const double half = std::sin(pi * mu / 2), r = sign < 0 ? 2 * half * half / mu : 0.0;
  const double d = sign * x * x / 4;
  double c = 1, sum = f + r * q, next = p;
  for (int i = 1; i < 200; ++i) {
    f = (i * f + p + q) / (i * i - square);
    c *= d / i;
    p /= i - mu;
    q /= i + mu;
    const double term = c * (f + r * q);
    sum += term;
    next += c * p - i * term;
    if (std::abs(term) < kEpsilon * 0.01 * (1 + std::abs(sum))) break;
  }
  return {sum, next * 2 / x};
}

double climb(Temme start, double mu, double nu, double x, double sign) {
  double low = start.first, high = start.next;
  for (double order = mu + 1; order < nu + 0.5; order += 1) {
    const double next = sign * low + 2 * order / x * high;
    low = high;
    high = next;
    if (std::isinf(low)) break;
  }
  return low;
}

/// Leading terms at tiny x; above order 1/2 one power of K outweighs the other.
double leadingI(double nu, double x) {
  if (nu < 150) return std::pow(x, nu) / std::exp2(nu) / standardGamma(nu + 1);
  return 0;
}
double leadingK(double nu, double x) {
  if (nu > 150) return kInfinity;
  return nu > 0.5 ? 0.5 * std::exp2(nu) * standardGamma(nu) * std::pow(x, -nu) : temmeStart(nu, kLn2 - std::log(x));
}

}  // namespace

BesselPair besselIKTiny(double nu, double x) { return {leadingI(nu, x), leadingK(nu, x)}; }

BesselPair besselJYTiny(double nu, double x) {
  // Y = -2/pi K - tan(pi nu/2) J in leading terms; the second counts up to order 1/2 only.
  const double j = leadingI(nu, x), k = 2 / pi * leadingK(nu, x);
  return {j, nu > 0.5 ? -k : -k - std::tan(pi * nu / 2) * j};
}

double besselYNearInteger(double nu, double x) {
  const double mu = nu - std::round(nu);
  return -climb(temmeSeries(mu, x, -1), mu, nu, x, -1);
}

double besselKNearInteger(double nu, double x) {
  const double mu = nu - std::round(nu);
  return climb(temmeSeries(mu, x, 1), mu, nu, x, 1);
}

BesselPair besselJYDebye(double nu, double x) {
  if (nu > x) {
    const double root = std::sqrt(nu - x) * std::sqrt(nu + x);  // nu tanh(alpha)
    // alpha without loss where it is small, and without overflow at tiny x.
    const double alpha = nu < 2 * x ? std::log1p((nu - x + root) / x) : std::log(nu + root) - std::log(x);
    const double exponent = nu * alpha - root;
    const double p = nu / root;
    double plus = 0, minus = 0;
    debyeSum(1 / root, p * p, [&](int k, double term) {
      plus += term;
      minus += k % 2 ? -term : term;
    });
    const double half = std::exp(exponent / 2);
    return {1 / half / half * plus / std::sqrt(2 * pi * root), -half * (half * minus / std::sqrt(pi * root / 2))};
  }
  const double root = std::sqrt(x - nu) * std::sqrt(x + nu);  // nu tan(beta)
  const double angle = root - nu * std::atan2(root, nu);
  const double c = nu / root;
  double even = 0, odd = 0;
  debyeSum(1 / root, -c * c, [&](int k, double term) {
    const double signedTerm = k % 4 < 2 ? term : -term;
    (k % 2 ? odd : even) += signedTerm;
  });
  const double xi = angle - pi / 4, cosine = std::cos(xi), sine = std::sin(xi);
  const double size = std::sqrt(2 / (pi * root));
  return {size * (cosine * even + sine * odd), size * (sine * even - cosine * odd)};
}

BesselPair besselIKDebye(double nu, double x) {
  const double root = std::hypot(nu, x), p = nu / root;
  const double ratio = nu < 1e100 * x ? std::log((nu + root) / x) : std::log(nu + root) - std::log(x);
  const double exponent = root - nu * ratio;
  double plus = 0, minus = 0;
  debyeSum(1 / root, p * p, [&](int k, double term) {
    plus += term;
    minus += k % 2 ? -term : term;
  });
  const double half = std::exp(exponent / 2), inverse = std::exp(-exponent / 2);
  return {half * (half * plus / std::sqrt(2 * pi * root)), inverse * (inverse * minus * std::sqrt(pi / (2 * root)))};
}

BesselPair besselJYHankel(double nu, double x, double rest) {
  double term = 1, even = 0, odd = 0;
  for (int k = 0; k < 200; ++k) {
    (k % 2 ? odd : even) += k % 4 < 2 ? term : -term;
    const double next = 2 * k + 1;
    term *= (4 * nu * nu - next * next) / (8 * (k + 1) * x);
    if (std::abs(term) < kEpsilon / 16) break;
  }
  // cos and sin of x - (nu/2 + 1/4) pi, the shift apart from x so that no digit of x is lost.
  const double shift = pi * (nu / 2 + 0.25), c = std::cos(shift), s = std::sin(shift);
  const double c0 = std::cos(x), s0 = std::sin(x), c1 = std::cos(rest), s1 = std::sin(rest);
  const double cosX = c0 * c1 - s0 * s1, sinX = s0 * c1 + c0 * s1;
  const double cosine = cosX * c + sinX * s, sine = sinX * c - cosX * s, size = std::sqrt(2 / (pi * x));
  return {size * (cosine * even - sine * odd), size * (sine * even + cosine * odd)};
}

BesselPair besselIKHankel(double nu, double x) {
  double term = 1, plus = 0, minus = 0;
  for (int k = 1; k < 200; ++k) {
    plus += k % 2 ? term : -term;
    minus += term;
    const double odd = 2 * k - 1;
    term *= (4 * nu * nu - odd * odd) / (8 * k * x);
    if (std::abs(term) < kEpsilon / 16) break;
  }
  const double half = std::exp(x / 2), inverse = std::exp(-x / 2);
  return {half * (half * plus / std::sqrt(2 * pi * x)), inverse * (inverse * minus * std::sqrt(pi / (2 * x)))};
}

// DLMF 10.19.8 to 10.19.13, nu + a nu^(1/3) = x.
BesselPair besselJYTransition(double nu, double x) {
  const double root = std::cbrt(nu), a = (x - nu) / root, t = -a * std::cbrt(2.0), v = 1 / (root * root);
  const double a2 = a * a, a3 = a2 * a, a4 = a2 * a2, a5 = a3 * a2, a7 = a4 * a3;
  const double p = 1 + v * (-a / 5 + v * (-9.0 / 100 * a5 + 3.0 / 35 * a2 +
                                          v * (957.0 / 7000 * a3 * a3 - 173.0 / 3150 * a3 - 1.0 / 225 +
                                               v * (27.0 / 20000 * a5 * a5 - 23573.0 / 147000 * a7 +
                                                    5903.0 / 138600 * a4 + 947.0 / 346500 * a))));
  const double q = 0.3 * a2 + v * (-17.0 / 70 * a3 + 1.0 / 70 +
                                   v * (-9.0 / 1000 * a7 + 611.0 / 3150 * a4 - 37.0 / 3150 * a +
                                        v * (549.0 / 28000 * a4 * a4 - 110767.0 / 693000 * a5 + 79.0 / 12375 * a2)));
  const double size = std::cbrt(2.0) / root, first = size * p, second = size * size / root * q;
  return {first * calcAiryAi(t) + second * calcDiffAiryAi(t), -first * calcAiryBi(t) - second * calcDiffAiryBi(t)};
}

}  // namespace SpecialFunction
