// SPDX-License-Identifier: Apache-2.0
#include "pdf/laws/gamma.h"

#include "orvane/pdf.h"
#include "pdf/laws/row.h"

namespace PDF {
namespace {

constexpr PlainRow kGammaLaws[] = {
    row<PDFFunByAmorosoLower>(ORVANE_PDF_AMOROSO_LOWER, "Amoroso Lower"),
    row<PDFFunByAmorosoUpper>(ORVANE_PDF_AMOROSO_UPPER, "Amoroso Upper"),
    row<PDFFunByChi>(ORVANE_PDF_CHI, "Chi"),
    row<PDFFunByChiSquared>(ORVANE_PDF_CHI_SQUARED, "ChiSquared"),
    row<PDFFunByGamma>(ORVANE_PDF_GAMMA, "Gamma"),
    row<PDFFunByInvertedBeta>(ORVANE_PDF_INVERTED_BETA, "InvertedBeta"),
    row<PDFFunByInvertedGamma>(ORVANE_PDF_INVERTED_GAMMA, "InvertedGamma"),
    row<PDFFunByNakagami>(ORVANE_PDF_NAKAGAMI, "Nakagami"),
    row<PDFFunByStudentsT>(ORVANE_PDF_STUDENTS_T, "StudentsT"),
    row<PDFFunBySymGenNormal>(ORVANE_PDF_SYM_GEN_NORMAL, "SymGenNormal"),
};

}  // namespace

std::span<const PlainRow> gammaLaws() { return kGammaLaws; }

}  // namespace PDF
