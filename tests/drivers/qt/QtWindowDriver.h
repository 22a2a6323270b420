// Works the trainer's window of Qt: finds every view by its name and works it by events.
#pragma once

#include "drivers/WindowDriver.h"
#include "drivers/qt/DialogScript.h"
#include "qt/MainWindow.h"

namespace dravik::test {

class QtWindowDriver final : public WindowDriver {
  public:
    explicit QtWindowDriver(qt::MainWindow& window) : WindowDriver(window.model()), window_(window) {}

    std::string show() override;
    void closeForms() override;
    bool canClick(const std::string& name) const override;
    void click(const std::string& name) override;
    void clickTool(const std::string& bar, const std::string& key) override { click(bar + "." + key); }
    void type(const std::string& name, const std::string& text) override;
    std::string caption(const std::string& name) const override;
    std::string message() const override { return caption("sbr.Message"); }
    void pressLeft(const std::string& view) override;
    void expectForm(const std::string& form, Step step) override;
    void expectBox(Step step) override;
    void openMenu(const std::string& menu, const std::string& at, const std::string& item,
                  Step step) override;
    void answerBoxes(ui::Answer answer) override;
    std::vector<std::string> messages() const override;
    std::vector<std::string> problems() const override;
    bool waitUntil(const std::function<bool()>& condition, int milliseconds) override;
    void picture(const std::string& file) override;

  private:
    template <class View>
    View& find(const std::string& name) const;

    qt::MainWindow& window_;
    DialogScript script_;
};

}  // namespace dravik::test
