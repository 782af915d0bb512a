/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Smoothing, point filters and derivatives of one-dimensional data.
 *
 * Windows and kernels of `width` values at point i begin at i - width/2 (an integer division). Indices below 0 read the
 * first value and those above n - 1 the last: the border rule, unless a function says otherwise. A width of n or more,
 * and one below 1, copies the data. n of 0 or less does nothing. The array out may be the array in, unless said
 * otherwise. All functions may run on several threads at once.
 */
#ifndef ORVANE_SMOOTH_H
#define ORVANE_SMOOTH_H

#include <orvane/export.h>

/** A smoothing line through samples. */
typedef struct SmoothLine SmoothLine;

/** Kinds of filterByRadialFun: the rows of the table there. */
enum { ORVANE_RADIAL_FIRST = 1, ORVANE_RADIAL_LAST = 19 };

/**
 * Convolution with a kernel, not normalised: out[i] = sum over k of kernel[k] in[i - width/2 + k].
 *
 * @param in      [n]
 * @param out     [n] out
 * @param n       number of values
 * @param kernel  [width]
 * @param width   length of the kernel
 */
ORVANE_API void filterByConvFilter(const double* in, double* out, int32_t n, const double* kernel, int32_t width);

/** Convolution with weights sqrt(h + 1 - |k|), k = -h.., h = width/2, divided by their sum. */
ORVANE_API void filterBySqrtFilter(const double* in, double* out, int32_t n, int32_t width);

/** Convolution with weights (h + 1 - |k|)^2, k = -h.., h = width/2, divided by their sum. */
ORVANE_API void filterBySquaredFilter(const double* in, double* out, int32_t n, int32_t width);

/** Maximum of the window. NaN is passed over; a window of nothing else gives NaN. Time does not depend on the width. */
ORVANE_API void filterByMaxFilter(const double* in, double* out, int32_t n, int32_t width);

/** Minimum of the window, as filterByMaxFilter. */
ORVANE_API void filterByMinFilter(const double* in, double* out, int32_t n, int32_t width);

/** Mean of the window. Time does not depend on the width; a NaN or infinity shows in the windows that hold it only. */
ORVANE_API void filterByMeanFilter(const double* in, double* out, int32_t n, int32_t width);

/** sqrt of the mean of (in - m)^2 over the window, with m the least value of the array where that is negative, else 0.
 */
ORVANE_API void filterByMeanSquaredFilter(const double* in, double* out, int32_t n, int32_t width);

/**
 * Median of the window, for an even width the mean of the two middle values. A NaN counts as greater than every number.
 * Time O(n log width).
 */
ORVANE_API void filterByMedianFilter(const double* in, double* out, int32_t n, int32_t width);

/** out[i] = centre where |in[i] - centre| < limit, else in[i]. */
ORVANE_API void filterByHardLimitFilter(const double* in, double* out, int32_t n, double limit, double centre);

/** out[0] = in[0]; then in[i], or out[i-1] where |in[i] - out[i-1]| > limit: a jump repeats the last accepted value. */
ORVANE_API void filterByLimitAmpFilter(const double* in, double* out, int32_t n, double limit);

/**
 * Local least squares: at the points 0, step, 2 step, ... a polynomial is fitted to the window around the point; it
 * gives the values at the point and at the step - 1 points behind it.
 *
 * @param in      [n]
 * @param out     [n] out
 * @param n       number of values
 * @param width   of the window
 * @param degree  of the polynomial; below 0: 0; width - 1 at most
 * @param step    below 1: 1. Beyond width/2 the polynomial is continued outside its window
 */
ORVANE_API void filterByNLSM(const double* in, double* out, int32_t n, int32_t width, int32_t degree, int32_t step);

/**
 * Scalar Kalman filter, from x = 0, P = 0, for each measurement z:
 *
 *     x = a x + b z   P = a^2 P + q   K = P h/(h^2 P + r)   x += K (z - h x)   out = x   P *= 1 - K h
 */
