/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Linear programmes: the maximum of a linear expression over real, integer and 0-1 variables.
 *
 *     maximise  sum c_j x_j   under   sum a_ij x_j  <=, >= or =  b_i,   x >= 0
 *
 * All variables are non-negative; a 0-1 variable is at most 1, an integer one has no upper bound but that of branching,
 * 900000000. The method is a primal simplex in two phases with the rule of the greatest coefficient, and depth-first
 * branching over copies. It has its limits, which lineProg_setExact takes away:
 *
 *  - a phase makes at most as many pivots as there are variables and rows together (an equality counts as two rows, a
 *    0-1 variable adds one). When they do not suffice the point in hand counts as the optimum of the second phase (a
 *    further call of lineProg_Solve goes on from it), and a first phase that has not ended as an infeasible problem;
 *  - a branch is given up when the value of its relaxation, with the integer variables rounded, is below the best value
 *    found. Rounding may hide a better point: the result is feasible and integral, and not always the maximum;
 *  - an unbounded problem is told as one (2) only where the point in hand meets the constraints within 1e-8, whatever
 *    their size; else as failed (0).
 *
 * A handle must not be used on two threads at the same time. Solving takes as long as it takes: branching is
 * exponential at worst and is not interrupted.
 */
#ifndef ORVANE_LINE_PROGRAMME_H
#define ORVANE_LINE_PROGRAMME_H

#include <orvane/export.h>

/** Kinds of variable. */
enum { ORVANE_VARIABLE_REAL = 0, ORVANE_VARIABLE_INTEGER = 1, ORVANE_VARIABLE_BINARY = 2 };

/** Relations of a constraint's sum to its right side. */
enum { ORVANE_RELATION_AT_MOST = 0, ORVANE_RELATION_AT_LEAST = 1, ORVANE_RELATION_EQUAL = 2 };

/** Results of lineProg_Solve. */
enum { ORVANE_PROGRAMME_FAILED = 0, ORVANE_PROGRAMME_OPTIMAL = 1, ORVANE_PROGRAMME_UNBOUNDED = 2 };

/** A linear programme and its solution. */
typedef struct LineProgramme LineProgramme;

/**
 * New programme without variables.
 *
 * @return handle, released by api_FreeHandle
 */
ORVANE_API LineProgramme* lineProg_CreateSolver(void);

/**
 * Starts afresh: all variables, constraints, objective and solution are replaced by n new variables.
 *
 * @param solver  programme
 * @param kinds   [n] 0 real, 1 integer, 2 binary (0 or 1); another value makes the solve fail
 * @param n       number of variables; they are counted from 0
 */
ORVANE_API void lineProg_SetVarCount(LineProgramme* solver, const uint8_t* kinds, int32_t n);

/**
 * The objective sum of coefs[k] * x[indices[k]], to be maximised. A later call replaces the earlier one.
 *
 * @param solver   programme
 * @param indices  [n] variables; coefficients on one variable add up
 * @param coefs    [n] terms of magnitude up to 1e-15 are dropped
 * @param n        number of terms
 *
 * A variable out of range, a coefficient that is not finite and an objective without terms make the solve fail.
 */
ORVANE_API void lineProg_SetMaxExpress(LineProgramme* solver, const int32_t* indices, const double* coefs, int32_t n);

/**
 * Adds a constraint on sum of coefs[k] * x[indices[k]]: at most, at least or equal to rhs.
 *
 * @param solver    programme, its variables set
 * @param indices   [n] variables; coefficients on one variable add up
 * @param coefs     [n] terms of magnitude up to 1e-15 are dropped; a row that is left without terms is ignored,
 *                  whatever its right side
 * @param n         number of terms
 * @param relation  0: <=, 1: >=, 2: =
 * @param rhs       right side
 *
 * A variable out of range, a number that is not finite and another relation make the solve fail. A constraint added
 * after a solve counts from the next one.
 */
ORVANE_API void lineProg_AddConstraint(LineProgramme* solver, const int32_t* indices, const double* coefs, int32_t n,
                                       uint8_t relation, double rhs);

