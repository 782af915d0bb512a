/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Handles and tables: the release of what the library made, and the two-dimensional array of doubles.
 *
 * Whatever the host holds between two calls is an opaque pointer. It belongs to the library's registries and lives
 * until the host releases it by api_FreeHandle, or all at once by api_FreeAllHandle, or the library is unloaded.
 * Creating and releasing may happen on any thread; using one object on two threads needs the care that its own
 * functions name.
 */
#ifndef ORVANE_FRAME_H
#define ORVANE_FRAME_H

#include <orvane/export.h>

/** A row-major table of doubles, all rows of one length. */
typedef struct Data2D Data2D;

/**
 * True when a returned handle is null.
 *
 * @param handle  any handle, or null
 */
ORVANE_API bool api_PtrIsNullptr(const void* handle);

/**
 * Releases one object, of whatever family, or a plain block of memory that an export handed out.
 *
 * @param handle  object or block; null does nothing. An object that another object still uses lives on until that
 *                one goes. A handle that was released before must not be given again.
 */
ORVANE_API void api_FreeHandle(void* handle);

/**
 * Releases every object that the library made. A host calls it at most once, as its last act: no older handle may be
 * used or released after it.
 */
ORVANE_API void api_FreeAllHandle(void);

/**
 * Copies doubles; the two ranges may overlap. Mind the order: the source comes first.
 *
 * @param source       [count] values
 * @param destination  [count] out
 * @param count        number of doubles; 0 or less does nothing
 */
ORVANE_API void api_copy(const double* source, double* destination, int32_t count);

/**
 * New table with all cells 0. It takes 8 bytes a cell and 24 a row; what does not fit into memory throws
 * std::bad_alloc.
 *
 * @param rows  number of rows
 * @param cols  length of each row
 * @return handle, released by api_FreeHandle
 */
ORVANE_API Data2D* api_Data2D_Create(uint32_t rows, uint32_t cols);

/** Number of rows of a table. */
ORVANE_API int32_t api_Data2D_GetRowNum(const Data2D* table);

/** Number of columns of a table; 0 for a table without rows. */
ORVANE_API int32_t api_Data2D_GetColNum(const Data2D* table);

/**
 * Writes one row.
 *
 * @param table   table
 * @param row     row, from 0; a row outside the table does nothing
 * @param source  [cols] values
 */
ORVANE_API void api_Data2D_SetRowValue(Data2D* table, int32_t row, const double* source);

/**
 * Reads one row.
 *
 * @param table        table
 * @param row          row, from 0; a row outside the table does nothing
 * @param destination  [cols] out
 */
ORVANE_API void api_Data2D_GetRowValue(const Data2D* table, int32_t row, double* destination);

/**
 * Writes one column.
 *
 * @param table   table
 * @param col     column, from 0; a column outside the table does nothing
 * @param source  [rows] values
 */
ORVANE_API void api_Data2D_SetColValue(Data2D* table, int32_t col, const double* source);

/**
 * Reads one column.
 *
 * @param table        table
 * @param col          column, from 0; a column outside the table does nothing
 * @param destination  [rows] out
 */
ORVANE_API void api_Data2D_GetColValue(const Data2D* table, int32_t col, double* destination);

/**
 * Fills the whole table.
 *
 * @param table   table
 * @param source  [rows*cols] row-major
 */
ORVANE_API void api_Data2D_SetValue(Data2D* table, const double* source);

/**
 * Reads the whole table.
 *
 * @param table        table
 * @param destination  [rows*cols] row-major, out
 */
ORVANE_API void api_Data2D_GetValue(const Data2D* table, double* destination);

/**
 * One cell.
 *
 * @param table  table
 * @param row    row, from 0
 * @param col    column, from 0
 * @return the value, or NaN when the cell is outside the table
 */
ORVANE_API double api_Data2D_GetValueByIndex(const Data2D* table, int32_t row, int32_t col);

/**
 * Smallest and largest value of a table. NaN cells are passed over; a table without a comparable value gives 1e300 and
 * -1e300.
 *
 * @param table    table
 * @param minimum  out
 * @param maximum  out
 */
ORVANE_API void api_Data2D_GetMinMax(const Data2D* table, double* minimum, double* maximum);

#endif
