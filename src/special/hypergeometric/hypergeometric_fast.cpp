// SPDX-License-Identifier: Apache-2.0
#include "special/hypergeometric/hypergeometric_fast.h"

#include <cfenv>
#include <cfloat>
#include <cmath>
#include <limits>

#include "frame/numbers.h"
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
//
// A whole sum has no such stop. Its upper parameters and its argument may be pairs themselves, within 3 u^2 and 8 u^2
// of what they stand for: 17 more units of u^2 a step, which 3. and 4. (349 of 512) leave room for.

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
  const double* aTails = nullptr;  // of the upper parameters and of z where these are pairs, for whole sums
  double zTail = 0;
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

/// (h + l) (c + n), the parameter c + n taken exactly; with a tail of c, to 3 u^2.
template <bool kFma, bool kTail>
ORVANE_INLINE void multiplyByParameter(double& h, double& l, double c, double cTail, double n) {
  double yh, yl;
  twoSum(c, n, yh, yl);
  if constexpr (kTail) {
    const double head = yh;
    yl += cTail;
    yh = head + yl;
    yl -= yh - head;
  }
  const double product = h * yh;
  double tail = productError<kFma>(h, yh, product);
  tail = multiplyAdd<kFma>(h, yl, tail);
  l = multiplyAdd<kFma>(l, yh, tail);
  h = product;
}

