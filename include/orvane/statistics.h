/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Samples: their moments and order, tests for normality, and a catalogue of 31 families of distributions with
 * goodness-of-fit tests.
 *
 * A test gives a p value; a sample of fewer than 3 values gives 0. A NaN in a sample gives NaN, unless told otherwise.
 * A count of 0 or less is an empty sample. The data_ functions are re-entrant; a StatFun keeps results and serves one
 * thread at a time.
 *
 * Codes of the families come in pairs: the odd code stands for the values of the sample in the order given, the even
 * code above it for the values in ascending order. a, b, c are the parameters 1, 2, 3.
 *
 * | codes | family | distribution function | domains |
 * |---|---|---|---|
 * | 1, 2 | beta | I_x(a, b) | a, b > 0, 0 <= x <= 1 |
 * | 3, 4 | Burr | 1 - (1 + x^a)^-b | a, b > 0, x > 0 |
 * | 5, 6 | Cauchy | 1/2 + atan((x - a)/b)/pi | b > 0 |
 * | 7, 8 | chi-square | P(a/2, x/2) | a > 0, x > 0 |
 * | 11, 12 | exponential | 1 - e^(-a x) | a > 0, x >= 0 |
 * | 13, 14 | folded normal | (erf((x + a)/(b sqrt 2)) + erf((x - a)/(b sqrt 2)))/2 | b > 0, x >= 0 |
 * | 15, 16 | Frechet | e^(-((x - c)/b)^-a) | a, b > 0, x > c |
 * | 17, 18 | gamma | P(a, b x) | a, b > 0, x > 0 |
 * | 19, 20 | Gompertz | 1 - e^(-a (e^(b x) - 1)) | a, b > 0, x >= 0 |
 * | 23, 24 | Gumbel | e^(-e^-z), z = (x - a)/b | b > 0 |
 * | 25, 26 | half normal | erf(x/(a sqrt 2)) | a > 0, x >= 0 |
 * | 27, 28 | inverse chi-square | Q(a/2, 1/(2x)) | a > 0, x > 0 |
 * | 29, 30 | inverse gamma | Q(a, b/x) | a, b > 0, x > 0 |
 * | 31, 32 | inverse Gaussian | Phi(s (x/a - 1)) + e^(2b/a) Phi(-s (x/a + 1)), s = sqrt(b/x) | a, b > 0, x > 0 |
 * | 33, 34 | inverse uniform | (b - 1/x)/(b - a) | 0 < a < b, 1/b <= x <= 1/a |
 * | 35, 36 | Laplace | e^z/2 for z < 0, 1 - e^-z/2, z = (x - a)/b | b > 0 |
 * | 37, 38 | Levy | erfc(sqrt(b/(2 (x - a)))) | b > 0, x > a |
 * | 39, 40 | log-Cauchy | 1/2 + atan((ln x - a)/b)/pi | b > 0, x > 0 |
 * | 41, 42 | logistic | 1/(1 + e^-z), z = (x - a)/b | b > 0 |
 * | 43, 44 | log-logistic | 1/(1 + (x/a)^-b) | a, b > 0, x >= 0 |
 * | 45, 46 | log-normal | Phi((ln x - a)/b) | b > 0, x > 0 |
 * | 47, 48 | Lomax | 1 - (1 + x/b)^-a | a, b > 0, x >= 0 |
 * | 49, 50 | Maxwell | P(3/2, x^2/(2 a^2)) | a > 0, x > 0 |
 * | 51, 52 | normal | Phi((x - a)/b) | b > 0 |
 * | 53, 54 | Pareto | 1 - (a/x)^b | a, b > 0, x >= a |
 * | 55, 56 | q-exponential | 1 - (1 - (1 - a) b x)^((2 - a)/(1 - a)) | a < 2, b > 0, x >= 0 |
 * | 59, 60 | Rayleigh | 1 - e^(-x^2/(2 a^2)) | a > 0, x >= 0 |
 * | 61, 62 | shifted log-logistic | 1/(1 + (1 + c z)^(-1/c)), z = (x - a)/b | b > 0, 1 + c z > 0 |
 * | 65, 66 | uniform | (x - a)/(b - a) | a < b |
 * | 67, 68 | Weibull | 1 - e^(-(x/a)^b) | a, b > 0, x >= 0 |
 * | 69, 70 | Poisson | Q(floor(x) + 1, a) | a > 0, x = 0, 1, 2, ... |
 *
 * P and Q are the regularised incomplete gamma functions, I the regularised incomplete beta function. Left of the
 * support the functions are 0, right of it 1. Parameters outside their domains give NaN, as do the codes 9, 10, 21, 22,
 * 57, 58, 63, 64, which are reserved, and all others.
 */
#ifndef ORVANE_STATISTICS_H
#define ORVANE_STATISTICS_H

#include <orvane/export.h>

/** A sample beside the catalogue of families. */
typedef struct StatFun StatFun;

