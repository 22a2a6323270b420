// The program's window: the training screen on the left, the part on the right, menus above.
#pragma once

#include "windows/app/DrawnWindow.h"

#include <memory>
#include <string>
#include <vector>

#include "trainer/window/TrainerWindow.h"
#include "windows/app/PageHost.h"
#include "windows/app/PartPane.h"
#include "windows/app/Settings.h"
#include "windows/app/WindowMenus.h"
#include "windows/win32/FormPage.h"

namespace dravik::app {

class MainWindow : public DrawnWindow, private trainer::WindowSystem {
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

    // While it is filled.
    trainer::TrainerWindow& model() noexcept { return *model_; }
    // The command of WM_COMMAND for an action of the model.
    WORD commandOf(const trainer::Action& action) const { return menus_->commandOf(action); }
    // The operator's wish to end: asks about unsaved changes, and the window stays when that is cancelled.
    void close();
    bool isOpen() const noexcept { return window() != nullptr; }

  protected:
    LRESULT answer(UINT message, WPARAM wParam, LPARAM lParam) override;
    void paint(HDC dc, const RECT& client) override;

  private:
    std::vector<std::string> choosePaths(const trainer::FileQuestion& question) override;
    std::string chooseNewFile(const trainer::FileQuestion& question) override;
    std::vector<std::string> clipboardImages(const std::string& newFile) override;
    std::string kept(const std::string& key) const override;
    void keep(const std::string& key, const std::string& text) override;
    bool showGuide() override;
    void showTheme(trainer::Theme theme) override;
    void closeWindow() override { close(); }

    void arrange();
    void resized();
    void showGallery();
    void dropped(HDROP drop);
    // The smallest size at which everything is seen, as far as the screen has room for it.
    POINT leastTrackSize() const;
    void restorePlace();
    void rememberPlace() const;
    void lookAnew(int dpi);
    // As the theme and the desktop want it now.
    win32::Ambient ambient() const;
    void systemChanged();
    int leftWidth() const;
    RECT divider() const;

    SharedLook shared_;
    Settings settings_;
    std::unique_ptr<trainer::TrainerWindow> model_;
    std::unique_ptr<WindowMenus> menus_;
    std::unique_ptr<PageHost> host_;
    std::unique_ptr<win32::FormPage> page_;
    std::unique_ptr<win32::FormPage> gallery_;  // below the page, null while it is not shown
    std::unique_ptr<PartPane> pane_;
    win32::Win32Platform* platform_ = nullptr;
    ui::Connection titleChanged_;
    ui::Connection galleryShown_;
    int divided_ = trainer::TrainerWindow::kFirstScreenWidth;  // width of the screen's side at 96 dpi
    trainer::Theme theme_ = trainer::Theme::System;
    bool dividing_ = false;
    bool closing_ = false;  // the question is asked
};

}  // namespace dravik::app
