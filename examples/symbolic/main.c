/* SPDX-License-Identifier: Apache-2.0 */
/* A pendulum from its energy to its motion, by the symbolic engine: a tutorial that prints and typesets each step. */
#include <math.h>
#include <stdio.h>
#include <stdlib.h>

#include "c_page.h"
#include "options.h"
#include "page_text.h"
#include "pendulum.h"

enum { kPoints = 601, kRows = 9 };

static const double kGravity = 9.81;
static const double kDegree = 3.14159265358979323846 / 180;

/* Energy per mass at a state, evaluated by the expression itself. */
static double energyAt(const Pendulum* pendulum, double angle, double velocity) {
  sym_setSymValue("\\theta", angle);
  sym_setSymValue("\\omega", velocity);
  return sym_calcExpressValue(pendulum->energy, 0, 0);
}

static void putDerivation(Text* page, const Pendulum* p) {
  put(page, "<h2>Energy</h2>\n<p>A mass on a rod has the kinetic and the potential energy</p>\n");
  putFormula(page, "T", p->kinetic);
  putFormula(page, "V", p->potential);
  put(page, "<h2>Equation of motion</h2>\n<p>Lagrange's equation asks for three derivatives of L = T - V:</p>\n");
  putFormula(page, "p = \\frac{\\partial L}{\\partial \\omega}", p->momentum);
  putFormula(page, "\\frac{\\partial p}{\\partial \\omega}", p->inertia);
  putFormula(page, "\\frac{\\partial L}{\\partial \\theta}", p->force);
  put(page, "<p>The rate of the momentum is the force, so the angular acceleration is their quotient:</p>\n");
  putFormula(page, "\\dot\\omega", p->acceleration);
  put(page, "<p>With numbers for gravity and length:</p>\n");
  putFormula(page, "\\dot\\omega", p->numeric);
  put(page, "<h2>Small angles</h2>\n<p>Taylor polynomials of orders 1 and 3 about the rest:</p>\n");
  putFormula(page, "\\dot\\omega_1", p->linear);
  putFormula(page, "\\dot\\omega_3", p->cubic);
}

/* The linear pendulum swings with the imaginary part of the roots of x^2 + g/l. */
static void putFrequency(Text* page, double length) {
  const double coefficients[] = {kGravity / length, 1}, exponents[] = {0, 2};
  SymMatrix2d* characteristic = sym_createPolyByParam(coefficients, exponents, 2);
  double re[2], im[2];
  sym_calcPolyRoot(characteristic, re, im, 2);
  put(page, "<p>The first one swings for ever; its characteristic polynomial has the roots %+.6g i and %+.6g i:</p>\n",
      im[0], im[1]);
  putFormula(page, "\\chi(x)", characteristic);
  sym_freeMatrix2d(characteristic);
  put(page, "<p>so one swing of a small pendulum lasts %.4f s.</p>\n", 2 * 3.14159265358979323846 / im[1]);
}

static void putTable(Text* page, const Pendulum* p, const double* times, const double* exact, const double* linear) {
  const double start = energyAt(p, exact[0], 0);
  put(page,
      "<div class=\"card wide\"><table class=\"ranking\" id=\"values\"><thead><tr><th class=\"number\">t, s</th>"
      "<th class=\"number\">angle, &deg;</th><th class=\"number\">velocity, 1/s</th>"
      "<th class=\"number\">small angles, &deg;</th><th class=\"number\">change of energy</th></tr></thead><tbody>\n");
  printf("%8s %12s %12s %14s %12s\n", "t", "angle", "velocity", "small angles", "dE/E");
  for (int row = 0; row < kRows; ++row) {
    const int i = row * (kPoints - 1) / (kRows - 1);
    const double drift = energyAt(p, exact[2 * i], exact[2 * i + 1]) / start - 1;
    printf("%8.3f %12.6f %12.6f %14.6f %12.1e\n", times[i], exact[2 * i] / kDegree, exact[2 * i + 1],
           linear[2 * i] / kDegree, drift);
    put(page,
        "<tr><td class=\"number\">%.3f</td><td class=\"number\">%.4f</td><td class=\"number\">%.5f</td>"
        "<td class=\"number\">%.4f</td><td class=\"number\">%.1e</td></tr>\n",
        times[i], exact[2 * i] / kDegree, exact[2 * i + 1], linear[2 * i] / kDegree, drift);
  }
  put(page, "</tbody></table></div>\n");
}

static void putPlots(Text* page, const double* times, const double* exact, const double* linear) {
  static double degrees[2][kPoints], velocities[2][kPoints];
  for (int i = 0; i < kPoints; ++i) {
    degrees[0][i] = exact[2 * i] / kDegree;
    degrees[1][i] = linear[2 * i] / kDegree;
    velocities[0][i] = exact[2 * i + 1];
    velocities[1][i] = linear[2 * i + 1];
  }
  const PageCurve motion[] = {{times, degrees[0], kPoints, "s1", "pendulum"},
                              {times, degrees[1], kPoints, "s2", "small angles"}};
  putOwned(page, page_figure("motion", "Angle over time", "Time, s", "Angle, degrees", motion, 2,
                             "The pendulum, and the one that the linear equation describes."));
  const PageCurve phases[] = {{degrees[0], velocities[0], kPoints, "s1", "pendulum"},
                              {degrees[1], velocities[1], kPoints, "s2", "small angles"}};
  putOwned(page, page_figure("phases", "Velocity over angle", "Angle, degrees", "Angular velocity, 1/s", phases, 2,
                             "The same in the plane of angle and velocity: lines of constant energy."));
}

int main(int argc, char** argv) {
  Options options;
  const int code = readOptions(argc, argv, &options);
  if (code >= 0) return code;

  Pendulum pendulum = derivePendulum(kGravity, options.length);
  sym_setSymValue("m", 1);
  sym_setSymValue("g", kGravity);
  sym_setSymValue("l", options.length);

  static double times[kPoints], exact[2 * kPoints], linear[2 * kPoints];
  for (int i = 0; i < kPoints; ++i) times[i] = options.time * i / (kPoints - 1);
  followPendulum(pendulum.system, options.angle * kDegree, times, exact, kPoints);
  followPendulum(pendulum.linearSystem, options.angle * kDegree, times, linear, kPoints);

  Text page = {NULL, 0};
  put(&page,
      "<h1>A pendulum</h1>\n<p class=\"soft\">Length %g m, let go at %g&deg;; every formula below was derived by "
      "the library.</p>\n",
      options.length, options.angle);
  putDerivation(&page, &pendulum);
  putFrequency(&page, options.length);
  put(&page, "<h2>Motion</h2>\n");
  putPlots(&page, times, exact, linear);
  putTable(&page, &pendulum, times, exact, linear);
  put(&page,
      "<p class=\"soft\">The last column is the change of the energy since the start, relative: what the "
      "integration leaves of an exact constant.</p>\n");

  char* failure = page_write(options.report, "A pendulum", page.bytes);
  if (failure) {
    fprintf(stderr, "orvane-symbolic: %s\n", failure);
  } else {
    printf("report: %s\n", options.report);
  }
  const int result = failure ? 2 : 0;
  free(failure);
  free(page.bytes);
  releasePendulum(&pendulum);
  return result;
}
