// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "record.h"

/// A window by the name that a user gives.
struct NamedWindow {
  const char* name;
  int code;
};
/// All of them, for the usage text.
std::string windowNames();
/// Throws Complaint for a name without a window.
NamedWindow windowNamed(const std::string& name);

struct Peak {
  double frequency, amplitude;
};

/// The amplitudes of a record's level, interpolated, by a window and without one.
struct Spectrum {
  NamedWindow window;
  Series frequency, plain, windowed;
  std::vector<Peak> peaks;  ///< greatest first
};

Spectrum spectrumOf(const Record& record, const NamedWindow& window);

/// Fills the band around the greatest peak and its envelope.
void takeBand(Record& record, const Spectrum& spectrum);

std::string spectrumSection(const Record& record, const Spectrum& spectrum);
