// SPDX-License-Identifier: Apache-2.0
#include "filters.h"

#include <orvane/filter.h>
#include <orvane/transform.h>

#include <cmath>

#include "complaint.h"
#include "handle.h"
#include "page.h"
#include "view.h"

namespace {

constexpr int32_t kOrder = 4;
constexpr size_t kResponse = 4096;  // samples of an impulse response

struct Design {
  const char* name;
  int kind;  ///< ORVANE_IIR_..., or -1 for the window design
};
constexpr Design kDesigns[] = {{"window (Hamming)", -1},
                               {"Butterworth", ORVANE_IIR_BUTTERWORTH},
                               {"Bessel", ORVANE_IIR_BESSEL},
                               {"Chebyshev I", ORVANE_IIR_CHEBYSHEV_I},
                               {"Chebyshev II", ORVANE_IIR_CHEBYSHEV_II}};

struct LowPass {
  Owned<FirFilter> handle;
  Series decibels, delay;  ///< over the frequencies up to half the rate; the delay in samples

  Series run(const Series& x) const {
    Series y(x.size());
    if (!fir_filter(handle.get(), x.data(), y.data(), count(x))) throw Complaint("a filter has blown up");
    return y;
  }
};

/// Magnitude and group delay from the transforms of h[n] and n h[n].
void respond(LowPass& filter) {
  Series impulse(kResponse, 0.0);
  impulse[0] = 1;
  const Series h = filter.run(impulse);
  Series ramp(h), re(h.size()), im(h.size()), rampRe(h.size()), rampIm(h.size());
  for (size_t i = 0; i < h.size(); ++i) ramp[i] *= static_cast<double>(i);
  data_FFT(h.data(), count(h), nullptr, 0, re.data(), im.data());
  data_FFT(ramp.data(), count(ramp), nullptr, 0, rampRe.data(), rampIm.data());
  for (size_t k = 0; k < h.size() / 2; ++k) {
    const double square = re[k] * re[k] + im[k] * im[k];
    filter.decibels.push_back(10 * std::log10(std::max(square, 1e-30)));
    // Where next to nothing passes, the quotient says nothing.
    filter.delay.push_back(square > 1e-4 ? (rampRe[k] * re[k] + rampIm[k] * im[k]) / square : NAN);
  }
}

LowPass designed(const Design& design, double rate, double edge, int32_t taps) {
  LowPass filter{Owned<FirFilter>(fir_Create()), {}, {}};
  FirFilter* const fir = filter.handle.get();
  fir_setType(fir, ORVANE_FILTER_LOW_PASS);
  fir_setSamplingFrequency(fir, rate);
  fir_setLimitFrequency(fir, edge);
  fir_setFilterOrder(fir, design.kind < 0 ? taps : kOrder);
  if (design.kind < 0) {
    fir_setWindow(fir, ORVANE_WINDOW_HAMMING);
    fir_solveByWindow(fir);
  } else {
    fir_solveByIIR(fir, 1, static_cast<uint8_t>(design.kind));
  }
  if (!fir_judgeCoefficient(fir)) throw Complaint("no filter has this edge");
  respond(filter);
  return filter;
}

}  // namespace

std::string filterSection(Record& record, double edge) {
  if (!(edge < record.rate / 2))
    throw Complaint("--edge: " + shortNumber(edge) + " is not below half the rate, " + shortNumber(record.rate / 2));
  const int32_t taps = 2 * static_cast<int32_t>(2.5 * record.rate) + 1, delay = taps / 2;
  std::vector<LowPass> filters;
  for (const Design& design : kDesigns) filters.push_back(designed(design, record.rate, edge, taps));

  // The last value behind the record, so that the last points come out as well.
  Series longer(record.level);
  longer.resize(longer.size() + static_cast<size_t>(delay), record.level.back());
  const Series moved = filters[0].run(longer);
  record.designed.assign(moved.begin() + delay, moved.end());
  record.recursed = filters[1].run(record.level);

  Series frequency;
  for (size_t k = 0; k < kResponse / 2; ++k)
    frequency.push_back(record.rate * static_cast<double>(k) / static_cast<double>(kResponse));
  std::vector<Curve> magnitudes, delays;
  for (size_t i = 0; i < filters.size(); ++i) {
    magnitudes.push_back({kDesigns[i].name, &filters[i].decibels});
    delays.push_back({kDesigns[i].name, &filters[i].delay});
  }
  const Axis upTo{0, std::min(8 * edge, record.rate / 2), "cycles a unit of time"};
  return "<h2 id=\"filters\">Low-passes at " + shortNumber(edge) + " cycles a unit of time</h2>\n<p class=\"soft\">" +
         std::to_string(taps) + " coefficients by a window; order " + std::to_string(kOrder) +
         " for the recursive filters.</p>\n" +
         curves("magnitude", "Magnitude", frequency, upTo, {-90, 5, "decibels"}, magnitudes, "What passes.") +
         curves("delay", "Group delay", frequency, {0, 2 * edge, upTo.label},
                {0, 1.3 * static_cast<double>(delay), "samples"}, delays,
                "How late it passes: the same for all frequencies by the symmetric filter, nearly so by Bessel's. Cut "
                "where less than a hundredth passes.") +
         View(record, 12)
             .figure("filtered", "The record through the filters", record.name,
                     {{"record less a cubic", &record.level},
                      {"window, moved by its delay", &record.designed},
                      {"Butterworth, as it comes", &record.recursed}},
                     "The last 12 units of time.");
}
