// SPDX-License-Identifier: Apache-2.0
#include "filter/design/filter_by_butterworth.h"

#include <cmath>

#include "filter/design/prototype.h"
#include "frame/code_table.h"
#include "orvane/filter.h"

namespace Filter {

namespace {

template <class Design>
std::unique_ptr<FilterByIIR> make() {
  return std::make_unique<Design>();
}

/// Epsilon of 0.5 dB in the pass band, sqrt(10^0.05 - 1), and of 40 dB in the stop band, 1/sqrt(10^4 - 1).
constexpr double kHalfDecibel = 0.34931140018894805, kFortyDecibels = 0.010000500037503125;

constexpr IIRRow kDesigns[] = {
    {ORVANE_IIR_BUTTERWORTH, 0.0, make<FilterByButterworth>},
    {ORVANE_IIR_BESSEL, 0.0, make<FilterByBessel>},
    {ORVANE_IIR_CHEBYSHEV_I, kHalfDecibel, make<FilterByChebyshevI>},
    {ORVANE_IIR_CHEBYSHEV_II, kFortyDecibels, make<FilterByChebyshevII>},
};

/// What the prototype's s becomes: top/bottom, polynomials in the unit delay.
struct Substitution {
  WidePolynomial top, bottom;
};

/// tan(pi f/fs)
Wide bentEdge(double frequency, double sampling) {
  const HP::SineCosine angle = sineCosine(pi() * Wide(frequency) / Wide(sampling));
  return Wide(angle.sine) / Wide(angle.cosine);
}

bool inBand(double frequency, double sampling) {
  return std::isfinite(sampling) && frequency > 0.0 && frequency < sampling / 2.0;
}

Substitution swapped(Substitution s) { return {s.bottom, s.top}; }

/// s = (1-z)/((1+z) t)
Substitution lowPass(const Wide& t) { return {{Wide(1.0), Wide(-1.0)}, {t, t}}; }

/// s = (u^2 + t1 t2)/((t2 - t1) u), u = (1-z)/(1+z)
Substitution bandPass(const Wide& t1, const Wide& t2) {
  const Wide middle = t1 * t2, width = t2 - t1, one(1.0), two(2.0);
  return {{one + middle, two * middle - two, one + middle}, {width, Wide(0.0), Wide(0.0) - width}};
}

/// False when what is asked allows no filter.
bool substitution(const BaseFilter& filter, Substitution& result) {
  const double sampling = filter.samplingFrequency;
  if (filter.filterType <= ORVANE_FILTER_HIGH_PASS) {
    if (!inBand(filter.limitFrequency, sampling)) return false;
    result = lowPass(bentEdge(filter.limitFrequency, sampling));
  } else if (filter.filterType <= ORVANE_FILTER_BAND_STOP) {
    const double low = filter.lowLimitFrequency, high = filter.highLimitFrequency;
    if (!inBand(low, sampling) || !inBand(high, sampling) || low >= high) return false;
    result = bandPass(bentEdge(low, sampling), bentEdge(high, sampling));
  } else {
    return false;
  }
  if (filter.filterType == ORVANE_FILTER_HIGH_PASS || filter.filterType == ORVANE_FILTER_BAND_STOP)
    result = swapped(result);
  return true;
}

}  // namespace

const IIRRow& iirDesign(int32_t kind) {
  const IIRRow* row = CodeTable<kDesigns>::find(kind);
  return row == nullptr ? kDesigns[0] : *row;
}

bool FilterByButterworth::designIIR(const std::vector<double>& params) {
  b.clear();
  a.clear();
  const double ripple = params.empty() ? 0.0 : params[0];
  Substitution s;
  if (order < 1 || order > kMaxOrder || !std::isfinite(ripple) || !substitution(*this, s)) return false;
  const Prototype analog = prototype(ripple);
  const auto n = static_cast<std::size_t>(order);
  const WidePolynomial num = substituted(analog.numerator, s.top, s.bottom, n);
  const WidePolynomial den = substituted(analog.denominator, s.top, s.bottom, n);
  for (const Wide& value : num) b.push_back(gain * (value / den[0]).toDouble());
  for (const Wide& value : den) a.push_back((value / den[0]).toDouble());
  return true;
}

}  // namespace Filter
