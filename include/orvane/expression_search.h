/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Expression search: formulas for data.
 *
 * The host gives a vector y and candidate terms x_0, x_1, .. (variables, their powers, products, any functions of
 * them), all of one length. api_ES_Search tries rational formulas of the terms with a budget of `maxTerms` parameters,
 * fits each one, and keeps those that pass the limits. Peaks and implicit surfaces are fitted to raw columns instead.
 *
 *     kind  model                                                               parameters, maxTerms
 *     0     (c0 + sum a_i x_i) / (1 + sum b_j x_j)                              1 + |P| + |Q|
 *     1     (c0 + sum a_i x_i^p_i) / (d0 + sum b_j x_j^q_j)                     2 + 2|P| + 2|Q|, even, at least 4
 *     2     (c0 + sum a_i x_i) / (d0 + sum b_j x_j^q_j)                         2 + |P| + 2|Q|, |Q| at least 1
 *     16    c + sum a exp(-((x-u)/s)^2/2) + sum h/((x-p)^2 + w^2)               1 + 3 for each peak
 *     60    sum A_k M_k + A_0 = 0, M the columns (and squares, and products)    told at ES_KIND_SURFACE
 *     61    sum a_k X_k^p_k + sum b_ij X_i^q_ij X_j^r_ij + c = 0                2m + 1 + 3m(m-1)/2, m columns
 *     62    sum a_k X^p_k + c = 0                                               odd, at least 5
 *
 * P and Q are the lists of terms of numerator and denominator; one term may stand in both. A search walks all splits of
 * the budget and all pairs of lists. The order of the terms in the walk is random, seeded by the system, so that a
 * search that ends early (by a stop, or with 513 accepted results) has seen other candidates each time.
 *
 * Errors are sums of squares over the data, in the scale of y as it was given; a fit is judged also by the correlation
 * of y and the fitted values. Where the error is not finite it is given as 1e300, with correlation 0.
 *
 * Memory of kind 0: next to the terms themselves one vector a term (term times y), and a table of inner products of
 * 16 n^2 bytes for n terms in the walk, up to 64 MiB (about 2040 terms). Beyond that the products are summed for each
 * candidate: the same results, at the price of one pass over the data for each pair of its terms.
 *
 * A search runs on the calling thread. Meanwhile another thread may call the Stop function and the getters of results
 * and counts; the other functions belong to the host's own thread, between searches. A second search of an object that
 * is searching returns at once.
 */
#ifndef ORVANE_EXPRESSION_SEARCH_H
#define ORVANE_EXPRESSION_SEARCH_H

#include <orvane/export.h>

/** A search: terms, data, settings, and the results so far. */
typedef struct ExpressSearch ExpressSearch;
/** A search in stages, each for what the stages before it leave unexplained. */
typedef struct AutoExpressSearch AutoExpressSearch;
/** A formula that a search has found. It belongs to the search and is never released by the host. */
typedef struct SearchResult SearchResult;

/** Kinds of models. */
enum {
  ES_KIND_RATIONAL = 0,      /**< linear in its terms above and below */
  ES_KIND_POWERS = 1,        /**< every term with a free exponent */
  ES_KIND_POWERS_BELOW = 2,  /**< the denominator's terms with a free exponent */
  ES_KIND_PEAKS = 16,        /**< columns x, y: Gaussian and Lorentzian peaks over a constant */
  ES_KIND_SURFACE = 60,      /**< m columns: a plane (m+1 terms), a quadric along the axes (2m+1), any quadric
                                  (2m+1+m(m-1)/2, m at least 2) */
  ES_KIND_PAIR_SURFACE = 61, /**< m columns: a power of each and products of powers of each pair */
  ES_KIND_POWER_SURFACE = 62 /**< m columns: powers of single columns, taken by turns, the last column first */
};

/**
 * Transformations of y. The data is first scaled to the range in brackets, y = data*scale + offset (shifted to its
 * middle when it spans less than 0.001), and a fitted value v goes the way back. A candidate with a value that is
 * refused is dropped and not counted. Any other code refuses all candidates.
 */
