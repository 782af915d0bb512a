// SPDX-License-Identifier: Apache-2.0
// Hypergeometric and zeta functions, integrals of elementary functions and polynomials beside GSL, Boost.Math and the
// standard library.
#include "special_peers.h"

using namespace peers;

namespace {

Routine gslFermi() {
  return gslBy([](V v, Result r) {
    if (v[0] == -0.5) return gsl_sf_fermi_dirac_mhalf_e(v[1], r);
    if (v[0] == 0.5) return gsl_sf_fermi_dirac_half_e(v[1], r);
    if (v[0] == 1.5) return gsl_sf_fermi_dirac_3half_e(v[1], r);
    return gsl_sf_fermi_dirac_int_e(order(v[0]), v[1], r);
  });
}

bool isFermi(V v) { return v[0] <= 3 && v[0] >= -1 && v[0] != -1.5; }

}  // namespace

int main(int argc, char** argv) {
  const harness::Filter any = harness::any, second = [](V v) { return v[0] == 2; },
                        hurwitz = [](V v) { return v[0] > 1 && v[1] > 0; },
                        fermiHalf = [](V v) { return isFermi(v) && !isInteger(v[0]); },
                        fermiInteger = [](V v) { return isFermi(v) && isInteger(v[0]); },
                        integral = [](V v) { return v[0] > 1 && isInteger(v[0]) && v[1] < 100; },
                        gauss = [](V v) { return std::abs(v[3]) < 1; }, right = [](V v) { return v[2] > 0; },
                        legendre = [](V v) { return v[0] > 0 && v[0] < 1e4 && std::abs(v[1]) <= 1; },
                        laguerre = [](V v) { return v[0] > 0 && v[1] > 0; }, hermite = [](V v) { return v[0] > 0; };
  return harness::run(
      {
          {"zeta", "math_zeta", any, {standard(std::riemann_zeta), gsl(gsl_sf_zeta_e), BOOST_BOTH(bm::zeta(v[0], p))}},
          {"hurwitz_zeta", "math_hurwitzZeta", hurwitz, {gsl(gsl_sf_hzeta_e)}},
          {"eta", "math_dirichletEta", any, {gsl(gsl_sf_eta_e)}},
          {"dilogarithm", "math_polyLogarithm2", any, {gsl(gsl_sf_dilog_e)}},
          {"clausen_2", "math_ClausenS", second, {GSL_BY(gsl_sf_clausen_e(v[1], r))}},
          {"fermi_dirac_half", "math_fermiDirac", fermiHalf, {gslFermi()}},
          {"fermi_dirac_integer", "math_fermiDirac", fermiInteger, {gslFermi()}},
          {"Ei",
           "math_expIntegral",
           any,
           {standard(std::expint), gsl(gsl_sf_expint_Ei_e), BOOST_BOTH(bm::expint(v[0], p))}},
          {"E_n",
           "math_expIntegralP",
           integral,
           {gsl(gsl_sf_expint_En_e), BOOST_BOTH(bm::expint(count(v[0]), v[1], p))}},
          {"Si", "math_sineIntegral", any, {gsl(gsl_sf_Si_e)}},
          {"Ci", "math_cosineIntegral", any, {gsl(gsl_sf_Ci_e)}},
          {"Shi", "math_sinhIntegral", any, {gsl(gsl_sf_Shi_e)}},
          {"Chi", "math_coshIntegral", any, {gsl(gsl_sf_Chi_e)}},
          {"0F1",
           "math_Hypergeometric0F1",
           any,
           {gsl(gsl_sf_hyperg_0F1_e), BOOST_BOTH(bm::hypergeometric_0F1(v[0], v[1], p))}},
          {"1F1",
           "math_Hypergeometric1F1",
           any,
           {gsl(gsl_sf_hyperg_1F1_e), BOOST_BOTH(bm::hypergeometric_1F1(v[0], v[1], v[2], p))}},
          {"2F1", "math_Hypergeometric2F1", gauss, {gsl(gsl_sf_hyperg_2F1_e)}},
          {"U", "math_hypergeometricU", right, {gsl(gsl_sf_hyperg_U_e)}},
          {"legendre",
           "math_polyLegendre",
           legendre,
           {standardOfOrder(std::legendre), gsl(gsl_sf_legendre_Pl_e),
            BOOST_DOUBLE(bm::legendre_p(order(v[0]), v[1], p))}},
          {"laguerre",
           "math_polyLaguerre",
           laguerre,
           {standardOfOrder(std::laguerre), GSL_BY(gsl_sf_laguerre_n_e(order(v[0]), 0, v[1], r)),
            BOOST_DOUBLE(bm::laguerre(count(v[0]), v[1], p))}},
          {"hermite",
           "math_polyHermite",
           hermite,
           {standardOfOrder(std::hermite), gsl(gsl_sf_hermite_e), BOOST_DOUBLE(bm::hermite(count(v[0]), v[1], p))}},
          // Without a peer here.
          {"polylog", "math_polyLog", any, {}},
          {"fresnel_c", "math_fresnelC", any, {}},
          {"barnes_g", "math_barnesG", any, {}},
          {"mittag_leffler", "math_mittagLeffler", any, {}},
          {"inv_zeta", "math_invZeta", any, {}},
          {"inv_chi", "math_invCoshIntegral", any, {}},
      },
      argc, argv);
}
