/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Linkage of the exported functions, and the fixed-size types that they use.
 */
#ifndef ORVANE_EXPORT_H
#define ORVANE_EXPORT_H

#include <stdbool.h>
#include <stdint.h>

/** C linkage, for C and C++ alike. */
#ifdef __cplusplus
#define ORVANE_LINKAGE extern "C"
#else
#define ORVANE_LINKAGE extern
#endif

/** Marks a function that the shared library shows: C linkage, default visibility. */
#if defined(__GNUC__)
#define ORVANE_API ORVANE_LINKAGE __attribute__((visibility("default")))
#else
#define ORVANE_API ORVANE_LINKAGE
#endif

#endif
