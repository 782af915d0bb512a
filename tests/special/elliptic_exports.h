// SPDX-License-Identifier: Apache-2.0
// Every function of orvane/elliptic.h as a row, so that tests can go through all of them.
#pragma once

#include <array>

#include "orvane/elliptic.h"

struct EllipticExport {
  const char* name;
  int arguments;
  double (*call)(const double* a);
};

inline constexpr std::array kEllipticExports = {
    EllipticExport{"math_AGM", 2, [](const double* a) { return math_AGM(a[0], a[1]); }},
    EllipticExport{"math_ellipticRF", 3, [](const double* a) { return math_ellipticRF(a[0], a[1], a[2]); }},
    EllipticExport{"math_ellipticRD", 3, [](const double* a) { return math_ellipticRD(a[0], a[1], a[2]); }},
    EllipticExport{"math_ellipticRG", 3, [](const double* a) { return math_ellipticRG(a[0], a[1], a[2]); }},
    EllipticExport{"math_ellipticRJ", 4, [](const double* a) { return math_ellipticRJ(a[0], a[1], a[2], a[3]); }},
    EllipticExport{"math_ellipticRC", 2, [](const double* a) { return math_ellipticRC(a[0], a[1]); }},
    EllipticExport{"math_ellipticRK", 2, [](const double* a) { return math_ellipticRK(a[0], a[1]); }},
    EllipticExport{"math_ellipticRE", 2, [](const double* a) { return math_ellipticRE(a[0], a[1]); }},
    EllipticExport{"math_ellipticRM", 3, [](const double* a) { return math_ellipticRM(a[0], a[1], a[2]); }},
    EllipticExport{"math_ellipticK", 1, [](const double* a) { return math_ellipticK(a[0]); }},
    EllipticExport{"math_ellipticE", 1, [](const double* a) { return math_ellipticE(a[0]); }},
    EllipticExport{"math_ellipticPI2", 2, [](const double* a) { return math_ellipticPI2(a[0], a[1]); }},
    EllipticExport{"math_ellipticF", 2, [](const double* a) { return math_ellipticF(a[0], a[1]); }},
    EllipticExport{"math_ellipticE2", 2, [](const double* a) { return math_ellipticE2(a[0], a[1]); }},
    EllipticExport{"math_ellipticPI", 3, [](const double* a) { return math_ellipticPI(a[0], a[1], a[2]); }},
    EllipticExport{"math_bulirschCel", 4, [](const double* a) { return math_bulirschCel(a[0], a[1], a[2], a[3]); }},
    EllipticExport{"math_bulirschEl1", 2, [](const double* a) { return math_bulirschEl1(a[0], a[1]); }},
    EllipticExport{"math_bulirschEl2", 4, [](const double* a) { return math_bulirschEl2(a[0], a[1], a[2], a[3]); }},
    EllipticExport{"math_bulirschEl3", 3, [](const double* a) { return math_bulirschEl3(a[0], a[1], a[2]); }},
    EllipticExport{"math_heumannLambda", 2, [](const double* a) { return math_heumannLambda(a[0], a[1]); }},
    EllipticExport{"math_jacobiZeta", 2, [](const double* a) { return math_jacobiZeta(a[0], a[1]); }},
    EllipticExport{"math_jacobiEllipticAm", 2, [](const double* a) { return math_jacobiEllipticAm(a[0], a[1]); }},
    EllipticExport{"math_jacobiEllipticSn", 2, [](const double* a) { return math_jacobiEllipticSn(a[0], a[1]); }},
    EllipticExport{"math_jacobiEllipticCn", 2, [](const double* a) { return math_jacobiEllipticCn(a[0], a[1]); }},
    EllipticExport{"math_jacobiEllipticDn", 2, [](const double* a) { return math_jacobiEllipticDn(a[0], a[1]); }},
    EllipticExport{"math_jacobiTheta1", 2, [](const double* a) { return math_jacobiTheta1(a[0], a[1]); }},
    EllipticExport{"math_jacobiTheta2", 2, [](const double* a) { return math_jacobiTheta2(a[0], a[1]); }},
    EllipticExport{"math_jacobiTheta3", 2, [](const double* a) { return math_jacobiTheta3(a[0], a[1]); }},
    EllipticExport{"math_jacobiTheta4", 2, [](const double* a) { return math_jacobiTheta4(a[0], a[1]); }},
};
