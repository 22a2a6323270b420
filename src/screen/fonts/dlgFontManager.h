// The font manager: lists the tool's fonts, makes, renames, duplicates and deletes them, and lets the
// operator choose one.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "base/JobFolder.h"
#include "screen/context/Procedure.h"
#include "screen/fonts/dlgFontName.h"
#include "screen/fonts/dlgFontNew.h"
#include "tool/FontTool.h"
#include "ui/Bars.h"
#include "ui/Form.h"
#include "ui/Label.h"
#include "ui/ListControls.h"

namespace dravik::screen {

class dlgFontManager {
  public:
    // All of them outlive the form.
    dlgFontManager(TraceLog& log, ui::Platform& platform, const JobFolder& jobs);

    ui::Form& form() noexcept { return form_; }

    // The tool must outlive the form's use of it.
    void SetDravikTool(tool::FontTool* tool) noexcept { tool_ = tool; }
    // The list index to select when the form comes up, cut to the list; the font of that name where there is
    // one, since the list may have changed since the index was taken.
    void SetFontSelected(std::int16_t index, std::string name) {
        selectedIndex_ = index;
        currentName_ = std::move(name);
    }
    // The chosen name; "" unless the operator pressed Select.
    std::string GetFontName() const;
    // Since the form last came up: a font was made, renamed, duplicated or deleted.
    bool fontsChanged() const noexcept { return fontsChanged_; }
    // One was made, which made it the tool's current one.
    bool hasMadeFonts() const noexcept { return hasMadeFonts_; }
    // The one made last, under its present name; "" when there is none, or none any more.
    const std::string& madeFont() const noexcept { return madeFont_; }
    // What a font that had this name when the form came up is called now.
    std::string nameNow(std::string name) const;

    void RefreshFontList();
    // True when a list entry equals the name, letter case aside.
    bool FontExists(const std::string& name) const;
    // "Font created " and the date of the font's file, or "Creation date unknown".
    std::string FontCreatedText(const std::string& fontName) const;

  private:
    static constexpr std::int16_t kRename = 1;
    static constexpr std::int16_t kDuplicate = 2;

    void Form_Load();
    void lbFonts_Click();
    void cmdNewFont_Click();
    void cmdDeleteFont_Click();
    void DoRenameDupFont(std::int16_t mode);
    void OKButton_Click();
    void CancelButton_Click();

    tool::FontTool& tool() const;
    void showStatus(const std::string& text);
    void showSelected();
    // To what the operator goes on with: the list, or New where it is empty.
    void giveFocus();
    // The last entry that equals the name exactly; -1 for none.
    int indexOf(const std::string& name) const;
    void selectFont(const std::string& name);

    ui::Form form_{"dlgFontManager", "Font Manager"};
    ui::StatusBar sbr{"sbr"};
    ui::Label LabelFont{"LabelFont", "Available Fonts"};
    ui::ListBox lbFonts{"lbFonts"};
    ui::Button cmdNewFont{"cmdNewFont", "New..."};
    ui::Button cmdRenameFont{"cmdRenameFont", "Rename"};
    ui::Button cmdDuplicateFont{"cmdDuplicateFont", "Duplicate"};
    ui::Button cmdDeleteFont{"cmdDeleteFont", "Delete"};
    ui::Button CancelButton{"CancelButton", "Cancel"};
    ui::Button OKButton{"OKButton", "Select"};

    ui::Platform& platform_;
    const JobFolder& jobs_;
    Procedures procedures_;
    dlgFontNew fontNew_;
    dlgFontName fontName_;
    tool::FontTool* tool_ = nullptr;
    std::int16_t selectedIndex_ = 0;
    std::string currentName_;
    std::string selectedName_;
    bool chosen_ = false;
    bool fontsChanged_ = false;
    bool hasMadeFonts_ = false;
    std::string madeFont_;
    std::vector<std::pair<std::string, std::string>> renamed_;  // from, to, in the order of renaming
};

}  // namespace dravik::screen
