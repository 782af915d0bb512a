// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

namespace Statistics {

/// The place of a double in the ascending order of all doubles.
inline int64_t placeOf(double x) {
  const auto bits = std::bit_cast<int64_t>(x);
  return bits < 0 ? INT64_MIN - bits : bits;
}

inline double doubleAt(int64_t place) { return std::bit_cast<double>(place < 0 ? INT64_MIN - place : place); }

/// Of cdf(x) >= q it is known that it does not hold up to `below` and holds from `above` on.
struct KnownPlaces {
  int64_t below, above;
};

/// As much of that as a few values tell, by secants of log(p/(1-p)) over the places, which are about log x. A
/// distribution function rises but for its rounding: a share that is off q by `margin`, which must be far above that
/// rounding, decides for all places beyond.
template <class CDF>
KnownPlaces knownPlaces(double q, double margin, KnownPlaces ends, CDF&& cdf) {
  if (!(margin < 0.01 * q)) return ends;
  constexpr double kNear = 1e-7, kBinade = 0x1p52;
  constexpr int kMostValues = 20;
  struct Point {
    double place, height;  // 0 at the quantile
  };
  const auto logit = [](double p) { return std::log(p) - std::log1p(-p); };
  KnownPlaces known = ends;
  int values = 0;
  const auto pointAt = [&, target = logit(q)](double place) {
    const auto at = std::clamp(static_cast<int64_t>(place), ends.below + 1, ends.above - 1);
    const double share = cdf(doubleAt(at));
    ++values;
    if (share <= q - margin) known.below = std::max(known.below, at);
    if (share >= q + margin) known.above = std::min(known.above, at);
    return Point{static_cast<double>(at), logit(std::clamp(share, 1e-300, 1 - 0x1p-53)) - target};
  };
  // From 1, or half the highest, by steps that double.
  Point last = pointAt(static_cast<double>(placeOf(std::min(1.0, doubleAt(ends.above) / 2)))), now = last;
  for (double step = last.height < 0 ? kBinade : -kBinade; values < kMostValues; step *= 2) {
    now = pointAt(last.place + step);
    if ((now.height < 0) != (last.height < 0)) break;
    last = now;
  }
  while (values < kMostValues) {
    const double slope = (now.height - last.height) / (now.place - last.place), root = now.place - now.height / slope;
    if (!(slope > 0)) break;
    if (std::abs(now.height) < kNear) {
      // Near enough for the two places about the quantile.
      const double away = 2 * margin / (slope * q * (1 - q));
      for (double factor = 1; factor < 100 && static_cast<double>(known.below) < root - 20 * away; factor *= 8)
        pointAt(root - factor * away);
      for (double factor = 1; factor < 100 && static_cast<double>(known.above) > root + 20 * away; factor *= 8)
        pointAt(root + factor * away);
      break;
    }
    const auto below = static_cast<double>(known.below), above = static_cast<double>(known.above);
    last = now;
    now = pointAt(root > below && root < above ? root : below / 2 + above / 2);
  }
  return known.below < known.above ? known : ends;
}

/// The least double x in (low, high] with cdf(x) >= q, by bisection in the order of the doubles: at most 64 steps,
/// without a start, a width or a derivative. Steps at known places take no value; a margin of infinity knows none.
template <class CDF>
double leastReaching(double q, double low, double high, double margin, CDF&& cdf) {
  int64_t below = placeOf(low), above = placeOf(high);
  const KnownPlaces known = knownPlaces(q, margin, {below, above}, cdf);
  while (true) {
    const int64_t middle = (below >> 1) + (above >> 1) + (below & above & 1);
    if (middle == below) break;
    const bool reaches = middle > known.below && (middle >= known.above || cdf(doubleAt(middle)) >= q);
    (reaches ? above : below) = middle;
  }
  return doubleAt(above);
}

}  // namespace Statistics
