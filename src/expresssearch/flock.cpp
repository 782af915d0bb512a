// SPDX-License-Identifier: Apache-2.0
#include "expresssearch/flock.h"

#include <cmath>

namespace Search {

void OptimizerByNbird_c::search(std::span<const double> start, FunctionRef<void(std::span<double>)> draw, double target,
                                FunctionRef<bool()> stopped) {
  birds.clear();
  best = 0;
  place.assign(start.begin(), start.end());
  step.assign(start.size(), 0.0);
  hatch(place);
  for (int32_t i = 1; i < settings.pop && bestError() > target && !stopped(); ++i) {
    draw(place);
    hatch(place);
  }
  int idle = 0;
  for (int32_t round = 0; round < settings.iter && (settings.flag == 0 || idle < settings.flag); ++round) {
    const double before = bestError();
    for (std::size_t i = 0; i < birds.size(); ++i) {
      if (target >= bestError() || stopped()) return;
      if (i != best) move(i, stopped);
    }
    idle = bestError() < before ? 0 : idle + 1;
  }
}

void OptimizerByNbird_c::hatch(std::span<const double> point) {
  solver.solve(point);
  birds.push_back({std::isfinite(solver.error) ? solver.error : 1e300, solver.var});
  if (birds.back().error < birds[best].error) best = birds.size() - 1;
}

/// Up to three tries of one bird; the first that betters it ends them.
void OptimizerByNbird_c::move(std::size_t i, FunctionRef<bool()> stopped) {
  Bird& bird = birds[i];
  for (int attempt = 0; attempt < 3 && !stopped(); ++attempt) {
    setStep(attempt, bird.point);
    solver.moveTo(bird.point, step, place);
    solver.solve(place);
    if (!(solver.error < bird.error)) continue;
    bird = {solver.error, solver.var};
    if (bird.error < bestError()) best = i;
    return;
  }
}

void OptimizerByNbird_c::setStep(int attempt, const std::vector<double>& point) {
  const std::vector<double>& goal = birds[best].point;
  const double shared = attempt == 1 ? uniform(rng) : 0.0;
  for (std::size_t k = 0; k < point.size(); ++k) {
    const double d = goal[k] - point[k];
    if (attempt == 1)
      step[k] = (shared + 0.5) * goal[k] - (shared + 0.5) * point[k];
    else
      step[k] = attempt == 0 ? d * (2.0 * uniform(rng) - 1.0) : d * (1.0 - uniform(rng));
  }
}

}  // namespace Search
