// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>

#include "frame/numbers.h"
#include "special/two_doubles.h"

/// The continued fractions of Bessel functions (A. R. Barnett, D. H. Feng, J. W. Steed, L. J. B. Goldfarb, Comput.
/// Phys. Commun. 8 (1974); N. Temme, J. Comput. Phys. 19 (1975)) step by step: `advance` says whether the fraction
/// stands.
namespace SpecialFunction {

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

/// K_mu and K_(mu+1), x >= 2: Temme's sum of the second solution's fraction. Numbers that no division waits for go in
/// pairs, so that the loop finds room in the registers.
class DecayFraction {
 public:
  DecayFraction(double mu, double x)
      : a1(0.25 - mu * mu), bn{2 * (1 + x), 1}, d(1 / bn[0]), change(d), c(a1), q(a1), a(a1), sums{d, 1 + q * d} {}

  bool advance() {
    a += 2 * bn[1];
    const double next = (bn[0] * q2 - q1) / a;
    bn += TwoDoubles{2, 1};
    c = a * c / bn[1];
    q1 = q2;
    q2 = next;
    q += c * q2;
    d = 1 / (bn[0] - a * d);
    change = (bn[0] * d - 1) * change;
    const double term = q * change;
    sums += TwoDoubles{change, term};
    return std::abs(term) < kEpsilon * std::abs(sums[1]);
  }

  double sum() const { return sums[1]; }
  double ratio() const { return a1 * sums[0]; }

 private:
  double a1;
  TwoDoubles bn;  // b and the number of the round
  double d, change, q1 = 0, q2 = 1, c, q, a;
  TwoDoubles sums;  // of the changes, and with the weights q
};

/// Fractions to their ends, of 1000000 rounds at most. A function of its own: all registers are the loop's.
template <class Fraction>
[[gnu::noinline]] Fraction settled(Fraction fraction) {
  for (int i = 0; i < 1000000 && !fraction.advance(); ++i) continue;
  return fraction;
}

/// Two fractions at once as long as both run: neither waits for the other's divisions.
template <class First, class Second>
void settleBoth(First& first, Second& second) {
  bool firstStands = false, secondStands = false;
  int i = 0;
  for (; i < 1000000 && !firstStands && !secondStands; ++i) {
    firstStands = first.advance();
    secondStands = second.advance();
  }
  for (; i < 1000000 && !firstStands; ++i) firstStands = first.advance();
  for (; i < 1000000 && !secondStands; ++i) secondStands = second.advance();
}

}  // namespace SpecialFunction
