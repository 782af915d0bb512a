/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Optimisers without derivatives: the minimum of a host's function over a box, searched by a population on a thread of
 * the library.
 *
 * A search is set up by os_createOptSolver, os_setFun, os_setMaxVar, os_setMinVar and os_setOptimizer, started by
 * os_solve, which returns at once, and read by os_getOptVar when it has ended. os_setOptimizer may also come before
 * os_setFun. The population is spread over the box by os_setFun and os_setOptimizer; bounds that are set afterwards
 * hold for the next os_solve, but the population stays where it is until os_randValue.
 *
 * While a search runs, any thread may call os_stop, os_getState, os_getCurrentInfo, os_getOptVar, os_solve,
 * os_setDoneFun and os_setInitValue. The other functions belong to the host's own thread, between searches. The host's
 * callbacks run on the worker thread, one at a time; they must not throw. A host ends a search before it releases
 * the handle: os_stop, then wait for the done function or for os_getState to leave 4. A handle that is released during
 * a search stops it, and the done function is not called then; the callbacks may still be called until the worker has
 * seen the stop.
 */
#ifndef ORVANE_OPTIMIZER_H
#define ORVANE_OPTIMIZER_H

#include <orvane/export.h>

/** A host's optimisation problem and its solver. */
typedef struct OptSolver OptSolver;

/** Kinds of solver. */
enum {
  ORVANE_SOLVER_AUTO = 0,     /**< a schedule of the others */
  ORVANE_SOLVER_LG = 1,       /**< mixes with leaders, neighbours and the best */
  ORVANE_SOLVER_LG2 = 2,      /**< the same with an archive and descents; at least 2 candidates */
  ORVANE_SOLVER_GTO = 3,      /**< gorilla troops */
  ORVANE_SOLVER_RUN = 4,      /**< Runge-Kutta */
  ORVANE_SOLVER_SC = 5,       /**< social contact */
  ORVANE_SOLVER_SC_WALK = 6,  /**< social contact whose candidates walk in pairs */
  ORVANE_SOLVER_SWO = 7,      /**< spider wasps; at least 3 candidates */
  ORVANE_SOLVER_SWO_FLAG = 8, /**< as 7 */
  ORVANE_SOLVER_ISWO = 9,     /**< spider wasps with a centroid step; at least 3 candidates */
  ORVANE_SOLVER_INS = 10      /**< weighted means and walks */
};

/** States of an optimisation. */
enum {
  ORVANE_OPTIMIZER_READY = 0,
  ORVANE_OPTIMIZER_NO_SOLVER = 1,
  ORVANE_OPTIMIZER_NO_FUNCTION = 2,
  ORVANE_OPTIMIZER_RUNNING = 4
};

/** Objective f(x) at x[varSize]; a smaller value is better. A NaN counts as no improvement. */
typedef double (*OptCostFun)(const double* x);
/** Gradient of the objective at x[varSize] into gradient[varSize]. */
typedef void (*OptGradFun)(const double* x, double* gradient);
/**
 * Projection: moves x[varSize] to where it is allowed; called on a point after the box has been applied to it. Restarts
 * and some moves of LG, LG2 and GTO try points that it has not seen: the objective should be large where x is not
 * allowed.
 */
typedef void (*OptLimitFun)(double* x);
/** Told with the value 1 that a search has ended. */
typedef void (*OptDoneFun)(int32_t one);

/**
 * New optimisation, without function and solver.
 *
 * @param tryNum  runs of one os_solve. Each run continues from the population of the one before. The runs are counted
 *                over the object's whole life: once tryNum is reached, every further os_solve makes one run.
 * @return handle, released by api_FreeHandle
 */
ORVANE_API OptSolver* os_createOptSolver(uint32_t tryNum);

/**
 * Sets the objective. When the number of variables changes, the bounds start anew at -100 and 100. A solver that is set
 * already gets a new population, spread over the box. Not during a search.
 *
 * @param os          optimisation
 * @param cost        objective; null keeps the one before. Without any, the objective is 1.449459118e308 everywhere
 * @param gradient    gradient, or null for central differences
 * @param limit       projection, or null for none
 * @param noGradient  not 0: drops `gradient`
 * @param varSize     number of variables, 1 to 1000000; any other number changes nothing
 */
ORVANE_API void os_setFun(OptSolver* os, OptCostFun cost, OptGradFun gradient, OptLimitFun limit, uint8_t noGradient,
                          int32_t varSize);

