#include "screen/training/FontSelection.h"

#include <algorithm>

#include "base/Conversions.h"
#include "base/Text.h"
#include "tool/Samples.h"

namespace dravik::screen {

void FontSelection::SelectFont() {
    context_.procedures.run("Dravikdlg.SelectFont", "SelectFont", [&] {
        context_.screen.train.prgTrain.setValue(0);
        if (!manager_)
            manager_ = std::make_unique<dlgFontManager>(context_.log, context_.platform, context_.jobs);
        // A host may bind another step while the manager is open: its fonts were not those offered.
        const tool::StepPtr step = context_.tool.tool;
        manager_->SetDravikTool(&*context_.tool);
        manager_->SetFontSelected(
            context_.tool.m_FontIndex,
            context_.tool.fontLoaded ? context_.screen.font.lblSelectedFont.caption() : std::string());
        context_.platform.showModal(manager_->form());
        manager_->SetDravikTool(nullptr);
        if (context_.tool.tool != step) return;
        const std::string name = manager_->GetFontName();
        if (name.empty()) {
            keepShownFont();
            return;
        }
        // The font shown keeps the name that it has now, even where the chosen one cannot be loaded.
        ui::Label& shown = context_.screen.font.lblSelectedFont;
        if (context_.tool.fontLoaded) shown.setCaption(manager_->nameNow(shown.caption()));
        load(name);
    });
}

void FontSelection::load(const std::string& font) {
    const std::int16_t chosen = indexOf(font);
    context_.tool->LoadFont(font);
    if (chosen != kFontUnknown) context_.tool.m_FontIndex = chosen;
    show(font);
}

void FontSelection::ShowFont(const std::string& font) {
    context_.procedures.run("Dravikdlg.ShowFont", "ShowFont", [&] {
        if (!font.empty()) return load(font);
        context_.tool.m_FontIndex = kFontUnknown;
        context_.tool.fontLoaded = false;
        if (fontLoaded) fontLoaded();
        fillItems();
    });
}

void FontSelection::show(const std::string& font) {
    context_.tool.fontLoaded = true;
    context_.screen.font.lblSelectedFont.setCaption(font);
    if (fontLoaded) fontLoaded();
    fillItems();
    takeIndexOf(font);
}

void FontSelection::keepShownFont() {
    if (!manager_->fontsChanged()) return;
    const bool none = !context_.tool.fontLoaded;
    const std::string shown = none ? "" : context_.screen.font.lblSelectedFont.caption();
    const std::string name = none ? manager_->madeFont() : manager_->nameNow(shown);
    if (name.empty()) return;
    context_.tool.m_FontIndex = indexOf(name);
    const bool gone = context_.tool.m_FontIndex == kFontUnknown;
    if (gone) {
        context_.tool.fontLoaded = false;
        context_.tool.setFontChanged(false);
        if (fontLoaded) fontLoaded();
        fillItems();
        return;
    }
    // A font made in the manager has become the tool's current one.
    const bool loads = !none && manager_->hasMadeFonts();
    if (loads) context_.tool->LoadFont(name);
    if (none || loads || name != shown) show(name);
}

std::int16_t FontSelection::indexOf(const std::string& font) {
    const auto fonts = context_.tool->GetFontList();
    const auto found = std::find(fonts.begin(), fonts.end(), font);
    return found == fonts.end() ? kFontUnknown : toInt16(static_cast<double>(found - fonts.begin()));
}

void FontSelection::takeIndexOf(const std::string& font) {
    const std::int16_t index = indexOf(font);
    if (index != kFontUnknown) context_.tool.m_FontIndex = index;
}

void FontSelection::txtCharSet_Change() {
    const ActScope act(context_, OperatorAct::Kind::CharacterSet);
    context_.procedures.run("Dravikdlg.txtCharSet_Change", "SetupNewCharSet", [&] {
        if (context_.screen.font.txtCharSet.locked()) return;
        SetupNewCharSet();
        grid_.FillSamplesArray();
    });
}

void FontSelection::SetupNewCharSet() {
    ActScope act(context_, OperatorAct::Kind::CharacterSet);
    context_.procedures.run("Dravikdlg.SetupNewCharSet", "SetupNewCharSet", [&] {
        const auto typed = characters(context_.screen.font.txtCharSet.text());
        tool::CharacterSet set = typed;
        set.insert(set.begin(), "");
        context_.tool->SetCharacterSet(set);
        act.characterSet(typed);
        context_.tool.setFontChanged(true);
    });
}

bool FontSelection::ReadyToTrain() {
    return context_.procedures.run("Dravikdlg.ReadyToTrain", "ReadyToTrain", [&] {
        if (!context_.tool.m_ToolBound) return false;
        const auto table = context_.tool->GetSampleData(tool::kAllCommitted, tool::kSampleFields);
        return table && table->upperRow() >= 1;
    });
}

bool FontSelection::FontTrained() {
    return context_.procedures.run("Dravikdlg.FontTrained", "FontTrained", [&] {
        if (!context_.tool.m_ToolBound) return false;
        const auto table = context_.tool->GetSampleData(tool::kAllTrained, tool::kCharacterFields);
        std::int32_t sum = 0;
        for (int row = 1; table && row <= table->upperRow(); ++row)
            sum = toInt32(sum + table->number(row, 2));
        return sum >= 1;
    });
}

std::string FontSelection::FontTrainDate(const std::string& Font) {
    context_.procedures.trace("Dravikdlg.FontTrainDate");
    try {
        if (!context_.tool.tool) throw Failure(RuntimeError::ObjectNotSet);
        const std::string start = FontTrained() ? "Trained on " : "Not trained. Created ";
        return start + context_.platform.fileDateText(context_.jobs.fontFile(Font));
    } catch (...) {
        return "unknown";
    }
}

}  // namespace dravik::screen
