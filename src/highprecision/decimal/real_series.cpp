// SPDX-License-Identifier: Apache-2.0
#include "highprecision/decimal/real_series.h"

#include <cmath>
#include <vector>

namespace HP {
namespace {

// y^0 .. y^(m-1), and y^m as the last.
std::vector<Integer> powersOf(const Integer& y, int64_t point, std::size_t m) {
  std::vector<Integer> powers(m + 1);
  mpz_setbit(powers[0].get(), static_cast<mp_bitcnt_t>(point));
  if (m > 0) powers[1] = y;
  for (std::size_t i = 2; i <= m; ++i) {
    mpz_mul(powers[i].get(), powers[i / 2].get(), powers[i - i / 2].get());
    mpz_tdiv_q_2exp(powers[i].get(), powers[i].get(), static_cast<mp_bitcnt_t>(point));
  }
  return powers;
}

std::size_t blockOf(std::size_t terms) {
  const auto m = static_cast<std::size_t>(std::sqrt(static_cast<double>(terms)));
  return m < 1 ? 1 : m;
}

// Bits that a factor y takes off a term.
double fallOf(const Integer& y, int64_t point) {
  return static_cast<double>(point) - static_cast<double>(mpz_sizeinbase(y.get(), 2));
}

void moveBlock(Integer& sum, const Integer& power, int64_t point) {
  mpz_mul(sum.get(), sum.get(), power.get());
  mpz_tdiv_q_2exp(sum.get(), sum.get(), static_cast<mp_bitcnt_t>(point));
}

}  // namespace

Integer factorialSeries(const Integer& y, int64_t point, unsigned step, unsigned first) {
  // (step k + first)! / (step (k-1) + first)!
  const auto ratio = [step, first](std::size_t k) {
    const uint64_t top = step * k + first;
    return step == 1 ? top : top * (top - 1);
  };
  const double fall = fallOf(y, point);
  std::size_t terms = 1;
  for (double size = 0; size < static_cast<double>(point) + 8; ++terms)
    size += fall + std::log2(static_cast<double>(ratio(terms)));
  const std::size_t m = blockOf(terms);
  const std::vector<Integer> powers = powersOf(y, point, m);
  // The sum of the terms from k on, times factor * (step k + first)!, the power of y at the block's begin taken out.
  Integer sum;
  uint64_t factor = 1;
  for (std::size_t k = terms; k-- > 0;) {
    if (k + 1 < terms) {
      const uint64_t next = ratio(k + 1);
      if (factor > UINT64_MAX / next) {
        mpz_tdiv_q_ui(sum.get(), sum.get(), factor);
        factor = 1;
      }
      factor *= next;
    }
    mpz_addmul_ui(sum.get(), powers[k % m].get(), factor);
    if (k % m == 0 && k > 0) moveBlock(sum, powers[m], point);
  }
  mpz_tdiv_q_ui(sum.get(), sum.get(), factor);
  if (first == 2) mpz_tdiv_q_2exp(sum.get(), sum.get(), 1);
  return sum;
}

Integer reciprocalSeries(const Integer& y, int64_t point) {
  const double fall = fallOf(y, point);
  const std::size_t terms = static_cast<std::size_t>((static_cast<double>(point) + 8) / (fall > 0.5 ? fall : 0.5)) + 2;
  const std::size_t m = blockOf(terms);
  const std::vector<Integer> powers = powersOf(y, point, m);
  // The sum of the terms from k on, times the common denominator of a group of terms.
  Integer sum;
  uint64_t common = 1;
  for (std::size_t k = terms; k > 0;) {
    uint64_t next = 2 * k - 1;  // of the term k - 1
    std::size_t begin = k - 1;
    while (begin > 0 && next <= UINT64_MAX / (2 * begin - 1)) next *= 2 * begin-- - 1;
    mpz_tdiv_q_ui(sum.get(), sum.get(), common);
    mpz_mul_ui(sum.get(), sum.get(), next);
    common = next;
    while (k > begin) {
      --k;
      mpz_addmul_ui(sum.get(), powers[k % m].get(), common / (2 * k + 1));
      if (k % m == 0 && k > 0) moveBlock(sum, powers[m], point);
    }
  }
  mpz_tdiv_q_ui(sum.get(), sum.get(), common);
  return sum;
}

}  // namespace HP
