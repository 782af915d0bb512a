/* SPDX-License-Identifier: Apache-2.0 */
#include <orvane/orvane.h>
#include <stdio.h>
#include <string.h>

int main(void) {
  const double cells[] = {3, -1, 4, 1, -5, 9};
  double low = 0, high = 0;
  Data2D* table = api_Data2D_Create(2, 3);
  api_Data2D_SetValue(table, cells);
  api_Data2D_GetMinMax(table, &low, &high);
  printf("%g %g %g\n", low, high, api_Data2D_GetValueByIndex(table, 1, 0));
  api_FreeHandle(table);
  return strcmp(orvane_version(), ORVANE_VERSION); /* the headers are those of the library */
}
