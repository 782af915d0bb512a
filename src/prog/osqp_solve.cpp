// SPDX-License-Identifier: Apache-2.0
#include <osqp.h>
void probe(OSQPSettings* s) { osqp_set_default_settings(s); }
