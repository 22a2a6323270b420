#include "training/FontSelection.h"

#include <algorithm>

#include "base/Conversions.h"
#include "base/Text.h"
#include "tool/Samples.h"

namespace dravik {

FontSelection::FontSelection(ToolBinding& tool, modErrors& errors, Platform& platform, FontControls& controls,
                             TrainingControls& train, SamplesGrid& grid)
    : tool_(tool), errors_(errors), platform_(platform), controls_(controls), train_(train), grid_(grid) {}

void FontSelection::SelectFont() {
    errors_.procedures().run("Dravikdlg.SelectFont", "SelectFont", [&] {
        train_.prgTrain.setValue(0);
        if (!manager_) manager_ = std::make_unique<dlgFontManager>(errors_.procedures().log());
        manager_->SetDravikTool(&*tool_);
        manager_->SetFontSelected(m_FontIndex);
        platform_.showModal(manager_->form());
        const std::string name = manager_->GetFontName();
        if (name.empty()) {
            // A font made in the manager became the tool's current one; the screen still shows the one
            // before. Loaded again, that one is as last saved: includes since then are gone and cannot be
            // undone.
            if (!manager_->madeFont() || m_FontIndex == kFontUnknown) return;
            tool_->LoadFont(controls_.lblSelectedFont.caption());
            if (fontLoaded) fontLoaded();
            fillItems();
            return;
        }
        const auto fonts = tool_->GetFontList();
        const auto chosen = std::find(fonts.begin(), fonts.end(), name);
        tool_->LoadFont(name);
        if (chosen != fonts.end()) m_FontIndex = toInt16(static_cast<double>(chosen - fonts.begin()));
        controls_.lblSelectedFont.setCaption(name);
        if (fontLoaded) fontLoaded();
        fillItems();
    });
}

void FontSelection::txtCharSet_Change() {
    errors_.procedures().run("Dravikdlg.txtCharSet_Change", "SetupNewCharSet", [&] {
        if (controls_.txtCharSet.locked()) return;
        SetupNewCharSet();
        grid_.FillSamplesArray();
    });
}

void FontSelection::SetupNewCharSet() {
    errors_.procedures().run("Dravikdlg.SetupNewCharSet", "SetupNewCharSet", [&] {
        CharacterSet set = characters(controls_.txtCharSet.text());
        set.insert(set.begin(), "");
        tool_->SetCharacterSet(set);
        tool_.setFontChanged(true);
    });
}

bool FontSelection::ReadyToTrain() {
    bool result = false;
    errors_.procedures().run("Dravikdlg.ReadyToTrain", "ReadyToTrain", [&] {
        if (!tool_.m_ToolBound) return;
        const auto table = tool_->GetSampleData(kAllCommitted, kSampleFields);
        const int count = table ? table->upperRow() : -1;
        result = count >= 1;
    });
    return result;
}

bool FontSelection::FontTrained() {
    bool result = false;
    errors_.procedures().run("Dravikdlg.FontTrained", "FontTrained", [&] {
        if (!tool_.m_ToolBound) return;
        const auto table = tool_->GetSampleData(kAllTrained, kCharacterFields);
        std::int32_t sum = 0;
        for (int row = 1; table && row <= table->upperRow(); ++row) sum = toInt32(sum + table->number(row, 2));
        result = sum >= 1;
    });
    return result;
}

std::string FontSelection::FontTrainDate(const std::string& Font) {
    errors_.procedures().trace("Dravikdlg.FontTrainDate");
    try {
        if (!tool_.tool) throw Failure(RuntimeError::ObjectNotSet);
        const std::string start = FontTrained() ? "Trained on " : "Not trained. Created ";
        return start + platform_.fileDateText(errors_.procedures().log().folder().fontFile(Font));
    } catch (...) {
        return "unknown";
    }
}

}  // namespace dravik
