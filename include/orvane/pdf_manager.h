/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Fits of distributions to a sample, and kernel densities.
 *
 * A manager turns a sample into its distinct values x[i] in ascending order, the empirical distribution function F[i]
 * there and a kernel density, and fits any list of distributions (orvane/pdf.h) to F by population solvers on threads
 * of its own. The measure of a fit is the sum of (cdf(x[i]) - F[i])^2; densities play no part in it.
 *
 * A host runs pdfManger_optimizer on a thread of its own, polls pdfManger_getProcess, may call pdfManger_stop, and
 * reads the ranking by pdfManger_getSortPDF after the fit has ended. Two managers may fit different distributions at
 * the same time. Managers and kernels are released by api_FreeHandle.
 */
#ifndef ORVANE_PDF_MANAGER_H
#define ORVANE_PDF_MANAGER_H

#include <orvane/export.h>
#include <orvane/pdf.h>

/** A sample and the fits to it. */
typedef struct PDFManger PDFManger;

/** Kinds of kernel for pdfManger_createKDEFun. */
enum {
  ORVANE_KERNEL_GAUSS = 1,
  ORVANE_KERNEL_COSINE = 2,
  ORVANE_KERNEL_PARABOLA = 4,
  ORVANE_KERNEL_TRIANGLE = 5,
};

/** A kernel density. */
typedef struct PDFKernel PDFKernel;

/**
 * New manager without data.
 *
 * @return handle, released by api_FreeHandle
 */
ORVANE_API PDFManger* pdfManger_create(void);

/**
 * Takes a raw sample. It is copied and sorted; a value less than 1e-14 above the first value of the group before it
 * joins that group. F at a group is the share of values up to it, exactly 1 at the last. The density at the groups is a
 * Gaussian kernel density whose widths are 16 times the greater distance of a group to its neighbours (at least 16 *
 * 0.01) but for the first and the last, which take the distance itself (at least 0.01). One group alone has density 0.
 *
 * @param manager  manager; distributions that are being fitted keep the sample they started with
 * @param x        [n] values in any order; NaN and infinite values are left out
 * @param n        number of values; 0 or less leaves the manager without data
 */
ORVANE_API void pdfManger_setData(PDFManger* manager, const double* x, int32_t n);

/**
 * Takes a weighted sample. Neighbours merge by the test of pdfManger_setData and their weights add up; F is the running
 * weight divided by the total. Weights that are all 0 give F = 0 but for the last entry, which is 1.
 *
 * @param manager  manager
 * @param pairs    [2*n] couples (x, weight) that ascend in x; they are not sorted here. Couples with a NaN or infinite
 * x are left out
 * @param n        number of couples
 * @return true; false, with the old data kept, if n < 1 or a weight is negative, NaN or infinite
 */
ORVANE_API bool pdfManger_setXYData(PDFManger* manager, const double* pairs, int32_t n);

/** Number of distinct values. */
ORVANE_API int32_t pdfManger_getDataSize(const PDFManger* manager);

/**
 * Empirical distribution function at the distinct values.
 *
 * @param manager  manager
 * @param out      [pdfManger_getDataSize] out; untouched without data
 */
ORVANE_API void pdfManger_getCDFData(const PDFManger* manager, double* out);

/**
 * Kernel density at the distinct values. The first call after new data makes it, a sum over all values at each: that
 * takes time with the square of their number.
 *
 * @param manager  manager
 * @param out      [pdfManger_getDataSize] out; untouched without data
 */
ORVANE_API void pdfManger_getPDFData(const PDFManger* manager, double* out);

/**
 * The distinct values in ascending order.
 *
 * @param manager  manager
 * @param out      [pdfManger_getDataSize] out; untouched without data
 */
ORVANE_API void pdfManger_getSrcData(const PDFManger* manager, double* out);

/**
 * Fits distributions to the sample and blocks until the fit has ended.
 *
 * Each solver code makes one round over the distributions: first, in this order, the first of each of the types 43, 28,
 * 12, 11, 10, 13, 16, 36, 27, 38, 3, 4, 49 that is present, then the others as given. A turn starts a solver on its
 * distribution if fewer than `threads` are at work; otherwise it waits for one to end and the distribution of that turn
 * gets no run in this round. A host that wants every distribution fitted gives at least as many threads as
 * distributions, or fits those again whose error is still 1e300.
 *
 * During the fit the distributions are written to by the solvers: the host must keep them alive and leave them alone.
 * At its end each holds its smallest error (pdf_getError; 1e300 if it got no run, or no run found a finite error) and
 * the parameters of it; without an improvement it keeps the parameters it had (the best of an earlier fit, if there was
 * one).
 *
 * @param manager      manager; without data every error is 0
 * @param funs         [funCount] distributions; nulls and repetitions are left out
 * @param funCount     number of distributions
 * @param solverCodes  [solverCount] kinds of solver, 0 to 10 as in os_setOptimizer; others make an empty round
 * @param solverCount  number of codes
 * @param popSize      candidates of a solver, at least 3
 * @param maxIter      iterations of a solver, at least 1; kind 0 plans a budget of its own from it
 * @param threads      solvers at work at once, at least 1
 * @param precision    a run ends when its error falls below this
 * @return 1, after a finished fit and at once when one is under way on this manager
 */
