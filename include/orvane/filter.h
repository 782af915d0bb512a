/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Filter design: finite impulse responses by windows and from records, recursive filters by analog prototypes, and an
 * objective over a frequency grid for an optimiser.
 *
 * Frequencies are in the unit of the sampling frequency fs (hertz, say); an angle is 2 pi f/fs in radians a sample. A
 * new filter is a low-pass with fs 1024, edge 512, band edges 258 and 800.
 *
 * A handle must not be used on two threads at the same time; different handles may.
 */
#ifndef ORVANE_FILTER_H
#define ORVANE_FILTER_H

#include <orvane/export.h>

/** A filter: what is asked of it, its coefficients, a window, records, perhaps a recursive filter. */
typedef struct FirFilter FirFilter;
/** The error of a filter's response over a grid of angles. */
typedef struct FilterObjective FilterObjective;

/** What a filter passes. */
enum {
  ORVANE_FILTER_LOW_PASS = 0,
  ORVANE_FILTER_HIGH_PASS = 1,
  ORVANE_FILTER_BAND_PASS = 2,
  ORVANE_FILTER_BAND_STOP = 3,
  ORVANE_FILTER_NONE = 4 /**< no design, as every greater value */
};

/**
 * Windows of n points, i = 0..n-1, t = 2 pi i/(n-1), c = (n-1)/2. Parameters count from 1; their defaults stand in
 * parentheses.
 */
enum {
  ORVANE_WINDOW_BARTLETT_HANN = 0, /**< 0.38 - 0.38 cos t: without the triangle of the usual window */
  ORVANE_WINDOW_BLACKMAN = 1,      /**< 1: alpha (0.16): (1-alpha)/2 - cos(t)/2 + alpha/2 cos(2t) */
  ORVANE_WINDOW_BLACKMAN_HARRIS = 2,
  ORVANE_WINDOW_BLACKMAN_NUTTALL = 3,
  ORVANE_WINDOW_CONFINED_GAUSSIAN = 4, /**< 1: sigma (0.06) */
  ORVANE_WINDOW_COSINE_SUM = 5,        /**< 1..K: a_0.. (none): sum of (-1)^k a_k cos(k t); ones without parameters */
  ORVANE_WINDOW_DOLPH_CHEBYSHEV = 6,   /**< 1: gain (0.16); 2: f (0.36), cycles a sample; the peak is not 1 */
  ORVANE_WINDOW_FLATTOP = 7,
  ORVANE_WINDOW_GAUSSIAN = 8, /**< 1: sigma (0.12): exp(-((i-c)/(sigma c))^2/2) */
  ORVANE_WINDOW_GPA = 9,      /**< 1..K: p_0.. (none): sum of p_k u^2k, u = (i-c)/deviation; ones without parameters */
  ORVANE_WINDOW_HAMMING = 10, /**< 1: a (0.56): a - (1-a) cos t */
  ORVANE_WINDOW_HANNING = 11,
  ORVANE_WINDOW_HANN_POISSON = 12, /**< 1: alpha (1.6) */
  ORVANE_WINDOW_KAISER = 13,       /**< 1: alpha (5.6): I0(pi alpha sqrt(1-(1-2i/(n-1))^2))/I0(pi alpha) */
  ORVANE_WINDOW_LANCZOS = 14,      /**< sinc(2i/(n-1) - 1), NaN at the centre of an odd length */
  ORVANE_WINDOW_NUTTALL = 15,
  ORVANE_WINDOW_PARZEN = 16,
  ORVANE_WINDOW_PLANCK_TAPER = 17, /**< 1: epsilon (0.25), share of one flank */
  ORVANE_WINDOW_POWER_SINE = 18,   /**< 1: k (2): sin(t/2)^k, k cut to an integer */
  ORVANE_WINDOW_RECTANGULAR = 19,
  ORVANE_WINDOW_SINE = 20,
  ORVANE_WINDOW_TRIANGULAR = 21,     /**< 1 - |i-c| 2/n */
  ORVANE_WINDOW_TUKEY = 22,          /**< 1: a (0.36), share of both flanks */
  ORVANE_WINDOW_ULTRASPHERICAL = 23, /**< 1: x0 (1); 2: mu (0.2) */
  ORVANE_WINDOW_WELCH = 24
};

