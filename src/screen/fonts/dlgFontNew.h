// Asks for the name of a new font and for the characters that it is to start with.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "screen/context/Procedure.h"
#include "tool/FontTool.h"
#include "ui/Form.h"
#include "ui/Label.h"
#include "ui/TextBox.h"

namespace dravik::screen {

class dlgFontNew {
  public:
    dlgFontNew(TraceLog& log, ui::Platform& platform);

    ui::Form& form() noexcept { return form_; }
    ui::TextBox& nameBox() noexcept { return txtFontName; }

    // The cleaned name once the form has closed, "" when the operator cancelled.
    const std::string& FontName() const noexcept { return fontName_; }
    // The chosen characters in the order of the caption; empty when none or the empty set was chosen.
    tool::CharacterSet GetInitCharSet() const;

  private:
    void InitCharSet_Click(std::size_t index);
    void OKButton_Click();
    void CancelButton_Click();

    ui::Form form_{"dlgFontNew", "New Font"};
    ui::Label lblName{"lblName", "Name:"};
    ui::TextBox txtFontName{"txtFontName"};
    ui::Button OKButton{"OKButton", "OK"};
    ui::Button CancelButton{"CancelButton", "Cancel"};
    ui::Frame Frame1{"Frame1", "Initial Character Set"};
    std::vector<std::unique_ptr<ui::OptionButton>> InitCharSet;  // by index; 0 is the empty set
    ui::Platform& platform_;
    Procedures procedures_;
    std::string fontName_;
    std::string chosenSet_;
};

}  // namespace dravik::screen
