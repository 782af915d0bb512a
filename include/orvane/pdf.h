/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Probability distributions: 57 plain ones, codes 1 to 57, and five generalisations of each. A generalisation has the
 * code 10000 k + plain code and the name prefix, "-", plain name, with k and prefix
 *
 *   10000 GenLog    F = ln(Psi^a + 1)/ln 2
 *   10001 GenExp    F = (e^(a Psi) - 1)/(e^a - 1)
 *   10002 HalfCos   F = sin(Psi pi/2)
 *   10003 GenPower  F = a Psi^b + (1-a) Psi^c
 *   10004 GenSymCos F = (1 + sin(pi (Psi - 1/2)))/2
 *
 * where Psi is the plain distribution function. The parameters are one list: those of the plain distribution in the
 * order a, b, c, d, then those of the generalisation. They are not checked: outside their range the values are NaN or
 * infinite. Values may be computed on several threads on one handle while nobody sets its parameters.
 */
#ifndef ORVANE_PDF_H
#define ORVANE_PDF_H

#include <orvane/export.h>

/** Codes of the plain distributions. */
enum {
  ORVANE_PDF_AMOROSO_LOWER = 1,
  ORVANE_PDF_AMOROSO_UPPER = 2,
  ORVANE_PDF_ARCSIN = 3,
  ORVANE_PDF_ARCTAN = 4,
  ORVANE_PDF_BENKTANDER_TYPE_II = 5,
  ORVANE_PDF_BERNOULLI = 6,
  ORVANE_PDF_BINOMIAL = 7,
  ORVANE_PDF_BURR = 8,
  ORVANE_PDF_CAUCHY = 9,
  ORVANE_PDF_CHI = 10,
  ORVANE_PDF_CHI_SQUARED = 11,
  ORVANE_PDF_COSINE = 12,
  ORVANE_PDF_EXPONENTIAL = 13,
  ORVANE_PDF_EXPONENTIAL_LOGARITHMIC = 14,
  ORVANE_PDF_EXP_POWER = 15,
  ORVANE_PDF_EXP_WEIBULL = 16,
  ORVANE_PDF_EXTREME_VALUE_LOWER = 17,
  ORVANE_PDF_EXTREME_VALUE_UPPER = 18,
  ORVANE_PDF_EXTREME_VALUE_ZERO = 19,
  ORVANE_PDF_FRECHET = 20,
  ORVANE_PDF_GAMMA = 21,
  ORVANE_PDF_GEN_PARETO = 22,
  ORVANE_PDF_GEN_TRANS_INVERSE_RAYLEIGH = 23,
  ORVANE_PDF_GIBRAT = 24,
  ORVANE_PDF_GOMPERTZ = 25,
  ORVANE_PDF_GUMBEL = 26,
  ORVANE_PDF_HALF_LOGISTIC = 27,
  ORVANE_PDF_HALF_NORMAL = 28,
  ORVANE_PDF_HYPER_SECANT = 29,
  ORVANE_PDF_INVERSE_GAUSSIAN = 30,
  ORVANE_PDF_INVERSE_RAYLEIGH = 31,
  ORVANE_PDF_INVERTED_BETA = 32,
  ORVANE_PDF_INVERTED_GAMMA = 33,
  ORVANE_PDF_LAPLACE = 34,
  ORVANE_PDF_LEVY = 35,
  ORVANE_PDF_LOGARITHMIC = 36,
  ORVANE_PDF_LOMAX = 37,
  ORVANE_PDF_MAXWELL = 38,
  ORVANE_PDF_MAKEHAM = 39,
  ORVANE_PDF_MINIMAX = 40,
  ORVANE_PDF_MUTH = 41,
  ORVANE_PDF_NAKAGAMI = 42,
  ORVANE_PDF_NORMAL = 43,
  ORVANE_PDF_PARETO = 44,
  ORVANE_PDF_PARABOLIC = 45,
  ORVANE_PDF_POISSON = 46,
  ORVANE_PDF_POWER = 47,
  ORVANE_PDF_RAISED_COSINE = 48,
  ORVANE_PDF_RAYLEIGH = 49,
  ORVANE_PDF_SIGMOD = 50,
  ORVANE_PDF_STUDENTS_T = 51,
  ORVANE_PDF_SYM_GEN_NORMAL = 52,
  ORVANE_PDF_TRIANGULAR = 53,
  ORVANE_PDF_TRUNCATED_NORMAL = 54,
  ORVANE_PDF_UNIFORM = 55,
  ORVANE_PDF_UQUADRATIC = 56,
  ORVANE_PDF_WEIBULL = 57,
};

