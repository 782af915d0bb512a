// SPDX-License-Identifier: Apache-2.0
#include "highprecision/binary/float_ops.h"

namespace HP {

HPByGMP sum(const HPByGMP& a, const HPByGMP& b, mp_bitcnt_t bits) {
  HPByGMP result(bits);
  mpf_add(result.get(), a.get(), b.get());
  return result;
}

HPByGMP difference(const HPByGMP& a, const HPByGMP& b, mp_bitcnt_t bits) {
  HPByGMP result(bits);
  mpf_sub(result.get(), a.get(), b.get());
  return result;
}

HPByGMP product(const HPByGMP& a, const HPByGMP& b, mp_bitcnt_t bits) {
  HPByGMP result(bits);
  mpf_mul(result.get(), a.get(), b.get());
  return result;
}

HPByGMP quotient(const HPByGMP& a, const HPByGMP& b, mp_bitcnt_t bits) {
  HPByGMP result(bits);
  mpf_div(result.get(), a.get(), b.get());
  return result;
}

HPByGMP root(const HPByGMP& x, mp_bitcnt_t bits) {
  HPByGMP result(bits);
  mpf_sqrt(result.get(), x.get());
  return result;
}

HPByGMP plus(const HPByGMP& a, long n, mp_bitcnt_t bits) {
  HPByGMP result(bits);
  if (n >= 0)
    mpf_add_ui(result.get(), a.get(), static_cast<unsigned long>(n));
  else
    mpf_sub_ui(result.get(), a.get(), 0 - static_cast<unsigned long>(n));
  return result;
}

HPByGMP minus(const HPByGMP& a) {
  HPByGMP result(a);
  mpf_neg(result.get(), result.get());
  return result;
}

HPByGMP absolute(const HPByGMP& a) {
  HPByGMP result(a);
  mpf_abs(result.get(), result.get());
  return result;
}

HPByGMP scaled(const HPByGMP& a, int64_t shift) {
  HPByGMP result(mpf_get_prec(a.get()));
  if (shift >= 0)
    mpf_mul_2exp(result.get(), a.get(), static_cast<mp_bitcnt_t>(shift));
  else
    mpf_div_2exp(result.get(), a.get(), static_cast<mp_bitcnt_t>(-shift));
  return result;
}

HPByGMP held(const HPByGMP& a, mp_bitcnt_t bits) {
  HPByGMP result(bits);
  mpf_set(result.get(), a.get());
  return result;
}

HPByGMP number(long n) {
  HPByGMP result(64);
  mpf_set_si(result.get(), n);
  return result;
}

HPByGMP power(const HPByGMP& base, uint64_t n, mp_bitcnt_t bits) {
  HPByGMP result(bits + 72);  // an error grows n times
  mpf_pow_ui(result.get(), base.get(), n);
  return held(result, bits);
}

int64_t exponentOf(const HPByGMP& a) {
  if (sign(a) == 0) return 0;
  long exponent = 0;
  mpf_get_d_2exp(&exponent, a.get());
  return exponent;
}

Integer fixedOf(const HPByGMP& x, int64_t point) {
  Integer result;
  const HPByGMP moved = scaled(x, point);
  mpz_set_f(result.get(), moved.get());
  return result;
}

HPByGMP floatOf(const Integer& x, int64_t point, mp_bitcnt_t bits) {
  HPByGMP result(bits);
  mpf_set_z(result.get(), x.get());
  if (point >= 0)
    mpf_div_2exp(result.get(), result.get(), static_cast<mp_bitcnt_t>(point));
  else
    mpf_mul_2exp(result.get(), result.get(), static_cast<mp_bitcnt_t>(-point));
  return result;
}

}  // namespace HP
