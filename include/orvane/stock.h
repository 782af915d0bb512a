/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * A store of daily records of stocks, and its file.
 *
 * There is one store in the process. A stock is told by its type and code, and lives until the library is unloaded: a
 * handle is never released, also when a loaded file has put another stock in its place (the handle then keeps the old
 * one). A day takes 36 bytes. Names are bytes, kept as they come. Dates are not checked: years have 16 bits, months
 * and days 8, of larger numbers the low bits count. Nothing here has a lock: all functions are to be called from one
 * thread at a time.
 *
 * What the nine values of a day mean is the host's choice. They are kept as integers, rounded, and held to the range
 * of these (NaN becomes 0):
 *
 * | values | kept as               | range              |
 * |--------|-----------------------|--------------------|
 * | 0 to 3 | hundredths, 32 bits   | +-21,474,836.47    |
 * | 4 to 6 | hundredths, 16 bits   | -327.68 to 327.67  |
 * | 7, 8   | ten thousands, 32 bits| +-21,474,836,470,000 |
 *
 * The file is binary and little-endian: 13 (int32) and the 13 header bytes 0x14 0x18 0x08 0x0C "Orvanedat"; the number
 * of distinct dates (int32) and each as year (2 bytes), month (1), day (1); the number of stocks (int32) and their
 * records, ascending by type, then code: type (1), code (4), length of the name (4), name, number of days (4), the
 * days, number of attributes (4), the attributes (2 each) ascending. A day is the index of its date (4), value 0 to 3
 * (4 each), 4 to 6 (2 each), 7 and 8 (4 each).
 */
#ifndef ORVANE_STOCK_H
#define ORVANE_STOCK_H

#include <orvane/export.h>

/** A stock of the store. Never released by api_FreeHandle. */
typedef struct StockData StockData;

/** The field of stock_getData that is the date. */
enum { ORVANE_STOCK_DATE = 255 };

/**
 * The stock of a type that has a name; made where there is none. A name that is a decimal number (as "600519") gives
 * the new stock's code, and a stock that has this code already is the one that is found; any other new name gets the
 * largest code below 0 that is free. The name is set where the stock has none.
 *
 * @param type  0 to 255
 * @param name  zero-terminated bytes; null counts as empty
 * @return handle
 */
ORVANE_API StockData* stock_tryToGetStock(uint8_t type, const char* name);

/** The stock of a code and type; made, without a name, where there is none. @param code any @param type 0 to 255
 * @return handle */
ORVANE_API StockData* stock_getStock(int32_t code, uint8_t type);

/** The name. @param stock stock @return zero-terminated bytes, owned by the stock until its name is set again */
ORVANE_API const char* stock_getStockName(const StockData* stock);

/** Sets the name. @param stock stock @param name zero-terminated bytes, copied; null counts as empty */
ORVANE_API void stock_setName(StockData* stock, const char* name);

/** The code. @param stock stock @return code */
ORVANE_API int32_t stock_getStockCode(const StockData* stock);

/** The type. @param stock stock @return type */
ORVANE_API uint8_t stock_getStockType(const StockData* stock);

/** How many stocks of a type there are. @param type 0 to 255 @return their number */
ORVANE_API int32_t stock_getAllStockSize(uint8_t type);

/** The stocks of a type in ascending order of code. @param type 0 to 255 @param out [stock_getAllStockSize] out,
 * handles; null to count only @return their number */
ORVANE_API int32_t stock_getAllStocks(uint8_t type, StockData** out);

/** The first stock of a code, in ascending order of type. @param code code @param out [1] out, handle; untouched when
 * there is none @return 1 found, 0 not */
ORVANE_API uint8_t stock_searchStockByCode(int32_t code, StockData** out);

/** The first stock of a name, in ascending order of type, then code. @param name zero-terminated bytes @param out [1]
 * out, handle; untouched when there is none @return 1 found, 0 not */
ORVANE_API uint8_t stock_searchStockByName(const char* name, StockData** out);

