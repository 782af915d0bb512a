// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "frame/handle.h"
#include "highprecision/fraction/fraction_number.h"
#include "orvane/fraction.h"

using namespace HighPrecision;

template <>
struct NativeOf<FractionNumber> {
  using type = FractionNumber_c;
};

namespace {

FractionNumber* made(FractionNumber_c x) {
  return registered<FractionNumber>(std::make_unique<FractionNumber_c>(std::move(x)));
}

}  // namespace

FractionNumber* fraction_create(const int64_t* numerator, int32_t numeratorCount, const int64_t* denominator,
                                int32_t denominatorCount, bool negative) {
  return made(fractionOfWords(span(numerator, numeratorCount), span(denominator, denominatorCount), negative));
}

FractionNumber* fraction_fun(const FractionNumber* a, int32_t precision, int64_t n, uint8_t code) {
  return made(functionOf(native(a), precision, n, code));
}

FractionNumber* fraction_fun2(const FractionNumber* a, const FractionNumber* b, uint8_t code, uint8_t* status) {
  bool exact = true;
  FractionNumber_c result = functionOf(native(a), native(b), code, exact);
  if (status != nullptr) *status = exact;
  return made(std::move(result));
}

FractionNumber* fraction_InvSum(const int64_t* values, int32_t count) { return made(inverseSum(span(values, count))); }

int32_t fraction_compare(const FractionNumber* a, const FractionNumber* b) { return compare(native(a), native(b)) + 1; }

int32_t fraction_ToFloat(const FractionNumber* a, int64_t* out, int32_t* count, int32_t precision) {
  const HPNumber_c quotient = numberOf(native(a), precision);
  std::reverse_copy(quotient.limbs.begin(), quotient.limbs.end(), out);
  *count = static_cast<int32_t>(quotient.limbs.size());
  return static_cast<int32_t>(quotient.exponent);
}

void fraction_attribute(const FractionNumber* a, int32_t* out) {
  const FractionNumber_c& x = native(a);
  out[0] = x.isInfinite;
  out[1] = x.isNegative;
  out[2] = static_cast<int32_t>(x.numerator().size());
  out[3] = static_cast<int32_t>(x.denominator().size());
  out[4] = static_cast<int32_t>(x.denominator()[0]);
}

void fraction_data(const FractionNumber* a, int64_t* numerator, int64_t* denominator) {
  const FractionNumber_c& x = native(a);
  std::copy(x.numerator().begin(), x.numerator().end(), numerator);
  std::copy(x.denominator().begin(), x.denominator().end(), denominator);
}
