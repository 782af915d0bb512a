/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Complex expression machine: a graph of complex functions that is built once and evaluated as often as wanted, with
 * GMP floats of the GMP default precision that is in force (64 bits unless the host sets another).
 *
 * The host makes a command, makes the expressions of the graph in it, gives the leaves their values and the others
 * their functions and parameters, and lists the latter in the order of evaluation. Each part of a result is the exact
 * value for its parameters, cut to the precision.
 *
 * An undefined value (a division by zero, the logarithm of zero, a pole, a size beyond 10^(+-5 10^15), a missing
 * parameter) makes every function of it undefined and the result of a run null; values closer to zero than that are
 * zero. Circular functions are undefined for real parts from 2^(2^20) on, exp and the hyperbolic ones for such
 * imaginary parts.
 *
 * The functions are to be called from one thread at a time.
 */
#ifndef ORVANE_COMPLEX_EXPRESSION_H
#define ORVANE_COMPLEX_EXPRESSION_H

#include <orvane/export.h>

/** A program. */
typedef struct PluralCmd PluralCmd;
/** A node of a program; it lives as long as its command. */
typedef struct PluralExpress PluralExpress;
/** A complex number. */
typedef struct HPPlural HPPlural;

/** New command, freed by math_PluralFreeCmd or by a run that says so. */
ORVANE_API PluralCmd* math_PluralNewCmd(void);

/** New expression without function, value and parameters, owned by the command; null for an unknown command. */
ORVANE_API PluralExpress* math_PluralNewExpress(PluralCmd* cmd);

/** Appends an expression to the order of evaluation; an unknown command or a null expression does nothing. */
ORVANE_API void math_PluralAddSortExpress(PluralCmd* cmd, PluralExpress* express);

/** Appends a parameter to an expression, whose value is read when the expression is evaluated. */
ORVANE_API void math_PluralAddExpressParam(PluralExpress* express, PluralExpress* parameter);

/**
 * Functions of an expression: the first five of the parameters 0 and 1, the others of parameter 0. Principal values:
 * ln z = ln |z| + i angle, the angle in (-pi, pi]; asin z = -i ln(iz + sqrt(1 - z^2)), asinh z = ln(z + sqrt(z^2 + 1)),
 * atan z = (i/2)(ln(1 - iz) - ln(1 + iz)), atanh z = (ln(1 + z) - ln(1 - z))/2, a^b = exp(b ln a) with a^0 = 1.
 */
enum {
  ORVANE_COMPLEX_ADD = 0,
  ORVANE_COMPLEX_SUBTRACT = 1,
  ORVANE_COMPLEX_MULTIPLY = 2,
  ORVANE_COMPLEX_DIVIDE = 3,
  ORVANE_COMPLEX_POWER = 4,
  ORVANE_COMPLEX_SIN = 10,
  ORVANE_COMPLEX_ASINH = 15,
  ORVANE_COMPLEX_ASIN = 21,
  ORVANE_COMPLEX_ATAN = 22,
  ORVANE_COMPLEX_ATANH = 23,
  ORVANE_COMPLEX_COS = 38,
  ORVANE_COMPLEX_COSH = 39,
  ORVANE_COMPLEX_COT = 42,
  ORVANE_COMPLEX_COTH = 43,
  ORVANE_COMPLEX_EXP = 103,
  ORVANE_COMPLEX_LN = 119,
  ORVANE_COMPLEX_SINH = 141,
  ORVANE_COMPLEX_SQRT = 147,
  ORVANE_COMPLEX_TAN = 151,
  ORVANE_COMPLEX_TANH = 152
};

/**
 * Binds a function to an expression.
 *
 * @param express  expression
 * @param code     ORVANE_COMPLEX_ADD to ORVANE_COMPLEX_TANH; any other code changes nothing
 */
ORVANE_API void math_PluralSetExpressFun(PluralExpress* express, uint8_t code);

/**
 * Sets the value of an expression from text.
 *
 * @param express    expression; a value that it shares with a data handle changes there, too
 * @param real       decimal number, as `-1.25e-3`; a text that is none, null, or an exponent beyond +-10^15 leaves the
 *                   part as it was (0 at first)
 * @param imaginary  the same for the imaginary part
 */
ORVANE_API void math_PluralSetExpressValue(PluralExpress* express, const char* real, const char* imaginary);

/** Makes an expression share a data handle's number, also after the handle is freed; an unknown handle clears the
 * value. */
ORVANE_API void math_PluralSetExpressValue2(PluralExpress* express, const HPPlural* data);

/** New number from two texts, as in math_PluralSetExpressValue; freed by math_PluralFreeData. */
ORVANE_API HPPlural* math_PluralAddData(const char* real, const char* imaginary);

/**
 * Evaluates the expressions in their order, each from the present values of its parameters.
 *
 * @param cmd          command
 * @param freeCommand  true frees the command afterwards
 * @return data handle of the last expression's value, a new one at each run, freed by math_PluralFreeData; null for an
 *         undefined value, an unknown command or one with nothing to evaluate. An expression without a function throws
 *         std::bad_function_call.
 */
ORVANE_API HPPlural* math_PluralRun(PluralCmd* cmd, bool freeCommand);

/**
 * Writes a number as text.
 *
 * `0`, the real part, the imaginary part and `i`, or the real part, ` + ` or ` - `, the size of the imaginary part and
 * `i`; parts with all their digits, as `1.5e+00`.
 *
 * @param data    data handle; an unknown one writes nothing
 * @param buffer  [size] out, to be cleared before: only a text of two parts is terminated. Nothing is written when the
 *                text and one byte more do not fit; `0` fits into one byte.
 * @param size    size of the buffer in bytes
 * @return length of the text; 0 for an unknown handle
 */
ORVANE_API int32_t math_PluralGetStrValue(const HPPlural* data, char* buffer, int32_t size);

/** Frees a command and its expressions; false when it is unknown. */
ORVANE_API bool math_PluralFreeCmd(PluralCmd* cmd);

/** Frees a data handle; false when it is unknown. */
ORVANE_API bool math_PluralFreeData(HPPlural* data);

#endif
