/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Support vector machine for two classes: f(x) = sum of a_i y_i K(x_i, x) + b, where the multipliers a in [0, C] solve
 * the dual problem max sum a_i - 1/2 sum a_i a_j y_i y_j K(x_i, x_j), sum a_i y_i = 0 (Cortes, Vapnik 1995), found by
 * sequential minimal optimisation (Platt 1998).
 *
 * A label above 0 stands for the class 1, any other for -1. svm_solve blocks its thread; svm_stop and svm_getScore may
 * be called from another one meanwhile, everything else not.
 */
#ifndef ORVANE_SUPPORT_VECTOR_MACHINE_H
#define ORVANE_SUPPORT_VECTOR_MACHINE_H

#include <orvane/export.h>

/** A machine with its samples and its model. */
typedef struct SVM SVM;

/**
 * Kernels, with the parameters p0, p1, p2 (default) and d = |x - y|.
 *
 * | code | kernel |
 * |---|---|
 * | 0 | x.y |
 * | 1 | exp(-d^2/(2 p0^2)), p0 (1) |
 * | 2 | (p0 x.y + p1)^p2, p0 (1), p1 (0), p2 (2) |
 * | 3 | exp(-p0^2 d), p0 (1) |
 * | 4 | tanh(p0 x.y + p1), p0 (1), p1 (0); not definite |
 * | 5 | 1 - d^2/(d^2 + p0), p0 (1) |
 * | 6 | sqrt(d^2 + p0^2), p0 (1); not definite |
 * | 7 | 1/sqrt(d^2 + p0^2), p0 (1) |
 * | 8 | 0 for d >= abs(p0), otherwise 2/pi (acos(-v) - sqrt(1 - v^2)), v = d/p0, p0 (1); the root stands without the
 *       factor v that the circular kernel has |
 * | 9 | 0 for d >= abs(p0), otherwise 1 - 3/2 v + v^3/2, v = d/p0, p0 (1) |
 * | 10 | 1/(1 + d^2/p0^2), p0 (1) |
 */
enum {
  ORVANE_SVM_LINEAR = 0,
  ORVANE_SVM_GAUSS = 1,
  ORVANE_SVM_POLYNOMIAL = 2,
  ORVANE_SVM_LAPLACE = 3,
  ORVANE_SVM_TANH = 4,
  ORVANE_SVM_RATIONAL = 5,
  ORVANE_SVM_MULTIQUADRIC = 6,
  ORVANE_SVM_INVERSE_MULTIQUADRIC = 7,
  ORVANE_SVM_CIRCULAR = 8,
  ORVANE_SVM_SPHERICAL = 9,
  ORVANE_SVM_CAUCHY = 10
};

/** A new machine: linear kernel, C = 1e6, rate 0.99. @return handle, released by api_FreeHandle */
ORVANE_API SVM* svm_create(void);

/** Sets the number of coordinates of a sample; another number than before drops the samples. @param svm machine @param
 * dim coordinates; below 0 counts as 0 */
ORVANE_API void svm_setXDim(SVM* svm, int32_t dim);

/** Replaces samples and labels. @param svm machine @param x [n*dim] samples, row-major, copied @param y [n] labels,
 * copied @param n number of samples */
ORVANE_API void svm_setData(SVM* svm, const double* x, const double* y, int32_t n);

/** Adds a sample. @param svm machine @param x [dim] sample, copied */
ORVANE_API void svm_addX(SVM* svm, const double* x);

/** Replaces the labels. Samples without a label, and labels without a sample, are left out of the training. @param svm
 * machine @param y [n] labels, copied @param n their number */
ORVANE_API void svm_setY(SVM* svm, const double* y, int32_t n);

/** The samples. @param svm machine @param out [samples*dim] out, row-major; null to count only @return number of
 * samples */
ORVANE_API int32_t svm_getX(const SVM* svm, double* out);

/** The labels. @param svm machine @param out [labels] out; null to count only @return their number */
ORVANE_API int32_t svm_getY(const SVM* svm, double* out);

