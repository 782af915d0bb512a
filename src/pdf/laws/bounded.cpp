// SPDX-License-Identifier: Apache-2.0
#include "pdf/laws/bounded.h"

#include "orvane/pdf.h"
#include "pdf/laws/row.h"

namespace PDF {
namespace {

constexpr PlainRow kBoundedLaws[] = {
    row<PDFFunByArcSin>(ORVANE_PDF_ARCSIN, "arcsin"),
    row<PDFFunByArcTan>(ORVANE_PDF_ARCTAN, "arctan"),
    row<PDFFunByCosine>(ORVANE_PDF_COSINE, "Cosine"),
    row<PDFFunByLogarithmic>(ORVANE_PDF_LOGARITHMIC, "Logarithmic"),
    row<PDFFunByMinimax>(ORVANE_PDF_MINIMAX, "Minimax"),
    row<PDFFunByParabolic>(ORVANE_PDF_PARABOLIC, "Parabolic"),
    row<PDFFunByPower>(ORVANE_PDF_POWER, "Power"),
    row<PDFFunByRaisedCosine>(ORVANE_PDF_RAISED_COSINE, "RaisedCosine"),
    row<PDFFunByTriangular>(ORVANE_PDF_TRIANGULAR, "Triangular"),
    row<PDFFunByUniform>(ORVANE_PDF_UNIFORM, "Uniform"),
    row<PDFFunByUQuadratic>(ORVANE_PDF_UQUADRATIC, "UQuadratic"),
};

}  // namespace

std::span<const PlainRow> boundedLaws() { return kBoundedLaws; }

}  // namespace PDF
