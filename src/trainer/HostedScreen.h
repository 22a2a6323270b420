// What the program around the training screen sees of it, wherever the screen lives: in the program itself,
// or in a control of another module.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/JobFolder.h"
#include "shell/DravikDlg.h"
#include "widgets/Platform.h"
#include "widgets/Signal.h"

namespace dravik {

class HostedScreen {
  public:
    HostedScreen() = default;
    HostedScreen(const HostedScreen&) = delete;
    HostedScreen& operator=(const HostedScreen&) = delete;
    virtual ~HostedScreen() = default;

    // Raises what StepEditor::setStep raises.
    virtual void setStep(StepPtr step) = 0;
    // The text typed for Include, and whether "Maintain Case" is checked.
    virtual std::string typedText() const = 0;
    virtual bool maintainsCase() const = 0;
    virtual bool isTraining() const = 0;
    // The name of the loaded font, "" while there is none; whether it differs from its saved form.
    virtual std::string selectedFont() const = 0;
    virtual bool isFontChanged() const = 0;

    Signal<> typedChanged;
    // Another font, another state of it, or a run began or ended.
    Signal<> fontChanged;
    // Just the saved state may differ: an include, an edit of the character set.
    Signal<> savedStateChanged;
};

// A screen of the same module, seen through its public parts; the screen outlives it.
class ScreenSight : public HostedScreen {
  public:
    explicit ScreenSight(DravikDlg& control);

    void setStep(StepPtr step) override;
    std::string typedText() const override;
    bool maintainsCase() const override;
    bool isTraining() const override;
    std::string selectedFont() const override;
    bool isFontChanged() const override;

  private:
    DravikDlg& control_;
    Screen& screen_;
    std::vector<Connection> connections_;
};

struct ScreenOwner {
    ScreenOwner(Platform& platform, JobFolder folder) : control(platform, std::move(folder)) {}
    DravikDlg control;
};

// A screen of the program's own.
class OwnScreen : private ScreenOwner, public ScreenSight {
  public:
    // The platform outlives the screen.
    OwnScreen(Platform& platform, JobFolder folder)
        : ScreenOwner(platform, std::move(folder)), ScreenSight(ScreenOwner::control) {}

    DravikDlg& control() noexcept { return ScreenOwner::control; }
};

}  // namespace dravik
