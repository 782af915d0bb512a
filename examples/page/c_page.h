/* SPDX-License-Identifier: Apache-2.0 */
/* The page and its plots for a host in C. Texts are UTF-8; those handed out are freed with free(). */
#ifndef EXAMPLES_C_PAGE_H
#define EXAMPLES_C_PAGE_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/* One curve: `count` points, drawn in the style "s1" to "s8". A value that is not finite breaks the line. */
typedef struct PageCurve {
  const double* xs;
  const double* ys;
  size_t count;
  const char* style;
  const char* name; /* in the legend */
} PageCurve;

/* A card with the curves, ranges taken from their finite points, a legend and a caption; as HTML. */
char* page_figure(const char* id, const char* title, const char* xLabel, const char* yLabel, const PageCurve* curves,
                  size_t count, const char* caption);

/* The LaTeX text as an element that the page typesets; as HTML. */
char* page_formula(const char* latex);

/* Writes the page whole or not at all. Returns NULL, or the reason why it cannot be written. */
char* page_write(const char* path, const char* title, const char* body);

#ifdef __cplusplus
}
#endif

#endif
