// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>

#include "filter/apply/convolution.h"
#include "filter/smooth/derivative.h"
#include "filter/smooth/point_filters.h"
#include "filter/smooth/smooth_data.h"
#include "filter/smooth/smoothers.h"
#include "filter/smooth/whittaker.h"
#include "filter/smooth/window_filters.h"
#include "frame/handle.h"
#include "orvane/smooth.h"

template <>
struct NativeOf<SmoothLine> {
  using type = Filter::SmoothData;
};

void filterByConvFilter(const double* in, double* out, int32_t n, const double* kernel, int32_t width) {
  Filter::convolve(span(in, n), out, span(kernel, width), false);
}

void filterBySqrtFilter(const double* in, double* out, int32_t n, int32_t width) {
  Filter::shaped(span(in, n), out, width, [](double x) { return std::sqrt(x); });
}

void filterBySquaredFilter(const double* in, double* out, int32_t n, int32_t width) {
  Filter::shaped(span(in, n), out, width, [](double x) { return x * x; });
}

void filterByMaxFilter(const double* in, double* out, int32_t n, int32_t width) {
  Filter::slidingMax(span(in, n), out, width);
}

void filterByMinFilter(const double* in, double* out, int32_t n, int32_t width) {
  Filter::slidingMin(span(in, n), out, width);
}

void filterByMeanFilter(const double* in, double* out, int32_t n, int32_t width) {
  Filter::slidingMean(span(in, n), out, width);
}

void filterByMeanSquaredFilter(const double* in, double* out, int32_t n, int32_t width) {
  Filter::slidingMeanSquared(span(in, n), out, width);
}

void filterByMedianFilter(const double* in, double* out, int32_t n, int32_t width) {
  Filter::slidingMedian(span(in, n), out, width);
}

void filterByHardLimitFilter(const double* in, double* out, int32_t n, double limit, double centre) {
  Filter::hardLimit(span(in, n), out, limit, centre);
}

void filterByLimitAmpFilter(const double* in, double* out, int32_t n, double limit) {
  Filter::limitAmp(span(in, n), out, limit);
}

void filterByNLSM(const double* in, double* out, int32_t n, int32_t width, int32_t degree, int32_t step) {
  Filter::localFits(span(in, n), out, width, degree, step);
}

void filterByEKF(const double* in, double* out, int32_t n, double a, double b, double h, double q, double r) {
  Filter::kalman(span(in, n), out, {a, b, h, q, r});
}

void filterBySavitzkyGolay(const double* in, double* out, int32_t n, double dt, int32_t degree, int32_t width) {
  Filter::savitzkyGolay(span(in, n), out, dt, degree, width);
}

void filterByRadialFun(const double* in, double* out, int32_t n, int32_t half, double delta, uint8_t kind) {
  Filter::radial(span(in, n), out, half, delta, kind);
}

void data_Smooth1D(const double* x, double* y, int32_t n, const double* weights, int32_t width) {
  Filter::weightedMean(span(x, n), y, span(weights, width));
}

void data_Smooth1D2(const double* x, double* y, int32_t n, const double* weights, int32_t width) {
  Filter::weightedMeanReflected(span(x, n), y, span(weights, width));
}

void data_SmoothWhittaker1D(const double* x, int32_t n, double lambda, double* y) {
  Filter::whittaker(span(x, n), lambda, y);
}

void data_smoothByWindowMean(const double* x, int32_t n, int32_t width, double* y) {
  Filter::windowMean(span(x, n), y, width);
}

void data_smoothByWindowMedian(const double* x, int32_t n, int32_t width, double* y) {
  Filter::windowMedian(span(x, n), y, width);
}

void api_DataSmooth(const double* const* rowPointers, double* out, double a, double b, int32_t rows, int32_t cols) {
  if (cols > 0) Filter::whittaker2D(span(rowPointers, rows), static_cast<std::size_t>(cols), a, b, out);
}

SmoothLine* api_SmoothLine_Create(const double* data, int32_t n, int32_t m, double tol) {
  return registeredShared<SmoothLine>(
      std::make_shared<Filter::SmoothData>(span(data, n), static_cast<std::size_t>(std::max(m, 0)), tol));
}

int32_t api_SmoothLine_GetRes(const SmoothLine* line, double* out) {
  if (out != nullptr) native(line).result(out);
  return static_cast<int32_t>(native(line).size());
}

void data_calcSmoothLineIn2Point(double x0, double y0, double slope0, double x1, double y1, double slope1,
                                 const double* x, double* y, int32_t n) {
  Filter::lineBetween({x0, y0, slope0}, {x1, y1, slope1}, span(x, n), y);
}

int32_t calFirstOrderDiff(const double* x, int32_t n, double* out) { return Filter::firstDifferences(span(x, n), out); }

void data_calcDataDiffBySameDh(const double* y, int32_t n, double dh, double* dy) {
  Filter::derivativeEven(span(y, n), dh, dy);
}

void data_calcDataDiffByUnSameDh(const double* x, const double* y, int32_t n, double* dy) {
  Filter::derivative(span(x, n), y, dy);
}

void data_calcDataDiffByPiecePoly(const double* x, const double* y, int32_t n, int32_t degree, int32_t width,
                                  double* dy) {
  Filter::derivativeByPieces(span(x, n), y, static_cast<std::size_t>(std::max(degree, 0)),
                             static_cast<std::size_t>(std::max(width, 1)), dy);
}
