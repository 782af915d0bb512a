// SPDX-License-Identifier: Apache-2.0
#include "sym/poly/poly_roots.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <limits>

#include "frame/numbers.h"
#include "sym/poly/precise_roots.h"
#include "sym/poly/squarefree.h"

namespace Sym {

namespace {

using Complex = std::complex<double>;

constexpr int kSweeps = 400;

/// p(z), p'(z) and a bound of the rounding error of p(z), each divided by z^n where |z| > 1, so that nothing overflows.
struct Evaluation {
  Complex newton;  ///< p(z) / p'(z)
  double size;     ///< |p(z)|
  double noise;    ///< error bound of size
};

Evaluation evaluate(const std::vector<double>& c, Complex z) {
  const size_t n = c.size() - 1;
  const bool outside = std::norm(z) > 1;
  const Complex w = outside ? 1.0 / z : z;
  const double r = std::abs(w);
  Complex p = 0, slope = 0;
  double sizes = 0;
  for (size_t i = 0; i <= n; ++i) {
    const double coefficient = outside ? c[i] : c[n - i];
    slope = slope * w + p;
    p = p * w + coefficient;
    sizes = sizes * r + std::abs(coefficient);
  }
  // Outside: q(w) = w^n p(1/w), so p'(z)/p(z) = w (n - w q'(w)/q(w)).
  const Complex newton = outside ? p / (w * (static_cast<double>(n) * p - w * slope)) : p / slope;
  return {newton, std::abs(p), 4 * static_cast<double>(n) * kEpsilon * sizes};
}

/// Starting points on circles whose radii are the slopes of the upper convex hull of (i, log|c_i|) (Bini, Numer.
/// Algorithms 13, 1996): roots of every size are found from near by.
std::vector<Complex> startingPoints(const std::vector<double>& c) {
  std::vector<size_t> hull;
  const auto height = [&](size_t i) { return std::log2(std::abs(c[i])); };
  for (size_t i = 0; i < c.size(); ++i) {
    if (c[i] == 0) continue;
    while (hull.size() > 1) {
      const size_t a = hull[hull.size() - 2], b = hull.back();
      const double rise = (height(b) - height(a)) * static_cast<double>(i - a);
      if (rise > (height(i) - height(a)) * static_cast<double>(b - a)) break;
      hull.pop_back();
    }
    hull.push_back(i);
  }
  std::vector<Complex> points;
  for (size_t k = 0; k + 1 < hull.size(); ++k) {
    const double count = static_cast<double>(hull[k + 1] - hull[k]);
    const double radius = std::exp2((height(hull[k]) - height(hull[k + 1])) / count);
    for (size_t j = 0; j < hull[k + 1] - hull[k]; ++j)
      points.push_back(std::polar(
          radius,
          2 * M_PI * (static_cast<double>(j) / count + static_cast<double>(k) / static_cast<double>(c.size())) + 0.7));
  }
  return points;
}

/// Aberth's iteration until each value of the polynomial is within its rounding error.
std::vector<Complex> aberth(const std::vector<double>& c) {
  std::vector<Complex> z = startingPoints(c);
  std::vector<bool> done(z.size());
  for (int sweep = 0; sweep < kSweeps; ++sweep) {
    bool all = true;
    for (size_t i = 0; i < z.size(); ++i) {
      if (done[i]) continue;
      const Evaluation at = evaluate(c, z[i]);
      done[i] = at.size <= at.noise;
      Complex repulsion = 0;
      for (size_t j = 0; j < z.size(); ++j)
        if (j != i && z[j] != z[i]) repulsion += 1.0 / (z[i] - z[j]);
      const Complex step = at.newton / (1.0 - at.newton * repulsion);
      if (!std::isfinite(step.real()) || !std::isfinite(step.imag())) continue;
      z[i] -= step;  // once more where the noise was met: this last step is free
      if (std::abs(step) <= kEpsilon / 4 * std::abs(z[i])) done[i] = true;
      all = all && done[i];
    }
    if (all) break;
  }
  return z;
}

/// Makes conjugate pairs exact and the roots within their error of the real axis real.
std::vector<Complex> symmetric(const std::vector<double>& c, const std::vector<Complex>& roots) {
  const double n = static_cast<double>(c.size() - 1);
  std::vector<Complex> upper, lower, result;
  for (const Complex z : roots) {
    const Evaluation at = evaluate(c, z);
    const double radius =
        n * std::abs(at.newton) * (1 + (at.size > 0 ? at.noise / at.size : 0)) + kEpsilon * std::abs(z);
    if (std::abs(z.imag()) <= radius)
      result.emplace_back(z.real(), 0);
    else
      (z.imag() > 0 ? upper : lower).push_back(z);
  }
  if (upper.size() != lower.size()) return roots;  // a cluster across the axis: better as found
  for (const Complex z : upper) {
    result.push_back(z);
    result.push_back(std::conj(z));
  }
  return result;
}

/// The integers divided by a power of two that brings the largest near 1.
std::vector<double> asDoubles(const IntegerPoly& p) {
  size_t bits = 0;
  for (const mpz_class& c : p) bits = std::max(bits, mpz_sizeinbase(c.get_mpz_t(), 2));
  std::vector<double> result;
  for (const mpz_class& c : p) {
    long exponent;
    const double mantissa = mpz_get_d_2exp(&exponent, c.get_mpz_t());
    result.push_back(std::ldexp(mantissa, static_cast<int>(std::max<long>(exponent - static_cast<long>(bits), -5000))));
  }
  // A lost low end would give roots at zero that are not there.
  for (size_t i = 0; i < p.size(); ++i)
    if (result[i] == 0 && p[i] != 0) result[i] = std::copysign(std::numeric_limits<double>::denorm_min(), sgn(p[i]));
  return result;
}

std::vector<Complex> rootsOf(const IntegerPoly& p) {
  const std::vector<double> c = asDoubles(p);
  std::vector<Complex> roots = aberth(c);
  if (p.size() <= kExactDegreeLimit + 1) return preciseRoots(p, std::move(roots));
  return symmetric(c, roots);
}

}  // namespace

std::vector<PolyRoot_t> polyRoots(const PolyTerms& terms) {
  PolyTerms p = terms;
  std::erase_if(p, [](const auto& term) { return term.second == 0; });
  if (degree(p) <= 0 || degree(p) > kRootDegreeLimit) return {};
  for (const auto& [exponent, c] : p)
    if (!std::isfinite(c)) return {};

  std::vector<PolyRoot_t> result;
  const int64_t zeros = p.begin()->first;
  if (zeros > 0) result.push_back({0, 0, static_cast<int32_t>(zeros)});
  std::vector<double> ascending(static_cast<size_t>(degree(p) - zeros) + 1);
  for (const auto& [exponent, c] : p) ascending[static_cast<size_t>(exponent - zeros)] = c;
  for (const auto& [factor, multiplicity] : squareFreeFactors(integerPoly(ascending)))
    for (const Complex z : rootsOf(factor)) result.push_back({z.real(), z.imag(), multiplicity});
  std::sort(result.begin(), result.end(),
            [](const PolyRoot_t& a, const PolyRoot_t& b) { return a.re != b.re ? a.re < b.re : a.im < b.im; });
  return result;
}

}  // namespace Sym
