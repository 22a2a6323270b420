// The hands of a scripted session in the Windows program. They find every control by its name and work it by
// messages, wherever the screen lives.
#pragma once

#include "trainer/DemoSession.h"
#include "windows/app/DialogScript.h"
#include "windows/app/MainWindow.h"

namespace dravik::app {

class Win32DemoHands final : public trainer::DemoHands {
  public:
    // The window outlives the hands.
    explicit Win32DemoHands(MainWindow& window) : window_(window) {}

    std::string show() override;
    void open(const std::vector<std::string>& images) override { window_.open(images); }
    void closeForms() override;
    bool canClick(const std::string& name) const override { return IsWindowEnabled(find(name)) != FALSE; }
    void click(const std::string& name) override;
    void clickTool(const std::string& bar, const std::string& key) override;
    void type(const std::string& name, const std::string& text) override;
    std::string caption(const std::string& name) const override;
    std::string message() const override;
    void goToLastBar(const std::string& chart) override;
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

    MainWindow& window_;
    DialogScript script_;
};

}  // namespace dravik::app
