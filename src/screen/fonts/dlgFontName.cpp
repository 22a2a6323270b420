#include "screen/fonts/dlgFontName.h"

#include "tool/FontName.h"

namespace dravik::screen {

dlgFontName::dlgFontName(TraceLog& log, ui::Platform& platform) : procedures_(log, messageReport(platform)) {
    form_.setLayout(ui::column({
        ui::row({ui::item(Label1), ui::item(txtFontName).stretched().atLeast(3600)}),
        ui::row({ui::space(), ui::item(OKButton), ui::item(CancelButton)}),
    }));
    form_.defaultButton = &OKButton;
    form_.cancelButton = &CancelButton;
    txtFontName.setAccessibleName("Name");

    form_.loading.subscribe([this] { fontName_.clear(); });
    form_.activated.subscribe([this] {
        procedures_.run("dlgFontName.Form_Activate", "Form_Activate", [&] {
            txtFontName.setFocus();
            txtFontName.select(0, 1000);
        });
    });
    OKButton.click.subscribe([this] { OKButton_Click(); });
    CancelButton.click.subscribe([this] { CancelButton_Click(); });
}

void dlgFontName::OKButton_Click() {
    procedures_.run("dlgFontName.OKButton_Click", "OKButton_Click", [&] {
        fontName_ = tool::CleanFontName(txtFontName.text());
        form_.unload();
    });
}

void dlgFontName::CancelButton_Click() {
    procedures_.run("dlgFontName.CancelButton_Click", "CancelButton_Click", [&] {
        fontName_.clear();
        form_.unload();
    });
}

}  // namespace dravik::screen
