// A form in a top-level window of its own: a child form or a modal dialog. It remembers its place by the
// form's name for as long as the process lives, unloads the form when the operator closes it and goes away
// with the form.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "ui/Form.h"
#include "windows/win32/AnsweredWindow.h"
#include "windows/win32/FormPage.h"

namespace dravik::win32 {

class Win32Platform;

class FormWindow : public AnsweredWindow, public std::enable_shared_from_this<FormWindow> {
  public:
    // The form is loaded. The owner may be nothing; the window stays above it. Nothing is shown yet.
    static std::shared_ptr<FormWindow> make(ui::Form& form, HWND owner, Win32Platform& platform);
    ~FormWindow() override;

    FormPage& page() noexcept { return *page_; }
    // As the platform's surroundings are now.
    void takeAmbient();
    // Shows it, or brings it to the front, and gives it the focus.
    void bringUp();
    // The operator's wish to close: unloads the form.
    void close();

    // Called once: the form is unloaded or gone, or the window was destroyed. The window is hidden then and
    // touches the form no more.
    std::function<void()> finished;

  private:
    FormWindow(ui::Form& form, Win32Platform& platform);
    void create(HWND owner);
    LRESULT answer(UINT message, WPARAM wParam, LPARAM lParam) override;
    // Each answers one message.
    void tellLeastSize(MINMAXINFO& sizes) const;
    bool takeActivation(bool active, bool minimized);
    void takeScale(int dpi, const RECT& wanted);
    std::shared_ptr<void> kept() override { return weak_from_this().lock(); }
    void windowGoes() override;
    void letGo();
    void fit();
    SIZE frameSize(SIZE inside) const;
    void putInPlace(HWND owner);
    void rememberPlace() const;

    ui::Form* form_;
    std::string name_;
    bool resizable_ = false;
    Win32Platform& platform_;
    std::unique_ptr<FormPage> page_;
    ui::Connection changed_;
    ui::Connection unloaded_;
    ui::Connection destroyed_;
};

}  // namespace dravik::win32
