// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace Filter {

/// Transforms of 2, 3, 4, 5 and 8 values in registers.
template <std::size_t kRadix>
struct Butterfly;

#define ORVANE_INLINE __attribute__((always_inline)) static inline

template <>
struct Butterfly<2> {
  ORVANE_INLINE void run(double (&re)[2], double (&im)[2]) {
    const double r = re[0] - re[1], i = im[0] - im[1];
    re[0] += re[1];
    im[0] += im[1];
    re[1] = r;
    im[1] = i;
  }
};

template <>
struct Butterfly<3> {
  ORVANE_INLINE void run(double (&re)[3], double (&im)[3]) {
    constexpr double kSine = 0.86602540378443864676;
    const double sr = re[1] + re[2], si = im[1] + im[2];
    const double dr = kSine * (re[1] - re[2]), di = kSine * (im[1] - im[2]);
    const double mr = re[0] - 0.5 * sr, mi = im[0] - 0.5 * si;
    re[0] += sr;
    im[0] += si;
    re[1] = mr + di;
    im[1] = mi - dr;
    re[2] = mr - di;
    im[2] = mi + dr;
  }
};

template <>
struct Butterfly<4> {
  ORVANE_INLINE void run(double (&re)[4], double (&im)[4]) {
    const double ar = re[0] + re[2], ai = im[0] + im[2], br = re[0] - re[2], bi = im[0] - im[2];
    const double cr = re[1] + re[3], ci = im[1] + im[3], dr = re[1] - re[3], di = im[1] - im[3];
    re[0] = ar + cr;
    im[0] = ai + ci;
    re[1] = br + di;
    im[1] = bi - dr;
    re[2] = ar - cr;
    im[2] = ai - ci;
    re[3] = br - di;
    im[3] = bi + dr;
  }
};

template <>
struct Butterfly<5> {
  ORVANE_INLINE void run(double (&re)[5], double (&im)[5]) {
    constexpr double kCos1 = 0.30901699437494742410, kCos2 = -0.80901699437494742410;
    constexpr double kSin1 = 0.95105651629515357212, kSin2 = 0.58778525229247312917;
    const double ar = re[1] + re[4], ai = im[1] + im[4], br = re[1] - re[4], bi = im[1] - im[4];
    const double cr = re[2] + re[3], ci = im[2] + im[3], dr = re[2] - re[3], di = im[2] - im[3];
    const double m1r = re[0] + (kCos1 * ar + kCos2 * cr), m1i = im[0] + (kCos1 * ai + kCos2 * ci);
    const double m2r = re[0] + (kCos2 * ar + kCos1 * cr), m2i = im[0] + (kCos2 * ai + kCos1 * ci);
    const double n1r = kSin1 * br + kSin2 * dr, n1i = kSin1 * bi + kSin2 * di;
    const double n2r = kSin2 * br - kSin1 * dr, n2i = kSin2 * bi - kSin1 * di;
    re[0] += ar + cr;
    im[0] += ai + ci;
    re[1] = m1r + n1i;
    im[1] = m1i - n1r;
    re[4] = m1r - n1i;
    im[4] = m1i + n1r;
    re[2] = m2r + n2i;
    im[2] = m2i - n2r;
    re[3] = m2r - n2i;
    im[3] = m2i + n2r;
  }
};

template <>
struct Butterfly<8> {
  ORVANE_INLINE void run(double (&re)[8], double (&im)[8]) {
    constexpr double kHalf = 0.70710678118654752440;
    double er[4] = {re[0], re[2], re[4], re[6]}, ei[4] = {im[0], im[2], im[4], im[6]};
    double fr[4] = {re[1], re[3], re[5], re[7]}, fi[4] = {im[1], im[3], im[5], im[7]};
    Butterfly<4>::run(er, ei);
    Butterfly<4>::run(fr, fi);
    // The odd half times exp(-2 pi i k/8).
    const double r1 = kHalf * (fr[1] + fi[1]), i1 = kHalf * (fi[1] - fr[1]);
    const double r2 = fi[2], i2 = -fr[2];
    const double r3 = kHalf * (fi[3] - fr[3]), i3 = -kHalf * (fi[3] + fr[3]);
    const double gr[4] = {fr[0], r1, r2, r3}, gi[4] = {fi[0], i1, i2, i3};
    for (std::size_t k = 0; k < 4; ++k) {
      re[k] = er[k] + gr[k];
      im[k] = ei[k] + gi[k];
      re[k + 4] = er[k] - gr[k];
      im[k + 4] = ei[k] - gi[k];
    }
  }
};

#undef ORVANE_INLINE

}  // namespace Filter
