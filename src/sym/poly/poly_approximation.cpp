// SPDX-License-Identifier: Apache-2.0
#include "sym/poly/poly_approximation.h"

#include <gmpxx.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <vector>

#include "frame/function_ref.h"
#include "sym/kinds/program.h"
#include "sym/matrix/matrix.h"
#include "sym/poly/poly_roots.h"
#include "sym/poly/polynomial.h"

namespace Sym {
namespace {

/// cos(pi m / (2 n)) for any m: exactly mirrored about the zeros and ends, so that the symmetry of a function is exact
/// in its sums.
class Cosines {
 public:
  explicit Cosines(int64_t count) : n(count) {
    for (int64_t m = 0; m < n; ++m)
      quarter.push_back(
          std::cos(std::numbers::pi_v<long double> * static_cast<long double>(m) / static_cast<long double>(2 * n)));
    quarter.push_back(0);
  }
  long double operator()(int64_t m) const {
    m %= 4 * n;
    if (m > 2 * n) m = 4 * n - m;
    return m > n ? -quarter[static_cast<std::size_t>(2 * n - m)] : quarter[static_cast<std::size_t>(m)];
  }

 private:
  int64_t n;
  std::vector<long double> quarter;
};

/// The degree of what multiplies out to a polynomial; at most that, as terms may cancel. Nothing for another node.
std::optional<double> degreeOf(const SymObject& node) {
  if (node.kind == Code::Number) return 0;
  if (node.kind == Code::Variable) return 1;
  if (node.kind == Code::Pow) {
    const std::optional<double> base = degreeOf(*node.args[0]);
    const SymObject& e = *node.args[1];
    const bool power = e.kind == Code::Number && e.coef >= 0 && e.coef == std::floor(e.coef);
    return base && power ? std::optional(*base * e.coef) : std::nullopt;
  }
  if (node.kind != Code::Add && node.kind != Code::Mul) return std::nullopt;
  double degree = 0;
  for (const ConstNodePtr& arg : node.args) {
    const std::optional<double> part = degreeOf(*arg);
    if (!part) return std::nullopt;
    degree = node.kind == Code::Add ? std::max(degree, *part) : degree + *part;
  }
  return degree;
}

/// Coefficients of the interpolation's Chebyshev series; empty when a sample is not finite.
std::vector<double> chebyshevSeries(FunctionRef<double(double)> f, double half, double centre, int32_t n) {
  const Cosines cosine(n);
  std::vector<double> samples, series;
  for (int32_t k = 0; k < n; ++k) {
    samples.push_back(f(centre + half * static_cast<double>(cosine(2 * k + 1))));
    if (!std::isfinite(samples.back())) return {};
  }
  for (int64_t j = 0; j < n; ++j) {
    // Mirrored nodes together: of an odd or even function about the centre 0 every other sum is exactly 0.
    long double sum = 0;
    for (std::size_t k = 0, last = samples.size() - 1; k <= last - k; ++k) {
      const long double mirrored = j % 2 == 0 ? samples[last - k] : -samples[last - k];
      sum += (k == last - k ? samples[k] : samples[k] + mirrored) * cosine(j * static_cast<int64_t>(2 * k + 1));
    }
    const auto coefficient = static_cast<double>((j == 0 ? 1 : 2) * sum / n);
    series.push_back(std::abs(coefficient) < 1e-30 ? 0 : coefficient);
  }
  return series;
}

/// The series in powers of x. The change of basis cancels heavily: it runs in so many bits that it loses no digit.
PolyTerms inPowers(const std::vector<double>& series, double half, double centre) {
  const std::size_t n = series.size();
  // T_j(u) with u = (x - centre) / half by its recurrence; coefficients grow as 2^j (1 + |centre/half|)^j.
  const bool identity = std::abs(half - 1) < 1e-15 && std::abs(centre) < 1e-15;
  const double growth = 2 + std::log2(2 + (std::abs(centre) + 1) / std::abs(half));
  const auto bits = static_cast<mp_bitcnt_t>(128 + std::min(growth, 4000.0) * static_cast<double>(n));
  const mpf_class zero(0, bits);
  mpf_class shift(identity ? 0 : centre, bits), scale(identity ? 1 : half, bits);
  std::vector<mpf_class> before(n, zero), now(n, zero), sum(n, zero);
  now[0] = 1;
  for (std::size_t j = 0; j < n; ++j) {
    for (std::size_t i = 0; i <= j; ++i) sum[i] += now[i] * series[j];
    std::vector<mpf_class> next(n, zero);
    const int factor = j == 0 ? 1 : 2;
    for (std::size_t i = 0; i <= j && j + 1 < n; ++i) {
      next[i + 1] += factor * now[i] / scale;
      next[i] -= factor * now[i] * shift / scale;
    }
    for (std::size_t i = 0; i < n; ++i) next[i] -= before[i];
    if (j == 0) std::fill(before.begin(), before.end(), zero);
    before = std::move(now);
    now = std::move(next);
  }
  PolyTerms terms;
  for (std::size_t i = 0; i < n; ++i)
    if (const double c = sum[i].get_d(); c != 0) terms[static_cast<int64_t>(i)] = c;
  return terms;
}

}  // namespace

NodePtr chebyshevApproximation(const SymObject& element, double a, double b, int32_t degree) {
  if (!std::isfinite(a) || !std::isfinite(b) || a == b || degree < 0 || degree > kRootDegreeLimit) return nullptr;
  std::vector<VarPtr> variables;
  collectVariables(element, variables);
  if (variables.empty()) return cloneNode(element);
  if (variables.size() > 1) return nullptr;
  const VarPtr& x = variables[0];
  const Program program(element);
  const auto f = [&](double at) {
    x->value = at;
    return program.value();
  };
  const double half = (b - a) / 2, centre = (b + a) / 2;
  std::vector<double> series = chebyshevSeries(f, half, centre, degree + 1);
  if (series.empty()) return nullptr;
  // A polynomial is its own interpolation: beyond its degree there is only the rounding of the samples.
  if (const std::optional<double> exact = degreeOf(element); exact && *exact < degree)
    std::fill(series.begin() + static_cast<std::ptrdiff_t>(*exact) + 1, series.end(), 0.0);
  const PolyTerms terms = inPowers(series, half, centre);
  const auto finite = [](const auto& term) { return std::isfinite(term.second); };
  return std::all_of(terms.begin(), terms.end(), finite) ? polynomialNode(terms, x) : nullptr;
}

}  // namespace Sym
