// SPDX-License-Identifier: Apache-2.0
// Airy functions by Bessel functions of order 1/3 and 2/3 (DLMF 9.6).
#include <cmath>
#include <limits>

#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kThird = 1.0 / 3, kTwoThirds = 2.0 / 3;
constexpr double kSqrt3 = 1.7320508075688772;
constexpr double kPiSqrt3 = 5.441398092702654;

}  // namespace

double calcAiryAi(double x) {
  if (std::isnan(x)) return kNaN;
  if (x < -kEps) {
    const double r = std::sqrt(-x), z = -2 * x * (r / 3);
    return std::isinf(z) ? 0.0 : (calcBesselJ(-kThird, z) + calcBesselJ(kThird, z)) * (r / 3);
  }
  if (x <= kEps) return 0.3550280538878172;
  if (x <= 36) {
    const double r = std::sqrt(x);
    return calcBesselK(kThird, kTwoThirds * x * r) * (r / kPiSqrt3);
  }
  // KEPT: 2 sqrt(3) for 2 sqrt(pi) on (36, 100], one would expect 0.977 of it (kept.csv: AiryAi_tail)
  // KEPT: 0 above 100; one would expect values down to 1e-308 near 104 (kept.csv: AiryAi_end)
  return x <= 100 ? std::exp(-kTwoThirds * std::sqrt(x) * x - 0.25 * std::log(x)) / 3.4641016151377544 : 0.0;
}

double calcAiryBi(double x) {
  if (std::isnan(x)) return kNaN;
  if (x < -kEps) {
    const double r = std::sqrt(-x), z = -2 * x * (r / 3);
    return std::isinf(z) ? 0.0 : (calcBesselJ(-kThird, z) - calcBesselJ(kThird, z)) * (r / 3) * kSqrt3;
  }
  if (x <= kEps) return 0.6149266274460007;
  const double r = std::sqrt(x), z = (r * x + r * x) / 3;
  return (calcBesselI(kThird, z) + calcBesselI(-kThird, z)) * (r / kSqrt3);
}

double calcDiffAiryAi(double x) {
  if (std::isnan(x) || x == -kInf) return kNaN;
  const double r = std::sqrt(std::abs(x));
  if (x > kEps) return std::isinf(x) ? 0.0 : -calcBesselK(kTwoThirds, (r / 3) * 2 * x) * x / kPiSqrt3;
  if (x < -kEps) {
    const double z = (r / 3) * x * -2;
    return (calcBesselJ(kTwoThirds, z) - calcBesselJ(-kTwoThirds, z)) * (-x / 3);
  }
  return -0.2588194037928068;
}

double calcDiffAiryBi(double x) {
  if (std::isnan(x) || x == -kInf) return kNaN;
  const double r = std::sqrt(std::abs(x));
  if (x > kEps) {
    const double z = (r / 3) * 2 * x;
    return (calcBesselI(kTwoThirds, z) + calcBesselI(-kTwoThirds, z)) * (x / kSqrt3);
  }
  if (x < -kEps) {
    const double z = (r / 3) * x * -2;
    return (calcBesselJ(kTwoThirds, z) + calcBesselJ(-kTwoThirds, z)) * (-x / kSqrt3);
  }
  return 0.4482883573538264;
}

}  // namespace SpecialFunction
