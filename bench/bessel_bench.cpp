// SPDX-License-Identifier: Apache-2.0
// Bessel, Airy, Struve and parabolic cylinder functions beside GSL, Boost.Math and the standard library.
#include "special_peers.h"

using namespace peers;

int main(int argc, char** argv) {
  const harness::Filter any = harness::any, inside = [](V v) { return v[0] >= 0 && v[1] > 0; },
                        integer = [](V v) { return v[0] >= 0 && v[1] > 0 && isInteger(v[0]); },
                        zero = [](V v) { return v[0] > 0 && v[0] < 1e9 && isInteger(v[0]); };
  return harness::run(
      {
          {"BesselJ",
           "math_BesselJ",
           inside,
           {standardOfTwo(std::cyl_bessel_j), gsl(gsl_sf_bessel_Jnu_e), BOOST_DOUBLE(bm::cyl_bessel_j(v[0], v[1], p))}},
          {"BesselY",
           "math_BesselY",
           inside,
           {standardOfTwo(std::cyl_neumann), gsl(gsl_sf_bessel_Ynu_e), BOOST_DOUBLE(bm::cyl_neumann(v[0], v[1], p))}},
          {"BesselI",
           "math_BesselI",
           inside,
           {standardOfTwo(std::cyl_bessel_i), gsl(gsl_sf_bessel_Inu_e), BOOST_DOUBLE(bm::cyl_bessel_i(v[0], v[1], p))}},
          {"BesselK",
           "math_BesselK",
           inside,
           {standardOfTwo(std::cyl_bessel_k), gsl(gsl_sf_bessel_Knu_e), BOOST_DOUBLE(bm::cyl_bessel_k(v[0], v[1], p))}},
          {"SphericalBesselJ",
           "math_SphericalBesselJ",
           integer,
           {standardOfOrder(std::sph_bessel), gsl(gsl_sf_bessel_jl_e),
            BOOST_DOUBLE(bm::sph_bessel(count(v[0]), v[1], p))}},
          {"SphericalBesselY",
           "math_SphericalBesselY",
           integer,
           {standardOfOrder(std::sph_neumann), gsl(gsl_sf_bessel_yl_e),
            BOOST_DOUBLE(bm::sph_neumann(count(v[0]), v[1], p))}},
          {"AiryAi", "math_AiryAi", any, {gsl(gsl_sf_airy_Ai_e), BOOST_DOUBLE(bm::airy_ai(v[0], p))}},
          {"AiryBi", "math_AiryBi", any, {gsl(gsl_sf_airy_Bi_e), BOOST_DOUBLE(bm::airy_bi(v[0], p))}},
          {"DiffAiryAi",
           "math_DiffAiryAi",
           any,
           {gsl(gsl_sf_airy_Ai_deriv_e), BOOST_DOUBLE(bm::airy_ai_prime(v[0], p))}},
          {"DiffAiryBi",
           "math_DiffAiryBi",
           any,
           {gsl(gsl_sf_airy_Bi_deriv_e), BOOST_DOUBLE(bm::airy_bi_prime(v[0], p))}},
          {"AiryAiZero",
           "math_AiryAiZero",
           zero,
           {GSL_BY(gsl_sf_airy_zero_Ai_e(count(v[0]), r)), BOOST_DOUBLE(bm::airy_ai_zero<double>(order(v[0]), p))}},
          // The peer for x > 0: 2^(nu/2) exp(-x^2/4) U(-nu/2, 1/2, x^2/2).
          {"ParabolicCylinderD_right",
           "math_ParabolicCylinderD",
           inside,
           {{"gsl",
             [u = gsl(gsl_sf_hyperg_U_e)](V v) {
               const double a[] = {-v[0] / 2, 0.5, v[1] * v[1] / 2};
               return std::exp2(v[0] / 2) * std::exp(-v[1] * v[1] / 4) * u.call(a);
             }}}},
          // Without a peer here.
          {"AiryGi", "math_AiryGi", any, {}},
          {"AiryHi", "math_AiryHi", any, {}},
          {"DiffAiryGi", "math_DiffAiryGi", any, {}},
          {"DiffAiryHi", "math_DiffAiryHi", any, {}},
          {"StruveH", "math_StruveH", any, {}},
          {"StruveL", "math_StruveL", any, {}},
          {"angerJ", "math_angerJ", any, {}},
          {"weberE", "math_weberE", any, {}},
          {"ParabolicCylinderD", "math_ParabolicCylinderD", any, {}},
          {"ParabolicCylinderU", "math_ParabolicCylinderU", any, {}},
          {"ParabolicCylinderV", "math_ParabolicCylinderV", any, {}},
      },
      argc, argv);
}
