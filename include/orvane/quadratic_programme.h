/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Quadratic programmes: a quadratic expression under linear constraints, over real, integer and 0-1 variables.
 *
 * All variables are non-negative, a 0-1 variable is at most 1, an integer one at most 900000000. Relaxations are solved
 * by OSQP with its default settings and polishing; its answer is accurate to about 1e-9 where polishing succeeds and to
 * about 1e-3 where it does not. Integer variables are closed by branch and bound; an integer point counts only if it
 * keeps every constraint within 1e-6 max(1, abs(rhs)). An expression without a quadratic term goes to the simplex of
 * line_programme.h, with its rules: a constraint without terms is ignored, and an expression without any term has no
 * solution (7).
 *
 * What OSQP minimises is not the expression itself but a fourth of its quadratic part and the whole linear part:
 *
 *     the expression   sum over pairs i <= j of q_ij x_i x_j + sum of c_i x_i
 *     the problem      1/4 sum over pairs of q_ij x_i x_j    + sum of c_i x_i
 *
 * A host that means the expression as it stands gives four times its quadratic coefficients, or a fourth of its linear
 * ones, and evaluates for itself: values are those of the expression as given. Branch and bound compares these values,
 * too, so that with both parts present the integer point found is feasible and not always the best.
 *
 * A handle must not be used on two threads at the same time.
 */
#ifndef ORVANE_QUADRATIC_PROGRAMME_H
#define ORVANE_QUADRATIC_PROGRAMME_H

#include <orvane/export.h>
#include <orvane/line_programme.h>
#include <orvane/sym.h>

/** Results of a solve. Kinds of variable and relations are those of line_programme.h. */
enum {
  ORVANE_QUADRATIC_SOLVED = 1,
  ORVANE_QUADRATIC_NO_OBJECTIVE = 5,
  ORVANE_QUADRATIC_REFUSED = 6,     /**< not convex, or input that is out of range or not finite */
  ORVANE_QUADRATIC_NO_SOLUTION = 7, /**< infeasible or unbounded */
  ORVANE_QUADRATIC_NO_INTEGER = 8
};

/** A quadratic programme, built term by term. */
typedef struct QuadProgramme QuadProgramme;

/**
 * New programme without variables and objective.
 *
 * @return handle, released by api_FreeHandle
 */
ORVANE_API QuadProgramme* quadProg_createSolver(void);

/**
 * Starts afresh with n real variables of value 0; objective and constraints are dropped.
 *
 * @param solver  programme
 * @param n       number of variables; they are counted from 0
 */
ORVANE_API void quadProg_initTempVar(QuadProgramme* solver, int32_t n);

/**
 * Sets the kinds of the first n variables.
 *
 * @param solver  programme, its variables made
 * @param kinds   [n] 0 real, 1 integer, 2 binary (0 or 1); another value makes the solve fail with 6
 * @param n       number of kinds; those beyond the number of variables are not read
 */
ORVANE_API void quadProg_setVarKind(QuadProgramme* solver, const uint8_t* kinds, int32_t n);

/**
 * The objective, to be maximised: sum of qcoef[t]*x[i[t]]*x[j[t]] + sum of ccoef[t]*x[k[t]] + constant. It replaces the
 * earlier one, and is held with its signs turned, as the inner problem is a minimum.
 *
 * @param solver    programme, its variables made
 * @param i         [nq] first variables of the quadratic terms
 * @param j         [nq] second variables; equal to i for a square
 * @param qcoef     [nq] coefficients; those on one pair, in either order, add up
 * @param nq        number of quadratic terms
 * @param k         [nc] variables of the linear terms
 * @param ccoef     [nc] coefficients; those on one variable add up
 * @param nc        number of linear terms
 * @param constant  constant term
 *
 * Coefficients of magnitude below 2.220446049250313e-16 are left out. A variable out of range leaves the programme
 * without an objective.
 */
ORVANE_API void quadProg_setMaxExpress(QuadProgramme* solver, const int32_t* i, const int32_t* j, const double* qcoef,
                                       int32_t nq, const int32_t* k, const double* ccoef, int32_t nc, double constant);

/**
 * Adds a constraint on sum of coefs[k] * x[indices[k]]: at most, at least or equal to rhs.
 *
 * @param solver    programme, its variables made
 * @param indices   [n] variables; coefficients on one variable add up
 * @param coefs     [n] coefficients
 * @param n         number of terms
 * @param rhs       right side. Mind the order: it comes before the relation
 * @param relation  0 or 3: <=, 1 or 4: >=, 2: =
 *
 * A variable out of range, a number that is not finite and another relation make the solve fail with 6.
 */
ORVANE_API void quadProg_addConstraint(QuadProgramme* solver, const int32_t* indices, const double* coefs, int32_t n,
                                       double rhs, uint8_t relation);

/**
 * Solves the programme that was built on the handle.
 *
 * @param solver  programme
 * @return 1 solved; 5 no objective; 6 OSQP refused the problem (not convex, or refused input); 7 no solution
 *         (infeasible or unbounded); 8 no integer solution. Values of variables change on 1 alone
 */
ORVANE_API int32_t quadProg_solveTemp(QuadProgramme* solver);

/**
 * The variables and the objective as it is held: the least value, the negative of the maximum.
 *
 * @param solver  programme
 * @param out     [number of variables] out; 0 for a variable that was never solved for
 * @return the negative of the objective that was set, at these values; NaN without an objective
 */
ORVANE_API double quadProg_getTempResult(const QuadProgramme* solver, double* out);

/**
 * A dense programme over real variables in one call: the minimum of x'Qx + c.x (no factor one half) under A x <= b,
 * Aeq x = beq, x >= 0. The file's remark on the quadratic part holds: the point is the minimum of 1/4 x'Qx + c.x.
 *
 * @param Q    [n*n] row-major, its symmetric part positive semidefinite; or null
 * @param c    [n], or null
 * @param A    [m*n] row-major
 * @param b    [m]
 * @param Aeq  [meq*n] row-major
 * @param beq  [meq]
 * @param n    number of variables
 * @param m    number of inequalities; they do not count when A or b is null
 * @param meq  number of equalities; they do not count when Aeq or beq is null
 * @param x    [n] out; untouched on failure
 * @return x'Qx + c.x; NaN on failure
 *
 * If Q is null or has no entry above 1e-15 in size, lineProg_solve2 maximises -c.x and the result is the negative of
 * its answer.
 */
ORVANE_API double quadProg_solve(const double* Q, const double* c, const double* A, const double* b, const double* Aeq,
                                 const double* beq, int32_t n, int32_t m, int32_t meq, double* x);

/**
 * A programme stated by expressions: the first element of a matrix is the objective, to be maximised, a linear or a
 * quadratic form; every other one is a linear constraint: expression <= 0, and expression = 0 where its top node is
 * Abs, as |g| <= 0 says. The variables are real.
 *
 * @param symbols      [n] variables of the programme, from sym_getAllBaseSym; an expression with another one is refused
 * @param expressions  matrix of expressions, row by row
 * @param n            number of symbols
 * @param result       [n] out, values of the symbols in their order; untouched on failure
 * @return as quadProg_solveTemp; 5 for a matrix without elements, 6 for an expression that is neither linear nor
 *         quadratic, a constraint that is quadratic, or a null among the symbols. On 1 the symbols take the values as
 *         their own
 */
ORVANE_API int32_t quadProg_solveSym(BaseSym* const* symbols, const SymMatrix2d* expressions, int32_t n,
                                     double* result);

#endif
