// SPDX-License-Identifier: Apache-2.0
#include "pdf/laws/counting.h"

#include "orvane/pdf.h"
#include "pdf/laws/row.h"

namespace PDF {
namespace {

constexpr PlainRow kCountingLaws[] = {
    row<PDFFunByBernoulli>(ORVANE_PDF_BERNOULLI, "Bernoulli"),
    row<PDFFunByBinomial>(ORVANE_PDF_BINOMIAL, "Binomial"),
    row<PDFFunByPoisson>(ORVANE_PDF_POISSON, "Poisson"),
};

}  // namespace

std::span<const PlainRow> countingLaws() { return kCountingLaws; }

}  // namespace PDF
