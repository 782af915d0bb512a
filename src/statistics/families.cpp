// SPDX-License-Identifier: Apache-2.0
#include "statistics/families.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "frame/code_table.h"
#include "frame/numbers.h"
#include "special/gamma/incomplete_beta_kernel.h"
#include "special/gamma/incomplete_gamma_kernel.h"
#include "special/special_function.h"
#include "statistics/quantile.h"

// Sources: Johnson, Kotz, Balakrishnan, Continuous Univariate Distributions, 1994/95; the texts give the densities.
namespace Statistics {
namespace {

namespace SF = SpecialFunction;
using P = Params;
using std::numbers::pi;
using std::numbers::sqrt2;

double lowerGamma(double a, double x) { return x > 0 ? SF::Kernel::regularisedGamma(a, x).p : x <= 0 ? 0 : kNaN; }
double upperGamma(double a, double x) { return x > 0 ? SF::Kernel::regularisedGamma(a, x).q : x <= 0 ? 1 : kNaN; }

// P(X <= x) at a point right of an end of the support; 0 left of it.
template <class Share>
double above(double x, double end, Share&& share) {
  return x <= end ? 0 : share();
}

double heldToUnit(double share) { return share < 0 ? 0 : share > 1 ? 1 : share; }

double zero(const P&) { return 0; }
double one(const P&) { return 1; }
double infinity(const P&) { return kInfinity; }
double minusInfinity(const P&) { return -kInfinity; }
double first(const P& p) { return p[0]; }
double second(const P& p) { return p[1]; }
double third(const P& p) { return p[2]; }

// Far above the rounding of the distribution functions, some 1e-13 of them at the most.
constexpr double kMargin = 0x1p-38;

// A family without a closed inverse.
template <double (*kCDF)(double, const P&), double (*kLowest)(const P&), double (*kHighest)(const P&)>
double numericQuantile(double q, const P& p) {
  return leastReaching(q, kLowest(p), kHighest(p), kMargin * q, [&p](double x) { return kCDF(x, p); });
}

double betaCDF(double x, const P& p) {
  return x <= 0 ? 0 : x >= 1 ? 1 : heldToUnit(SF::Kernel::regularisedBeta(p[0], p[1], x));
}

double betaQuantile(double q, const P& p) {
  // Shares may be 1 less a rounded one, and those of extreme shapes are rounded more than the margin.
  const bool smooth = std::min(p[0], p[1]) > 1e-3 && std::max(p[0], p[1]) < 1e3;
  const double margin = smooth ? std::max(kMargin * q, 0x1p-44) : kInfinity;
  return leastReaching(q, 0, 1, margin, [&p](double x) { return betaCDF(x, p); });
}

double halfNormalCDF(double x, const P& p) {
  return above(x, 0, [&] { return std::erf(x / (p[0] * sqrt2)); });
}

double foldedNormalCDF(double x, const P& p) {
  const double scale = sqrt2 * p[1];
  return above(x, 0, [&] {
    const double near = (std::abs(p[0]) - x) / scale, far = (std::abs(p[0]) + x) / scale;
    // Far below the fold's mean the two error functions cancel.
    return (near > 0.5 ? std::erfc(near) - std::erfc(far) : std::erf(far) - std::erf(near)) / 2;
  });
}

double chiSquareCDF(double x, const P& p) { return lowerGamma(p[0] / 2, x / 2); }
double gammaCDF(double x, const P& p) { return lowerGamma(p[0], p[1] * x); }
double inverseChiSquareCDF(double x, const P& p) {
  return above(x, 0, [&] { return upperGamma(p[0] / 2, 0.5 / x); });
}
double inverseGammaCDF(double x, const P& p) {
  return above(x, 0, [&] { return upperGamma(p[0], p[1] / x); });
}
double maxwellCDF(double x, const P& p) {
  const double t = x / p[0];
  return above(x, 0, [&] { return lowerGamma(1.5, t * t / 2); });
}

// Phi(s (x/a - 1)) + exp(2b/a) Phi(-s (x/a + 1)), s = sqrt(b/x). exp(u^2) erfc(u) is Voigt's K(0, u), so that nothing
// overflows: u^2 = v^2 + 2b/a.
double inverseGaussianCDF(double x, const P& p) {
  return above(x, 0, [&] {
    const double s = std::sqrt(p[1] / x / 2), t = x / p[0];
    if (t == kInfinity) return 1.0;
    const double v = s * (t - 1), u = s * (t + 1);
    return heldToUnit((std::erfc(-v) + std::exp(-v * v) * SF::calcVoigtFunK(0, u)) / 2);
  });
}

double poissonCDF(double x, const P& p) { return x < 0 ? 0 : x == kInfinity ? 1 : upperGamma(std::floor(x) + 1, p[0]); }
double poissonQuantile(double q, const P& p) {
  double low = -1, high = 1;
  while (poissonCDF(high, p) < q) {
    if (high > 0x1p53) return kInfinity;
    low = high;
    high *= 2;
  }
  while (high - low > 1) {
    const double middle = std::floor((low + high) / 2);
    (poissonCDF(middle, p) >= q ? high : low) = middle;
  }
  return high;
}

// Cauchy's share of an angle; the quantile is its tangent, taken from the nearer end.
double cauchyShare(double z) { return z > 0 ? 1 - std::atan2(1, z) / pi : std::atan2(1, -z) / pi; }
double cauchyPoint(double q) { return q < 0.5 ? -1 / std::tan(pi * q) : 1 / std::tan(pi * (1 - q)); }

double logisticShare(double z) { return 1 / (1 + std::exp(-z)); }
double logit(double q) { return std::log(q) - std::log1p(-q); }

// ln(1 + x^a), also where the power overflows.
double logOfOneAndPower(double x, double a) {
  const double power = std::pow(x, a);
  return power < kInfinity ? std::log1p(power) : a * std::log(x);
}

// (e^t - 1)^(1/a) with e^t = (1 - q)^(-1/b)
double burrQuantile(double q, const P& p) {
  const double t = -std::log1p(-q) / p[1], power = std::expm1(t);
  return power < kInfinity ? std::pow(power, 1 / p[0]) : std::exp(t / p[0]);
}

// ((1 + c z)^(-1/c) + 1)^-1, which is the logistic law at c = 0.
double shiftedLogLogisticCDF(double x, const P& p) {
  const double z = (x - p[0]) / p[1], c = p[2];
  if (c == 0) return logisticShare(z);
  if (1 + c * z <= 0) return c > 0 ? 0 : 1;
  return logisticShare(std::log1p(c * z) / c);
}
double shiftedLogLogisticQuantile(double q, const P& p) {
  const double c = p[2];
  return p[0] + p[1] * (c == 0 ? logit(q) : std::expm1(c * logit(q)) / c);
}
double shiftedLogLogisticLowest(const P& p) { return p[2] > 0 ? p[0] - p[1] / p[2] : -kInfinity; }
double shiftedLogLogisticHighest(const P& p) { return p[2] < 0 ? p[0] - p[1] / p[2] : kInfinity; }

// 1 - (1 - (1 - a) b x)^((2 - a)/(1 - a)), the exponential law at a = 1.
double qExponentialCDF(double x, const P& p) {
  const double shape = 1 - p[0];
  if (!(p[0] < 2)) return kNaN;
  return above(x, 0, [&] {
    const double t = shape * p[1] * x;
    if (t >= 1) return 1.0;
    return shape == 0 ? -std::expm1(-p[1] * x) : -std::expm1(std::log1p(-t) * (2 - p[0]) / shape);
  });
}
double qExponentialQuantile(double q, const P& p) {
  const double shape = 1 - p[0], rest = std::log1p(-q);
  if (!(p[0] < 2)) return kNaN;
  return shape == 0 ? -rest / p[1] : -std::expm1(rest * shape / (2 - p[0])) / (shape * p[1]);
}
double qExponentialHighest(const P& p) { return p[0] < 1 ? 1 / ((1 - p[0]) * p[1]) : kInfinity; }

double uniformCDF(double x, const P& p) {
  return p[0] < p[1] ? std::clamp((x - p[0]) / (p[1] - p[0]), 0.0, 1.0) : kNaN;
}
double inverseUniformCDF(double x, const P& p) {
  if (!(p[0] < p[1])) return kNaN;
  return above(x, 0, [&] { return std::clamp((p[1] - 1 / x) / (p[1] - p[0]), 0.0, 1.0); });
}

// Code, density, domains, positive parameters, distribution function, quantile function, ends of the support.
constexpr Family kFamilies[] = {
    {1, "x^(a-1) * (1-x)^(b-1) / Beta(a, b)", " a:(0, inf); b:(0, inf); x:[0,1]", "ab", betaCDF, betaQuantile, zero,
     one},
    {3, "a * b * x^(a-1) / (1 + x^a)^(b+1)", " a:(0, inf); b:(0, inf); x:(0, inf)", "ab",
     [](double x, const P& p) { return above(x, 0, [&] { return -std::expm1(-p[1] * logOfOneAndPower(x, p[0])); }); },
     burrQuantile, zero, infinity},
    {5, "1 / (pi * b * (1 + ((x - a) / b)^2))", " a:(-inf, inf); b:(0, inf); x:(-inf, inf)", "b",
     [](double x, const P& p) { return cauchyShare((x - p[0]) / p[1]); },
     [](double q, const P& p) { return p[0] + p[1] * cauchyPoint(q); }, minusInfinity, infinity},
    {7, "x^((a/2)-1) * Exp(-x/2) / (2^(a/2) * Gamma(a/2))", " a:(0, inf); x:(0, inf)", "a", chiSquareCDF,
     numericQuantile<chiSquareCDF, zero, infinity>, zero, infinity},
    {11, "a * Exp(-a * x)", " a:(0, inf); x:[0, inf)", "a",
     [](double x, const P& p) { return above(x, 0, [&] { return -std::expm1(-p[0] * x); }); },
     [](double q, const P& p) { return -std::log1p(-q) / p[0]; }, zero, infinity},
    {13, "(Exp(-(x-a)^2 / (2 * b^2)) + Exp(-(x+a)^2 / (2 * b^2))) / (b * Sqrt(2 * pi))",
     " a:(-inf, inf); b:(0, inf); x:[0, inf)", "b", foldedNormalCDF, numericQuantile<foldedNormalCDF, zero, infinity>,
     zero, infinity},
    {15, "a / b * ((x - c) / b)^(-1 - a) * Exp(-((x-c)/b)^(-a))", " a:(0, inf); b:(0, inf); c:(-inf, inf); x:(c, inf)",
     "ab",
     [](double x, const P& p) { return above(x, p[2], [&] { return std::exp(-std::pow((x - p[2]) / p[1], -p[0])); }); },
     [](double q, const P& p) { return p[2] + p[1] * std::pow(-std::log(q), -1 / p[0]); }, third, infinity},
    {17, "b^a * x^(a-1) * Exp(-b * x)/ Gamma(a)", " a:(0, inf); b:(0, inf); x:(0, inf)", "ab", gammaCDF,
     numericQuantile<gammaCDF, zero, infinity>, zero, infinity},
    {19, "a * b * Exp(a + b * x - a * Exp(b * x))", " a:(0, inf); b:(0, inf); x:[0, inf)", "ab",
     [](double x, const P& p) { return above(x, 0, [&] { return -std::expm1(-p[0] * std::expm1(p[1] * x)); }); },
     [](double q, const P& p) { return std::log1p(-std::log1p(-q) / p[0]) / p[1]; }, zero, infinity},
    {23, "Exp(-z - Exp(-z)) / b; z = (x - a) / b", " a:(-inf, inf); b:(0, inf); x:(-inf, inf)", "b",
     [](double x, const P& p) { return std::exp(-std::exp(-(x - p[0]) / p[1])); },
     [](double q, const P& p) { return p[0] - p[1] * std::log(-std::log(q)); }, minusInfinity, infinity},
    {25, "Sqrt(2) / (a * Sqrt(pi)) * Exp(-x^2 / (2 * a^2))", " a:(0, inf); x:[0, inf)", "a", halfNormalCDF,
     numericQuantile<halfNormalCDF, zero, infinity>, zero, infinity},
    {27, "2^(-a/2) * x^(-a/2-1) * Exp(-1/(2 * x)) / Gamma(a/2)", " a:(0, inf); x:(0, inf)", "a", inverseChiSquareCDF,
     numericQuantile<inverseChiSquareCDF, zero, infinity>, zero, infinity},
    {29, "b^a * x^(-a-1) * Exp(-b/x) / Gamma(a)", " a:(0, inf); b:(0, inf); x:(0, inf)", "ab", inverseGammaCDF,
     numericQuantile<inverseGammaCDF, zero, infinity>, zero, infinity},
    {31, "Sqrt(b/(2 * pi * x^3)) * Exp(-b * (x - a)^2 / (2 * a^2 * x))", " a:(0, inf); b:(0, inf); x:(0, inf)", "ab",
     inverseGaussianCDF, numericQuantile<inverseGaussianCDF, zero, infinity>, zero, infinity},
    {33, "1 / ((b - a) * x^2)", " a:(0, b); b:(a, inf); x:[1/b, 1/a]", "ab", inverseUniformCDF,
     [](double q, const P& p) { return p[0] < p[1] ? 1 / (p[1] - q * (p[1] - p[0])) : kNaN; },
     [](const P& p) { return 1 / p[1]; }, [](const P& p) { return 1 / p[0]; }},
    {35, "Exp(- Abs(x - a) / b) / (2 * b)", " a:(-inf, inf); b:(0, inf); x:(-inf, inf)", "b",
     [](double x, const P& p) {
       const double z = (x - p[0]) / p[1];
       return z < 0 ? std::exp(z) / 2 : 1 - std::exp(-z) / 2;
     },
     [](double q, const P& p) { return p[0] + p[1] * (q < 0.5 ? std::log(2 * q) : -std::log(2 * (1 - q))); },
     minusInfinity, infinity},
    {37, "Sqrt(b / (2 * pi)) * Exp(-b / (2 * (x - a))) / (x - a)^1.5", " a:(-inf, inf); b:(0, inf); x:(a, inf)", "b",
     [](double x, const P& p) { return above(x, p[0], [&] { return std::erfc(std::sqrt(p[1] / (2 * (x - p[0])))); }); },
     [](double q, const P& p) {
       const double z = normalQuantile(std::max(q / 2, 0x1p-1074));
       return p[0] + p[1] / (z * z);
     },
     first, infinity},
    {39, "b / (x * pi * ((Log(x) - a)^2 + b^2))", " a:(-inf, inf); b:(0, inf); x:(0, inf)", "b",
     [](double x, const P& p) { return above(x, 0, [&] { return cauchyShare((std::log(x) - p[0]) / p[1]); }); },
     [](double q, const P& p) { return std::exp(p[0] + p[1] * cauchyPoint(q)); }, zero, infinity},
    {41, "Exp(-(x-a)/b) / (b * (1 + Exp(-(x-a)/b))^2)", " a:(-inf, inf); b:(0, inf); x:(-inf, inf)", "b",
     [](double x, const P& p) { return logisticShare((x - p[0]) / p[1]); },
     [](double q, const P& p) { return p[0] + p[1] * logit(q); }, minusInfinity, infinity},
    {43, "(b / a) * (x / a)^(b-1) / (1 + (x / a)^b)^2", " a:(0, inf); b:(0, inf); x:[0, inf)", "ab",
     [](double x, const P& p) { return above(x, 0, [&] { return 1 / (1 + std::pow(x / p[0], -p[1])); }); },
     [](double q, const P& p) { return p[0] * std::exp(logit(q) / p[1]); }, zero, infinity},
    {45, "Exp(-(Log(x) - a)^2 / (2 * b^2)) / (x * b * Sqrt(2 * pi))", " a:(-inf, inf); b:(0, inf); x:(0, inf)", "b",
     [](double x, const P& p) { return above(x, 0, [&] { return normalCDF((std::log(x) - p[0]) / p[1]); }); },
     [](double q, const P& p) { return std::exp(p[0] + p[1] * normalQuantile(q)); }, zero, infinity},
    {47, "a / b * (1 + x / b)^(-a-1)", " a:(0, inf); b:(0, inf); x:[0, inf)", "ab",
     [](double x, const P& p) { return above(x, 0, [&] { return -std::expm1(-p[0] * std::log1p(x / p[1])); }); },
     [](double q, const P& p) { return p[1] * std::expm1(-std::log1p(-q) / p[0]); }, zero, infinity},
    {49, "Sqrt(2 / pi) * x^2 * Exp(-x^2 / (2 * a^2)) / a^3", " a:(0, inf); x:(0, inf)", "a", maxwellCDF,
     numericQuantile<maxwellCDF, zero, infinity>, zero, infinity},
    {51, "Exp(-(x-a)^2 / (2 * b^2)) / (Sqrt(2 * pi) * b)", " a:(-inf, inf); b:(0, inf); x:(-inf, inf)", "b",
     [](double x, const P& p) { return normalCDF((x - p[0]) / p[1]); },
     [](double q, const P& p) { return p[0] + p[1] * normalQuantile(q); }, minusInfinity, infinity},
    {53, "b * a^b / x^(b+1)", " a:(0, inf); b:(0, inf); x:[a, inf)", "ab",
     [](double x, const P& p) {
       // Close to the end by the distance from it, far from it by the quotient: either loses its digits at the other.
       return above(x, p[0], [&] {
         return -std::expm1(p[1] * (x < 2 * p[0] ? std::log1p((p[0] - x) / x) : std::log(p[0] / x)));
       });
     },
     [](double q, const P& p) { return p[0] * std::exp(-std::log1p(-q) / p[1]); }, first, infinity},
    {55, "(2 - a) * b * FunEq(-b*x, q); FunEq(x, q) = (1 + (1 - q) * x) ^ (1/(1-q))",
     " a:(-inf, 2); b:(0, inf); q = a; x:[0, inf) for a >= 1, [0, 1/((1-a)*b)] for a < 1", "b", qExponentialCDF,
     qExponentialQuantile, zero, qExponentialHighest},
    {59, "x * Exp(-x^2 / (2 * a^2)) / a^2", " a:(0, inf); x:[0, inf)", "a",
     [](double x, const P& p) {
       const double t = x / p[0];
       return above(x, 0, [&] { return -std::expm1(-t * t / 2); });
     },
     [](double q, const P& p) { return p[0] * std::sqrt(-2 * std::log1p(-q)); }, zero, infinity},
    {61, "(1 + c * z)^(-1 - 1/c) / (b * (1 + (1 + c * z)^(-1/c))^2); z = (x - a) / b",
     " a:(-inf, inf); b:(0, inf); c:(-inf, inf); x:1 + c*z > 0", "b", shiftedLogLogisticCDF, shiftedLogLogisticQuantile,
     shiftedLogLogisticLowest, shiftedLogLogisticHighest},
    {65, "1 / (b - a)", " a:(-inf, b); b:(a, inf); x:[a,b]", "", uniformCDF,
     [](double q, const P& p) { return p[0] < p[1] ? p[0] + q * (p[1] - p[0]) : kNaN; }, first, second},
    {67, "b / a * (x / a)^(b-1) * Exp(-(x/a)^b)", " a:(0, inf); b:(0, inf); x:[0, inf)", "ab",
     [](double x, const P& p) { return above(x, 0, [&] { return -std::expm1(-std::pow(x / p[0], p[1])); }); },
     [](double q, const P& p) { return p[0] * std::pow(-std::log1p(-q), 1 / p[1]); }, zero, infinity},
    {69, "a^x * Exp(-a) / Gamma(x+1)", " a:(0, inf); x:0, 1, 2, ...", "a", poissonCDF, poissonQuantile, zero, infinity},
};

bool valid(const Family& family, const P& p) {
  return std::all_of(family.positive.begin(), family.positive.end(),
                     [&p](char letter) { return p[static_cast<std::size_t>(letter - 'a')] > 0; });
}

}  // namespace

const Family* findFamily(uint8_t code) { return CodeTable<kFamilies>::find((code - 1) | 1); }

double cdfOf(const Family* family, double x, const Params& p) {
  return family == nullptr || std::isnan(x) || !valid(*family, p) ? kNaN : family->cdf(x, p);
}

double quantileOf(const Family* family, double q, const Params& p) {
  if (family == nullptr || !(q >= 0 && q <= 1) || !valid(*family, p)) return kNaN;
  if (q > 0 && q < 1) return family->quantile(q, p);
  if (std::isnan(family->quantile(0.5, p))) return kNaN;  // a domain beyond signs
  return q == 0 ? family->lowest(p) : family->highest(p);
}

double normalCDF(double z) { return std::erfc(-z / sqrt2) / 2; }

// Rational approximations good to about 1e-16 (Wichura, Applied Statistics 37 (1988) 477, algorithm AS 241).
double normalQuantile(double q) {
  const auto ratio = [](double r, const std::array<double, 8>& above, const std::array<double, 8>& below) {
    double numerator = 0, denominator = 0;
    for (std::size_t k = 8; k-- > 0;) {
      numerator = numerator * r + above[k];
      denominator = denominator * r + below[k];
    }
    return numerator / denominator;
  };
  const double away = q - 0.5;
  if (std::abs(away) <= 0.425)
    return away * ratio(0.180625 - away * away,
                        {3.3871328727963666080, 133.14166789178437745, 1971.5909503065514427, 13731.693765509461125,
                         45921.953931549871457, 67265.770927008700853, 33430.575583588128105, 2509.0809287301226727},
                        {1, 42.313330701600911252, 687.18700749205790830, 5394.1960214247511077, 21213.794301586595867,
                         39307.895800092710610, 28729.085735721942674, 5226.4952788528545610});
  const double r = std::sqrt(-std::log(std::min(q, 1 - q)));
  const double z =
      r <= 5
          ? ratio(
                r - 1.6,
                {1.42343711074968357734, 4.63033784615654529590, 5.76949722146069140550, 3.64784832476320460504,
                 1.27045825245236838258, 0.241780725177450611770, 0.0227238449892691845833, 7.74545014278341407640e-4},
                {1, 2.05319162663775882187, 1.67638483018380384940, 0.689767334985100004550, 0.148103976427480074590,
                 0.0151986665636164571966, 5.47593808499534494600e-4, 1.05075007164441684324e-9})
          : ratio(r - 5,
                  {6.65790464350110377720, 5.46378491116411436990, 1.78482653991729133580, 0.296560571828504891230,
                   0.0265321895265761230930, 0.00124266094738807843860, 2.71155556874348757815e-5,
                   2.01033439929228813265e-7},
                  {1, 0.599832206555887937690, 0.136929880922735805310, 0.0148753612908506148525,
                   7.86869131145613259100e-4, 1.84631831751005468180e-5, 1.42151175831644588870e-7,
                   2.04426310338993978564e-15});
  return away < 0 ? -z : z;
}

}  // namespace Statistics
