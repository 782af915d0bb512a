/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Variables and layers: the parts from which a host builds a network.
 *
 * A variable holds trainable numbers, a matrix or one row. A layer holds a vector of activations y that its kind
 * computes from one or two input layers x (x2 for the second) and from its variables a (the first), b (the second) or a
 * list of them. The host makes the parts, joins them by the api_Set and api_Add functions and hands the graph to
 * api_NetWorkInit (orvane/network.h), which tests every size. Nothing is tested before.
 *
 * The host owns variables and layers and releases them by api_FreeHandle after the networks that use them. A variable
 * or a layer may serve several layers and several networks. None of these functions may run while a network with that
 * variable or layer is running.
 */
#ifndef ORVANE_NETWORK_LAYER_H
#define ORVANE_NETWORK_LAYER_H

#include <orvane/export.h>

/** Trainable numbers: a matrix, or one row. */
typedef struct NetVar NetVar;

/** A vector of activations and the rule that computes it. */
typedef struct NetLayer NetLayer;

/**
 * Kinds of layers.
 *
 * n is the layer's size, m that of x. Every kind has an analytic gradient by all its inputs and variables. At a kink it
 * is that of the branch that computes the value; ties of a maximum or minimum go to the first. Steps have the gradient
 * 0. "Stretched" operands: one of one entry serves all entries of the other.
 *
 * Groups and their sizes (api_NetWorkInit gives 34 otherwise):
 * - product: x and a, n by m
 * - with a: x and a in one row; m = n and a of n entries or one, or m = 1 and a of n entries (stretched)
 * - pair: x and x2; m = n and x2 of n entries or one, or m = 1 and x2 of n entries (stretched)
 * - element, vector: x alone, m = n
 * - with a, b: x, a, b; all of n entries, a and b in one row
 * - window: x, with the numbers of api_SetLayerIndex, api_SetLayerInputDim, api_SetLayerWindowDim, api_SetMoveDiff:
 *   a grid of inputRow by inputCol cells, row after row, begins at startIndex of x; the window of windowRow by
 *   windowCol cells starts in its first corner and moves by moveRow, moveCol while it fits;
 *   n = ((inputRow - windowRow)/moveRow + 1) ((inputCol - windowCol)/moveCol + 1), integer quotients
 * - radial: x, a of n by m, b in one row of n entries; d_i^2 = sum_j (a_ij - x_j)^2
 *
 * Derivatives of some kinds, by what stands before the colon (g is the gradient by y):
 * - QUADRATIC x: (A_k + A_k') x; A_k: x x'. MIX_PRODUCT2 x_i: x2_j; x2_j: x_i. POLY3 x: c1 + 2 c2 x + 3 c3 x^2; ck: x^k
 * - L_LINE x: 1 or 0.01. VEC_MASK x: 1 or 0. A_MUL_XB x: a b x^(b-1); a: x^b; b: a x^b ln x
 * - LAYER_NORM, ZSCORE_NORM x: (g - mean g - y mean(g y))/s, s the divisor; without one g - mean g
 * - RBF1 d^2: -b y; b: -d^2 y. RBF2 d^2: -b^2 y^2; b: -2 b d^2 y^2. RBF3 d^2: -b^2 y^3/2; b: -b d^2 y^3. And d_i^2 by
 *   a_ij: 2 (a_ij - x_j)
 * - ROTATION3D x: the inverse rotation of g; a: Rodrigues' formula, also at a = 0
 * - ZOOM x: the weights of the four cells; a factor z: the slope between the cells times -(i - (n-1)/2)/z^2, with i the
 *   row or column of n, and 0 where the border is repeated
 * - POOL_MAX, POOL_MIN, POOL_MEDIAN, POOL_STOCHASTIC x: 1 for the cell taken. POOL_NORM2 x: x/(norm windowRow
 * windowCol). POOL_VAR x: 2 (x - mean)/(windowRow windowCol)
 */
