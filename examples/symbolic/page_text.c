/* SPDX-License-Identifier: Apache-2.0 */
#include "page_text.h"

#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "c_page.h"

static void* grown(void* bytes, size_t size) {
  void* result = realloc(bytes, size);
  if (!result) {
    fputs("orvane-symbolic: out of memory\n", stderr);
    exit(1);
  }
  return result;
}

void put(Text* text, const char* format, ...) {
  va_list arguments, again;
  va_start(arguments, format);
  va_copy(again, arguments);
  const size_t more = (size_t)vsnprintf(NULL, 0, format, arguments);
  va_end(arguments);
  text->bytes = grown(text->bytes, text->length + more + 1);
  vsnprintf(text->bytes + text->length, more + 1, format, again);
  va_end(again);
  text->length += more;
}

void putOwned(Text* text, char* html) {
  put(text, "%s", html);
  free(html);
}

/* The two-call pattern: ask for the length, then for the bytes. */
char* latexOf(SymMatrix2d* matrix, int32_t row, int32_t col) {
  const int32_t length = sym_getLatexStr(matrix, row, col, NULL, 0);
  char* latex = grown(NULL, (size_t)length + 1);
  sym_getLatexStr(matrix, row, col, latex, length);
  latex[length] = '\0';
  return latex;
}

void putFormula(Text* text, const char* left, SymMatrix2d* matrix) {
  Text whole = {NULL, 0};
  char* right = latexOf(matrix, 0, 0);
  put(&whole, "%s = %s", left, right);
  putOwned(text, page_formula(whole.bytes));
  free(right);
  free(whole.bytes);
}
