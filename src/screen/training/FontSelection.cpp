#include "screen/training/FontSelection.h"

#include <algorithm>

#include "base/Conversions.h"
#include "base/Text.h"
#include "tool/Samples.h"

namespace dravik::screen {

FontSelection::FontSelection(tool::ToolBinding& tool, modErrors& errors, ui::Platform& platform,
                             FontControls& controls, TrainingControls& train, SamplesGrid& grid)
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
            keepShownFont();
            return;
        }
        const std::int16_t chosen = indexOf(name);
        tool_->LoadFont(name);
        if (chosen != kFontUnknown) m_FontIndex = chosen;
        controls_.lblSelectedFont.setCaption(name);
        if (fontLoaded) fontLoaded();
        fillItems();
        takeIndexOf(name);
    });
}

void FontSelection::keepShownFont() {
    if (m_FontIndex == kFontUnknown) return;
    const std::string& shown = controls_.lblSelectedFont.caption();
    const std::string name = manager_->nameNow(shown);
    m_FontIndex = indexOf(name);
    if (name == shown && m_FontIndex != kFontUnknown && !manager_->madeFont()) return;
    // A font made in the manager has become the tool's current one.
    if (m_FontIndex != kFontUnknown && manager_->madeFont()) tool_->LoadFont(name);
    controls_.lblSelectedFont.setCaption(name);
    if (fontLoaded) fontLoaded();
    fillItems();
    takeIndexOf(name);
}

std::int16_t FontSelection::indexOf(const std::string& font) {
    const auto fonts = tool_->GetFontList();
    const auto found = std::find(fonts.begin(), fonts.end(), font);
    return found == fonts.end() ? kFontUnknown : toInt16(static_cast<double>(found - fonts.begin()));
}

void FontSelection::takeIndexOf(const std::string& font) {
    const std::int16_t index = indexOf(font);
    if (index != kFontUnknown) m_FontIndex = index;
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
        tool::CharacterSet set = characters(controls_.txtCharSet.text());
        set.insert(set.begin(), "");
        tool_->SetCharacterSet(set);
        tool_.setFontChanged(true);
    });
}

bool FontSelection::ReadyToTrain() {
    bool result = false;
    errors_.procedures().run("Dravikdlg.ReadyToTrain", "ReadyToTrain", [&] {
        if (!tool_.m_ToolBound) return;
        const auto table = tool_->GetSampleData(tool::kAllCommitted, tool::kSampleFields);
        const int count = table ? table->upperRow() : -1;
        result = count >= 1;
    });
    return result;
}

bool FontSelection::FontTrained() {
    bool result = false;
    errors_.procedures().run("Dravikdlg.FontTrained", "FontTrained", [&] {
        if (!tool_.m_ToolBound) return;
        const auto table = tool_->GetSampleData(tool::kAllTrained, tool::kCharacterFields);
        std::int32_t sum = 0;
        for (int row = 1; table && row <= table->upperRow(); ++row)
            sum = toInt32(sum + table->number(row, 2));
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

}  // namespace dravik::screen
