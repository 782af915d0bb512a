/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Training of networks (orvane/network.h) by batches of samples: data sets, step rules, costs, penalties, tests.
 *
 * An optimiser is created, gets a network, a step rule and data, is checked by api_SolveInit and run by api_Solve on a
 * thread of the host's choosing; the library starts none. It owns neither network nor step rule: both must outlive it
 * or its last run. While a run goes on, any thread may call api_Stop, api_IsRun and api_GetOptRes; setters of data,
 * network, step rule, step limit and cost then do nothing, and the other functions must not be called. An optimiser,
 * its network or its step rule are released after api_IsRun has become false.
 */
#ifndef ORVANE_NETWORK_TRAINING_H
#define ORVANE_NETWORK_TRAINING_H

#include <orvane/frame.h>
#include <orvane/network.h>

/** An optimiser of one network. */
typedef struct NetOptimizer NetOptimizer;
/** A step rule. */
typedef struct NetSolver NetSolver;

/**
 * Step rules. g is the gradient, w a variable, t the step from 1, b1 = beta1, b2 = beta2; m = b1 m + (1-b1)g and
 * v = b2 v + (1-b2)g^2 start at 0; c1 = 1 - b1^t, c2 = 1 - b2^t. The step is dx, subtracted from the variables. The
 * rate lr is 1 at the start; b1 and b2 are 0.8 and 0.6 unless stated.
 */
enum {
  ORVANE_STEPPER_DOG_LEG = 0,   /**< least squares over all rows at once, see api_CreateSolver; 1 is the same */
  ORVANE_STEPPER_RADAM = 2,     /**< p = q - 2t b2^t/c2, q = 2/(1 - b2) - 1; p > 4: dx = lr m r/(c1 sqrt(v/c2)) with
                                     r = sqrt((p-4)(p-2)q/((q-4)(q-2)p)), a root below 1e-12 does not divide; otherwise
                                     dx = lr m/c1 (always for b2 = 0.6, where q = 4) */
  ORVANE_STEPPER_ADAM = 3,      /**< dx = lr m/(c1 sqrt(v/c2)), v/c2 below 1e-12 does not divide; b1 0.96, b2 0.98 */
  ORVANE_STEPPER_ADAMAX = 4,    /**< u = max(b2 u, |g|): dx = lr m/(c1 u); u = 0 does not divide */
  ORVANE_STEPPER_AMSGRAD = 5,   /**< dx = lr m sqrt(c2)/(c1 sqrt(V)), V the largest v so far; V = 0 does not divide */
  ORVANE_STEPPER_ADADELTA = 6,  /**< v with b1; dx = lr g sqrt((d + 1e-16)/(v + 1e-16)); d = b2 d + (1-b2)dx^2 */
  ORVANE_STEPPER_NADAM = 7,     /**< dx = lr (b1 m + (1-b1)g)/(c1 (sqrt(v/c2) + 1e-16)) */
  ORVANE_STEPPER_SGD = 8,       /**< dx = lr g */
  ORVANE_STEPPER_ADAMOD = 9,    /**< s = lr/sqrt(v/c2), e = extra e + (1-extra)s: dx = min(e, s)m/c1, 0 where v = 0;
                                     extra 0.98 */
  ORVANE_STEPPER_NOSADAM = 10,  /**< as Adam with b2 = B(t-1)/B(t), B(t) = 1 + 2^-extra + ... + t^-extra, whose c2 is 1;
                                     extra 0.001 */
  ORVANE_STEPPER_ADABOUND = 11, /**< q = extra t: dx = lr m clamp(1/sqrt(v), 1 - 1/(q+1), 1 + 1/q); extra 0.001 */
  ORVANE_STEPPER_AMSBOUND = 12, /**< the same with the largest v so far */
  ORVANE_STEPPER_ADABELIEF = 13, /**< as Adam with v = b2 v + (1-b2)(g - m)^2 */
  ORVANE_STEPPER_NADAM_OWN = 14, /**< dx = lr (b1/(1-b1^(t+1)) m + (1-b1)/c1 g)/sqrt(v/c2), a root below 1e-12 does not
                                      divide */
  ORVANE_STEPPER_ADAMW = 15,     /**< dx = lr (m/((sqrt(v/c2) + 1e-16)c1) + extra w); extra 0.01 */
  ORVANE_STEPPER_LION = 16,      /**< u = b1 m + |1-b1|g, then m = b2 m + |1-b2|g: dx = lr (extra w + s), s the sign of
                                      u, 0 within 1e-6 of 0; extra 0.01 */
  ORVANE_STEPPER_ADEMAMIX = 17   /**< n = extra n + (1-extra)g: dx = lr (m/c1 + a n)/(sqrt(v/c2) + 1e-16),
                                      a = 6 min(1, 0.00016 t); extra 0.9968 */
};

