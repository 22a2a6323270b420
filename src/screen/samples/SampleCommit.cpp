#include "screen/samples/SampleCommit.h"

#include "base/Conversions.h"
#include "tool/IncludeRules.h"

namespace dravik::screen {

std::int16_t SampleCommit::CommitSamples() {
    ActScope act(context_, OperatorAct::Kind::Include);
    return context_.procedures.run("Dravikdlg.CommitSamples", "CommitSamples", [&]() -> std::int16_t {
        const auto uncommitted = context_.tool->GetUncommittedSamples();
        if (uncommitted.empty()) return kNothingToCommit;
        // More than can be counted fail before they are looked through.
        const std::int16_t count = toInt16(static_cast<double>(uncommitted.size()));
        const std::string missing =
            tool::missingCharacters(uncommitted, context_.screen.font.txtCharSet.text());
        if (!missing.empty()) {
            const ui::Answer answer = context_.platform.messageBox(
                {"Characters " + missing +
                     " are not in the font character set. Include these characters now?\r\r"
                     "Note: Selecting 'No' will remove samples added when Include was clicked.",
                 "Warning: Invalid Characters", ui::MessageBox::Buttons::YesNo});
            if (answer != ui::Answer::Yes) {
                deletion_.DeleteAllSamples(kDeleteUncommitted);
                return kCommitDeclined;
            }
            context_.screen.font.txtCharSet.setText(context_.screen.font.txtCharSet.text() + missing);
            context_.includes.added = missing;
            overview_.UpdateCharDisplay();
        }
        context_.tool->CommitNewSamples();
        for (const auto& character : uncommitted) act.sample(character);
        context_.includes.committed = static_cast<std::uint32_t>(uncommitted.size());
        context_.screen.numeric.cboDisplay.setListIndex(kDisplayCommitted);
        context_.screen.train.cmdTrain.setEnabled(true);
        grid_.FillSamplesArray();
        return count;
    });
}

}  // namespace dravik::screen
