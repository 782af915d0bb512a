// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

using Row = std::vector<double>;

/// Rows of features, each with its class.
struct Samples {
  std::string id, title;
  std::string about;  ///< HTML
  std::vector<std::string> features{}, classes{};
  std::vector<Row> rows{};
  std::vector<std::size_t> labels{};  ///< into classes

  std::vector<std::size_t> pair{};  ///< the two features of the maps

  std::size_t size() const { return rows.size(); }
  /// Those that are listed.
  Samples part(const std::vector<std::size_t>& which) const;
  /// With the features that are listed alone.
  Samples only(const std::vector<std::size_t>& features) const;
};

/// The shipped sets, read from a folder; all, or the one that is named. Throws Complaint.
std::vector<Samples> shippedSets(const std::string& folder, const std::string& name);

/// The rows of a file, the class in the last column. Throws Complaint.
Samples readSamples(const std::string& path);

/// Takes the two features of the maps by their names, "a,b". Throws Complaint.
void choosePair(Samples& samples, const std::string& names);

/// Every sample's fold, so that each fold has its share of each class.
std::vector<int> foldsOf(const Samples& samples, int folds);

/// Mean and deviation of each feature, so that none outweighs the others.
class Standard {
 public:
  explicit Standard(const std::vector<Row>& rows);
  Row of(const Row& row) const;

 private:
  Row mean, deviation;
};