/** Recursive designs. */
enum {
  ORVANE_IIR_BUTTERWORTH = 0,
  ORVANE_IIR_BESSEL = 1,      /**< the analog delay is 1/wc at frequency 0 */
  ORVANE_IIR_CHEBYSHEV_I = 2, /**< 0.5 dB ripple in the pass band */
  ORVANE_IIR_CHEBYSHEV_II = 3 /**< 40 dB in the stop band, which begins at the edge */
};

/** Linear solves of fir_solveByLineFIRSolver; every greater value is free coefficients too. */
enum { ORVANE_FIR_SYMMETRIC = 0, ORVANE_FIR_ANTISYMMETRIC = 1, ORVANE_FIR_FREE = 2 };

/**
 * New filter without coefficients and window, normalising to the sum 1.
 *
 * @return handle, released by api_FreeHandle
 */
ORVANE_API FirFilter* fir_Create(void);

/**
 * What the filter passes.
 *
 * @param filter  handle of fir_Create or filter_Create; so for the four frequencies below
 * @param type    ORVANE_FILTER_...; a value without meaning makes designs do nothing
 */
ORVANE_API void fir_setType(void* filter, uint8_t type);
/** Sampling frequency fs. Nothing is checked here: see the designs. */
ORVANE_API void fir_setSamplingFrequency(void* filter, double frequency);
/** Edge of a low-pass or high-pass. */
ORVANE_API void fir_setLimitFrequency(void* filter, double frequency);
/** Lower edge of a band. */
ORVANE_API void fir_setLowLimitFrequency(void* filter, double frequency);
/** Upper edge of a band. */
ORVANE_API void fir_setHighLimitFrequency(void* filter, double frequency);

/**
 * Number of coefficients, which is the order of a recursive design too. Coefficients that stay keep their values, new
 * ones are 0; n of 0 or less leaves none.
 */
ORVANE_API void fir_setFilterOrder(FirFilter* filter, int32_t n);

/** Number of coefficients. */
ORVANE_API int32_t fir_getCoefficientSize(const FirFilter* filter);

/**
 * The coefficients h.
 *
 * @param filter  filter
 * @param out     [fir_getCoefficientSize] out
 * @return     their number
 */
ORVANE_API int32_t fir_getCoefficient(const FirFilter* filter, double* out);

/**
 * Sets the coefficients.
 *
 * @param filter  filter
 * @param in      [fir_getCoefficientSize] new values
 * @return    false, with nothing changed, if there are none or more of them than the number that the sampling frequency
 *            is
 */
ORVANE_API bool fir_setCoefficient(FirFilter* filter, const double* in);

/** Window of the next design, with its default parameters: ORVANE_WINDOW_...; any other code means no window. */
ORVANE_API void fir_setWindow(FirFilter* filter, int32_t code);

/** Parameter 1 of the window; nothing without a window. */
ORVANE_API void fir_setWindowParam(FirFilter* filter, double value);

/**
 * Parameters 1..n of the window; nothing without one. Windows of fixed coefficients take them too.
 *
 * @param filter  filter
 * @param values  [n]
 * @param n       number of parameters
 */
ORVANE_API void fir_setWindowParam2(FirFilter* filter, const double* values, int32_t n);

/** A parameter of the window, counted from 1; 0 for one that it does not have and without a window. */
ORVANE_API double fir_getWindowParam(const FirFilter* filter, int32_t number);

/**
 * Sum of the coefficients after a window design, which is the gain at frequency 0; 1 at first. A value above 1e100
 * turns it off: do so for all filters but low-pass and band-stop, whose sum is not about 1. No effect on recursive
 * designs.
 */
ORVANE_API void fir_norm(FirFilter* filter, double value);

/**
 * How fir_filter convolves: 0 causal by the coefficients, else centred by the result of fir_solveByLineFIRSolver. The
 * designs set it by themselves.
 */
ORVANE_API void fir_setMethod(FirFilter* filter, uint8_t method);

