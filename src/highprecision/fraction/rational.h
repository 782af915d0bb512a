// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <utility>

#include "highprecision/binary/hp_by_gmp.h"

namespace HP {

/// One GMP rational number.
class Rational {
 public:
  Rational() { mpq_init(value); }
  /// Zero, with room for parts of so many bits.
  explicit Rational(mp_bitcnt_t bits) {
    mpz_init2(mpq_numref(value), bits);
    mpz_init2(mpq_denref(value), bits);
    mpz_set_ui(mpq_denref(value), 1);
  }
  Rational(Rational&& other) noexcept : owns(std::exchange(other.owns, false)) { *value = *other.value; }
  Rational(const Rational&) = delete;
  Rational& operator=(const Rational&) = delete;
  ~Rational() {
    if (owns) mpq_clear(value);
  }

  /// Of the longer part, roughly.
  mp_bitcnt_t bits() const { return GMP_NUMB_BITS * std::max(mpz_size(up()), mpz_size(down())); }

  mpq_ptr get() { return value; }
  mpq_srcptr get() const { return value; }
  mpz_ptr up() { return mpq_numref(value); }
  mpz_srcptr up() const { return mpq_numref(value); }
  mpz_ptr down() { return mpq_denref(value); }
  mpz_srcptr down() const { return mpq_denref(value); }

 private:
  bool owns = true;  // false of one that was moved from: it is good for nothing more
  mpq_t value;
};

}  // namespace HP
