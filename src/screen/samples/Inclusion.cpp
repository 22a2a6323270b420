#include "screen/samples/Inclusion.h"

#include <cmath>

#include "base/Conversions.h"
#include "base/Text.h"
#include "tool/Samples.h"

namespace dravik::screen {
namespace {

constexpr int kFirstFeatureColumn = 5;

// Negative, or a number that reads "1.#INF" or the like.
bool isInvalidFeature(const tool::Cell& cell) {
    if (const auto* number = std::get_if<double>(&cell)) return !std::isfinite(*number) || *number < 0;
    const std::string text = tool::cellText(cell);
    return leadingNumber(text) < 0 || text.find('#') != std::string::npos;
}

std::string counted(const std::string& characters) {
    return "    " + characters + " (" + std::to_string(characterCount(characters)) + " characters)\r\r";
}

}  // namespace

void Inclusion::Include() {
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
    context_.procedures.run("Dravikdlg.AddSamples", "AddSamples", [&] {
        ui::TextBox& input = context_.screen.sample.txtSampleInput;
        if (input.text().empty()) return;
        if (context_.screen.sample.chkCase.checked()) {
            const CharacterCase fontCase = CharSetCase();
            if (fontCase == CharacterCase::Upper) input.setText(upperCase(input.text()));
            if (fontCase == CharacterCase::Lower) input.setText(lowerCase(input.text()));
        }
        const std::string text = trimmed(input.text());
        context_.tool->IncludeSamples(text);
        context_.includes.m_PendingInclude = text;
        context_.screen.numeric.cboDisplay.setListIndex(kDisplayUncommitted);
        context_.tool.setFontChanged(true);
        grid_.FillSamplesArray();
    });
}

CharacterCase Inclusion::CharSetCase() {
    return context_.procedures.run("Dravikdlg.CharSetCase", "CharSetCase", [&] {
        if (!context_.tool.m_ToolBound) return CharacterCase::Mixed;
        const auto table = context_.tool->GetSampleData(tool::kAllTrained, tool::kCharacterFields);
        bool upper = false;
        bool lower = false;
        for (int row = 1; table && row <= table->upperRow(); ++row) {
            const std::int32_t code = toInt32(table->number(row, 1));
            upper |= code >= 'A' && code <= 'Z';
            lower |= code >= 'a' && code <= 'z';
        }
        if (upper != lower) return upper ? CharacterCase::Upper : CharacterCase::Lower;
        return upper ? CharacterCase::Mixed : CharacterCase::None;
    });
}

bool Inclusion::ReadyToCommit() {
    return context_.procedures.run("Dravikdlg.ReadyToCommit", "ReadyToCommit", [&] {
        const auto table = context_.tool->GetSampleData(tool::kAllUncommitted, tool::kSampleFields);
        std::string found;
        for (int row = 1; table && row <= table->upperRow(); ++row) {
            const std::string character = table->character(row);
            double sum = 0;
            for (int column = kFirstFeatureColumn; column <= table->upperColumn(); ++column) {
                const tool::Cell cell = table->cell(row, column);
                if (isInvalidFeature(cell)) {
                    context_.platform.messageBox(
                        {"Error detected for character " + character + "\r\rCharacters will not be included.",
                         "Error constant detected"});
                    return false;
                }
                const auto* number = std::get_if<double>(&cell);
                sum += number ? *number : leadingNumber(tool::cellText(cell));
            }
            if (sum > 0) found += character;
        }
        const std::string input = trimmed(context_.screen.sample.txtSampleInput.text());
        if (characterCount(found) == characterCount(input)) return true;
        context_.platform.messageBox({"Input characters:\r" + counted(input) + "Found characters:\r" +
                                          counted(found) + "Samples will not be included.",
                                      "Difference in character counts"});
        return false;
    });
}

void Inclusion::chkCase_Click() {
    context_.procedures.run("Dravikdlg.chkCase_Click", "CheckCase", [&] { context_.errors.UserMsg(""); });
}

void Inclusion::txtSampleInput_Change() {
    context_.procedures.run("Dravikdlg.txtSampleInput_Change", "SampleInput", [&] {
        const std::size_t count = characterCount(trimmed(context_.screen.sample.txtSampleInput.text()));
        context_.errors.UserMsg(count == 1 ? "1 character" : std::to_string(count) + " characters");
    });
}

}  // namespace dravik::screen
