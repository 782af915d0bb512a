// SPDX-License-Identifier: Apache-2.0
#include "filter/transform/stockham.h"

#include <algorithm>

#include "filter/transform/butterfly.h"
#include "filter/transform/roots_of_unity.h"
#include "frame/wide_registers.h"

namespace Filter {

namespace {

/// What a pass works on: out[(R p + j) stride + q] = twiddle(j, p) sum over k of root(j k) in[(p + k rest) stride + q].
struct Work {
  ConstSplit in;
  Split out;
  std::size_t stride, rest;
  const double *twiddleRe, *twiddleIm;
};

template <std::size_t kRadix>
__attribute__((always_inline)) inline void one(const Work& w, std::size_t from, std::size_t fromStep, std::size_t to,
                                               std::size_t toStep, const double* tr, const double* ti,
                                               std::size_t twiddleStep) {
  double re[kRadix], im[kRadix];
  for (std::size_t k = 0; k < kRadix; ++k) {
    re[k] = w.in.re[from + k * fromStep];
    im[k] = w.in.im[from + k * fromStep];
  }
  Butterfly<kRadix>::run(re, im);
  w.out.re[to] = re[0];
  w.out.im[to] = im[0];
  for (std::size_t j = 1; j < kRadix; ++j) {
    const double c = tr[(j - 1) * twiddleStep], s = ti[(j - 1) * twiddleStep];
    w.out.re[to + j * toStep] = re[j] * c - im[j] * s;
    w.out.im[to + j * toStep] = re[j] * s + im[j] * c;
  }
}

/// The first pass of a single transform: neighbours in p fill the registers.
template <std::size_t kRadix>
__attribute__((always_inline)) inline void acrossP(const Work& w) {
#pragma GCC ivdep
  for (std::size_t p = 0; p < w.rest; ++p)
    one<kRadix>(w, p, w.rest, kRadix * p, 1, w.twiddleRe + p, w.twiddleIm + p, w.rest);
}

/// All others: neighbours in q do.
template <std::size_t kRadix>
__attribute__((always_inline)) inline void acrossQ(const Work& w, std::size_t stride) {
  for (std::size_t p = 0; p < w.rest; ++p) {
    double c[kRadix], s[kRadix];
    for (std::size_t j = 1; j < kRadix; ++j) {
      c[j - 1] = w.twiddleRe[(j - 1) * w.rest + p];
      s[j - 1] = w.twiddleIm[(j - 1) * w.rest + p];
    }
#pragma GCC ivdep
    for (std::size_t q = 0; q < stride; ++q)
      one<kRadix>(w, p * stride + q, w.rest * stride, kRadix * p * stride + q, stride, c, s, 1);
  }
}

template <std::size_t kRadix>
void pass(const Work& w) {
  onWidest([&]() __attribute__((always_inline)) {
    if (w.stride == 1)
      acrossP<kRadix>(w);
    else if (w.stride == 4)
      acrossQ<kRadix>(w, 4);
    else if (w.stride == 8)
      acrossQ<kRadix>(w, 8);
    else
      acrossQ<kRadix>(w, w.stride);
  });
}

/// Any odd radix by sums over pairs k, R - k. `cosine` and `sine` hold the R-th roots.
void anyPass(const Work& w, std::size_t radix, const double* cosine, const double* sine) {
  constexpr std::size_t kLanes = 8;
  const std::size_t pairs = radix / 2, step = w.rest * w.stride;
  onWidest([&]() __attribute__((always_inline)) {
    double sumRe[Stockham::kLargestRadix / 2][kLanes], sumIm[Stockham::kLargestRadix / 2][kLanes];
    double difRe[Stockham::kLargestRadix / 2][kLanes], difIm[Stockham::kLargestRadix / 2][kLanes];
    for (std::size_t p = 0; p < w.rest; ++p)
      for (std::size_t first = 0; first < w.stride; first += kLanes) {
        const std::size_t lanes = std::min(kLanes, w.stride - first);
        const double *re = w.in.re + p * w.stride + first, *im = w.in.im + p * w.stride + first;
        double *outRe = w.out.re + radix * p * w.stride + first, *outIm = w.out.im + radix * p * w.stride + first;
        for (std::size_t k = 1; k <= pairs; ++k)
          for (std::size_t q = 0; q < lanes; ++q) {
            const double ar = re[k * step + q], br = re[(radix - k) * step + q];
            const double ai = im[k * step + q], bi = im[(radix - k) * step + q];
            sumRe[k - 1][q] = ar + br;
            sumIm[k - 1][q] = ai + bi;
            difRe[k - 1][q] = ar - br;
            difIm[k - 1][q] = ai - bi;
          }
        for (std::size_t j = 0; j <= pairs; ++j) {
          double ar[kLanes], ai[kLanes], br[kLanes] = {}, bi[kLanes] = {};
          for (std::size_t q = 0; q < lanes; ++q) {
            ar[q] = re[q];
            ai[q] = im[q];
          }
          for (std::size_t k = 1, at = j; k <= pairs; ++k, at = at + j >= radix ? at + j - radix : at + j)
            for (std::size_t q = 0; q < lanes; ++q) {
              ar[q] += cosine[at] * sumRe[k - 1][q];
              ai[q] += cosine[at] * sumIm[k - 1][q];
              br[q] += sine[at] * difRe[k - 1][q];
              bi[q] += sine[at] * difIm[k - 1][q];
            }
          const auto put = [&](std::size_t row, const double* r, const double* i) __attribute__((always_inline)) {
            const double c = row == 0 ? 1.0 : w.twiddleRe[(row - 1) * w.rest + p];
            const double s = row == 0 ? 0.0 : w.twiddleIm[(row - 1) * w.rest + p];
            for (std::size_t q = 0; q < lanes; ++q) {
              outRe[row * w.stride + q] = r[q] * c - i[q] * s;
              outIm[row * w.stride + q] = r[q] * s + i[q] * c;
            }
          };
          double r[kLanes], i[kLanes];
          for (std::size_t q = 0; q < lanes; ++q) {
            r[q] = ar[q] - bi[q];
            i[q] = ai[q] + br[q];
          }
          put(j, r, i);
          if (j == 0) continue;
          for (std::size_t q = 0; q < lanes; ++q) {
            r[q] = ar[q] + bi[q];
            i[q] = ai[q] - br[q];
          }
          put(radix - j, r, i);
        }
      }
  });
}

/// Fours first, as their passes fill registers best; large primes last, where the stride is widest.
std::vector<std::size_t> radicesOf(std::size_t n) {
  std::vector<std::size_t> radices;
  std::size_t twos = 0;
  for (; n % 2 == 0; n /= 2) ++twos;
  if (twos % 2 == 1 && twos > 1) {
    radices.push_back(8);
    twos -= 3;
  }
  for (; twos >= 2; twos -= 2) radices.push_back(4);
  if (twos == 1) radices.push_back(2);
  for (std::size_t p = 3; n > 1; p += 2)
    for (; n % p == 0; n /= p) radices.push_back(p);
  return radices;
}

}  // namespace

bool Stockham::fits(std::size_t n) {
  for (std::size_t p = 2; p <= kLargestRadix; ++p)
    while (n % p == 0) n /= p;
  return n == 1;
}

Stockham::Stockham(std::size_t count) : n(count) {
  const RootsOfUnity all(n);
  const auto add = [this](Complex w) {
    re.push_back(w.re);
    im.push_back(w.im);
  };
  std::size_t length = n;
  for (const std::size_t radix : radicesOf(n)) {
    const std::size_t rest = length / radix, step = n / length;
    passes.push_back({radix, rest, re.size(), 0});
    for (std::size_t j = 1; j < radix; ++j)
      for (std::size_t p = 0; p < rest; ++p) add(all(j * p * step));
    passes.back().roots = re.size();
    if (radix > 5 && radix != 8)
      for (std::size_t j = 0; j < radix; ++j) add(all(j * (n / radix)));
    length = rest;
  }
}

void Stockham::runPass(const Pass& p, ConstSplit in, Split out, std::size_t stride) const {
  const Work work{in, out, stride, p.rest, re.data() + p.twiddles, im.data() + p.twiddles};
  switch (p.radix) {
    case 2:
      return pass<2>(work);
    case 3:
      return pass<3>(work);
    case 4:
      return pass<4>(work);
    case 5:
      return pass<5>(work);
    case 8:
      return pass<8>(work);
    default:
      return anyPass(work, p.radix, re.data() + p.roots, im.data() + p.roots);
  }
}

void Stockham::run(ConstSplit in, Split out, Split work, std::size_t lanes) const {
  const auto copy = [&](Split to) {
    std::copy_n(in.re, n * lanes, to.re);
    std::copy_n(in.im, n * lanes, to.im);
  };
  if (passes.empty()) {
    for (std::size_t i = 0; i < lanes; ++i) {  // value by value: the parts may be exchanged in place
      const double re = in.re[i], im = in.im[i];
      out.re[i] = re;
      out.im[i] = im;
    }
    return;
  }
  // The passes alternate between out and work and end in out. One that would read and write the same array gets a copy.
  bool toOut = passes.size() % 2 == 1;
  if (toOut && (in.re == out.re || in.im == out.im || in.re == out.im || in.im == out.re)) {
    copy(work);
    in = work;
  }
  std::size_t stride = lanes;
  for (const Pass& pass : passes) {
    const Split to = toOut ? out : work;
    runPass(pass, in, to, stride);
    in = to;
    toOut = !toOut;
    stride *= pass.radix;
  }
}

}  // namespace Filter
