// SPDX-License-Identifier: Apache-2.0
#include "samples.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <numeric>
#include <random>

#include "complaint.h"
#include "csv.h"
#include "page.h"
#include "svg_plot.h"

namespace {

constexpr std::size_t kMostClasses = 8;  // as many as the page has colours

struct Shipped {
  const char *id, *title, *about, *pair;
};

constexpr Shipped kShipped[] = {
    {"iris", "Three kinds of iris",
     "Sepals and petals of 150 irises in centimetres, measured by E. Anderson, published by R. A. Fisher (Annals of "
     "Eugenics 7, 1936, 179). UCI Machine Learning Repository, CC BY 4.0.",
     "petal length,petal width"},
    {"wine", "Wines of three cultivars",
     "13 chemical properties of 178 wines from one region of Italy, by M. Forina and others (PARVUS, Genoa 1988). UCI "
     "Machine Learning Repository, CC BY 4.0.",
     "flavanoids,color_intensity"},
    {"breast_cancer", "Tumours of the breast, malignant or benign",
     "30 properties of cell nuclei in 569 images of fine needle aspirates, by W. H. Wolberg, W. N. Street and O. L. "
     "Mangasarian, University of Wisconsin 1995. UCI Machine Learning Repository, CC BY 4.0.",
     "worst concave points,worst area"},
};

}  // namespace

Samples Samples::part(const std::vector<std::size_t>& which) const {
  Samples out = *this;
  out.rows.clear();
  out.labels.clear();
  for (const std::size_t i : which) out.rows.push_back(rows[i]), out.labels.push_back(labels[i]);
  return out;
}

Samples Samples::only(const std::vector<std::size_t>& chosen) const {
  Samples out = *this;
  out.features.clear();
  for (const std::size_t k : chosen) out.features.push_back(features[k]);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    out.rows[i].clear();
    for (const std::size_t k : chosen) out.rows[i].push_back(rows[i][k]);
  }
  return out;
}

Samples readSamples(const std::string& path) {
  const CsvTable table = readTable(path, true);
  if (table.columns.size() < 2) throw Complaint(path + ": a map needs two columns of numbers before the class");
  Samples samples{.id = "own", .title = path, .about = "The last column of <code>" + escaped(path) + "</code>."};
  samples.features.assign(table.names.begin(), table.names.end() - 1);
  samples.pair = {0, 1};
  for (std::size_t i = 0; i < table.rows(); ++i) {
    Row& row = samples.rows.emplace_back();
    for (const Row& column : table.columns) row.push_back(column[i]);
    const auto found = std::find(samples.classes.begin(), samples.classes.end(), table.texts[i]);
    samples.labels.push_back(static_cast<std::size_t>(found - samples.classes.begin()));
    if (found == samples.classes.end()) samples.classes.push_back(table.texts[i]);
    if (samples.classes.size() > kMostClasses)
      throw Complaint(path + ": column " + inQuotes(table.names.back()) + " has more than 8 classes, such as " +
                      inQuotes(samples.classes.front()) + " and " + inQuotes(table.texts[i]));
  }
  if (samples.classes.size() < 2)
    throw Complaint(path + ": column " + inQuotes(table.names.back()) + " has the class " +
                    inQuotes(samples.classes.front()) + " throughout, two are needed");
  return samples;
}

std::vector<Samples> shippedSets(const std::string& folder, const std::string& name) {
  std::vector<Samples> sets;
  std::string names;
  for (const Shipped& shipped : kShipped) {
    names += std::string(names.empty() ? "" : ", ") + shipped.id;
    if (!name.empty() && name != shipped.id) continue;
    Samples& samples =
        sets.emplace_back(readSamples((std::filesystem::path(folder) / (std::string(shipped.id) + ".csv")).string()));
    samples.id = shipped.id;
    samples.title = shipped.title;
    samples.about = shipped.about;
    choosePair(samples, shipped.pair);
  }
  if (sets.empty()) throw Complaint("no set is called " + inQuotes(name) + "; there are " + names);
  return sets;
}

void choosePair(Samples& samples, const std::string& names) {
  const std::size_t comma = names.find(',');
  const std::string parts[] = {names.substr(0, comma), comma == std::string::npos ? "" : names.substr(comma + 1)};
  for (std::size_t k = 0; k < 2; ++k) {
    const auto found = std::find(samples.features.begin(), samples.features.end(), parts[k]);
    if (found == samples.features.end()) throw Complaint("no feature is called " + inQuotes(parts[k]));
    samples.pair[k] = static_cast<std::size_t>(found - samples.features.begin());
  }
  if (samples.pair[0] == samples.pair[1]) throw Complaint("a map needs two different features, not " + inQuotes(names));
}

std::vector<int> foldsOf(const Samples& samples, int folds) {
  std::vector<std::size_t> order(samples.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::shuffle(order.begin(), order.end(), std::mt19937(1));
  std::vector<int> fold(samples.size()), next(samples.classes.size(), 0);
  for (const std::size_t i : order) fold[i] = next[samples.labels[i]]++ % folds;
  for (std::size_t k = 0; k < samples.classes.size(); ++k)
    if (next[k] < folds)
      throw Complaint("class " + inQuotes(samples.classes[k]) + " has " + std::to_string(next[k]) +
                      " samples, fewer than " + std::to_string(folds) + " folds");
  return fold;
}

Standard::Standard(const std::vector<Row>& rows) : mean(rows.front().size()), deviation(mean.size()) {
  const auto n = static_cast<double>(rows.size());
  for (const Row& row : rows)
    for (std::size_t k = 0; k < mean.size(); ++k) mean[k] += row[k] / n;
  for (const Row& row : rows)
    for (std::size_t k = 0; k < mean.size(); ++k) deviation[k] += (row[k] - mean[k]) * (row[k] - mean[k]) / n;
  for (double& d : deviation) d = d > 0 ? std::sqrt(d) : 1;
}

Row Standard::of(const Row& row) const {
  Row out(row.size());
  for (std::size_t k = 0; k < row.size(); ++k) out[k] = (row[k] - mean[k]) / deviation[k];
  return out;
}
