// SPDX-License-Identifier: Apache-2.0
#include "pdf/table.h"

#include <map>

#include "pdf/plain_pdf_fun.h"

namespace PDF {

const JoinedCodeTable<PlainRow>& plainLaws() {
  static const JoinedCodeTable<PlainRow> table{boundedLaws(),  countingLaws(), gammaLaws(),
                                               locationLaws(), normalLaws(),   tailLaws()};
  return table;
}

const std::vector<int32_t>& cheapCodes() {
  static const std::vector<int32_t> codes = [] {
    std::map<int, int32_t> byTurn;
    for (const PlainRow* row : plainLaws().rows())
      if (row->turn > 0) byTurn.emplace(row->turn, row->code);
    std::vector<int32_t> inOrder;
    for (const auto& [turn, code] : byTurn) inOrder.push_back(code);
    return inOrder;
  }();
  return codes;
}

std::string& TablePDFFun::getLatex(std::string& out) const { return writeSheet(out, getName(), row->texts, params); }

void TablePDFFun::initRange(std::span<const double> x, std::span<const double> cdf, std::vector<double>& minVar,
                            std::vector<double>& maxVar, std::vector<double>& start) const {
  const Sample sample(x, cdf);
  const FitRange range{minVar, maxVar, start};
  if (useQuantileStart && row->quantileStart != nullptr) {
    const QuantileStart line = row->quantileStart(sample);
    if (line.finite()) return line.apply(range);
  }
  row->range(sample, range);
}

}  // namespace PDF
