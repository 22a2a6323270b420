// Asks what is to become of the changes that are in no file yet, before the program ends: one question for
// all fonts, each of which can also be saved alone or written elsewhere. Where neither saving nor discarding
// is possible, as on a full disk, the program can end all the same: the changes are in the journals of their
// fonts.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tool/FontHistory.h"
#include "ui/Form.h"
#include "ui/Label.h"
#include "ui/ListControls.h"
#include "ui/Platform.h"

namespace dravik::trainer {

class ClosingForm : public ui::Form {
  public:
    // Gives the file to write a copy of a font to; "" when the operator thinks better of it.
    using AskFile = std::function<std::string(const std::string& font)>;

    // Platform and history outlive the form. With `training` a run is going on, which the end stops.
    ClosingForm(ui::Platform& platform, tool::FontHistory& history, bool training, AskFile askFile);

    // The program may end: everything was saved, is not wanted or is kept. False after Cancel and Escape.
    bool mayEnd() const noexcept { return mayEnd_; }

  private:
    void showFonts();
    // Does it with each of the fonts, says what failed, and closes the form when none is left.
    void forEach(const std::vector<std::string>& fonts, const std::function<void(const std::string&)>& body);
    void end();
    void saveCopy();

    ui::Label lblQuestion{"lblQuestion"};
    ui::ListBox lbFonts{"lbFonts"};
    ui::Label lblTraining{"lblTraining", "Learning is going on; its result will not be kept."};
    ui::Button cmdSaveAll{"cmdSaveAll", "&Save All"};
    ui::Button cmdSave{"cmdSave", "Save S&elected"};
    ui::Button cmdSaveCopy{"cmdSaveCopy", "Save &Copy..."};
    ui::Button cmdDiscard{"cmdDiscard", "&Discard All"};
    ui::Button cmdKeep{"cmdKeep", "&Keep for Later"};
    ui::Button CancelButton{"CancelButton", "Cancel"};

    ui::Platform& platform_;
    tool::FontHistory& history_;
    const AskFile askFile_;
    bool mayEnd_ = false;
};

}  // namespace dravik::trainer