/** Costs: the gradient by output y that training begins with; t is the target, n the output's size. */
enum {
  ORVANE_COST_SQUARE = 0,        /**< y - t; the default */
  ORVANE_COST_MEAN_SQUARE = 1,   /**< (y - t)/n */
  ORVANE_COST_CROSS = 2,         /**< of probabilities: -(t/(y + 1e-32) - (1-t)/(1 + 1e-14 - y))/n */
  ORVANE_COST_SOFTMAX_CROSS = 3, /**< of outputs before a soft-max: softmax(y) sum(t) - t */
  ORVANE_COST_COSINE = 4,        /**< of 1 - cos(y, t); 0 where |y|^2 or |t|^2 is not above 1e-32 */
  ORVANE_COST_SIGN = 5           /**< of |y - t|: its sign, 0 at 0 */
};

/** Results of api_SolveInit. */
enum {
  ORVANE_TRAINING_READY = 0,
  ORVANE_TRAINING_RUNS = 10, /**< a run is going on */
  ORVANE_TRAINING_ROWS = 11, /**< no training rows, or numbers of inputs and targets differ */
  ORVANE_TRAINING_NO_NETWORK = 12,
  ORVANE_TRAINING_NETWORK = 13,     /**< the network has no input, no output, or is not ready */
  ORVANE_TRAINING_INPUT = 14,       /**< a training input is not as long as the network's */
  ORVANE_TRAINING_TARGET = 15,      /**< a training target is not as long as the network's output */
  ORVANE_TRAINING_NO_VARIABLE = 16, /**< nothing to train */
  ORVANE_TRAINING_TEST_INPUT = 17,  /**< as 14, of the test rows */
  ORVANE_TRAINING_TEST_TARGET = 18  /**< as 15, of the test rows */
};

/** @return handle of an optimiser without data, network and step rule, released by api_FreeHandle */
ORVANE_API NetOptimizer* api_CreateOptimizer(void);

/**
 * New step rule. The dog-leg minimises the sum of squares of all outputs less all targets over all training rows: its
 * matrix has rows*outputs by variables entries, so it is for small networks, and for starts near a solution: its steps
 * are long. Sign rules, tests and penalties of kind 2 act on it, and a small penalty helps where variables are
 * redundant; costs, batches, penalties of kind 1, drop, step limit and look-ahead do not. An iteration counts as a
 * step.
 *
 * @param kind  an ORVANE_STEPPER_
 * @return handle, released by api_FreeHandle; null for any other kind
 */
ORVANE_API NetSolver* api_CreateSolver(int32_t kind);

/**
 * Sets the numbers of a step rule. Before step t, from 0, the rate is lrStart + t (lrEnd - lrStart)/steps, and lrEnd
 * from t = steps on; every try begins it anew.
 *
 * @param solver   step rule; what it does not use it ignores
 * @param beta1    rate of the first moment
 * @param beta2    rate of the second moment
 * @param extra    see the table
 * @param lrStart  learning rate at the start
 * @param lrEnd    learning rate at the end
 * @param steps    length of the ramp; 0 or less: lrStart throughout
 */
ORVANE_API void api_SetSolverVar(NetSolver* solver, double beta1, double beta2, double extra, double lrStart,
                                 double lrEnd, int32_t steps);

/** Gives the optimiser a network; api_SolveInit must follow. Null takes it away. */
ORVANE_API void api_SetNewWork(NetOptimizer* opt, NetGraph* net);

/** Gives the optimiser a step rule; without one api_Solve returns at once. Null takes it away. */
ORVANE_API void api_SetSolver(NetOptimizer* opt, NetSolver* solver);

