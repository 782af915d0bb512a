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

/// tan(pi f/fs), which folds at fs.
Wide bentEdge(double frequency, double sampling) {
  const double folded = std::remainder(frequency, sampling);
  if (folded == 0.0) return Wide(0.0);
  const HP::SineCosine angle = sineCosine(pi() * Wide(folded) / Wide(sampling));
  return Wide(angle.sine) / Wide(angle.cosine);
}

bool isBand(uint8_t type) { return type == ORVANE_FILTER_BAND_PASS || type == ORVANE_FILTER_BAND_STOP; }

/// Whether the formulas have values: the type and the frequencies that it reads.
bool hasFormula(const BaseFilter& f) {
  const bool usable = std::isfinite(f.samplingFrequency) && f.samplingFrequency != 0.0;
  if (isBand(f.filterType)) return usable && std::isfinite(f.lowLimitFrequency) && std::isfinite(f.highLimitFrequency);
  return usable && f.filterType <= ORVANE_FILTER_HIGH_PASS && std::isfinite(f.limitFrequency);
}

/// Whether what they give is the filter asked for: edges in order between 0 and fs/2.
bool edgesInOrder(const BaseFilter& f) {
  const double most = f.samplingFrequency / 2.0;
  if (!isBand(f.filterType)) return 0.0 < f.limitFrequency && f.limitFrequency < most;
  return 0.0 < f.lowLimitFrequency && f.lowLimitFrequency < f.highLimitFrequency && f.highLimitFrequency < most;
}

/// s = (1-z)/((1+z) t)
Substitution lowPass(const Wide& t) { return {{Wide(1.0), Wide(-1.0)}, {t, t}}; }

/// s = (u^2 + t1 t2)/((t2 - t1) u), u = (1-z)/(1+z)
Substitution bandPass(const Wide& t1, const Wide& t2) {
  const Wide middle = t1 * t2, width = t2 - t1, one(1.0), two(2.0);
  return {{one + middle, two * middle - two, one + middle}, {width, Wide(0.0), Wide(0.0) - width}};
}

Substitution substitution(const BaseFilter& f) {
  const auto edge = [&f](double frequency) { return bentEdge(frequency, f.samplingFrequency); };
  const Substitution s = isBand(f.filterType) ? bandPass(edge(f.lowLimitFrequency), edge(f.highLimitFrequency))
                                              : lowPass(edge(f.limitFrequency));
  const bool rest = f.filterType == ORVANE_FILTER_HIGH_PASS || f.filterType == ORVANE_FILTER_BAND_STOP;
  return rest ? Substitution{s.bottom, s.top} : s;
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
  if (order < 0 || order > kMaxOrder || !std::isfinite(ripple) || !hasFormula(*this)) return false;
  const Substitution s = substitution(*this);
  const Prototype analog = order == 0 ? Prototype{{Wide(1.0)}, {Wide(1.0)}} : prototype(ripple);
  const auto n = static_cast<std::size_t>(order);
  const WidePolynomial num = substituted(analog.numerator, s.top, s.bottom, n);
  const WidePolynomial den = substituted(analog.denominator, s.top, s.bottom, n);
  if (den[0].isZero()) return false;
  for (const Wide& value : num) b.push_back(gain * (value / den[0]).toDouble());
  for (const Wide& value : den) a.push_back((value / den[0]).toDouble());
  return edgesInOrder(*this);
}

}  // namespace Filter
