// The training screen in the control of another module, as the trainer sees it.
#pragma once

#include "trainer/HostedScreen.h"
#include "windows/app/ControlContainer.h"
#include "windows/control/ScreenWatch.h"

namespace dravik::app {

class OleScreen : public trainer::HostedScreen {
  public:
    // The container outlives it.
    explicit OleScreen(ControlContainer& container);
    ~OleScreen() override;

    void setStep(tool::StepPtr step) override;
    // Empty, false and "" once the control is closed.
    std::string typedText() const override;
    bool maintainsCase() const override;
    bool isTraining() const override;
    std::string selectedFont() const override;
    bool isFontChanged() const override;

  private:
    class Watcher;
    struct FontState {
        std::string name;
        bool changed = false;
        bool training = false;
    };
    FontState fontState() const;

    ControlContainer& container_;
    com::ComPtr<control::IWatchedScreen> screen_;
    com::ComPtr<Watcher> watcher_;
};

}  // namespace dravik::app
