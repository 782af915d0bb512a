/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Every function of the library.
 */
#ifndef ORVANE_ORVANE_H
#define ORVANE_ORVANE_H

#include <orvane/frame.h>
#include <orvane/optimizer.h>

#endif