ORVANE_API void filterByEKF(const double* in, double* out, int32_t n, double a, double b, double h, double q, double r);

/**
 * Savitzky-Golay smoothing: the value at its middle of the least-squares polynomial over the abscissae k dt,
 * k = -h..h, h = width/2; an even width counts as one more.
 *
 * @param in      [n]
 * @param out     [n] out
 * @param n       number of values
 * @param dt      spacing; the result does not depend on it, but 0 leaves a constant to fit, and NaN or infinity gives
 * NaN
 * @param degree  below 0: 0; from 2h on every point keeps its value
 * @param width   of the window
 */
ORVANE_API void filterBySavitzkyGolay(const double* in, double* out, int32_t n, double dt, int32_t degree,
                                      int32_t width);

/**
 * Convolution with the 2 half + 1 weights f(j/s) at distance j, divided by their sum; s = half + delta for delta >= 0,
 * else half - delta. Nothing keeps r = j/s below 1.
 *
 *      1  1-r                             11  (1-r)^2 (r+2)
 *      2  (1-r)^3 (3r+1)                  12  (1-r)^3 (r^2+3r+1)
 *      3  (1-r)^5 (8r^2+5r+1)             13  (1-r)^3 (3r^2+9r+8)
 *      4  (1-r)^2                         14  (1-r)^4 (3r^3+12r^2+16r+4)
 *      5  (1-r)^4 (4r+1)                  15  (1-r)^5 (r^4+5r^3+9r^2+5r+1)
 *      6  (1-r)^6 (35r^2+18r+3)           16  (1-r)^4 (5r^3+20r^2+29r+16)
 *      7  (1-r)^8 (32r^3+25r^2+8r+1)      17  (1-r)^5 (5r^4+25r^3+48r^2+40r+8)
 *      8  (1-r)^3                         18  (1-r)^6 (5r^5+30r^4+72r^3+82r^2+36r+6)
 *      9  (1-r)^5 (5r+1)                  19  (1-r)^7 (5r^6+35r^5+101r^4+147r^3+101r^2+35r+5)
 *     10  (1-r)^7 (16r^2+7r+1)
 *
 * @param in     [n]
 * @param out    [n] out
 * @param n      number of values
 * @param half   below 0 copies
 * @param delta  added to the scale by its size
 * @param kind   1..19; any other leaves out as it is
 */
ORVANE_API void filterByRadialFun(const double* in, double* out, int32_t n, int32_t half, double delta, uint8_t kind);

/**
 * Weighted mean: y[i] = sum of w[k] x[i - h + k]/sum of w[k] over the k whose index lies inside, h = (width - 1)/2.
 *
 * @param x        [n]
 * @param y        [n] out
 * @param n        number of values
 * @param weights  [width], of any length; null or a width below 1 copies. A sum of 0 gives infinity or NaN
 * @param width    number of weights
 */
ORVANE_API void data_Smooth1D(const double* x, double* y, int32_t n, const double* weights, int32_t width);

/** The same over all k, with indices outside reflected at the edges: -1 reads 0, -2 reads 1, n reads n - 1. */
ORVANE_API void data_Smooth1D2(const double* x, double* y, int32_t n, const double* weights, int32_t width);

/**
 * Whittaker's smoothing: the y that minimises sum (x - y)^2 + lambda sum (y[i] - 2 y[i+1] + y[i+2])^2, in time O(n).
 *
 * @param x       [n]
 * @param n       number of values
 * @param lambda  below 0 copies
 * @param y       [n] out; a copy for n < 4
 */
ORVANE_API void data_SmoothWhittaker1D(const double* x, int32_t n, double lambda, double* y);

/**
 * Mean of the window without the border rule: point i < h = width/2 takes the mean of the first i + 1 values, its
 * mirror that of the last i + 1.
 *
 * @param x      [n]
 * @param n      number of values
 * @param width  below 2, or n - 1 and more: copies
 * @param y      [n] out
 */
