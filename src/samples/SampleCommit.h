// Committing the uncommitted samples after checking that the font's character set knows them.
#pragma once

#include <cstdint>

#include "inspection/CharOverview.h"
#include "inspection/SamplesGrid.h"
#include "samples/SampleDeletion.h"
#include "support/modErrors.h"
#include "tool/ToolBinding.h"
#include "training/TrainingControls.h"

namespace dravik {

// What CommitSamples answers instead of a count.
constexpr std::int16_t kCommitDeclined = -2;
constexpr std::int16_t kNothingToCommit = -3;

class SampleCommit {
  public:
    SampleCommit(const ToolBinding& tool, modErrors& errors, Platform& platform, FontControls& font,
                 TrainingControls& train, SampleDeletion& deletion, CharOverview& overview,
                 SamplesGrid& grid);

    // The number of samples committed, kCommitDeclined or kNothingToCommit; 0 after a failure. Offers to add
    // missing characters to the set; declining deletes the uncommitted samples.
    std::int16_t CommitSamples();

  private:
    const ToolBinding& tool_;
    modErrors& errors_;
    Platform& platform_;
    FontControls& font_;
    TrainingControls& train_;
    SampleDeletion& deletion_;
    CharOverview& overview_;
    SamplesGrid& grid_;
};

}  // namespace dravik
