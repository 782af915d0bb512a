/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Every function of the library.
 */
#ifndef ORVANE_ORVANE_H
#define ORVANE_ORVANE_H

#include <orvane/action.h>
#include <orvane/array.h>
#include <orvane/bessel.h>
#include <orvane/complex_expression.h>
#include <orvane/decision_tree.h>
#include <orvane/elementary.h>
#include <orvane/elliptic.h>
#include <orvane/error.h>
#include <orvane/expression_search.h>
#include <orvane/filter.h>
#include <orvane/fraction.h>
#include <orvane/frame.h>
#include <orvane/gamma.h>
#include <orvane/highprecision.h>
#include <orvane/hypergeometric.h>
#include <orvane/integral.h>
#include <orvane/integral_functions.h>
#include <orvane/line_equation.h>
#include <orvane/line_programme.h>
#include <orvane/loss.h>
#include <orvane/map_coordinates.h>
#include <orvane/matrix.h>
#include <orvane/mesh.h>
#include <orvane/network.h>
#include <orvane/network_layer.h>
#include <orvane/network_training.h>
#include <orvane/optimizer.h>
#include <orvane/paths.h>
#include <orvane/pdf.h>
#include <orvane/pdf_manager.h>
#include <orvane/polynomial_functions.h>
#include <orvane/quadratic_programme.h>
#include <orvane/rotation.h>
#include <orvane/smooth.h>
#include <orvane/special.h>
#include <orvane/statistics.h>
#include <orvane/stock.h>
#include <orvane/support_vector_machine.h>
#include <orvane/sym.h>
#include <orvane/sym_calculus.h>
#include <orvane/sym_diff.h>
#include <orvane/sym_kinds.h>
#include <orvane/sym_polynomial.h>
#include <orvane/sym_store.h>
#include <orvane/sym_text.h>
#include <orvane/transform.h>
#include <orvane/version.h>
#include <orvane/zeta.h>

#endif
