// SPDX-License-Identifier: Apache-2.0
// Li_s(+-exp(x)) by the method that keeps its digits there: the sum of powers, the series in x = log|z|, its
// multiplication theorem, Lerch's sum for orders left of 0, and for z far left of 0 Sommerfeld's expansion.
#include "special/zeta/polylogarithm_kernel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstdint>
#include <optional>

#include "frame/numbers.h"
#include "special/kept.h"
#include "special/special_function.h"
#include "special/two_doubles.h"
#include "special/zeta/bernoulli.h"
#include "special/zeta/zeta_parts.h"

namespace SpecialFunction {
namespace {

constexpr int kTerms = 120;
constexpr int kDirectTerms = 102400;
using Complex = std::complex<double>;

// zeta(s-k)/k! for k < kTerms; `skip` (or -1) is the k whose zeta value is at or near the pole and stays 0.
std::array<double, kTerms> zetaOverFactorials(double s, int skip) {
  std::array<double, kTerms> c{};
  // zeta(w) = 2 (2 pi)^(w-1) sin(pi w/2) gamma(1-w) zeta(1-w) for w = s-k < -1.
  double factorial = 1, scaled = 0;
  for (int k = 0; k < kTerms; ++k) {
    if (k > 0) factorial /= k;
    const double w = s - k;
    if (w >= -1) {
      if (k != skip) c[static_cast<std::size_t>(k)] = calcZeta(w) * factorial;
      continue;
    }
    if (scaled == 0)
      scaled = standardGamma(1 - w) * factorial * 2 * std::pow(2 * pi, w - 1);
    else
      scaled *= -w / (2 * pi * k);
    const double v = 1 - w;
    double zeta = 1;
    if (v < 25)
      zeta = calcZeta(v);
    else if (v < 56)
      zeta = 1 + std::exp2(-v) + std::pow(3.0, -v) + std::exp2(-2 * v);
    c[static_cast<std::size_t>(k)] = scaled * std::sin(pi / 2 * std::fmod(w, 4.0)) * zeta;
  }
  return c;
}

// Bounds of |z| without its square root.
double leastSize(double z) { return std::abs(z); }
double mostSize(double z) { return std::abs(z); }
double leastSize(const Complex& z) { return std::max(std::abs(z.real()), std::abs(z.imag())); }
double mostSize(const Complex& z) { return std::abs(z.real()) + std::abs(z.imag()); }

// The product of finite numbers: without the standard's care for infinite parts.
double product(double x, double y) { return x * y; }
Complex product(const Complex& x, const Complex& y) {
  return {x.real() * y.real() - x.imag() * y.imag(), x.real() * y.imag() + x.imag() * y.real()};
}

// The parts of the logarithmic series that depend on the order only.
struct LogSeries {
  double s;
  int pole;         // n-1 when s is within 1e-3 of n = 1, 2, ..., else -1
  double singular;  // gamma(1-s), or 1/(n-1)!
  double distance;  // s - n
  double slope[5];  // Taylor coefficients of log(pi e/sin(pi e)) - log(gamma(n+e)/gamma(n))
  std::array<double, kTerms> coefficients;
  std::array<double, kTerms> alternating;  // eta(s-k)/k!

  explicit LogSeries(double order) : s(order), pole(-1), singular(0), distance(0), slope{} {
    const double n = std::round(s);
    if (n >= 1 && std::abs(s - n) < 1e-3) {
      pole = static_cast<int>(n) - 1;
      distance = s - n;
      singular = 1 / standardGamma(n);
      slope[0] = -calcDigamma(n);
      slope[1] = pi * pi / 6 - calcPolyGamma(1, n) / 2;
      slope[2] = -calcPolyGamma(2, n) / 6;
      slope[3] = std::pow(pi, 4) / 180 - calcPolyGamma(3, n) / 24;
      slope[4] = -calcPolyGamma(4, n) / 120;
    } else {
      singular = calcGamma(1 - s);
    }
    coefficients = zetaOverFactorials(s, pole);
    double factorial = 1;
    for (int k = 0; k < kTerms; ++k) {
      if (k > 0) factorial /= k;
      const auto i = static_cast<std::size_t>(k);
      alternating[i] = s - k > -0.1           ? calcDirichletEta(s - k) * factorial
                       : coefficients[i] == 0 ? 0
                                              : (1 - std::exp2(1 - s + k)) * coefficients[i];
    }
  }

