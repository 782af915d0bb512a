/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Symbolic expressions: derivatives.
 *
 * Every kind of function has its derivative in terms of the other kinds, but for those that refuse: Zeta, the four
 * AiryDiff kinds, EllipticRC, RD, RE, RJ, RM, InverseZeta, InverseBeta, the theta functions, the Bulirsch integrals,
 * DirichletEta, DirichletBeta and the VoigtDiff kinds refuse in all arguments; the orders and parameters of the Bessel,
 * Struve, Anger, Weber, Clausen, Whittaker, parabolic cylinder, hypergeometric and Wright functions, of PolyGamma, the
 * incomplete Gamma, HurwitzZeta, PolyLog, BoseEinstein, FermiDirac and of ExpIntegral with two arguments refuse alone.
 * A refusal matters only when the variable occurs there. The steps (Sign, StepFun, Round and its kin, Truncate, Frac)
 * have the derivative 0 everywhere. The derivative of BesselK is the classical one, though BesselK evaluates as
 * BesselJ; one of EllipticRG is right to eight digits. That of LnGamma(u) is DiGamma(u) u', without Gamma(u), which
 * overflows from 171.7 on.
 *
 * Messages are GBK bytes: the function's name and, for instance, "BesselJ" with "的第1个参数不支持求导" (its argument 1
 * cannot be differentiated) or "Zeta" with "不支持求导".
 *
 * Differentiating recurses, with some 250 bytes of stack a level; the chain rule over n nested functions gives a
 * product of n factors of up to n levels each.
 */
#ifndef ORVANE_SYM_DIFF_H
#define ORVANE_SYM_DIFF_H

#include <orvane/sym.h>

/**
 * Derivative of every element.
 *
 * @param matrix   matrix of expressions
 * @param order    1 or more; 0 is taken as 1
 * @param name     variable; a name that no variable has gives zeros
 * @param message  out, on refusal only: the message without a terminator. There is no test of its room: 256 bytes hold
 *                 every message
 * @return new matrix of the same shape, released by sym_freeMatrix2d; null when an element refuses
 */
ORVANE_API SymMatrix2d* sym_diff(const SymMatrix2d* matrix, uint32_t order, const char* name, char* message);

/**
 * Derivatives of all elements of a by all elements of b, both taken row by row: a Jacobian when both are columns.
 *
 * @param a        matrix of m expressions
 * @param b        matrix of n elements; one that is not a variable with the coefficient 1 gives zeros
 * @param message  as for sym_diff
 * @return new [m*n] matrix, released by sym_freeMatrix2d; null when an element refuses
 */
ORVANE_API SymMatrix2d* sym_diffVector(const SymMatrix2d* a, const SymMatrix2d* b, char* message);

#endif
