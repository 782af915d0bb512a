// SPDX-License-Identifier: Apache-2.0
#include "prog/exact/bounded_problem.h"

#include <algorithm>
#include <cmath>

#include "frame/numbers.h"
#include "prog/exact/whole_rows.h"

namespace LineProg {

namespace {

constexpr int kScalingPasses = 4;
constexpr double kEven = 16;  // a matrix whose entries lie within this factor of 1 is left as it is

// The group of a triple is one of its indices, `at` the other.
template <class Real>
void group(std::span<const Triple<Real>> triples, int groups, int Triple<Real>::*by, int Triple<Real>::*at,
           Grouped<Real>& grouped) {
  grouped.start.assign(static_cast<std::size_t>(groups) + 1, 0);
  for (const auto& triple : triples) ++grouped.start[triple.*by];
  int end = 0;
  for (int& start : grouped.start) start = end += start;
  grouped.entries.resize(triples.size());
  for (std::size_t k = triples.size(); k-- > 0;)  // backwards, so that the order within a group stays
    grouped.entries[--grouped.start[triples[k].*by]] = {triples[k].*at, triples[k].value};
}

double powerOfTwo(double x) { return std::exp2(std::round(std::log2(x))); }

// Divides rows and columns by the geometric means of their least and greatest entries, in turn. Columns of integer
// variables stay: their unit is 1.
void balance(std::span<Triple<double>> matrix, std::span<const BaseVar> variables, std::vector<double>& rowScale,
             std::vector<double>& columnScale) {
  const bool even = std::ranges::all_of(
      matrix, [](const auto& e) { return std::abs(e.value) < kEven && std::abs(e.value) > 1 / kEven; });
  for (int pass = 0; pass < (even ? 0 : kScalingPasses); ++pass) {
    for (const auto& [index, scale] :
         {std::pair{&Triple<double>::row, &rowScale}, std::pair{&Triple<double>::column, &columnScale}}) {
      std::vector<double> least(scale->size(), kInfinity), most(scale->size(), 0);
      for (const auto& entry : matrix) {
        const double size = std::abs(entry.value) * rowScale[entry.row] * columnScale[entry.column];
        least[entry.*index] = std::min(least[entry.*index], size);
        most[entry.*index] = std::max(most[entry.*index], size);
      }
      for (std::size_t i = 0; i < most.size(); ++i)
        if (most[i] > 0 && (scale == &rowScale || variables[i].varKind == kReal))
          (*scale)[i] /= powerOfTwo(std::sqrt(least[i]) * std::sqrt(most[i]));
    }
  }
  for (auto& entry : matrix) entry.value *= rowScale[entry.row] * columnScale[entry.column];
}

}  // namespace

template <class Real>
void groupByRow(std::span<const Triple<Real>> triples, int rows, Grouped<Real>& grouped) {
  group(triples, rows, &Triple<Real>::row, &Triple<Real>::column, grouped);
}

template <class Real>
void groupByColumn(std::span<const Triple<Real>> triples, int columns, Grouped<Real>& grouped) {
  group(triples, columns, &Triple<Real>::column, &Triple<Real>::row, grouped);
}

BoundedProblem::BoundedProblem(const LineProblem& problem)
    : rows(static_cast<int>(problem.constraints.size())),
      columns(static_cast<int>(problem.allVars.size())),
      scale(problem.allVars.size(), 1) {
  std::vector<Triple<double>> matrix;
  for (int i = 0; i < rows; ++i)
    for (const auto& [var, coefficient] : problem.constraints[i].coefs) matrix.push_back({i, var, coefficient});
  std::vector<double> rowScale(problem.constraints.size(), 1);
  balance(matrix, problem.allVars, rowScale, scale);
  groupByRow<double>(matrix, rows, byRow);
  groupByColumn<double>(matrix, columns, byColumn);

  lower.assign(total(), 0);
  upper.assign(total(), kInfinity);
  cost.assign(total(), 0);
  double most = 0;
  for (int j = 0; j < columns; ++j) {
    if (problem.allVars[j].varKind == kBinary) upper[j] = 1;
    cost[j] = -problem.objective[j] * scale[j];
    most = std::max(most, std::abs(cost[j]));
  }
  if (most > 0) costScale = 1 / powerOfTwo(most);
  for (double& c : cost) c *= costScale;
  for (int i = 0; i < rows; ++i) {
    const EquVar& row = problem.constraints[i];
    lower[columns + i] = -largestReachable(row, 1, problem.allVars) * rowScale[i];
    if (row.relation == kEqual) upper[columns + i] = largestReachable(row, -1, problem.allVars) * rowScale[i];
  }
}

template void groupByRow(std::span<const Triple<double>>, int, Grouped<double>&);
template void groupByRow(std::span<const Triple<long double>>, int, Grouped<long double>&);
template void groupByColumn(std::span<const Triple<double>>, int, Grouped<double>&);
template void groupByColumn(std::span<const Triple<long double>>, int, Grouped<long double>&);

}  // namespace LineProg