enum {
  /* product */
  ORVANE_LAYER_W_DOT_X = 1,         /**< a x */
  ORVANE_LAYER_W_SUB_X_SQUARED = 2, /**< y_i = sum_j (a_ij - x_j)^2 */
  ORVANE_LAYER_QUADRATIC = 3,       /**< y_k = x' A_k x; a list of n variables A_k, each m by m */
  /* with a */
  ORVANE_LAYER_X_ADD_A = 11,         /**< x + a */
  ORVANE_LAYER_X_SUB_A = 12,         /**< x - a */
  ORVANE_LAYER_X_SUB_A_SQUARED = 13, /**< (x - a)^2 */
  ORVANE_LAYER_A_SUB_X = 14,         /**< a - x */
  ORVANE_LAYER_X_MUL_A = 15,         /**< x a */
  ORVANE_LAYER_X_DIV_A = 16,         /**< x/a */
  ORVANE_LAYER_A_DIV_X = 17,         /**< a/x */
  ORVANE_LAYER_X_POW_A = 18,         /**< x^a; the gradient by the exponent is 0 at x = 0, a >= 0 */
  ORVANE_LAYER_A_POW_X = 19,         /**< a^x; as 18 */
  ORVANE_LAYER_SWISH = 20,           /**< x/(1 + exp(-a x)) */
  ORVANE_LAYER_ELU = 21,             /**< x >= 0: x; else a (exp(x) - 1) */
  ORVANE_LAYER_ISRLU = 22,           /**< x >= 0: x; else x/sqrt(1 + (a x)^2) */
  ORVANE_LAYER_PRELU = 23,           /**< x >= 0: x; else a x */
  /* pair */
  ORVANE_LAYER_X1_ADD_X2 = 41,    /**< x + x2 */
  ORVANE_LAYER_X1_SUB_X2 = 42,    /**< x - x2 */
  ORVANE_LAYER_X1_MUL_X2 = 43,    /**< x x2 */
  ORVANE_LAYER_X1_DIV_X2 = 44,    /**< x/x2 */
  ORVANE_LAYER_X1_POW_X2 = 45,    /**< x^x2; as 18 */
  ORVANE_LAYER_MAX_X1_X2 = 46,    /**< the larger */
  ORVANE_LAYER_MIN_X1_X2 = 47,    /**< the smaller */
  ORVANE_LAYER_APPEND_X1_X2 = 48, /**< x, then x2; n is the sum of their sizes */
  ORVANE_LAYER_MIX_PRODUCT2 = 49, /**< outer product x_i x2_j, row after row; n is the product of their sizes */
  /* element, unless it says vector */
  ORVANE_LAYER_SIN = 61,          /**< sin x */
  ORVANE_LAYER_COS = 62,          /**< cos x */
  ORVANE_LAYER_TAN = 63,          /**< tan x */
  ORVANE_LAYER_SINH = 64,         /**< sinh x */
  ORVANE_LAYER_COSH = 65,         /**< cosh x */
  ORVANE_LAYER_TANH = 66,         /**< tanh x */
  ORVANE_LAYER_ASIN = 67,         /**< asin x */
  ORVANE_LAYER_ACOS = 68,         /**< acos x */
  ORVANE_LAYER_ATAN = 69,         /**< atan x */
  ORVANE_LAYER_LOG = 70,          /**< ln x */
  ORVANE_LAYER_EXP = 71,          /**< exp x */
  ORVANE_LAYER_SQRT = 72,         /**< sqrt x */
  ORVANE_LAYER_ABS = 73,          /**< |x|; gradient 0 at 0 */
  ORVANE_LAYER_SIGN = 74,         /**< x < 0: -1; else 1 */
  ORVANE_LAYER_SQRT_NORM = 75,    /**< vector: x/sqrt(sum x^2); a zero vector stays, with gradient 0 */
  ORVANE_LAYER_SQUARED_NORM = 76, /**< vector: x/sum x^2; as 75 */
  ORVANE_LAYER_SIGMOD = 77,       /**< 1/(1 + exp(-x)) */
  ORVANE_LAYER_RELU = 78,         /**< max(0, x); gradient 0 at 0 */
  ORVANE_LAYER_SOFT_SIGN = 79,    /**< x/(1 + |x|) */
  ORVANE_LAYER_SOFT_PLUS = 80,    /**< x <= 20: ln(1 + exp x); else x */
  ORVANE_LAYER_SOFT_MAX = 81,     /**< vector: exp(x_i - max)/sum_j exp(x_j - max) */
  ORVANE_LAYER_GAUSS = 82,        /**< exp(-x^2) */
  ORVANE_LAYER_COPY = 83,         /**< x */
  ORVANE_LAYER_UNIT_STEP = 84,    /**< x < 0: 0; else 1 */
  ORVANE_LAYER_NEGATE = 85,       /**< -x */
  ORVANE_LAYER_SELU = 86,         /**< 1.0507009873554805 (x >= 0: x; else 1.6732632423543772 (exp(x) - 1)) */
  ORVANE_LAYER_GELU = 87,         /**< x (1 + tanh(0.797884560802866 x (1 + 0.044715 x^2))), without the usual 1/2 */
  ORVANE_LAYER_ZSCORE_NORM = 88,  /**< vector: (x - mean)/sd, sd^2 = mean of (x - mean)^2; sd < 1e-16: x - mean */
  ORVANE_LAYER_LINE_NORM = 89,    /**< vector: (x - min)/(max - min); max - min < 1e-16: x - min */
  ORVANE_LAYER_ERF = 90,          /**< erf(0.168 x) */
  ORVANE_LAYER_MISH = 91,         /**< x tanh(ln(1 + exp x)) */
  ORVANE_LAYER_SQNL = 92,         /**< with a, c = |a|: x >= c: 1; x <= -c: -1; else x (2c - |x|)/c^2 */
  ORVANE_LAYER_S_LINE = 93,       /**< with a: x |x|/(1 + |a x|) */
  ORVANE_LAYER_L_LINE = 94,       /**< leaky line: x >= 0: x; else 0.01 x */
  ORVANE_LAYER_SIGN_MAP = 95,     /**< m = 1, n = 2: y_0 = (1 - x)/2, y_1 = (1 + x)/2 */
  ORVANE_LAYER_VEC_MASK = 96,     /**< a in one row of n = m entries: a_i != 0: x_i; else 0. No gradient by a */
  ORVANE_LAYER_LAYER_NORM = 97,   /**< vector: (x - mean)/sqrt(1e-12 + mean of (x - mean)^2) */
  ORVANE_LAYER_LISHT = 98,        /**< x tanh x */
  ORVANE_LAYER_ANTI_SYM = 99,     /**< 16 x/(x^2 + 64) */
  ORVANE_LAYER_SQNL2 =
      100, /**< with a, b; c = |a|, v = |x|/c, p = |b|: |x| < c: sign(x) v^p (2 - v); x >= c: 1; else -1 */
  ORVANE_LAYER_X_TANH_EXP = 101, /**< x > 2.9: x; else x tanh(exp x) */
  ORVANE_LAYER_LOG_SIGN = 102,   /**< sign(x) ln(1 + |x|) */
  ORVANE_LAYER_EXP_SIGN = 103,   /**< sign(x) (exp(|x|) - 1) */
  ORVANE_LAYER_STEP_FUN = 104,   /**< x < 0: -1; else 1 */
  /* with a, b */
  ORVANE_LAYER_MPELU = 140,    /**< x >= 0: x; else a (exp(|b| x) - 1) */
  ORVANE_LAYER_X_SIN = 141,    /**< x (a sin x + b) */
  ORVANE_LAYER_X_COS = 142,    /**< x (a cos x + b) */
  ORVANE_LAYER_WEIBULL = 143,  /**< z = a |x|: sign(x) a b z^(b-1) exp(-z^b); 0 at x = 0 */
  ORVANE_LAYER_A_MUL_XB = 144, /**< a x^b; as 18 */
  ORVANE_LAYER_X_SIN2 = 145,   /**< x (a sin^2 x + b) */
  ORVANE_LAYER_X_COS2 = 146,   /**< x (a cos^2 x + b) */
  ORVANE_LAYER_X_SIN3 = 147,   /**< x < -16: a (x + 16) - 1; x > 16: b (x - 16) + 1; else sin(0.09817477042468103 x) */
  ORVANE_LAYER_X_SIN4 = 148,   /**< |x| times X_SIN3 */
  /* lists of variables, reductions, sources and moves */
  ORVANE_LAYER_POLY3 = 150,    /**< c0 + c1 x + c2 x^2 + c3 x^3; n = m, a list of four rows of n entries or one */
  ORVANE_LAYER_MAX = 160,      /**< n = 1: the largest entry */
  ORVANE_LAYER_SUM = 161,      /**< n = 1: the sum */
  ORVANE_LAYER_COPY_VAR = 180, /**< a, one row of n entries; no input */
  ORVANE_LAYER_ROTATION3D =
      181, /**< n = m = 3: x turned about the axis a/|a| by the angle |a| in radians; a: one row of 3 */
  /**
   * A square grid, enlarged about its centre by the factors a, bilinear; what lies outside repeats the border. a: one
   * row of one entry (both sides) or two (rows, columns); with four, the last two are the rows of the input and of the
   * output grid, integers that divide m and n, and have no gradient. The factors n/m a side give the usual
   * resampling of a picture with cells that keep their area. Without an integer number of rows the result is NaN.
   */
  ORVANE_LAYER_ZOOM = 198,
  ORVANE_LAYER_ASSEMBLY = 199, /**< the layers of a list one after another; n is the sum of their sizes */
  ORVANE_LAYER_SET_PART = 200, /**< y[startIndex + i] = x_i, else 0; m + startIndex < n */
  ORVANE_LAYER_GET_PART = 201, /**< y_i = x[startIndex + i]; n + startIndex < m */
  /* window */
  ORVANE_LAYER_CONVOLUTION = 202,     /**< sum of a times the window, plus b; a: windowRow by windowCol, b: one entry */
  ORVANE_LAYER_POOL_MAX = 203,        /**< largest cell */
  ORVANE_LAYER_POOL_MEAN = 204,       /**< mean */
  ORVANE_LAYER_POOL_MIN = 205,        /**< smallest cell */
  ORVANE_LAYER_POOL_NORM2 = 206,      /**< sqrt(sum of squares)/(windowRow windowCol); gradient 0 at 0 */
  ORVANE_LAYER_POOL_STOCHASTIC = 207, /**< a cell at random, all alike, in predictions too */
  ORVANE_LAYER_POOL_MEDIAN = 208,     /**< median; of an even number of cells the lower of the middle two */
  ORVANE_LAYER_POOL_VAR = 209,        /**< mean of squares of cell minus mean */
  /* radial */
  ORVANE_LAYER_RBF1 = 220, /**< Gaussian exp(-b_i d_i^2) */
  ORVANE_LAYER_RBF2 = 221, /**< inverse quadratic 1/(1 + b_i^2 d_i^2) */
  ORVANE_LAYER_RBF3 = 222, /**< inverse multiquadric 1/sqrt(1 + b_i^2 d_i^2) */

