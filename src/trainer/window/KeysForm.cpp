#include "trainer/window/KeysForm.h"

#include "trainer/window/WindowActions.h"

namespace dravik::trainer {

KeysForm::KeysForm() : ui::Form("keysForm", "Keys") {
    const auto label = [this](const std::string& text) -> ui::Label& {
        labels_.push_back(
            std::make_unique<ui::Label>("lblKeys(" + std::to_string(labels_.size()) + ")", text));
        labels_.back()->setUsesMnemonic(false);
        return *labels_.back();
    };
    std::vector<std::vector<ui::Layout>> rows;
    for (const auto& [keys, what] : keyHelp()) {
        std::vector<ui::Layout> row;
        row.push_back(ui::item(label(keys)));
        row.push_back(ui::item(label(what)));
        rows.push_back(std::move(row));
    }
    setLayout(ui::column({ui::table(std::move(rows)), ui::row({ui::space(), ui::item(ok_)})}));
    defaultButton = cancelButton = &ok_;
    ok_.click.subscribe([this] { unload(); });
}

}  // namespace dravik::trainer
