/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Networks: a graph of layers (orvane/network_layer.h) with one input and one output, its predictions, its derivatives
 * and its trainable numbers.
 *
 * A network owns neither its layers nor its variables. A change of their wiring (any api_Set or api_Add function for
 * layers but api_SetNetLayerValue) needs a new api_NetWorkInit: until then nothing is computed.
 *
 * One network serves one thread at a time, as its layers hold the activations; networks that share no layer and no
 * variable are independent. While a training runs on another thread, api_RunWork is refused or waits for its turn and
 * never disturbs it; the other functions must not be called then.
 */
#ifndef ORVANE_NETWORK_H
#define ORVANE_NETWORK_H

#include <orvane/network_layer.h>

/** A graph of layers from an input to an output. */
typedef struct NetGraph NetGraph;

/** Results of api_NetWorkInit. */
enum {
  ORVANE_NETWORK_READY = 1,
  ORVANE_NETWORK_NO_ENDS = 2,      /**< input or output missing, or the same layer */
  ORVANE_NETWORK_NO_VALUE = 30,    /**< a layer of size 0 */
  ORVANE_NETWORK_DELTA_SIZE = 31,  /**< a layer's gradient has another size than the layer */
  ORVANE_NETWORK_NOT_REACHED = 32, /**< the output does not depend on the input */
  ORVANE_NETWORK_CYCLE = 33,       /**< a layer depends on itself */
  ORVANE_NETWORK_WIRING = 34,      /**< inputs, variables or sizes that the kind of a layer does not allow */
  ORVANE_NETWORK_NO_KIND = 35,     /**< a kind without functions */
  ORVANE_NETWORK_POOL_SIZE = 36,   /**< the places of a pool have another size than the layer */
  ORVANE_NETWORK_WINDOW_SIZE = 38  /**< the window of a median or stochastic pool has changed since the last call */
};

/** @return handle of an empty network, released by api_FreeHandle */
ORVANE_API NetGraph* api_CreateNetWork(void);

/**
 * Makes a graph into a network: finds the layers between input and output, orders them, collects their variables and
 * tests every layer. To be called again after changes.
 *
 * @param net     network
 * @param input   layer that takes the data; what it reads from itself is ignored
 * @param output  layer whose activations are the result
 * @return 1 or an ORVANE_NETWORK_ code, the first that applies
 */
ORVANE_API int32_t api_NetWorkInit(NetGraph* net, NetLayer* input, NetLayer* output);

/** @return size of the input layer; 0 without one */
ORVANE_API int32_t api_GetInputSize(const NetGraph* net);

/** @return size of the output layer; 0 without one */
ORVANE_API int32_t api_GetOutputSize(const NetGraph* net);

/**
 * Prediction for one row.
 *
 * @param net     network
 * @param input   [input size]
 * @param output  [output size] out; untouched on failure
 * @return false while the network is in training, or is not ready
 */
ORVANE_API bool api_RunWork(NetGraph* net, const double* input, double* output);

/** @return count of trainable numbers: the entries of all variables that are not fixed */
ORVANE_API int32_t api_NetWorkGetVarSize(const NetGraph* net);

/**
 * Copies the trainable numbers out: variable after variable in the order in which the layers first use them, row after
 * row, without fixed ones. A network that is built anew in the same way and gets them by api_NetWorkSetVar predicts the
 * same bits.
 *
 * @param net   network
 * @param data  [api_NetWorkGetVarSize] out
 */
ORVANE_API void api_NetWorkGetVar(const NetGraph* net, double* data);

/** Copies data[api_NetWorkGetVarSize] into the trainable numbers, in the order of api_NetWorkGetVar. */
ORVANE_API void api_NetWorkSetVar(NetGraph* net, const double* data);

/**
 * Random start values of the trainable numbers, by an MT19937 with the seed 5489, or by the generator of the training
 * that runs.
 *
 * With s = max(scale, 0.1), a number r of [0, s) is drawn for every trainable number; m is the largest of them, at
 * least 1. Entries of a variable with the rules ORVANE_SIGN_POSITIVE and ORVANE_SIGN_NOT_NEGATIVE become (r + 1e-12)/m,
 * with ORVANE_SIGN_NEGATIVE and ORVANE_SIGN_NOT_POSITIVE -(r + 1e-12)/m. All others are then drawn uniformly from
 * [-L, L), L = s sqrt(6/(rows + cols)) (Glorot and Bengio 2010).
 *
 * @param net    network
 * @param scale  1 suits tanh; a NaN is 0.1
 */
ORVANE_API void api_NetRandValue(NetGraph* net, double scale);

/**
 * Jacobian of the output by the input, at the input layer's present activations (api_SetNetLayerValue on the input
 * layer, or the last api_RunWork). Layers that training skips pass no gradient.
 *
 * @param net   network; nothing is written for one that is not ready
 * @param data  [output size * input size] out, one row an output
 */
ORVANE_API void api_NetWorkGetDiffValue(NetGraph* net, double* data);

/**
 * Writes the network as text for people: the input layer, every layer in the order of computation with its kind, size,
 * inputs and variables, then every variable with its values. Numbers have as many digits as bring the same double back.
 * A layer without a name is called layer1, layer2 and so on by its place in the text; a variable without a name too, by
 * its place among the variables. Entries of a layer's list are counted from 0.
 *
 * @param net   network; nothing is written for one without layers
 * @param path  file; one that cannot be written is ignored
 */
ORVANE_API void api_NetExportInfo(const NetGraph* net, const char* path);

#endif
