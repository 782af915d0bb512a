/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * The store of expressions as one block of bytes. The host keeps the block where it likes.
 *
 * Numbers are little-endian and packed: u32 number of variables, each f64 value, u32 length of the name, the name; u32
 * number of matrices, each u32 rows, u32 columns, and the elements row by row. A node is u8 kind and f64 coefficient;
 * a variable adds i32 its index, kinds from 2 on u32 the number of arguments and the arguments.
 *
 * A block keeps all of an expression, but sym_read attaches no arguments: an element that is read back has its kind and
 * coefficient and is worth its coefficient; a copy of it is that number. Matrices of numbers and the list of variables
 * come back complete.
 */
#ifndef ORVANE_SYM_STORE_H
#define ORVANE_SYM_STORE_H

#include <orvane/sym.h>

/**
 * Builds the block of the store. Releases all nodes outside matrices as sym_clearTempVar does, drops the variables that
 * nothing names any more, and numbers variables and matrices anew from 0: sym_getMatrixID tells the place of a matrix
 * in the block.
 *
 * @return length of the block in bytes
 */
ORVANE_API uint32_t sym_write(void);

/**
 * Copies the current block: the one that sym_write built last or sym_read took last, whichever was later.
 *
 * @param out  [length] out, the length being the result of sym_write
 */
ORVANE_API void sym_getDataStr(uint8_t* out);

/**
 * Adds what a block holds to the store. A variable that exists takes the block's value. The new matrices have the ids
 * 0, 1, ...; all older ones then share the id one above the last. A short or damaged block adds nothing at all, nor
 * does one with bytes left over, nor one whose matrices without columns have more than 65536 rows together.
 *
 * @param bytes   [length] block
 * @param length  bytes
 */
ORVANE_API void sym_read(const uint8_t* bytes, uint32_t length);

#endif
