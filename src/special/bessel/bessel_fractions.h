// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>

#include "frame/numbers.h"

/// The continued fractions of Bessel functions (A. R. Barnett, D. H. Feng, J. W. Steed, L. J. B. Goldfarb, Comput. Phys.
/// Commun. 8 (1974); N. Temme, J. Comput. Phys. 19 (1975)) step by step: `advance` says whether the fraction stands.
namespace SpecialFunction {

/// Two doubles that one instruction divides.
using TwoDoubles [[gnu::vector_size(16)]] = double;

/// J'/J (kSign -1) or I'/I (+1) at the order nu by the modified method of Lentz. Its numerators and denominators follow
/// one recurrence, v = b +- 1/v, and go as two lanes; 0 or less than `small` of one counts as `small`.
template <int kSign>
class SlopeFraction {
 public:
  SlopeFraction(double nu, double xi, double least)
      : value(nu * xi < least ? least : nu * xi), small(least), b(2 * xi * nu), two(2 * xi), inverse{0, 1 / value} {}

  bool advance() {
    b += two;
    TwoDoubles v = kSign < 0 ? b - inverse : b + inverse;
    if (kSign < 0) {
      if (std::abs(v[0]) < small) v[0] = small;
      if (std::abs(v[1]) < small) v[1] = small;
      negative ^= v[0] < 0;
    }
    inverse = 1.0 / v;
    const double step = v[1] * inverse[0];
    value *= step;
    return std::abs(step - 1) < kEpsilon;
  }

  double value;
  bool negative = false;  ///< the sign of J itself

 private:
  double small, b, two;
  TwoDoubles inverse;
};

/// p + iq = (J' + iY')/(J + iY) at the order mu, x >= 2.
class PhaseFraction {
 public:
  PhaseFraction(double mu, double x, double xi, double least)
      : p(-xi / 2), q(1), small(least), a(0.25 - mu * mu), br(2 * x), bi(2) {
    const double fact = a * xi / (p * p + q * q), size = br * br + bi * bi;
    cr = br + q * fact;
    ci = bi + p * fact;
    dr = br / size;
    di = -bi / size;
    multiply();
  }

  bool advance() {
    a += 2 * n;
    n += 1;
    bi += 2;
    dr = a * dr + br;
    di = a * di + bi;
    if (std::abs(dr) + std::abs(di) < small) dr = small;
    const double fact = a / (cr * cr + ci * ci);
    cr = br + cr * fact;
    ci = bi - ci * fact;
    if (std::abs(cr) + std::abs(ci) < small) cr = small;
    const double size = dr * dr + di * di;
    const TwoDoubles d = TwoDoubles{dr, di} / TwoDoubles{size, -size};
    dr = d[0];
    di = d[1];
    return multiply();
  }

  double p, q;

 private:
  bool multiply() {
    const double re = cr * dr - ci * di, im = cr * di + ci * dr, next = p * re - q * im;
    q = p * im + q * re;
    p = next;
    return std::abs(re - 1) + std::abs(im) < kEpsilon;
  }

  double small, a, br, bi, cr, ci, dr, di, n = 1;
};

/// K_mu and K_(mu+1), x >= 2: Temme's sum of the second solution's fraction.
class DecayFraction {
 public:
  DecayFraction(double mu, double x)
      : a1(0.25 - mu * mu), b(2 * (1 + x)), d(1 / b), change(d), h(d), c(a1), q(a1), a(-a1), s(1 + q * change) {}

  bool advance() {
    a -= 2 * n;
    n += 1;
    const TwoDoubles next = TwoDoubles{q1 - b * q2, -a * c} / TwoDoubles{a, n};
    c = next[1];
    q1 = q2;
    q2 = next[0];
    q += c * q2;
    b += 2;
    d = 1 / (b + a * d);
    change = (b * d - 1) * change;
    h += change;
    const double term = q * change;
    s += term;
    return std::abs(term) < kEpsilon * std::abs(s);
  }

  double sum() const { return s; }
  double ratio() const { return a1 * h; }

 private:
  double a1, b, d, change, h, q1 = 0, q2 = 1, c, q, a, s, n = 1;
};

/// Two fractions at once: neither waits for the other's divisions.
template <class First, class Second>
void advanceBoth(First& first, Second& second) {
  constexpr int kMaxRounds = 1000000;
  int i = 0;
  bool firstStands = false, secondStands = false;
  while (!firstStands && !secondStands && ++i < kMaxRounds) {
    firstStands = first.advance();
    secondStands = second.advance();
  }
  while (!firstStands && ++i < kMaxRounds) firstStands = first.advance();
  while (!secondStands && ++i < kMaxRounds) secondStands = second.advance();
}

}  // namespace SpecialFunction
