// SPDX-License-Identifier: Apache-2.0
#include "special/hypergeometric/hypergeometric_fast.h"

#include <cfenv>
#include <cfloat>
#include <cmath>
#include <limits>

#include "special/hypergeometric/hypergeometric_series_gmp.h"

// The series once more in double-double arithmetic, with a bound that proves the double.
//
// Let u = 2^-53, t_n the exact terms, N the number of terms, A = sum |t_n|.
//
// 1. Parameters. a_i + n is exact: here as the pair of TwoSum (Knuth, TAOCP 2, 4.2.2), in GMP because with
//    2^-60 <= |a_i| <= 2^40 it is a multiple of 2^-112 below 2^41 and so fits the 3 limbs of a 128-bit mpf.
// 2. Products (xh+xl)(yh+yl), |xl| <= k u |xh|, |yl| <= m u |yh| (Dekker, Numer. Math. 18, 1971; Hida, Li, Bailey,
//    ARITH-15, 2001): head p = fl(xh yh), tail fl(fl(err + xh yl) + xl yh), where err = xh yh - p is exact. Up to four
//    roundings of tails below (1 + k + m) u |p| and the dropped xl yl give a relative error of at most
//    (2(1 + k + m) + (k + m) + k m) u^2, and a tail of at most (1 + k + m) u |p|. Numerator and denominator of a ratio
//    of at most three upper and three lower parameters: 43 u^2 each, tails 7 u.
// 3. Quotient, tails 7 u in both: q1 = fl(nh fl(1/dh)), r = nh - q1 dh (3 u), r - q1 dl, + nl: 3 + 7 + 10 + 17 units of
//    u^2; q2 = fl(r fl(1/dh)): 34; dividing by dh in place of dh + dl: 119. With 2. at most 276 u^2 a ratio.
// 4. Terms: t_n = t_(n-1) r_(n-1), normalised every kBlock = 8 terms, so that the tail stays below 17 u: by 2. with
//    k = 17, m = 1 another 73 u^2. Together less than 2^9 u^2 a step: the relative error of t_n is below n 2^-96.
// 5. Sum: TwoSum on the heads is exact. The tail of the sum is below 32 u A between two normalisations; its two
//    roundings a term add less than 64 u^2 A.
// 6. GMP: a product cuts its operands to 3 limbs, a sum too, and the top limb may hold one bit only, hence a relative
//    error of 2^-128 an operand. Each term collects at most 2 (p + q + 2) 2^-128 a step, each sum 2^-126 max(|S|, |t|):
//    in all below N (p + q + 4) 2^-126 A <= N 2^-122 A.
// Both sums lie within A (N 2^-95 + 2^-101) of the exact one (the last summand covers GMP's part where it goes on
// longer than this loop, up to 10^6 terms). When all doubles within the bound are cut to the same one, that one is
// GMP's. The stops are compared with margins of 2^-40, far above n 2^-96; between them nothing is decided.

#if defined(__GNUC__) && defined(__x86_64__) && !defined(__FMA__)
#define ORVANE_DISPATCH_FMA 1
#else
#define ORVANE_DISPATCH_FMA 0
#endif
#if defined(__FMA__) || defined(__aarch64__)
#define ORVANE_HAS_FMA 1
#else
#define ORVANE_HAS_FMA 0
#endif
#define ORVANE_INLINE [[gnu::always_inline]] inline
// Loops over the lanes of a block. Unrolled whole before they are looked at as loops, they would stay scalar.
#if defined(__clang__)
#define ORVANE_VECTOR_LOOP _Pragma("clang loop vectorize(enable)")
#else
#define ORVANE_VECTOR_LOOP _Pragma("GCC unroll 1")
#endif