/**
 * Chooses how lineProg_Solve works. Off, as after lineProg_CreateSolver, it has the limits told at the head of this
 * file. On, it runs to the optimum, by another method: a revised simplex with bounds over sparse factors of the basis,
 * the data scaled, its result looked at again in long doubles. Branching is bounded by the relaxation before rounding,
 * and the best point of an integer programme is checked in long doubles too. Large sparse programmes are much faster
 * so.
 *
 * @param solver  programme
 * @param flag    0 off, else on. A change forgets the basis of the last solve; lineProg_SetVarCount keeps the flag
 *
 * With the flag a variable in no constraint is one as all others: status 2 where it grows without bound. Where several
 * points are best it may give another one than without.
 */
ORVANE_API void lineProg_setExact(LineProgramme* solver, uint8_t flag);

/**
 * Solves the programme. A second call goes on from the basis that the first left.
 *
 * A variable that stands in no constraint is set beforehand: a binary one to 1 if its objective coefficient is
 * positive, else to 0; any other to 0, and with a positive coefficient the call fails with 0, not 2.
 *
 * @param solver  programme
 * @return 1 optimal; 2 unbounded; 0 failed: infeasible, no integer point, no objective, or refused input
 */
ORVANE_API uint8_t lineProg_Solve(LineProgramme* solver);

/**
 * The objective of the last solve at its solution.
 *
 * @param solver  programme
 * @return the value; -1e300 if there is no solution
 */
ORVANE_API double lineProg_GetMaxValue(const LineProgramme* solver);

/**
 * The solution. Integer and binary variables have integer values.
 *
 * @param solver  programme
 * @param out     [number of variables] out; untouched if there is no solution
 */
ORVANE_API void lineProg_GetVar(const LineProgramme* solver, double* out);

/**
 * A dense programme over real variables in one call: the maximum of c.x under A x <= b, Aeq x = beq, x >= 0.
 *
 * @param c    [n] objective, or null
 * @param A    [m*n] row-major
 * @param b    [m]
 * @param Aeq  [meq*n] row-major; may be null when meq is 0
 * @param beq  [meq]
 * @param n    number of variables
 * @param m    number of inequalities
 * @param meq  number of equalities
 * @param x    [n] out; untouched on failure
 * @return c.x, NaN on failure (infeasible, unbounded, refused input)
 *
 * If c or A is null, empty or has no entry above 1e-15 in size, there is no maximising: x is the least-squares solution
 * of Aeq x = beq of least norm, whatever its signs, and the result is c.x there (0 without c); NaN without equalities.
 */
ORVANE_API double lineProg_solve2(const double* c, const double* A, const double* b, const double* Aeq,
                                  const double* beq, int32_t n, int32_t m, int32_t meq, double* x);

/**
 * Tightens bounds by one constraint sum over k of coefs[k] * x[indices[k]] <= rhs: each variable is held to what the
 * others, at their best bounds, leave it. Sweeps over the terms until nothing changes, at most 128 times. A bound moves
 * only by more than 0.001; where the others are unbounded (more than 1e100 is left) it stays. Bounds of integer
 * variables become integers, those of binary ones 0 or 1.
 *
 * @param upper    [variables] upper bounds, in and out. Mind the order: the upper ones come first
 * @param lower    [variables] lower bounds, in and out
 * @param coefs    [n] coefficients; those below 1e-16 in size move no bound of their own
 * @param indices  [n] variables, from 0: places in upper, lower and kinds. A negative one does nothing
 * @param kinds    [variables] 0 real, 1 integer, 2 binary
 * @param rhs      right side
 * @param n        number of terms
 * @return 1 if a bound changed, else 0. Bounds that cross tell an infeasible constraint
 */
ORVANE_API uint8_t lineProg_ResetMaxMin(double* upper, double* lower, const double* coefs, const int32_t* indices,
                                        const uint8_t* kinds, double rhs, int32_t n);

#endif
