// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>

/// What the user gave cannot be used. The text is the one line that goes to standard error; the program ends with 2.
struct Complaint : std::runtime_error {
  using std::runtime_error::runtime_error;
};
