// SPDX-License-Identifier: Apache-2.0
#include "filter/design/filter_by_fir.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

#include "filter/angles.h"
#include "filter/apply/blow_up.h"
#include "filter/apply/convolution.h"
#include "filter/design/filter_by_butterworth.h"
#include "filter/windows/window_table.h"
#include "orvane/filter.h"

namespace Filter {

namespace {

constexpr double kPi = std::numbers::pi;

/// y[i] = sum of kernel[k] padded[i + k]; false at the first value that has blown up, which is cleared with the rest.
bool run(const std::vector<double>& padded, std::span<const double> kernel, double* y, int32_t n) {
  correlate(padded.data(), kernel, y, static_cast<std::size_t>(n));
  double* const bad = std::find_if(y, y + n, blownUp);
  std::fill(bad, y + n, 0.0);
  return bad == y + n;
}

/// x with zeros on both sides.
std::vector<double> zeroBorder(const double* x, int32_t n, std::size_t front, std::size_t back) {
  std::vector<double> padded(front + static_cast<std::size_t>(n) + back, 0.0);
  std::copy_n(x, n, padded.data() + front);
  return padded;
}

}  // namespace

void FilterByFIR::setNorm(double value) {
  normEnabled = !(value > 1e100);
  if (normEnabled) normValue = value;
}

void FilterByFIR::setWindow(int32_t code) { window = makeWindow(code); }

void FilterByFIR::setWindowParams(std::span<const double> values) {
  if (window == nullptr) return;
  for (std::size_t i = 0; i < values.size(); ++i) window->setParam(static_cast<int32_t>(i) + 1, values[i]);
}

void FilterByFIR::setWindowParam(double value) { setWindowParams({&value, 1}); }

double FilterByFIR::getWindowParam(int32_t number) const { return window == nullptr ? 0.0 : window->param(number); }

void FilterByFIR::setFilterOrder(int32_t n) { coefficients.resize(static_cast<std::size_t>(std::max(n, 0))); }

/// The impulse response of the ideal filter at distance t from its centre.
double FilterByFIR::idealResponse(std::size_t i) const {
  const bool single = filterType == ORVANE_FILTER_LOW_PASS || filterType == ORVANE_FILTER_BAND_STOP;
  const auto last = static_cast<double>(coefficients.size() - 1);
  // KEPT: low-pass and band-stop form the half length in single precision; expected: in double (kept.csv: Window_half)
  const double half = single ? static_cast<double>(static_cast<float>(last) / 2.0F) : last / 2.0;
  const double t = static_cast<double>(i) - half;
  // A band is the difference of two low-passes, a high-pass what a low-pass leaves of all frequencies, angle pi.
  const auto upTo = [t](double w) { return std::abs(t) > 1e-12 ? sinOf(w * t) / (kPi * t) : w / kPi; };
  switch (filterType) {
    case ORVANE_FILTER_LOW_PASS:
      return upTo(angleOf(limitFrequency));
    case ORVANE_FILTER_HIGH_PASS:
      return upTo(kPi) - upTo(angleOf(limitFrequency));
    case ORVANE_FILTER_BAND_PASS:
      return upTo(angleOf(highLimitFrequency)) - upTo(angleOf(lowLimitFrequency));
    default:
      return upTo(angleOf(lowLimitFrequency)) + upTo(kPi) - upTo(angleOf(highLimitFrequency));
  }
}

void FilterByFIR::normalise() {
  // KEPT: every type is scaled by its sum, the gain at frequency 0; expected: the gain in the pass band (kept.csv:
  // Norm_sum)
  const double sum = std::accumulate(coefficients.begin(), coefficients.end(), 0.0);
  double factor = 1.0;
  if (sum > 1e-12) factor = normValue / sum;
  // KEPT: a negative sum keeps its sign and gets the size normValue; expected: the sum normValue (kept.csv:
  // Norm_negative)
  if (sum < -1e-12) factor = -normValue / sum;
  for (double& value : coefficients) value *= factor;
}

void FilterByFIR::solveByWindow() {
  if (coefficients.empty() || filterType > ORVANE_FILTER_BAND_STOP) return;
  firMode = true;
  convMethod = 0;
  for (std::size_t i = 0; i < coefficients.size(); ++i) coefficients[i] = idealResponse(i);
  if (window != nullptr) {
    const std::vector<double> w = window->getWindow(static_cast<int32_t>(coefficients.size()));
    std::ranges::transform(coefficients, w, coefficients.begin(), std::multiplies<>());
  }
  if (normEnabled) normalise();
}

bool FilterByFIR::judgeCoefficient() const {
  if (firMode) return usableCoefficients(coefficients);
  return iirFilter != nullptr && iirFilter->isValid();
}

int32_t FilterByFIR::getCoefficient(double* out) const {
  if (out != nullptr) std::ranges::copy(coefficients, out);
  return static_cast<int32_t>(coefficients.size());
}

bool FilterByFIR::setCoefficient(const double* in) {
  if (coefficients.empty()) return false;
  // KEPT: as many coefficients as the sampling frequency in hertz at most; expected: any number (kept.csv:
  // SetCoefficient_sampling)
  if (static_cast<double>(coefficients.size()) > samplingFrequency) return false;
  std::copy_n(in, coefficients.size(), coefficients.begin());
  return true;
}

bool FilterByFIR::filter(const double* x, double* y, int32_t from, int32_t to) {
  std::fill(y, y + std::max(to, 0), 0.0);
  if (!firMode) return iirFilter != nullptr && iirFilter->filter(x, y, from, to);
  if (coefficients.empty()) return false;
  from = std::max(from, 0);
  if (to <= from) return true;
  if (convMethod == 1) {
    if (optimizer == nullptr || optimizer->result.empty()) return false;
    const std::size_t size = optimizer->result.size();
    const std::vector<double> padded = zeroBorder(x, to, (size - 1) / 2, size / 2);
    return run({padded.begin() + from, padded.end()}, optimizer->result, y + from, to - from);
  }
  const int32_t end = soundEnd(coefficients, to);
  if (end <= from) return false;
  const std::span<const double> finite = finitePart(coefficients);
  const std::vector<double> reversed(finite.rbegin(), finite.rend());
  const std::vector<double> padded = zeroBorder(x, end, reversed.size() - 1, 0);
  return run({padded.begin() + from, padded.end()}, reversed, y + from, end - from) && end == to;
}

FilterOptByFIR& FilterByFIR::getOptimizer() {
  if (optimizer == nullptr) optimizer = std::make_unique<FilterOptByFIR>();
  return *optimizer;
}

void FilterByFIR::clearSamples() {
  if (optimizer != nullptr) optimizer->clear();
}

double FilterByFIR::solveByLineFIRSolver(uint8_t method) {
  if (optimizer == nullptr || coefficients.empty()) return kNoFit;
  firMode = true;
  convMethod = 1;
  const double error = optimizer->solve(coefficients.size(), method);
  if (error != kNoFit) coefficients = optimizer->result;
  return error;
}

bool FilterByFIR::solveByIIR(int32_t kind, double gain) {
  const IIRRow& row = iirDesign(kind);
  iirFilter = row.make();
  firMode = false;
  iirFilter->setGain(gain);
  iirFilter->setLimitFrequency(limitFrequency);
  iirFilter->setSamplingFrequency(samplingFrequency);
  iirFilter->setLowLimitFrequency(lowLimitFrequency);
  iirFilter->setHighLimitFrequency(highLimitFrequency);
  iirFilter->setType(filterType);
  iirFilter->setNorm(normEnabled ? normValue : 1e300);
  iirFilter->setOrder(static_cast<int32_t>(coefficients.size()));
  return iirFilter->designIIR({row.ripple, 0.0, 0.0});
}

void FilterByFIR::getIIRCoefficient(double* b, double* a, int32_t* nb, int32_t* na) const {
  if (nb != nullptr) *nb = iirFilter == nullptr ? 0 : iirFilter->getNumerator(b);
  if (na != nullptr) *na = iirFilter == nullptr ? 0 : iirFilter->getDenominator(a);
}

void FilterByFIR::setIIRCoefficient(std::span<const double> b, std::span<const double> a) {
  if (iirFilter != nullptr) iirFilter->setCoefficients(b, a);
}

void FilterByFIR::createIIR() {
  firMode = false;
  if (iirFilter == nullptr) iirFilter = std::make_unique<FilterByButterworth>();
}

}  // namespace Filter
