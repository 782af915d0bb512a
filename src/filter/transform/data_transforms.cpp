// SPDX-License-Identifier: Apache-2.0
#include "filter/transform/data_transforms.h"

#include <algorithm>
#include <cmath>

#include "filter/apply/parts.h"
#include "filter/smooth/local_polynomial.h"
#include "filter/transform/fourier.h"
#include "filter/transform/scratch.h"
#include "orvane/transform.h"

namespace Filter {

namespace {

struct Spectrum {
  std::vector<double> re, im;

  Split split() { return {re.data(), im.data()}; }
  void invert() { fourier(*fourierPlan(re.size()), re.size(), split(), split(), true); }
};

Spectrum spectrumOf(std::span<const double> x) {
  Spectrum s{{x.begin(), x.end()}, std::vector<double>(x.size(), 0.0)};
  if (!x.empty()) fourier(*fourierPlan(x.size()), x.size(), s.split(), s.split(), false);
  return s;
}

constexpr std::size_t kColumns = 8;  // columns that go through the cache together: a line of it

/// Transforms columns first..last of a rows x cols matrix in place.
void columns(const FourierPlan& plan, Split matrix, std::size_t rows, std::size_t cols, std::size_t first,
             std::size_t last, bool inverse) {
  Scratch room(rows * kColumns);
  for (; first < last; first += kColumns) {
    const std::size_t count = std::min(kColumns, last - first);
    const Split block = room.split();
    for (std::size_t r = 0; r < rows; ++r)
      for (std::size_t c = 0; c < count; ++c) {
        block.re[c * rows + r] = matrix.re[r * cols + first + c];
        block.im[c * rows + r] = matrix.im[r * cols + first + c];
      }
    for (std::size_t c = 0; c < count; ++c) {
      const Split column{block.re + c * rows, block.im + c * rows};
      fourier(plan, rows, column, column, inverse);
    }
    for (std::size_t r = 0; r < rows; ++r)
      for (std::size_t c = 0; c < count; ++c) {
        matrix.re[r * cols + first + c] = block.re[c * rows + r];
        matrix.im[r * cols + first + c] = block.im[c * rows + r];
      }
  }
}

}  // namespace

void transform1D(std::span<const double> re, std::span<const double> im, double* outRe, double* outIm, bool inverse) {
  const std::size_t n = std::max(re.size(), im.size());
  if (n == 0) return;
  std::vector<double> longRe, longIm;
  const auto whole = [n](std::span<const double> part, std::vector<double>& room) {
    if (part.size() == n) return part.data();
    room.assign(part.begin(), part.end());
    room.resize(n, 0.0);
    return static_cast<const double*>(room.data());
  };
  fourier(*fourierPlan(n), n, {whole(re, longRe), whole(im, longIm)}, {outRe, outIm}, inverse);
}

void transform2D(const double* re, const double* im, int32_t rows, int32_t cols, double* outRe, double* outIm,
                 int32_t threads, bool inverse) {
  if (rows < 1 || cols < 1) return;
  const auto r = static_cast<std::size_t>(rows), c = static_cast<std::size_t>(cols);
  const Split matrix{outRe, outIm};
  for (std::size_t i = 0; i < r * c; ++i) {  // value by value: the parts may be exchanged in place
    const double x = re[i], y = im != nullptr ? im[i] : 0.0;
    outRe[i] = x;
    outIm[i] = y;
  }
  const auto alongRows = [&] {
    const auto plan = fourierPlan(c);
    inParts(r, threads, [&](std::size_t first, std::size_t last) {
      for (std::size_t i = first; i < last; ++i) {
        const Split row{outRe + i * c, outIm + i * c};
        fourier(*plan, c, row, row, inverse);
      }
    });
  };
  const auto alongColumns = [&] {
    const auto plan = fourierPlan(r);
    inParts(c, threads,
            [&](std::size_t first, std::size_t last) { columns(*plan, matrix, r, c, first, last, inverse); });
  };
  if (!inverse) alongRows();
  alongColumns();
  if (inverse) alongRows();
}

void spectrum(std::span<const double> x, double fs, double* freq, double* amp) {
  const Spectrum s = spectrumOf(x);
  double f = 0.0;
  for (std::size_t i = 0; i < x.size() / 2; ++i, f += fs / static_cast<double>(x.size())) {
    freq[i] = f;
    amp[i] = std::sqrt(s.re[i] * s.re[i] + s.im[i] * s.im[i]);
  }
}

void bandByFFT(std::span<const double> x, double* y, double lowF, double highF, double value, double fs) {
  if (x.empty()) return;
  const std::size_t n = x.size(), middle = n / 2;
  // Bins of the edges; an edge that is not a number is none, one below 0 counts as 0, one beyond the middle as beyond.
  const auto bin = [&](double f, std::size_t none) {
    const double place = std::round(f * static_cast<double>(n) / fs);
    return std::isnan(place) ? none : static_cast<std::size_t>(std::clamp(place, 0.0, static_cast<double>(n)));
  };
  const std::size_t low = bin(lowF, 0), high = bin(highF, n);
  if (low > middle) return void(std::fill_n(y, n, value));
  Spectrum s = spectrumOf(x);
  const auto set = [&](std::size_t j) { s.re[j] = s.im[j] = s.re[(n - j) % n] = s.im[(n - j) % n] = value; };
  for (std::size_t j = 0; j < low; ++j) set(j);
  for (std::size_t j = middle; j > high; --j) set(j);
  s.invert();
  std::ranges::copy(s.re, y);
}

void rotate(std::span<const double> x, double* y, std::size_t by) {
  std::vector<double> turned(x.size());
  std::rotate_copy(x.begin(), x.begin() + static_cast<std::ptrdiff_t>(by), x.end(), turned.begin());
  std::ranges::copy(turned, y);
}

void detrend(std::span<const double> x, double* y, int32_t degree) {
  std::vector<double> trend(x.size(), 0.0);
  if (degree >= 0) fitPolynomial(x, static_cast<std::size_t>(degree), trend);
  std::ranges::transform(x, trend, y, std::minus<>());
}

void hilbertInfo(std::span<const double> x, double* out, uint8_t mode) {
  const std::size_t n = x.size(), half = (n + 1) / 2;
  if (n == 0 || mode > ORVANE_HILBERT_PHASE_STEP) return;
  Spectrum s = spectrumOf(x);
  for (std::size_t j = 1; j < half; ++j) {
    s.re[j] *= 2.0;
    s.im[j] *= 2.0;
  }
  for (std::size_t j = n / 2 + 1; j < n; ++j) s.re[j] = s.im[j] = 0.0;
  s.invert();
  std::vector<double> result(n);
  for (std::size_t i = 0; i < n; ++i)
    result[i] = mode == ORVANE_HILBERT_ENVELOPE ? std::sqrt(s.re[i] * s.re[i] + s.im[i] * s.im[i])
                                                : std::atan2(s.im[i], s.re[i]);
  if (mode != ORVANE_HILBERT_PHASE_STEP) return void(std::ranges::copy(result, out));
  // KEPT: steps of the phase as it is, with jumps of 2 pi; expected: of the unwrapped phase (kept.csv: Hilbert_wrapped)
  for (std::size_t i = 0; i < n; ++i) {
    const std::size_t before = i == 0 ? 0 : i - 1, after = std::min(i + 1, n - 1);
    out[i] = (i == 0 || i == n - 1 ? 1.0 : 0.5) * (result[after] - result[before]);
  }
}

}  // namespace Filter