/**
 * Sets the day of a date: replaces the day that the stock has, or puts a new one in its place in ascending order (at
 * the end where a file has brought days out of order).
 *
 * @param stock  stock
 * @param year   calendar date
 * @param month  calendar date
 * @param day    calendar date
 * @param value0 field 0, rounded as the table above tells
 * @param value1 field 1
 * @param value2 field 2
 * @param value3 field 3
 * @param value4 field 4
 * @param value5 field 5
 * @param value6 field 6
 * @param value7 field 7
 * @param value8 field 8
 */
ORVANE_API void stock_setData(StockData* stock, uint32_t year, uint32_t month, uint32_t day, double value0,
                              double value1, double value2, double value3, double value4, double value5, double value6,
                              double value7, double value8);

/**
 * One field of a run of days. Field 255 is the date as a serial number: days from 1900-01-01, which is 1, where each
 * fourth year from 1900 on counts 366 days, plus the hours of the time 18:16:39 (so 18.2775 and not a fraction of a
 * day); 0 for a year outside 1900 to 9000.
 *
 * @param stock  stock
 * @param field  0 to 8, or 255; another one gives NaN
 * @param first  index of a day, from 0
 * @param last   index of a day; the run goes from the smaller to the larger, both inclusive, both held to the days
 *               that there are
 * @param out    [number of days of the run] out
 * @return number of values written; 0 for a stock without days
 */
ORVANE_API int32_t stock_getData(const StockData* stock, uint8_t field, int32_t first, int32_t last, double* out);

/**
 * The days between two dates, both inclusive, given in either order.
 *
 * @param stock   stock
 * @param year1   first date
 * @param month1  first date
 * @param day1    first date
 * @param year2   second date
 * @param month2  second date
 * @param day2    second date
 * @param out     [2] out, index of the first and of the last day; -1, -1 when there is none
 */
ORVANE_API void stock_getTimeRange(const StockData* stock, uint32_t year1, uint32_t month1, uint32_t day1,
                                   uint32_t year2, uint32_t month2, uint32_t day2, int32_t* out);

/** Whether the stock has a day of this date. @param stock stock @param year date @param month date @param day date
 * @return true when it has */
ORVANE_API bool stock_dateIsExist(const StockData* stock, uint32_t year, uint32_t month, uint32_t day);

/** Removes days. @param stock stock @param index first of them, from 0 @param count how many; what lies outside the
 * days is ignored */
ORVANE_API void stock_deleteData(StockData* stock, int32_t index, int32_t count);

/** Sorts the days by date. stock_setData keeps them so; only a file may bring them in another order, which a stock
 * keeps until it is sorted. @param stock stock */
ORVANE_API void stock_sort(StockData* stock);

/** Adds an attribute. @param stock stock @param type 0 to 55 has a name; any number is kept */
ORVANE_API void stock_addAttributeType(StockData* stock, uint16_t type);

/** Removes an attribute; one that the stock has not is ignored. @param stock stock @param type attribute */
ORVANE_API void stock_deleteAttributeType(StockData* stock, uint16_t type);

/** Removes all attributes. @param stock stock */
ORVANE_API void stock_clearAttributeType(StockData* stock);

/** The attributes that have a name: 0 to 55. @param out [56] out; untouched when size is below 56 @param size room in
 * out @return 56 */
ORVANE_API int32_t stock_getAllAttributeType(uint16_t* out, int32_t size);

/** The name of an attribute (owner, province or trade). @param type attribute @return zero-terminated GBK text, empty
 * for an unknown one; the next call overwrites it */
ORVANE_API const char* stock_getAttributeTypeStr(uint16_t type);

/**
 * Saves stocks to a file. It is written beside the path and renamed when it is complete.
 *
 * @param handles  [count] stocks, in any order
 * @param count    their number; 0 or less saves every stock of the store
 * @param path     zero-terminated
 * @return 1 saved, 0 not: the file at the path is then as it was
 */
ORVANE_API uint32_t stock_saveStock(const StockData* const* handles, int32_t count, const char* path);

/**
 * Loads a file. A stock whose type and code the store has takes the other's place. The first damaged record ends the
 * load: the stocks before it stay. Days keep the order of the file, see stock_sort.
 *
 * @param path  zero-terminated
 * @param out   [number of stocks in the file] out, handles in the order of the file; null to load without them
 * @return number of stocks loaded; 0 also when the file is missing or has another header
 */
ORVANE_API int32_t stock_loadStock(const char* path, StockData** out);

#endif
