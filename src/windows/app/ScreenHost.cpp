#include "windows/app/ScreenHost.h"

#include "trainer/Trainer.h"
#include "windows/win32/FormPage.h"
#include "windows/win32/Guard.h"
#include "windows/win32/Win32Platform.h"

namespace dravik::app {

OwnScreenHost::OwnScreenHost(trainer::Trainer& trainer, HWND parent, win32::Win32Platform& platform)
    : trainer_(trainer),
      page_(std::make_unique<win32::FormPage>(trainer.control().form(), parent, platform)) {
    page_->setVisible(true);
    win32::guarded([this] { trainer_.control().form().activate(); });
}

OwnScreenHost::~OwnScreenHost() {
    page_->detach();
}

SIZE OwnScreenHost::minimumSize() const {
    return page_->minimumSize();
}

void OwnScreenHost::setBounds(const RECT& bounds) {
    page_->setBounds(bounds);
}

void OwnScreenHost::setDpi(int dpi) {
    page_->setDpi(dpi);
}

void OwnScreenHost::systemChanged() {
    page_->systemChanged();
}

void OwnScreenHost::focus(bool last) {
    if (last)
        page_->focusLast();
    else
        page_->focusFirst();
}

bool OwnScreenHost::restoreFocus() {
    return page_->restoreFocus();
}

bool OwnScreenHost::translate(MSG& message, bool& left) {
    return page_->translateKey(message, left);
}

HWND OwnScreenHost::window() const {
    return page_->window();
}

void OwnScreenHost::close() {
    win32::guarded([this] { trainer_.control().UserControl_Terminate(); });
    page_->detach();
}

}  // namespace dravik::app
