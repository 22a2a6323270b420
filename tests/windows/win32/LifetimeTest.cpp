// Widgets, forms and pages that go away while one of their own events is running.
#include "windows/win32/support/Shown.h"

namespace dravik::test {
namespace {

struct Many : Form {
    Many() : Form("many", "Many") {
        cell.setCell(true);
        bar.add("one", "One");
        frame.setLayout(column({item(button), item(box)}));
        setLayout(
            column({item(bar), item(frame), item(combo), item(list), item(check), item(cell), item(grid)}));
        timers = {&timer};
        combo.setListIndex(0);
    }
    Frame frame{"frame", "Frame"};
    Button button{"button", "Button"};
    TextBox box{"box"};
    ComboBox combo{"combo", {"one", "two"}};
    ListBox list{"list", {"one", "two"}};
    CheckBox check{"check", "Check"};
    Label cell{"cell", "A"};
    Grid grid{"grid"};
    Toolbar bar{"bar"};
    Timer timer{"timer", 10};
};

class Lifetime : public testing::Test {
  protected:
    HWND view(const Widget& widget) { return platform.peerOf(widget)->window(); }
    void show() {
        host = std::make_unique<HostWindow>(400, 600);
        form = std::make_unique<Many>();
        page = std::make_unique<FormPage>(*form, host->window(), platform);
        page->setBounds({0, 0, 400, 600});
        page->setVisible(true);
    }
    // Shows the form, does to the widget what an operator does, and expects everything to have gone by its
    // event.
    template <class Kind, class Source, class Event>
    void goesBy(Kind Many::*widget, Event Source::*event, const std::function<void(HWND)>& drive) {
        show();
        ((*form).*widget.*event).subscribe([this](auto&&...) {
            page.reset();
            form.reset();
            host.reset();
        });
        if constexpr (std::is_same_v<Kind, Timer>)
            form->timer.setEnabled(true);
        else
            drive(view((*form).*widget));
        EXPECT_TRUE(waitUntil([this] { return !form; }));
        settle();
    }

    Win32Platform platform;
    std::unique_ptr<HostWindow> host;
    std::unique_ptr<Many> form;
    std::unique_ptr<FormPage> page;
};

TEST_F(Lifetime, EverythingMayGoDuringAnyEvent) {
    const auto pressed = [](HWND view) { click(view, 5, 5); };
    const auto rightPressed = [](HWND view) { mouse(view, WM_RBUTTONDOWN, 3, 3, MK_RBUTTON); };
    const auto key = [](UINT code) {
        return [code](HWND view) {
            SetFocus(view);
            pressKey(code);
        };
    };
    goesBy(&Many::button, &Button::click, pressed);
    goesBy(&Many::list, &ListBox::click, pressed);
    goesBy(&Many::check, &CheckBox::click, [](HWND view) { SendMessageW(view, BM_CLICK, 0, 0); });
    goesBy(&Many::bar, &Toolbar::buttonClick, [](HWND view) { click(view, 12, 12); });
    goesBy(&Many::cell, &Label::mouseDown, rightPressed);
    goesBy(&Many::grid, &Grid::mouseDown, rightPressed);
    goesBy(&Many::combo, &ComboBox::click, key(VK_DOWN));
    goesBy(&Many::button, &Button::keyDown, key(VK_TAB));
    goesBy(&Many::box, &TextBox::textChanged, [](HWND view) {
        SetFocus(view);
        typeText(L"x");
    });
    goesBy(&Many::button, &Button::lostFocus, [this](HWND button) {
        SetFocus(button);
        SetFocus(view(form->check));
    });
    goesBy(&Many::timer, &Timer::tick, nullptr);
}

}  // namespace
}  // namespace dravik::test
