// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gsl/gsl_errno.h>
#include <gsl/gsl_sf.h>

#include <boost/math/special_functions.hpp>
#include <boost/math/special_functions/ellint_rg.hpp>
#include <boost/math/special_functions/heuman_lambda.hpp>
#include <boost/math/special_functions/hypergeometric_0F1.hpp>
#include <boost/math/special_functions/hypergeometric_1F1.hpp>
#include <boost/math/special_functions/jacobi_zeta.hpp>
#include <boost/math/special_functions/lambert_w.hpp>
#include <cmath>
#include <limits>

#include "harness.h"

/// The peers of special functions as routines on an array of numbers: the standard library, GSL, Boost.Math.
namespace peers {

using harness::Routine;
using V = const double*;
namespace bm = boost::math;

inline int order(double x) { return static_cast<int>(x); }
inline unsigned count(double x) { return static_cast<unsigned>(x); }
inline bool isInteger(double x) { return x == std::floor(x); }

inline Routine standard(double (*f)(double)) {
  return {"standard", [f](V v) { return f(v[0]); }};
}
inline Routine standardOfTwo(double (*f)(double, double)) {
  return {"standard", [f](V v) { return f(v[0], v[1]); }};
}
inline Routine standardOfOrder(double (*f)(unsigned, double)) {
  return {"standard", [f](V v) { return f(count(v[0]), v[1]); }};
}

/// GSL by its form with a status: NaN on failure.
template <class Fill>
Routine gslBy(Fill fill) {
  return {"gsl", [fill](V v) {
            static const bool quiet = (gsl_set_error_handler_off(), true);
            gsl_sf_result r;
            const int status = fill(v, &r);
            const bool good = status == GSL_SUCCESS || status == GSL_EUNDRFLW || status == GSL_ELOSS;
            return quiet && good ? r.val : std::numeric_limits<double>::quiet_NaN();
          }};
}
using Result = gsl_sf_result*;
constexpr gsl_mode_t kMode = GSL_PREC_DOUBLE;
inline Routine gsl(int (*f)(double, Result)) {
  return gslBy([f](V v, Result r) { return f(v[0], r); });
}
inline Routine gsl(int (*f)(double, double, Result)) {
  return gslBy([f](V v, Result r) { return f(v[0], v[1], r); });
}
inline Routine gsl(int (*f)(double, double, double, Result)) {
  return gslBy([f](V v, Result r) { return f(v[0], v[1], v[2], r); });
}
inline Routine gsl(int (*f)(double, double, double, double, Result)) {
  return gslBy([f](V v, Result r) { return f(v[0], v[1], v[2], v[3], r); });
}
inline Routine gsl(int (*f)(int, double, Result)) {
  return gslBy([f](V v, Result r) { return f(order(v[0]), v[1], r); });
}
inline Routine gsl(int (*f)(double, gsl_mode_t, Result)) {
  return gslBy([f](V v, Result r) { return f(v[0], kMode, r); });
}
inline Routine gsl(int (*f)(double, double, gsl_mode_t, Result)) {
  return gslBy([f](V v, Result r) { return f(v[0], v[1], kMode, r); });
}
inline Routine gsl(int (*f)(double, double, double, gsl_mode_t, Result)) {
  return gslBy([f](V v, Result r) { return f(v[0], v[1], v[2], kMode, r); });
}
inline Routine gsl(int (*f)(double, double, double, double, gsl_mode_t, Result)) {
  return gslBy([f](V v, Result r) { return f(v[0], v[1], v[2], v[3], kMode, r); });
}

/// Boost under a policy.
template <class Policy, class F>
Routine boostBy(const char* name, F f) {
  return {name, [f](V v) -> double { return f(v, Policy()); }};
}
using Promoting = bm::policies::policy<>;
using DoubleOnly = bm::policies::policy<bm::policies::promote_double<false>>;

}  // namespace peers

/// Boost with its default policy and with doubles only: two peers; the expression names the arguments v, the policy p.
#define BOOST_BOTH(expression) \
  peers::boostBy<peers::Promoting>("boost", [](peers::V v, auto p) { return expression; }), BOOST_DOUBLE(expression)
#define BOOST_DOUBLE(expression) \
  peers::boostBy<peers::DoubleOnly>("boost_double", [](peers::V v, auto p) { return expression; })
/// GSL where its arguments stand otherwise; the expression names the arguments v, the result r.
#define GSL_BY(expression) peers::gslBy([](peers::V v, peers::Result r) { return expression; })
