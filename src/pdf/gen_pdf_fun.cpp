// SPDX-License-Identifier: Apache-2.0
#include "pdf/gen_pdf_fun.h"

#include <utility>

#include "orvane/pdf.h"
#include "pdf/table.h"

namespace PDF {
namespace {

template <class Self>
std::shared_ptr<BasePDFFun> make(const GenRow& row, std::shared_ptr<BasePDFFun> inner) {
  auto fun = std::make_shared<Self>(row, std::move(inner));
  fun->updateParam();
  return fun;
}

constexpr GenRow kGenRows[] = {
    {ORVANE_PDF_GEN_EXP,
     "GenExp",
     {1},
     make<PDFFunByGenExp>,
     {"PDF", R"(\dfrac{#a}{\exp(#a)-1}\psi(x)\exp(#a\Psi(x)))", R"(\dfrac{\exp(#a\Psi(x))-1}{\exp(#a)-1})", "", "",
      "#a>0"},
     {0},
     {36},
     {1}},
    {ORVANE_PDF_GEN_HALF_COS,
     "HalfCos",
     {},
     make<PDFFunByGenHalfCos>,
     {"PDF", R"(\dfrac{\pi}{2}\cos(\dfrac{\pi}{2}\Psi(x))\psi(x))", R"(\sin(\dfrac{\pi}{2}\Psi(x)))", "", "", ""},
     {},
     {},
     {}},
    {ORVANE_PDF_GEN_LOG,
     "GenLog",
     {1},
     make<PDFFunByGenLog>,
     {"PDF", R"(\dfrac{#a\psi(x)\Psi(x)^{#a-1}}{\log(2)(1+\Psi(x)^#a)})", R"(\dfrac{\log(1+\Psi(x)^#a)}{\log(2)})", "",
      "", "#a > 0"},
     {0},
     {100},
     {1}},
    {ORVANE_PDF_GEN_POWER,
     "GenPower",
     {0.5, 1, 1},
     make<PDFFunByGenPower>,
     {"PDF", R"(\psi(x)(#a#b\Psi(x)^{#b-1}+(1-#a)#c\Psi(x)^{#c-1}))", R"(#a\Psi(x)^#b+(1-#a)\Psi(x)^#c)", "", "",
      R"(0 \leq #a \leq 1, #b > 0, #c > 0)"},
     {0, 0, 0},
     {1, 36, 36},
     {0.5, 1, 2}},
    {ORVANE_PDF_GEN_SYM_COS,
     "GenSymCos",
     {},
     make<PDFFunByGenSymCos>,
     {"PDF", R"(\dfrac{\pi}{2}\cos(\pi(\Psi(x)-\dfrac{1}{2}))\psi(x))",
      R"(\dfrac{1}{2}(1+\sin(\pi(\Psi(x)-\dfrac{1}{2}))))", "", "", ""},
     {},
     {},
     {}},
};

consteval bool wellFormed(std::span<const GenRow> rows) {
  for (const GenRow& row : rows) {
    if (row.prefix.empty() || row.texts.density.empty() || row.texts.distribution.empty()) return false;
    for (const Defaults* own : {&row.lower, &row.upper, &row.start})
      if (own->size != row.defaults.size) return false;
    for (const GenRow& other : rows)
      if (&row != &other && (row.k == other.k || row.prefix == other.prefix)) return false;
  }
  return true;
}
static_assert(wellFormed(kGenRows));

}  // namespace

std::span<const GenRow> genRows() { return kGenRows; }

BaseGenPDFFun::BaseGenPDFFun(std::shared_ptr<BasePDFFun> inner) : baseFun(std::move(inner)) {
  baseFun->useQuantileStart = false;
}

void BaseGenPDFFun::setParamsRaw(const double* values) {
  baseFun->setParamsRaw(values);
  BasePDFFun::setParamsRaw(values + baseFun->paramSize());
}

void BaseGenPDFFun::getParamsRaw(double* values) const {
  baseFun->getParamsRaw(values);
  BasePDFFun::getParamsRaw(values + baseFun->paramSize());
}

std::string& BaseGenPDFFun::getLatex(std::string& out) const {
  std::string inner, own;
  baseFun->getLatex(inner);
  genLatex(own);
  return out = joinSheets(getName(), std::move(inner), baseFun->paramSize(), std::move(own), params.size());
}

TableGenPDFFun::TableGenPDFFun(const GenRow& genRow, std::shared_ptr<BasePDFFun> inner)
    : BaseGenPDFFun(std::move(inner)), row(genRow) {
  name = std::string(row.prefix) + "-" + baseFun->getName();
  params = row.defaults.list();
}

std::string& TableGenPDFFun::genLatex(std::string& out) const { return writeSheet(out, getName(), row.texts, params); }

void TableGenPDFFun::initRange(std::span<const double> x, std::span<const double> cdf, std::vector<double>& minVar,
                               std::vector<double>& maxVar, std::vector<double>& start) const {
  const std::size_t own = baseFun->paramSize();
  for (std::size_t i = 0; i < params.size(); ++i) {
    minVar[own + i] = row.lower.values[i];
    maxVar[own + i] = row.upper.values[i];
    start[own + i] = row.start.values[i];
  }
  baseFun->initRange(x, cdf, minVar, maxVar, start);
}

}  // namespace PDF