/**
 * Window design: the impulse response of the ideal filter, cut to n = fir_getCoefficientSize points, times the window.
 * With t = i - (n-1)/2, w = 2 pi f/fs, L(w) = sin(w t)/(pi t), or w/pi at t = 0:
 *
 *     low-pass L(w)   high-pass L(pi) - L(w)   band-pass L(w2) - L(w1)   band-stop L(w1) + L(pi) - L(w2)
 *
 * Then, unless fir_norm has turned it off, with S the sum of the coefficients: S > 1e-12 multiplies them by norm/S,
 * S < -1e-12 by -norm/S (the sum keeps its sign and gets the size of norm). The filter is then the live one. Nothing
 * happens without coefficients or for ORVANE_FILTER_NONE. Edges are not checked: beyond fs/2 they fold.
 *
 * At n = 1 the windows divide by n - 1 = 0: those that step an angle have the value of their first point, the others
 * NaN or infinity. The cost of ORVANE_WINDOW_DOLPH_CHEBYSHEV and ORVANE_WINDOW_ULTRASPHERICAL grows as n squared.
 */
ORVANE_API void fir_solveByWindow(FirFilter* filter);

/** Whether the live filter has coefficients and all of them are finite and within 1e100 in size. */
ORVANE_API bool fir_judgeCoefficient(const FirFilter* filter);

/**
 * Runs the live filter over n samples, with zeros before and behind them:
 *
 *     causal      y[i] = sum over k of h[k] x[i-k]
 *     centred     y[i] = sum over k of h[k] x[i - (K-1)/2 + k], (K-1)/2 an integer division
 *     recursive   y[i] = sum over k >= 0 of b[k] x[i-k] - sum over k >= 1 of a[k] y[i-k]
 *
 * @param filter  filter
 * @param x       [n] samples
 * @param y       [n] out; must not overlap x
 * @param n       number of samples; 0 or less does nothing
 * @return   false when there are no coefficients, and when a value is NaN or beyond 1e100 in size: the values before it
 *           are there, it and all behind it are 0
 */
ORVANE_API bool fir_filter(FirFilter* filter, const double* x, double* y, int32_t n);

/** Makes the recursive filter the live one; without one it becomes an empty Butterworth filter for
 * fir_setIIRCoefficient. */
ORVANE_API void fir_createIIR(FirFilter* filter);

/**
 * Recursive design of order n = fir_getCoefficientSize by the bilinear transformation with bent edges, and makes the
 * recursive filter the live one. Band-pass and band-stop have 2n + 1 coefficients each side, the others n + 1; a[0]
 * is 1. The gain is that in the pass band (at frequency 0 of Chebyshev I at even order: 0.5 dB below it).
 *
 * The coefficients are those of the exact design rounded to doubles. What a filter of high order does then depends on
 * how its poles crowd.
 * Orders up to which (30 tried) the filter is stable and |H| within 0.001 of the exact design, at fs 1024, edge 150 or
 * band 100..200; a lower edge or a narrower band crowds the poles and takes orders away:
 *
 *                    low-pass   high-pass   band-pass   band-stop
 *     Butterworth       30          30          14          14
 *     Bessel            17          11          14           8
 *     Chebyshev I       22          30          11          14
 *     Chebyshev II      30          24          15          12
 *
 * @param filter  filter
 * @param gain    factor of the numerator
 * @param kind    ORVANE_IIR_...; any other value is Butterworth
 * @return      whether the filter is the one asked for. False unless 0 < edge < fs/2, for a band 0 < low < high < fs/2:
 *              the coefficients are then what the formulas give, a filter that as a rule is not stable. False, with a
 *              filter without coefficients, for n above 200, for ORVANE_FILTER_NONE, and for frequencies that are not
 *              finite or an fs of 0. n of 0 is the factor alone
 */
ORVANE_API bool fir_solveByIIR(FirFilter* filter, double gain, uint8_t kind);

/**
 * Coefficients of the recursive filter.
 *
 * @param filter  filter
 * @param b, a    out; null asks for the counts alone
 * @param nb, na  out: how many there are, 0 without a recursive filter; null skips b or a
 */
