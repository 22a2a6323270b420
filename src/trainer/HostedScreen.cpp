#include "trainer/HostedScreen.h"

#include <utility>

namespace dravik::trainer {

ScreenSight::ScreenSight(screen::DravikDlg& control) : control_(control), screen_(control.screen()) {
    const auto font = [this] { fontChanged(); };
    const auto typed = [this] { typedChanged(); };
    const auto saved = [this] { savedStateChanged(); };
    connections_.push_back(screen_.sample.txtSampleInput.textChanged.connect(typed));
    connections_.push_back(screen_.sample.chkCase.click.connect(typed));
    connections_.push_back(control_.fontStateChanged.connect(font));
    connections_.push_back(screen_.train.tmrTrain.changed.connect(font));
    // These come after the screen's own procedures, which subscribed first.
    connections_.push_back(screen_.train.cmdStop.click.connect(font));
    connections_.push_back(screen_.train.cmdSaveFont.click.connect(font));
    connections_.push_back(screen_.train.cmdRevert.click.connect(font));
    connections_.push_back(screen_.sample.cmdInclude.click.connect(saved));
    connections_.push_back(screen_.font.txtCharSet.textChanged.connect(saved));
}

void ScreenSight::setStep(tool::StepPtr step) {
    control_.setStep(std::move(step));
}

std::string ScreenSight::typedText() const {
    return screen_.sample.txtSampleInput.text();
}

bool ScreenSight::maintainsCase() const {
    return screen_.sample.chkCase.checked();
}

bool ScreenSight::isTraining() const {
    return screen_.train.tmrTrain.enabled();
}

std::string ScreenSight::selectedFont() const {
    return control_.selectedFont();
}

bool ScreenSight::isFontChanged() const {
    return control_.m_FontChanged();
}

}  // namespace dravik::trainer
