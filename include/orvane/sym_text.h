/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Symbolic expressions: plain text for programs and logs, LaTeX for display. There is no reader of either.
 *
 * Texts: a function is its name with the arguments in brackets, 2*Sin(x); sums, products, quotients and powers have
 * their signs, brackets where an operand is compound, x*y/((1+x)*z^2). An integer stands without a decimal point, any
 * other number with 20 significant digits. A term whose second character is "-", as in (-2)^x, follows in a sum
 * without a plus.
 *
 * LaTeX: the standard macros where there are some, otherwise the name in bold with its arguments in brackets; quotients
 * as fractions in display style. A variable of a letter and digits has the digits as its subscript.
 *
 * Plain texts are cached in the nodes: two threads must not write one expression at once. Writing recurses, with some
 * 200 bytes of stack a level for LaTeX and 300 for plain text: 25000 nested nodes in a stack of 8 MB. Each level of
 * a plain text is kept, so that memory grows with the square of the depth.
 */
#ifndef ORVANE_SYM_TEXT_H
#define ORVANE_SYM_TEXT_H

#include <orvane/sym.h>

/**
 * Plain text of one element.
 *
 * @param matrix    matrix; the element must not be null
 * @param row, col  place from 0
 * @param out       [capacity] out, without a terminator; may be null when capacity is 0
 * @param capacity  room in bytes
 * @return length in bytes; when it is above capacity nothing was written
 */
ORVANE_API int32_t sym_getSymStr(SymMatrix2d* matrix, int32_t row, int32_t col, char* out, int32_t capacity);

/**
 * LaTeX of one element, for math mode.
 *
 * @param matrix    matrix; the element must not be null
 * @param row, col  place from 0
 * @param out       [capacity] out, without a terminator; may be null when capacity is 0
 * @param capacity  room in bytes
 * @return length in bytes; when it is above capacity nothing was written
 */
ORVANE_API int32_t sym_getLatexStr(SymMatrix2d* matrix, int32_t row, int32_t col, char* out, int32_t capacity);

#endif
