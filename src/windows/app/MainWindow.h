// The program's window: the training screen on the left, the part on the right, menus above.
#pragma once

#include "windows/app/DrawnWindow.h"

#include <memory>
#include <string>
#include <vector>

#include "trainer/Trainer.h"
#include "windows/app/PartPane.h"
#include "windows/app/ScreenHost.h"
#include "windows/app/Settings.h"
#include "windows/app/WindowMenus.h"

namespace dravik::app {

class MainWindow : public DrawnWindow {
  public:
    // The window alone, for a screen and a platform that need it.
    explicit MainWindow(Settings settings);
    ~MainWindow() override;

    // Everything in it; it is still hidden. All outlive the window.
    void fill(trainer::Trainer& trainer, ScreenHost& screen, win32::Win32Platform& platform);
    void show();
    // Lets the trainer and the screen go, before they do.
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
    ScreenHost* screen_ = nullptr;
    std::unique_ptr<PartPane> pane_;
    ui::Connection titleChanged_;
    int divided_ = 640;  // width of the screen's side at 96 dpi
    bool dividing_ = false;
    bool ended_ = false;
};

}  // namespace dravik::app
