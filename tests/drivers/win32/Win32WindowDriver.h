// Works the trainer's window of Windows: finds every control by its name and works it by messages.
#pragma once

#include "drivers/WindowDriver.h"
#include "drivers/win32/DialogScript.h"
#include "windows/app/MainWindow.h"

namespace dravik::test {

class Win32WindowDriver final : public WindowDriver {
  public:
    explicit Win32WindowDriver(app::MainWindow& window) : WindowDriver(window.model()), window_(window) {}

    std::string show() override;
    void closeForms() override;
    bool canClick(const std::string& name) const override { return IsWindowEnabled(find(name)) != FALSE; }
    void click(const std::string& name) override;
    void clickTool(const std::string& bar, const std::string& key) override;
    void type(const std::string& name, const std::string& text) override;
    std::string caption(const std::string& name) const override;
    std::string message() const override;
    void pressLeft(const std::string& view) override;
    void expectForm(const std::string& form, Step step) override;
    void expectBox(Step step) override;
    void openMenu(const std::string& menu, const std::string& at, const std::string& item,
                  Step step) override;
    void answerBoxes(ui::Answer answer) override;
    std::vector<std::string> messages() const override { return script_.messages(); }
    std::vector<std::string> problems() const override { return script_.problems(); }
    bool waitUntil(const std::function<bool()>& condition, int milliseconds) override;
    void picture(const std::string& file) override;

  private:
    HWND find(const std::string& name) const;

    app::MainWindow& window_;
    DialogScript script_;
};

}  // namespace dravik::test
