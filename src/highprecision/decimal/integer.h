// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

#include "highprecision/binary/hp_by_gmp.h"
#include "highprecision/decimal/limb_vector.h"

namespace HP {

/// One GMP integer.
class Integer {
 public:
  Integer() { mpz_init(value); }
  explicit Integer(int64_t x) { mpz_init_set_si(value, x); }
  Integer(const Integer& other) { mpz_init_set(value, other.value); }
  Integer(Integer&& other) noexcept : Integer() { mpz_swap(value, other.value); }
  Integer& operator=(const Integer& other) {
    mpz_set(value, other.value);
    return *this;
  }
  Integer& operator=(Integer&& other) noexcept {
    mpz_swap(value, other.value);
    return *this;
  }
  ~Integer() { mpz_clear(value); }

  mpz_ptr get() { return value; }
  mpz_srcptr get() const { return value; }
  int sign() const { return mpz_sgn(value); }
  std::size_t bits() const { return mpz_sizeinbase(value, 2); }

 private:
  mpz_t value;
};

/// Sum of limbs[i] * 10^(7 i), each limb in 0..9999999.
Integer integerOfLimbs(std::span<const int64_t> limbs);
void setToLimbs(mpz_ptr x, std::span<const int64_t> limbs);

/// The limbs of |x|, least significant first, without zero limbs at the top; empty for 0.
HighPrecision::LimbVector limbsOfInteger(mpz_srcptr x);
inline HighPrecision::LimbVector limbsOfInteger(const Integer& x) { return limbsOfInteger(x.get()); }

/// 10^n.
Integer powerOfTen(unsigned long n);

}  // namespace HP
