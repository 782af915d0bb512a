// SPDX-License-Identifier: Apache-2.0
// Every scalar function of the exports against its table of references, and the list of them against the headers.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "support/csv.h"
#include "support/functions.h"
#include "support/reference.h"

namespace {

class Family : public testing::TestWithParam<const char*> {};

TEST_P(Family, AgreesWithReferences) {
  for (const functions::Function& f : functions::all()) {
    if (f.family != GetParam() || !f.isExport()) continue;
    const functions::Call call = functions::callOf(f);
    checkReference("special/" + f.name + ".csv", [&](const ReferenceRow& row) {
      EXPECT_EQ(row.arguments.size(), static_cast<std::size_t>(f.count)) << f.name;
      return call(row.arguments.data());
    });
  }
}

INSTANTIATE_TEST_SUITE_P(Functions, Family,
                         testing::Values("elementary", "gamma", "error", "bessel", "elliptic", "hypergeometric", "zeta",
                                         "integrals", "polynomials"),
                         [](const auto& info) { return std::string(info.param); });

// Ends of domains, poles and values that are kept.
TEST(Functions, HaveTheirValuesAtEdges) {
  for (const Cells& row : readCsv("special/edges.csv")) {
    const auto number = [&](std::size_t i) { return std::strtod(row.at(i).c_str(), nullptr); };
    std::vector<double> arguments;
    for (std::size_t i = 2; i + 2 < row.size(); ++i) arguments.push_back(number(i));
    const double value = functions::find(row[0])(arguments.data()), expected = number(row.size() - 2);
    EXPECT_TRUE(value == expected || (std::isnan(value) && std::isnan(expected)) ||
                std::abs(value - expected) <= number(row.size() - 1))
        << row[0] << " " << row[1] << " at " << row[2] << ": " << value << ", not " << expected;
  }
}

// The list has a row, of the same arguments, for every scalar function that a header declares.
TEST(Functions, AreThoseOfTheHeaders) {
  const std::regex declaration(R"(ORVANE_API double (math_\w+)\(((?:(?:double|int32_t) \w+(?:,\s*)?)+)\);)");
  std::set<std::string> declared, listed;
  for (const auto& entry : std::filesystem::directory_iterator(ORVANE_HEADER_DIR)) {
    std::stringstream text;
    text << std::ifstream(entry.path()).rdbuf();
    const std::string all = text.str();
    for (std::sregex_iterator found(all.begin(), all.end(), declaration), end; found != end; ++found) {
      const std::string arguments = (*found)[2];
      const bool ofOrder = arguments.starts_with("int32_t");
      declared.insert((*found)[1].str() + (ofOrder ? " n" : " ") +
                      std::to_string(1 + std::ranges::count(arguments, ',')));
    }
  }
  for (const functions::Function& f : functions::all())
    if (f.isExport()) listed.insert(f.name + (f.ofOrder ? " n" : " ") + std::to_string(f.count));
  EXPECT_EQ(declared, listed);
}

}  // namespace
