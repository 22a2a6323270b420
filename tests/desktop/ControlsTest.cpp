// Each kind of control shows its state and turns what the operator does into events, and back.
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>

#include "ShownForm.h"
#include "widgets/Bars.h"
#include "widgets/Label.h"
#include "widgets/ListControls.h"
#include "widgets/TextBox.h"
#include "widgets/Toolbar.h"

namespace dravik {
namespace {

TEST(Controls, TextIsTypedReplacedSelectedAndLocked) {
    TextBox box("box", "old");
    ShownForm shown(column({item(box)}));
    auto& view = shown.view<QLineEdit>("box");
    EXPECT_EQ(view.text(), "old");

    // A procedure that corrects the text while it is typed must not throw the cursor to the end.
    int changes = 0;
    box.textChanged.subscribe([&] {
        ++changes;
        if (box.text() == "oXld") box.setText("oxld");
    });
    view.setFocus();
    view.setCursorPosition(1);
    QTest::keyClicks(&view, "X");
    EXPECT_EQ(box.text(), "oxld");
    EXPECT_EQ(view.text(), "oxld");
    EXPECT_EQ(view.cursorPosition(), 2);
    EXPECT_EQ(changes, 2);

    box.setText("a\xC3\xA4\xF0\x9F\x98\x80z");
    box.select(2, 1000);
    EXPECT_EQ(view.selectedText().toStdString(), "\xF0\x9F\x98\x80z");
    box.setLocked(true);
    QTest::keyClicks(&view, "y");
    EXPECT_EQ(box.text(), "a\xC3\xA4\xF0\x9F\x98\x80z");
}

TEST(Controls, ButtonsChecksAndOptions) {
    Button button("button", "&Go");
    CheckBox check("check", "Check");
    OptionButton one("one", "One");
    OptionButton two("two", "Two");
    one.click.subscribe([&] { two.setChosen(false); });
    two.click.subscribe([&] { one.setChosen(false); });
    ShownForm shown(column({item(button), item(check), item(one), item(two)}));
    int pressed = 0;
    button.click.subscribe([&] { ++pressed; });

    QTest::mouseClick(&shown.view("button"), Qt::LeftButton);
    button.setEnabled(false);
    QTest::mouseClick(&shown.view("button"), Qt::LeftButton);
    EXPECT_EQ(pressed, 1);

    shown.view<QCheckBox>("check").click();
    EXPECT_TRUE(check.checked());
    check.setChecked(false);
    EXPECT_FALSE(shown.view<QCheckBox>("check").isChecked());

    shown.view<QRadioButton>("two").click();
    EXPECT_TRUE(two.chosen());
    shown.view<QRadioButton>("one").click();
    EXPECT_TRUE(one.chosen());
    EXPECT_FALSE(two.chosen());
    EXPECT_FALSE(shown.view<QRadioButton>("two").isChecked());
    one.setChosen(false);  // a group may be without a choice
    EXPECT_FALSE(shown.view<QRadioButton>("one").isChecked());
}

TEST(Controls, ListsFireOncePerChoice) {
    ComboBox combo("combo", {"a", "b", "c"});
    ListBox list("list", {"x", "y"});
    ShownForm shown(column({item(combo), item(list)}));
    int comboClicks = 0;
    int listClicks = 0;
    int doubles = 0;
    combo.click.subscribe([&] { ++comboClicks; });
    list.click.subscribe([&] { ++listClicks; });
    list.doubleClick.subscribe([&] { ++doubles; });

    auto& comboView = shown.view<QComboBox>("combo");
    comboView.setFocus();
    QTest::keyClick(&comboView, Qt::Key_Down);
    EXPECT_EQ(combo.listIndex(), 0);
    EXPECT_EQ(comboClicks, 1);
    combo.setListIndex(2);
    EXPECT_EQ(comboView.currentText(), "c");
    EXPECT_EQ(comboClicks, 2);
    combo.setItems({"d"});
    EXPECT_EQ(comboView.currentIndex(), -1);
    EXPECT_EQ(comboClicks, 2);

    auto& listView = shown.view<QListWidget>("list");
    QTest::mouseClick(listView.viewport(), Qt::LeftButton, {},
                      listView.visualItemRect(listView.item(1)).center());
    EXPECT_EQ(list.text(), "y");
    EXPECT_EQ(listClicks, 1);
    QTest::keyClick(&listView, Qt::Key_Return);
    EXPECT_EQ(doubles, 1);
    list.setListIndex(0);
    EXPECT_EQ(listView.currentRow(), 0);
    EXPECT_EQ(listClicks, 2);
}

TEST(Controls, BarsShowTheirPanelsButtonsAndValues) {
    StatusBar bar("sbr");
    bar.add("Message", "", 3000, true);
    bar.add("Other", "x", 900).setToolTip("tip");
    Toolbar tools("tools");
    tools.add("Go", "Go");
    tools.add("Log", "Log", ToolButton::Style::Check);
    ProgressBar progress("progress");
    UpDown upDown("upDown", 0, 10, 1);
    ShownForm shown(column({item(tools), item(progress), item(upDown), item(bar)}));

    bar.panel("Message").setText("one\rtwo");
    EXPECT_EQ(shown.view<QLabel>("sbr.Message").text(), "one two");
    EXPECT_EQ(shown.view<QLabel>("sbr.Other").toolTip(), "tip");
    EXPECT_GE(shown.view("sbr.Other").width(), 60);

    std::vector<std::string> clicked;
    tools.buttonClick.subscribe([&](ToolButton& button) { clicked.push_back(button.key); });
    auto& log = shown.view<QToolButton>("tools.Log");
    log.click();
    EXPECT_TRUE(tools.button("Log").pressed());
    EXPECT_TRUE(log.isChecked());
    // A procedure that takes the press back is obeyed although Qt has flipped the button.
    tools.buttonClick.subscribe([&](ToolButton& button) { button.setPressed(true); });
    log.click();
    EXPECT_TRUE(log.isChecked());
    tools.button("Go").setEnabled(false);
    shown.view<QToolButton>("tools.Go").click();
    EXPECT_EQ(clicked, (std::vector<std::string>{"Log", "Log"}));

    progress.setValue(12.5f);
    EXPECT_EQ(shown.view<QProgressBar>("progress").value(), 125);

    upDown.setValue(9);
    QTest::keyClick(&shown.view("upDown"), Qt::Key_Up);
    EXPECT_EQ(upDown.value(), 10);
    EXPECT_FALSE(shown.view("upDown.up").isEnabled());
    shown.view<QToolButton>("upDown.down").click();
    EXPECT_EQ(upDown.value(), 9);
}

TEST(Controls, AmpersandIsAnAccessKeyOrAText) {
    Label name("name", "&Name:");
    Label data("data", "R&D");
    data.setUsesMnemonic(false);
    TextBox box("box");
    TextBox other("other");
    ShownForm shown(column({item(data), item(other), item(name), item(box)}));
    EXPECT_EQ(shown.view<QLabel>("name").buddy(), &shown.view("box"));
    EXPECT_EQ(shown.view<QLabel>("data").buddy(), nullptr);
    EXPECT_GE(shown.view("data").sizeHint().width(), QFontMetrics(qApp->font()).horizontalAdvance("R&D"));
}

TEST(Controls, FocusIsGivenOnceTheControlCanTakeIt) {
    TextBox first("first");
    Button later("later", "Later");
    later.setEnabled(false);
    later.setVisible(false);
    ShownForm shown(column({item(first), item(later)}));
    shown.view("first").setFocus();
    std::vector<std::string> events;
    first.lostFocus.subscribe([&] { events.emplace_back("lost"); });
    later.gotFocus.subscribe([&] { events.emplace_back("got"); });

    later.setFocus();  // the same procedure shows and enables it only afterwards
    later.setVisible(true);
    later.setEnabled(true);
    EXPECT_TRUE(waitUntil([&] { return shown.view("later").hasFocus(); }));
    EXPECT_EQ(events, (std::vector<std::string>{"lost", "got"}));

    first.setEnabled(false);
    first.setFocus();
    settle();
    EXPECT_TRUE(shown.view("later").hasFocus());
}

TEST(Controls, EnterAndEscapePressTheFormsButtons) {
    TextBox box("box");
    Button ok("ok", "OK");
    Button cancel("cancel", "Cancel");
    Button other("other", "Other");
    ShownForm shown;
    shown.form.setLayout(column({item(box), item(ok), item(cancel), item(other)}));
    shown.form.defaultButton = &ok;
    shown.form.cancelButton = &cancel;
    shown.show();
    std::string pressed;
    ok.click.subscribe([&] { pressed += 'o'; });
    cancel.click.subscribe([&] { pressed += 'c'; });
    other.click.subscribe([&] { pressed += 'x'; });
    QTest::keyClick(&shown.view("box"), Qt::Key_Return);
    QTest::keyClick(&shown.view("box"), Qt::Key_Escape);
    shown.view("other").setFocus();
    QTest::keyClick(&shown.view("other"), Qt::Key_Return);
    EXPECT_EQ(pressed, "ocx");
}

TEST(Controls, AFailingProcedureDoesNotReachTheEventLoop) {
    Button button("button", "Fail");
    Timer timer("timer", 1);
    int ticks = 0;
    button.click.subscribe([] { throw Failure(RuntimeError::Overflow); });
    timer.tick.subscribe([&] {
        ++ticks;
        throw std::runtime_error("bad tick");
    });
    ShownForm shown;
    shown.form.setLayout(column({item(button)}));
    shown.form.timers = {&timer};
    shown.show();
    QTest::ignoreMessage(QtWarningMsg, "Unhandled failure 6: Overflow");
    shown.view<QPushButton>("button").click();

    timer.setEnabled(true);
    EXPECT_TRUE(waitUntil([&] { return ticks >= 2; }));
    timer.setEnabled(false);
    const int then = ticks;
    QTest::qWait(20);
    EXPECT_EQ(ticks, then);
}

}  // namespace
}  // namespace dravik
