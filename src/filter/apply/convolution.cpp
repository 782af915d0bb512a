// SPDX-License-Identifier: Apache-2.0
#include "filter/apply/convolution.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "frame/wide_registers.h"

namespace Filter {

namespace {

constexpr std::size_t kBlock = 32;  // sums held in registers

/// One block of sums, each over k ascending: the loop over the block is the one that fills the registers.
template <std::size_t kCount>
__attribute__((always_inline)) inline void block(const double* __restrict x, const double* __restrict kernel,
                                                 std::size_t width, double* __restrict sums) {
  double s[kCount];
  for (std::size_t j = 0; j < kCount; ++j) s[j] = sums[j];
  for (std::size_t k = 0; k < width; ++k)
    for (std::size_t j = 0; j < kCount; ++j) s[j] += kernel[k] * x[k + j];
  for (std::size_t j = 0; j < kCount; ++j) sums[j] = s[j];
}

}  // namespace

void correlateAdd(const double* x, std::span<const double> kernel, double* out, std::size_t n) {
  onWidest([=]() __attribute__((always_inline)) {
    std::size_t i = 0;
    for (; i + kBlock <= n; i += kBlock) block<kBlock>(x + i, kernel.data(), kernel.size(), out + i);
    for (; i + 4 <= n; i += 4) block<4>(x + i, kernel.data(), kernel.size(), out + i);
    for (; i < n; ++i) block<1>(x + i, kernel.data(), kernel.size(), out + i);
  });
}

void correlate(const double* x, std::span<const double> kernel, double* out, std::size_t n) {
  std::fill_n(out, n, 0.0);
  correlateAdd(x, kernel, out, n);
}

std::vector<double> clampedBorder(std::span<const double> in, std::size_t width) {
  std::vector<double> padded;
  if (in.empty()) return padded;
  const std::size_t half = width / 2;
  padded.reserve(in.size() + width);
  padded.assign(half, in.front());
  padded.insert(padded.end(), in.begin(), in.end());
  padded.resize(in.size() + std::max<std::size_t>(width, 1) - 1, in.back());
  return padded;
}

void normaliseWeights(std::span<double> weights, bool normalise) {
  const double sum = std::accumulate(weights.begin(), weights.end(), 0.0);
  if (!normalise || std::abs(sum) <= 1e-15) return;
  for (double& weight : weights) weight /= sum;
}

void convolve(std::span<const double> in, double* out, std::span<const double> kernel, bool normalise) {
  if (kernel.empty() || kernel.size() >= in.size()) {
    if (out != in.data()) std::ranges::copy(in, out);
    return;
  }
  std::vector<double> weights(kernel.begin(), kernel.end());
  normaliseWeights(weights, normalise);
  const std::vector<double> padded = clampedBorder(in, weights.size());
  correlate(padded.data(), weights, out, in.size());
}

}  // namespace Filter
