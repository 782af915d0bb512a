/* SPDX-License-Identifier: Apache-2.0 */
#ifndef ORVANE_SYMBOLIC_OPTIONS_H
#define ORVANE_SYMBOLIC_OPTIONS_H

/* What the command line asks for. */
typedef struct Options {
  double angle;  /* degrees, the pendulum's start at rest */
  double length; /* metres */
  double time;   /* seconds */
  const char* report;
} Options;

/* Reads the command line. Returns -1 to go on, otherwise the exit code: 0 after --help, 2 after one line on standard
   error about what is wrong. */
int readOptions(int argc, char** argv, Options* options);

#endif
