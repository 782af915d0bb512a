// SPDX-License-Identifier: Apache-2.0
#include "highprecision/decimal/hp_number.h"

#include <algorithm>

#include "highprecision/decimal/limb_sum.h"
#include "highprecision/decimal/limbs.h"
#include "highprecision/decimal/room.h"

namespace HighPrecision {

HPNumber_c::HPNumber_c(int64_t value) : HPNumber_c() {
  isNegative = value < 0;
  for (uint64_t rest = isNegative ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value); rest != 0;
       rest /= static_cast<uint64_t>(kBase))
    limbs.push_back(static_cast<int64_t>(rest % static_cast<uint64_t>(kBase)));
  normalise();
}

HPNumber_c::HPNumber_c(LimbVector limbsOfValue, int64_t exponentOfValue, bool negative)
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

void HPNumber_c::normalise() { keepHighest(SIZE_MAX); }

void HPNumber_c::round(int32_t precision) { keepHighest(static_cast<std::size_t>(heldPrecision(precision))); }

void HPNumber_c::keepHighest(std::size_t most) {
  if (isInfinite) return;
  const int64_t* const places = limbs.data();
  std::size_t end = limbs.size(), from = 0;
  while (end > 0 && places[end - 1] == 0) --end;
  bool up = false;
  if (end > most) {
    from = end - most;
    up = places[from - 1] >= kHalf;
  }
  // Low limbs that are zero, or that the carry makes zero.
  const int64_t gone = up ? kBase - 1 : 0;
  while (from < end && places[from] == gone) ++from;
  limbs.keep(from, end - from);
  exponent += static_cast<int64_t>(from);
  if (up && limbs.empty())
    limbs.push_back(1);
  else if (up)
    ++limbs[0];
  if (!limbs.empty() && top() > kMaxExponent) {
    *this = infinite(isNegative);
  } else if (limbs.empty() || top() < -kMaxExponent) {
    limbs.clear();
    exponent = 0;
    isNegative = false;
  }
}

HPNumber_c numberOfWords(std::span<const int64_t> words, int64_t exponent, bool negative) {
  LimbVector limbs(words);
  int64_t carry = 0;
  for (int64_t& limb : limbs) {  // word + carry may leave 64 bits: their quotients and remainders do not
    const int64_t low = limb % kBase + carry % kBase;
    carry = limb / kBase + carry / kBase + low / kBase;
    limb = low % kBase;
  }
  for (; carry != 0; carry /= kBase) limbs.push_back(carry % kBase);
  // Now each limb is within (-10^7, 10^7); the highest that is not 0 gives the sign of the whole.
  limbs.dropTopZeros();
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
  x.round(precision);
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

// The size of a finite number; it may stand at any place.
struct Size {
  explicit Size(const HPNumber_c& x) : limbs(x.limbs), exponent(x.exponent) {}
  Size(std::span<const int64_t> limbs, int64_t exponent) : limbs(limbs), exponent(exponent) {}
  int64_t top() const { return exponent + static_cast<int64_t>(limbs.size()); }

  std::span<const int64_t> limbs;
  int64_t exponent;
};

// Both have limbs.
int compareSizes(const Size& a, const Size& b) {
  if (a.top() != b.top()) return a.top() < b.top() ? -1 : 1;
  auto i = a.limbs.rbegin();
  auto j = b.limbs.rbegin();
  for (; i != a.limbs.rend() && j != b.limbs.rend(); ++i, ++j)
    if (*i != *j) return *i < *j ? -1 : 1;
  return i == a.limbs.rend() && j == b.limbs.rend() ? 0 : i == a.limbs.rend() ? -1 : 1;
}

// The power of 10^7 below which nothing can reach the rounding of x to `precision` limbs.
int64_t floorOf(const Size& x, int32_t precision) {
  return std::min(x.exponent, x.top() - heldPrecision(precision) - 1) - 1;
}

// A number other than 0 just below a floor: any speck does for it.
Size speckBelow(int64_t floor) {
  static constexpr int64_t kOne[] = {1};
  return {kOne, floor - 1};
}

// a + b for a at least as high as b, or a - b for a >= b, exact; not normalised.
HPNumber_c combined(const Size& a, const Size& b, bool minus, bool negative) {
  HPNumber_c sum;
  sum.isNegative = negative;
  sum.exponent = std::min(a.exponent, b.exponent);
  sum.limbs.makePlaces(static_cast<std::size_t>(a.top() - sum.exponent + 1));
  int64_t* const places = sum.limbs.data();
  std::span<const int64_t> higher = a.limbs;
  const auto below = static_cast<std::size_t>(b.exponent - sum.exponent);
  if (b.exponent < a.exponent) {
    fillPlaces(a.limbs, static_cast<std::size_t>(a.exponent - sum.exponent), sum.limbs);
    higher = {places, sum.limbs.size() - 1};
  } else {
    copyLimbs(higher.data(), below, places);
  }
  if (minus)
    subtractLimbs(higher.subspan(below), b.limbs, places + below);
  else
    addLimbs(higher.subspan(below), b.limbs, places + below);
  return sum;
}

HPNumber_c addSigned(const HPNumber_c& a, const HPNumber_c& b, bool bNegative, int32_t precision) {
  if (a.isInfinite || b.isInfinite) {
    if (a.isInfinite && b.isInfinite && a.isNegative != bNegative) return {};
    return HPNumber_c::infinite(a.isInfinite ? a.isNegative : bNegative);
  }
  if (b.isZero()) return rounded(a, precision);
  if (a.isZero()) {
    HPNumber_c sum = rounded(b, precision);
    sum.isNegative = bNegative && !sum.isZero();
    return sum;
  }
  const Size first(a), second(b);
  const bool minus = a.isNegative != bNegative;
  const int order = minus ? compareSizes(first, second) : first.top() < second.top() ? -1 : 1;
  if (order == 0) return {};
  const Size &higher = order < 0 ? second : first, &lower = order < 0 ? first : second;
  const int64_t floor = floorOf(higher, precision);
  const Size speck = speckBelow(floor);
  HPNumber_c sum = combined(higher, lower.top() < floor ? speck : lower, minus, order < 0 ? bNegative : a.isNegative);
  sum.round(precision);
  return sum;
}

}  // namespace

