// The hands of a scripted session in the Qt window.
#pragma once

#include "qt/DialogScript.h"
#include "qt/MainWindow.h"
#include "trainer/DemoSession.h"

namespace dravik::qt {

class QtDemoHands final : public trainer::DemoHands {
  public:
    // The window outlives the hands.
    explicit QtDemoHands(MainWindow& window) : window_(window) {}

    std::string show() override;
    void open(const std::vector<std::string>& images) override { window_.open(images); }
    void closeForms() override;
    bool canClick(const std::string& name) const override;
    void click(const std::string& name) override;
    void clickTool(const std::string& bar, const std::string& key) override { click(bar + "." + key); }
    void type(const std::string& name, const std::string& text) override;
    std::string caption(const std::string& name) const override;
    std::string message() const override { return caption("sbr.Message"); }
    void goToLastBar(const std::string& chart) override;
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

    MainWindow& window_;
    DialogScript script_;
};

}  // namespace dravik::qt
