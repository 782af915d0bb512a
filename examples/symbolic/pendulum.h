/* SPDX-License-Identifier: Apache-2.0 */
#ifndef ORVANE_SYMBOLIC_PENDULUM_H
#define ORVANE_SYMBOLIC_PENDULUM_H

#include <orvane/orvane.h>

/* A point mass m on a rod of length l: everything that is derived from its two energies. Names of variables may be
   LaTeX, so that the formulas look as in a textbook. Each matrix is 1 by 1 but for the systems. */
typedef struct Pendulum {
  SymMatrix2d* kinetic;      /* T(omega) */
  SymMatrix2d* potential;    /* V(theta) */
  SymMatrix2d* energy;       /* T + V */
  SymMatrix2d* momentum;     /* dL/domega of the Lagrangian L = T - V */
  SymMatrix2d* force;        /* dL/dtheta */
  SymMatrix2d* inertia;      /* dp/domega */
  SymMatrix2d* acceleration; /* force / inertia */
  SymMatrix2d* numeric;      /* the acceleration with numbers for g and l */
  SymMatrix2d* linear;       /* its Taylor polynomial of order 1 */
  SymMatrix2d* cubic;        /* of order 3 */
  SymMatrix2d* system;       /* [2] theta' = omega, omega' = numeric */
  SymMatrix2d* linearSystem; /* [2] with the linear acceleration */
} Pendulum;

Pendulum derivePendulum(double g, double length);
void releasePendulum(Pendulum* pendulum);

/* Angle and velocity at count times, [count*2], from rest at the angle. */
void followPendulum(const SymMatrix2d* system, double angle, const double* times, double* states, int32_t count);

#endif
