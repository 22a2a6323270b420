// Asks for the name of a font that is renamed or duplicated.
#pragma once

#include <string>

#include "support/Procedure.h"
#include "widgets/Form.h"
#include "widgets/Label.h"
#include "widgets/TextBox.h"

namespace dravik {

class dlgFontName {
  public:
    explicit dlgFontName(TraceLog& log);

    Form& form() noexcept { return form_; }
    TextBox& nameBox() noexcept { return txtFontName; }

    // The cleaned name once the form has closed, "" when the operator cancelled.
    const std::string& FontName() const noexcept { return fontName_; }

  private:
    void OKButton_Click();
    void CancelButton_Click();

    Form form_{"dlgFontName", "Font Name"};
    Label Label1{"Label1", "Name:"};
    TextBox txtFontName{"txtFontName"};
    Button OKButton{"OKButton", "OK"};
    Button CancelButton{"CancelButton", "Cancel"};
    Procedures procedures_;
    std::string fontName_;
};

}  // namespace dravik