  // Li_s(-exp(x)) = -sum eta(s-k) x^k/k!, |x| < pi.
  double ofNegative(double x) const {
    double sum = 0, power = 1, last = kInfinity;
    for (int k = 0; k < kTerms; ++k) {
      const double term = alternating[static_cast<std::size_t>(k)] * power, size = std::abs(term);
      sum += term;
      power *= x;
      if (k > s + 3 && std::max(size, last) < 1e-17 * std::abs(sum)) break;
      last = size;
    }
    return -sum;
  }

  // gamma(1-s) (-x)^(s-1). Where s is close to n its pole and that of zeta(s-n+1) are taken together.
  template <class Number>
  Number firstPart(Number x) const {
    const Number l = -x, logarithm = std::log(l);
    if (pole < 0) return singular * std::exp((s - 1) * logarithm);
    const double e = distance;
    Number ratio = logarithm + (slope[0] + e * (slope[1] + e * (slope[2] + e * (slope[3] + e * slope[4]))));
    const Number q = e * ratio;  // (exp(q) - 1)/e
    ratio *= 1.0 + q / 2.0 * (1.0 + q / 3.0 * (1.0 + q / 4.0 * (1.0 + q / 5.0 * (1.0 + q / 6.0 * (1.0 + q / 7.0)))));
    Number first = (zetaRestAtOne(e) - ratio) * singular;
    for (int k = 0; k < pole; ++k) first *= x;
    return first;
  }

  // Li_s(exp(x)) = gamma(1-s) (-x)^(s-1) + sum zeta(s-k) x^k/k!, |x| < 2 pi.
  template <class Number>
  Number operator()(Number x) const {
    const Number first = firstPart(x);
    Number sum = 0.0, power = 1.0, last = kInfinity;
    for (int k = 0; k < kTerms; ++k) {
      const Number term = coefficients[static_cast<std::size_t>(k)] * power;
      sum += term;
      power = product(power, x);
      // Every other coefficient may be 0, so two terms decide.
      if (k > s + 3 && std::max(leastSize(term), leastSize(last)) < 1.001e-17 * mostSize(sum + first) &&
          std::max(std::abs(term), std::abs(last)) < 1e-17 * std::abs(sum + first))
        break;
      last = term;
    }
    return first + sum;
  }

