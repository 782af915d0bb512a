// SPDX-License-Identifier: Apache-2.0
#include "sym/poly/precise_roots.h"

#include <cmath>

namespace Sym {

namespace {

constexpr mp_bitcnt_t kFirstBits = 192, kLastBits = 12288;
constexpr int kPreciseSweeps = 200;

/// A complex number of a given precision in bits.
struct Wide {
  mpf_class re, im;

  explicit Wide(mp_bitcnt_t bits) : re(0, bits), im(0, bits) {}
  Wide(std::complex<double> z, mp_bitcnt_t bits) : re(z.real(), bits), im(z.imag(), bits) {}
};

void multiply(Wide& result, const Wide& a, const Wide& b, mpf_class& t, mpf_class& u) {
  t = a.re * b.re;
  u = a.im * b.im;
  t -= u;
  u = a.re * b.im;
  result.im = a.im * b.re;
  result.im += u;
  result.re = t;
}

/// result = a / b
void divide(Wide& result, const Wide& a, const Wide& b, mpf_class& t, mpf_class& u, mpf_class& norm) {
  norm = b.re * b.re;
  t = b.im * b.im;
  norm += t;
  t = a.re * b.re;
  u = a.im * b.im;
  t += u;
  u = a.im * b.re;
  result.im = a.re * b.im;
  result.im = u - result.im;
  result.im /= norm;
  result.re = t / norm;
}

bool isZero(const Wide& z) { return sgn(z.re) == 0 && sgn(z.im) == 0; }

/// log2 |z|, -inf for zero.
double logSize(const Wide& z) {
  const auto log = [](const mpf_class& x) {
    long exponent;
    const double mantissa = mpf_get_d_2exp(&exponent, x.get_mpf_t());
    return mantissa == 0 ? -INFINITY : std::log2(std::abs(mantissa)) + static_cast<double>(exponent);
  };
  const double a = log(z.re), b = log(z.im);
  const double high = std::max(a, b), low = std::min(a, b);
  return std::isinf(high) || high - low > 60 ? high : high + 0.5 * std::log2(1 + std::exp2(2 * (low - high)));
}

class Iteration {
 public:
  Iteration(const IntegerPoly& p, const std::vector<Wide>& start, mp_bitcnt_t bits)
      : bits(bits), t(0, bits), u(0, bits), norm(0, bits) {
    for (const mpz_class& c : p) {
      coefficients.emplace_back(c, bits);
      long exponent;
      const double mantissa = mpz_get_d_2exp(&exponent, c.get_mpz_t());
      logs.push_back(c == 0 ? -INFINITY : std::log2(std::abs(mantissa)) + static_cast<double>(exponent));
    }
    for (const Wide& s : start) {
      z.emplace_back(bits);
      z.back().re = s.re;
      z.back().im = s.im;
    }
    radius.assign(z.size(), INFINITY);
  }

  /// True when every root lies in its disc.
  bool run() {
    std::vector<bool> done(z.size());
    for (int sweep = 0; sweep < kPreciseSweeps; ++sweep) {
      bool all = true;
      for (size_t i = 0; i < z.size(); ++i) {
        if (!done[i]) done[i] = improve(i);
        all = all && done[i];
      }
      if (all) break;
    }
    for (size_t i = 0; i < z.size(); ++i)
      if (!(radius[i] < logSize(z[i]) - 56)) return false;
    return true;
  }

  /// One root's step; true when rounding stops it.
  bool improve(size_t i) {
    const size_t n = z.size();
    Wide value(bits), slope(bits), newton(bits), repulsion(bits), step(bits), one({1, 0}, bits);
    for (size_t k = coefficients.size(); k-- > 0;) {
      multiply(slope, slope, z[i], t, u);
      slope.re += value.re;
      slope.im += value.im;
      multiply(value, value, z[i], t, u);
      value.re += coefficients[k];
    }
    const double at = logSize(z[i]);
    double largest = -INFINITY;
    for (size_t k = 0; k < logs.size(); ++k) largest = std::max(largest, logs[k] + static_cast<double>(k) * at);
    const double noise = largest + 2 * std::log2(static_cast<double>(n) + 4) + 3 - static_cast<double>(bits);
    const double size = logSize(value), slopeSize = logSize(slope);
    radius[i] = std::max(size, noise) + 1 + std::log2(static_cast<double>(n)) - slopeSize;
    if (isZero(value)) return true;
    if (isZero(slope)) {
      z[i].re *= 1 + std::exp2(-20);  // off the critical point
      return false;
    }
    divide(newton, value, slope, t, u, norm);
    for (size_t j = 0; j < n; ++j) {
      if (j == i) continue;
      step.re = z[i].re - z[j].re;
      step.im = z[i].im - z[j].im;
      if (isZero(step)) continue;
      divide(step, one, step, t, u, norm);
      repulsion.re += step.re;
      repulsion.im += step.im;
    }
    multiply(step, newton, repulsion, t, u);
    step.re = 1 - step.re;
    step.im = -step.im;
    if (isZero(step)) step.re = 1;
    divide(step, newton, step, t, u, norm);
    z[i].re -= step.re;
    z[i].im -= step.im;
    return size <= noise || logSize(step) < logSize(z[i]) - 90;
  }

  std::vector<std::complex<double>> rounded() const {
    std::vector<std::complex<double>> upper, lower, all, result;
    for (size_t i = 0; i < z.size(); ++i) {
      const std::complex<double> near(nearest(z[i].re), nearest(z[i].im));
      all.push_back(near);
      Wide height(bits);
      height.re = z[i].im;
      if (logSize(height) <= radius[i])
        result.emplace_back(near.real(), 0);
      else
        (near.imag() > 0 ? upper : lower).push_back(near);
    }
    if (upper.size() != lower.size()) return all;
    for (const std::complex<double>& root : upper) {
      result.push_back(root);
      result.push_back(std::conj(root));
    }
    return result;
  }

  mp_bitcnt_t bits;
  std::vector<mpf_class> coefficients;
  std::vector<double> logs;
  std::vector<Wide> z;
  std::vector<double> radius;  ///< log2 of the disc's radius

 private:
  /// Rounded, where mpf_get_d cuts.
  static double nearest(const mpf_class& x) {
    const double cut = x.get_d();
    mpf_class rest(x - mpf_class(cut, x.get_prec()), x.get_prec());
    return cut + rest.get_d();
  }

  mpf_class t, u, norm;
};

}  // namespace

std::vector<std::complex<double>> preciseRoots(const IntegerPoly& p, std::vector<std::complex<double>> start) {
  std::vector<Wide> z;
  for (const std::complex<double>& s : start) {
    const bool finite = std::isfinite(s.real()) && std::isfinite(s.imag());
    z.emplace_back(finite ? s : std::complex<double>(1, 1), kFirstBits);
  }
  for (mp_bitcnt_t bits = kFirstBits;; bits *= 2) {
    Iteration iteration(p, z, bits);
    if (iteration.run() || bits >= kLastBits) return iteration.rounded();
    z = iteration.z;
  }
}

}  // namespace Sym
