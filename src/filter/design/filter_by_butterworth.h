// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string_view>

#include "filter/design/filter_by_iir.h"

namespace Filter {

struct Prototype;

/// Recursive filters by an analog low-pass prototype and the bilinear transformation. This class holds Butterworth's
/// prototype; the others give their own.
class FilterByButterworth : public FilterByIIR {
 public:
  static constexpr int32_t kMaxOrder = 200;  ///< far beyond what coefficients in doubles can represent

  /// params[0]: the ripple factor epsilon of the Chebyshev designs, |H|^2 = 1/(1 + epsilon^2) at the edge.
  bool designIIR(const std::vector<double>& params) override;

 private:
  virtual Prototype prototype(double ripple) const;
};

/// Greatest flatness of the group delay: delay 1/wc at frequency 0, before the frequencies are bent.
class FilterByBessel final : public FilterByButterworth {
  Prototype prototype(double ripple) const override;
};

/// Equal ripple in the pass band.
class FilterByChebyshevI final : public FilterByButterworth {
  Prototype prototype(double ripple) const override;
};

/// Equal ripple in the stop band, which begins at the edge.
class FilterByChebyshevII final : public FilterByButterworth {
  Prototype prototype(double ripple) const override;
};

/// One row a recursive design.
struct IIRRow {
  int32_t code;
  double ripple;  ///< params[0] of a design through the export
  std::unique_ptr<FilterByIIR> (*make)();
};

/// The row of a kind; Butterworth's for a kind without one.
const IIRRow& iirDesign(int32_t kind);

}  // namespace Filter