  ORVANE_LAYER_MAX_OUT_MUL = 230 /**< largest of the layers of a list, entry by entry; all of size n */
};

/** Where the values of a variable are held after every step of a training. */
enum {
  ORVANE_SIGN_FREE = 0,         /**< anywhere */
  ORVANE_SIGN_POSITIVE = 1,     /**< an entry below 1e-8 becomes 0.001 */
  ORVANE_SIGN_NOT_NEGATIVE = 2, /**< below -1e-8: 0 */
  ORVANE_SIGN_NEGATIVE = 3,     /**< above -1e-8: -0.001 */
  ORVANE_SIGN_NOT_POSITIVE = 4, /**< above 1e-8: 0 */
  ORVANE_SIGN_NOT_ZERO = 5      /**< in (0, 1e-8): 0.001; in (-1e-8, 0]: -0.001 */
};

/**
 * New variable. Its values are uniform on [0, 1), drawn by an MT19937 that is seeded with the time in seconds:
 * variables made within one second begin with the same numbers. api_NetRandValue gives better ones.
 *
 * @param rows  number of rows; 0 or less is none
 * @param cols  number of columns; 0 or less is none
 * @return handle, released by api_FreeHandle
 */
ORVANE_API NetVar* api_CreateNetVar(int32_t rows, int32_t cols);