  // The same at two arguments side by side, each with its own end: the same operations, so the same values. Nothing
  // where an end is not plain from the squares of the sizes.
  std::optional<std::array<Complex, 2>> ofTwo(Complex x, Complex y) const;
};

using TwoMasks [[gnu::vector_size(16)]] = std::int64_t;

TwoDoubles masked(TwoDoubles x, TwoMasks where) {
  return reinterpret_cast<TwoDoubles>(reinterpret_cast<TwoMasks>(x) & where);
}

std::optional<std::array<Complex, 2>> LogSeries::ofTwo(Complex x, Complex y) const {
  constexpr double kBound = 1e-34, kBand = 1e-12;
  const Complex firstX = firstPart(x), firstY = firstPart(y);
  const TwoDoubles xRe{x.real(), y.real()}, xIm{x.imag(), y.imag()};
  const TwoDoubles firstRe{firstX.real(), firstY.real()}, firstIm{firstX.imag(), firstY.imag()};
  TwoDoubles re{}, im{}, powerRe{1, 1}, powerIm{}, last{kInfinity, kInfinity};
  TwoMasks runs{-1, -1};
  for (int k = 0; k < kTerms; ++k) {
    const double c = coefficients[static_cast<std::size_t>(k)];
    const TwoDoubles termRe = c * powerRe, termIm = c * powerIm, next = powerRe * xRe - powerIm * xIm;
    powerIm = powerRe * xIm + powerIm * xRe;
    powerRe = next;
    re += masked(termRe, runs);
    im += masked(termIm, runs);
    const TwoDoubles size = termRe * termRe + termIm * termIm, larger = size > last ? size : last;
    last = size;
    if (!(k > s + 3)) continue;
    const TwoDoubles totalRe = re + firstRe, totalIm = im + firstIm;
    const TwoDoubles bound = kBound * (totalRe * totalRe + totalIm * totalIm);
    const TwoMasks near = runs & ((larger < bound * (1 + kBand)) | (bound < 1e-270));
    if ((near[0] | near[1]) == 0) continue;
    const TwoMasks stops = larger < bound * (1 - kBand), doubt = near & ~stops;
    if ((doubt[0] | doubt[1]) != 0) return std::nullopt;
    runs &= ~stops;
    if ((runs[0] | runs[1]) == 0) break;
  }
  return std::array{Complex(firstRe[0] + re[0], firstIm[0] + im[0]), Complex(firstRe[1] + re[1], firstIm[1] + im[1])};
}

// k^-s for the k that the sums of one order have asked for so far.
struct Powers {
  static constexpr int kKept = 128;
  double s, power[kKept + 1];
  int known = 0;

  explicit Powers(double order) : s(order) {}

