// SPDX-License-Identifier: Apache-2.0
#include "highprecision/decimal/hp_functions.h"

#include <algorithm>
#include <cmath>

#include "highprecision/decimal/constants.h"
#include "highprecision/decimal/hp_rounding.h"
#include "highprecision/decimal/real_functions.h"

namespace HighPrecision {
namespace {

using HP::HPByGMP;

HPNumber_c undefined() { return HPNumber_c::infinite(false); }

const HPNumber_c& one() {
  static const HPNumber_c value(1);
  return value;
}

// Longer than any digits that a tie of a function of x can depend on before the next term of its expansion does.
std::size_t tieLimbs(const HPNumber_c& x, int32_t precision) {
  return 3 * (x.limbs.size() + static_cast<std::size_t>(heldPrecision(precision))) + 30;
}

// So small that f(x) = x (1 + c x^2 + ...) differs from x only behind its digits and the rounding place.
bool isTiny(const HPNumber_c& x, int32_t precision) {
  return -x.top() > static_cast<int64_t>(x.limbs.size()) + heldPrecision(precision) + 10;
}

bool isHuge(const HPNumber_c& x, int32_t precision) {
  return x.top() > static_cast<int64_t>(x.limbs.size()) + heldPrecision(precision) + 10;
}

// x (1 + d) or x (1 - d), rounded.
HPNumber_c nextTo(const HPNumber_c& x, bool up, int32_t precision) {
  return rounded(nudged(x, up, precision), precision);
}

// 1/x (1 + d) or (1 - d) for a d below the square of the last digit of 1/x that can matter.
HPNumber_c nextToInverse(const HPNumber_c& x, bool up, int32_t precision) {
  const int32_t longer = heldPrecision(precision) + 2;
  const HPNumber_c inverse = divide(one(), x, longer);
  const bool exact = compare(multiply(inverse, x, INT32_MAX), one()) == 0;
  return exact ? nextTo(inverse, up, precision) : divide(one(), x, precision);
}

// x plus or minus n, exactly, when it can have cancelled; otherwise as a float.
HPByGMP plusFloat(const HPNumber_c& x, int n, mp_bitcnt_t bits) {
  if (x.top() < -2 || x.top() > 3) return HP::plus(toFloat(x, bits + 8), n, bits + 8);
  return toFloat(add(x, HPNumber_c(n), INT32_MAX), bits);
}

// Bits before the point, 0 for a fraction.
mp_bitcnt_t wholeBits(const HPNumber_c& x) { return static_cast<mp_bitcnt_t>(std::max<int64_t>(0, sizeInBits(x) + 2)); }

// exp(|x|) leaves the exponents from here on.
bool exponentialOverflows(const HPNumber_c& x) {
  static const double limit = std::log2(static_cast<double>(kMaxExponent) * 7 * std::log(10.0));
  return static_cast<double>(sizeInBits(x)) > limit + 1;
}

HPNumber_c sineOrCosine(const HPNumber_c& x, uint8_t code, int32_t precision) {
  if (x.isInfinite || x.top() > kMaxAngleLimbs) return undefined();
  const bool quotient = code == 53 || code == 54;
  if (x.isZero()) return code == 52 ? one() : code == 54 ? undefined() : HPNumber_c();
  if (isTiny(x, precision)) {
    if (code == 52) return one();
    if (code == 54) return nextToInverse(x, false, precision);
    return nextTo(x, code == 53, precision);
  }
  const auto value = [&](mp_bitcnt_t bits) {
    const auto angle = HP::reducedAngle([&x](mp_bitcnt_t longer) { return toFloat(x, longer); }, bits + 8);
    const HP::SineCosine both = HP::sineCosine(angle, bits + 4);
    if (!quotient) return code == 51 ? both.sine : both.cosine;
    return code == 53 ? HP::quotient(both.sine, both.cosine, bits + 4) : HP::quotient(both.cosine, both.sine, bits + 4);
  };
  return correctlyRounded(value, precision, tieLimbs(x, precision));
}

HPNumber_c halfPi(int32_t precision, bool negative) {
  const auto value = [](mp_bitcnt_t bits) { return HP::scaled(constantOf(Constant::pi, bits), -1); };
  const HPNumber_c result = correctlyRounded(value, precision, 30);
  return negative ? negated(result) : result;
}

HPNumber_c circle(int32_t precision) {
  return correctlyRounded([](mp_bitcnt_t bits) { return constantOf(Constant::pi, bits); }, precision, 30);
}

HPNumber_c arcTangent(const HPNumber_c& x, int32_t precision) {
  if (x.isInfinite) return halfPi(precision, x.isNegative);
  if (x.isZero()) return {};
  if (isTiny(x, precision)) return nextTo(x, false, precision);
  return correctlyRounded([&](mp_bitcnt_t bits) { return HP::realAtan(toFloat(x, bits + 4), bits + 4); }, precision,
                          tieLimbs(x, precision));
}

// pi/2 - atan x
HPNumber_c arcCotangent(const HPNumber_c& x, int32_t precision) {
  if (x.isInfinite) return x.isNegative ? circle(precision) : HPNumber_c();
  if (x.isZero()) return halfPi(precision, false);
  if (!x.isNegative && isHuge(x, precision)) return nextToInverse(x, false, precision);
  const auto value = [&](mp_bitcnt_t bits) {
    const HPByGMP argument = toFloat(x, bits + 8);
    if (!x.isNegative) return HP::realAtan(HP::quotient(HP::number(1), argument, bits + 8), bits + 4);
    return HP::difference(HP::scaled(constantOf(Constant::pi, bits + 8), -1), HP::realAtan(argument, bits + 8),
                          bits + 8);
  };
  return correctlyRounded(value, precision, tieLimbs(x, precision));
}

// asin x = atan(x / sqrt((1-x)(1+x))); acos x = 2 atan(sqrt((1-x)/(1+x)))
HPNumber_c arcSineOrCosine(const HPNumber_c& x, bool sine, int32_t precision) {
  const int size = compare(absolute(x), one());
  if (size > 0) return undefined();
  if (x.isZero()) return sine ? HPNumber_c() : halfPi(precision, false);
  if (size == 0) return sine ? halfPi(precision, x.isNegative) : x.isNegative ? circle(precision) : HPNumber_c();
  if (sine && isTiny(x, precision)) return nextTo(x, true, precision);
  const auto value = [&](mp_bitcnt_t bits) {
    const mp_bitcnt_t work = bits + 16;
    const HPByGMP above = plusFloat(x, 1, work), below = HP::minus(plusFloat(x, -1, work));
    if (sine)
      return HP::realAtan(HP::quotient(toFloat(x, work), HP::root(HP::product(above, below, work), work), work), work);
    return HP::scaled(HP::realAtan(HP::root(HP::quotient(below, above, work), work), work), 1);
  };
  return correctlyRounded(value, precision, tieLimbs(x, precision));
}

HPNumber_c hyperbolic(const HPNumber_c& x, uint8_t code, int32_t precision) {
  if (x.isZero()) return code == 62 ? one() : code == 64 ? undefined() : HPNumber_c();
  if (x.isInfinite || exponentialOverflows(x)) {
    const HPNumber_c unit(x.isNegative ? -1 : 1);
    return code == 63 || code == 64 ? unit : HPNumber_c::infinite(code == 61 && x.isNegative);
  }
  if (isTiny(x, precision)) {
    if (code == 62) return one();
    if (code == 64) return nextToInverse(x, true, precision);
    return nextTo(x, code == 61, precision);
  }
  if (code >= 63 && sizeInBits(x) > 40) return HPNumber_c(x.isNegative ? -1 : 1);  // precisions stay below 2^30 bits
  const auto value = [&](mp_bitcnt_t bits) {
    const HP::SinhCosh both = HP::realSinhCosh(toFloat(x, bits + wholeBits(x) + 8), bits + 4);
    switch (code) {
      case 61:
        return both.sinh;
      case 62:
        return both.cosh;
      case 63:
        return HP::quotient(both.sinh, both.cosh, bits + 4);
      default:
        return HP::quotient(both.cosh, both.sinh, bits + 4);
    }
  };
  return correctlyRounded(value, precision, tieLimbs(x, precision));
}

HPNumber_c inverseHyperbolic(const HPNumber_c& x, uint8_t code, int32_t precision) {
  const auto round = [&](Approximation value) { return correctlyRounded(value, precision, tieLimbs(x, precision)); };
  const int size = compare(absolute(x), one());
  switch (code) {
    case 65:
      if (x.isInfinite || x.isZero()) return x;
      if (isTiny(x, precision)) return nextTo(x, false, precision);
      return round([&](mp_bitcnt_t bits) { return HP::realAsinh(toFloat(x, bits + 4), bits + 4); });
    case 66:
      if (x.isInfinite) return x.isNegative ? undefined() : x;
      if (x.isNegative || size < 0) return undefined();
      if (size == 0) return {};
      return round([&](mp_bitcnt_t bits) { return HP::realAcosh1p(plusFloat(x, -1, bits + 8), bits + 4); });
    case 67:
      if (size >= 0) return undefined();
      if (x.isZero()) return {};
      if (isTiny(x, precision)) return nextTo(x, true, precision);
      return round([&](mp_bitcnt_t bits) {
        const HPByGMP oneMinus = HP::minus(plusFloat(absolute(x), -1, bits + 8));
        return HP::realAtanh(toFloat(x, bits + 8), oneMinus, bits + 4);
      });
    default:  // acoth x = atanh(1/x), 1 - 1/|x| = (|x| - 1)/|x|
      if (x.isInfinite) return {};
      if (size <= 0) return undefined();
      if (isHuge(x, precision)) return nextToInverse(x, true, precision);
      return round([&](mp_bitcnt_t bits) {
        const HPByGMP whole = toFloat(x, bits + 8), over = plusFloat(absolute(x), -1, bits + 8);
        return HP::realAtanh(HP::quotient(HP::number(1), whole, bits + 8),
                             HP::quotient(over, HP::absolute(whole), bits + 8), bits + 4);
      });
  }
}

// ln |x| for x other than 0 and 1: exponent 7 ln 10 for a power of 10^7; close to 1 by x - 1, which is exact.
HPByGMP logOf(const HPNumber_c& x, mp_bitcnt_t bits) {
  if (x.limbs.size() == 1 && x.limbs[0] == 1) {
    const HPByGMP ten = HP::sum(constantOf(Constant::ln2, bits + 8), constantOf(Constant::ln5, bits + 8), bits + 8);
    return HP::product(ten, HP::number(static_cast<long>(7 * x.exponent)), bits + 8);
  }
  const HPNumber_c size = absolute(x);
  const int64_t top = size.top();
  if (top == 1 || top == 0) {
    const HPByGMP fromOne = plusFloat(size, -1, bits + 8);
    if (HP::exponentOf(fromOne) < -3) return HP::realLog1p(fromOne, bits + 4);
  }
  return HP::realLog(toFloat(size, bits + 8), bits + 4);
}

}  // namespace

HPNumber_c exponential(const HPNumber_c& x, int32_t precision) {
  // KEPT: exp of +infinity is 0 and of -infinity infinite; expected: the reverse (kept.csv: Exp_infinite)
  if (x.isInfinite) return x.isNegative ? HPNumber_c::infinite(false) : HPNumber_c();
  if (x.isZero()) return one();
  if (exponentialOverflows(x)) return x.isNegative ? HPNumber_c() : HPNumber_c::infinite(false);
  const auto value = [&](mp_bitcnt_t bits) {
    const mp_bitcnt_t work = bits + 8;
    return HP::realExp(toFloat(x, work + wholeBits(x)), work);
  };
  // Below this 1 + x is behind the rounding place, and x itself would be read with a needless exponent.
  if (-x.top() > heldPrecision(precision) + 2) return one();
  return correctlyRounded(value, precision, tieLimbs(x, precision));
}

HPNumber_c logarithm(const HPNumber_c& x, int32_t precision) {
  if (x.isInfinite || x.sign() <= 0) return undefined();
  if (compare(x, one()) == 0) return {};
  return correctlyRounded([&](mp_bitcnt_t bits) { return logOf(x, bits); }, precision, tieLimbs(x, precision));
}

HPNumber_c integerPower(const HPNumber_c& base, int64_t exponent, int32_t precision) {
  if (exponent == 0) return one();
  const bool negative = base.isNegative && exponent % 2 != 0;
  if (base.isZero()) return exponent > 0 ? HPNumber_c() : undefined();
  if (base.isInfinite) return exponent > 0 ? HPNumber_c::infinite(negative) : HPNumber_c();
  const HPNumber_c size = absolute(base);
  if (compare(size, one()) == 0) return HPNumber_c(negative ? -1 : 1);
  // log2 of the power; close to 1 the base has no exponent to overflow by.
  const HPByGMP log = HP::product(logOf(size, 64), HP::number(exponent), 64);
  if (std::abs(mpf_get_d(log.get())) > static_cast<double>(kMaxExponent) * 7 * std::log(10.0))
    return HP::sign(log) > 0 ? HPNumber_c::infinite(negative) : HPNumber_c();
  const uint64_t count = exponent < 0 ? 0 - static_cast<uint64_t>(exponent) : static_cast<uint64_t>(exponent);
  const auto value = [&](mp_bitcnt_t bits) {
    const HPByGMP power = HP::power(toFloat(base, bits + 72), count, bits + 4);
    return exponent > 0 ? power : HP::quotient(HP::number(1), power, bits + 4);
  };
  return correctlyRounded(value, precision, tieLimbs(base, precision));
}

HPNumber_c realPower(const HPNumber_c& base, const HPNumber_c& exponent, int32_t precision) {
  if (exponent.isZero()) return one();
  if (exponent.isInfinite) return exponential(multiply(exponent, logarithm(base, precision), precision), precision);
  const bool integer = exponent.isInteger();
  if (integer && exponent.top() <= 2) {
    int64_t n = 0;
    for (int64_t i = exponent.top() - 1; i >= 0; --i)
      n = n * kBase + (i >= exponent.exponent ? exponent.limbs[static_cast<std::size_t>(i - exponent.exponent)] : 0);
    return integerPower(base, exponent.isNegative ? -n : n, precision);
  }
  if (base.isZero()) return exponent.isNegative ? undefined() : HPNumber_c();
  if (base.isNegative && !integer) return undefined();
  const bool negative = base.isNegative && exponent.isOdd();
  if (base.isInfinite) return exponent.isNegative ? HPNumber_c() : HPNumber_c::infinite(negative);
  const HPNumber_c size = absolute(base);
  if (compare(size, one()) == 0) return HPNumber_c(negative ? -1 : 1);
  // The size of exponent * ln(base) decides over the reach, and how many bits the product needs before the point.
  const HPByGMP rough = HP::product(logOf(size, 64), toFloat(exponent, 64), 64);
  const int64_t bitsOfLog = HP::exponentOf(rough);
  if (bitsOfLog > HP::kExpBits) {
    if (HP::sign(rough) < 0) return {};
    return HPNumber_c::infinite(negative);
  }
  // 1 + d with d behind the rounding place.
  if (static_cast<double>(-bitsOfLog) > (heldPrecision(precision) + 2) * 23.26) return HPNumber_c(negative ? -1 : 1);
  const auto value = [&](mp_bitcnt_t bits) {
    const mp_bitcnt_t work = bits + 16 + static_cast<mp_bitcnt_t>(std::max<int64_t>(0, bitsOfLog));
    const HPByGMP power = HP::realExp(HP::product(logOf(size, work), toFloat(exponent, work), work), bits + 4);
    return negative ? HP::minus(power) : power;
  };
  return correctlyRounded(value, precision, tieLimbs(base, precision) + 3 * exponent.limbs.size());
}

HPNumber_c functionOf(const HPNumber_c& x, uint8_t code, int32_t precision) {
  switch (code) {
    case 41:
      return rounded(negated(x), precision);
    case 42:
      return rounded(absolute(x), precision);
    case 49:
      return squareRoot(x, precision);
    case 50:
      return logarithm(x, precision);
    case 51:
    case 52:
    case 53:
    case 54:
      return sineOrCosine(x, code, precision);
    case 55:
    case 56:
      return arcSineOrCosine(x, code == 55, precision);
    case 57:
      return arcTangent(x, precision);
    case 58:
      return arcCotangent(x, precision);
    case 59:
      return exponential(x, precision);
    case 61:
    case 62:
    case 63:
    case 64:
      return hyperbolic(x, code, precision);
    case 65:
    case 66:
    case 67:
    case 68:
      return inverseHyperbolic(x, code, precision);
    case 69:
      return rounded(integerPart(x), precision);
    default:
      return {};
  }
}

HPNumber_c functionOf(const HPNumber_c& a, const HPNumber_c& b, uint8_t code, int32_t precision) {
  switch (code) {
    case 0:
      return add(a, b, precision);
    case 1:
      return subtract(a, b, precision);
    case 2:
      return multiply(a, b, precision);
    case 3:
      return divide(a, b, precision);
    case 60:
      return realPower(a, b, precision);
    default:
      return {};
  }
}

}  // namespace HighPrecision
