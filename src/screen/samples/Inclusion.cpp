#include "screen/samples/Inclusion.h"

#include "base/Text.h"
#include "tool/IncludeRules.h"
#include "tool/Samples.h"

namespace dravik::screen {
namespace {

std::string counted(const std::string& characters) {
    return "    " + characters + " (" + std::to_string(characterCount(characters)) + " characters)\r\r";
}

}  // namespace

Inclusion::Inclusion(tool::ToolBinding& tool, modErrors& errors, ui::Platform& platform,
                     SampleControls& controls, TrainingControls& train, IncludeState& includes,
                     SampleCommit& commit, SampleDeletion& deletion, CharOverview& overview,
                     SamplesGrid& grid)
    : tool_(tool),
      errors_(errors),
      platform_(platform),
      controls_(controls),
      train_(train),
      includes_(includes),
      commit_(commit),
      deletion_(deletion),
      overview_(overview),
      grid_(grid) {}

void Inclusion::Include() {
    errors_.procedures().run("Dravikdlg.Include", "Include", [&] {
        errors_.UserMsg("");
        if (controls_.txtSampleInput.text().empty()) {
            errors_.UserMsg("Input text or characters, then click Include.");
            return;
        }
        controls_.cmdInclude.setEnabled(false);
        train_.prgTrain.setValue(0);
        AddSamples();
        if (!ReadyToCommit()) {
            deletion_.DeleteAllSamples(kDeleteUncommitted);
            errors_.UserMsg("Adjust OCR tool and try Include again.");
            controls_.cmdInclude.setEnabled(true);
            return;
        }
        const std::int16_t count = commit_.CommitSamples();
        if (count >= 0) errors_.UserMsg(std::to_string(count) + " samples included.");
        if (count == kCommitDeclined) errors_.UserMsg("Samples not included.");
        if (count == kNothingToCommit)
            errors_.UserMsg("Samples could not be included. Error counting samples.");

        includes_.m_LastInclude = includes_.m_PendingInclude;
        errors_.sbr().panel("LastInclude").setText(includes_.m_LastInclude);
        auto& undo = overview_.controls().tlbChars.button("Undo");
        undo.setToolTip("Undo include for '" + includes_.m_LastInclude + "'");
        undo.setEnabled(true);
        includes_.m_IncludedChars += includes_.m_LastInclude;
        deletion_.HighlightIncluded(includes_.m_IncludedChars);
        controls_.cmdInclude.setEnabled(true);
    });
}

void Inclusion::AddSamples() {
    errors_.procedures().run("Dravikdlg.AddSamples", "AddSamples", [&] {
        ui::TextBox& input = controls_.txtSampleInput;
        if (input.text().empty()) return;
        if (controls_.chkCase.checked()) {
            const tool::CharacterCase letters = CharSetCase();
            if (tool::isSingleCase(letters)) input.setText(tool::inCase(input.text(), letters));
        }
        const std::string text = tool::textToInclude(input.text());
        tool_->IncludeSamples(text);
        includes_.m_PendingInclude = text;
        grid_.controls().cboDisplay.setListIndex(kDisplayUncommitted);
        tool_.setFontChanged(true);
        grid_.FillSamplesArray();
    });
}

tool::CharacterCase Inclusion::CharSetCase() {
    auto result = tool::CharacterCase::Mixed;
    errors_.procedures().run("Dravikdlg.CharSetCase", "CharSetCase", [&] {
        if (tool_.m_ToolBound) result = tool::fontCase(*tool_);
    });
    return result;
}

bool Inclusion::ReadyToCommit() {
    bool result = false;
    errors_.procedures().run("Dravikdlg.ReadyToCommit", "ReadyToCommit", [&] {
        const auto found =
            tool::foundSamples(tool_->GetSampleData(tool::kAllUncommitted, tool::kSampleFields));
        if (found.invalid) {
            platform_.messageBox(
                {"Error detected for character " + *found.invalid + "\r\rCharacters will not be included.",
                 "Error constant detected"});
            return;
        }
        const std::string input = tool::textToInclude(controls_.txtSampleInput.text());
        result = tool::countsMatch(input, found.characters);
        if (result) return;
        platform_.messageBox({"Input characters:\r" + counted(input) + "Found characters:\r" +
                                  counted(found.characters) + "Samples will not be included.",
                              "Difference in character counts"});
    });
    return result;
}

void Inclusion::chkCase_Click() {
    errors_.procedures().run("Dravikdlg.chkCase_Click", "CheckCase", [&] { errors_.UserMsg(""); });
}

void Inclusion::txtSampleInput_Change() {
    errors_.procedures().run("Dravikdlg.txtSampleInput_Change", "SampleInput", [&] {
        const std::size_t count = characterCount(tool::textToInclude(controls_.txtSampleInput.text()));
        errors_.UserMsg(count == 1 ? "1 character" : std::to_string(count) + " characters");
    });
}

}  // namespace dravik::screen
