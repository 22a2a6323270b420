#include "screen/samples/SampleCommit.h"

#include "base/Conversions.h"
#include "tool/IncludeRules.h"

namespace dravik::screen {

SampleCommit::SampleCommit(const tool::ToolBinding& tool, modErrors& errors, ui::Platform& platform,
                           FontControls& font, TrainingControls& train, SampleDeletion& deletion,
                           CharOverview& overview, SamplesGrid& grid)
    : tool_(tool),
      errors_(errors),
      platform_(platform),
      font_(font),
      train_(train),
      deletion_(deletion),
      overview_(overview),
      grid_(grid) {}

std::int16_t SampleCommit::CommitSamples() {
    std::int16_t result = 0;
    errors_.procedures().run("Dravikdlg.CommitSamples", "CommitSamples", [&] {
        const auto uncommitted = tool_->GetUncommittedSamples();
        if (uncommitted.empty()) {
            result = kNothingToCommit;
            return;
        }
        const std::string missing = tool::missingCharacters(uncommitted, font_.txtCharSet.text());
        if (!missing.empty()) {
            const ui::Answer answer = platform_.messageBox(
                {"Characters " + missing +
                     " are not in the font character set. Include these characters now?\r\r"
                     "Note: Selecting 'No' will remove samples added when Include was clicked.",
                 "Warning: Invalid Characters", ui::MessageBox::Buttons::YesNo});
            if (answer != ui::Answer::Yes) {
                deletion_.DeleteAllSamples(kDeleteUncommitted);
                result = kCommitDeclined;
                return;
            }
            font_.txtCharSet.setText(font_.txtCharSet.text() + missing);
            overview_.UpdateCharDisplay();
        }
        tool_->CommitNewSamples();
        grid_.controls().cboDisplay.setListIndex(kDisplayCommitted);
        train_.cmdTrain.setEnabled(true);
        grid_.FillSamplesArray();
        result = toInt16(static_cast<double>(uncommitted.size()));
    });
    return result;
}

}  // namespace dravik::screen