/**
 * Replaces the training rows.
 *
 * @param opt      optimiser
 * @param x        [rows*inCols] row-major inputs; copied
 * @param y        [rows*outCols] row-major targets; copied
 * @param rows     number of samples; 0 or less leaves none
 * @param inCols   length of an input
 * @param outCols  length of a target
 */
ORVANE_API void api_SetTrainData(NetOptimizer* opt, const double* x, const double* y, int32_t rows, int32_t inCols,
                                 int32_t outCols);
/** Replaces the test rows; as api_SetTrainData. Without test rows the training rows are tested. */
ORVANE_API void api_SetTestData(NetOptimizer* opt, const double* x, const double* y, int32_t rows, int32_t inCols,
                                int32_t outCols);
/** Appends to the training rows; as api_SetTrainData. */
ORVANE_API void api_AddTrainData(NetOptimizer* opt, const double* x, const double* y, int32_t rows, int32_t inCols,
                                 int32_t outCols);
/** Appends to the test rows; as api_SetTrainData. */
ORVANE_API void api_AddTestData(NetOptimizer* opt, const double* x, const double* y, int32_t rows, int32_t inCols,
                                int32_t outCols);

/**
 * Replaces one side of a set.
 *
 * @param opt      optimiser
 * @param data     table; copied
 * @param column   0: its rows are the inputs; otherwise the targets
 * @param isTrain  not 0: training rows, otherwise test rows
 */
ORVANE_API void api_OptSetData(NetOptimizer* opt, const Data2D* data, int32_t column, uint8_t isTrain);

/** The same from data[rows*cols], row-major; `flag` 0 is the inputs, otherwise the targets. */
ORVANE_API void api_OptSetData2(NetOptimizer* opt, const double* data, int32_t rows, int32_t cols, uint8_t flag,
                                uint8_t isTrain);

/**
 * Replaces both sets: round(share*rows) rows, chosen at random by the system's device, are for training, the others for
 * tests.
 *
 * @param opt      optimiser
 * @param data     [rows*(inCols+outCols)] row-major, each row an input and then its target; copied
 * @param rows     number of samples; 0 or less changes nothing
 * @param inCols   length of an input
 * @param outCols  length of a target
 * @param share    share of the training rows, 0 to 1
 */
ORVANE_API void api_SetData(NetOptimizer* opt, const double* data, int32_t rows, int32_t inCols, int32_t outCols,
                            double share);

/** Empties the training set, or the test set for `isTrain` 0. */
ORVANE_API void api_ClearData(NetOptimizer* opt, uint8_t isTrain);

/**
 * Replaces a set by the records of a file: raw little-endian doubles without a header, inCols and then outCols a
 * record. A file that cannot be opened or holds less than `rows` records changes nothing; what stands behind them is
 * ignored.
 *
 * @param opt      optimiser
 * @param path     file name
 * @param rows     number of records; below 0 changes nothing
 * @param inCols   length of an input
 * @param outCols  length of a target
 * @param isTrain  not 0: the training set, otherwise the test set
 */
ORVANE_API void api_OptReadDataFromFile(NetOptimizer* opt, const char* path, int32_t rows, int32_t inCols,
                                        int32_t outCols, uint8_t isTrain);

/**
 * How api_SolveInit rescales the inputs, in place: 0 to [0, 1] by column, 1 to mean 0 and deviation 1 by column
 * (divisor the number of rows), any other not at all. A column of one value becomes 0. Test inputs are rescaled by the
 * numbers of the training inputs. A host rescales what it hands to api_RunWork in the same way.
 */
ORVANE_API void api_SetPreprocessType(NetOptimizer* opt, uint8_t type);

/**
 * Tests by class: the share of test rows whose largest output (the first of equals) has the place of the largest
 * target. Not for outputs of size 1.
 *
 * @param opt   optimiser
 * @param rate  share that is enough; 0.99 at the start
 */
ORVANE_API void api_SetEvaluateByClass(NetOptimizer* opt, double rate);

/** Tests by the mean of all (y - t)^2 of the test rows, the default; `err`, 1e-12 at the start, is enough. */
ORVANE_API void api_SetEvaluateBySquaredError(NetOptimizer* opt, double err);

