#include "windows/control/ControlScreen.h"

#include <utility>

#include "windows/win32/Entry.h"

namespace dravik::control {

struct ControlScreen::Life {
    Life() {
        platform.owner = [this] { return IsWindow(owner) ? GetAncestor(owner, GA_ROOT) : nullptr; };
    }

    win32::Win32Platform platform;
    HWND owner = nullptr;
    screen::DravikDlg dialog{platform};
};

ControlScreen::ControlScreen() : life_(std::make_shared<Life>()) {}

ControlScreen::~ControlScreen() {
    end();
    life_->platform.modal = nullptr;
    keep(std::move(life_));
    keep(std::move(step_));
}

template <class Kept>
void ControlScreen::keep(Kept object) {
    if (object) win32::Entry::whenOutside([object = std::move(object)] {});
}

screen::DravikDlg& ControlScreen::dialog() noexcept {
    return life_->dialog;
}

win32::Win32Platform& ControlScreen::platform() noexcept {
    return life_->platform;
}

void ControlScreen::setOwner(HWND window) {
    life_->owner = window;
}

void ControlScreen::setModalHook(std::function<void(bool)> hook) {
    life_->platform.modal = std::move(hook);
}

void ControlScreen::setReadOnly(bool readOnly) {
    readOnly_ = readOnly;
    dialog().setReadOnly(readOnly);
}

void ControlScreen::setRootStep(tool::StepPtr step) {
    begin();
    rootStep_ = step;
    dialog().setRootStep(std::move(step));
}

bool ControlScreen::setStep(tool::StepPtr step) {
    begin();
    if (!dialog().bindStep(step)) return false;
    // A font manager or a box that is open works on the tool before.
    keep(std::exchange(step_, std::move(step)));
    return true;
}

void ControlScreen::end() {
    if (std::exchange(ended_, true)) return;
    dialog().UserControl_Terminate();
    dialog().letGoOfStep();
    // A procedure up the stack may work on it.
    keep(std::exchange(step_, nullptr));
    rootStep_ = nullptr;
}

void ControlScreen::begin() {
    if (!ended_) return;
    auto fresh = std::make_shared<Life>();
    fresh->owner = life_->owner;
    fresh->platform.modal = std::exchange(life_->platform.modal, nullptr);
    keep(std::exchange(life_, std::move(fresh)));
    ended_ = false;
    dialog().setReadOnly(readOnly_);
}

}  // namespace dravik::control
