// SPDX-License-Identifier: Apache-2.0
#include "filter/transform/fourier.h"

#include <algorithm>
#include <list>
#include <mutex>

#include "filter/transform/bluestein.h"
#include "filter/transform/large_fourier.h"
#include "filter/transform/scratch.h"
#include "filter/transform/stockham.h"

namespace Filter {

namespace {

/// A length that fits into the cache, in one go.
class SmallFourier final : public FourierPlan {
 public:
  explicit SmallFourier(std::size_t n) : transform(n) {}

  void run(ConstSplit in, Split out) const override {
    Scratch work(transform.size(), 1);
    transform.run(in, out, work.split(), 1);
  }
  std::size_t tableSize() const override { return transform.tableSize(); }

 private:
  Stockham transform;
};

std::shared_ptr<const FourierPlan> makePlan(std::size_t n) {
  if (!Stockham::fits(n)) return std::make_shared<Bluestein>(n);
  if (const LargeFourier::Factors factors = LargeFourier::factorsOf(n); factors.columns > 1)
    return std::make_shared<LargeFourier>(factors);
  return std::make_shared<SmallFourier>(n);
}

/// Plans used last, the latest in front.
class PlanStore {
 public:
  std::shared_ptr<const FourierPlan> find(std::size_t n) {
    const std::lock_guard<std::mutex> lock(mutex);
    const auto found = std::ranges::find(plans, n, &Entry::n);
    if (found == plans.end()) return nullptr;
    plans.splice(plans.begin(), plans, found);
    return found->plan;
  }

  void add(std::size_t n, std::shared_ptr<const FourierPlan> plan) {
    const std::lock_guard<std::mutex> lock(mutex);
    total += plan->tableSize();
    plans.push_front({n, std::move(plan)});
    while (total > kMostDoubles || plans.size() > kMostPlans) {
      total -= plans.back().plan->tableSize();
      plans.pop_back();
    }
  }

 private:
  static constexpr std::size_t kMostPlans = 32, kMostDoubles = 8'000'000;  // 64 MB

  struct Entry {
    std::size_t n;
    std::shared_ptr<const FourierPlan> plan;
  };

  std::mutex mutex;
  std::list<Entry> plans;
  std::size_t total = 0;
};

}  // namespace

std::shared_ptr<const FourierPlan> fourierPlan(std::size_t n) {
  static PlanStore store;
  if (auto known = store.find(n)) return known;
  auto plan = makePlan(n);
  store.add(n, plan);
  return plan;
}

void fourier(const FourierPlan& plan, std::size_t n, ConstSplit in, Split out, bool inverse) {
  if (!inverse) return plan.run(in, out);
  // The inverse is the transform with both parts exchanged on either side.
  plan.run({in.im, in.re}, {out.im, out.re});
  const double scale = 1.0 / static_cast<double>(n);
  for (std::size_t i = 0; i < n; ++i) {
    out.re[i] *= scale;
    out.im[i] *= scale;
  }
}

}  // namespace Filter
