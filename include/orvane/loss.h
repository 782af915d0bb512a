/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Loss functions: what a value y costs that should have been t. Robust losses of the residual r = t - y for fits with
 * outliers, entropies, angles and signs for classifiers.
 *
 * Each loss has one scale k, 10 at the start. Huber, Andrews, bisquare and Cauchy use numbers that only
 * api_setLossParam makes of it: until it is called, the line of Huber's loss has no offset, and the other three are 0
 * everywhere. A host that wants k = 10 for these calls api_setLossParam(loss, 10).
 */
#ifndef ORVANE_LOSS_H
#define ORVANE_LOSS_H

#include <orvane/export.h>

/** A loss function with its scale. */
typedef struct LossFun LossFun;

/** Kinds of loss, each with its value for one pair; a sum is taken over pairs unless the kind says otherwise. */
enum {
  ORVANE_LOSS_L1 = 0,             /**< |r| */
  ORVANE_LOSS_L2 = 1,             /**< r^2 */
  ORVANE_LOSS_LA = 2,             /**< |r|^k/k */
  ORVANE_LOSS_GEMAN_MCCLURE = 10, /**< r^2/(2(r^2 + k^2)) */
  ORVANE_LOSS_HUBER = 11,         /**< r^2 where |r| < k, otherwise 2k(|r| - k/2) */
  ORVANE_LOSS_PSEUDO_HUBER = 12,  /**< k^2(sqrt((r/k)^2 + 1) - 1) */
  ORVANE_LOSS_ANDREWS = 13,       /**< -k^2(1 + cos(r/k)) where |r| < k pi, otherwise 0 */
  ORVANE_LOSS_BISQUARE = 14,      /**< k^2/6 (1 - (1 - (r/k)^2)^3) where |r| < k, otherwise 0 */
  ORVANE_LOSS_CAUCHY = 15,        /**< k^2/2 ln((r/k)^2 + 1) */
  ORVANE_LOSS_FAIR = 16,          /**< k^2(v - ln(v + 1)), v = |r|/k */
  ORVANE_LOSS_LOGISTIC = 17,      /**< k^2 ln(cosh(r/k)) */
  ORVANE_LOSS_TALWAR = 18,        /**< r^2 where |r| < k, otherwise k^2 */
  ORVANE_LOSS_WELSCH = 19,        /**< k^2(1 - exp(-(r/k)^2)) */
  ORVANE_LOSS_CROSS1 = 60,        /**< -(ln(1 + 1e-14 - y)(1-t) + ln(y + 1e-32)t), y a probability */
  ORVANE_LOSS_CROSS2 = 61,        /**< -t ln(y + 1e-32) */
  ORVANE_LOSS_COS1 = 62,          /**< of whole arrays: 1 - |c|, c the cosine between y and t */
  ORVANE_LOSS_COS2 = 63,          /**< of whole arrays: 1 + c^2 where c >= 0, otherwise 1 - c^2 */
  ORVANE_LOSS_HINGE = 64,         /**< max(0, 1 - y t) */
  ORVANE_LOSS_CLASS = 100         /**< of whole arrays: 0 for n >= 1, NaN for n = 0 */
};

/**
 * New loss function.
 *
 * @param kind  one of the kinds above
 * @return handle, released by api_FreeHandle; null for any other kind
 */
ORVANE_API LossFun* api_initLossFun(int32_t kind);

/**
 * Sets the scale to |k|, at least 1e-15. Bisquare and Cauchy take a scale below 1e-15 as 1e-16.
 *
 * @param loss  from api_initLossFun
 * @param k     scale; NaN makes the losses that use it NaN
 */
ORVANE_API void api_setLossParam(LossFun* loss, double k);

/**
 * Loss of n values: the sum over i of the loss of y[i] and t[i], or the loss of the whole arrays where the kind says
 * so. The two cosine losses are 0 where |y|^2 |t|^2 is below 1e-32.
 *
 * @param loss  from api_initLossFun
 * @param y     [n] values
 * @param t     [n] targets
 * @param n     number of pairs; 0 or less gives 0 (NaN for ORVANE_LOSS_CLASS)
 */
ORVANE_API double api_calcLossFun(const LossFun* loss, const double* y, const double* t, int32_t n);

#endif
