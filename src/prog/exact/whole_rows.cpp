// SPDX-License-Identifier: Apache-2.0
#include "prog/exact/whole_rows.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numeric>
#include <utility>
#include <vector>

namespace LineProg {

namespace {

constexpr double kMostDecimals = 1e6;
constexpr double kLargest = 1e12;      // of a scaled number
constexpr int64_t kMostRests = 65536;  // modulo g
constexpr double kNear = 1e-9;         // relative, of a right side to a value that it just misses

bool nearWhole(double x) { return std::abs(x) < kLargest && std::abs(x - std::round(x)) <= 1e-12 * std::abs(x); }

// The power of ten that makes all coefficients integers; 0 when there is none.
double decimalScale(std::span<const std::pair<int32_t, double>> terms) {
  for (double scale = 1; scale <= kMostDecimals; scale *= 10)
    if (std::ranges::all_of(terms, [scale](const auto& term) { return nearWhole(term.second * scale); })) return scale;
  return 0;
}

}  // namespace

double largestReachable(const EquVar& row, double sign, std::span<const BaseVar> variables) {
  const double bound = sign * row.constCoef, scale = decimalScale(row.coefs);
  if (scale == 0 || !(std::abs(bound * scale) < kLargest)) return bound;
  int64_t divisor = 0;
  std::vector<int64_t> single;
  for (const auto& [var, coefficient] : row.coefs) {
    const int64_t whole = std::llround(sign * coefficient * scale);
    if (variables[var].varKind == kReal) return bound;
    if (variables[var].varKind == kInteger)
      divisor = std::gcd(divisor, whole);
    else
      single.push_back(whole);
  }
  if (divisor == 0 || divisor > kMostRests) return bound;
  const auto rest = [divisor](int64_t value) {
    return static_cast<std::size_t>((value % divisor + divisor) % divisor);
  };
  std::vector<uint8_t> reached(static_cast<std::size_t>(divisor), 0);
  reached[0] = 1;
  for (const int64_t coefficient : single) {
    std::vector<uint8_t> next = reached;
    for (int64_t r = 0; r < divisor; ++r)
      if (reached[static_cast<std::size_t>(r)]) next[rest(r + coefficient)] = 1;
    reached = std::move(next);
  }
  const double scaled = bound * scale;
  auto value = static_cast<int64_t>(std::floor(scaled + kNear * std::max(1.0, std::abs(scaled))));
  while (!reached[rest(value)]) --value;
  return static_cast<double>(value) / scale;
}

double objectiveStep(std::span<const double> objective, std::span<const BaseVar> variables) {
  std::vector<std::pair<int32_t, double>> terms;
  for (const BaseVar& var : variables) {
    if (objective[var.index] == 0) continue;
    if (var.varKind == kReal) return 0;
    terms.push_back({var.index, objective[var.index]});
  }
  const double scale = decimalScale(terms);
  if (scale == 0) return 0;
  int64_t divisor = 0;
  for (const auto& [var, coefficient] : terms) divisor = std::gcd(divisor, std::llround(coefficient * scale));
  return static_cast<double>(divisor) / scale;
}

}  // namespace LineProg
