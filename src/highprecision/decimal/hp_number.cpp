// SPDX-License-Identifier: Apache-2.0
#include "highprecision/decimal/hp_number.h"

#include <algorithm>

#include "highprecision/decimal/limbs.h"

namespace HighPrecision {

HPNumber_c::HPNumber_c(int64_t value) : HPNumber_c() {
  isNegative = value < 0;
  for (uint64_t rest = isNegative ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value); rest != 0;
       rest /= static_cast<uint64_t>(kBase))
    limbs.push_back(static_cast<int64_t>(rest % static_cast<uint64_t>(kBase)));
  normalise();
}

HPNumber_c::HPNumber_c(std::vector<int64_t> limbsOfValue, int64_t exponentOfValue, bool negative)
    : exponent(exponentOfValue), isNegative(negative), limbs(std::move(limbsOfValue)) {
  typeCode = 13;
  normalise();
}

HPNumber_c HPNumber_c::infinite(bool negative) {
  HPNumber_c x;
  x.isInfinite = true;
  x.isNegative = negative;
  return x;
}

void HPNumber_c::normalise() {
  if (isInfinite) return;
  while (!limbs.empty() && limbs.back() == 0) limbs.pop_back();
  std::size_t zeros = 0;
  while (zeros < limbs.size() && limbs[zeros] == 0) ++zeros;
  limbs.erase(limbs.begin(), limbs.begin() + static_cast<std::ptrdiff_t>(zeros));
  exponent += static_cast<int64_t>(zeros);
  if (!limbs.empty() && top() > kMaxExponent) {
    *this = infinite(isNegative);
  } else if (limbs.empty() || top() < -kMaxExponent) {
    limbs.clear();
    exponent = 0;
    isNegative = false;
  }
}

HPNumber_c numberOfWords(std::span<const int64_t> words, int64_t exponent, bool negative) {
  std::vector<int64_t> limbs(words.begin(), words.end());
  int64_t carry = 0;
  for (int64_t& limb : limbs) {  // word + carry may leave 64 bits: their quotients and remainders do not
    const int64_t low = limb % kBase + carry % kBase;
    carry = limb / kBase + carry / kBase + low / kBase;
    limb = low % kBase;
  }
  for (; carry != 0; carry /= kBase) limbs.push_back(carry % kBase);
  // Now each limb is within (-10^7, 10^7); the highest that is not 0 gives the sign of the whole.
  while (!limbs.empty() && limbs.back() == 0) limbs.pop_back();
  if (!limbs.empty() && limbs.back() < 0) {
    for (int64_t& limb : limbs) limb = -limb;
    negative = !negative;
  }
  int64_t borrow = 0;
  for (int64_t& limb : limbs) {
    limb -= borrow;
    borrow = limb < 0;
    limb += borrow * kBase;
  }
  return {std::move(limbs), exponent, negative};
}

int32_t heldPrecision(int32_t precision) { return std::clamp(precision, 1, kMaxPrecision); }

HPNumber_c rounded(HPNumber_c x, int32_t precision) {
  const auto kept = static_cast<std::size_t>(heldPrecision(precision));
  while (!x.limbs.empty() && x.limbs.back() == 0) x.limbs.pop_back();
  if (x.limbs.size() > kept) {
    const std::size_t dropped = x.limbs.size() - kept;
    const bool up = x.limbs[dropped - 1] >= kHalf;
    x.limbs.erase(x.limbs.begin(), x.limbs.begin() + static_cast<std::ptrdiff_t>(dropped));
    x.exponent += static_cast<int64_t>(dropped);
    if (up) {
      std::size_t i = 0;
      while (i < x.limbs.size() && x.limbs[i] == kBase - 1) x.limbs[i++] = 0;
      if (i < x.limbs.size())
        ++x.limbs[i];
      else
        x.limbs.push_back(1);
    }
  }
  x.normalise();
  return x;
}

HPNumber_c negated(HPNumber_c x) {
  x.isNegative = !x.isNegative && !x.isZero();
  return x;
}

HPNumber_c absolute(HPNumber_c x) {
  x.isNegative = false;
  return x;
}

