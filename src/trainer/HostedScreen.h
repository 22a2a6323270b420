// What the program around the training screen sees of it, wherever the screen lives: in the program itself,
// or in a control of another module.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/JobFolder.h"
#include "screen/shell/DravikDlg.h"
#include "ui/Platform.h"
#include "ui/Signal.h"

namespace dravik::trainer {

class HostedScreen {
  public:
    HostedScreen() = default;
    HostedScreen(const HostedScreen&) = delete;
    HostedScreen& operator=(const HostedScreen&) = delete;
    virtual ~HostedScreen() = default;

    // Raises what StepEditor::setStep raises.
    virtual void setStep(tool::StepPtr step) = 0;
    // The text typed for Include, and whether "Maintain Case" is checked.
    virtual std::string typedText() const = 0;
    virtual bool maintainsCase() const = 0;
    virtual bool isTraining() const = 0;
    // The name of the loaded font, "" while there is none; whether it differs from its saved form.
    virtual std::string selectedFont() const = 0;
    virtual bool isFontChanged() const = 0;

    ui::Signal<> typedChanged;
    // Another font, another state of it, or a run began or ended.
    ui::Signal<> fontChanged;
    // Just the saved state may differ: an include, an edit of the character set.
    ui::Signal<> savedStateChanged;
};

// A screen of the same module, seen through its public parts; the screen outlives it.
class ScreenSight : public HostedScreen {
  public:
    explicit ScreenSight(screen::DravikDlg& control);

    void setStep(tool::StepPtr step) override;
    std::string typedText() const override;
    bool maintainsCase() const override;
    bool isTraining() const override;
    std::string selectedFont() const override;
    bool isFontChanged() const override;

  private:
    screen::DravikDlg& control_;
    screen::Screen& screen_;
    std::vector<ui::Connection> connections_;
};

struct ScreenOwner {
    ScreenOwner(ui::Platform& platform, JobFolder folder) : control(platform, std::move(folder)) {}
    screen::DravikDlg control;
};

// A screen of the program's own.
class OwnScreen : private ScreenOwner, public ScreenSight {
  public:
    // The platform outlives the screen.
    OwnScreen(ui::Platform& platform, JobFolder folder)
        : ScreenOwner(platform, std::move(folder)), ScreenSight(ScreenOwner::control) {}

    screen::DravikDlg& control() noexcept { return ScreenOwner::control; }
};

}  // namespace dravik::trainer
