// SPDX-License-Identifier: Apache-2.0
#include "filter/design/wide_polynomial.h"

namespace Filter {

WidePolynomial operator*(const WidePolynomial& p, const WidePolynomial& q) {
  WidePolynomial product(p.size() + q.size() - 1, Wide(0.0));
  for (std::size_t i = 0; i < p.size(); ++i)
    for (std::size_t j = 0; j < q.size(); ++j) product[i + j] = product[i + j] + p[i] * q[j];
  return product;
}

WidePolynomial substituted(const WidePolynomial& p, const WidePolynomial& top, const WidePolynomial& bottom,
                           std::size_t n) {
  // Horner's rule in top, with one more factor of bottom for every coefficient further down.
  WidePolynomial value{Wide(0.0)}, cleared{Wide(1.0)};
  for (std::size_t k = n + 1; k-- > 0;) {
    if (k < n) value = value * top;
    if (k < p.size())
      for (std::size_t i = 0; i < cleared.size(); ++i) {
        if (i == value.size()) value.emplace_back(0.0);
        value[i] = value[i] + p[k] * cleared[i];
      }
    if (k > 0) cleared = cleared * bottom;
  }
  return value;
}

}  // namespace Filter
