// The training screen in the control of another module, as the trainer sees it.
#pragma once

#include "activex/host/ControlContainer.h"
// Behind the Windows headers
#include "activex/control/ScreenWatch.h"
#include "trainer/HostedScreen.h"

namespace dravik {

class OleScreen : public HostedScreen {
  public:
    // The container outlives it.
    explicit OleScreen(ControlContainer& container);
    ~OleScreen() override;

    void setStep(StepPtr step) override;
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
    ComPtr<IWatchedScreen> screen_;
    ComPtr<Watcher> watcher_;
};

}  // namespace dravik
