// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

/// Functions over whole arrays. The functions of one and two numbers have one row a code, made from the table of
/// functions (special/table.h): the loop over the elements, instantiated for the routine, so that the look-up happens
/// once an array and the routine is called, or inlined, without a pointer.
namespace ArrayFun {

/// The exports of orvane/array.h, by the same names.
void calcFun(const double* source, int32_t count, double* destination, uint8_t code);
void calcFun2(const double* a, int32_t countA, const double* b, int32_t countB, double* destination, uint8_t code);
void calcPoly(const double* xs, int32_t countX, const int32_t* orders, int32_t countN, double* destination,
              uint8_t code);
void randFun(double* destination, int32_t count, bool wide, uint64_t seed, uint8_t code);
void sortForIndex(const double* values, int32_t count, bool descending, uint32_t* indices);
void sortForValue(double* values, int32_t count, bool descending);
void randomShuffle(void* data, int32_t count, int32_t type);

}  // namespace ArrayFun
