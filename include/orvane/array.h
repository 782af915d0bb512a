/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Functions over whole arrays, chosen by a code; sorting, copying and shuffling.
 *
 * A host that works with vectors crosses the boundary once an array. Each value has the bits that the function of the
 * same name gives for the element alone, but for acoth and coth (codes 4 and 43), whose last bits may differ. Nothing
 * is reported: a code without a function does nothing (apiFun_calcPoly fills NaN). Arrays are the host's; a count of 0
 * or less does nothing. The functions keep no state and may be called from any thread; generators live in the call.
 */
#ifndef ORVANE_ARRAY_H
#define ORVANE_ARRAY_H

#include <orvane/export.h>

/**
 * destination[i] = f(source[i]).
 *
 * @param source       [count] arguments
 * @param count        number of elements
 * @param destination  [count] out; may be the source itself
 * @param code         function, see below; another code leaves the destination as it is
 *
 * | code | function | code | function | code | function |
 * |---|---|---|---|---|---|
 * | 0 | absolute value | 52 | math_DiffAiryAiZero | 101 | math_invSinhIntegral |
 * | 1 | acos | 53 | math_DiffAiryBi | 102 | math_invZeta |
 * | 2 | acosh | 54 | math_DiffAiryBiZero | 103 | exp |
 * | 3 | atan(1/x) | 55 | math_DiffAiryGi | 113 | math_lambertW |
 * | 4 | atanh(1/x) | 56 | math_DiffAiryHi | 114 | log10 |
 * | 5 | asin(1/x) | 57 | math_digamma | 115 | math_lnBarnesG |
 * | 6 | asinh(1/x) | 58 | math_dirichletBeta | 116 | math_lnErfi |
 * | 9 | math_AiryAi | 59 | math_dirichletEta | 117 | math_lngamma |
 * | 10 | math_sin | 60 | math_ellipticE(m) | 118 | log of the larger of \|x\| and 1e-32 |
 * | 11 | math_AiryAiZero | 61 | math_ellipticK(m) | 119 | log |
 * | 12 | math_AiryBi | 62 | math_ellipticK(1 - m) | 120 | math_logIntegral |
 * | 13 | math_AiryBiZero | 72 | erf | 121 | math_logSign |
 * | 14 | math_AiryGi | 73 | erfc | 128 | 1/cosh(x) |
 * | 15 | asinh | 74 | math_erfi | 131 | math_polyLogarithm2 |
 * | 16 | math_AiryHi | 75 | math_expIntegral | 133 | math_sign |
 * | 19 | acos(1/x) | 77 | math_expSign | 136 | round, ties away from 0 |
 * | 20 | acosh(1/x) | 78 | floor | 137 | nearest, ties away from 0 (-2.5 to -3, 2.5 to 3) |
 * | 21 | asin | 79 | math_fresnelC | 138 | floor for x > 0, otherwise ceil |
 * | 22 | atan | 80 | math_fresnelS | 139 | math_sec |
 * | 23 | atanh | 81 | math_gamma | 140 | math_sineIntegral |
 * | 24 | round, ties to even | 83 | math_goodwinStaton | 141 | sinh |
 * | 33 | ceil | 86 | math_hyperfactorial | 142 | math_sinhIntegral |
 * | 38 | math_cos | 94 | math_invGamma | 147 | sqrt |
 * | 39 | cosh | 95 | math_invCoshIntegral | 151 | math_tan |
 * | 40 | math_coshIntegral | 96 | math_invErf | 152 | tanh |
 * | 41 | math_cosineIntegral | 97 | math_invErfc | 153 | trunc |
 * | 42 | math_cot | 98 | math_invErfi | 160 | math_zeta |
 * | 43 | coth; 1 above 18, -1 below -18 | 99 | x exp(x) | 164 | math_stepFun |
 * | 44 | math_csc | 100 | math_invLnErfi | 165 | math_wrightOmega |
 * | 45 | 1/sinh(x) | 49 | D'(x) = 1 - 2 x D(x), D Dawson's | 166 | x - trunc(x) |
 * | 46 | math_barnesG | 50 | D''(x) | 181 | integral of sin(t sin t) from 0 to x |
 * | 47 | math_drawson | 51 | math_DiffAiryAi | | |
 */
ORVANE_API void apiFun_calcFun(const double* source, int32_t count, double* destination, uint8_t code);

