// SPDX-License-Identifier: Apache-2.0
#include "filter/windows/window_table.h"

#include "filter/windows/bell_windows.h"
#include "filter/windows/cosine_windows.h"
#include "filter/windows/polynomial_windows.h"
#include "frame/code_table.h"
#include "orvane/filter.h"

namespace Filter {

namespace {

struct WindowRow {
  int32_t code;
  std::unique_ptr<BaseWindow> (*make)();
};

template <class Window>
std::unique_ptr<BaseWindow> make() {
  return std::make_unique<Window>();
}

constexpr WindowRow kWindows[] = {
    {ORVANE_WINDOW_BARTLETT_HANN, make<BartlettHannWindow>},
    {ORVANE_WINDOW_BLACKMAN, make<BlackmanWindow>},
    {ORVANE_WINDOW_BLACKMAN_HARRIS, make<BlackmanHarris>},
    {ORVANE_WINDOW_BLACKMAN_NUTTALL, make<BlackmanNuttall>},
    {ORVANE_WINDOW_CONFINED_GAUSSIAN, make<ConfinedGaussianWindow>},
    {ORVANE_WINDOW_COSINE_SUM, make<CosineSumWindow>},
    {ORVANE_WINDOW_DOLPH_CHEBYSHEV, make<DolphChebyshevWindow>},
    {ORVANE_WINDOW_FLATTOP, make<FlattopWindow>},
    {ORVANE_WINDOW_GAUSSIAN, make<GaussianWindow>},
    {ORVANE_WINDOW_GPA, make<GPAWindow>},
    {ORVANE_WINDOW_HAMMING, make<HammingWindow>},
    {ORVANE_WINDOW_HANNING, make<HanningWindow>},
    {ORVANE_WINDOW_HANN_POISSON, make<HannPoissonWindow>},
    {ORVANE_WINDOW_KAISER, make<KaiserWindow>},
    {ORVANE_WINDOW_LANCZOS, make<LanczosWindow>},
    {ORVANE_WINDOW_NUTTALL, make<NuttallWindow>},
    {ORVANE_WINDOW_PARZEN, make<ParzenWindow>},
    {ORVANE_WINDOW_PLANCK_TAPER, make<PlanckTaperWindow>},
    {ORVANE_WINDOW_POWER_SINE, make<PowerSineWindow>},
    {ORVANE_WINDOW_RECTANGULAR, make<RectangularWindow>},
    {ORVANE_WINDOW_SINE, make<SineWindow>},
    {ORVANE_WINDOW_TRIANGULAR, make<TriangularWindow>},
    {ORVANE_WINDOW_TUKEY, make<TukeyWindow>},
    {ORVANE_WINDOW_ULTRASPHERICAL, make<UltrasphericalWindow>},
    {ORVANE_WINDOW_WELCH, make<WelchWindow>},
};

}  // namespace

std::unique_ptr<BaseWindow> makeWindow(int32_t code) {
  const WindowRow* row = CodeTable<kWindows>::find(code);
  return row == nullptr ? nullptr : row->make();
}

}  // namespace Filter
