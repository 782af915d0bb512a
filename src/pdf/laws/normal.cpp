// SPDX-License-Identifier: Apache-2.0
#include "pdf/laws/normal.h"

#include "orvane/pdf.h"
#include "pdf/laws/row.h"

namespace PDF {
namespace {

constexpr PlainRow kNormalLaws[] = {
    row<PDFFunByGenTransInverseRayleigh>(ORVANE_PDF_GEN_TRANS_INVERSE_RAYLEIGH, "GenTransInverseRayleigh"),
    row<PDFFunByGibrat>(ORVANE_PDF_GIBRAT, "Gibrat"),
    row<PDFFunByHalfNormal>(ORVANE_PDF_HALF_NORMAL, "HalfNormal"),
    row<PDFFunByInverseGaussian>(ORVANE_PDF_INVERSE_GAUSSIAN, "InverseGaussian"),
    row<PDFFunByInverseRayleigh>(ORVANE_PDF_INVERSE_RAYLEIGH, "InverseRayleigh"),
    row<PDFFunByLevy>(ORVANE_PDF_LEVY, "Levy"),
    row<PDFFunByMaxwell>(ORVANE_PDF_MAXWELL, "Maxwell"),
    row<PDFFunByNormal>(ORVANE_PDF_NORMAL, "Normal"),
    row<PDFFunByRayleigh>(ORVANE_PDF_RAYLEIGH, "Rayleigh"),
    row<PDFFunByTruncatedNormal>(ORVANE_PDF_TRUNCATED_NORMAL, "Truncated Normal"),
};

}  // namespace

std::span<const PlainRow> normalLaws() { return kNormalLaws; }

}  // namespace PDF
