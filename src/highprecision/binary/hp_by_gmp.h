// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gmp.h>

#include <mutex>

namespace HP {

/// One GMP float. Made with the GMP default precision unless a precision in bits is given.
class HPByGMP {
 public:
  HPByGMP() { mpf_init(value); }
  explicit HPByGMP(mp_bitcnt_t bits) { mpf_init2(value, bits); }
  HPByGMP(mp_bitcnt_t bits, double x) : HPByGMP(bits) { mpf_set_d(value, x); }
  HPByGMP(const HPByGMP& other) {
    mpf_init2(value, mpf_get_prec(other.value));
    mpf_set(value, other.value);
  }
  HPByGMP& operator=(const HPByGMP& other) {
    mpf_set(value, other.value);
    return *this;
  }
  ~HPByGMP() { mpf_clear(value); }

  mpf_ptr get() { return value; }
  mpf_srcptr get() const { return value; }
  double toDouble() const { return mpf_get_d(value); }

 private:
  mpf_t value;
};

/// Sets the process-wide GMP default precision for the life of the object. Objects of several threads may overlap: the
/// first one in keeps the precision that it found, the last one out puts it back.
class DefaultPrecision {
 public:
  explicit DefaultPrecision(mp_bitcnt_t bits) {
    const std::lock_guard<std::mutex> lock(mutex);
    if (users++ == 0) found = mpf_get_default_prec();
    mpf_set_default_prec(bits);
  }
  ~DefaultPrecision() {
    const std::lock_guard<std::mutex> lock(mutex);
    if (--users == 0) mpf_set_default_prec(found);
  }
  DefaultPrecision(const DefaultPrecision&) = delete;
  DefaultPrecision& operator=(const DefaultPrecision&) = delete;

 private:
  static inline std::mutex mutex;
  static inline int users = 0;
  static inline mp_bitcnt_t found = 0;
};

}  // namespace HP
