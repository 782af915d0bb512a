// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "solver/moving_solver.h"

namespace Solver {

/// "SC": candidates are pulled to and pushed from an elite, the worst ones are replaced, and the best one walks. Two
/// modes differ in when the stall, mean and walk passes run. It has a run of its own.
class SocialContact final : public MovingSolver {
 public:
  explicit SocialContact(uint8_t kindMode) : MovingSolver("SC", 1), mode(kindMode) {}

  bool run() override;
  /// Multiple r of a unit vector h such that g + r*h makes the angle `deg` with the unit vector g; dot = g.h.
  static double coneRoot(double dot, double deg);

  uint8_t mode;
  int32_t period = 80;     ///< stalls between replacements
  int32_t stallCount = 0;  ///< of the stall pass; the continue test has its own
  double eliteRate = 0.1;
  double replaceRate = 0.5;
  double prevBest = kNoValue;
  std::uniform_int_distribution<int32_t> elitePick;
  std::vector<double> centre, span, zeroPoint;
  std::vector<Candidate> sorted;

 private:
  bool prepare();
  void iterate();
  void sortElite();
  Candidate elitePartner(const Candidate& c);
  void fold(std::vector<double>& trial, const std::vector<double>& ref);
  bool settle(const Candidate& c);
  void contact(const Candidate& c);
  bool push(const Candidate& c, const OptVariable& p);
  bool pull(const Candidate& c, const OptVariable& p);
  bool crossover(const Candidate& c, const OptVariable& p);
  bool cone(const Candidate& c, const OptVariable& p);
  void elitePass();
  void stallPass();
  void replaceStalled();
  void replaceWorst();
  void meanPass();
  void walkPass();
  bool walkPairs(double k);
  bool offerPair(const Candidate& c, const std::vector<double>& from, double k);
  void walkBest(double k);

  std::vector<double> g, h;  // scratch of cone
};

}  // namespace Solver
