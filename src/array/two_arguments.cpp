// SPDX-License-Identifier: Apache-2.0
// apiFun_calcFun2: functions of two arguments. The routines are those of the exports of the same name.
#include <algorithm>
#include <cmath>

#include "array/dispatch.h"
#include "special/special_function.h"

using namespace SpecialFunction;

namespace ArrayFun {
namespace {

/// Arguments of one call: a step of 0 repeats the first element, which is read before anything is written.
struct Pairing {
  const double *a, *b;
  int32_t stepA, stepB, count;
};

struct Row {
  uint8_t code;
  void (*run)(const Pairing&, double*);
};

template <class Function>
constexpr Row row(uint8_t code, Function) {
  return {code, [](const Pairing& p, double* destination) {
            constexpr Function f{};
            if (p.stepA == 0) {
              const double a = *p.a;
              for (int32_t i = 0; i < p.count; ++i) destination[i] = f(a, p.b[i]);
            } else if (p.stepB == 0) {
              const double b = *p.b;
              for (int32_t i = 0; i < p.count; ++i) destination[i] = f(p.a[i], b);
            } else {
              for (int32_t i = 0; i < p.count; ++i) destination[i] = f(p.a[i], p.b[i]);
            }
          }};
}

template <double (*kFunction)(double, double)>
constexpr Row row(uint8_t code) {
  return row(code, [](double a, double b) { return kFunction(a, b); });
}

constexpr Row kRows[] = {
    row(7, [](double a, double b) { return a + b; }),
    row<calcAGM>(8),
    row<calcAngerJ>(17),
    row(25, [](double y, double x) { return std::atan2(y, x); }),
    row<calcBesselI>(27),
    row<calcBesselJ>(28),
    row<calcBesselK>(29),
    row<calcBesselY>(30),
    row<calcBeta>(31),
    row<calcBoseEinstein>(32),
    row<calcClausen>(34),
    row<calcClausenC>(35),
    row<calcClausenS>(36),
    row(48, [](double a, double b) { return a / b; }),
    row<calcEllipticE2>(63),
    row<calcEllipticF>(64),
    row<calcEllipticPI2>(65),
    row<calcEllipticRC>(66),
    row<calcEllipticRE>(67),
    row<calcEllipticRK>(68),
    row<calcBulirschEl1>(69),
    row<calcExpIntegralP>(76),
    row<calcIGamma>(82),
    row<calcHeumannLambda>(84),
    row<calcHurwitzZeta>(85),
    row<calcHypergeometric0F1>(87),
    row(88, [](double a, double b) { return std::hypot(a, b); }),
    row<calcInverseRUpperIncompleteGamma>(93),
    row<calcJacobiEllipticAm>(104),
    row<calcJacobiEllipticCn>(105),
    row<calcJacobiEllipticDn>(106),
    row<calcJacobiEllipticSn>(107),
    row<calcJacobiTheta1>(108),
    row<calcJacobiTheta2>(109),
    row<calcJacobiTheta3>(110),
    row<calcJacobiTheta4>(111),
    row<calcJacobiZeta>(112),
    row(122, [](double a, double b) { return std::fmax(a, b); }),
    row(123, [](double a, double b) { return std::fmin(a, b); }),
    row(124, [](double a, double b) { return a * b; }),
    row<calcParabolicCylinderD>(125),
    row<calcParabolicCylinderU>(126),
    row<calcParabolicCylinderV>(127),
    row<calcPolyGamma>(129),
    row<calcPolyLog>(130),
    row(132, [](double base, double exponent) { return std::pow(base, exponent); }),
    row<calcRLowerIncompleteGamma>(134),
    row<calcRUpperIncompleteGamma>(135),
    row<calcSphericalBesselJ>(143),
    row<calcSphericalBesselY>(144),
    row<calcStruveH>(148),
    row<calcStruveL>(149),
    row(150, [](double a, double b) { return a - b; }),
    row<calcVoigtDiffKX>(154),
    row<calcVoigtDiffKY>(155),
    row<calcVoigtDiffLX>(156),
    row<calcVoigtDiffKX>(157),  // dL/dy = dK/dx
    row<calcVoigtFunK>(158),
    row<calcVoigtFunL>(159),
    row<calcWeberE>(161),
    row<calcFermiDirac>(162),
};
constexpr Table kTable(kRows);

}  // namespace

void calcFun2(const double* a, int32_t countA, const double* b, int32_t countB, double* destination, uint8_t code) {
  const Row* found = kTable.find(code);
  if (found == nullptr) return;
  const Pairing pairing{a, b, countA == 1 ? 0 : 1, countB == 1 ? 0 : 1,
                        countA == 1   ? countB
                        : countB == 1 ? countA
                                      : std::min(countA, countB)};
  if (pairing.count > 0) found->run(pairing, destination);
}

}  // namespace ArrayFun