ORVANE_API void data_smoothByWindowMean(const double* x, int32_t n, int32_t width, double* y);

/** Median of the same windows. */
ORVANE_API void data_smoothByWindowMedian(const double* x, int32_t n, int32_t width, double* y);

/**
 * Whittaker's smoothing of a matrix, as data_SmoothWhittaker1D down every column and along every row.
 *
 * @param rowPointers  [rows] rows of [cols] values
 * @param out          [rows*cols] row-major; must not overlap the rows
 * @param a, b         lambda down the columns, and along the rows; below 0 leaves that direction as it is
 * @param rows         number of rows
 * @param cols         number of columns
 */
ORVANE_API void api_DataSmooth(const double* const* rowPointers, double* out, double a, double b, int32_t rows,
                               int32_t cols);

/**
 * A smoothing line through n evenly spaced samples, at no sample farther than tol from it: least-squares polynomials of
 * degree m, each over as many samples as it can follow within tol. Neighbours share up to half of their samples, over
 * which the one passes into the other by 3t^2 - 2t^3.
 *
 * @param data  [n] samples, copied; a value that is not finite is followed by short pieces
 * @param n     number of samples
 * @param m     degree; below 0: 0
 * @param tol   with 0, below it or NaN the line goes through the samples
 * @return      handle, released by api_FreeHandle
 */
ORVANE_API SmoothLine* api_SmoothLine_Create(const double* data, int32_t n, int32_t m, double tol);

/**
 * The line at the samples.
 *
 * @param line  smoothing line
 * @param out   [n] out; null asks for the count alone
 * @return     n
 */
ORVANE_API int32_t api_SmoothLine_GetRes(const SmoothLine* line, double* out);

/**
 * Smooth interpolation between two points: the cubic with the given values and slopes there, continued by straight
 * lines outside. The points may stand in either order; between points of one abscissa there is nothing, it belongs to
 * the left.
 *
 * @param x0      abscissa of the first point
 * @param y0      value there
 * @param slope0  slope there
 * @param x1      abscissa of the second point
 * @param y1      value there
 * @param slope1  slope there
 * @param x       [n] abscissae
 * @param y       [n] out
 * @param n       number of abscissae
 */
ORVANE_API void data_calcSmoothLineIn2Point(double x0, double y0, double slope0, double x1, double y1, double slope1,
                                            const double* x, double* y, int32_t n);

/**
 * First differences out[i] = x[i+1] - x[i].
 *
 * @param x    [n]
 * @param n    number of values
 * @param out  [n-1] out
 * @return     n - 1; 0 for n below 1
 */
ORVANE_API int32_t calFirstOrderDiff(const double* x, int32_t n, double* out);

/**
 * Derivative of samples at even spacing: at every point that of the polynomial through it and its neighbours, five
 * points in all (error of order dh^4), or n where there are fewer; 0 for a single one.
 *
 * @param y   [n]
 * @param n   number of values
 * @param dh  spacing; 0 gives infinity or NaN
 * @param dy  [n] out; must not be y
 */
ORVANE_API void data_calcDataDiffBySameDh(const double* y, int32_t n, double dh, double* dy);

/** The same at the abscissae x [n], in order; equal neighbours give infinity or NaN. */
ORVANE_API void data_calcDataDiffByUnSameDh(const double* x, const double* y, int32_t n, double* dy);

/**
 * Derivative of noisy samples: at every point that of the least-squares polynomial through the width points around it,
 * fewer on one side near the ends.
 *
 * @param x       [n] abscissae, in order
 * @param y       [n]
 * @param n       number of values
 * @param degree  below 0: 0; at most one less than the distinct abscissae of a window
 * @param width   held to 1..n
 * @param dy      [n] out; must not be x or y
 */
ORVANE_API void data_calcDataDiffByPiecePoly(const double* x, const double* y, int32_t n, int32_t degree, int32_t width,
                                             double* dy);

#endif