ORVANE_API void fir_getIIRCoefficient(const FirFilter* filter, double* b, double* a, int32_t* nb, int32_t* na);

/** Sets b [nb] and a [na] of the recursive filter, both divided by a[0]; nothing without a recursive filter. */
ORVANE_API void fir_setIIRCoefficient(FirFilter* filter, const double* b, const double* a, int32_t nb, int32_t na);

/** Appends a record for fir_solveByLineFIRSolver: x [n] goes in, y [n] shall come out. Both are copied. */
ORVANE_API void fir_addSample(FirFilter* filter, const double* x, const double* y, int32_t n);

/** Forgets all records. */
ORVANE_API void fir_lineSolverClear(FirFilter* filter);

/**
 * The K = fir_getCoefficientSize coefficients that bring the centred convolution of all records closest to what shall
 * come out, by least squares over the points with a full window. They become the coefficients and the live filter.
 *
 * @param filter  filter
 * @param method  ORVANE_FIR_SYMMETRIC: h[k] = h[K-1-k]; ORVANE_FIR_ANTISYMMETRIC: h[k] = -h[K-1-k] but for the centre
 * of an odd K, which is free; else all free
 * @return        sum of squared deviations over all points of all records; 1e300 without records or coefficients or
 * with fewer full windows than unknowns
 */
ORVANE_API double fir_solveByLineFIRSolver(FirFilter* filter, uint8_t method);

/**
 * New objective: a low-pass with the defaults above, no coefficients, an empty grid, weight 1. What is asked of it is
 * set by fir_setType and the frequency setters.
 *
 * @return handle, released by api_FreeHandle
 */
ORVANE_API FilterObjective* filter_Create(void);

/** nb coefficients b, only a[0] = 1. False, with nothing changed, if nb is 0 or less. */
ORVANE_API bool filter_setFIROpt(FilterObjective* objective, int32_t nb);

/** nb coefficients b, and a[1..na] behind a[0] = 1. False, with nothing changed, if nb is 0 or less or na negative. */
ORVANE_API bool filter_setIIROpt(FilterObjective* objective, int32_t nb, int32_t na);

/** Sets b[0..nb) and then a[1..na] from p [nb + na]. */
ORVANE_API void filter_setParam(FilterObjective* objective, const double* p);

/** Weight of the imaginary part: v squared. */
ORVANE_API void filter_setImagWeight(FilterObjective* objective, double value);

/** Sets the grid: angle [n] in radians a sample, target [n]. A null target is 0 throughout. */
ORVANE_API void filter_setSampleData(FilterObjective* objective, const double* angle, const double* target, int32_t n);

/**
 * Makes the grid from what is asked: m + 1 angles 0, pi/m, ..., pi, and by each edge inside (0, pi) two runs of m
 * that grow dense towards it: edge + (start - edge) ((j + 1/2)/m)^2, j < m, started at 0 and pi, between two edges at
 * the other one. The target is 1 in the pass band with its edges and 0 elsewhere. m of 0 or less leaves an empty grid.
 */
ORVANE_API void filter_setSampleSize(FilterObjective* objective, int32_t m);

/**
 * Sets the parameters and gives the error
 *
 *     sum over the grid of (target - (As Bs + Ac Bc))^2 + weight (Bs Ac + As Bc)^2
 *
 * with Bc, Bs the sums of b[i] cos(i w), b[i] sin(i w), and Ac, As those of a; 0 for an empty grid. For FIR filters
 * this is the distance of the response from the target; with a it is not that of B/A.
 *
 * @param objective  objective
 * @param p          [nb + na] as in filter_setParam
 */
ORVANE_API double filter_optFun(FilterObjective* objective, const double* p);

/** The same error for the coefficients b [nb] and a [na] of a recursive filter, a[0] included, as
 *  fir_getIIRCoefficient gives them. The objective's own coefficients stay. */
ORVANE_API double filter_calcErrorByIIR(const FilterObjective* objective, const double* b, const double* a, int32_t nb,
                                        int32_t na);

#endif
