/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Special functions of doubles, all families.
 *
 * There is no failure channel beside the value: outside its domain a function gives the quiet NaN, at a pole an
 * infinity, where a result is known to be huge an infinity or 1e300. A search that reaches its limit of rounds gives
 * the best value that it has. The functions keep no state and may be called from any thread.
 */
#ifndef ORVANE_SPECIAL_H
#define ORVANE_SPECIAL_H

#include <orvane/bessel.h>
#include <orvane/elementary.h>
#include <orvane/elliptic.h>
#include <orvane/error.h>
#include <orvane/gamma.h>
#include <orvane/hypergeometric.h>
#include <orvane/integral_functions.h>
#include <orvane/polynomial_functions.h>
#include <orvane/zeta.h>

#endif
