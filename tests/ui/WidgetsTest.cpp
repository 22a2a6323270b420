
#include "support/Testing.h"
#include "ui/Bars.h"
#include "ui/Form.h"
#include "ui/ListControls.h"
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

}  // namespace
}  // namespace dravik