namespace SpecialFunction {
namespace {

constexpr int kBlock = 8;

// Everything runs scaled by 2^-300, so that neither a term beyond DBL_MAX nor the tail of one at 1e-17 leaves the range
// in which the error-free transformations hold.
constexpr double kScale = 0x1p-300;
constexpr double kUnscale = 0x1p+300;
constexpr double kMargin = 0x1p-40;
constexpr double kLow = kHypergeometricTermLimit * kScale;
constexpr double kHigh = std::numeric_limits<double>::max() * kScale;
constexpr double kLeast = 0x1p-600, kMost = 0x1p+930;  // of a last term whose arithmetic can be trusted

struct Series {
  const double* a;
  int32_t p;
  const double* b;
  int32_t q;
  double z;
};

/// x y - p, p = fl(x y), exactly: one instruction, or Dekker's product of halves.
template <bool kFma>
ORVANE_INLINE double productError(double x, double y, double p) {
  if constexpr (kFma) {
    return __builtin_fma(x, y, -p);
  } else {
    constexpr double kSplit = 0x1p27 + 1;
    const double xc = kSplit * x, yc = kSplit * y;
    const double xh = xc - (xc - x), yh = yc - (yc - y), xl = x - xh, yl = y - yh;
    return ((xh * yh - p) + xh * yl + xl * yh) + xl * yl;
  }
}

/// x y + c, rounded once or twice.
template <bool kFma>
ORVANE_INLINE double multiplyAdd(double x, double y, double c) {
  if constexpr (kFma)
    return __builtin_fma(x, y, c);
  else
    return x * y + c;
}

/// Knuth's TwoSum: x + y = sum + error, exactly, whichever is larger.
ORVANE_INLINE void twoSum(double x, double y, double& sum, double& error) {
  sum = x + y;
  const double part = sum - x;
  error = (x - (sum - part)) + (y - part);
}

/// (h + l) (c + n), the parameter c + n taken exactly.
template <bool kFma>
ORVANE_INLINE void multiplyByParameter(double& h, double& l, double c, double n) {
  double yh, yl;
  twoSum(c, n, yh, yl);
  const double product = h * yh;
  double tail = productError<kFma>(h, yh, product);
  tail = multiplyAdd<kFma>(h, yl, tail);
  l = multiplyAdd<kFma>(l, yh, tail);
  h = product;
}

/// t_(n+1) / t_n for the kBlock indices from n on. The loops have no dependence between the indices: they become vector
/// instructions.
template <bool kFma>
ORVANE_INLINE void ratios(const Series& s, double n, double* __restrict rh, double* __restrict rl) {
  double nh[kBlock], nl[kBlock], dh[kBlock], dl[kBlock];
  ORVANE_VECTOR_LOOP for (int k = 0; k < kBlock; ++k) {
    nh[k] = s.z;
    dh[k] = n + (k + 1);
    nl[k] = dl[k] = 0;
  }
  for (int32_t i = 0; i < s.p; ++i) {
    const double c = s.a[i];
    ORVANE_VECTOR_LOOP for (int k = 0; k < kBlock; ++k) multiplyByParameter<kFma>(nh[k], nl[k], c, n + k);
  }
  for (int32_t j = 0; j < s.q; ++j) {
    const double c = s.b[j];
    ORVANE_VECTOR_LOOP for (int k = 0; k < kBlock; ++k) multiplyByParameter<kFma>(dh[k], dl[k], c, n + k);
  }
  ORVANE_VECTOR_LOOP for (int k = 0; k < kBlock; ++k) {
    const double inverse = 1.0 / dh[k];
    const double q1 = nh[k] * inverse;
    const double product = q1 * dh[k];
    double rest = (nh[k] - product) - productError<kFma>(q1, dh[k], product);
    rest = multiplyAdd<kFma>(-q1, dl[k], rest) + nl[k];
    const double q2 = rest * inverse;
    rh[k] = q1 + q2;
    rl[k] = q2 - (rh[k] - q1);
  }
}

/// True when every later ratio is at most 1/2 in size: for c >= 0 and m >= n, (a + m)/(c + m) <= max(1, (a + n)/(c +
/// n)).
bool tailIsGeometric(const Series& s, double n) {
  if (s.p > s.q + 1) return false;
  double bound = std::abs(s.z) * 1.001;
  for (int32_t i = 0; i <= s.q; ++i) {
    const double lower = (i == 0 ? 1.0 : s.b[i - 1]) + n;
    if (!(lower > 0)) return false;
    if (i >= s.p) {
      bound /= lower;
      continue;
    }
    const double upper = s.a[i] + n;
    if (!(upper >= 0)) return false;
    if (upper > lower) bound *= upper / lower;
  }
  return bound <= 0.5;
}

/// The one double that every number within `error` of h + l is cut to (towards zero), unscaled; nothing when there are
/// two. |l| is at most half an ulp of h.
std::optional<double> cutToDouble(double h, double l, double error) {
  if (!(2 * error < std::abs(h) * 0x1p-56)) return std::nullopt;
  if (h < 0) l = -l;
  if (l - 2 * error >= 0) return h * kUnscale;
  if (l + 2 * error < 0) return std::nextafter(h, 0.0) * kUnscale;
  return std::nullopt;
}

template <bool kFma>
ORVANE_INLINE std::optional<double> sumSeries(const Series& s, double* cancellation) {
  double th = kScale, tl = 0, sh = kScale, sl = 0, sizes = kScale;  // term, sum, A
  double rh[kBlock], rl[kBlock];
  int32_t n = 0;
  double tail = 0;
  for (bool more = true; more;) {
    ratios<kFma>(s, n, rh, rl);
    for (int k = 0; k < kBlock; ++k) {
      const double head = th * rh[k];
      double rest = productError<kFma>(th, rh[k], head);
      rest = multiplyAdd<kFma>(th, rl[k], rest);
      tl = multiplyAdd<kFma>(tl, rh[k], rest);
      th = head;
      double error;
      twoSum(sh, th, sh, error);
      sl += error + tl;
      const double size = std::abs(th);
      sizes += size;
      ++n;
      if (size > kLow * (1 + kMargin) && size < kHigh * (1 - kMargin) && n + 1 < kHypergeometricMaxTerms) [[likely]]
        continue;
      if (n == 1 && th == 0) return 1.0;
      // Stopped, or too near to a stop to tell; NaN and what left the range as well.
      const bool ended = size < kLow * (1 - kMargin)    ? size > kLeast || th == 0
                         : size > kHigh * (1 + kMargin) ? size < kMost
                                                        : false;
      const bool full = n + 1 >= kHypergeometricMaxTerms && size < kMost;
      if (!ended && !full) return std::nullopt;
      more = false;
      break;
    }
    double head = th + tl;
    tl -= head - th;
    th = head;
    twoSum(sh, sl, sh, sl);
    if (more && std::abs(th) < std::abs(sh) * 0x1p-104 && tailIsGeometric(s, n)) {
      tail = std::abs(th);
      more = false;
    }
  }
  if (cancellation != nullptr) *cancellation = sizes / std::abs(sh);
  return cutToDouble(sh, sl, 1.01 * sizes * (n * 0x1p-95 + 0x1p-101) + tail);
}

#if ORVANE_DISPATCH_FMA
__attribute__((target("avx2,fma"))) std::optional<double> sumSeriesFma(const Series& s, double* cancellation) {
  return sumSeries<true>(s, cancellation);
}

bool hasFma() {
  static const bool has = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
  return has;
}
#else
std::optional<double> sumSeriesFma(const Series& s, double* cancellation) {
  return sumSeries<ORVANE_HAS_FMA != 0>(s, cancellation);
}

bool hasFma() { return ORVANE_HAS_FMA != 0; }
#endif

std::optional<double> sumSeriesPlain(const Series& s, double* cancellation) {
  return sumSeries<false>(s, cancellation);
}

bool inRange(const double* values, int32_t count) {
  if (count < 0 || count > kMaxParameters) return false;
  for (int32_t i = 0; i < count; ++i) {
    const double size = std::abs(values[i]);
    if (values[i] != 0 && !(size >= 0x1p-60 && size <= 0x1p40)) return false;
  }
  return true;
}

}  // namespace

std::optional<double> calcHypergeometricPFQByDoubleDouble(const double* a, int32_t p, const double* b, int32_t q,
                                                          double z, bool useFma, double* cancellation) {
  if (FLT_EVAL_METHOD != 0 || std::fegetround() != FE_TONEAREST) return std::nullopt;
  const double size = std::abs(z);
  if (!(size >= 0x1p-60 && size <= 0x1p60) || !inRange(a, p) || !inRange(b, q)) return std::nullopt;
  const Series series{a, p, b, q, z};
  return useFma && hasFma() ? sumSeriesFma(series, cancellation) : sumSeriesPlain(series, cancellation);
}

}  // namespace SpecialFunction
