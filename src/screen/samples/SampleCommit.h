// Committing the uncommitted samples after checking that the font's character set knows them.
#pragma once

#include <cstdint>

#include "screen/context/ToolBinding.h"
#include "screen/context/TrainingControls.h"
#include "screen/context/modErrors.h"
#include "screen/inspection/CharOverview.h"
#include "screen/inspection/SamplesGrid.h"
#include "screen/samples/SampleDeletion.h"

namespace dravik::screen {

// What CommitSamples answers instead of a count.
constexpr std::int16_t kCommitDeclined = -2;
constexpr std::int16_t kNothingToCommit = -3;

class SampleCommit {
  public:
    SampleCommit(const tool::ToolBinding& tool, modErrors& errors, ui::Platform& platform, FontControls& font,
                 TrainingControls& train, SampleDeletion& deletion, CharOverview& overview,
                 SamplesGrid& grid);

    // The number of samples committed, kCommitDeclined or kNothingToCommit; 0 after a failure. Offers to add
    // missing characters to the set; declining deletes the uncommitted samples.
    std::int16_t CommitSamples();

  private:
    const tool::ToolBinding& tool_;
    modErrors& errors_;
    ui::Platform& platform_;
    FontControls& font_;
    TrainingControls& train_;
    SampleDeletion& deletion_;
    CharOverview& overview_;
    SamplesGrid& grid_;
};

}  // namespace dravik::screen
