// Each kind of control shows its state and turns what the operator does into events, and back.

#include "Shown.h"
#include "ui/TypedAhead.h"

namespace dravik::test {
namespace {

TEST(Buttons, ArePressedOnlyWhileEnabled) {
    Button button("button", "&Go on");
    CheckBox check("check", "Check");
    Shown shown(column({item(button), item(check), space()}));
    int clicks = 0;
    int changes = 0;
    button.click.subscribe([&] { ++clicks; });
    check.click.subscribe([&] { ++changes; });
    shown.click(button);
    button.setEnabled(false);
    settle();
    EXPECT_FALSE(shown.enabled(button));
    EXPECT_TRUE(shown.focused(check)) << "the focus must not stay on a disabled control";
    shown.click(button);
    EXPECT_EQ(clicks, 1);
    shown.click(check);
    EXPECT_TRUE(check.checked());
    EXPECT_TRUE(shown.marked(check));
    EXPECT_EQ(changes, 1);
    check.setChecked(false);
    EXPECT_FALSE(shown.marked(check));

    button.setVisible(false);
    settle();
    EXPECT_FALSE(shown.visible(button));
    EXPECT_LT(shown.area(check).top, 30) << "hidden widgets take no room";
}

TEST(Options, AreChosenAndLeftByTheirProcedures) {
    OptionButton one("one", "One");
    OptionButton two("two", "Two");
    Frame frame("frame", "Choice");
    frame.setLayout(column({item(one), item(two)}));
    Shown shown(column({item(frame)}));
    one.click.subscribe([&] { two.setChosen(false); });
    two.click.subscribe([&] { one.setChosen(false); });
    shown.click(two);
    EXPECT_TRUE(two.chosen());
    shown.click(one);
    EXPECT_TRUE(one.chosen());
    EXPECT_FALSE(two.chosen());
    EXPECT_FALSE(shown.marked(two));
    frame.setEnabled(false);
    EXPECT_FALSE(shown.enabled(one));
}

TEST(TextBoxes, AreTypedIntoReplacedSelectedAndLocked) {
    TextBox box("box", "old");
    Shown shown(column({item(box)}));
    EXPECT_EQ(shown.text(box), "old");
    // A procedure that corrects the text while it is typed must not throw the cursor to the end.
    int changes = 0;
    box.textChanged.subscribe([&] {
        ++changes;
        if (box.text() == "oXld") box.setText("oxld");
    });
    shown.focus(box);
    shown.setCursor(box, 1);
    shown.type("X");
    EXPECT_EQ(box.text(), "oxld");
    EXPECT_EQ(shown.text(box), "oxld");
    EXPECT_EQ(shown.cursor(box), 2);
    EXPECT_EQ(changes, 2);
    shown.type("\u00e9");
    EXPECT_EQ(box.text(), "ox\u00e9ld");

    // Places are counted in characters, of which some take two units of the system's.
    box.setText("a\u00e4\U0001F600z");
    EXPECT_EQ(changes, 4) << "showing a text is no change of it";
    box.select(2, 1000);
    EXPECT_EQ(shown.selected(box), "\U0001F600z");
    box.setLocked(true);
    shown.type("y");
    EXPECT_EQ(box.text(), "a\u00e4\U0001F600z");
}

// A run ends while the operator types: what is typed on must not press the button that gets the focus then.
TEST(TextBoxes, WhatIsTypedOnPressesNoButtonThatTheProgramGivesTheFocus) {
    TextBox box("box", "");
    Button button("button", "Save");
    Shown shown(column({item(box), item(button)}));
    int clicks = 0;
    button.click.subscribe([&] { ++clicks; });
    shown.focus(box);
    shown.type("a");
    button.setFocus();
    settle();
    EXPECT_TRUE(shown.focused(button));
    for (const Key key : {Key::Space, Key::A, Key::Enter}) shown.key(key);
    EXPECT_EQ(clicks, 0);
    std::this_thread::sleep_for(TypedAhead::kPause + std::chrono::milliseconds(50));
    shown.key(Key::Space);
    EXPECT_EQ(clicks, 1) << "the operator means it now";
    shown.key(Key::Enter);
    EXPECT_EQ(clicks, 2);
}

TEST(Lists, FireOncePerChoice) {
    ComboBox combo("combo", {"a", "b", "c"});
    ListBox list("list", {"x", "y", "z"});
    Shown shown(column({item(combo), item(list).stretched()}));
    std::string told;
    combo.click.subscribe([&] { told += "combo "; });
    list.click.subscribe([&] { told += "list "; });
    list.doubleClick.subscribe([&] { told += "double "; });
    shown.focus(combo);
    shown.key(Key::Down);
    EXPECT_EQ(combo.listIndex(), 0);
    combo.setListIndex(2);
    EXPECT_EQ(shown.chosen(combo), 2);
    EXPECT_EQ(told, "combo combo ");
    combo.setItems({"d"});
    EXPECT_EQ(shown.entries(combo), 1);
    EXPECT_EQ(shown.chosen(combo), -1);

    shown.clickEntry(list, 0);
    shown.key(Key::Down);
    EXPECT_EQ(list.text(), "y");
    shown.key(Key::Enter);
    list.setListIndex(2);
    EXPECT_EQ(shown.chosen(list), 2);
    EXPECT_EQ(told, "combo combo list list double list ");
}

TEST(Bars, ShowTheirStates) {
    ProgressBar progress("progress");
    StatusBar status("status");
    status.add("Message", "", 3000, true);
    UpDown arrows("arrows", 0, 10, 1);
    Shown shown(column({item(progress), item(arrows), item(status), space()}), 400, 200);
    progress.setValue(12.5f);
    EXPECT_EQ(shown.thousandths(progress), 125);
    status.panel("Message").setText("one\rtwo");
    EXPECT_EQ(shown.panel(status, "Message"), "one two");

    int changes = 0;
    arrows.valueChanged.subscribe([&] { ++changes; });
    shown.clickArrow(arrows, true);
    EXPECT_EQ(arrows.value(), 1);
    shown.focus(arrows);
    shown.key(Key::Up);
    EXPECT_EQ(arrows.value(), 2);
    shown.clickArrow(arrows, false);
    EXPECT_EQ(arrows.value(), 1);
    EXPECT_EQ(changes, 3);
}

TEST(Toolbars, PressAndShowTheirButtons) {
    Toolbar bar("bar");
    bar.add("one", "One");
    bar.add("log", "Log", ToolButton::Style::Check);
    bar.add("none", "None").setEnabled(false);
    Shown shown(column({item(bar), space()}));
    std::string pressed;
    bar.buttonClick.subscribe([&](ToolButton& button) { pressed += button.key + ' '; });
    for (const char* key : {"one", "log", "none"}) shown.clickTool(bar, key);
    EXPECT_EQ(pressed, "one log ");
    EXPECT_TRUE(bar.button("log").pressed());
    EXPECT_TRUE(shown.pressed(bar, "log"));
    // A procedure that takes the press back is obeyed although the system has flipped the button.
    bar.buttonClick.subscribe([&](ToolButton& button) { button.setPressed(true); });
    shown.clickTool(bar, "log");
    EXPECT_TRUE(shown.pressed(bar, "log"));
}

TEST(Labels, MarkTheAccessKeyOfTheNextControl) {
    Label caption("caption", "&Name:");
    Label data("data", "R&D");
    data.setUsesMnemonic(false);
    TextBox box("box");
    TextBox other("other");
    Shown shown(column({item(data), item(other), item(caption), item(box), space()}));
    shown.focus(other);
    shown.accessKey('d');
    EXPECT_TRUE(shown.focused(other)) << "what is data marks nothing";
    shown.accessKey('n');
    EXPECT_TRUE(shown.focused(box));
}

TEST(Focus, IsToldAndGivenOnceTheControlCanTakeIt) {
    TextBox first("first");
    Button later("later", "Later");
    later.setEnabled(false);
    later.setVisible(false);
    Shown shown(column({item(first), item(later), space()}));
    shown.focus(first);
    std::string told;
    first.lostFocus.subscribe([&] { told += "lost "; });
    later.gotFocus.subscribe([&] { told += "got "; });
    later.setFocus();  // the same procedure shows and enables it only afterwards
    later.setVisible(true);
    later.setEnabled(true);
    EXPECT_TRUE(waitUntil([&] { return shown.focused(later); }));
    EXPECT_EQ(told, "lost got ");
}

TEST(Keyboard, EnterAndEscapePressTheFormsButtons) {
    TextBox box("box");
    Button ok("ok", "OK");
    Button cancel("cancel", "Cancel");
    Button other("other", "Other");
    TextBox second("second");
    Shown shown;
    shown.form.setLayout(column({item(box), item(ok), item(cancel), item(other), item(second)}));
    shown.form.defaultButton = &ok;
    shown.form.cancelButton = &cancel;
    shown.show();
    std::string pressed;
    ok.click.subscribe([&] { pressed += "ok "; });
    cancel.click.subscribe([&] { pressed += "cancel "; });
    other.click.subscribe([&] { pressed += "other "; });
    std::vector<int> keys;
    box.keyDown.subscribe([&](int code, int) { keys.push_back(code); });
    shown.focus(box);
    shown.key(Key::Delete);
    EXPECT_EQ(keys, std::vector<int>{kKeyDelete});
    shown.key(Key::Enter);
    shown.key(Key::Escape);
    shown.focus(other);
    shown.key(Key::Enter);
    EXPECT_EQ(pressed, "ok cancel other ");
    ok.setEnabled(false);
    shown.focus(box);
    shown.key(Key::Enter);
    EXPECT_EQ(pressed, "ok cancel other ");

    ok.setEnabled(true);
    shown.form.defaultField = &box;
    shown.focus(second);
    shown.key(Key::Enter);
    EXPECT_EQ(pressed, "ok cancel other ") << "a form that names its field answers Enter there alone";
    shown.focus(other);
    shown.key(Key::Enter);
    shown.focus(box);
    shown.key(Key::Enter);
    EXPECT_EQ(pressed, "ok cancel other other ok ");
}

TEST(Failures, OfProceduresStayInsideAndTimersStop) {
    Button button("button", "Fail");
    Timer timer("timer", 1);
    int ticks = 0;
    button.click.subscribe([] { throw Failure(RuntimeError::Overflow); });
    timer.tick.subscribe([&] {
        ++ticks;
        throw std::runtime_error("bad tick");
    });
    Shown shown;
    shown.form.setLayout(column({item(button)}));
    shown.form.timers = {&timer};
    shown.show();
    shown.click(button);
    timer.setEnabled(true);
    EXPECT_TRUE(waitUntil([&] { return ticks >= 2; }));
    timer.setEnabled(false);
    const int then = ticks;
    EXPECT_FALSE(waitUntil([&] { return ticks != then; }, 20));
}

}  // namespace
}  // namespace dravik::test
