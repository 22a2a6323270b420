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
    : FontNameForm("dlgFontNew", "New Font", "lblName", log, platform), platform_(platform) {
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
    form_.setLayout(ui::column({nameRow(), ui::item(Frame1), buttonRow()}));

    form_.loading.subscribe([this] {
        chosenSet_.clear();
        for (const auto& option : InitCharSet) option->setChosen(false);
    });
    for (std::size_t i = 0; i < InitCharSet.size(); ++i)
        InitCharSet[i]->click.subscribe([this, i] { InitCharSet_Click(i); });
}

void dlgFontNew::InitCharSet_Click(std::size_t index) {
    run("InitCharSet_Click", [&] {
        for (std::size_t i = 0; i < InitCharSet.size(); ++i)
            if (i != index) InitCharSet[i]->setChosen(false);
        chosenSet_ = index == 0 ? std::string() : InitCharSet[index]->caption();
    });
}

bool dlgFontNew::mayBeTaken() {
    if (!tool::isReservedFontName(txtFontName.text())) return true;
    platform_.messageBox({"Font name 'new' is reserved, please select a different name", "Name Conflict",
                          ui::MessageBox::Buttons::Ok, ui::MessageBox::Icon::Information});
    return false;
}

tool::CharacterSet dlgFontNew::GetInitCharSet() const {
    return characters(chosenSet_);
}

}  // namespace dravik::screen
