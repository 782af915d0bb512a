/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Actions: predictors made of trained networks (orvane/network.h), combined by sum, mean, vote or stacking, and trained
 * as one thing by the optimisers of their networks (orvane/network_training.h).
 *
 * An action owns nothing: networks, optimisers, members, root and tables stay the host's and must outlive it or its
 * last use. All functions on actions take the handle of action_Create; a function does nothing on an action of a kind
 * that it is not for.
 */
#ifndef ORVANE_ACTION_H
#define ORVANE_ACTION_H

#include <orvane/frame.h>
#include <orvane/network_training.h>

/** A predictor: one row in, one row out. */
typedef struct NetAction NetAction;
/** Data and a root action, trained together. */
typedef struct OptNetSet OptNetSet;

/** Kinds for action_Create. Sets that train predict as the set without training. */
enum {
  ORVANE_ACTION_NET = 0,         /**< one network */
  ORVANE_ACTION_SUM = 1,         /**< set: sum of the members' outputs */
  ORVANE_ACTION_MEAN = 2,        /**< set: mean of the members' outputs */
  ORVANE_ACTION_VOTE = 3,        /**< set: each member adds 1 at its largest output; one single output is always 1 */
  ORVANE_ACTION_STACK = 4,       /**< set: the last member gets the joined outputs of the others; entries that it does
                                      not give are NaN */
  ORVANE_ACTION_OPT_NET = 300,   /**< one network with its optimiser */
  ORVANE_ACTION_BOOST = 301,     /**< trains the members in order, each on what those before have left of the targets */
  ORVANE_ACTION_OPT_MEAN = 302,  /**< trains each member on the same rows */
  ORVANE_ACTION_OPT_VOTE = 303,  /**< trains each member on the same rows */
  ORVANE_ACTION_OPT_STACK = 304, /**< trains all but the last on the rows, then the last on their joined outputs */
  ORVANE_ACTION_DRIVER = 600     /**< an OptNetSet */
};

/** The four slots of data. */
enum {
  ORVANE_SLOT_TRAIN_INPUT = 0,
  ORVANE_SLOT_TRAIN_TARGET = 1,
  ORVANE_SLOT_TEST_INPUT = 2,
  ORVANE_SLOT_TEST_TARGET = 3
};

/** Results of action_NetAction_Check and action_OptNetSet_Init; a misfit of an optimiser is its ORVANE_TRAINING_ code.
 */
enum {
  ORVANE_ACTION_OK = 1,
  ORVANE_ACTION_NOT_TRAINABLE = 62, /**< no optimiser, no network, or one that is not ready */
  ORVANE_ACTION_EMPTY_SET = 81,
  ORVANE_ACTION_NO_NETWORK = 90,
  ORVANE_ACTION_NETWORK_NOT_READY = 91,
  ORVANE_ACTION_NO_ROOT = 100,
  ORVANE_ACTION_TRAIN_WITHOUT_TARGET = 101,
  ORVANE_ACTION_TRAIN_NO_ROWS = 102,
  ORVANE_ACTION_TRAIN_ROWS_DIFFER = 103,
  ORVANE_ACTION_TEST_WITHOUT_TARGET = 104,
  ORVANE_ACTION_TEST_NO_ROWS = 105,
  ORVANE_ACTION_TEST_ROWS_DIFFER = 106,
  ORVANE_ACTION_TRAIN_INPUT_NO_COLUMNS = 107,
  ORVANE_ACTION_TRAIN_TARGET_NO_COLUMNS = 108,
  ORVANE_ACTION_TEST_INPUT_COLUMNS = 109,
  ORVANE_ACTION_TEST_TARGET_COLUMNS = 110,
  ORVANE_ACTION_ONLY_TEST_WITHOUT_TARGET = 111, /**< 111 to 115: no training input, the test rows stand for both */
  ORVANE_ACTION_ONLY_TEST_NO_ROWS = 112,
  ORVANE_ACTION_ONLY_TEST_ROWS_DIFFER = 113,
  ORVANE_ACTION_ONLY_TEST_INPUT_NO_COLUMNS = 114,
  ORVANE_ACTION_ONLY_TEST_TARGET_NO_COLUMNS = 115,
  ORVANE_ACTION_NO_DATA = 116
};

