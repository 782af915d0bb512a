/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * The version of Orvane: the one place where it stands. The build, the name of the shared library and the packages read
 * it from here.
 *
 * While the major version is 0 a new minor version may break hosts.
 */
#ifndef ORVANE_VERSION_H
#define ORVANE_VERSION_H

#include <orvane/export.h>

/** First part of the version. */
#define ORVANE_VERSION_MAJOR 0
/** Second part of the version. */
#define ORVANE_VERSION_MINOR 1
/** Third part of the version. */
#define ORVANE_VERSION_PATCH 0

/** The version of these headers as a number to compare: 10000 major + 100 minor + patch. */
#define ORVANE_VERSION_NUMBER (10000 * ORVANE_VERSION_MAJOR + 100 * ORVANE_VERSION_MINOR + ORVANE_VERSION_PATCH)

/** The version of these headers as text, such as "0.1.0". */
#define ORVANE_VERSION ORVANE_VERSION_TEXT(ORVANE_VERSION_MAJOR, ORVANE_VERSION_MINOR, ORVANE_VERSION_PATCH)
/** Helper of ORVANE_VERSION: its arguments after their expansion. */
#define ORVANE_VERSION_TEXT(major, minor, patch) ORVANE_VERSION_JOINED(major, minor, patch)
/** Helper of ORVANE_VERSION_TEXT. */
#define ORVANE_VERSION_JOINED(major, minor, patch) #major "." #minor "." #patch

/**
 * The version of the library that is loaded, which a host may hold against the headers that it was compiled with.
 *
 * @return text such as "0.1.0", zero-terminated, owned by the library
 */
ORVANE_API const char* orvane_version(void);

#endif