/**
 * destination[i] = f(a[i], b[i]).
 *
 * Where one count is 1, that element is paired with every element of the other array; otherwise the arrays are paired
 * by place as far as the shorter goes, which is also the number of values written.
 *
 * @param a            [countA] first arguments
 * @param countA       number of first arguments
 * @param b            [countB] second arguments
 * @param countB       number of second arguments
 * @param destination  [as many as there are pairs] out; may be a or b itself
 * @param code         function of (a, b), see below; another code leaves the destination as it is
 *
 * | code | function | code | function | code | function |
 * |---|---|---|---|---|---|
 * | 7 | a + b | 68 | math_ellipticRK | 123 | the smaller (fmin) |
 * | 8 | math_AGM | 69 | math_bulirschEl1 | 124 | a b |
 * | 17 | math_angerJ | 76 | math_expIntegralP | 125 | math_ParabolicCylinderD |
 * | 25 | atan2(a, b) | 82 | math_igamma | 126 | math_ParabolicCylinderU |
 * | 27 | math_BesselI | 84 | math_heumannLambda | 127 | math_ParabolicCylinderV |
 * | 28 | math_BesselJ | 85 | math_hurwitzZeta | 129 | math_polyGamma |
 * | 29 | math_BesselK | 87 | math_Hypergeometric0F1 | 130 | math_polyLog |
 * | 30 | math_BesselY | 88 | hypot | 132 | math_pow |
 * | 31 | math_beta | 93 | math_InverseRUpperIncompleteGamma | 134 | math_RLowerIncompleteGamma |
 * | 32 | math_boseEinstein | 104 | math_jacobiEllipticAm | 135 | math_RUpperIncompleteGamma |
 * | 34 | math_Clausen | 105 | math_jacobiEllipticCn | 143 | math_SphericalBesselJ |
 * | 35 | math_ClausenC | 106 | math_jacobiEllipticDn | 144 | math_SphericalBesselY |
 * | 36 | math_ClausenS | 107 | math_jacobiEllipticSn | 148 | math_StruveH |
 * | 48 | a/b | 108 | math_jacobiTheta1 | 149 | math_StruveL |
 * | 63 | math_ellipticE2 | 109 | math_jacobiTheta2 | 150 | a - b |
 * | 64 | math_ellipticF | 110 | math_jacobiTheta3 | 154, 155 | math_voigtDiffKX, math_voigtDiffKY |
 * | 65 | math_ellipticPI2 | 111 | math_jacobiTheta4 | 156, 157 | math_voigtDiffLX, math_voigtDiffLY |
 * | 66 | math_ellipticRC | 112 | math_jacobiZeta | 158, 159 | math_voigtFunK, math_voigtFunL |
 * | 67 | math_ellipticRE | 122 | the larger (fmax) | 161, 162 | math_weberE, math_fermiDirac |
 */
ORVANE_API void apiFun_calcFun2(const double* a, int32_t countA, const double* b, int32_t countB, double* destination,
                                uint8_t code);

/**
 * destination[i] = f of order orders[i] at xs[i].
 *
 * A count of 1 is paired with all of the other array, as in apiFun_calcFun2. The larger count of values is written:
 * quiet NaN where an element has no partner, and everywhere for another code.
 *
 * @param xs           [countX] places
 * @param countX       number of places
 * @param orders       [countN] orders
 * @param countN       number of orders
 * @param destination  [the larger count] out; may be xs itself
 * @param code         161 math_polyLegendre, 162 derivative of the Legendre polynomial, 163 math_polyLegendre at 2x -
 * 1, 171 math_polyByBernoulli, 172 math_boseEinstein, 173 math_Clausen, 174 math_ClausenC, 175 math_ClausenS, 176
 * math_expIntegralP, 177 math_fermiDirac, 178 math_polyHermite, 179 math_polyLaguerre, 180 math_polyLog
 */
ORVANE_API void apiFun_calcPoly(const double* xs, int32_t countX, const int32_t* orders, int32_t countN,
                                double* destination, uint8_t code);

/**
 * Fills an array with random numbers. The same generator, seed and code give the same numbers on every machine, up to
 * the last bits of the standard library's log, tan and exp.
 *
 * @param destination  [count] out
 * @param count        number of elements
 * @param wide         generator: 0 the 32-bit Mersenne Twister, otherwise the 64-bit one
 * @param seed         of the generator, which lives in this call only
 * @param code         200 standard normal (Marsaglia's polar method), 201 Cauchy tan((u - 0.5) pi),
 *                     202 exponential -log(1 - u), 203 log-normal exp of a standard normal,
 *                     204 Rayleigh sqrt(-2 log(1 - u)), with u uniform in [0, 1); another code does nothing
 */
ORVANE_API void apiFun_randFun(double* destination, int32_t count, uint8_t wide, uint64_t seed, uint8_t code);

/** Moves count doubles from source to destination; the two may overlap. */
ORVANE_API void apiFun_Copy(const double* source, int32_t count, double* destination);

/**
 * Positions of the elements in the order of their values.
 *
 * @param values      [count] values, which stay as they are
 * @param count       number of elements
 * @param descending  0 ascending, otherwise descending
 * @param indices     [count] out: positions from 0. The order of equal values is open; NaN comes last either way.
 */
ORVANE_API void apiFun_SortForIndex(const double* values, int32_t count, uint8_t descending, uint32_t* indices);

/** Sorts values[count] in place, ascending for descending = 0, otherwise descending; NaN comes last either way. */
ORVANE_API void apiFun_SortForValue(double* values, int32_t count, uint8_t descending);

/**
 * Shuffles an array in place, every order being equally likely. The seed comes from the system's random device, so that
 * no two calls give the same order.
 *
 * @param data   [count] elements
 * @param count  number of elements
 * @param type   of the elements: 0 int32_t, 1 double, 2 byte; another type does nothing
 */
ORVANE_API void api_RandomShuffle(void* data, int32_t count, int32_t type);

#endif
