// SPDX-License-Identifier: Apache-2.0
#include "highprecision/decimal/integer.h"

#include <vector>

namespace HP {
namespace {

constexpr int kLimbDigits = 7;
// Up to these sizes, limbs there and words here, two limbs at a time are quicker than GMP's change of radix with its
// digit string.
constexpr std::size_t kFewLimbs = 100;
constexpr mp_size_t kFewWords = 22;
constexpr unsigned long kLimb = 10000000, kTwoLimbs = kLimb * kLimb;

}  // namespace

void setToLimbs(mpz_ptr x, std::span<const int64_t> limbs) {
  if (limbs.empty()) return mpz_set_ui(x, 0);
  // The room follows from 10^7 < 2^24.
  const mp_ptr words = mpz_limbs_write(x, static_cast<mp_size_t>(limbs.size() * 24 / GMP_NUMB_BITS + 2));
  if (limbs.size() <= kFewLimbs) {
    std::size_t i = limbs.size();
    words[0] = i % 2 != 0 ? static_cast<mp_limb_t>(limbs[--i]) : 0;
    mp_size_t count = 1;
    for (; i > 0; i -= 2) {
      const mp_limb_t pair = static_cast<mp_limb_t>(limbs[i - 1]) * kLimb + static_cast<mp_limb_t>(limbs[i - 2]);
      const mp_limb_t over = mpn_mul_1(words, words, count, kTwoLimbs) + mpn_add_1(words, words, count, pair);
      if (over != 0) words[count++] = over;
    }
    return mpz_limbs_finish(x, count);
  }
  std::vector<unsigned char> digits(limbs.size() * kLimbDigits);
  unsigned char* end = digits.data() + digits.size();
  for (const int64_t limb : limbs) {
    auto rest = static_cast<uint32_t>(limb);
    for (int i = 0; i < kLimbDigits; ++i) {
      *--end = static_cast<unsigned char>(rest % 10);
      rest /= 10;
    }
  }
  // Leading zeros are allowed.
  mpz_limbs_finish(x, mpn_set_str(words, digits.data(), digits.size(), 10));
}

Integer integerOfLimbs(std::span<const int64_t> limbs) {
  Integer result;
  setToLimbs(result.get(), limbs);
  return result;
}

HighPrecision::LimbVector limbsOfInteger(mpz_srcptr x) {
  if (mpz_sgn(x) == 0) return {};
  Integer work;
  mpz_set(work.get(), x);
  HighPrecision::LimbVector limbs;
  auto words = static_cast<mp_size_t>(mpz_size(work.get()));
  mp_ptr rest = mpz_limbs_modify(work.get(), words);
  if (words <= kFewWords) {
    limbs.reserve(static_cast<std::size_t>(words) * 3 + 2);
    while (words > 0) {
      const mp_limb_t pair = mpn_divrem_1(rest, 0, rest, words, kTwoLimbs);
      limbs.push_back(static_cast<int64_t>(pair % kLimb));
      limbs.push_back(static_cast<int64_t>(pair / kLimb));
      while (words > 0 && rest[words - 1] == 0) --words;
    }
    limbs.dropTopZeros();
    return limbs;
  }
  std::vector<unsigned char> digits(mpz_sizeinbase(work.get(), 10) + 2);
  const std::size_t count = mpn_get_str(digits.data(), 10, rest, words);
  limbs.reserve(count / kLimbDigits + 1);
  for (std::size_t end = count; end > 0;) {
    const std::size_t begin = end > kLimbDigits ? end - kLimbDigits : 0;
    uint32_t limb = 0;
    for (std::size_t i = begin; i < end; ++i) limb = limb * 10 + digits[i];
    limbs.push_back(limb);
    end = begin;
  }
  limbs.dropTopZeros();
  return limbs;
}

Integer powerOfTen(unsigned long n) {
  Integer result;
  mpz_ui_pow_ui(result.get(), 5, n);
  mpz_mul_2exp(result.get(), result.get(), n);
  return result;
}

}  // namespace HP
