// SPDX-License-Identifier: Apache-2.0
#include "highprecision/decimal/hp_rounding.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "highprecision/binary/float_ops.h"
#include "highprecision/decimal/integer.h"

namespace HighPrecision {
namespace {

using HP::HPByGMP;
using HP::Integer;

constexpr double kBitsPerLimb = 23.253496664211536;  // log2(10^7)
constexpr int64_t kLimbDigits = 7;
// Behind the kept limbs, at first: a tie is then not decided once in 10^13 times.
constexpr std::size_t kFirstSpare = 2;

// x 10^(7 limbs)
HPByGMP moved(const HPByGMP& x, int64_t limbs, mp_bitcnt_t bits) {
  if (limbs == 0) return x;
  const auto digits = static_cast<uint64_t>(std::abs(limbs) * kLimbDigits);
  // A power that is not much longer than the result is taken exactly.
  const HPByGMP power =
      digits < bits ? HP::floatOf(HP::powerOfTen(digits), 0, bits) : HP::power(HP::number(10), digits, bits);
  return limbs > 0 ? HP::product(x, power, bits) : HP::quotient(x, power, bits);
}

// True when the limbs behind the kept ones lie within two units of their last from a tie.
bool closeToTie(const LimbVector& limbs, std::size_t dropped) {
  const auto nearTie = [&](int64_t top, int64_t middle, bool low) {
    if (limbs[dropped - 1] != top) return false;
    for (std::size_t i = 1; i + 1 < dropped; ++i)
      if (limbs[i] != middle) return false;
    return low ? limbs[0] <= 2 : limbs[0] >= kBase - 3;
  };
  return nearTie(kHalf, 0, true) || nearTie(kHalf - 1, kBase - 1, false);
}

}  // namespace

HPByGMP toFloat(const HPNumber_c& x, mp_bitcnt_t bits) {
  const mp_bitcnt_t work = bits + 8;
  const HPByGMP whole = HP::floatOf(HP::integerOfLimbs(x.limbs), 0, work);
  const HPByGMP result = moved(whole, x.exponent, work);
  return x.isNegative ? HP::minus(result) : result;
}

int64_t sizeInBits(const HPNumber_c& x) {
  double lead = 0;
  for (const int64_t limb : std::span(x.limbs).last(std::min<std::size_t>(3, x.limbs.size())))
    lead = lead / static_cast<double>(kBase) + static_cast<double>(limb);
  return static_cast<int64_t>(std::floor(static_cast<double>(x.top() - 1) * kBitsPerLimb + std::log2(lead)));
}

HPNumber_c correctlyRounded(Approximation value, int32_t precision, std::size_t tieLimbs) {
  const auto kept = static_cast<std::size_t>(heldPrecision(precision));
  for (std::size_t spare = kFirstSpare;; spare *= 2) {
    const auto wanted = static_cast<int64_t>(kept + spare);
    const auto bits = static_cast<mp_bitcnt_t>(static_cast<double>(wanted + 1) * kBitsPerLimb) + 8;
    const HPByGMP approximation = value(bits);
    if (HP::sign(approximation) == 0) return {};
    long binary = 0;
    const double lead = std::abs(mpf_get_d_2exp(&binary, approximation.get()));
    const auto top =
        static_cast<int64_t>(std::floor((static_cast<double>(binary) + std::log2(lead)) / kBitsPerLimb)) + 1;
    HPNumber_c result;
    result.exponent = top - wanted;
    if (std::abs(top) > kMaxExponent) return top > 0 ? HPNumber_c::infinite(HP::sign(approximation) < 0) : HPNumber_c();
    const HPByGMP integer = moved(HP::absolute(approximation), -result.exponent, bits + 8);
    result.limbs = HP::limbsOfInteger(HP::fixedOf(integer, 0));
    result.isNegative = HP::sign(approximation) < 0;
    const std::size_t dropped = result.limbs.size() > kept ? result.limbs.size() - kept : 0;
    if (dropped < 2) continue;
    if (closeToTie(result.limbs, dropped)) {
      if (spare <= tieLimbs) continue;
      result.limbs[dropped - 1] = kHalf;  // a tie
    }
    return rounded(std::move(result), precision);
  }
}

}  // namespace HighPrecision
