// SPDX-License-Identifier: Apache-2.0
#include "highprecision/decimal/constants.h"

#include <math.h>

#include <array>
#include <cmath>
#include <optional>

#include "highprecision/binary/float_ops.h"
#include "highprecision/decimal/integer.h"

namespace HighPrecision {
namespace {

using HP::HPByGMP;
using HP::Integer;

constexpr std::size_t kLimbs = 52;
constexpr unsigned long kDecimals = 357;
// 357 decimals are 1185.9 bits; ln 2 and atan(1/2) begin one and two bits behind the point.
constexpr mp_bitcnt_t kStoredBits = 1180;
// The least that a series is summed to.
constexpr mp_bitcnt_t kLeastBits = 2048;

constexpr int64_t kDigits[kConstants * kLimbs] = {
#include "highprecision/decimal/constants_data.inc"
};

std::array<HPNumber_c, kConstants> builtConstants() {
  std::array<HPNumber_c, kConstants> constants;
  for (std::size_t i = 0; i < constants.size(); ++i) {
    constants[i].limbs.assign({kDigits + i * kLimbs, kLimbs});
    constants[i].exponent = 1 - static_cast<int64_t>(kLimbs);
  }
  return constants;
}

const std::array<HPNumber_c, kConstants> constants = builtConstants();

// The sum over k in [a, b) of s^(k-a) / ((2k+1) q^(k-a)) as t / (odd * power): binary splitting.
struct ArcSum {
  Integer t, odd, power;
};

ArcSum arcSum(unsigned long a, unsigned long b, unsigned long q, bool alternating) {
  ArcSum sum;
  if (b - a == 1) {
    mpz_set_ui(sum.t.get(), q);
    mpz_set_ui(sum.odd.get(), 2 * a + 1);
    mpz_set_ui(sum.power.get(), q);
    return sum;
  }
  const unsigned long middle = a + (b - a) / 2;
  const ArcSum low = arcSum(a, middle, q, alternating);
  ArcSum high = arcSum(middle, b, q, alternating);
  mpz_mul(sum.t.get(), low.t.get(), high.odd.get());
  mpz_mul(sum.t.get(), sum.t.get(), high.power.get());
  mpz_mul(high.t.get(), high.t.get(), low.odd.get());
  (alternating && (middle - a) % 2 != 0 ? mpz_sub : mpz_add)(sum.t.get(), sum.t.get(), high.t.get());
  mpz_mul(sum.odd.get(), low.odd.get(), high.odd.get());
  mpz_mul(sum.power.get(), low.power.get(), high.power.get());
  return sum;
}

HPByGMP quotient(const Integer& up, const Integer& down, mp_bitcnt_t bits) {
  HPByGMP result(bits), divisor(bits);
  mpf_set_z(result.get(), up.get());
  mpf_set_z(divisor.get(), down.get());
  mpf_div(result.get(), result.get(), divisor.get());
  return result;
}

// atan(1/n), or atanh(1/n) without alternating signs.
HPByGMP arcOfInverse(unsigned long n, bool alternating, mp_bitcnt_t bits) {
  const auto terms =
      static_cast<unsigned long>(static_cast<double>(bits) / (2 * std::log2(static_cast<double>(n)))) + 2;
  const ArcSum sum = arcSum(0, terms, n * n, alternating);
  Integer down;
  mpz_mul(down.get(), sum.odd.get(), sum.power.get());
  mpz_mul_ui(down.get(), down.get(), n);
  return quotient(sum.t, down, bits);
}

// a L(31) + b L(49) + c L(161) with L(n) = 2 atanh(1/n) = ln((n+1)/(n-1)): every logarithm of 2, 3 and 5 is one.
HPByGMP logOfSmall(unsigned long a, unsigned long b, unsigned long c, mp_bitcnt_t bits) {
  HPByGMP result(bits);
  const unsigned long factors[] = {a, b, c}, inverses[] = {31, 49, 161};
  for (int i = 0; i < 3; ++i) {
    HPByGMP term = arcOfInverse(inverses[i], false, bits);
    mpf_mul_ui(term.get(), term.get(), 2 * factors[i]);
    mpf_add(result.get(), result.get(), term.get());
  }
  return result;
}

// The sum over k in [a, b) of (a-1)!/k! as t / q.
struct FactorialSum {
  Integer t, q;
};

FactorialSum factorialSum(unsigned long a, unsigned long b) {
  FactorialSum sum;
  if (b - a == 1) {
    mpz_set_ui(sum.t.get(), 1);
    mpz_set_ui(sum.q.get(), a);
    return sum;
  }
  const FactorialSum low = factorialSum(a, a + (b - a) / 2), high = factorialSum(a + (b - a) / 2, b);
  mpz_mul(sum.t.get(), low.t.get(), high.q.get());
  mpz_add(sum.t.get(), sum.t.get(), high.t.get());
  mpz_mul(sum.q.get(), low.q.get(), high.q.get());
  return sum;
}

HPByGMP eulersNumber(mp_bitcnt_t bits) {
  unsigned long terms = 8;
  int sign = 0;  // std::lgamma leaves it in a variable of the process
  while (::lgamma_r(static_cast<double>(terms), &sign) / std::log(2.0) < static_cast<double>(bits) + 8)
    terms += terms / 4;
  const FactorialSum sum = factorialSum(1, terms);
  HPByGMP result = quotient(sum.t, sum.q, bits);
  mpf_add_ui(result.get(), result.get(), 1);
  return result;
}

// Chudnovsky's series: 1/pi = 12 sum (-1)^k (6k)! (13591409 + 545140134 k) / ((3k)! k!^3 640320^(3k+3/2)).
struct PiSum {
  Integer p, q, t;
};

PiSum piSum(unsigned long a, unsigned long b) {
  PiSum sum;
  if (b - a == 1) {
    mpz_set_ui(sum.p.get(), 1);
    mpz_set_ui(sum.q.get(), 1);
    if (a > 0) {
      mpz_set_ui(sum.p.get(), 6 * a - 5);
      mpz_mul_ui(sum.p.get(), sum.p.get(), 2 * a - 1);
      mpz_mul_ui(sum.p.get(), sum.p.get(), 6 * a - 1);
      mpz_set_ui(sum.q.get(), a);
      mpz_mul_ui(sum.q.get(), sum.q.get(), a);
      mpz_mul_ui(sum.q.get(), sum.q.get(), a);
      mpz_mul_ui(sum.q.get(), sum.q.get(), 10939058860032000);  // 640320^3 / 24
    }
    mpz_mul_ui(sum.t.get(), sum.p.get(), 545140134 * a + 13591409);
    if (a % 2 != 0) mpz_neg(sum.t.get(), sum.t.get());
    return sum;
  }
  const PiSum low = piSum(a, a + (b - a) / 2), high = piSum(a + (b - a) / 2, b);
  Integer right;
  mpz_mul(sum.t.get(), low.t.get(), high.q.get());
  mpz_mul(right.get(), low.p.get(), high.t.get());
  mpz_add(sum.t.get(), sum.t.get(), right.get());
  mpz_mul(sum.p.get(), low.p.get(), high.p.get());
  mpz_mul(sum.q.get(), low.q.get(), high.q.get());
  return sum;
}

HPByGMP circleNumber(mp_bitcnt_t bits) {
  const PiSum sum = piSum(0, static_cast<unsigned long>(bits) / 47 + 2);  // 47.11 bits a term
  HPByGMP root(bits);
  mpf_set_ui(root.get(), 10005);
  mpf_sqrt(root.get(), root.get());
  mpf_mul_ui(root.get(), root.get(), 426880);  // 640320^(3/2) / 12 = 426880 sqrt(10005)
  HPByGMP result = quotient(sum.q, sum.t, bits);
  mpf_mul(result.get(), result.get(), root.get());
  return result;
}

HPByGMP summed(Constant which, mp_bitcnt_t bits) {
  const auto quarterTurns = [bits](unsigned long n) {
    HPByGMP angle = constantOf(Constant::pi, bits);
    mpf_mul_ui(angle.get(), angle.get(), n);
    return HP::scaled(angle, -2);
  };
  switch (which) {
    case Constant::ln2:
      return logOfSmall(7, 5, 3, bits);
    case Constant::ln3:
      return logOfSmall(11, 8, 5, bits);
    case Constant::ln5:
      return logOfSmall(16, 12, 7, bits);
    case Constant::pi:
      return circleNumber(bits);
    case Constant::atanOneHalf:  // (2 + i)(3 + i) = 5 + 5i
      return HP::difference(quarterTurns(1), arcOfInverse(3, true, bits), bits);
    case Constant::atanThreeQuarters:  // (2 + i)^2 = 3 + 4i
      return HP::difference(quarterTurns(2), HP::scaled(constantOf(Constant::atanOneHalf, bits), 1), bits);
    case Constant::atanThreeHalves:  // (1 + i)(5 + i) = 4 + 6i
      return HP::sum(quarterTurns(1), arcOfInverse(5, true, bits), bits);
    case Constant::atanFour:
      return HP::difference(quarterTurns(2), arcOfInverse(4, true, bits), bits);
    case Constant::e:
      break;
  }
  return eulersNumber(bits);
}

HPByGMP fromStored(Constant which) {
  return quotient(HP::integerOfLimbs(storedConstant(which).limbs), HP::powerOfTen(kDecimals), kStoredBits + 8);
}

struct Kept {
  mp_bitcnt_t bits = 0;
  std::optional<HPByGMP> value;
};

}  // namespace

const HPNumber_c& storedConstant(Constant which) { return constants[static_cast<std::size_t>(which)]; }

HPByGMP constantOf(Constant which, mp_bitcnt_t bits) {
  thread_local std::array<Kept, kConstants> kept;
  Kept& entry = kept[static_cast<std::size_t>(which)];
  if (entry.bits < bits) {
    if (bits <= kStoredBits) {
      entry.value.emplace(fromStored(which));
      entry.bits = kStoredBits;
    } else {
      const mp_bitcnt_t wanted = bits > kLeastBits ? bits : kLeastBits;
      entry.value.emplace(summed(which, wanted + 64));
      entry.bits = wanted;
    }
  }
  HPByGMP result(bits + 8);
  mpf_set(result.get(), entry.value->get());
  return result;
}

}  // namespace HighPrecision
