// SPDX-License-Identifier: Apache-2.0
#include <cstring>

#include "array/dispatch.h"
#include "orvane/array.h"

void apiFun_calcFun(const double* source, int32_t count, double* destination, uint8_t code) {
  ArrayFun::calcFun(source, count, destination, code);
}

void apiFun_calcFun2(const double* a, int32_t countA, const double* b, int32_t countB, double* destination,
                     uint8_t code) {
  ArrayFun::calcFun2(a, countA, b, countB, destination, code);
}

void apiFun_calcPoly(const double* xs, int32_t countX, const int32_t* orders, int32_t countN, double* destination,
                     uint8_t code) {
  ArrayFun::calcPoly(xs, countX, orders, countN, destination, code);
}

void apiFun_randFun(double* destination, int32_t count, uint8_t wide, uint64_t seed, uint8_t code) {
  ArrayFun::randFun(destination, count, wide != 0, seed, code);
}

void apiFun_Copy(const double* source, int32_t count, double* destination) {
  if (count > 0) std::memmove(destination, source, static_cast<std::size_t>(count) * sizeof(double));
}

void apiFun_SortForIndex(const double* values, int32_t count, uint8_t descending, uint32_t* indices) {
  ArrayFun::sortForIndex(values, count, descending != 0, indices);
}

void apiFun_SortForValue(double* values, int32_t count, uint8_t descending) {
  ArrayFun::sortForValue(values, count, descending != 0);
}

void api_RandomShuffle(void* data, int32_t count, int32_t type) { ArrayFun::randomShuffle(data, count, type); }