/** k of the generalisations: the code is 10000 k + plain code. */
enum {
  ORVANE_PDF_GEN_LOG = 10000,
  ORVANE_PDF_GEN_EXP = 10001,
  ORVANE_PDF_GEN_HALF_COS = 10002,
  ORVANE_PDF_GEN_POWER = 10003,
  ORVANE_PDF_GEN_SYM_COS = 10004,
};

/** A distribution with its parameters and the result of its last fit. */
typedef struct PDFFun PDFFun;

/**
 * New distribution with its default parameters.
 *
 * @param type  code
 * @return handle, released by api_FreeHandle; null for an unknown code
 */
ORVANE_API PDFFun* pdf_initPDFFun(int32_t type);

/**
 * New distribution by name. Blanks, tabs, line feeds and case do not matter.
 *
 * @param name  zero-terminated name, such as "Normal" or "GenExp-Normal"
 * @return handle, released by api_FreeHandle; null for an unknown name
 */
ORVANE_API PDFFun* pdf_initPDFFunByName(const char* name);

/**
 * Codes of all distributions: the plain ones, then the generalisations 10001, 10002, 10000, 10003, 10004 of each.
 *
 * @param out       [capacity] codes, out; may be null when capacity is 0
 * @param capacity  room in out; nothing is written when it is below the count
 * @return number of codes, 342
 */
ORVANE_API int32_t pdf_getAllPDFFun(int32_t* out, int32_t capacity);

/**
 * Code of a distribution. "ExtremeValueLower", made by code 17, reports 19.
 *
 * @param fun  distribution
 * @return code
 */
ORVANE_API uint32_t pdf_getType(const PDFFun* fun);

/**
 * Name of a distribution.
 *
 * @param fun  distribution
 * @return zero-terminated text, owned by the handle
 */
ORVANE_API const char* pdf_getName(const PDFFun* fun);

/**
 * LaTeX sheet: name, density, distribution function, mean, variance, range and values of the parameters.
 *
 * @param fun  distribution
 * @return zero-terminated text in the GBK code page, owned by the handle and valid until the next call on it. Calls on
 *         one handle must not overlap.
 */
ORVANE_API const char* pdf_getLatexExpress(PDFFun* fun);

/**
 * Error of the last fit: sum of squared distances of the distribution functions.
 *
 * @param fun  distribution
 * @return error; 0 before any fit, 1e300 after one that found nothing
 */
ORVANE_API double pdf_getError(const PDFFun* fun);

/**
 * Density at n points: y[i] = f(x[i]); the probability for counts, at the nearest integer.
 *
 * @param fun  distribution
 * @param x    [n] points
 * @param y    [n] out; may be the array x itself
 * @param n    number of points; 0 or less does nothing
 */
ORVANE_API void pdf_calcPDF(const PDFFun* fun, const double* x, double* y, int32_t n);

/**
 * Distribution function at n points: y[i] = P(X <= x[i]).
 *
 * @param fun  distribution
 * @param x    [n] points
 * @param y    [n] out; may be the array x itself
 * @param n    number of points; 0 or less does nothing
 */
ORVANE_API void pdf_calcCDF(const PDFFun* fun, const double* x, double* y, int32_t n);

/**
 * Sets all parameters. Distributions of an interval may put the two ends in order.
 *
 * @param fun     distribution
 * @param values  [n] parameters; values behind the last parameter are ignored
 * @param n       number of values
 * @return false, with nothing changed, when there are more parameters than values
 */
ORVANE_API bool pdf_setParam(PDFFun* fun, const double* values, int32_t n);

/**
 * Reads all parameters.
 *
 * @param fun       distribution
 * @param out       [capacity] out; may be null when capacity is 0
 * @param capacity  room in out; nothing is written when it is below the count
 * @return number of parameters
 */
ORVANE_API int32_t pdf_getParam(const PDFFun* fun, double* out, int32_t capacity);

/**
 * New distribution of the type that pdf_getType reports, with the parameters and the best parameters of the last fit
 * of this one. The clone of "ExtremeValueLower" is therefore an "ExtremeValueZero", which keeps its own defaults.
 *
 * @param fun  distribution
 * @return handle, released by api_FreeHandle
 */
ORVANE_API PDFFun* pdf_clone(const PDFFun* fun);

#endif