enum {
  ES_TRANSFORM_NONE = 0,   /**< y */
  ES_TRANSFORM_EXP = 1,    /**< exp(y), [0, 1]; refuses v below 1e-7 */
  ES_TRANSFORM_LN = 2,     /**< ln(y), [0.01, e]; refuses v above 10 */
  ES_TRANSFORM_SQRT = 3,   /**< sqrt(y), [0.01, e]; the way back is v^2, for negative v too */
  ES_TRANSFORM_LOGIT = 4,  /**< -ln(1/y - 1), [0.01, 0.99] */
  ES_TRANSFORM_SAME = 10,  /**< y */
  ES_TRANSFORM_ASIN = 100, /**< asin(y), [-1, 1] */
  ES_TRANSFORM_ACOS = 101, /**< acos(y), [-1, 1] */
  ES_TRANSFORM_ATANH = 102 /**< atanh(y), [-0.9, 0.9] */
};

/**
 * New search without data.
 *
 * @return handle, released by api_FreeHandle, and its results with it
 */
ORVANE_API ExpressSearch* api_ES_Create(void);

/**
 * New search with the data and settings of another one, without its results and counts.
 *
 * @param es  search
 * @return handle, released by api_FreeHandle
 */
ORVANE_API ExpressSearch* api_ES_Clone(const ExpressSearch* es);

/**
 * Appends a term. Terms are counted from 0.
 *
 * @param es    search
 * @param data  [n] values; copied
 * @param n     number of values. A search over terms that are not all as long as y finds nothing.
 */
ORVANE_API void api_ES_AddX(ExpressSearch* es, const double* data, int32_t n);

/**
 * Sets y, in place of the one before. The results of earlier searches stay: a host that goes on with other data makes a
 * new search, or a clone.
 *
 * @param es    search
 * @param data  [n] values; copied
 * @param n     number of values
 */
ORVANE_API void api_ES_SetY(ExpressSearch* es, const double* data, int32_t n);

/**
 * Appends a raw column, for the kinds from 16 on. Power surfaces see it shifted by 1 minus its smallest value where
 * that is below 0.01, otherwise as it is.
 *
 * @param es    search
 * @param data  [n] values; copied
 * @param n     number of values. A search over columns that differ in length finds nothing.
 */
ORVANE_API void api_ES_AddOriginalData(ExpressSearch* es, const double* data, int32_t n);

/**
 * Limits of acceptance. At the start both limits are 0.
 *
 * @param es          search
 * @param errorLimit  an accepted fit has at most this error
 * @param fitLimit    and at least this correlation
 * @param limitCount  above 0 and below the number of terms: only so many terms, drawn at random for each search, are
 *                    tried
 */
ORVANE_API void api_ES_SetLimitCondition(ExpressSearch* es, double errorLimit, double fitLimit, int32_t limitCount);

/**
 * The flock that fits peaks and power surfaces: local fits from several starts, and from points on the lines to the
 * best of them. Holds from the next search on. At the start 32, 8, 4.
 *
 * @param es    search
 * @param pop   number of starts
 * @param iter  rounds of moves
 * @param flag  rounds without a better best fit after which it ends; 0: never early
 */
ORVANE_API void api_ES_SetBirdParam(ExpressSearch* es, int32_t pop, int32_t iter, uint8_t flag);

/**
 * The least-squares solver of the kinds 1, 2, 16, 61 and 62. Holds from the next search on.
 *
 * @param es         search
 * @param iter       iterations of a fit, at the start 512
 * @param noImprove  iterations in a row without improvement, at the start 16; below 1 nothing is fitted
 * @param tol        size of gradient and step at which a fit ends, at the start 1e-6
 * @param target     sum of squares at which a fit ends, at the start 0.001: for data that is more exact than that, or
 *                   of small values, a host sets a smaller one
 */
ORVANE_API void api_ES_SetSolverParam(ExpressSearch* es, int32_t iter, int32_t noImprove, double tol, double target);

