/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Every function of the library.
 */
#ifndef ORVANE_ORVANE_H
#define ORVANE_ORVANE_H

#include <orvane/frame.h>
#include <orvane/integral.h>
#include <orvane/line_equation.h>
#include <orvane/line_programme.h>
#include <orvane/matrix.h>
#include <orvane/optimizer.h>
#include <orvane/paths.h>
#include <orvane/pdf.h>
#include <orvane/pdf_manager.h>
#include <orvane/quadratic_programme.h>
#include <orvane/special.h>

#endif
