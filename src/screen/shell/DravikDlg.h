// The training screen as a whole: its controls, its state, the procedures behind it and the wiring of its
// events. A host hands it a step to edit through StepEditor; a backend shows form() and fires the events of
// its widgets.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "base/Failure.h"
#include "base/JobFolder.h"
#include "screen/context/OperatorAct.h"
#include "screen/context/PointedBar.h"
#include "screen/context/Screen.h"
#include "tool/Step.h"
#include "ui/Platform.h"
#include "ui/Signal.h"

namespace dravik::screen {

class DravikDlg : public tool::StepEditor {
  public:
    // Runs UserControl_Initialize. The platform outlives the control.
    explicit DravikDlg(ui::Platform& platform, JobFolder folder = {});
    // Runs UserControl_Terminate unless it has run.
    ~DravikDlg() override;

    // The host is about to destroy the control: releases the child forms and offers to save a changed font.
    // Runs once.
    // A run that goes on is stopped.
    void UserControl_Terminate();
    // After the end: holds no step of the host's any more.
    void letGoOfStep() noexcept;

    ui::Form& form() noexcept;
    Screen& screen() noexcept;

    // StepEditor
    void setReadOnly(bool readOnly) override;
    bool readOnly() const override;
    void setRootStep(tool::StepPtr step) override;
    void setStep(tool::StepPtr step) override;
    tool::StepPtr step() const override;

    // The public interface; failures are reported on the status bar, never raised.
    std::int16_t DeleteSamplesByDistance(const std::string& Character, double MinDistance,
                                         double MaxDistance);
    void HighlightIncluded(const std::string& IncludedChars);
    std::string FontTrainDate(const std::string& Font);

    // As setStep(); false when the step before stays bound.
    bool bindStep(tool::StepPtr step);

    // Reports, in the same place, what failed before it came to the screen.
    void tellFailure(std::string_view source, const Failure& failure);

    // For who keeps a history of the font. What the screen remembers beside the tool's font, as a value.
    ScreenState state() const;
    // The tool's font has gone back or forth: shows its characters, samples and training anew and the screen
    // as it was then. The tool is only asked. An open histogram is filled again, or closed where its samples
    // are gone.
    void refreshAfterHistory(const ScreenState& state, bool fontChanged);
    // Shows another font as if it were chosen in the font manager; "" shows that there is none. A failure is
    // reported.
    void showFont(const std::string& name);
    // The operator has begun something; what changed the font by it has ended.
    ui::Signal<>& actBegun() noexcept;
    ui::Signal<const OperatorAct&>& actEnded() noexcept;
    // The pointer has come to a bar of the histogram.
    ui::Signal<const PointedBar&>& barPointed() noexcept;
    // A failure was shown, which the next message covers.
    ui::Signal<const std::string&>& failureReported() noexcept;

    // For the program around the screen. The font differs from its saved form.
    bool m_FontChanged() const noexcept;
    // The name of the loaded font, "" while there is none.
    std::string selectedFont() const;
    // A font was loaded, or the font's saved state changed: a title that names it is out of date.
    ui::Signal<> fontStateChanged;

  private:
    struct Parts;

    const std::string& selectedFontCaption() const;

    std::unique_ptr<Parts> parts_;
};

}  // namespace dravik::screen
