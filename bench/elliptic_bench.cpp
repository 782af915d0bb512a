// SPDX-License-Identifier: Apache-2.0
// Elliptic integrals and Jacobi functions beside GSL and Boost.Math. Peers take the modulus: its root is part of their
// time.
#include "special_peers.h"

using namespace peers;

namespace {

// The parameter m, the argument of this number, from 0 to below 1; those before it not far out.
template <int kPlace>
bool parameter(V v) {
  for (int i = 0; i < kPlace; ++i)
    if (std::abs(v[i]) > 20) return false;
  return v[kPlace] >= 0 && v[kPlace] < 1;
}

template <int kWhich>
Routine gslJacobi() {
  return gslBy([](V v, Result r) {
    double values[3] = {};
    const int status = gsl_sf_elljac_e(v[0], v[1], &values[0], &values[1], &values[2]);
    r->val = values[kWhich];
    return status;
  });
}

}  // namespace

int main(int argc, char** argv) {
  const harness::Filter any = harness::any, first = parameter<0>, second = parameter<1>, third = parameter<2>;
  return harness::run(
      {
          {"RF", "math_ellipticRF", any, {gsl(gsl_sf_ellint_RF_e), BOOST_BOTH(bm::ellint_rf(v[0], v[1], v[2], p))}},
          {"RD", "math_ellipticRD", any, {gsl(gsl_sf_ellint_RD_e), BOOST_BOTH(bm::ellint_rd(v[0], v[1], v[2], p))}},
          {"RG", "math_ellipticRG", any, {BOOST_BOTH(bm::ellint_rg(v[0], v[1], v[2], p))}},
          {"RJ",
           "math_ellipticRJ",
           any,
           {gsl(gsl_sf_ellint_RJ_e), BOOST_BOTH(bm::ellint_rj(v[0], v[1], v[2], v[3], p))}},
          {"RC", "math_ellipticRC", any, {gsl(gsl_sf_ellint_RC_e), BOOST_BOTH(bm::ellint_rc(v[0], v[1], p))}},
          {"K",
           "math_ellipticK",
           first,
           {GSL_BY(gsl_sf_ellint_Kcomp_e(std::sqrt(v[0]), kMode, r)), BOOST_BOTH(bm::ellint_1(std::sqrt(v[0]), p))}},
          {"E",
           "math_ellipticE",
           first,
           {GSL_BY(gsl_sf_ellint_Ecomp_e(std::sqrt(v[0]), kMode, r)), BOOST_BOTH(bm::ellint_2(std::sqrt(v[0]), p))}},
          {"PI2",
           "math_ellipticPI2",
           second,
           {GSL_BY(gsl_sf_ellint_Pcomp_e(std::sqrt(v[1]), -v[0], kMode, r)),
            BOOST_BOTH(bm::ellint_3(std::sqrt(v[1]), v[0], p))}},
          {"F",
           "math_ellipticF",
           second,
           {GSL_BY(gsl_sf_ellint_F_e(v[0], std::sqrt(v[1]), kMode, r)),
            BOOST_BOTH(bm::ellint_1(std::sqrt(v[1]), v[0], p))}},
          {"E2",
           "math_ellipticE2",
           second,
           {GSL_BY(gsl_sf_ellint_E_e(v[0], std::sqrt(v[1]), kMode, r)),
            BOOST_BOTH(bm::ellint_2(std::sqrt(v[1]), v[0], p))}},
          {"PI",
           "math_ellipticPI",
           third,
           {GSL_BY(gsl_sf_ellint_P_e(v[1], std::sqrt(v[2]), -v[0], kMode, r)),
            BOOST_BOTH(bm::ellint_3(std::sqrt(v[2]), v[0], v[1], p))}},
          {"heuman", "math_heumannLambda", second, {BOOST_BOTH(bm::heuman_lambda(std::sqrt(v[1]), v[0], p))}},
          {"zeta", "math_jacobiZeta", second, {BOOST_BOTH(bm::jacobi_zeta(std::sqrt(v[1]), v[0], p))}},
          {"sn",
           "math_jacobiEllipticSn",
           second,
           {gslJacobi<0>(), BOOST_BOTH(bm::jacobi_sn(std::sqrt(v[1]), v[0], p))}},
          {"cn",
           "math_jacobiEllipticCn",
           second,
           {gslJacobi<1>(), BOOST_BOTH(bm::jacobi_cn(std::sqrt(v[1]), v[0], p))}},
          {"dn",
           "math_jacobiEllipticDn",
           second,
           {gslJacobi<2>(), BOOST_BOTH(bm::jacobi_dn(std::sqrt(v[1]), v[0], p))}},
          // Without a peer in these versions.
          {"AGM", "math_AGM", any, {}},
          {"cel", "math_bulirschCel", any, {}},
          {"el1", "math_bulirschEl1", any, {}},
          {"el2", "math_bulirschEl2", any, {}},
          {"el3", "math_bulirschEl3", any, {}},
          {"am", "math_jacobiEllipticAm", second, {}},
          {"theta1", "math_jacobiTheta1", second, {}},
          {"theta3", "math_jacobiTheta3", second, {}},
      },
      argc, argv);
}