/**
 * Penalty on a variable, added to the batch gradient.
 *
 * @param opt     optimiser
 * @param var     variable; null changes nothing
 * @param weight  weight
 * @param kind    0: none; 1: weight*sign(w), with 0 at 0; 2: 2*weight*w; any other changes nothing
 */
ORVANE_API void api_setRegForVar(NetOptimizer* opt, NetVar* var, double weight, int32_t kind);

/** The same for all variables that the network has now; nothing without a network. */
ORVANE_API void api_setRegForAllVar(NetOptimizer* opt, double weight, int32_t kind);

/** Drop: in training, floor(drop*size) entries of a layer, chosen at random, are 0 in every pass. Null: nothing. */
ORVANE_API void api_setRegForLayer(NetOptimizer* opt, NetLayer* layer, double drop);

/** Limits an entry of a step: beyond maxStep it becomes a random 80 to 100 % of it. */
ORVANE_API void api_OptSetDxCorrectByMaxStep(NetOptimizer* opt, double maxStep);

/** Cost, an ORVANE_COST_; any other kind leaves the last choice. */
ORVANE_API void api_SetCostFun(NetOptimizer* opt, int32_t kind);

/**
 * Length of a try. Numbers are truncated.
 *
 * @param opt         optimiser
 * @param iterCount   steps of a try, 256 at the start
 * @param testPeriod  steps between two tests, 8 at the start; at least 1
 * @param batchSize   rows of a batch, 16 at the start; at least 1, at most all
 */
ORVANE_API void api_SetIterCount(NetOptimizer* opt, double iterCount, double testPeriod, double batchSize);

/** Tries of a run, 1 at the start. Each goes on from the best variables so far; with 0 api_Solve returns at once. */
ORVANE_API void api_SetTryNum(NetOptimizer* opt, int32_t tryNum);

/** Seeds the generator of the step limit, and of api_NetRandValue during a run; at the start it has the time. */
ORVANE_API void api_optSetSeed(NetOptimizer* opt, uint32_t seed);

/**
 * Look-ahead: every `period` steps, before the next one, the variables become slow = alpha w + (1-alpha) slow. The
 * first time slow is w. It cannot be taken off again.
 *
 * @param opt     optimiser
 * @param alpha   weight of the variables
 * @param period  steps; at least 2
 */
ORVANE_API void api_optSetLookahead(NetOptimizer* opt, double alpha, int32_t period);

/** Checks everything but the step rule, and rescales the inputs. @return 0 or an ORVANE_TRAINING_ code, the first */
ORVANE_API int32_t api_SolveInit(NetOptimizer* opt);

/**
 * Trains and returns when it is done: when a test is good enough or not finite, after the steps of all tries, when 16
 * batches in a row have no gradient (all entries below 1e-16, or one not finite), or at a stop. The network then has
 * the best variables that a test has seen. Returns at once without a good api_SolveInit, for data that has changed
 * since and does not fit, without a step rule, and while another run goes on.
 *
 * A try takes the rows in their order first and in a random order after each round. The first try of a run also seeds
 * the C library's rand by 20200923.
 *
 * @param opt  optimiser
 */
ORVANE_API void api_Solve(NetOptimizer* opt);

/** Asks a run to end, which it does within a block of at most 64 samples; returns at once. */
ORVANE_API void api_Stop(NetOptimizer* opt);

/** @return whether a run is going on */
ORVANE_API bool api_IsRun(const NetOptimizer* opt);

/**
 * Progress, also during a run.
 *
 * @param opt  optimiser
 * @param out  [7] out: 1.0; tests made; 1 for tests by class, otherwise 0; try, from 1; last test; best test; steps
 * made in all runs. Before the first test both are 1e300 (0 by class)
 */
ORVANE_API void api_GetOptRes(const NetOptimizer* opt, double* out);

/** @return count of the network's trainable numbers; 0 without a network */
ORVANE_API int32_t api_GetOptVarSize(const NetOptimizer* opt);

/** As api_NetWorkGetVar on the optimiser's network; not during a run. */
ORVANE_API void api_OptGetOptVarValue(const NetOptimizer* opt, double* data);

/** As api_NetWorkSetVar on the optimiser's network; nothing during a run. */
ORVANE_API void api_OptSetOptVarValue(NetOptimizer* opt, const double* data);

#endif
