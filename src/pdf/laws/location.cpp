// SPDX-License-Identifier: Apache-2.0
#include "pdf/laws/location.h"

#include "orvane/pdf.h"
#include "pdf/laws/row.h"

namespace PDF {
namespace {

constexpr PlainRow kLocationLaws[] = {
    row<PDFFunByCauchy>(ORVANE_PDF_CAUCHY, "Cauchy"),
    row<PDFFunByExtremeValueDown>(ORVANE_PDF_EXTREME_VALUE_LOWER, "ExtremeValueLower"),
    row<PDFFunByExtremeValueUp>(ORVANE_PDF_EXTREME_VALUE_UPPER, "ExtremeValueUpper"),
    row<PDFFunByExtremeValueZero>(ORVANE_PDF_EXTREME_VALUE_ZERO, "ExtremeValueZero"),
    row<PDFFunByGumbel>(ORVANE_PDF_GUMBEL, "Gumbel"),
    row<PDFFunByHalfLogistic>(ORVANE_PDF_HALF_LOGISTIC, "HalfLogistic"),
    row<PDFFunByHyperSecant>(ORVANE_PDF_HYPER_SECANT, "HyperSecant"),
    row<PDFFunByLaplace>(ORVANE_PDF_LAPLACE, "Laplace"),
    row<PDFFunBySigmod>(ORVANE_PDF_SIGMOD, "Sigmod"),
};

}  // namespace

std::span<const PlainRow> locationLaws() { return kLocationLaws; }

}  // namespace PDF
