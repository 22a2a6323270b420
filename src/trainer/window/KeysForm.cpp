#include "trainer/window/KeysForm.h"

#include <memory>

#include "trainer/window/WindowActions.h"

namespace dravik::trainer {
namespace {

class Table : public ui::GridSource {
  public:
    int rows() const override { return static_cast<int>(keyHelp().size()) + 1; }
    int columns() const override { return 2; }
    std::string text(int row, int column) const override {
        if (row == 0) return column == 0 ? "Keys" : "What they do";
        const KeyHelp& help = keyHelp()[static_cast<std::size_t>(row - 1)];
        return column == 0 ? help.first : help.second;
    }
};

}  // namespace

KeysForm::KeysForm() : ui::Form("keysForm", "Keys") {
    grid.setAccessibleName("Keys");
    for (const int column : {0, 1}) grid.setAlign(column, ui::CellAlign::Left);
    grid.setSource(std::make_shared<Table>());
    setLayout(
        ui::column({ui::item(grid).stretched().atLeast(11000, 6600), ui::row({ui::space(), ui::item(ok_)})}));
    resizable = true;
    defaultButton = cancelButton = &ok_;
    activated.subscribe([this] { grid.setFocus(); });
    ok_.click.subscribe([this] { unload(); });
}

}  // namespace dravik::trainer
