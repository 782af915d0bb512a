/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Exact fractions of big integers.
 *
 * A fraction is sign * numerator / denominator, both integers in base 10^7: limbs 0..9999999, the least significant
 * first, at least one limb each. Results are in lowest terms. Zero has the numerator 0; the infinite flag stands for
 * what a zero divisor gives, as 1/0. There are no errors but that flag and the status of fraction_fun2.
 *
 * A fraction never changes: every function makes a new object, which the host releases by api_FreeHandle. Functions may
 * run on any thread at the same time, also on the same fractions.
 */
#ifndef ORVANE_FRACTION_H
#define ORVANE_FRACTION_H

#include <orvane/export.h>

/** An exact rational number. */
typedef struct FractionNumber FractionNumber;

/**
 * New fraction from limbs. Low limbs that are zero in both are dropped; it is not reduced further.
 *
 * @param numerator         [numeratorCount] limbs, the least significant first. Words outside 0..9999999 are carried,
 * so that the value is the same sum.
 * @param numeratorCount    their number; 0 or less gives 0
 * @param denominator       [denominatorCount] limbs; 0 makes the fraction infinite
 * @param denominatorCount  their number; 0 or less gives 0
 * @param negative          true negates
 */
ORVANE_API FractionNumber* fraction_create(const int64_t* numerator, int32_t numeratorCount, const int64_t* denominator,
                                           int32_t denominatorCount, bool negative);

/**
 * New fraction, a function of one.
 *
 * Code 41 is -a, 42 the absolute value, both without reduction; 49 to 59 are the functions of hp_Fun1, and every code
 * from 60 on is the power a^n. A square root that is a fraction is exact; what leaves the rational numbers is the
 * function, to `precision` limbs, of the quotient to eight limbs more; beyond (10^7)^4000000 it is infinite. Any other
 * code gives 0.
 *
 * @param a          fraction
 * @param precision  limbs of a result that is no fraction, as in hp_Fun1
 * @param n          exponent of the power. A power with more than about 2^28 bits is infinite, at once: n times the
 *                   bits of the longer of numerator and denominator counts. Below that the digits are the cost: a
 *                   second for 2^24 bits, half a minute and 300 MB near the bound.
 * @param code       function
 */
ORVANE_API FractionNumber* fraction_fun(const FractionNumber* a, int32_t precision, int64_t n, uint8_t code);

/**
 * New fraction of two: code 0 a + b, 1 a - b, 2 a * b, 3 a / b, 4 a^b. Any other code gives 0.
 *
 * Infinities of opposite sign add up to 0, infinity/infinity is 1, a/infinity 0. A power is exact where its value is a
 * fraction and a is not negative or b an integer; otherwise it has 52 limbs, or is infinite for a negative a.
 *
 * @param a       first fraction
 * @param b       second fraction
 * @param code    operation
 * @param status  out, may be null: 1, or 0 when the result is not exact: a zero divisor, an irrational power, one with
 *                more than about 2^28 bits (infinite), an unknown code
 */
ORVANE_API FractionNumber* fraction_fun2(const FractionNumber* a, const FractionNumber* b, uint8_t code,
                                         uint8_t* status);

/**
 * New fraction, the sum of 1/values[i].
 *
 * @param values  [count] integers; one that is 0 makes the sum infinite
 * @param count   their number; 0 or less gives 0
 */
ORVANE_API FractionNumber* fraction_InvSum(const int64_t* values, int32_t count);

/** 0 for a < b, 1 for a = b, 2 for a > b; infinities of one sign are equal. */
ORVANE_API int32_t fraction_compare(const FractionNumber* a, const FractionNumber* b);

/**
 * The quotient as a decimal number, rounded like those of hp_Fun2.
 *
 * @param a          fraction
 * @param out        [precision] out: limbs of the absolute value, the most significant first
 * @param count      out: number of limbs written, at most `precision`; 0 for zero and for an infinite fraction
 * @param precision  limbs wanted; below 1 counts as 1
 * @return power of 10^7 of the last limb written
 */
ORVANE_API int32_t fraction_ToFloat(const FractionNumber* a, int64_t* out, int32_t* count, int32_t precision);

/**
 * Describes a fraction.
 *
 * @param a    fraction
 * @param out  [5] out: infinite flag, sign flag (1 for negative), number of limbs of the numerator and of the
 *             denominator, lowest limb of the denominator
 */
ORVANE_API void fraction_attribute(const FractionNumber* a, int32_t* out);

/**
 * Copies the limbs, the least significant first.
 *
 * @param a            fraction
 * @param numerator    [limbs of the numerator] out
 * @param denominator  [limbs of the denominator] out
 */
ORVANE_API void fraction_data(const FractionNumber* a, int64_t* numerator, int64_t* denominator);

#endif
