// Committing the uncommitted samples after checking that the font's character set knows them.
#pragma once

#include <cstdint>

#include "screen/context/ScreenContext.h"
#include "screen/inspection/CharOverview.h"
#include "screen/inspection/SamplesGrid.h"
#include "screen/samples/SampleDeletion.h"

namespace dravik::screen {

// What CommitSamples answers instead of a count.
constexpr std::int16_t kCommitDeclined = -2;
constexpr std::int16_t kNothingToCommit = -3;

class SampleCommit {
  public:
    SampleCommit(ScreenContext& context, SampleDeletion& deletion, CharOverview& overview, SamplesGrid& grid)
        : context_(context), deletion_(deletion), overview_(overview), grid_(grid) {}

    // The number of samples committed, kCommitDeclined or kNothingToCommit; 0 after a failure. Offers to add
    // missing characters to the set; declining deletes the uncommitted samples.
    std::int16_t CommitSamples();

  private:
    ScreenContext& context_;
    SampleDeletion& deletion_;
    CharOverview& overview_;
    SamplesGrid& grid_;
};

}  // namespace dravik::screen