/**
 * Searches, and returns when the walk is done, when a stop is asked for, or when more than 512 results stand in the
 * list. Results and counts of earlier searches of this object are kept and go on growing. rand() of the process starts
 * anew, as by srand(20200923).
 *
 * Each candidate is counted when it is judged. Kind 0 drops one with a coefficient above 1e10 in size before that. A
 * candidate within both limits joins the list. One that is not within them, but has a smaller error than the best
 * result so far, becomes the best result without joining. Kinds 1 and 2 pass over terms with a negative value; they
 * start from ones and hold the squares of all coefficients, c0 and d0 to the mean 1, as a common factor is free. Kind
 * 16 needs two columns, x and y, and tries g Gaussian and k - g Lorentzian peaks for g from 0 to k - 1, k peaks in all.
 * Kind 60 solves for the constant first (its target is then -1), then for the term with the largest coefficient, and
 * keeps the one with the smaller error. Kinds 61 and 62 solve for the last column, by Newton's method from its value in
 * the data, and hold the squares of all coefficients and c to the sum 1. Above 64 parameters the kinds 16, 61 and
 * 62 need as many rows as parameters.
 *
 * @param es          search
 * @param maxTerms    number of parameters, as in the table above; a number that the kind does not have finds nothing
 * @param kind        ES_KIND_*; another one finds nothing
 * @param yTransform  ES_TRANSFORM_*, for the kinds 0, 1 and 2
 */
ORVANE_API void api_ES_Search(ExpressSearch* es, int32_t maxTerms, uint8_t kind, uint8_t yTransform);

/**
 * Asks the search under way to end; returns at once. A search that begins later is not concerned.
 *
 * @param es  search
 */
ORVANE_API void api_ES_Stop(ExpressSearch* es);

/**
 * Number of accepted results, at most 513.
 *
 * @param es  search
 */
ORVANE_API uint32_t api_ES_GetResultNum(const ExpressSearch* es);

/**
 * Number of candidates that have been judged, modulo 2^32.
 *
 * @param es  search
 */
ORVANE_API uint32_t api_ES_GetSearchNum(const ExpressSearch* es);

/**
 * The best result so far, whether accepted or not.
 *
 * @param es   search
 * @param out  [7] out, as of api_ES_GetResultInfo; without a result out[0] = 255 and nothing else
 * @return the result, or null. It stays valid as long as the search, also when a better one takes its place.
 */
ORVANE_API const SearchResult* api_ES_GetBestResult(ExpressSearch* es, double* out);

/**
 * An accepted result.
 *
 * @param es   search
 * @param i    place in the list, from 0, in the order in which they were found
 * @param out  [7] out, as of api_ES_GetBestResult
 * @return the result; null for a place that the list does not have
 */
ORVANE_API const SearchResult* api_ES_GetResultByIndex(ExpressSearch* es, int32_t i, double* out);

/**
 * What a result is.
 *
 * @param result  result
 * @param out     [7] out: kind, transformation, number of parameters (maxTerms of its search), offset and scale of the
 *                transformation (0 and 1 from kind 16 on), error, correlation
 */
ORVANE_API void api_ES_GetResultInfo(const SearchResult* result, double* out);

/**
 * The formula of a result. With n the number of parameters, out[2] of api_ES_GetResultInfo, buffers of the lengths
 * below always suffice. A buffer may be null and is then passed over. Indices of terms count from 0 in the order of
 * api_ES_AddX.
 *
 *     kind   coef [n+2]                       idx [n]            coef2 [n+2]                 denIdx [n]
 *     0      a_i, then c0, 1e300              terms i            b_j, then d0 = 1, 1e300     terms j
 *     1      a_i, p_i, .., then c0, 1e300     terms i            b_j, q_j, .., d0, 1e300     terms j
 *     2      a_i, then c0, 1e300              terms i            b_j, q_j, .., d0, 1e300     terms j
 *     16     a, u, s, .., then c, 1e300       untouched          h, p, w, .., 0, 1e300       untouched
 *     60     A_k, A_0, 1e300                  the term solved    1e300                       untouched
 *     61,62  parameters, 1e300                the last column    shifts, 1e300               untouched
 *
 * Kind 60: A_k of the m columns, then of their squares, then of the products in the order (0,1), (0,2), .., (1,2), ..,
 * then the constant A_0; idx names the term that the surface is solved for, counted in that order. Kind 61: a_k, p_k of
 * each column; then b_ij, q_ij, r_ij of each pair i < j in the same order; then c. Kind 62: a_k, p_k of term after
 * term, where term k = 0, 1, .. is a power of column (m - 1 + k) mod m; then c. X is a column plus its shift.
 *
 * @param result  result
 * @param coef    out
 * @param idx     out
 * @param coef2   out
 * @param denIdx  out
 * @return length of the denominator's list: the number of entries of denIdx for kinds 0 to 2, for the others the number
 *         of values in coef2 before the end (16: the Lorentzian triples; 61, 62: the shifts)
 */
