// SPDX-License-Identifier: Apache-2.0
// Gamma, beta and error functions, Lambert's W beside GSL, Boost.Math and the standard library.
#include "special_peers.h"

using namespace peers;

int main(int argc, char** argv) {
  const harness::Filter any = harness::any, inside = [](V v) { return v[0] > 0 && v[1] >= 0; },
                        nonInteger = [](V v) { return v[0] > 0 && v[1] >= 0 && !isInteger(v[0]); };
  return harness::run(
      {
          {"gamma", "math_gamma", any, {standard(std::tgamma), gsl(gsl_sf_gamma_e), BOOST_BOTH(bm::tgamma(v[0], p))}},
          {"digamma", "math_digamma", any, {gsl(gsl_sf_psi_e), BOOST_BOTH(bm::digamma(v[0], p))}},
          {"beta", "math_beta", inside, {gsl(gsl_sf_beta_e), BOOST_BOTH(bm::beta(v[0], v[1], p))}},
          {"gamma_p",
           "math_RLowerIncompleteGamma",
           nonInteger,
           {gsl(gsl_sf_gamma_inc_P_e), BOOST_BOTH(bm::gamma_p(v[0], v[1], p))}},
          {"gamma_q",
           "math_RUpperIncompleteGamma",
           nonInteger,
           {gsl(gsl_sf_gamma_inc_Q_e), BOOST_BOTH(bm::gamma_q(v[0], v[1], p))}},
          {"erf", "math_erf", any, {standard(std::erf), gsl(gsl_sf_erf_e), BOOST_BOTH(bm::erf(v[0], p))}},
          {"dawson", "math_drawson", any, {gsl(gsl_sf_dawson_e)}},
          {"inverse_erf", "math_invErf", any, {BOOST_BOTH(bm::erf_inv(v[0], p))}},
          {"lambert_w", "math_lambertW", any, {gsl(gsl_sf_lambert_W0_e), BOOST_BOTH(bm::lambert_w0(v[0], p))}},
      },
      argc, argv);
}
