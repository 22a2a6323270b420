#include "screen/fonts/dlgFontManager.h"

#include <algorithm>

#include "base/Conversions.h"
#include "tool/FontName.h"

namespace dravik::screen {

dlgFontManager::dlgFontManager(TraceLog& log, ui::Platform& platform, const JobFolder& jobs)
    : platform_(platform),
      jobs_(jobs),
      procedures_(log,
                  [this](std::string_view source, const Failure& failure) {
                      showStatus(std::string(source) + " err " + std::to_string(failure.number()) + " " +
                                 failure.description());
                  }),
      fontNew_(log, platform),
      fontName_(log, platform) {
    sbr.add("Text", "", 3000, true);
    form_.setLayout(ui::column({
        ui::item(LabelFont),
        ui::row(
            {ui::item(lbFonts).stretched().atLeast(4200, 3600),
             ui::column({ui::item(cmdNewFont), ui::item(cmdRenameFont), ui::item(cmdDuplicateFont),
                         ui::item(cmdDeleteFont), ui::space(), ui::item(OKButton), ui::item(CancelButton)})})
            .stretched(),
        ui::item(sbr),
    }));
    form_.defaultButton = &OKButton;
    form_.cancelButton = &CancelButton;
    form_.resizable = true;
    lbFonts.setAccessibleName("Available Fonts");
    cmdNewFont.setAccessKey('N');
    cmdRenameFont.setAccessKey('R');
    cmdDuplicateFont.setAccessKey('u');
    cmdDeleteFont.setAccessKey('D');
    OKButton.setAccessKey('S');

    form_.loading.subscribe([this] { Form_Load(); });
    form_.activated.subscribe([this] { giveFocus(); });
    lbFonts.click.subscribe([this] { lbFonts_Click(); });
    lbFonts.doubleClick.subscribe([this] { OKButton.press(); });
    cmdNewFont.click.subscribe([this] { cmdNewFont_Click(); });
    cmdDeleteFont.click.subscribe([this] { cmdDeleteFont_Click(); });
    cmdRenameFont.click.subscribe([this] {
        procedures_.run("dlgFontManager.cmdRenameFont_Click", "RenameFont",
                        [&] { DoRenameDupFont(kRename); });
    });
    cmdDuplicateFont.click.subscribe([this] {
        procedures_.run("dlgFontManager.cmdDuplicateFont_Click", "DuplidateFont",
                        [&] { DoRenameDupFont(kDuplicate); });
    });
    OKButton.click.subscribe([this] { OKButton_Click(); });
    CancelButton.click.subscribe([this] { CancelButton_Click(); });
}

void dlgFontManager::Form_Load() {
    procedures_.run("dlgFontManager.Form_Load", "Form_Load", [&] {
        chosen_ = false;
        fontsChanged_ = false;
        hasMadeFonts_ = false;
        madeFont_.clear();
        renamed_.clear();
        selectedName_.clear();
        showStatus("");
        RefreshFontList();
        if (const int found = indexOf(currentName_); found >= 0) lbFonts.setListIndex(found);
        showSelected();
    });
}

std::string dlgFontManager::GetFontName() const {
    return chosen_ ? selectedName_ : std::string();
}

std::string dlgFontManager::nameNow(std::string name) const {
    for (const auto& [from, to] : renamed_)
        if (name == from) name = to;
    return name;
}

void dlgFontManager::RefreshFontList() {
    procedures_.run("dlgFontManager.RefreshFontList", "RefreshFontList", [&] {
        tool().GetFontList();
        lbFonts.clear();
        lbFonts.setItems(tool().GetFontList());
        if (lbFonts.count() > 0 && selectedIndex_ >= lbFonts.count())
            selectedIndex_ = toInt16(lbFonts.count() - 1);
        lbFonts.setListIndex(lbFonts.count() > 0 ? selectedIndex_ : -1);
        if (lbFonts.listIndex() < 0) lbFonts_Click();
    });
}

bool dlgFontManager::FontExists(const std::string& name) const {
    return tool::fontExists(name, lbFonts.items());
}

std::string dlgFontManager::FontCreatedText(const std::string& fontName) const {
    try {
        return "Font created " + platform_.fileDateText(jobs_.fontFile(fontName));
    } catch (...) {
        return "Creation date unknown";
    }
}

void dlgFontManager::lbFonts_Click() {
    procedures_.run("dlgFontManager.lbFonts_Click", "lbFonts_Click", [&] {
        selectedName_ = lbFonts.text();
        const bool selected = lbFonts.listIndex() >= 0;
        if (selected) selectedIndex_ = toInt16(lbFonts.listIndex());
        showSelected();
        showStatus(selected               ? jobs_.fontFile(selectedName_)
                   : lbFonts.count() == 0 ? std::string("There is no font yet: make one with New")
                                          : std::string());
        lbFonts.setToolTip(selected ? FontCreatedText(selectedName_) : std::string());
    });
}

void dlgFontManager::cmdNewFont_Click() {
    procedures_.run("dlgFontManager.cmdNewFont_Click", "NewFont", [&] {
        fontNew_.nameBox().setText(lbFonts.text());
        platform_.showModal(fontNew_.form());
        const std::string name = fontNew_.FontName();
        const tool::CharacterSet set = fontNew_.GetInitCharSet();
        if (name.empty()) return;
        if (FontExists(name)) {
            const ui::Answer answer =
                platform_.messageBox({"Font name already exists. Overwrite?", "Name Conflict",
                                      ui::MessageBox::Buttons::YesNo, ui::MessageBox::Icon::Information});
            if (answer != ui::Answer::Yes) return;
        }
        tool().CreateFont(name);
        fontsChanged_ = true;
        hasMadeFonts_ = true;
        madeFont_ = name;
        RefreshFontList();
        selectFont(name);
        giveFocus();
        tool().SetCharacterSet(set);
        tool().SaveFont(name);
    });
}

void dlgFontManager::cmdDeleteFont_Click() {
    procedures_.run("dlgFontManager.cmdDeleteFont_Click", "DeleteFont", [&] {
        const std::string name = lbFonts.text();
        tool().DeleteFont(name);
        fontsChanged_ = true;
        if (name == madeFont_) madeFont_.clear();
        RefreshFontList();
        giveFocus();
        showStatus("Deleted font: " + name);
    });
}

void dlgFontManager::DoRenameDupFont(std::int16_t mode) {
    procedures_.run("dlgFontManager.DoRenameDupFont", "DoRenameDupFont", [&] {
        fontName_.nameBox().setText(lbFonts.text());
        platform_.showModal(fontName_.form());
        const std::string name = fontName_.FontName();
        if (name.empty()) return;
        if (FontExists(name)) {
            platform_.messageBox({"Font name already exists.", "Name Conflict", ui::MessageBox::Buttons::Ok,
                                  ui::MessageBox::Icon::Information});
            return;
        }
        const std::string old = lbFonts.text();
        if (mode == kRename) {
            tool().RenameFont(name, old);
            renamed_.emplace_back(old, name);
            if (old == madeFont_) madeFont_ = name;
        }
        if (mode == kDuplicate) tool().DuplicateFont(name, old);
        fontsChanged_ = true;
        RefreshFontList();
        selectFont(name);
        giveFocus();
    });
}

void dlgFontManager::OKButton_Click() {
    procedures_.run("dlgFontManager.OKButton_Click", "OKButton_Click", [&] {
        chosen_ = true;
        form_.unload();
    });
}

void dlgFontManager::CancelButton_Click() {
    procedures_.run("dlgFontManager.CancelButton_Click", "CancelButton_Click", [&] { form_.unload(); });
}

tool::FontTool& dlgFontManager::tool() const {
    if (!tool_) throw Failure(RuntimeError::ObjectNotSet);
    return *tool_;
}

void dlgFontManager::showStatus(const std::string& text) {
    sbr.panel("Text").setText(text);
}

// Nothing can be done to a font, nor one be taken, while none is chosen.
void dlgFontManager::showSelected() {
    for (ui::Button* button : {&cmdDuplicateFont, &cmdRenameFont, &cmdDeleteFont, &OKButton})
        button->setEnabled(lbFonts.listIndex() >= 0);
}

void dlgFontManager::giveFocus() {
    if (lbFonts.count() > 0)
        lbFonts.setFocus();
    else
        cmdNewFont.setFocus();
}

int dlgFontManager::indexOf(const std::string& name) const {
    int found = -1;
    for (int i = 0; i < lbFonts.count(); ++i)
        if (lbFonts.items()[static_cast<std::size_t>(i)] == name) found = i;
    return found;
}

void dlgFontManager::selectFont(const std::string& name) {
    if (const int found = indexOf(name); found >= 0) lbFonts.setListIndex(found);
}

}  // namespace dravik::screen