  double operator[](int k) {
    if (k > kKept) return std::pow(k, -s);
    for (; known < k; ++known) power[known + 1] = std::pow(known + 1, -s);
    return power[k];
  }
};

const LogSeries& seriesOf(double s) { return keptFor<LogSeries>(s); }

struct Direct {
  double value, largest;
};

// z + z^2/2^s + ..., to 1e-14 of the sum, taken a little further.
Direct directSum(double s, double z) {
  Powers& powers = keptFor<Powers>(s);
  double sum = 0, power = 1, largest = 0;
  for (int k = 1; k <= kDirectTerms; ++k) {
    power *= z;
    const double term = k == 1 ? z : power * powers[k];
    sum += term;
    largest = std::max(largest, std::abs(term));
    if (std::abs(term) <= 1e-17 * std::abs(sum) && k > 2 && k > -s) break;
    if (!std::isfinite(sum)) break;
  }
  return {sum, largest};
}

// Lerch: Li_s(exp(m)) = gamma(1-s) sum over all k of (2 pi i k - m)^(s-1), for s < 0.
double lerchSum(double s, double x, int sign) {
  const double scale = calcLngamma(1 - s);
  const double first = sign > 0 ? 2 : 1;
  double sum = sign > 0 ? std::exp(scale + (s - 1) * std::log(-x)) : 0;
  for (int k = 0; k < 20000; ++k) {
    const Complex place(-x, pi * (first + 2 * k));
    const Complex term = std::exp(scale + (s - 1) * std::log(place));
    sum += 2 * term.real();
    if (std::abs(term) <= 1e-18 * std::abs(sum) && k > 2) break;
  }
  return sum;
}

// Multiplication theorem: Li_s(-exp(x)) = m^(s-1) sum over j of Li_s(exp((x + pi i (2j+1))/m)).
double byMultiplication(double s, double x) {
  const LogSeries& series = seriesOf(s);
  const int m = 2 * std::max(1, static_cast<int>(std::ceil(std::abs(x) / 5)));
  const auto argument = [x, m](int j) { return Complex(x / m, pi * (2 * j + 1) / m); };
  double sum = 0;
  int j = 0;
  for (; j + 1 < m / 2; j += 2) {
    const auto values = series.ofTwo(argument(j), argument(j + 1));
    sum += 2 * (values ? (*values)[0] : series(argument(j))).real();
    sum += 2 * (values ? (*values)[1] : series(argument(j + 1))).real();
  }
  for (; j < m / 2; ++j) sum += 2 * series(argument(j)).real();
  return sum * std::pow(m, s - 1);
}

// Sommerfeld: -Li_s(-exp(x)) = 2 sum eta(2k) x^(s-2k)/gamma(s+1-2k), x large; the rest is below exp(-x).
double farLeft(double s, double x) {
  const double whole = std::round(s);
  const bool ends = s == whole && s >= 0;
  double factor = s < 150 ? std::pow(x, s) / standardGamma(s + 1) : std::exp(s * std::log(x) - calcLngamma(s + 1));
  struct Table {
    double eta[31];
    Table() {
      for (int k = 0; k <= 30; ++k) eta[k] = calcDirichletEta(2.0 * k);
    }
  };
  static const Table table;
  double sum = 0, last = kInfinity;
  for (int k = 0; k < 400; ++k) {
    const double eta = k > 30 ? 1 : table.eta[k];
    const double term = 2 * eta * factor;
    if (std::abs(term) > last && 2 * k > s + 1) break;
    sum += term;
    last = std::abs(term);
    if (last <= 1e-18 * std::abs(sum) || (ends && 2 * k + 2 > s)) break;
    factor *= (s - 2 * k) * (s - 2 * k - 1) / (x * x);
  }
  return -sum;
}

// (1/gamma(s)) integral of t^(s-1)/(exp(t-x)+1), t = exp(u), by the trapezoid rule; x in (0, 60], s >= 8.
double byIntegral(double s, double x) {
  const double step = 2 * std::atan(pi / std::max(x, 1.0)) * pi / 45;
  const double scale = calcLngamma(s), end = std::log(x + s + 60 + 10 * std::sqrt(s));
  double sum = 0, largest = 0;
  for (double u = end; u > -60; u -= step) {
    const double t = std::exp(u);
    const double value = std::exp(s * u - scale - std::max(0.0, t - x)) / (1 + std::exp(-std::abs(t - x)));
    sum += value;
    largest = std::max(largest, value);
    if (value < 1e-19 * largest && t < x) break;
  }
  return -sum * step;
}

}  // namespace

double polyLogOfExp(double s, double x, int sign) {
  if (std::isnan(s) || std::isnan(x)) return kNaN;
  if (s == kInfinity) return sign * std::exp(x);
  if (s == -kInfinity) return kNaN;
  const double n = std::round(s);
  const bool whole = std::abs(s - n) < 1e-15;
  if (whole && n < 0 && x > 0) return (std::fmod(n, 2.0) == 0 ? -1 : 1) * polyLogOfExp(s, -x, sign);
  if (std::isinf(x)) return x < 0 ? 0 : s > 0 ? -kInfinity : 0;
  const double size = std::exp(x);
  if (size < 0.71 && s > 0.5) return directSum(s, sign * size).value;
  if (sign > 0) {
    if (s >= 8) return directSum(s, size).value;
    if (x < -1.2 && s > -160) return directSum(s, size).value;
    if (s < -4) return lerchSum(s, x, sign);
    return seriesOf(s)(x);
  }
  if (s >= 8 && x <= 0) return directSum(s, -size).value;
  if (x < -1.2) {
    const Direct direct = directSum(s, -size);
    if (direct.largest <= 100 * std::abs(direct.value) || s >= -4) return direct.value;
  }
  if (s < -4) return lerchSum(s, x, sign);
  if (x >= 40 || (whole && n >= 2 && x > 1)) {
    // At integer orders the expansion ends and its rest is known: (-1)^(s-1) Li_s(-exp(-x)).
    const double lead = farLeft(s, x);
    if (!whole) return s > 100 && x < 40 + s ? byIntegral(s, x) : lead;
    return lead + (std::fmod(n, 2.0) == 0 ? -1 : 1) * polyLogOfExp(s, -x, -1);
  }
  if (s < 8 && std::abs(x) < 1.7) return seriesOf(s).ofNegative(x);
  return s >= 8 ? byIntegral(s, x) : byMultiplication(s, x);
}

}  // namespace SpecialFunction
