
#include "support/Testing.h"
#include "ui/Bars.h"
#include "ui/Form.h"
#include "ui/Grid.h"
#include "ui/ListControls.h"
#include "ui/TextBox.h"
#include "ui/Toolbar.h"

namespace dravik {

using namespace ui;
namespace {

TEST(Widgets, ListsFireClickOnEveryChoiceEvenTheSame) {
    ComboBox list("cbo", {"a", "b"});
    int clicks = 0;
    list.click.subscribe([&] { ++clicks; });
    list.setListIndex(1);
    list.setListIndex(1);
    list.setText("a");
    EXPECT_EQ(clicks, 3);
    EXPECT_EQ(list.text(), "a");
    EXPECT_THROW(list.setText("c"), Failure);
    EXPECT_THROW(list.setListIndex(2), Failure);
    list.setListIndex(-1);
    EXPECT_EQ(list.text(), "");
    EXPECT_EQ(clicks, 3);
    list.setListIndex(1);
    list.setItems({"x", "y"});
    EXPECT_EQ(list.text(), "") << "what was chosen is gone";
}

TEST(Widgets, AFormIsUnloadedOnceHoweverItIsClosed) {
    Form form("frm", "Form");
    std::string told;
    form.loading.subscribe([&] { told += "l"; });
    form.unloading.subscribe([&] { told += "u"; });
    form.unload();
    form.activate();
    form.activate();
    form.unload();
    form.unload();
    EXPECT_EQ(told, "lu");
}

TEST(Widgets, ATextBoxFiresOnlyWhenItsTextDiffers) {
    TextBox box("txt", "a");
    int changes = 0;
    box.textChanged.subscribe([&] { ++changes; });
    box.setText("a");
    EXPECT_EQ(changes, 0);
    box.setText("b");
    EXPECT_EQ(changes, 1);
}

TEST(Widgets, ToolButtonsPressOnlyWhileEnabled) {
    Toolbar bar("tlb");
    bar.add("Log", "Log", ToolButton::Style::Check);
    int clicks = 0;
    bar.buttonClick.subscribe([&](ToolButton&) { ++clicks; });
    bar.button("Log").press();
    EXPECT_TRUE(bar.button("Log").pressed());
    bar.button("Log").setEnabled(false);
    bar.button("Log").press();
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(bar.button("Log").pressed());
    EXPECT_THROW(bar.button("log"), Failure);
}

TEST(Widgets, ProgressAndUpDownStayInTheirRange) {
    ProgressBar bar("prg");
    bar.setValue(250);
    EXPECT_EQ(bar.value(), 100);
    UpDown upDown("ud", 0, 10, 1);
    int changes = 0;
    upDown.valueChanged.subscribe([&] { ++changes; });
    upDown.setValue(11);
    upDown.setValue(12);
    EXPECT_EQ(upDown.value(), 10);
    EXPECT_EQ(changes, 1);
}

class Numbers : public GridSource {
  public:
    explicit Numbers(std::vector<std::string> texts) : texts_(std::move(texts)) {}
    int rows() const override { return static_cast<int>(texts_.size()) + 1; }
    int columns() const override { return 2; }
    std::string text(int row, int column) const override {
        if (row == 0) return "heading";
        return column == 0 ? std::to_string(row - 1) : texts_[static_cast<std::size_t>(row) - 1];
    }

  private:
    std::vector<std::string> texts_;
};

TEST(Grid, SortsAllButTheHeadingAndKeepsTies) {
    Grid grid("grid");
    grid.setSource(std::make_shared<Numbers>(std::vector<std::string>{"b", "a", "B", "a"}));
    grid.sortByText(1);
    std::string order;
    for (int row = 0; row < grid.rows(); ++row) order += grid.text(row, 0) + " ";
    EXPECT_EQ(order, "heading 2 1 3 0 ");  // capitals first, equal ones in the tool's order
    grid.sortByNumber(0);
    EXPECT_EQ(grid.text(1, 0), "0");
    grid.sortByText(7);
    EXPECT_EQ(grid.text(1, 0), "0");
    grid.sortByText(1);
    grid.setSource(std::make_shared<Numbers>(std::vector<std::string>{"x", "a"}));
    EXPECT_EQ(grid.text(1, 0) + grid.text(2, 0), "01") << "an order belongs to the table that was sorted";
}

TEST(Grid, CurrentCellAndSelectionAreCutToANewSource) {
    Grid grid("grid");
    grid.select(3, 1, 4, 1);
    EXPECT_EQ(grid.row(), 0);
    grid.setSource(std::make_shared<Numbers>(std::vector<std::string>(10)));
    grid.select(4, 1, 9, 0);
    grid.setSource(std::make_shared<Numbers>(std::vector<std::string>(2)));
    EXPECT_EQ(grid.row(), 2);
    EXPECT_EQ(grid.rowSelection(), 2);
    grid.select(0, -1, 99, 99);
    EXPECT_EQ(grid.row(), 1);
    EXPECT_EQ(grid.rowSelection(), 2);
    EXPECT_EQ(grid.columnSelection(), 1);
    EXPECT_EQ(grid.text(99, 0), "");
}

}  // namespace
}  // namespace dravik