/**
 * New action.
 *
 * @param code  an ORVANE_ACTION_ kind
 * @return a NetAction*, or an OptNetSet* for ORVANE_ACTION_DRIVER, released by api_FreeHandle; null for any other code
 */
ORVANE_API void* action_Create(int32_t code);

/** Gives an action its network; null takes it away. */
ORVANE_API void action_NetAction_SetNetWork(NetAction* action, NetGraph* network);

/** @return 1, or the code of what is missing for predictions (for training, where the action has an optimiser) */
ORVANE_API int32_t action_NetAction_Check(NetAction* action);

/** @return length of an input row, of a set that of its first member; 0 where there is none */
ORVANE_API int32_t action_NetAction_GetInputSize(const NetAction* action);

/** @return length of an output row, of a set that of its first member; 0 where there is none */
ORVANE_API int32_t action_NetAction_GetOutputSize(const NetAction* action);

/**
 * Prediction for one row.
 *
 * @param action  action
 * @param in      [input size]
 * @param out     [output size] out; NaN where a network is missing or not ready, or where sizes do not fit
 */
ORVANE_API void action_NetAction_Predict(NetAction* action, const double* in, double* out);

/** Adds a member to a set of kind 1 to 4. One that holds the set itself is not taken. */
ORVANE_API void action_NetSetAction_AddAction(NetAction* set, NetAction* action);

/** Gives an action of kind 300 its optimiser; its network comes from action_NetAction_SetNetWork. */
ORVANE_API void action_OptNetAction_SetNetOptimizer(NetAction* action, NetOptimizer* optimizer);

/** Adds a member of kind 300 to 304 to a set of kind 301 to 304. One that holds the set itself is not taken. */
ORVANE_API void action_OptNetSetAction_AddOptNet(NetAction* set, NetAction* action);

/** Gives a driver its root, of kind 300 to 304; any other, and null, leave it without one. */
ORVANE_API void action_OptNetSet_SetRoot(OptNetSet* set, NetAction* root);

/** Makes a slot rows by cols zeros, to be filled by action_OptNetSet_SetDataByRow. Other slots than 0 to 3: nothing. */
ORVANE_API void action_OptNetSet_SetDataDim(OptNetSet* set, int32_t rows, int32_t cols, int32_t slot);

/** Fills a slot from data[rows*cols], row-major; copied. */
ORVANE_API void action_OptNetSet_SetDataByArray(OptNetSet* set, const double* data, int32_t rows, int32_t cols,
                                                int32_t slot);

/** Copies data[cols] into one row, from 0, of a slot that action_OptNetSet_SetDataDim has sized. */
ORVANE_API void action_OptNetSet_SetDataByRow(OptNetSet* set, const double* data, int32_t row, int32_t slot);

/** Makes a slot use the rows of a table, which is not copied. */
ORVANE_API void action_OptNetSet_SetDataByData2D(OptNetSet* set, const Data2D* data, int32_t slot);

/**
 * Checks data and root and makes the set ready.
 *
 * @param set  driver
 * @return 1, or the code of the first thing that is wrong; 0 while a run goes on
 */
ORVANE_API int32_t action_OptNetSet_Init(OptNetSet* set);

/**
 * Trains the tree under the root on the calling thread, after action_OptNetSet_Init where the set is not ready. Each
 * optimiser makes its run of api_Solve on the rows that its place in the tree gives it; its own data stays as it is and
 * inputs are not rescaled. Without test rows the training rows are tested, without training rows the test rows serve
 * for both.
 *
 * @param set  driver
 * @return true when the tree was run, to its end or to a stop; false when the set is not ready or runs already
 */
ORVANE_API bool action_OptNetSet_Optimize(OptNetSet* set);

/** Asks a ready set to end its run; from any thread, returns at once. Nothing on one that is not ready. */
ORVANE_API void action_OptNetSet_Stop(OptNetSet* set);

/** Passes a byte to every optimiser under the root: not 0 keeps their api_SolveInit from rescaling their inputs. */
ORVANE_API void action_OptNetSet_SetPreDotValue(OptNetSet* set, uint8_t value);

/** @return the optimiser that runs, or ran last; null before the first. From any thread */
ORVANE_API NetOptimizer* action_OptNetSet_CurrentOptimizer(const OptNetSet* set);

#endif