ORVANE_API uint8_t pdfManger_optimizer(PDFManger* manager, PDFFun* const* funs, int32_t funCount,
                                       const uint8_t* solverCodes, int32_t solverCount, int32_t popSize,
                                       int32_t maxIter, int32_t threads, double precision);

/** 1 while a fit is under way, else 0. On any thread. */
ORVANE_API uint8_t pdfManger_isRun(const PDFManger* manager);

/**
 * Progress of the fit in thousandths: 1000 * ended runs / planned runs; 1000 when nothing is planned or the fit has
 * ended. On any thread.
 *
 * @param manager  manager
 */
ORVANE_API int64_t pdfManger_getProcess(const PDFManger* manager);

/**
 * Asks a fit to end and returns at once; what the solvers have found so far is kept. Each solver ends with the
 * evaluation that it is in. That takes microseconds for most distributions, and up to a second where a series converges
 * slowly (StudentsT and its generalisations with x^2/a just above 1). Without a fit under way it does nothing. On any
 * thread.
 *
 * @param manager  manager
 */
ORVANE_API void pdfManger_stop(PDFManger* manager);

/**
 * The distributions of the last fit in ascending order of error. During a fit: the errors so far.
 *
 * @param manager    manager
 * @param outFuns    [funCount] out: the handles given to pdfManger_optimizer, one for each that was not left out
 * @param outErrors  [funCount] out: their errors
 */
ORVANE_API void pdfManger_getSortPDF(const PDFManger* manager, PDFFun** outFuns, double* outErrors);

/**
 * New kernel. With u = (x - c_i)/w_i for centre c_i and width w_i its density is the sum of K(u) over the sum of the
 * widths:
 *
 * | type | kernel | K(u) | parameters (start) |
 * |---|---|---|---|
 * | 1 and any other | Gauss | exp(-(u-mu)^2/(2 sigma^2))/(sigma sqrt(2 pi)) | mu (0), sigma (1) |
 * | 2 | cosine | pi/(4a) cos(pi u/(2a)) for abs(u) < a | a (1) |
 * | 4, 100 | parabola | 3/(4a) (1-(u/a)^2) for abs(u) < a | a (1) |
 * | 5 | triangle | (1-abs(u)/a)/a for abs(u) < a | a (1) |
 *
 * The triangle's density is the plain sum, not divided by the widths, and its distribution function adds
 * (c_i + a w_i - x)(x - c_i) + w_i/2 between c_i and c_i + 2a w_i.
 *
 * No function loads centres into a kernel of the host; such a kernel serves for its parameters and its sheet, and both
 * its functions are 0.
 *
 * @param type  kind of kernel
 * @return handle, released by api_FreeHandle
 */
ORVANE_API PDFKernel* pdfManger_createKDEFun(uint8_t type);

/**
 * Density at n points.
 *
 * @param kernel  kernel
 * @param x       [n] points
 * @param y       [n] out; may be x itself
 * @param n       number of points; 0 or less does nothing
 */
ORVANE_API void pdfManger_KDECalcPDF(const PDFKernel* kernel, const double* x, double* y, int32_t n);

/**
 * Distribution function, held to [0, 1], at n points.
 *
 * @param kernel  kernel
 * @param x       [n] points
 * @param y       [n] out; may be x itself
 * @param n       number of points; 0 or less does nothing
 */
ORVANE_API void pdfManger_KDECalcCDF(const PDFKernel* kernel, const double* x, double* y, int32_t n);

/**
 * Sum of (pdf(x[i]) - y[i])^2.
 *
 * @param kernel  kernel
 * @param x       [n] points
 * @param y       [n] values to compare with
 * @param n       number of points; 0 or less gives 0
 */
ORVANE_API double pdfManger_KDECalcPDFSumError(const PDFKernel* kernel, const double* x, const double* y, int32_t n);

/**
 * Sum of (cdf(x[i]) - y[i])^2.
 *
 * @param kernel  kernel
 * @param x       [n] points
 * @param y       [n] values to compare with
 * @param n       number of points; 0 or less gives 0
 */
ORVANE_API double pdfManger_KDECalcCDFSumError(const PDFKernel* kernel, const double* x, const double* y, int32_t n);

/**
 * Gives every centre the same width.
 *
 * @param kernel  kernel
 * @param w       width, in units of x
 */
ORVANE_API void pdfManger_KDESetWidth(PDFKernel* kernel, double w);

/**
 * Sets the widths from the distances between neighbouring centres: r times the greater of the two distances, and the
 * one distance itself for the first and the last centre; distances below 0.01 count as 0.01. A centre alone gets 1.
 *
 * @param kernel  kernel
 * @param r       factor
 */
ORVANE_API void pdfManger_KDESetWidthByR(PDFKernel* kernel, double r);

/**
 * Sets the parameters.
 *
 * @param kernel  kernel
 * @param p       [pdfManger_KDEGetParamSize] values, in the order of the table at pdfManger_createKDEFun
 */
ORVANE_API void pdfManger_KDESetParam(PDFKernel* kernel, const double* p);

/** Number of parameters of a kernel. */
ORVANE_API int32_t pdfManger_KDEGetParamSize(const PDFKernel* kernel);

/**
 * LaTeX sheet of a kernel: its formula K and its parameters, a zero-terminated text.
 *
 * @param kernel  kernel
 * @return text owned by the kernel, valid until the next call on it
 */
ORVANE_API const char* pdfManger_KDEGetFunExpress(PDFKernel* kernel);

#endif
