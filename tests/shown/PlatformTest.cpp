// What only the platform does: boxes, modal and modeless forms, menus, clipboard and dates. What is modal is
// answered while it blocks, as an operator would.
#include <regex>

#include "Shown.h"

namespace dravik::test {
namespace {

TEST(PlatformOnScreen, BoxesShowPlainLinesAndGiveTheirAnswers) {
    Shown shown(column({}));
    const auto ask = [&](MessageBox::Buttons buttons, std::optional<Answer> answer) {
        shown.expectBox(answer);
        return shown.platform.messageBox({"<b>A && B</b>\r\rSave changes?", "Title", buttons});
    };
    EXPECT_EQ(ask(MessageBox::Buttons::YesNoCancel, Answer::Yes), Answer::Yes);
    EXPECT_TRUE(std::regex_match(shown.boxText(), std::regex("<b>A && B</b>\r?\n\r?\nSave changes\\?")))
        << shown.boxText();
    EXPECT_EQ(ask(MessageBox::Buttons::YesNo, Answer::No), Answer::No);
    EXPECT_EQ(ask(MessageBox::Buttons::YesNoCancel, std::nullopt), Answer::Cancel);
    EXPECT_EQ(ask(MessageBox::Buttons::Ok, std::nullopt), Answer::Ok);
    EXPECT_TRUE(shown.allCameUp());
}

TEST(PlatformOnScreen, AModalFormReturnsWhenItIsUnloaded) {
    Shown shown(column({}));
    Form form("dlgAsk", "Ask");
    TextBox box("box");
    Button ok("ok", "OK");
    form.setLayout(column({item(box), item(ok)}));
    form.defaultButton = &ok;
    std::string story;
    form.loading.subscribe([&] { story += "load "; });
    form.activated.subscribe([&] {
        story += "activate ";
        box.setText("proposed");
        box.setFocus();
        box.select(0, 1000);
    });
    form.unloading.subscribe([&] { story += "unload "; });
    ok.click.subscribe([&] { form.unload(); });

    // Typing replaces the proposed text because the focus and the selection are where the form put them.
    shown.expectForm(form, [&] {
        EXPECT_TRUE(waitUntil([&] { return shown.focused(box); }));
        shown.type("mine");
        shown.key(Key::Enter);
    });
    shown.platform.showModal(form);
    EXPECT_EQ(box.text(), "mine");
    EXPECT_EQ(story, "load activate unload ");
    EXPECT_FALSE(shown.hasWindow("Ask"));

    // It can come up again, and its own close button unloads it too.
    shown.expectForm(form, [&] { shown.closeWindow("Ask"); });
    shown.platform.showModal(form);
    EXPECT_FALSE(form.loaded());
    EXPECT_TRUE(shown.allCameUp());
}

TEST(PlatformOnScreen, ModelessFormsComeToTheFrontCloseAndNeverOutliveTheirModel) {
    Shown shown(column({}));
    auto form = std::make_unique<Form>("dlgChild", "Child");
    auto label = std::make_unique<Label>("label", "text");
    auto timer = std::make_unique<Timer>("timer", 1);
    int unloads = 0;
    form->unloaded.subscribe([&] { ++unloads; });
    form->setLayout(column({item(*label)}));
    form->timers = {timer.get()};
    shown.platform.show(*form);
    shown.platform.show(*form);
    form->setCaption("Renamed");
    EXPECT_TRUE(shown.hasWindow("Renamed"));
    shown.closeWindow("Renamed");
    EXPECT_FALSE(form->loaded());
    EXPECT_FALSE(shown.hasWindow("Renamed"));
    EXPECT_EQ(unloads, 1);

    shown.platform.show(*form);
    EXPECT_TRUE(shown.hasWindow("Renamed"));
    timer->setEnabled(true);
    // Controls first, as the members of a form's own class go.
    label.reset();
    timer.reset();
    form.reset();
    EXPECT_FALSE(shown.hasWindow("Renamed"));
    EXPECT_FALSE(waitUntil([] { return false; }, 10));
}

TEST(PlatformOnScreen, MenusAreWorkedByKeyAndFireAfterClosing) {
    Label cell("cell", "A");
    cell.setCell(true);
    Shown shown(column({item(cell).ownSize(), space()}));
    PopupMenu menu("mnuMain", "Main");
    menu.add("first", "&First").enabled = false;
    menu.add("break", "-");
    menu.add("second", "&Second");
    std::string picked;
    menu.item("first").click.subscribe([&] { picked += "first "; });
    menu.item("second").click.subscribe([&] { picked += shown.hasMenu() ? "too early " : "second "; });
    cell.mouseDown.subscribe(
        [&](const MouseEvent& event) { shown.platform.popUpMenu(menu, cell, event.x, event.y); });
    shown.focus(cell);
    shown.expectMenu(menu, "s");
    shown.key(Key::Menu);
    EXPECT_EQ(picked, "second ");
    shown.expectMenu(menu, "f!");  // the first is disabled
    shown.key(Key::Menu);
    EXPECT_EQ(picked, "second ");
    EXPECT_TRUE(shown.allCameUp());
}

TEST(PlatformOnScreen, DatesAreInTheUsersFormAndTextsReachTheClipboard) {
    Shown shown(column({}));
    const auto file = std::filesystem::temp_directory_path() / "dravik-date.txt";
    std::ofstream(file) << "x";
    const std::string text = shown.platform.fileDateText(fromPath(file));
    EXPECT_TRUE(text.starts_with(shown.platform.dateText() + " ")) << text;
    std::filesystem::remove(file);
    EXPECT_EQ(refusal([&] { shown.platform.fileDateText(fromPath(file)); }), 53);
    shown.platform.setClipboardText("caf\u00e9\t1\t\r\n");
    EXPECT_EQ(clipboardText(), "caf\u00e9\t1\t\r\n");
}

}  // namespace
}  // namespace dravik::test
