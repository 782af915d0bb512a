// SPDX-License-Identifier: Apache-2.0
#include <orvane/orvane.h>

#include <cstdio>
#include <memory>
#include <vector>

int main() {
  std::unique_ptr<Data2D, void (*)(void*)> table(api_Data2D_Create(2, 3), api_FreeHandle);
  api_Data2D_SetValue(table.get(), std::vector<double>{3, -1, 4, 1, -5, 9}.data());
  double low = 0, high = 0;
  api_Data2D_GetMinMax(table.get(), &low, &high);
  std::printf("%g %g %g\n", low, high, api_Data2D_GetValueByIndex(table.get(), 1, 0));
}