/** Odd codes of the families; the even code is one above. */
enum {
  ORVANE_STAT_BETA = 1,
  ORVANE_STAT_BURR = 3,
  ORVANE_STAT_CAUCHY = 5,
  ORVANE_STAT_CHI_SQUARE = 7,
  ORVANE_STAT_EXPONENTIAL = 11,
  ORVANE_STAT_FOLDED_NORMAL = 13,
  ORVANE_STAT_FRECHET = 15,
  ORVANE_STAT_GAMMA = 17,
  ORVANE_STAT_GOMPERTZ = 19,
  ORVANE_STAT_GUMBEL = 23,
  ORVANE_STAT_HALF_NORMAL = 25,
  ORVANE_STAT_INVERSE_CHI_SQUARE = 27,
  ORVANE_STAT_INVERSE_GAMMA = 29,
  ORVANE_STAT_INVERSE_GAUSSIAN = 31,
  ORVANE_STAT_INVERSE_UNIFORM = 33,
  ORVANE_STAT_LAPLACE = 35,
  ORVANE_STAT_LEVY = 37,
  ORVANE_STAT_LOG_CAUCHY = 39,
  ORVANE_STAT_LOGISTIC = 41,
  ORVANE_STAT_LOG_LOGISTIC = 43,
  ORVANE_STAT_LOG_NORMAL = 45,
  ORVANE_STAT_LOMAX = 47,
  ORVANE_STAT_MAXWELL = 49,
  ORVANE_STAT_NORMAL = 51,
  ORVANE_STAT_PARETO = 53,
  ORVANE_STAT_Q_EXPONENTIAL = 55,
  ORVANE_STAT_RAYLEIGH = 59,
  ORVANE_STAT_SHIFTED_LOG_LOGISTIC = 61,
  ORVANE_STAT_UNIFORM = 65,
  ORVANE_STAT_WEIBULL = 67,
  ORVANE_STAT_POISSON = 69
};

/** Keeps a sample. @param x [n] values, copied @param n their number @return handle, released by stat_Free or
 * api_FreeHandle */
ORVANE_API StatFun* stat_CreateSBD(const double* x, int32_t n);

/** Releases a handle; null is ignored. @param fun handle */
ORVANE_API void stat_Free(StatFun* fun);

/**
 * Sets the parameters: parameter i + 1 takes values[i]. All are 0 at first.
 *
 * @param fun     handle
 * @param values  [n] a, b, c, ...; no family reads beyond the third
 * @param n       their number; the other parameters stay
 *
 * What stat_GetData and the tests of the sample have computed for a code stays as it is: set the parameters first.
 */
ORVANE_API void stat_SetParam(StatFun* fun, const double* values, int32_t n);

/** The text of a family: its density, a line feed, the domains of parameters and x, then "&    &" (that alone for a
 * code without a family). @param fun handle, not read @param code code @param out [length] out, without a terminator;
 * null to ask for the length @return length in bytes */
ORVANE_API int32_t stat_GetFunInfo(const StatFun* fun, uint8_t code, char* out);

/** The distribution function at the values of the sample, in the order that the code stands for; computed once a code.
 * @param fun handle @param code code @param out [size of the sample] out */
ORVANE_API void stat_GetData(StatFun* fun, uint8_t code, double* out);

/** The distribution function: y[i] = P(X <= x[i]). @param fun handle, for its parameters @param code code @param x [n]
 * points @param y [n] out, may be x @param n number of points */
ORVANE_API void stat_calcFun(const StatFun* fun, uint8_t code, const double* x, double* y, int32_t n);

/** The quantile function: the least x[i] with P(X <= x[i]) >= p[i]; the ends of the support at 0 and 1, NaN outside
 * [0, 1]. @param fun handle, for its parameters @param code code @param p [n] probabilities @param x [n] out, may be p
 * @param n number of probabilities */
ORVANE_API void stat_calcInvCDFFun(const StatFun* fun, uint8_t code, const double* p, double* x, int32_t n);

/**
 * Kolmogorov-Smirnov test of the sample against a family with its parameters, by the exact law of the statistic
 * (Marsaglia, Tsang, Wang 2003; some 10 ms at 1,000 values that fit and half a second at 20,000); beyond 20,000 values
 * by the expansion of Pelz and Good (1976), which is within 1e-10 of it there.
 *
 * @param fun   handle
 * @param code  code, odd or even
 * @return p value
 */
ORVANE_API double stat_testByKSForFun(StatFun* fun, uint8_t code);

/** Anderson-Darling test of the sample against a family with its parameters; the p values are those of a normal law
 * whose mean and deviation come from the sample. @param fun handle @param code code, odd or even @return p value; a
 * value with probability 0, 1 or NaN gives 0 */
ORVANE_API double stat_testByADForFun(StatFun* fun, uint8_t code);

/** stat_testByKSForFun for other values. @param fun handle, for its parameters @param code code @param x [n] values
 * @param n their number @return p value */
