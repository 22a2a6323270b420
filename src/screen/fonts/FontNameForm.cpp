#include "screen/fonts/FontNameForm.h"

#include "tool/FontName.h"

namespace dravik::screen {

FontNameForm::FontNameForm(const char* name, const char* caption, const char* label, TraceLog& log,
                           ui::Platform& platform)
    : form_(name, caption), label_(label, "Name:"), procedures_(log, messageReport(platform)) {
    form_.defaultButton = &OKButton;
    form_.cancelButton = &CancelButton;
    txtFontName.setAccessibleName("Name");

    form_.loading.subscribe([this] { fontName_.clear(); });
    form_.activated.subscribe([this] {
        run("Form_Activate", [&] {
            txtFontName.setFocus();
            txtFontName.select(0, 1000);
        });
    });
    OKButton.click.subscribe([this] {
        run("OKButton_Click", [&] {
            if (mayBeTaken()) close(tool::CleanFontName(txtFontName.text()));
        });
    });
    CancelButton.click.subscribe([this] { run("CancelButton_Click", [&] { close({}); }); });
}

void FontNameForm::run(std::string_view procedure, const std::function<void()>& body) {
    procedures_.run(form_.name() + "." + std::string(procedure), procedure, body);
}

ui::Layout FontNameForm::nameRow() {
    return ui::row({ui::item(label_), ui::item(txtFontName).stretched().atLeast(3600)});
}

ui::Layout FontNameForm::buttonRow() {
    return ui::row({ui::space(), ui::item(OKButton), ui::item(CancelButton)});
}

void FontNameForm::close(std::string name) {
    fontName_ = std::move(name);
    form_.unload();
}

}  // namespace dravik::screen
