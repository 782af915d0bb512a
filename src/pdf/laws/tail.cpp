// SPDX-License-Identifier: Apache-2.0
#include "pdf/laws/tail.h"

#include "orvane/pdf.h"
#include "pdf/laws/row.h"

namespace PDF {
namespace {

constexpr PlainRow kTailLaws[] = {
    row<PDFFunByBenktanderTypeII>(ORVANE_PDF_BENKTANDER_TYPE_II, "BenktanderTypeII"),
    row<PDFFunByBurr>(ORVANE_PDF_BURR, "Burr"),
    row<PDFFunByExponential>(ORVANE_PDF_EXPONENTIAL, "Exponential"),
    row<PDFFunByExponentialLogarithmic>(ORVANE_PDF_EXPONENTIAL_LOGARITHMIC, "ExponentialLogarithmic"),
    row<PDFFunByExpPower>(ORVANE_PDF_EXP_POWER, "ExpPower"),
    row<PDFFunByExpWeibull>(ORVANE_PDF_EXP_WEIBULL, "ExpWeibull"),
    row<PDFFunByGumbelType2>(ORVANE_PDF_FRECHET, "Frechet"),
    row<PDFFunByGenPareto>(ORVANE_PDF_GEN_PARETO, "GenPareto"),
    row<PDFFunByGompertz>(ORVANE_PDF_GOMPERTZ, "Gompertz"),
    row<PDFFunByLomax>(ORVANE_PDF_LOMAX, "Lomax"),
    row<PDFFunByMakeham>(ORVANE_PDF_MAKEHAM, "Makeham"),
    row<PDFFunByMuth>(ORVANE_PDF_MUTH, "Muth"),
    row<PDFFunByPareto>(ORVANE_PDF_PARETO, "Pareto"),
    row<PDFFunByWeibull>(ORVANE_PDF_WEIBULL, "Weibull"),
};

}  // namespace

std::span<const PlainRow> tailLaws() { return kTailLaws; }

}  // namespace PDF
