// Boxes and dialogs, which are answered by a timer, as an operator would.
#include "windows/win32/support/Shown.h"

namespace dravik::test {
namespace {

class PlatformOfWindows : public testing::Test {
  protected:
    PlatformOfWindows() {
        shown.form.setLayout(column({item(button)}));
        shown.show();
        shown.platform.modal = [this](bool on) { modal += on ? "on " : "off "; };
        dialog.setLayout(column({item(box), item(ok)}));
        dialog.defaultButton = &ok;
        ok.click.subscribe([this] { dialog.unload(); });
    }
    ~PlatformOfWindows() override { EXPECT_TRUE(script.satisfied()) << "what was expected did not come up"; }
    Win32Platform& platform() { return shown.platform; }

    Button button{"button", "Button"};
    std::string modal;
    Form dialog{"dialog", "Dialog"};
    TextBox box{"box"};
    Button ok{"ok", "OK"};
    Shown shown;
    DialogScript script;
};

TEST_F(PlatformOfWindows, TimersWaitWhileOneOfThemHasABoxUp) {
    Timer first("first", 10), second("second", 10);
    Form ticking("ticking", "Ticking");
    ticking.setLayout(column({}));
    ticking.timers = {&first, &second};
    int boxes = 0;
    for (Timer* timer : {&first, &second})
        timer->tick.subscribe([&] {
            ++boxes;
            platform().messageBox({"text", "Title"});
        });
    platform().show(ticking);
    script.expect(DialogScript::kMessageBox, [&](HWND box) {
        waitUntil([] { return false; }, 150);
        EXPECT_EQ(boxes, 1) << "each tick would lay one more box over the first";
        first.setEnabled(false);
        second.setEnabled(false);
        SendMessageW(box, WM_CLOSE, 0, 0);
    });
    first.setEnabled(true);
    second.setEnabled(true);
    EXPECT_TRUE(waitUntil([&] { return script.finished() && GetActiveWindow(); }));
}

TEST_F(PlatformOfWindows, ADialogKeepsItsOwnerStillAndTimersRunning) {
    Timer timer("timer", 10);
    int ticks = 0;
    timer.tick.subscribe([&] { ++ticks; });
    Form behind("behind", "Behind");
    behind.setLayout(column({}));
    behind.timers = {&timer};
    platform().show(behind);
    timer.setEnabled(true);
    SetFocus(shown.view(button));
    script.expect("dialog", [&](HWND) {
        EXPECT_FALSE(IsWindowEnabled(shown.host->window()));
        EXPECT_FALSE(IsWindowEnabled(platform().windowOf(behind)->window()));
        EXPECT_EQ(GetFocus(), platform().peerOf(box)->window());
        EXPECT_EQ(modal, "on ");
        const int before = ticks;
        EXPECT_TRUE(waitUntil([&] { return ticks > before + 1; }));
        pressKey(VK_RETURN);
    });
    platform().showModal(dialog);
    EXPECT_EQ(modal, "on off ");
    EXPECT_TRUE(IsWindowEnabled(shown.host->window()));
    EXPECT_TRUE(IsWindowEnabled(platform().windowOf(behind)->window()));
    EXPECT_EQ(platform().windowOf(dialog), nullptr);
}

TEST_F(PlatformOfWindows, ADialogEndsWithWhateverTakesItAway) {
    script.expect("dialog", [&](HWND) { shown.host.reset(); });
    platform().showModal(dialog);
    EXPECT_FALSE(dialog.loaded());

    auto going = std::make_unique<Form>("going", "Going");
    going->setLayout(column({item(button)}));
    script.expect("going", [&](HWND) { going.reset(); });
    platform().showModal(*going);
    EXPECT_EQ(going, nullptr);

    script.expect("dialog", [&](HWND) { PostQuitMessage(7); });
    platform().showModal(dialog);
    MSG message{};
    EXPECT_FALSE(GetMessageW(&message, nullptr, 0, 0)) << "the program is still to end";
    EXPECT_EQ(message.wParam, 7u);
}

}  // namespace
}  // namespace dravik::test
