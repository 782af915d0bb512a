// SPDX-License-Identifier: Apache-2.0
#include "filter/transform/bluestein.h"

#include <algorithm>

#include "filter/transform/roots_of_unity.h"
#include "filter/transform/scratch.h"

namespace Filter {

namespace {

/// The least length 2^k or 2^k times 3, 5, 9, 15, 25 (k >= 2) that is not below `least`.
std::size_t smoothLength(std::size_t least) {
  std::size_t best = 4;
  while (best < least) best *= 2;
  for (const std::size_t odd : {3, 5, 9, 15, 25}) {
    std::size_t length = 4 * odd;
    while (length < least) length *= 2;
    best = std::min(best, length);
  }
  return best;
}

}  // namespace

Bluestein::Bluestein(std::size_t count)
    : n(count), size(smoothLength(2 * count - 1)), inner(fourierPlan(size)), kernelRe(size), kernelIm(size) {
  const RootsOfUnity roots(2 * n);
  const double scale = 1.0 / static_cast<double>(size);
  std::size_t square = 0;  // k^2 mod 2n
  for (std::size_t k = 0; k < n; ++k) {
    const Complex c = roots(square);
    chirpRe.push_back(c.re);
    chirpIm.push_back(c.im);
    kernelRe[k] = kernelRe[(size - k) % size] = c.re * scale;
    kernelIm[k] = kernelIm[(size - k) % size] = -c.im * scale;
    square = (square + 2 * k + 1) % (2 * n);
  }
  inner->run({kernelRe.data(), kernelIm.data()}, {kernelRe.data(), kernelIm.data()});
}

void Bluestein::run(ConstSplit in, Split out) const {
  Scratch room(size);
  const Split work = room.split();
  for (std::size_t k = 0; k < n; ++k) {
    const double re = in.re[k], im = in.im[k], c = chirpRe[k], s = chirpIm[k];
    work.re[k] = re * c - im * s;
    work.im[k] = re * s + im * c;
  }
  std::fill(work.re + n, work.re + size, 0.0);
  std::fill(work.im + n, work.im + size, 0.0);
  inner->run(work, work);
  for (std::size_t k = 0; k < size; ++k) {
    const double re = work.re[k], im = work.im[k], c = kernelRe[k], s = kernelIm[k];
    work.re[k] = re * c - im * s;
    work.im[k] = re * s + im * c;
  }
  inner->run({work.im, work.re}, {work.im, work.re});  // the inverse; its factor stands in the kernel
  for (std::size_t k = 0; k < n; ++k) {
    const double re = work.re[k], im = work.im[k], c = chirpRe[k], s = chirpIm[k];
    out.re[k] = re * c - im * s;
    out.im[k] = re * s + im * c;
  }
}

}  // namespace Filter
