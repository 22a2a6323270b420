// What the forms that ask for a font's name share: a field for it, OK and Cancel.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "screen/context/Procedure.h"
#include "ui/Form.h"
#include "ui/Label.h"
#include "ui/TextBox.h"

namespace dravik::screen {

class FontNameForm {
  public:
    ui::Form& form() noexcept { return form_; }
    ui::TextBox& nameBox() noexcept { return txtFontName; }

    // The cleaned name once the form has closed, "" when the operator cancelled.
    const std::string& FontName() const noexcept { return fontName_; }

  protected:
    FontNameForm(const char* name, const char* caption, const char* label, TraceLog& log,
                 ui::Platform& platform);
    FontNameForm(const FontNameForm&) = delete;
    FontNameForm& operator=(const FontNameForm&) = delete;
    virtual ~FontNameForm() = default;

    // Asked by OK: false leaves the form as it is.
    virtual bool mayBeTaken() { return true; }
    // A procedure of the form, traced with the form's name before its own.
    void run(std::string_view procedure, const std::function<void()>& body);
    ui::Layout nameRow();
    ui::Layout buttonRow();

    ui::Form form_;
    ui::TextBox txtFontName{"txtFontName"};

  private:
    void close(std::string name);

    ui::Label label_;
    ui::Button OKButton{"OKButton", "OK"};
    ui::Button CancelButton{"CancelButton", "Cancel"};
    Procedures procedures_;
    std::string fontName_;
};

}  // namespace dravik::screen
