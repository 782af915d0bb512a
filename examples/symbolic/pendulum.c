/* SPDX-License-Identifier: Apache-2.0 */
#include "pendulum.h"

#include <stdio.h>
#include <stdlib.h>

/* Codes of the kinds that are used here; orvane/sym.h lists all. */
enum { kAdd = 2, kMul = 3, kPow = 5, kSubtract = 7, kDivide = 8, kCos = 21 };

static SymMatrix2d* single(SymObject* node) {
  SymMatrix2d* matrix = sym_createSymMatrix(1, 1);
  sym_setSymMatrixData(matrix, 0, 0, node);
  return matrix;
}

/* A derivative that the engine knows; anything else is a mistake of this program. */
static SymMatrix2d* derivative(const SymMatrix2d* matrix, const char* name) {
  char message[256] = "";
  SymMatrix2d* result = sym_diff(matrix, 1, name, message);
  if (!result) {
    fprintf(stderr, "orvane-symbolic: no derivative by %s: %s\n", name, message);
    exit(1);
  }
  return result;
}

/* theta' = omega and omega' = acceleration */
static SymMatrix2d* systemOf(const SymMatrix2d* acceleration) {
  SymMatrix2d* system = sym_createSymMatrix(2, 1);
  sym_setSymMatrixData(system, 0, 0, sym_createBaseSymVar("\\omega"));
  sym_setSymMatrixData2(system, 1, 0, acceleration);
  return system;
}

Pendulum derivePendulum(double g, double length) {
  Pendulum p;
  SymObject* m = sym_createBaseSymVar("m");
  SymObject* l = sym_createBaseSymVar("l");
  SymObject* theta = sym_createBaseSymVar("\\theta");
  SymObject* omega = sym_createBaseSymVar("\\omega");
  SymObject* two = sym_createDouble(2);

  /* T = 1/2 m l^2 omega^2 */
  SymObject* kinetic[] = {sym_createDouble(0.5), m, sym_funTwoParam(l, two, kPow), sym_funTwoParam(omega, two, kPow)};
  p.kinetic = single(sym_funMulParam(kinetic, 4, kMul));
  /* V = m g l (1 - cos theta) */
  SymObject* height = sym_funTwoParam(sym_createDouble(1), sym_funOneParam(theta, kCos), kSubtract);
  SymObject* potential[] = {m, sym_createBaseSymVar("g"), l, height};
  p.potential = single(sym_funMulParam(potential, 4, kMul));
  p.energy = sym_sameTwoFun(p.kinetic, p.potential, kAdd);

  /* Lagrange: d/dt dL/domega = dL/dtheta. The momentum depends on omega alone, so its rate is inertia times omega'. */
  SymMatrix2d* lagrangian = sym_sameTwoFun(p.kinetic, p.potential, kSubtract);
  p.momentum = derivative(lagrangian, "\\omega");
  p.force = derivative(lagrangian, "\\theta");
  p.inertia = derivative(p.momentum, "\\omega");
  p.acceleration = sym_sameTwoFun(p.force, p.inertia, kDivide);
  sym_freeMatrix2d(lagrangian);

  char gText[32], lText[32];
  snprintf(gText, sizeof gText, "%.17g", g);
  snprintf(lText, sizeof lText, "%.17g", length);
  const char* names[] = {"g", "l"};
  const char* numbers[] = {gText, lText};
  const uint8_t areNames[] = {0, 0};
  p.numeric = sym_replaceSym(p.acceleration, names, numbers, areNames, 2);
  p.linear = sym_taylor(p.numeric, "\\theta", 0, 1);
  p.cubic = sym_taylor(p.numeric, "\\theta", 0, 3);
  p.system = systemOf(p.numeric);
  p.linearSystem = systemOf(p.linear);
  sym_clearTempVar(); /* the matrices hold all that is needed */
  return p;
}

void releasePendulum(Pendulum* p) {
  SymMatrix2d* const all[] = {p->kinetic,      p->potential, p->energy, p->momentum, p->force,  p->inertia,
                              p->acceleration, p->numeric,   p->linear, p->cubic,    p->system, p->linearSystem};
  for (size_t i = 0; i < sizeof all / sizeof *all; ++i) sym_freeMatrix2d(all[i]);
}

void followPendulum(const SymMatrix2d* system, double angle, const double* times, double* states, int32_t count) {
  const double initial[] = {angle, 0};
  sym_solveODE(system, "t,\\theta,\\omega", 0, initial, 2, times, states, count, 0, 1e-10);
}
