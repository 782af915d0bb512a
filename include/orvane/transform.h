/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Discrete Fourier transforms of any length in one and two dimensions, and what stands on them: spectra, band filters,
 * the analytic signal; detrending and two-dimensional kernels.
 *
 *     forward  X[k] = sum over m of x[m] exp(-2 pi i k m/n)       inverse  x[m] = 1/n sum over k of X[k] exp(2 pi i k
 * m/n)
 *
 * Real and imaginary parts are separate arrays. The cost is O(n log n) for every n, the error that of rounding:
 * |error| <= 4e-16 sqrt(log2 n) |X| in the Euclidean norm. Lengths with a prime factor above 61 go through a
 * convolution and cost about five times as much. Tables of lengths used lately are kept, 64 MB at most; all functions
 * may run on several threads at once. A NaN or infinity makes the whole output NaN or infinite. Arrays out may be the
 * arrays in.
 */
#ifndef ORVANE_TRANSFORM_H
#define ORVANE_TRANSFORM_H

#include <orvane/export.h>

/** What data_getHilbertInfo writes. */
enum { ORVANE_HILBERT_ENVELOPE = 0, ORVANE_HILBERT_PHASE = 1, ORVANE_HILBERT_PHASE_STEP = 2 };

/** Weights of data_Filter2D. */
typedef struct Filter2DKernel {
  const double* values; /**< [rows*cols] row-major */
  int32_t rows;         /**< number of rows */
  int32_t cols;         /**< number of columns */
  uint8_t normalise;    /**< not 0: divided by their sum, unless that is within 1e-15 of 0 */
} Filter2DKernel;

/**
 * Forward transform, not scaled, of n = max(nre, nim) values.
 *
 * @param re     [nre] real part; null or a count of 0 or less is empty
 * @param nre    length of re
 * @param im     [nim] imaginary part; the shorter part is continued by zeros
 * @param nim    length of im
 * @param outRe  [n] out
 * @param outIm  [n] out
 *
 * n of 0 does nothing.
 */
ORVANE_API void data_FFT(const double* re, int32_t nre, const double* im, int32_t nim, double* outRe, double* outIm);

/** Inverse transform, with the factor 1/n. Arguments as for data_FFT. */
ORVANE_API void data_InvFFT(const double* re, int32_t nre, const double* im, int32_t nim, double* outRe, double* outIm);

/**
 * Forward transform of a matrix: every row, then every column.
 *
 * @param re       [rows*cols] row-major
 * @param im       [rows*cols]; not read, and taken as 0, unless hasIm
 * @param rows     below 1: nothing happens, as for cols
 * @param cols     number of columns
 * @param hasIm    whether im is read
 * @param outRe    [rows*cols] out
 * @param outIm    [rows*cols] out
 * @param threads  contiguous blocks of rows, later of columns, on so many threads (256 at most); below 2 on the
 * caller's. The values do not depend on it
 */
ORVANE_API void data_FFT2D(const double* re, const double* im, int32_t rows, int32_t cols, bool hasIm, double* outRe,
                           double* outIm, int32_t threads);

/** Inverse of data_FFT2D, columns first, with the factor 1/(rows cols). */
ORVANE_API void data_InvFFT2D(const double* re, const double* im, int32_t rows, int32_t cols, bool hasIm, double* outRe,
                              double* outIm, int32_t threads);

/**
 * Amplitudes |X[i]| of n real samples, not scaled, and their frequencies i fs/n, for i < n/2.
 *
 * @param x     [n]
 * @param n     number of values
 * @param fs    sampling frequency
 * @param freq  [n/2] out
 * @param amp   [n/2] out
 * @return      n/2, an integer division; 0 for n below 2
 */
ORVANE_API int32_t data_plotFFT(const double* x, int32_t n, double fs, double* freq, double* amp);

/**
 * Keeps the band lowF..highF: with a = round(lowF n/fs), b = round(highF n/fs) the bins 0..a-1 and b+1..n/2 and their
 * mirrors get `value` in both parts; y is the real part of the inverse transform.
 *
 * @param x      [n]
 * @param y      [n] out; `value` throughout when a > n/2
 * @param lowF   below 0 or NaN: no lower edge
 * @param highF  below 0: 0; NaN or above fs/2: no upper edge
 * @param value  0 as a rule
 * @param fs     sampling frequency
 * @param n      number of values
 */
ORVANE_API void data_FilterByFFT(const double* x, double* y, double lowF, double highF, double value, double fs,
                                 int32_t n);

/** Rotates by the half-length rounded up: y = x[s..n), x[0..s), s = (n + 1)/2. */
ORVANE_API void data_Shift(const double* x, double* y, int32_t n);

/** Rotates by the half-length rounded down: takes data_Shift back. */
ORVANE_API void data_InvShift(const double* x, double* y, int32_t n);

/**
 * Subtracts the polynomial of degree `order` that is the least-squares fit of n evenly spaced samples.
 *
 * @param x      [n]; with a value that is not finite all of y is NaN
 * @param y      [n] out; 0 but for rounding when order >= n - 1
 * @param n      number of values
 * @param order  below 0 copies
 */
ORVANE_API void data_Detrend(const double* x, double* y, int32_t n, int32_t order);

/**
 * The analytic signal a + ib of n real samples (Gabor 1946; a = x).
 *
 * @param x     [n]
 * @param n     number of values
 * @param out   [n] out
 * @param mode  ORVANE_HILBERT_ENVELOPE: sqrt(a^2 + b^2). ORVANE_HILBERT_PHASE: atan2(b, a) in radians.
 *              ORVANE_HILBERT_PHASE_STEP: differences of that phase, (p[i+1] - p[i-1])/2 inside, one-sided at the ends;
 *              the phase is not unwrapped, so a turn shows as a jump. 0 for n = 1. Any other mode writes nothing
 */
ORVANE_API void data_getHilbertInfo(const double* x, int32_t n, double* out, uint8_t mode);

/**
 * Weighted sum of each value's neighbourhood:
 *
 *     out[i][j] = sum over k, l of values[k][l] in[i - kernel rows/2 + k][j - kernel cols/2 + l]
 *
 * where indices outside read the nearest row or column.
 *
 * @param in       [rows*cols] row-major
 * @param out      [rows*cols] out
 * @param kernel   weights; null, without values or with a size below 1 nothing happens
 * @param rows     below 1: nothing happens, as for cols
 * @param cols     number of columns
 * @param threads  contiguous blocks of rows on so many threads (256 at most); the values do not depend on it
 */
ORVANE_API void data_Filter2D(const double* in, double* out, const Filter2DKernel* kernel, int32_t rows, int32_t cols,
                              int32_t threads);

#endif
