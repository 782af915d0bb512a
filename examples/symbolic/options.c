/* SPDX-License-Identifier: Apache-2.0 */
#include "options.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static const char* const kUsage =
    "usage: orvane-symbolic [--angle DEGREES] [--length METRES] [--time SECONDS] [--report FILE]\n"
    "\n"
    "Derives the motion of a pendulum from its energy, linearises and solves it, and writes each step to an HTML "
    "page.\n"
    "  --angle   start, at rest: 1 to 179 (100)\n"
    "  --length  of the pendulum: 0.01 to 1000 (1.2)\n"
    "  --time    how long it is followed: 0.1 to 60 (8)\n"
    "  --report  page to write (pendulum.html)\n";

static int complain(const char* what, const char* value) {
  fprintf(stderr, "orvane-symbolic: %s: %s\n", what, value);
  return 2;
}

static int readNumber(const char* name, const char* text, double low, double high, double* out) {
  char* end;
  char what[96];
  *out = strtod(text, &end);
  if (end != text && *end == '\0' && *out >= low && *out <= high) return -1;
  snprintf(what, sizeof what, "%s takes a number from %g to %g, not", name, low, high);
  return complain(what, text);
}

int readOptions(int argc, char** argv, Options* options) {
  options->angle = 100;
  options->length = 1.2;
  options->time = 8;
  options->report = "pendulum.html";
  for (int i = 1; i < argc; i += 2) {
    const char* name = argv[i];
    if (strcmp(name, "-h") == 0 || strcmp(name, "--help") == 0) {
      fputs(kUsage, stdout);
      return 0;
    }
    const char* value = i + 1 < argc ? argv[i + 1] : NULL;
    int failed;
    if (strcmp(name, "--angle") && strcmp(name, "--length") && strcmp(name, "--time") && strcmp(name, "--report"))
      failed = complain("unknown option", name);
    else if (!value)
      failed = complain("a value is missing behind", name);
    else if (strcmp(name, "--angle") == 0)
      failed = readNumber(name, value, 1, 179, &options->angle);
    else if (strcmp(name, "--length") == 0)
      failed = readNumber(name, value, 0.01, 1000, &options->length);
    else if (strcmp(name, "--time") == 0)
      failed = readNumber(name, value, 0.1, 60, &options->time);
    else {
      options->report = value;
      failed = -1;
    }
    if (failed >= 0) return failed;
  }
  return -1;
}
