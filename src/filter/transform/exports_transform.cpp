// SPDX-License-Identifier: Apache-2.0
#include "filter/transform/data_transforms.h"
#include "filter/transform/filter_2d.h"
#include "frame/handle.h"
#include "orvane/transform.h"

void data_FFT(const double* re, int32_t nre, const double* im, int32_t nim, double* outRe, double* outIm) {
  Filter::transform1D(span(re, nre), span(im, nim), outRe, outIm, false);
}

void data_InvFFT(const double* re, int32_t nre, const double* im, int32_t nim, double* outRe, double* outIm) {
  Filter::transform1D(span(re, nre), span(im, nim), outRe, outIm, true);
}

void data_FFT2D(const double* re, const double* im, int32_t rows, int32_t cols, bool hasIm, double* outRe,
                double* outIm, int32_t threads) {
  Filter::transform2D(re, hasIm ? im : nullptr, rows, cols, outRe, outIm, threads, false);
}

void data_InvFFT2D(const double* re, const double* im, int32_t rows, int32_t cols, bool hasIm, double* outRe,
                   double* outIm, int32_t threads) {
  Filter::transform2D(re, hasIm ? im : nullptr, rows, cols, outRe, outIm, threads, true);
}

int32_t data_plotFFT(const double* x, int32_t n, double fs, double* freq, double* amp) {
  Filter::spectrum(span(x, n), fs, freq, amp);
  return n > 0 ? n / 2 : 0;
}

void data_FilterByFFT(const double* x, double* y, double lowF, double highF, double value, double fs, int32_t n) {
  Filter::bandByFFT(span(x, n), y, lowF, highF, value, fs);
}

void data_Shift(const double* x, double* y, int32_t n) { Filter::rotate(span(x, n), y, (span(x, n).size() + 1) / 2); }

void data_InvShift(const double* x, double* y, int32_t n) { Filter::rotate(span(x, n), y, span(x, n).size() / 2); }

void data_Detrend(const double* x, double* y, int32_t n, int32_t order) { Filter::detrend(span(x, n), y, order); }

void data_getHilbertInfo(const double* x, int32_t n, double* out, uint8_t mode) {
  Filter::hilbertInfo(span(x, n), out, mode);
}

void data_Filter2D(const double* in, double* out, const Filter2DKernel* kernel, int32_t rows, int32_t cols,
                   int32_t threads) {
  if (kernel != nullptr) Filter::filter2D(in, out, *kernel, rows, cols, threads);
}
