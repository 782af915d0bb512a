// SPDX-License-Identifier: Apache-2.0
#include "network/train/dx_correction.h"

namespace NetWork {

void NetDxCorrectionByMaxStep_c::correct(std::span<double> dx) {
  const auto share = [this] { return uniform(*rng) * 0.19999999999999996 + 0.8; };
  for (double& d : dx) {
    if (d > maxStep)
      d = share() * maxStep;
    else if (d < -maxStep)
      d = share() * -maxStep;
  }
}

}  // namespace NetWork
