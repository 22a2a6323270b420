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

void Inclusion::Include() {
    const ActScope act(context_, OperatorAct::Kind::Include);
    context_.procedures.run("Dravikdlg.Include", "Include", [&] {
        context_.errors.UserMsg("");
        if (context_.screen.sample.txtSampleInput.text().empty()) {
            context_.errors.UserMsg("Input text or characters, then click Include.");
            return;
        }
        context_.screen.sample.cmdInclude.setEnabled(false);
        context_.screen.train.prgTrain.setValue(0);
        AddSamples();
        if (!ReadyToCommit()) {
            deletion_.DeleteAllSamples(kDeleteUncommitted);
            context_.errors.UserMsg("Adjust OCR tool and try Include again.");
            context_.screen.sample.cmdInclude.setEnabled(true);
            return;
        }
        context_.includes.committed = 0;
        context_.includes.added.clear();
        const std::int16_t count = commit_.CommitSamples();
        if (count >= 0) context_.errors.UserMsg(std::to_string(count) + " samples included.");
        if (count == kCommitDeclined) context_.errors.UserMsg("Samples not included.");
        if (count == kNothingToCommit)
            context_.errors.UserMsg("Samples could not be included. Error counting samples.");

        context_.includes.m_LastInclude = context_.includes.m_PendingInclude;
        context_.screen.sbr.panel("LastInclude").setText(context_.includes.m_LastInclude);
        auto& undo = context_.screen.overview.tlbChars.button("Undo");
        undo.setToolTip("Undo include for '" + context_.includes.m_LastInclude + "'");
        undo.setEnabled(true);
        context_.includes.m_IncludedChars += context_.includes.m_LastInclude;
        deletion_.HighlightIncluded(context_.includes.m_IncludedChars);
        context_.screen.sample.cmdInclude.setEnabled(true);
    });
}

void Inclusion::AddSamples() {
    ActScope act(context_, OperatorAct::Kind::Include);
    context_.procedures.run("Dravikdlg.AddSamples", "AddSamples", [&] {
        ui::TextBox& input = context_.screen.sample.txtSampleInput;
        if (input.text().empty()) return;
        if (context_.screen.sample.chkCase.checked()) {
            const tool::CharacterCase letters = CharSetCase();
            if (tool::isSingleCase(letters)) input.setText(tool::inCase(input.text(), letters));
        }
        const std::string text = tool::textToInclude(input.text());
        context_.tool->IncludeSamples(text);
        act.changed();
        context_.includes.m_PendingInclude = text;
        context_.screen.numeric.cboDisplay.setListIndex(kDisplayUncommitted);
        context_.tool.setFontChanged(true);
        grid_.FillSamplesArray();
    });
}

tool::CharacterCase Inclusion::CharSetCase() {
    return context_.procedures.run("Dravikdlg.CharSetCase", "CharSetCase", [&] {
        return context_.tool.m_ToolBound ? tool::fontCase(*context_.tool) : tool::CharacterCase::Mixed;
    });
}

bool Inclusion::ReadyToCommit() {
    return context_.procedures.run("Dravikdlg.ReadyToCommit", "ReadyToCommit", [&] {
        const auto found =
            tool::foundSamples(context_.tool->GetSampleData(tool::kAllUncommitted, tool::kSampleFields));
        if (found.invalid) {
            context_.platform.messageBox(
                {"Error detected for character " + *found.invalid + "\r\rCharacters will not be included.",
                 "Error constant detected"});
            return false;
        }
        const std::string input = tool::textToInclude(context_.screen.sample.txtSampleInput.text());
        if (tool::countsMatch(input, found.characters)) return true;
        context_.platform.messageBox({"Input characters:\r" + counted(input) + "Found characters:\r" +
                                          counted(found.characters) + "Samples will not be included.",
                                      "Difference in character counts"});
        return false;
    });
}

void Inclusion::chkCase_Click() {
    context_.procedures.run("Dravikdlg.chkCase_Click", "CheckCase", [&] { context_.errors.UserMsg(""); });
}

void Inclusion::txtSampleInput_Change() {
    context_.procedures.run("Dravikdlg.txtSampleInput_Change", "SampleInput", [&] {
        const std::size_t count =
            characterCount(tool::textToInclude(context_.screen.sample.txtSampleInput.text()));
        context_.errors.UserMsg(count == 1 ? "1 character" : std::to_string(count) + " characters");
    });
}

}  // namespace dravik::screen
