/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * High-precision decimal numbers.
 *
 * A number is sign * sum of limb[i] * (10^7)^(i + exponent), limbs 0..9999999, the least significant first. Zero has no
 * limbs. The last limb at either end is never 0. There is no NaN and no error: an undefined result is a number with the
 * infinite flag, no limbs and a positive sign, which hp_Attribute shows.
 *
 * `precision` is the number of limbs (seven decimal digits each) of a result. Below 1 it counts as 1, above 1,000,000
 * as 1,000,000. Every result is the exact value rounded to that many limbs: what stands behind the last limb is
 * dropped, and one is added to it when the highest dropped limb is at least 5000000. A result beyond (10^7)^(2^56) is
 * infinite, one closer to 0 than (10^7)^(-2^56) is 0.
 *
 * A number never changes: every function makes a new object, which the host releases by api_FreeHandle. Functions may
 * run on any thread at the same time, also on the same numbers.
 */
#ifndef ORVANE_HIGHPRECISION_H
#define ORVANE_HIGHPRECISION_H

#include <orvane/export.h>

/** A decimal floating-point number. */
typedef struct HPNumber HPNumber;

/** New number with the value of an integer, any 64-bit integer. */
ORVANE_API HPNumber* hp_CreateByValue(int64_t value);

/**
 * New number from its limbs.
 *
 * @param limbs     [count] limbs, the least significant first. Words outside 0..9999999 are carried, so that the value
 *                  is the same sum; zero limbs at the ends are dropped.
 * @param count     number of limbs; 0 or less gives zero
 * @param exponent  power of 10^7 of limbs[0]
 * @param negative  true negates
 */
ORVANE_API HPNumber* hp_CreateByValue2(const int64_t* limbs, int32_t count, int32_t exponent, bool negative);

/**
 * New number from digits in any base: (sum of integer digits + sum of fraction digits), most significant first, rounded
 * once.
 *
 * @param integerDigits   [integerCount] digits before the point
 * @param integerCount    their number; 0 or less for none
 * @param fractionDigits  [fractionCount] digits behind the point
 * @param fractionCount   their number; 0 or less for none
 * @param base            base; digits are not held against it. Base 0 with fraction digits divides by zero.
 * @param negative        true negates
 * @param precision       limbs of the result
 */
ORVANE_API HPNumber* hp_Conversion(const int32_t* integerDigits, int32_t integerCount, const int32_t* fractionDigits,
                                   int32_t fractionCount, int32_t base, bool negative, int32_t precision);

/**
 * Describes a number.
 *
 * @param number  number
 * @param out     [4] out: infinite flag, sign flag (1 for negative), number of limbs, exponent of the lowest limb
 */
ORVANE_API void hp_Attribute(const HPNumber* number, int64_t* out);

/**
 * Copies the limbs, the least significant first.
 *
 * @param number  number
 * @param out     [number of limbs] out, the number that hp_Attribute gives
 */
ORVANE_API void hp_GetValue(const HPNumber* number, int64_t* out);

/**
 * New number, a function of one number.
 *
 * | code | function | | code | function |
 * |---|---|---|---|---|
 * | 41 | -x | | 57 | atan x |
 * | 42 | absolute value | | 58 | acot x = pi/2 - atan x |
 * | 49 | square root | | 59 | exp x |
 * | 50 | natural logarithm | | 61 | sinh x |
 * | 51 | sin x | | 62 | cosh x |
 * | 52 | cos x | | 63 | tanh x |
 * | 53 | tan x | | 64 | coth x |
 * | 54 | cot x | | 65 | asinh x |
 * | 55 | asin x | | 66 | acosh x |
 * | 56 | acos x | | 67 | atanh x |
 * | 69 | integer part, towards zero | | 68 | acoth x |
 *
 * Angles are radians. Any other code gives a new zero. Outside the real domain of a function, at its poles, and for
 * angles from (10^7)^100000 on the result is infinite. An infinite argument gives the limit of the function where it
 * has one, but: the square root and the logarithm are infinite, and exp is 0 for the positive and infinite for the
 * negative one.
 *
 * @param number     x
 * @param code       function
 * @param precision  limbs of the result
 */
ORVANE_API HPNumber* hp_Fun1(const HPNumber* number, uint8_t code, int32_t precision);

/**
 * New number of two: code 0 a + b, 1 a - b, 2 a * b, 3 a / b, 60 a^b. Any other code gives a new zero.
 *
 * 0/0 and infinity/infinity are 1, x/0 and infinity/x are infinite with the sign of the quotient, x/infinity is 0.
 * Infinities of opposite sign add up to 0. a^0 is 1; 0^b is 0 for b > 0 and infinite for b < 0; a negative a with a b
 * that is no integer is infinite. An infinite b gives exp(b ln a) with the values of code 59.
 *
 * @param a          first number
 * @param b          second number
 * @param code       operation
 * @param precision  limbs of the result
 */
ORVANE_API HPNumber* hp_Fun2(const HPNumber* a, const HPNumber* b, uint8_t code, int32_t precision);

/**
 * New number x^n; x^0 is 1, 0^n is infinite for n < 0.
 *
 * @param number     x
 * @param exponent   n
 * @param precision  limbs of the result
 */
ORVANE_API HPNumber* hp_Pow(const HPNumber* number, int64_t exponent, int32_t precision);

/** 0 for a < b, 1 for a = b, 2 for a > b; infinities of one sign are equal. */
ORVANE_API int32_t hp_Compare(const HPNumber* a, const HPNumber* b);

/** True when two numbers have the same value. */
ORVANE_API bool hp_IsEqu(const HPNumber* a, const HPNumber* b);

/** 0 for a negative number, 1 for zero, 2 for a positive one; an infinite number has a sign, too. */
ORVANE_API int32_t hp_CompareZero(const HPNumber* number);

#endif