/**
 * New layer of zeros, with nothing joined to it.
 *
 * @param size  number of activations; one of 0 or less is refused by api_NetWorkInit
 * @param kind  an ORVANE_LAYER_ code; any other is refused by api_NetWorkInit
 * @return handle, released by api_FreeHandle
 */
ORVANE_API NetLayer* api_CreateNetLayer(int32_t size, uint8_t kind);

/** Copies data[rows*cols], row after row, into a variable. */
ORVANE_API void api_SetNetVarValue(NetVar* var, const double* data);

/** Copies a variable into data[rows*cols], row after row. */
ORVANE_API void api_GetNetVarValue(const NetVar* var, double* data);

/** Sets every entry of a variable to v. */
ORVANE_API void api_SetNetVarV(NetVar* var, double v);

/** flag not 0: a training leaves the variable alone, and it is not in the flat numbers of its networks. */
ORVANE_API void api_SetNetVarFixed(NetVar* var, uint8_t flag);

/** Sets where a training may take the values: an ORVANE_SIGN_ code; any other is 0. */
ORVANE_API void api_SetVarFlag(NetVar* var, uint8_t flag);

/** @return number of rows */
ORVANE_API int32_t api_GetNetVarRowNum(const NetVar* var);

/** @return number of columns; 0 without rows */
ORVANE_API int32_t api_GetNetVarColNum(const NetVar* var);

