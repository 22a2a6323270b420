#include "screen/fonts/dlgFontNew.h"

#include <array>

#include "base/Text.h"
#include "tool/FontName.h"

namespace dravik::screen {
namespace {

// The choices in the order in which they stand on the form; an option's index counts them with "<Empty>"
// first.
constexpr std::array kSets = {"nopqrstuvwxyz",
                              "abcdefghijklm",
                              "NOPQRSTUVWXYZ",
                              "ABCDEFGHIJKLM",
                              "<Empty>",
                              "0123456789",
                              "ABCDEFGHIJKLMNOPQRSTUVWXYZ",
                              "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789",
                              "abcdefghijklmnopqrstuvwxyz",
                              "abcdefghijklmnopqrstuvwxyz0123456789"};
constexpr std::size_t kEmptySet = 4;

}  // namespace

dlgFontNew::dlgFontNew(TraceLog& log, ui::Platform& platform)
    : platform_(platform), procedures_(log, messageReport(platform)) {
    std::vector<std::string> captions = {kSets[kEmptySet]};
    for (std::size_t i = 0; i < kSets.size(); ++i)
        if (i != kEmptySet) captions.emplace_back(kSets[i]);
    for (std::size_t i = 0; i < captions.size(); ++i)
        InitCharSet.push_back(
            std::make_unique<ui::OptionButton>("InitCharSet(" + std::to_string(i) + ")", captions[i]));

    std::vector<ui::Layout> options;
    for (std::size_t i = 0; i < kSets.size(); ++i)
        options.push_back(ui::item(*InitCharSet[i == kEmptySet ? 0 : (i < kEmptySet ? i + 1 : i)]));
    Frame1.setLayout(ui::column(std::move(options)));
    form_.setLayout(ui::column({
        ui::row({ui::item(lblName), ui::item(txtFontName).stretched().atLeast(3600)}),
        ui::item(Frame1),
        ui::row({ui::space(), ui::item(OKButton), ui::item(CancelButton)}),
    }));
    form_.defaultButton = &OKButton;
    form_.cancelButton = &CancelButton;
    txtFontName.setAccessibleName("Name");

    form_.loading.subscribe([this] {
        fontName_.clear();
        chosenSet_.clear();
        for (const auto& option : InitCharSet) option->setChosen(false);
    });
    form_.activated.subscribe([this] {
        procedures_.run("dlgFontNew.Form_Activate", "Form_Activate", [&] {
            txtFontName.setFocus();
            txtFontName.select(0, 1000);
        });
    });
    for (std::size_t i = 0; i < InitCharSet.size(); ++i)
        InitCharSet[i]->click.subscribe([this, i] { InitCharSet_Click(i); });
    OKButton.click.subscribe([this] { OKButton_Click(); });
    CancelButton.click.subscribe([this] { CancelButton_Click(); });
}

void dlgFontNew::InitCharSet_Click(std::size_t index) {
    procedures_.run("dlgFontNew.InitCharSet_Click", "InitCharSet_Click", [&] {
        for (std::size_t i = 0; i < InitCharSet.size(); ++i)
            if (i != index) InitCharSet[i]->setChosen(false);
        chosenSet_ = index == 0 ? std::string() : InitCharSet[index]->caption();
    });
}

void dlgFontNew::OKButton_Click() {
    procedures_.run("dlgFontNew.OKButton_Click", "OKButton_Click", [&] {
        if (tool::isReservedFontName(txtFontName.text())) {
            platform_.messageBox({"Font name 'new' is reserved, please select a different name",
                                  "Name Conflict", ui::MessageBox::Buttons::Ok,
                                  ui::MessageBox::Icon::Information});
            return;
        }
        fontName_ = tool::CleanFontName(txtFontName.text());
        form_.unload();
    });
}

void dlgFontNew::CancelButton_Click() {
    procedures_.run("dlgFontNew.CancelButton_Click", "CancelButton_Click", [&] {
        fontName_.clear();
        form_.unload();
    });
}

tool::CharacterSet dlgFontNew::GetInitCharSet() const {
    return characters(chosenSet_);
}

}  // namespace dravik::screen
