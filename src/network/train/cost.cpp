// SPDX-License-Identifier: Apache-2.0
#include "network/train/cost.h"

#include <algorithm>
#include <cmath>

#include "frame/code_table.h"

namespace NetWork {
namespace {

using Output = std::span<const double>;
using Delta = std::span<double>;

/// Makes a cost gradient out of a formula for one entry, which may use the length.
template <auto kFormula>
void byEntry(Output y, const double* t, Delta delta) {
  const auto n = static_cast<double>(y.size());
  for (std::size_t i = 0; i < y.size(); ++i) delta[i] = kFormula(y[i], t[i], n);
}

/// Of -sum t ln softmax(y), where y is before the soft-max: softmax(y) sum(t) - t.
void softMaxCross(Output y, const double* t, Delta delta) {
  const double top = *std::ranges::max_element(y);
  double sum = 0.0, targets = 0.0;
  for (std::size_t i = 0; i < y.size(); ++i) {
    delta[i] = std::exp(y[i] - top);
    sum += delta[i];
    targets += t[i];
  }
  for (std::size_t i = 0; i < y.size(); ++i) delta[i] = delta[i] * (targets / sum) - t[i];
}

/// Of 1 - cos(y, t); 0 where a vector is next to nothing.
void cosine(Output y, const double* t, Delta delta) {
  double a = 0.0, p = 0.0, q = 0.0;
  for (std::size_t i = 0; i < y.size(); ++i) {
    a += y[i] * t[i];
    p += y[i] * y[i];
    q += t[i] * t[i];
  }
  if (!(p > 1e-32 && q > 1e-32)) return std::fill(delta.begin(), delta.end(), 0.0);
  const double scale = 1.0 / (std::sqrt(p) * std::sqrt(q));
  for (std::size_t i = 0; i < y.size(); ++i) delta[i] = (y[i] * (a / p) - t[i]) * scale;
}

struct CostRow {
  int32_t code;
  CostGrad gradient;
};

constexpr CostRow kCosts[] = {
    {0, byEntry<[](double y, double t, double) { return y - t; }>},
    {1, byEntry<[](double y, double t, double n) { return (y - t) / n; }>},
    // The logarithms of LossFunByCross1, with its guards at 0 and 1.
    {2, byEntry<[](double y, double t, double n) {
       return -1.0 / n * (t / (y + 1e-32) - (1.0 - t) / (1.00000000000001 - y));
     }>},
    {3, softMaxCross},
    {4, cosine},
    {5, byEntry<[](double y, double t, double) { return static_cast<double>((y > t) - (y < t)); }>},
};

using Costs = CodeTable<kCosts>;

}  // namespace

CostGrad costGradient(int32_t kind) {
  const CostRow* row = Costs::find(kind);
  return row == nullptr ? nullptr : row->gradient;
}

}  // namespace NetWork
