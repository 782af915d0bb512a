// SPDX-License-Identifier: Apache-2.0
// Stopping and watching a search from another thread; ThreadSanitizer holds it too. A stop that is lost hangs the test.
#include <atomic>
#include <chrono>
#include <thread>

#include "expresssearch/host.h"

namespace {

/// Runs `work` on a thread of its own, looks `looks` times meanwhile, then asks for the stop until it ends: a start
/// clears the flag.
template <class Work, class Look, class Stop>
void watched(int looks, Work work, Look look, Stop stop) {
  std::atomic<bool> ended{false};
  std::thread worker([&] {
    work();
    ended = true;
  });
  const auto rest = [] { std::this_thread::sleep_for(std::chrono::microseconds(100)); };
  for (int i = 0; i < looks; ++i, rest()) look();
  for (; !ended; rest()) stop();
  worker.join();
  look();
}

TEST(Searches, StopWithinAMomentAndShowConsistentResults) {
  struct Load {
    int kind;
    int32_t maxTerms;
  };
  for (const Load& load : {Load{0, 9}, {1, 10}, {2, 12}, {16, 31}, {61, 8}, {62, 9}})
    for (int round = 0; round < 6; ++round) {
      SCOPED_TRACE(load.kind);
      const bool ofTerms = load.kind < ES_KIND_PEAKS;  // searches that would take hours
      Search search(drawnTerms(ofTerms ? 60 : 0, 50), ofTerms ? drawnTerms(1, 50, 12)[0] : Vector());
      if (!ofTerms) search.addColumns(drawnTerms(2, 2000));
      search.limits(round % 2 == 0 ? 1e-300 : 12.0, round % 2 == 0 ? 0.0 : 0.5);
      api_ES_SetBirdParam(search.es, 1000000, 1000000, 0);
      api_ES_SetSolverParam(search.es, 1000000, 1000000, 0.0, 0.0);
      double least = 1e301;
      uint32_t count = 0;
      const auto look = [&] {
        const uint32_t judged = search.judged(), accepted = search.accepted();
        EXPECT_GE(judged, count);
        count = judged;
        double info[7];
        if (const SearchResult* best = api_ES_GetBestResult(search.es, info)) {
          const Found found = read(best);
          EXPECT_EQ(found.info, Vector(info, info + 7));
          EXPECT_LE(found.error(), least);
          least = found.error();
        }
        if (accepted > 0) read(api_ES_GetResultByIndex(search.es, static_cast<int32_t>(accepted) - 1, nullptr));
      };
      watched(
          1 + round * 40, [&] { search.run(load.maxTerms, load.kind); }, look, [&] { api_ES_Stop(search.es); });
    }
}

TEST(Stages, StopBetweenAndInsideTheirSearches) {
  for (int round = 0; round < 6; ++round) {
    AutoExpressSearch* search = api_AutoES_Create();
    for (const Vector& term : drawnTerms(40, 50)) api_AutoES_AddX(search, term.data(), 50);
    api_AutoES_SetY(search, drawnTerms(1, 50, 12)[0].data(), 50);
    double least = 1e300;
    const auto look = [&] {
      if (const SearchResult* first = api_AutoES_GetResult(search, 0, nullptr)) read(first);
      const double error = api_AutoES_GetError(search);
      EXPECT_LE(error, least);
      least = error;
      api_AutoES_GetSearchNum(search);
    };
    // Short stages in even rounds, so that stops fall between them; one endless stage in odd ones.
    watched(
        40, [&] { api_AutoES_Search(search, round % 2 == 0 ? 2 : 9, 100000); }, look, [&] { api_AutoES_Stop(search); });
    api_FreeHandle(search);
  }
}

}  // namespace
