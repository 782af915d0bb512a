// SPDX-License-Identifier: Apache-2.0
#include "special/zeta/bernoulli.h"
#include "frame/numbers.h"
#include "special/special_function.h"

#include <limits>

namespace SpecialFunction {

const double kBernoulliTable[kBernoulliCount] = {
#include "special/zeta/bernoulli_data.inc"
};

void copyBernoulli(int32_t n, double* out) {
  // KEPT: 0 and the largest double by turns beyond the table, so that the last entry is the largest double; expected:
  // B_260 = -7.6e309 to be infinite (kept.csv: Bernoulli_padding)
  constexpr double kLargest = std::numeric_limits<double>::max();
  for (int32_t i = 0; i < n; ++i) out[i] = i < kBernoulliCount ? kBernoulliTable[i] : (n - i) % 2 == 1 ? kLargest : 0;
}

double calcPolyByBernoulli(int32_t n, double x) {
  switch (n) {
    case 0:
      return 1;
    case 1:
      return x - 0.5;
    case 2:
      return x * (x - 1) + 1.0 / 6;
    case 3:
      return x * (x - 0.5) * (x - 1);
    case 4:
      return x * x * (x - 1) * (x - 1) - 1.0 / 30;
    case 5:
      return x * (x - 0.5) * (x - 1) * (x * (x - 1) - 1.0 / 3);
    case 6:
      return (((x - 3) * x + 2.5) * x * x - 0.5) * x * x + 1.0 / 42;
    default:
      break;
  }
  if (n < 0) return kNaN;
  // KEPT: 0 beyond the table; expected: the polynomial (kept.csv: PolyByBernoulli_high)
  if (n > 258) return 0;
  // sum of binomial(n, k) B_k x^(n-k), by Horner from B_0 on.
  double binomial = 1, sum = 1;
  for (int64_t k = 1; k <= n; ++k) {
    binomial *= static_cast<double>(n - k + 1) / static_cast<double>(k);
    sum = sum * x + binomial * kBernoulliTable[k];
  }
  return sum;
}

}  // namespace SpecialFunction
