// Asks for the name of a new font and for the characters that it is to start with.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/Procedure.h"
#include "tool/FontTool.h"
#include "widgets/Form.h"
#include "widgets/Label.h"
#include "widgets/TextBox.h"

namespace dravik {

class dlgFontNew {
  public:
    explicit dlgFontNew(TraceLog& log);

    Form& form() noexcept { return form_; }
    TextBox& nameBox() noexcept { return txtFontName; }

    // The cleaned name once the form has closed, "" when the operator cancelled.
    const std::string& FontName() const noexcept { return fontName_; }
    // The chosen characters in the order of the caption; empty when none or the empty set was chosen.
    CharacterSet GetInitCharSet() const;

  private:
    void InitCharSet_Click(std::size_t index);
    void OKButton_Click();
    void CancelButton_Click();

    Form form_{"dlgFontNew", "New Font"};
    Label lblName{"lblName", "Name:"};
    TextBox txtFontName{"txtFontName"};
    Button OKButton{"OKButton", "OK"};
    Button CancelButton{"CancelButton", "Cancel"};
    Frame Frame1{"Frame1", "Initial Character Set"};
    std::vector<std::unique_ptr<OptionButton>> InitCharSet;  // by index; 0 is the empty set
    Procedures procedures_;
    std::string fontName_;
    std::string chosenSet_;
};

}  // namespace dravik