namespace {

// Both have limbs.
int compareMagnitudes(const HPNumber_c& a, const HPNumber_c& b) {
  if (a.top() != b.top()) return a.top() < b.top() ? -1 : 1;
  auto i = a.limbs.rbegin();
  auto j = b.limbs.rbegin();
  for (; i != a.limbs.rend() && j != b.limbs.rend(); ++i, ++j)
    if (*i != *j) return *i < *j ? -1 : 1;
  return i == a.limbs.rend() && j == b.limbs.rend() ? 0 : i == a.limbs.rend() ? -1 : 1;
}

// |a| + |b| or |a| - |b| for |a| >= |b|, exact.
HPNumber_c combineMagnitudes(const HPNumber_c& a, const HPNumber_c& b, bool minus) {
  const int64_t low = std::min(a.exponent, b.exponent);
  HPNumber_c sum;
  sum.exponent = low;
  sum.limbs.assign(static_cast<std::size_t>(std::max(a.top(), b.top()) - low + 1), 0);
  std::copy(a.limbs.begin(), a.limbs.end(), sum.limbs.begin() + (a.exponent - low));
  int64_t* place = sum.limbs.data() + (b.exponent - low);
  // Carries of random limbs are not to be foreseen: no branch on them.
  int64_t carry = 0;
  if (minus) {
    for (const int64_t limb : b.limbs) {
      const int64_t difference = *place - limb - carry;
      carry = difference < 0;
      *place++ = difference + (-carry & kBase);
    }
    for (; carry != 0; ++place) {
      carry = *place == 0;
      *place += carry != 0 ? kBase - 1 : -1;
    }
  } else {
    for (const int64_t limb : b.limbs) {
      const int64_t total = *place + limb + carry;
      carry = total >= kBase;
      *place++ = total - (-carry & kBase);
    }
    for (; carry != 0; ++place) {
      carry = *place == kBase - 1;
      *place += carry != 0 ? 1 - kBase : 1;
    }
  }
  return sum;
}

// The power of 10^7 below which nothing can reach the rounding of x to `precision` limbs.
int64_t floorOf(const HPNumber_c& x, int32_t precision) {
  return std::min(x.exponent, x.top() - heldPrecision(precision) - 1) - 1;
}

// The signs are in a and b; `b` may be far below `a`.
HPNumber_c addFinite(const HPNumber_c& first, const HPNumber_c& second, int32_t precision) {
  if (second.isZero()) return rounded(first, precision);
  if (first.isZero()) return rounded(second, precision);
  const int order = compareMagnitudes(first, second);
  const bool minus = first.isNegative != second.isNegative;
  if (order == 0 && minus) return {};
  const HPNumber_c& a = order < 0 ? second : first;
  const HPNumber_c& b = order < 0 ? first : second;
  HPNumber_c sum;
  if (b.top() < floorOf(a, precision)) {  // only that b is not 0 can matter: any speck does for it
    HPNumber_c speck;
    speck.limbs = {1};
    speck.exponent = floorOf(a, precision) - 1;
    sum = combineMagnitudes(a, speck, minus);
  } else {
    sum = combineMagnitudes(a, b, minus);
  }
  sum.isNegative = a.isNegative;
  return rounded(std::move(sum), precision);
}

}  // namespace

HPNumber_c add(const HPNumber_c& a, const HPNumber_c& b, int32_t precision) {
  if (a.isInfinite || b.isInfinite) {
    if (a.isInfinite && b.isInfinite && a.isNegative != b.isNegative) return {};
    return HPNumber_c::infinite(a.isInfinite ? a.isNegative : b.isNegative);
  }
  return addFinite(a, b, precision);
}

HPNumber_c subtract(const HPNumber_c& a, const HPNumber_c& b, int32_t precision) {
  return add(a, negated(b), precision);
}

HPNumber_c multiply(const HPNumber_c& a, const HPNumber_c& b, int32_t precision) {
  const bool negative = a.isNegative != b.isNegative;
  if (a.isInfinite || b.isInfinite) return HPNumber_c::infinite(negative);
  if (a.isZero() || b.isZero()) return {};
  HPNumber_c product;
  product.limbs = multiplyLimbs(a.limbs, b.limbs);
  product.exponent = a.exponent + b.exponent;
  product.isNegative = negative;
  return rounded(std::move(product), precision);
}

HPNumber_c divide(const HPNumber_c& a, const HPNumber_c& b, int32_t precision) {
  const bool negative = a.isNegative != b.isNegative;
  if ((a.isZero() && b.isZero()) || (a.isInfinite && b.isInfinite)) return HPNumber_c(1);
  if (a.isInfinite || b.isZero()) return HPNumber_c::infinite(negative);
  if (b.isInfinite || a.isZero()) return {};
  // One limb more than asked for: the quotient is cut, and the limb behind the last kept one decides the rounding.
  const std::size_t wanted = b.limbs.size() + 1 + static_cast<std::size_t>(heldPrecision(precision));
  const std::size_t padding = wanted > a.limbs.size() ? wanted - a.limbs.size() : 0;
  HPNumber_c quotient;
  quotient.limbs = divideLimbs(a.limbs, padding, b.limbs);
  quotient.exponent = a.exponent - b.exponent - static_cast<int64_t>(padding);
  quotient.isNegative = negative;
  return rounded(std::move(quotient), precision);
}

HPNumber_c squareRoot(const HPNumber_c& x, int32_t precision) {
  if (x.isInfinite || x.isNegative) return HPNumber_c::infinite(false);
  if (x.isZero()) return {};
  std::size_t padding = x.exponent % 2 != 0 ? 1 : 0;
  const std::size_t wanted = 2 * static_cast<std::size_t>(heldPrecision(precision)) + 2;
  if (x.limbs.size() + padding < wanted) padding += (wanted - x.limbs.size() - padding + 1) / 2 * 2;
  HPNumber_c root;
  root.limbs = squareRootLimbs(x.limbs, padding);
  root.exponent = (x.exponent - static_cast<int64_t>(padding)) / 2;
  return rounded(std::move(root), precision);
}

HPNumber_c integerPart(HPNumber_c x) {
  if (x.isInfinite || x.exponent >= 0) return x;
  const int64_t fraction = std::min(-x.exponent, static_cast<int64_t>(x.limbs.size()));
  x.limbs.erase(x.limbs.begin(), x.limbs.begin() + fraction);
  x.exponent += fraction;
  x.normalise();
  return x;
}

int compare(const HPNumber_c& a, const HPNumber_c& b) {
  if (a.sign() != b.sign()) return a.sign() < b.sign() ? -1 : 1;
  if (a.isZero()) return 0;
  const int size = a.isInfinite || b.isInfinite ? int(a.isInfinite) - int(b.isInfinite) : compareMagnitudes(a, b);
  return a.isNegative ? -size : size;
}

HPNumber_c nudged(const HPNumber_c& x, bool up, int32_t precision) {
  HPNumber_c speck;
  speck.limbs = {1};
  speck.exponent = floorOf(x, precision) - 1;
  HPNumber_c result = combineMagnitudes(x, speck, !up);
  result.isNegative = x.isNegative;
  result.normalise();
  return result;
}

}  // namespace HighPrecision
