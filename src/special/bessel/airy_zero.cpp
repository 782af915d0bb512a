// SPDX-License-Identifier: Apache-2.0
// Zeros of the Airy functions and their derivatives: tables, and beyond them the asymptotic series
// (DLMF 9.9.18-9.9.21).
#include <array>
#include <cmath>
#include <span>

#include "frame/numbers.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kAi[] = {-2.338107410459767,  -4.08794944413097,   -5.520559828095551,
                          -6.786708090071759,  -7.944133587120853,  -9.02265085334098,
                          -10.040174341558085, -11.008524303733262, -11.936015563236262};
constexpr double kBi[] = {-1.173713222709128, -3.271093302836353,  -4.830737841662016,
                          -6.169852128310251, -7.376762079367763,  -8.491948846509388,
                          -9.538194379346239, -10.529913506705357, -11.476953551278779};
constexpr double kDiffAi[] = {-1.01879297164747, -3.24819758217984, -4.82009921117874, -6.16330735563949,
                              -7.37217725504777, -8.48848673401972, -9.53544905243355, -10.5276603969574,
                              -11.4750566334802, -12.3847883718457};
constexpr double kDiffBi[] = {-2.29443968261412, -4.07315508907183, -5.5123957296636,
                              -6.78129444599031, -7.94017868916858, -9.01958335879424,
                              -10.0376963349085, -11.0064626677123, -11.9342616450148};

constexpr double kUnit = 1.1780972450961724;  // 3 pi/8

/// (m 3 pi/8)^(2/3). Those of the first zeros, which are asked for again, are computed once.
double twoThirdsPower(long long m) {
  const auto power = [](double multiple) {
    const volatile double exponent = 2.0 / 3;  // the standard library's power, not the compiler's
    return std::pow(multiple * kUnit, exponent);
  };
  static const auto kept = [power] {
    std::array<double, 512> powers{};
    for (std::size_t i = 0; i < powers.size(); ++i) powers[i] = power(static_cast<double>(i));
    return powers;
  }();
  const auto place = static_cast<std::size_t>(m);
  return place < kept.size() ? kept[place] : power(static_cast<double>(m));
}

[[gnu::noinline]] double functionSeries(long long m) {
  const double t = static_cast<double>(m) * kUnit, v = t * t;
  return -twoThirdsPower(m) *
         (((((485.5290969259571 / v - 15.509155201673648) / v + 0.9298442322530864) / v - 0.1388888888888889) / v +
           0.10416666666666667) /
              v +
          1);
}

[[gnu::noinline]] double derivativeSeries(long long m) {
  const double t = static_cast<double>(m) * kUnit, v = t * t;
  return -twoThirdsPower(m) *
         (((((15.016855549125514 - 476.9464414881744 / v) / v - 0.8739535108024692) / v + 0.12152777777777778) / v -
           0.14583333333333334) /
              v +
          1);
}

/// The n-th zero for n within 1e-15 of an integer: from the table, or the series at t = m 3 pi/8, m = 4n - shift.
inline double zero(double n, std::span<const double> table, int shift, double (*series)(long long)) {
  if (!(n >= 0.9 && n <= 1e18)) return kNaN;
  const auto index = static_cast<long long>(n < 4e15 ? n + 0.5 : n);
  if (std::abs(static_cast<double>(index) - n) > 1e-15) return kNaN;
  if (index <= static_cast<long long>(table.size())) return table[static_cast<std::size_t>(index - 1)];
  return series(4 * index - shift);
}

}  // namespace

double calcAiryAiZero(double n) { return zero(n, kAi, 1, functionSeries); }

double calcAiryBiZero(double n) { return zero(n, kBi, 3, functionSeries); }

double calcDiffAiryAiZero(double n) { return zero(n, kDiffAi, 3, derivativeSeries); }

double calcDiffAiryBiZero(double n) { return zero(n, kDiffBi, 1, derivativeSeries); }

}  // namespace SpecialFunction
