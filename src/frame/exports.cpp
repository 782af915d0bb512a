// SPDX-License-Identifier: Apache-2.0
#include <cstring>

#include "frame/handle.h"
#include "frame/native_data2d.h"
#include "orvane/frame.h"
#include "orvane/version.h"

namespace {
// A negative index becomes a huge one, which lies outside every table.
std::size_t index(int32_t i) { return static_cast<std::size_t>(i); }
}  // namespace

const char* orvane_version(void) { return ORVANE_VERSION; }

bool api_PtrIsNullptr(const void* handle) { return handle == nullptr; }

void api_FreeHandle(void* handle) { MemoryManagement_c::instance().free(handle); }

void api_FreeAllHandle(void) { MemoryManagement_c::instance().freeAll(); }

void api_copy(const double* source, double* destination, int32_t count) {
  if (count > 0) std::memmove(destination, source, static_cast<std::size_t>(count) * sizeof(double));
}

Data2D* api_Data2D_Create(uint32_t rows, uint32_t cols) {
  return registered<Data2D>(std::make_unique<Data2D_c>(rows, cols));
}

int32_t api_Data2D_GetRowNum(const Data2D* table) { return static_cast<int32_t>(native(table).rowCount()); }

int32_t api_Data2D_GetColNum(const Data2D* table) { return static_cast<int32_t>(native(table).colCount()); }

void api_Data2D_SetRowValue(Data2D* table, int32_t row, const double* source) {
  native(table).setRow(index(row), source);
}

void api_Data2D_GetRowValue(const Data2D* table, int32_t row, double* destination) {
  native(table).getRow(index(row), destination);
}

void api_Data2D_SetColValue(Data2D* table, int32_t col, const double* source) {
  native(table).setCol(index(col), source);
}

void api_Data2D_GetColValue(const Data2D* table, int32_t col, double* destination) {
  native(table).getCol(index(col), destination);
}

void api_Data2D_SetValue(Data2D* table, const double* source) { native(table).setAll(source); }

void api_Data2D_GetValue(const Data2D* table, double* destination) { native(table).getAll(destination); }

double api_Data2D_GetValueByIndex(const Data2D* table, int32_t row, int32_t col) {
  return native(table).at(index(row), index(col));
}

void api_Data2D_GetMinMax(const Data2D* table, double* minimum, double* maximum) {
  native(table).minMax(*minimum, *maximum);
}