/// t_(n+1) / t_n for the kBlock indices from n on. The loops have no dependence between the indices: they become vector
/// instructions.
template <bool kFma, bool kWhole>
ORVANE_INLINE void ratios(const Series& s, double n, double* __restrict rh, double* __restrict rl) {
  double nh[kBlock], nl[kBlock], dh[kBlock], dl[kBlock];
  ORVANE_VECTOR_LOOP for (int k = 0; k < kBlock; ++k) {
    nh[k] = s.z;
    dh[k] = n + (k + 1);
    nl[k] = kWhole ? s.zTail : 0;
    dl[k] = 0;
  }
  for (int32_t i = 0; i < s.p; ++i) {
    const double c = s.a[i];
    const double tail = kWhole ? s.aTails[i] : 0;
    ORVANE_VECTOR_LOOP for (int k = 0; k < kBlock; ++k) multiplyByParameter<kFma, kWhole>(nh[k], nl[k], c, tail, n + k);
  }
  for (int32_t j = 0; j < s.q; ++j) {
    const double c = s.b[j];
    ORVANE_VECTOR_LOOP for (int k = 0; k < kBlock; ++k) multiplyByParameter<kFma, false>(dh[k], dl[k], c, 0, n + k);
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

/// A bound of the sizes of all later ratios: for c + n > 0 and m >= n, |a + m|/(c + m) <= max(1, |a + n|/(c + n)), also
/// with a + n below 0, as a < c then.
double boundOfRatios(const Series& s, double n) {
  if (s.p > s.q + 1) return kInfinity;
  double bound = std::abs(s.z) * 1.001;
  for (int32_t i = 0; i <= s.q; ++i) {
    const double lower = (i == 0 ? 1.0 : s.b[i - 1]) + n;
    if (!(lower > 0)) return kInfinity;
    if (i >= s.p) {
      bound /= lower;
      continue;
    }
    const double upper = std::abs(s.a[i] + n);
    if (upper > lower) bound *= upper / lower;
  }
  return bound;
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

/// Up to the absolute stop, or, kWhole, the whole series.
template <bool kFma, bool kWhole>
ORVANE_INLINE std::optional<DoubleDoubleSum> sumSeries(const Series& s, Cancellation* cancellation) {
  constexpr double kStop = kWhole ? kLeast : kLow * (1 + kMargin);
  constexpr double kNegligible = kWhole ? 0x1p-76 : 0x1p-104, kMostRatio = kWhole ? 0.95 : 0.5;
  double th = kScale, tl = 0, sh = kScale, sl = 0, sizes = kScale, weighted = 0;  // term, sum, A, sum n |t_n|
  double rh[kBlock], rl[kBlock];
  int32_t n = 0;
  double tail = 0;
  for (bool more = true; more;) {
    ratios<kFma, kWhole>(s, n, rh, rl);
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
      if constexpr (kWhole) weighted += n * size;
      if (size > kStop && size < kHigh * (1 - kMargin) && n + 1 < kHypergeometricMaxTerms) [[likely]]
        continue;
      if (n == 1 && th == 0) return DoubleDoubleSum{kScale, 0, 0};
      // Stopped, or too near to a stop to tell; NaN and what left the range as well.
      const bool ended = size < kLow * (1 - kMargin)    ? size > kLeast || th == 0
                         : size > kHigh * (1 + kMargin) ? size < kMost
                                                        : false;
      const bool full = n + 1 >= kHypergeometricMaxTerms && size < kMost;
      if (kWhole ? th != 0 : !ended && !full) return std::nullopt;
      more = false;
      break;
    }
    double head = th + tl;
    tl -= head - th;
    th = head;
    twoSum(sh, sl, sh, sl);
    if (more && std::abs(th) < std::abs(sh) * kNegligible) {
      const double ratio = boundOfRatios(s, n);
      if (ratio <= kMostRatio) {
        tail = std::abs(th) * (kWhole ? 1.01 * ratio / (1 - ratio) : 1);
        more = false;
      }
    }
  }
  if (cancellation != nullptr) *cancellation = {sizes / std::abs(sh), static_cast<double>(n)};
  const double error = kWhole ? weighted * 0x1p-97 + sizes * (n * 0x1p-100 + 0x1p-101)  // 4. and 5.
                              : sizes * (n * 0x1p-95 + 0x1p-101);
  return DoubleDoubleSum{sh, sl, 1.01 * error + tail};
}

#if ORVANE_DISPATCH_FMA
template <bool kWhole>
__attribute__((target("avx2,fma"))) std::optional<DoubleDoubleSum> sumSeriesFma(const Series& s,
                                                                                Cancellation* cancellation) {
  return sumSeries<true, kWhole>(s, cancellation);
}

bool hasFma() {
  static const bool has = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
  return has;
}
#else
template <bool kWhole>
std::optional<DoubleDoubleSum> sumSeriesFma(const Series& s, Cancellation* cancellation) {
  return sumSeries<ORVANE_HAS_FMA != 0, kWhole>(s, cancellation);
}

bool hasFma() { return ORVANE_HAS_FMA != 0; }
#endif

template <bool kWhole>
std::optional<DoubleDoubleSum> sumSeriesPlain(const Series& s, Cancellation* cancellation) {
  return sumSeries<false, kWhole>(s, cancellation);
}

bool inRange(const double* values, int32_t count) {
  if (count < 0 || count > kMaxParameters) return false;
  for (int32_t i = 0; i < count; ++i) {
    const double size = std::abs(values[i]);
    if (values[i] != 0 && !(size >= 0x1p-60 && size <= 0x1p40)) return false;
  }
  return true;
}

bool hasRange(const Series& s) {
  if (FLT_EVAL_METHOD != 0 || std::fegetround() != FE_TONEAREST) return false;
  const double size = std::abs(s.z);
  return size >= 0x1p-60 && size <= 0x1p60 && inRange(s.a, s.p) && inRange(s.b, s.q);
}

}  // namespace

std::optional<double> calcHypergeometricPFQByDoubleDouble(const double* a, int32_t p, const double* b, int32_t q,
                                                          double z, bool useFma, Cancellation* cancellation) {
  const Series series{a, p, b, q, z};
  if (!hasRange(series)) return std::nullopt;
  const auto sum =
      useFma && hasFma() ? sumSeriesFma<false>(series, cancellation) : sumSeriesPlain<false>(series, cancellation);
  return sum ? cutToDouble(sum->high, sum->low, sum->error) : std::nullopt;
}

std::optional<DoubleDoubleSum> wholeHypergeometricSum(const double* a, const double* aTails, int32_t p, const double* b,
                                                      int32_t q, double z, double zTail) {
  static_assert(kScale == 0x1p-300 && DoubleDoubleSum::kExponent == 300);
  const Series series{a, p, b, q, z, aTails, zTail};
  if (!hasRange(series)) return std::nullopt;
  return hasFma() ? sumSeriesFma<true>(series, nullptr) : sumSeriesPlain<true>(series, nullptr);
}

}  // namespace SpecialFunction
