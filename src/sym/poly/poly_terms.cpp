// SPDX-License-Identifier: Apache-2.0
#include "sym/poly/poly_terms.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "orvane/sym_polynomial.h"

namespace Sym {

namespace {

PolyTerms trimmed(PolyTerms p, double limit = kTermLimit) {
  std::erase_if(p, [limit](const auto& term) { return std::abs(term.second) < limit; });
  return p;
}

/// The zero polynomial is the empty one here.
PolyTerms withoutZeros(PolyTerms p) {
  std::erase_if(p, [](const auto& term) { return term.second == 0; });
  return p;
}

double largest(const PolyTerms& p) {
  double result = 0;
  for (const auto& [exponent, c] : p) result = std::max(result, std::abs(c));
  return result;
}

PolyTerms scaled(PolyTerms p, double factor) {
  for (auto& [exponent, c] : p) c *= factor;
  return p;
}

PolyTerms monic(const PolyTerms& p) {
  if (p.empty()) return p;
  PolyTerms result = scaled(p, 1 / p.rbegin()->second);
  result.rbegin()->second = 1;
  return result;
}

/// A remainder without the terms that rounding alone leaves of terms of the size `from`.
PolyTerms cleaned(const PolyTerms& remainder, double from) { return trimmed(remainder, 1e-11 * from); }

}  // namespace

PolyTerms sum(const PolyTerms& a, const PolyTerms& b, double factorOfB) {
  PolyTerms result = a;
  for (const auto& [exponent, c] : b) result[exponent] += factorOfB * c;
  return result;
}

PolyTerms product(const PolyTerms& a, const PolyTerms& b) {
  PolyTerms result;
  if (degree(a) + degree(b) > kDegreeLimit) return result;
  for (const auto& [ea, ca] : a)
    for (const auto& [eb, cb] : b) result[ea + eb] += ca * cb;
  return result;
}

PolyTerms derivative(const PolyTerms& a) {
  PolyTerms result;
  for (const auto& [exponent, c] : a)
    if (exponent != 0) result[exponent - 1] = static_cast<double>(exponent) * c;
  return result;
}

std::pair<PolyTerms, PolyTerms> divide(const PolyTerms& a, const PolyTerms& b) {
  if (b.empty()) return {};
  PolyTerms quotient;
  PolyTerms remainder = a;
  const auto [lead, leadCoefficient] = *b.rbegin();
  while (degree(remainder) >= lead) {
    const auto top = std::prev(remainder.end());
    const int64_t shift = top->first - lead;
    const double factor = top->second / leadCoefficient;
    remainder.erase(top);  // exactly, whatever rounding would leave of it
    if (factor == 0) continue;
    quotient[shift] = factor;
    for (auto term = b.begin(); term != std::prev(b.end()); ++term)
      remainder[term->first + shift] -= factor * term->second;
  }
  return {quotient, remainder};
}

PolyTerms greatestCommonDivisor(const PolyTerms& a, const PolyTerms& b) {
  PolyTerms high = monic(a), low = monic(b);
  if (degree(high) < degree(low)) std::swap(high, low);
  while (!low.empty()) {
    const auto [quotient, remainder] = divide(high, low);
    const double from = std::max({largest(high), largest(quotient) * largest(low), 1.0});
    high = std::move(low);
    low = monic(cleaned(remainder, from));
  }
  return high;
}

PolyTerms leastCommonMultiple(const PolyTerms& a, const PolyTerms& b) {
  if (a.empty() || b.empty()) return {};
  return monic(divide(product(a, b), greatestCommonDivisor(a, b)).first);
}

PolyTerms composition(const PolyTerms& a, const PolyTerms& b) {
  if (degree(a) > 0 && degree(b) > kDegreeLimit / degree(a)) return {};
  PolyTerms result;
  int64_t at = std::max<int64_t>(degree(a), 0);
  for (auto term = a.rbegin(); term != a.rend(); ++term) {  // Horner over the terms that are there
    result = product(result, power(b, at - term->first));
    result[0] += term->second;
    at = term->first;
  }
  return product(result, power(b, at));
}

PolyTerms power(const PolyTerms& a, int64_t exponent) {
  PolyTerms result{{0, 1.0}}, base = a;
  if (exponent > 0 && degree(a) > kDegreeLimit / exponent) return {};
  for (; exponent > 0; exponent /= 2) {
    if (exponent % 2) result = product(result, base);
    if (exponent > 1) base = product(base, base);
  }
  return result;
}

double resultant(const PolyTerms& a, const PolyTerms& b) {
  if (a.empty() || b.empty()) return 0;
  PolyTerms high = a, low = b;
  double result = 1;
  while (degree(low) > 0) {
    // res(h, l) = (-1)^(deg h deg l) lc(l)^(deg h - deg r) res(l, r), r the remainder of h by l
    const auto [quotient, raw] = divide(high, low);
    const double from = std::max(largest(high), largest(quotient) * largest(low));
    PolyTerms remainder = cleaned(raw, from);
    if (remainder.empty()) return 0;
    if (degree(high) % 2 && degree(low) % 2) result = -result;
    result *= std::pow(low.rbegin()->second, static_cast<double>(degree(high) - degree(remainder)));
    high = std::move(low);
    low = std::move(remainder);
  }
  return result * std::pow(low.rbegin()->second, static_cast<double>(degree(high)));
}

PolyTerms runPolyOperation(const PolyTerms& left, const PolyTerms& right, uint8_t operation) {
  const PolyTerms a = withoutZeros(left), b = withoutZeros(right);
  switch (operation) {
    case ORVANE_POLY_SUM:
      return trimmed(sum(a, b));
    case ORVANE_POLY_DIFFERENCE:
      return trimmed(sum(a, b, -1.0));
    case ORVANE_POLY_PRODUCT:
      return trimmed(product(a, b));
    case ORVANE_POLY_QUOTIENT:
      return trimmed(divide(a, b).first);
    case ORVANE_POLY_REMAINDER:
      return trimmed(divide(a, b).second);
    case ORVANE_POLY_GCD:
      return trimmed(greatestCommonDivisor(a, b));
    case ORVANE_POLY_LCM:
      return trimmed(leastCommonMultiple(a, b));
    case ORVANE_POLY_COMPOSITION:
      return trimmed(composition(a, b));
    case ORVANE_POLY_DERIVATIVE:
      return trimmed(derivative(product(a, b)));
    case ORVANE_POLY_RESULTANT:
      return trimmed({{0, resultant(a, b)}});
    case ORVANE_POLY_POWER: {
      const double exponent = b.empty() ? 0 : b.begin()->second;
      if (degree(b) > 0 || !(exponent >= 0 && exponent <= kDegreeLimit) || exponent != std::floor(exponent)) return {};
      return trimmed(power(a, static_cast<int64_t>(exponent)));
    }
    default:
      return {};
  }
}

double value(const PolyTerms& p, double x) {
  double result = 0.0;
  for (const auto& [exponent, c] : p) result += std::pow(x, static_cast<double>(exponent)) * c;
  return result;
}

}  // namespace Sym
