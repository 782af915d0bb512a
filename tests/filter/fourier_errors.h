// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <complex>

#include "filter/support.h"

using Pair = std::pair<Numbers, Numbers>;

inline Pair transformed(const Pair& in, bool inverse = false) {
  const std::size_t n = std::max(in.first.size(), in.second.size());
  Pair out{Numbers(n), Numbers(n)};
  (inverse ? data_InvFFT : data_FFT)(in.first.data(), count(in.first), in.second.data(), count(in.second),
                                     out.first.data(), out.second.data());
  return out;
}

using Long = std::complex<long double>;

/// exp(-2 pi i k/n) for all k.
inline std::vector<Long> rootsOf(std::size_t n) {
  std::vector<Long> roots(n);
  for (std::size_t k = 0; k < n; ++k)
    roots[k] = std::polar(1.0L, -2 * std::acos(-1.0L) * static_cast<long double>(k) / static_cast<long double>(n));
  return roots;
}

/// Bin k by the sum itself, in long double.
inline Long bin(const Pair& in, const std::vector<Long>& roots, std::size_t k) {
  long double re = 0, im = 0;
  for (std::size_t m = 0, at = 0, n = roots.size(); m < n; ++m, at = at + k < n ? at + k : at + k - n) {
    re += in.first[m] * roots[at].real() - in.second[m] * roots[at].imag();
    im += in.first[m] * roots[at].imag() + in.second[m] * roots[at].real();
  }
  return {re, im};
}

inline double norm(const Pair& x) {
  double sum = 0;
  for (std::size_t i = 0; i < x.first.size(); ++i) sum += x.first[i] * x.first[i] + x.second[i] * x.second[i];
  return std::sqrt(sum);
}

/// The error of bin 0 and some others against the sum, these scaled up to all, and that of the way there and back, in
/// units of sqrt(log2 n) |x|.
inline std::pair<double, double> errorsOf(std::size_t n, std::size_t bins) {
  const Pair in{drawn(n, 1), drawn(n, 2)};
  const Pair out = transformed(in), back = transformed(out, true);
  const std::vector<Long> roots = rootsOf(n);
  const auto squaredError = [&](std::size_t k) {
    return static_cast<double>(std::norm(bin(in, roots, k) - Long(out.first[k], out.second[k])));
  };
  double squares = 0;
  for (std::size_t i = 1; i < bins; ++i) squares += squaredError(bins == n ? i : 1 + i * 2654435761u % (n - 1));
  squares = squares * static_cast<double>(n - 1) / static_cast<double>(bins - 1) + squaredError(0);
  Pair gone{in.first, in.second};
  for (std::size_t i = 0; i < n; ++i) {
    gone.first[i] -= back.first[i];
    gone.second[i] -= back.second[i];
  }
  const double unit = std::sqrt(std::log2(static_cast<double>(n)));
  return {std::sqrt(squares) / norm(out) / unit, norm(gone) / norm(in) / unit};
}