/** Sets the first variable of a layer; null takes it away. */
ORVANE_API void api_SetVarToNetLayer(NetLayer* layer, NetVar* var);

/** Sets the second variable of a layer; null takes it away. */
ORVANE_API void api_SetVar2ToNetLayer(NetLayer* layer, NetVar* var);

/** Appends to the list of variables of a QUADRATIC or POLY3 layer; null, or a layer of another kind, does nothing. */
ORVANE_API void api_AddVarToNetLayer(NetLayer* layer, NetVar* var);

/** Sets the first input of a layer; null takes it away. */
ORVANE_API void api_SetInput1ToNetLayer(NetLayer* layer, NetLayer* input);

/** Sets the second input of a layer; null takes it away. */
ORVANE_API void api_SetInput2ToNetLayer(NetLayer* layer, NetLayer* input);

/** Appends to the list of an ASSEMBLY or MAX_OUT_MUL layer; null, or a layer of another kind, does nothing. */
ORVANE_API void api_AddAssemblyLayer(NetLayer* layer, NetLayer* member);

/** Sets startIndex, counted from 0, of a GET_PART, SET_PART or window layer; others are left alone. */
ORVANE_API void api_SetLayerIndex(NetLayer* layer, int32_t index);

/** Sets inputRow and inputCol of a window layer. @return true if it is one; others are left alone */
ORVANE_API bool api_SetLayerInputDim(NetLayer* layer, int32_t row, int32_t col);

/** Sets windowRow and windowCol of a window layer. @return true if it is one; others are left alone */
ORVANE_API bool api_SetLayerWindowDim(NetLayer* layer, int32_t row, int32_t col);

/** Sets moveRow and moveCol of a window layer. @return true if it is one; others are left alone */
ORVANE_API bool api_SetMoveDiff(NetLayer* layer, int32_t row, int32_t col);

/** Copies data[size] into the activations of a layer. */
ORVANE_API void api_SetNetLayerValue(NetLayer* layer, const double* data);

/** Copies the activations of a layer into data[size]: those of the last api_RunWork or api_NetWorkGetDiffValue. */
ORVANE_API void api_GetNetLayerValue(const NetLayer* layer, double* data);

/** @return number of activations of a layer */
ORVANE_API int32_t api_GetNetLayerSize(const NetLayer* layer);

#endif
