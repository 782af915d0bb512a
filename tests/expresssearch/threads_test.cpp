// SPDX-License-Identifier: Apache-2.0
// Stopping and watching a search from another thread; ThreadSanitizer holds it too. A stop that is lost hangs the test.
#include <atomic>
#include <chrono>
#include <thread>

#include "expresssearch/host.h"

namespace {

struct Load {
  const char* name;
  uint8_t kind;
  int32_t maxTerms;
};

class Loads : public testing::TestWithParam<Load> {};

/// Watches a search for a while: errors never rise, and every result is whole.
void watch(const Search& search, int looks) {
  double least = 1e301;
  uint32_t count = 0;
  for (int i = 0; i < looks; ++i) {
    const uint32_t judged = search.judged(), accepted = search.accepted();
    EXPECT_GE(judged, count);
    count = judged;
    double info[7];
    const SearchResult* best = api_ES_GetBestResult(search.es, info);
    if (best != nullptr) {
      const Found found = read(best);
      EXPECT_EQ(found.info, Vector(info, info + 7));
      EXPECT_LE(found.error(), least);
      least = found.error();
    }
    if (accepted > 0) read(api_ES_GetResultByIndex(search.es, static_cast<int32_t>(accepted) - 1, nullptr));
    std::this_thread::sleep_for(std::chrono::microseconds(100));
  }
}

/// Searches that would take hours, on terms or on columns.
Search load(bool ofTerms) {
  std::mt19937 rng(9);
  std::vector<Vector> vectors;
  const int rows = ofTerms ? 50 : 2000;
  for (int i = 0; i < (ofTerms ? 60 : 2); ++i) vectors.push_back(draws(rng, rows, 0.5, 2.0));
  return ofTerms ? Search(vectors, draws(rng, rows, 0.5, 2.0)) : Search(vectors);
}

TEST_P(Loads, StopWithinAMomentAndShowConsistentResults) {
  for (int round = 0; round < 6; ++round) {
    Search search = load(GetParam().kind < ES_KIND_PEAKS);
    search.limits(round % 2 == 0 ? 1e-300 : 12.0, round % 2 == 0 ? 0.0 : 0.5);
    api_ES_SetBirdParam(search.es, 1000000, 1000000, 0);
    api_ES_SetSolverParam(search.es, 1000000, 1000000, 0.0, 0.0);
    std::atomic<bool> ended{false};
    std::thread worker([&] {
      search.run(GetParam().maxTerms, GetParam().kind);
      ended = true;
    });
    watch(search, 1 + round * 40);
    // The start clears the flag: until the end the host goes on asking.
    while (!ended) {
      api_ES_Stop(search.es);
      std::this_thread::sleep_for(std::chrono::microseconds(50));
    }
    worker.join();
    watch(search, 2);
  }
}

INSTANTIATE_TEST_SUITE_P(Kinds, Loads,
                         testing::Values(Load{"rational", 0, 9}, Load{"powers", 1, 10}, Load{"below", 2, 12},
                                         Load{"peaks", 16, 31}, Load{"pairs", 61, 8}, Load{"surface", 62, 9}),
                         [](const auto& info) { return info.param.name; });

TEST(Stages, StopBetweenAndInsideTheirSearches) {
  std::mt19937 rng(10);
  for (int round = 0; round < 6; ++round) {
    AutoExpressSearch* search = api_AutoES_Create();
    for (int i = 0; i < 40; ++i) api_AutoES_AddX(search, draws(rng, 50, 0.5, 2.0).data(), 50);
    api_AutoES_SetY(search, draws(rng, 50, 0.5, 2.0).data(), 50);
    std::atomic<bool> ended{false};
    // Short stages in even rounds, so that stops fall between them; one endless stage in odd ones.
    std::thread worker([&] {
      api_AutoES_Search(search, round % 2 == 0 ? 2 : 9, 100000);
      ended = true;
    });
    double least = 1e300;
    for (int i = 0; i < 40; ++i) {
      double out[7];
      const SearchResult* first = api_AutoES_GetResult(search, 0, out);
      if (first != nullptr) read(first);
      EXPECT_LE(api_AutoES_GetError(search), least);
      least = api_AutoES_GetError(search);
      api_AutoES_GetSearchNum(search);
      std::this_thread::sleep_for(std::chrono::microseconds(100));
    }
    while (!ended) {
      api_AutoES_Stop(search);
      std::this_thread::sleep_for(std::chrono::microseconds(50));
    }
    worker.join();
    api_FreeHandle(search);
  }
}

}  // namespace
