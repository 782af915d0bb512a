/* SPDX-License-Identifier: Apache-2.0 */
#ifndef ORVANE_SYMBOLIC_PAGE_TEXT_H
#define ORVANE_SYMBOLIC_PAGE_TEXT_H

#include <orvane/orvane.h>
#include <stddef.h>

/* A growing text. `bytes` ends with a zero and is freed by the owner. */
typedef struct Text {
  char* bytes;
  size_t length;
} Text;

void put(Text* text, const char* format, ...);
void putOwned(Text* text, char* html); /* adds and frees */

/* LaTeX of element (row, col), to be freed. */
char* latexOf(SymMatrix2d* matrix, int32_t row, int32_t col);

/* A formula "left = LaTeX of the element" as HTML. */
void putFormula(Text* text, const char* left, SymMatrix2d* matrix);

#endif