ORVANE_API int32_t api_ES_GetResultForTwoIndex(const SearchResult* result, double* coef, int32_t* idx, double* coef2,
                                               int32_t* denIdx);

/**
 * Values of a formula on the terms (from kind 16 on: the columns) that a search holds; for new data, on those of a new
 * search that holds it in the same order. Kind 60 gives the values of the term that is solved for, 61 and 62 those of
 * the last column.
 *
 * @param es      search that holds the data
 * @param result  result of this or of another search
 * @param x       [rows] out, in the scale of y: as many as the first term (column) has. NaN where the data lacks a
 * term, and at points that the transformation refuses
 */
ORVANE_API void api_ES_CalExpress(const ExpressSearch* es, const SearchResult* result, double* x);

/**
 * New automatic search without data.
 *
 * @return handle, released by api_FreeHandle, and its results with it
 */
ORVANE_API AutoExpressSearch* api_AutoES_Create(void);

/**
 * Appends a term; as api_ES_AddX.
 *
 * @param search  automatic search
 * @param data    [n] values; copied
 * @param n       number of values
 */
ORVANE_API void api_AutoES_AddX(AutoExpressSearch* search, const double* data, int32_t n);

/**
 * Sets y; as api_ES_SetY.
 *
 * @param search  automatic search
 * @param data    [n] values; copied
 * @param n       number of values
 */
ORVANE_API void api_AutoES_SetY(AutoExpressSearch* search, const double* data, int32_t n);

/**
 * Limits of a stage.
 *
 * @param search      automatic search
 * @param errorLimit  enough: no further stage begins when the error is at or below this
 * @param fitLimit    not used; a stage runs with 1
 * @param limitCount  as of api_ES_SetLimitCondition
 */
ORVANE_API void api_AutoES_SetLimitCondition(AutoExpressSearch* search, double errorLimit, double fitLimit,
                                             int32_t limitCount);

/**
 * Searches in stages, and returns at the end. A stage runs kind 0 under the transformations 0, 3, 1, 102 and 100 and
 * keeps its best result; the next stage searches what that leaves of y. It ends after `stageLimit` stages, with a stage
 * that does not lower the error, at `errorLimit`, or by a stop. For maxTerms of 5 or more only denominators of
 * maxTerms/2 - 1 to maxTerms/2 + 1 terms are tried. The stages of an earlier run, and their results, are released.
 *
 * @param search      automatic search
 * @param maxTerms    parameters of each stage's formula
 * @param stageLimit  stages at most
 */
ORVANE_API void api_AutoES_Search(AutoExpressSearch* search, int32_t maxTerms, int32_t stageLimit);

/**
 * Asks the search under way to end; returns at once. A search that begins later is not concerned.
 *
 * @param search  automatic search
 */
ORVANE_API void api_AutoES_Stop(AutoExpressSearch* search);

/**
 * The formula of a stage that lowered the error.
 *
 * @param search  automatic search
 * @param stage   from 0
 * @param out     [7] out, as of api_ES_GetBestResult
 * @return the result, valid until the next search of this object; null beyond the last stage
 */
ORVANE_API const SearchResult* api_AutoES_GetResult(AutoExpressSearch* search, int32_t stage, double* out);

/**
 * Error of the sum of all stages; 1e300 before any.
 *
 * @param search  automatic search
 */
ORVANE_API double api_AutoES_GetError(const AutoExpressSearch* search);

/**
 * Number of candidates that the finished stages have judged, modulo 2^32.
 *
 * @param search  automatic search
 */
ORVANE_API uint32_t api_AutoES_GetSearchNum(const AutoExpressSearch* search);

/**
 * Sum of the formulas of all stages on the terms. Not while a search runs.
 *
 * @param search  automatic search
 * @param out     [rows] out, as many as the first term has; 0 without a stage
 */
ORVANE_API void api_AutoES_CalExpress(AutoExpressSearch* search, double* out);

#endif