/**
 * Chooses the solver and its limits. Not during a search.
 *
 * @param os           optimisation
 * @param kind         0 automatic (a schedule of the others), 1 LG, 2 LG2 (at least 2 candidates), 3 GTO, 4 RUN,
 *                     5 and 6 social contact in two modes, 7 and 8 SWO, 9 ISWO (each at least 3 candidates), 10 INS;
 *                     11 and more keeps the solver that is there, with its population spread anew
 * @param gradCount    coordinates that a gradient step looks at (RUN and social contact); 0 turns the steps off
 * @param popSize      number of candidates, each of 24 bytes a variable and more; 2^31 and more count as 0. A solver
 *                     with too few of them (every one with 0) refuses its run: os_getState stays 4 and the done
 *                     function is not called until another solver is set, so that a host must not wait for them
 * @param stallLimit   stalled iterations until the search leaves the minimum that it is caught in; 0 or less keeps 200
 * @param stallLimit2  stalled iterations out there until the run ends; 0 or less keeps 800
 * @param maxIter      iterations of a run
 * @param targetError  a run ends when the best value is below it
 */
ORVANE_API void os_setOptimizer(OptSolver* os, uint8_t kind, uint32_t gradCount, uint32_t popSize, int32_t stallLimit,
                                int32_t stallLimit2, int64_t maxIter, double targetError);

/**
 * Sets the function that is told of the end of a search: once an os_solve, on the last run's worker thread, after which
 * the solver is at rest. It may call any function of this header and release the handle.
 *
 * @param os    optimisation
 * @param done  function, or null for none
 */
ORVANE_API void os_setDoneFun(OptSolver* os, OptDoneFun done);

/**
 * Sets the start point of one candidate for the next run; it serves once.
 *
 * @param os      optimisation
 * @param values  [count] point; copied
 * @param count   number of variables; a point of another length is dropped by the run, 0 withdraws the point
 */
ORVANE_API void os_setInitValue(OptSolver* os, const double* values, int32_t count);

/**
 * Upper bounds. Without a function (os_setFun) nothing happens. Where the lower bound is above, a run swaps the two.
 *
 * @param os      optimisation
 * @param values  [count] bounds; copied
 * @param count   1: the same bound for all variables; the number of variables: one each; anything else is ignored
 */
ORVANE_API void os_setMaxVar(OptSolver* os, const double* values, int32_t count);

/** Lower bounds; as os_setMaxVar. */
ORVANE_API void os_setMinVar(OptSolver* os, const double* values, int32_t count);

/**
 * Starts a search on a worker thread and returns at once.
 *
 * @param os  optimisation
 * @return 1 when started; 0 without a solver, without a function, or while a search runs. A thread that cannot be
 *         started raises std::system_error.
 */
ORVANE_API uint8_t os_solve(OptSolver* os);

/**
 * Asks the search to end and returns at once. The run under way ends with the evaluation that it is in, also in the
 * first population, and no further run begins.
 *
 * @param os  optimisation
 * @return 1; 0 without a solver
 */
ORVANE_API uint8_t os_stop(OptSolver* os);

/**
 * State of an optimisation: 1 no solver, 2 no function, 4 a search runs, 0 otherwise.
 *
 * @param os  optimisation
 */
ORVANE_API uint8_t os_getState(const OptSolver* os);

/**
 * Spreads the population over the box anew and forgets the values of its candidates.
 *
 * @param os  optimisation
 * @return 1; 0 without a solver or while a search runs
 */
ORVANE_API uint8_t os_randValue(OptSolver* os);

/**
 * Progress, also during a search.
 *
 * @param os    optimisation
 * @param info  [4] out: runs begun over the object's life; iterations of this run; best value; last value of the
 *              objective (1.449459118e308 for a NaN). Before the first evaluation both values are 0, which is no value
 *              of the objective; as long as the last value is lower than the best one it counts as the best
 * @return 1; 0 without a solver, with `info` left alone
 */
ORVANE_API uint8_t os_getCurrentInfo(OptSolver* os, double* info);

/**
 * Best point of all runs.
 *
 * @param os  optimisation
 * @param x   [varSize] out
 * @return its value; 1.449459118e308, with `x` left alone, without a solver, without a function, or while a search runs
 */
ORVANE_API double os_getOptVar(OptSolver* os, double* x);

#endif
