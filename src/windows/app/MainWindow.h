// The program's window: the training screen on the left, the part on the right, menus above.
#pragma once

#include "windows/app/DrawnWindow.h"
// Behind the Windows headers
#include <shellapi.h>

#include <memory>
#include <string>
#include <vector>

#include "trainer/Trainer.h"
#include "windows/app/PartPane.h"
#include "windows/app/Settings.h"
#include "windows/app/WindowMenus.h"
#include "windows/win32/FormPage.h"

namespace dravik::app {

class MainWindow : public DrawnWindow {
  public:
    // The window alone, for a platform that needs it.
    explicit MainWindow(Settings settings);
    ~MainWindow() override;

    // The trainer's screen and its parts; the window is still hidden. Both outlive the window, or its
    // clear().
    void fill(trainer::Trainer& trainer, win32::Win32Platform& platform);
    void show();
    // Lets go of the trainer and the platform.
    void clear();
    // Image files and folders.
    void open(const std::vector<std::string>& paths);
    // Runs until the window is closed; returns the program's exit code.
    int run();
    // A message of a loop of the program: true when it is used up.
    bool translate(MSG& message);

    PartPane& pane() noexcept { return *pane_; }
    // The operator's wish to end: the screen may ask about a changed font.
    void close();
    bool isOpen() const noexcept { return window() != nullptr; }

  protected:
    LRESULT answer(UINT message, WPARAM wParam, LPARAM lParam) override;
    void paint(HDC dc, const RECT& client) override;

  private:
    void arrange();
    void perform(Command command);
    bool isPossible(Command command) const;
    void showMenuStates(HMENU menu) const;
    void dropped(HDROP drop);
    void showText(const wchar_t* title, const std::wstring& text);
    void restorePlace();
    void rememberPlace() const;
    void lookAnew(int dpi);
    int leftWidth() const;
    RECT divider() const;

    SharedLook shared_;
    Settings settings_;
    const AcceleratorTable accelerators_;
    trainer::Trainer* trainer_ = nullptr;
    std::unique_ptr<win32::FormPage> page_;
    std::unique_ptr<PartPane> pane_;
    ui::Connection titleChanged_;
    int divided_ = 640;  // width of the screen's side at 96 dpi
    bool dividing_ = false;
    bool ended_ = false;
};

}  // namespace dravik::app
