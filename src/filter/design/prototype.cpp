// SPDX-License-Identifier: Apache-2.0
#include "filter/design/prototype.h"

#include <cmath>

#include "filter/design/filter_by_butterworth.h"

namespace Filter {

namespace {

/// k pi/(2n)
HP::SineCosine quarterTurn(int32_t k, int32_t n) { return sineCosine(pi() * Wide(k) / Wide(2.0 * n)); }

/// The poles of Chebyshev's prototype of order n: pairs -sinh(mu) sin(t) +- i cosh(mu) cos(t) with t = (2k+1) pi/(2n),
/// mu = asinh(1/epsilon)/n. For odd n the last one is real.
struct Pole {
  Wide re, im;
};
std::vector<Pole> chebyshevPoles(int32_t n, double ripple) {
  const HP::SinhCosh axes = sinhCosh(asinh(Wide(1.0) / Wide(std::abs(ripple) + 1e-32)) / Wide(n));
  std::vector<Pole> poles;
  for (int32_t k = 0; 2 * k < n; ++k) {
    const HP::SineCosine t = quarterTurn(2 * k + 1, n);
    const bool real = 2 * k + 1 == n;
    poles.push_back({Wide(0.0) - Wide(axes.sinh) * Wide(t.sine), real ? Wide(0.0) : Wide(axes.cosh) * Wide(t.cosine)});
  }
  return poles;
}

}  // namespace

/// a[k+1] = a[k] cos(k pi/(2n))/sin((k+1) pi/(2n))
Prototype FilterByButterworth::prototype(double) const {
  WidePolynomial proto{Wide(1.0)};
  for (int32_t k = 0; k < order; ++k) {
    const Wide cosine = k == 0 ? Wide(1.0) : Wide(quarterTurn(k, order).cosine);
    proto.push_back(proto.back() * cosine / Wide(quarterTurn(k + 1, order).sine));
  }
  return {{Wide(1.0)}, proto};
}

/// a[k] = 2^k/k! (2n-k)!/(n-k)! n!/(2n)!, here by the ratio of neighbours.
Prototype FilterByBessel::prototype(double) const {
  WidePolynomial proto{Wide(1.0)};
  for (int32_t k = 0; k < order; ++k)
    proto.push_back(proto.back() * Wide(2.0 * (order - k)) / Wide((k + 1.0) * (2.0 * order - k)));
  return {{Wide(1.0)}, proto};
}

Prototype FilterByChebyshevI::prototype(double ripple) const {
  // Even orders start at the bottom of a ripple, odd ones at its top.
  const Wide square = Wide(1.0) + Wide(ripple) * Wide(ripple);
  Prototype result{{order % 2 == 0 ? Wide(1.0) / root(square) : Wide(1.0)}, {Wide(1.0)}};
  for (const Pole& pole : chebyshevPoles(order, ripple)) {
    const Wide size = pole.re * pole.re + pole.im * pole.im;
    if (pole.im.isZero())
      result.denominator = result.denominator * WidePolynomial{Wide(1.0), Wide(-1.0) / pole.re};
    else
      result.denominator =
          result.denominator * WidePolynomial{Wide(1.0), Wide(-2.0) * pole.re / size, Wide(1.0) / size};
  }
  return result;
}

Prototype FilterByChebyshevII::prototype(double ripple) const {
  // s -> 1/s turns the poles p of type I into 1/p and its flat numerator into zeros at +-i/cos(t).
  Prototype result{{Wide(1.0)}, {Wide(1.0)}};
  for (const Pole& pole : chebyshevPoles(order, ripple)) {
    if (pole.im.isZero()) {
      result.denominator = result.denominator * WidePolynomial{Wide(1.0), Wide(0.0) - pole.re};
    } else {
      const Wide size = pole.re * pole.re + pole.im * pole.im;
      result.denominator = result.denominator * WidePolynomial{Wide(1.0), Wide(-2.0) * pole.re, size};
    }
  }
  for (int32_t k = 0; 2 * k + 1 < order; ++k) {
    const Wide cosine(quarterTurn(2 * k + 1, order).cosine);
    result.numerator = result.numerator * WidePolynomial{Wide(1.0), Wide(0.0), cosine * cosine};
  }
  return result;
}

}  // namespace Filter
