// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "filter/design/base_filter.h"
#include "filter/design/filter_by_iir.h"
#include "filter/design/filter_opt_by_fir.h"
#include "filter/windows/base_window.h"

namespace Filter {

/// What a host holds of a filter: coefficients of its own by a window or from records, or a recursive filter that it
/// owns. `firMode` tells which is live.
class FilterByFIR final : public BaseFilter {
 public:
  /// Coefficients in use: causal by `coefficients` (0), centred by the optimizer's result (1).
  bool filter(const double* x, double* y, int32_t from, int32_t to) override;

  void setNorm(double value);
  void setWindow(int32_t code);  ///< a code without a window leaves none
  void setWindowParams(std::span<const double> values);
  void setWindowParam(double value);
  void solveByWindow();
  double getWindowParam(int32_t number) const;
  void setFilterOrder(int32_t n);
  void setMethod(bool centred) { convMethod = centred ? 1 : 0; }
  bool judgeCoefficient() const;
  int32_t getCoefficient(double* out) const;
  bool setCoefficient(const double* in);
  FilterOptByFIR& getOptimizer();  ///< made on first use
  void clearSamples();
  double solveByLineFIRSolver(uint8_t method);
  bool solveByIIR(int32_t kind, double gain);
  void getIIRCoefficient(double* b, double* a, int32_t* nb, int32_t* na) const;
  void setIIRCoefficient(std::span<const double> b, std::span<const double> a);
  void createIIR();

 private:
  double idealResponse(std::size_t i) const;
  void normalise();

  std::unique_ptr<FilterByIIR> iirFilter;
  bool firMode = true;
  bool normEnabled = true;
  double normValue = 1.0;
  uint8_t convMethod = 0;
  std::unique_ptr<BaseWindow> window;
  std::unique_ptr<FilterOptByFIR> optimizer;
  std::vector<double> coefficients;
};

}  // namespace Filter
