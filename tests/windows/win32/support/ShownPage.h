// A form on the screen in a window of its own that is no dialog, for tests of what stands in it, and the
// means to drive it: messages as the operator's actions make them, and waiting for a condition.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "drivers/win32/DialogScript.h"
#include "support/Accessible.h"
#include "ui/Bars.h"
#include "ui/Button.h"
#include "ui/Chart.h"
#include "ui/Form.h"
#include "ui/Grid.h"
#include "ui/Label.h"
#include "ui/ListControls.h"
#include "ui/TextBox.h"
#include "ui/Toolbar.h"
#include "windows/win32/Dpi.h"
#include "windows/win32/FormPage.h"
#include "windows/win32/FormWindow.h"
#include "windows/win32/Gdi.h"
#include "windows/win32/Look.h"
#include "windows/win32/Module.h"
#include "windows/win32/Peer.h"
#include "windows/win32/Win32Platform.h"
#include "windows/win32/WinText.h"

namespace dravik::test {

using namespace ui;
using namespace win32;

// What a screen reader says of a window, or of a part of it.
std::wstring accessibleName(HWND window, LONG part = 0);

// Of a canvas, at a place.
COLORREF colorAt(Canvas& canvas, int x, int y);
int countOf(Canvas& canvas, COLORREF color);

// A plain top-level window to stand in.
class HostWindow {
  public:
    HostWindow(int width, int height);
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;
    ~HostWindow();

    HWND window() const noexcept { return window_; }

  private:
    HWND window_;
};

class ShownPage {
  public:
    ShownPage() = default;
    explicit ShownPage(Layout layout, int width = 640, int height = 480) {
        form.setLayout(std::move(layout));
        show(width, height);
    }
    void show(int width = 640, int height = 480) {
        host = std::make_unique<HostWindow>(width, height);
        platform.owner = [this] { return host ? host->window() : nullptr; };
        page = std::make_unique<FormPage>(form, host->window(), platform);
        page->setBounds({0, 0, width, height});
        page->setVisible(true);
        settle();
    }
    // The window of a widget, which a cell shares with others.
    HWND view(const Widget& widget) const;
    // On the screen.
    RECT place(const Widget& widget) const;
    bool focused(const Widget& widget) const;
    // At a place in the widget.
    void mouse(const Widget& widget, UINT message, int x, int y, WPARAM keys = 0) const;
    std::unique_ptr<Canvas> picture(const Widget& widget) const;

    Win32Platform platform;
    Form form{"form", "Form"};
    std::unique_ptr<HostWindow> host;
    std::unique_ptr<FormPage> page;

  protected:
    // 0 for one with a window of its own.
    int partOf(const Widget& widget) const;
};

}  // namespace dravik::test