ORVANE_API double stat_testByKSForData(const StatFun* fun, uint8_t code, const double* x, int32_t n);

/** stat_testByADForFun for other values. @param fun handle, for its parameters @param code code @param x [n] values
 * @param n their number @return p value */
ORVANE_API double stat_testByADForData(const StatFun* fun, uint8_t code, const double* x, int32_t n);

/** The mean. @param x [n] values @param n their number @return mean; NaN without values */
ORVANE_API double data_calcDataMean(const double* x, int32_t n);

/** The deviation, with divisor n - 1. @param x [n] values @param n their number @return deviation; 0 below 2 values */
ORVANE_API double data_calcDataStd(const double* x, int32_t n);

/** The median: the value at n/2 in ascending order, so the upper one of two middle values. @param x [n] values @param n
 * their number @return median; 0 without values */
ORVANE_API double data_calcDataMedian(const double* x, int32_t n);

/** The skewness m3/s^3, s^2 with divisor n. @param x [n] values @param n their number @return skewness; 0 where the sum
 * of the squared distances from the mean is below 1e-32 */
ORVANE_API double data_calcDataSkewness(const double* x, int32_t n);

/** The kurtosis m4/s^4, s^2 with divisor n; 3 for a normal law. @param x [n] values @param n their number @return
 * kurtosis; NaN for one value many times, or none */
ORVANE_API double data_calcDataKurtosis(const double* x, int32_t n);

/** Kolmogorov-Smirnov test against the normal law of the sample's own mean and deviation, by the law of the statistic
 * for given parameters: the p value is too large. @param x [n] values @param n their number @return p value */
ORVANE_API double data_normTestByKolmogorovSmirnov(const double* x, int32_t n);

/** Anderson-Darling test for normality. @param x [n] values @param n their number @return p value; 0 for one value many
 * times and with a NaN */
ORVANE_API double data_normTestByAndersonDarling(const double* x, int32_t n);

/** Jarque-Bera test for normality: exp(-q (S^2 + (K - 3)^2/4)/2) with the skewness S, the kurtosis K and q = n/6 cut to
 * an integer. @param x [n] values @param n their number @return p value; 0 for one value many times */
ORVANE_API double data_normTestByJarqueBera(const double* x, int32_t n);

/**
 * Shapiro-Wilk test for normality by Royston's approximation (1995), good for 3 to 5,000 values.
 *
 * @param x          [n] values
 * @param n          their number
 * @param w          out, the statistic; 0 for one value many times
 * @param p          out, p value
 * @param mean       out, mean of the transformed statistic under normality, NaN for 3 values; may be null
 * @param deviation  out, its deviation; may be null
 * @param exactA     the weights are the normal scores themselves, without the correction of the outermost ones: the
 *                   statistic and the law are those of Shapiro and Francia (Royston 1993)
 * @return false for fewer than 3 values; nothing is written then
 */
ORVANE_API bool data_normTestByShapiroWilk(const double* x, int32_t n, double* w, double* p, double* mean,
                                           double* deviation, bool exactA);

/** Kolmogorov-Smirnov test of two samples, by the law of one sample of nx ny/(nx + ny) values, cut to an integer.
 * @param x [nx] values @param nx their number @param y [ny] values @param ny their number @return p value; 0 when one
 * sample has fewer than 3 values */
ORVANE_API double data_twoTestByKolmogorovSmirnov(const double* x, int32_t nx, const double* y, int32_t ny);

/**
 * Points of a normal quantile plot. Values closer than 1e-8 to the first of them count as one.
 *
 * @param x  [n] values
 * @param n  their number
 * @param a  [n] out, the distinct values, ascending
 * @param b  [n] out, the empirical probability at the middle of the value's step: (below + equal/2)/n
 * @param p  [n] out, the probability of a normal law with mean and deviation of the distinct values (divisor: their
 *           number, less 1 from five on)
 * @return number of distinct values; 0 for fewer than 2 values
 */
ORVANE_API int32_t data_normQQData(const double* x, int32_t n, double* a, double* b, double* p);

/** Sorts values and tells where they stood; NaN come last. @param x [n] values, sorted in place @param n their number
 * @param index [n] out, places before, from 0 @param ascending false for descending order */
ORVANE_API void data_sort(double* x, int32_t n, uint32_t* index, bool ascending);

/**
 * A histogram of equal segments from the least value on, each max(1e-12, (max - min)/segments) wide.
 *
 * @param x         [n] values; NaN are not counted
 * @param n         their number
 * @param segments  number of segments; 0 or less does nothing
 * @param centres   [segments] out, middle of each segment
 * @param counts    [segments] out, how many values are in it
 */
ORVANE_API void data_segmentCount(const double* x, int32_t n, int32_t segments, double* centres, double* counts);

/** The mean of angles where the circle is cut so that they lie closest together. @param angles [n] radians @param n
 * their number @return mean in [0, 2 pi); NaN without angles */
ORVANE_API double data_calcMeanAngle(const double* angles, int32_t n);

#endif
