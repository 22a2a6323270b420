// Asks for the name of a font that is renamed or duplicated.
#pragma once

#include <string>

#include "screen/context/Procedure.h"
#include "ui/Form.h"
#include "ui/Label.h"
#include "ui/TextBox.h"

namespace dravik::screen {

class dlgFontName {
  public:
    dlgFontName(TraceLog& log, ui::Platform& platform);

    ui::Form& form() noexcept { return form_; }
    ui::TextBox& nameBox() noexcept { return txtFontName; }

    // The cleaned name once the form has closed, "" when the operator cancelled.
    const std::string& FontName() const noexcept { return fontName_; }

  private:
    void OKButton_Click();
    void CancelButton_Click();

    ui::Form form_{"dlgFontName", "Font Name"};
    ui::Label Label1{"Label1", "Name:"};
    ui::TextBox txtFontName{"txtFontName"};
    ui::Button OKButton{"OKButton", "OK"};
    ui::Button CancelButton{"CancelButton", "Cancel"};
    Procedures procedures_;
    std::string fontName_;
};

}  // namespace dravik::screen