HPNumber_c add(const HPNumber_c& a, const HPNumber_c& b, int32_t precision) {
  return addSigned(a, b, b.isNegative, precision);
}

HPNumber_c subtract(const HPNumber_c& a, const HPNumber_c& b, int32_t precision) {
  return addSigned(a, b, !b.isNegative, precision);
}

HPNumber_c multiply(const HPNumber_c& a, const HPNumber_c& b, int32_t precision) {
  const bool negative = a.isNegative != b.isNegative;
  if (a.isInfinite || b.isInfinite) return HPNumber_c::infinite(negative);
  if (a.isZero() || b.isZero()) return {};
  HPNumber_c product;
  product.isNegative = negative;
  product.exponent = a.exponent + b.exponent;
  product.limbs.makePlaces(a.limbs.size() + b.limbs.size());
  multiplyLimbs(a.limbs, b.limbs, product.limbs);
  product.round(precision);
  return product;
}

HPNumber_c divide(const HPNumber_c& a, const HPNumber_c& b, int32_t precision) {
  const bool negative = a.isNegative != b.isNegative;
  if ((a.isZero() && b.isZero()) || (a.isInfinite && b.isInfinite)) return HPNumber_c(1);
  if (a.isInfinite || b.isZero()) return HPNumber_c::infinite(negative);
  if (b.isInfinite || a.isZero()) return {};
  // One limb more than asked for: the quotient is cut, and the limb behind the last kept one decides the rounding.
  // Lower limbs of the dividend do not reach the floor of the quotient there.
  HPNumber_c quotient;
  quotient.isNegative = negative;
  quotient.limbs.makePlaces(static_cast<std::size_t>(heldPrecision(precision)) + 1);
  const auto dividend = static_cast<int64_t>(a.limbs.size()), divisor = static_cast<int64_t>(b.limbs.size());
  const bool less = compareSizes({a.limbs, -dividend}, {b.limbs, -divisor}) < 0;
  const int64_t padding = divisor + static_cast<int64_t>(quotient.limbs.size()) - int64_t{!less} - dividend;
  const std::span<const int64_t> limbs(a.limbs);
  divideLimbs(limbs.subspan(static_cast<std::size_t>(std::max<int64_t>(0, -padding))),
              static_cast<std::size_t>(std::max<int64_t>(0, padding)), b.limbs, quotient.limbs);
  quotient.exponent = a.exponent - b.exponent - padding;
  quotient.round(precision);
  return quotient;
}

HPNumber_c squareRoot(const HPNumber_c& x, int32_t precision) {
  if (x.isInfinite || x.isNegative) return HPNumber_c::infinite(false);
  if (x.isZero()) return {};
  std::size_t padding = x.exponent % 2 != 0 ? 1 : 0;
  const std::size_t wanted = 2 * static_cast<std::size_t>(heldPrecision(precision)) + 2;
  if (x.limbs.size() + padding < wanted) padding += (wanted - x.limbs.size() - padding + 1) / 2 * 2;
  HPNumber_c root;
  root.exponent = (x.exponent - static_cast<int64_t>(padding)) / 2;
  root.limbs.makePlaces((x.limbs.size() + padding + 1) / 2);
  squareRootLimbs(x.limbs, padding, root.limbs);
  root.round(precision);
  return root;
}

HPNumber_c integerPart(HPNumber_c x) {
  if (x.isInfinite || x.exponent >= 0) return x;
  const int64_t fraction = std::min(-x.exponent, static_cast<int64_t>(x.limbs.size()));
  x.limbs.dropLow(static_cast<std::size_t>(fraction));
  x.exponent += fraction;
  x.normalise();
  return x;
}

int compare(const HPNumber_c& a, const HPNumber_c& b) {
  if (a.sign() != b.sign()) return a.sign() < b.sign() ? -1 : 1;
  if (a.isZero()) return 0;
  const int size =
      a.isInfinite || b.isInfinite ? int(a.isInfinite) - int(b.isInfinite) : compareSizes(Size(a), Size(b));
  return a.isNegative ? -size : size;
}

HPNumber_c nudged(const HPNumber_c& x, bool up, int32_t precision) {
  HPNumber_c result = combined(Size(x), speckBelow(floorOf(Size(x), precision)), !up, x.isNegative);
  result.normalise();
  return result;
}

}  // namespace HighPrecision
