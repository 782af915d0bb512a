// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "highprecision/binary/float_ops.h"
#include "highprecision/decimal/constants.h"
#include "highprecision/decimal/real_functions.h"

namespace Filter {

/// A real number of kBits bits: the expansions of a bilinear transformation cancel up to two bits an order.
class Wide {
 public:
  static constexpr mp_bitcnt_t kBits = 512;

  Wide(double x) : value(kBits, x) {}
  Wide(const HP::HPByGMP& x) : value(HP::held(x, kBits)) {}

  friend Wide operator+(const Wide& x, const Wide& y) { return HP::sum(x.value, y.value, kBits); }
  friend Wide operator-(const Wide& x, const Wide& y) { return HP::difference(x.value, y.value, kBits); }
  friend Wide operator*(const Wide& x, const Wide& y) { return HP::product(x.value, y.value, kBits); }
  friend Wide operator/(const Wide& x, const Wide& y) { return HP::quotient(x.value, y.value, kBits); }

  bool isZero() const { return HP::sign(value) == 0; }
  /// The nearest double: GMP's own conversion cuts, and the rest makes up for it.
  double toDouble() const {
    const double head = value.toDouble();
    return head + HP::difference(value, Wide(head).value, kBits).toDouble();
  }
  const HP::HPByGMP& number() const { return value; }

 private:
  HP::HPByGMP value;
};

inline Wide root(const Wide& x) { return HP::root(x.number(), Wide::kBits); }
inline Wide asinh(const Wide& x) { return HP::realAsinh(x.number(), Wide::kBits); }
inline Wide pi() { return HighPrecision::constantOf(HighPrecision::Constant::pi, Wide::kBits); }
inline HP::SinhCosh sinhCosh(const Wide& x) { return HP::realSinhCosh(x.number(), Wide::kBits); }
inline HP::SineCosine sineCosine(const Wide& x) { return HP::realSineCosine(x.number(), Wide::kBits); }

/// Coefficients in ascending order.
using WidePolynomial = std::vector<Wide>;

WidePolynomial operator*(const WidePolynomial& p, const WidePolynomial& q);

/// sum of p[k] (top/bottom)^k times bottom^n: the rational substitution with its denominators cleared, for n >= degree.
WidePolynomial substituted(const WidePolynomial& p, const WidePolynomial& top, const WidePolynomial& bottom,
                           std::size_t n);

}  // namespace Filter
