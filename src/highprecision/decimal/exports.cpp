// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "frame/handle.h"
#include "highprecision/decimal/hp_functions.h"
#include "orvane/highprecision.h"

using namespace HighPrecision;

template <>
struct NativeOf<HPNumber> {
  using type = HPNumber_c;
};

namespace {

// The number is made in its place.
HPNumber* made(const auto& make) { return registered<HPNumber>(std::unique_ptr<HPNumber_c>(new HPNumber_c(make()))); }

}  // namespace

HPNumber* hp_CreateByValue(int64_t value) {
  return made([&] { return HPNumber_c(value); });
}

HPNumber* hp_CreateByValue2(const int64_t* limbs, int32_t count, int32_t exponent, bool negative) {
  return made([&] { return numberOfWords(span(limbs, count), exponent, negative); });
}

HPNumber* hp_Conversion(const int32_t* integerDigits, int32_t integerCount, const int32_t* fractionDigits,
                        int32_t fractionCount, int32_t base, bool negative, int32_t precision) {
  return made([&] {
    return convert(span(integerDigits, integerCount), span(fractionDigits, fractionCount), base, negative, precision);
  });
}

void hp_Attribute(const HPNumber* number, int64_t* out) {
  const HPNumber_c& x = native(number);
  const int64_t attributes[] = {x.isInfinite, x.isNegative, static_cast<int64_t>(x.limbs.size()), x.exponent};
  std::copy(std::begin(attributes), std::end(attributes), out);
}

void hp_GetValue(const HPNumber* number, int64_t* out) {
  const HPNumber_c& x = native(number);
  std::copy(x.limbs.begin(), x.limbs.end(), out);
}

HPNumber* hp_Fun1(const HPNumber* number, uint8_t code, int32_t precision) {
  return made([&] { return functionOf(native(number), code, precision); });
}

HPNumber* hp_Fun2(const HPNumber* a, const HPNumber* b, uint8_t code, int32_t precision) {
  return made([&] { return functionOf(native(a), native(b), code, precision); });
}

HPNumber* hp_Pow(const HPNumber* number, int64_t exponent, int32_t precision) {
  return made([&] { return integerPower(native(number), exponent, precision); });
}

int32_t hp_Compare(const HPNumber* a, const HPNumber* b) { return compare(native(a), native(b)) + 1; }

bool hp_IsEqu(const HPNumber* a, const HPNumber* b) { return compare(native(a), native(b)) == 0; }

int32_t hp_CompareZero(const HPNumber* number) { return native(number).sign() + 1; }
