// SPDX-License-Identifier: Apache-2.0
#include "spectrum.h"

#include <orvane/filter.h>
#include <orvane/transform.h>

#include <algorithm>
#include <cmath>

#include "complaint.h"
#include "handle.h"
#include "page.h"
#include "view.h"

namespace {

constexpr NamedWindow kWindows[] = {
    {"hanning", ORVANE_WINDOW_HANNING},   {"hamming", ORVANE_WINDOW_HAMMING},
    {"blackman", ORVANE_WINDOW_BLACKMAN}, {"blackman-harris", ORVANE_WINDOW_BLACKMAN_HARRIS},
    {"nuttall", ORVANE_WINDOW_NUTTALL},   {"flattop", ORVANE_WINDOW_FLATTOP},
    {"kaiser", ORVANE_WINDOW_KAISER},     {"gaussian", ORVANE_WINDOW_GAUSSIAN},
    {"tukey", ORVANE_WINDOW_TUKEY},       {"welch", ORVANE_WINDOW_WELCH},
};

constexpr size_t kPadding = 8, kMostPeaks = 6;

/// The window itself, of sum 1: the impulse response of a low-pass whose edge is next to 0 is flat.
Series windowOf(size_t n, int code) {
  const Owned<FirFilter> fir(fir_Create());
  fir_setLimitFrequency(fir.get(), 1e-9);
  fir_setFilterOrder(fir.get(), static_cast<int32_t>(n));
  fir_setWindow(fir.get(), code);
  fir_solveByWindow(fir.get());
  Series window(n);
  fir_getCoefficient(fir.get(), window.data());
  return window;
}

/// Amplitudes of the sines that x is made of, zeros behind it for points between the bins.
Series amplitudes(const Record& record, int code, Series& frequency) {
  const Series window = windowOf(record.level.size(), code);
  Series x(record.level.size() * kPadding, 0.0);
  for (size_t i = 0; i < window.size(); ++i) x[i] = 2 * record.level[i] * window[i];
  Series amplitude(x.size() / 2);
  frequency.resize(x.size() / 2);
  data_plotFFT(x.data(), count(x), record.rate, frequency.data(), amplitude.data());
  return amplitude;
}

/// Maxima that stand out by a factor of 3 from the valleys on both sides.
std::vector<Peak> peaksOf(const Series& frequency, const Series& amplitude) {
  std::vector<Peak> peaks;
  for (size_t i = 1; i + 1 < amplitude.size(); ++i) {
    if (!(amplitude[i] > amplitude[i - 1] && amplitude[i] >= amplitude[i + 1])) continue;
    const auto valley = [&](int step) {
      double low = amplitude[i];
      for (size_t j = i; j > 0 && j + 1 < amplitude.size() && amplitude[j] <= amplitude[i]; j += step)
        low = std::min(low, amplitude[j]);
      return low;
    };
    if (std::max(valley(-1), valley(1)) * 3 < amplitude[i]) peaks.push_back({frequency[i], amplitude[i]});
  }
  std::sort(peaks.begin(), peaks.end(), [](const Peak& a, const Peak& b) { return a.amplitude > b.amplitude; });
  peaks.resize(std::min(peaks.size(), kMostPeaks));
  return peaks;
}

Series decibels(Series amplitude, double reference) {
  for (double& value : amplitude) value = 20 * std::log10(std::max(value / reference, 1e-12));
  return amplitude;
}

}  // namespace

std::string windowNames() {
  std::string names;
  for (const NamedWindow& window : kWindows) names += (names.empty() ? "" : ", ") + std::string(window.name);
  return names;
}

NamedWindow windowNamed(const std::string& name) {
  for (const NamedWindow& window : kWindows)
    if (name == window.name) return window;
  throw Complaint("--window: \"" + name + "\" is none of " + windowNames());
}

Spectrum spectrumOf(const Record& record, const NamedWindow& window) {
  Spectrum spectrum{window, {}, {}, {}, {}};
  spectrum.plain = amplitudes(record, ORVANE_WINDOW_RECTANGULAR, spectrum.frequency);
  spectrum.windowed = amplitudes(record, window.code, spectrum.frequency);
  spectrum.peaks = peaksOf(spectrum.frequency, spectrum.windowed);
  return spectrum;
}

void takeBand(Record& record, const Spectrum& spectrum) {
  const double middle = spectrum.peaks.empty() ? 1 : spectrum.peaks[0].frequency;
  record.band.resize(record.level.size());
  record.envelope.resize(record.level.size());
  data_FilterByFFT(record.level.data(), record.band.data(), 0.7 * middle, 1.3 * middle, 0, record.rate,
                   count(record.level));
  data_getHilbertInfo(record.band.data(), count(record.band), record.envelope.data(), ORVANE_HILBERT_ENVELOPE);
}

std::string spectrumSection(const Record& record, const Spectrum& spectrum) {
  const double top = *std::max_element(spectrum.plain.begin(), spectrum.plain.end());
  const Series plain = decibels(spectrum.plain, top), windowed = decibels(spectrum.windowed, top);
  std::string html =
      "<h2 id=\"spectrum\">Its spectrum</h2>\n" +
      curves("amplitudes", "Spectrum", spectrum.frequency, {0, spectrum.frequency.back(), "cycles a unit of time"},
             {-90, 5, "decibels"}, {{"no window", &plain}, {spectrum.window.name, &windowed}},
             "The record less a cubic. Without a window the great peaks leak over all frequencies; a "
             "window makes every peak wider and lets the small ones be seen.") +
      tableHead({"Peak", "Cycles a unit", "Period in units", "Amplitude"});
  int place = 0;
  for (const Peak& peak : spectrum.peaks)
    html += "<tr><td>" + std::to_string(++place) + "</td>" + numberCell(peak.frequency) +
            numberCell(1 / peak.frequency) + numberCell(peak.amplitude) + "</tr>\n";
  return html + kTableEnd +
         View(record).figure("band", "Band around the greatest peak", record.name,
                             {{"band", &record.band}, {"envelope", &record.envelope}},
                             "The frequencies within 30 % of the greatest peak, and the envelope: the size of the "
                             "analytic signal.");
}