/** Sets the kernel, and its parameters that are missing to their defaults. @param svm machine @param code kernel; an
 * unknown code is kept and works as the linear kernel */
ORVANE_API void svm_setType(SVM* svm, int32_t code);

/** The kernel code. @param svm machine @return code */
ORVANE_API int32_t svm_getType(const SVM* svm);

/** Sets the kernel's parameters and the bound of the multipliers. @param svm machine @param params [3] p0, p1, p2
 * @param c C; below 0, and NaN, counts as 0, which leaves all multipliers at 0 */
ORVANE_API void svm_setOther(SVM* svm, const double* params, double c);

/** The kernel's parameters and C. @param svm machine @param params [3] out, 0 for one that is not set @param c out */
ORVANE_API void svm_getOther(const SVM* svm, double* params, double* c);

/**
 * A kernel of the host's own: the table of its values for the samples, with their labels. It stands for the kernel
 * until svm_setData; svm_predict then takes the values of the kernel between each sample and the point.
 *
 * @param svm     machine
 * @param data    [n*n] K(x_i, x_j), symmetric, copied (8 n^2 bytes)
 * @param n       number of samples
 * @param values  [count] labels, copied
 * @param count   their number
 * @return false when count is not n, or n is below 1; nothing changes then
 */
ORVANE_API bool svm_setKernelData(SVM* svm, const double* data, int32_t n, const double* values, int32_t count);

/** Sets the limits of a training. @param svm machine @param rate share of samples with the right sign at which the
 * training ends (0.99); above 1 it goes on to the optimum @param iterLimit joint steps; 0 for no limit @param passLimit
 * tests of the optimality conditions (1e9) */
ORVANE_API void svm_limit(SVM* svm, double rate, int32_t iterLimit, int32_t passLimit);

/**
 * Trains. Multipliers that fit the number of samples and are feasible are the start (svm_setA, an earlier training),
 * otherwise all are 0. The training ends at the rate, or when the errors meet the conditions of Karush, Kuhn and Tucker
 * within 5e-4. Rows of the kernel table are kept up to 256 MiB, beyond that computed again.
 *
 * @param svm  machine
 * @return true when the training came to its end; false without samples, on svm_stop, at a limit, or when rounding
 *         allows no further step. The model is then the best so far
 */
ORVANE_API bool svm_solve(SVM* svm);

/** Stops a running svm_solve after the step that it is at. @param svm machine */
ORVANE_API void svm_stop(SVM* svm);

/** f(x), or its class. @param svm machine @param x [dim] point; [n] kernel values after svm_setKernelData @param flag
 * true for the class only: 1 for f(x) > 0, otherwise -1 @return value */
ORVANE_API double svm_predict(const SVM* svm, const double* x, bool flag);

/** Share of samples with the right sign, of the training that runs or ran last. @param svm machine @return share; 0
 * before any training */
ORVANE_API double svm_getScore(const SVM* svm);

/** The multipliers. @param svm machine @param out [samples] out; null to count only @return their number */
ORVANE_API int32_t svm_getA(const SVM* svm, double* out);

/** Sets the multipliers. @param svm machine @param a [n] multipliers, copied @param n their number */
ORVANE_API void svm_setA(SVM* svm, const double* a, int32_t n);

/** The offset. @param svm machine @return b */
ORVANE_API double svm_getB(const SVM* svm);

/** Sets the offset. @param svm machine @param b offset */
ORVANE_API void svm_setB(SVM* svm, double b);

/** The weights of the linear kernel, by which svm_predict then computes w.x + b. @param svm machine @param out [dim]
 * out; null to count only @return their number; 0 for another kernel */
ORVANE_API int32_t svm_getW(const SVM* svm, double* out);

/** Sets the weights. @param svm machine @param w [n] weights, copied; n other than dim are not read by svm_predict
 * @param n their number */
ORVANE_API void svm_setW(SVM* svm, const double* w, int32_t n);

#endif
