#include "activex/host/ScreenHost.h"

#include "activex/win32/FormPage.h"
#include "activex/win32/Guard.h"
#include "activex/win32/Win32Platform.h"
#include "trainer/Trainer.h"

namespace dravik {

OwnScreenHost::OwnScreenHost(Trainer& trainer, HWND parent, Win32Platform& platform)
    : trainer_(trainer), page_(std::make_unique<FormPage>(trainer.control().form(), parent, platform)) {
    page_->setVisible(true);
    guarded([this] { trainer_.control().form().activate(); });
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
    guarded([this] { trainer_.control().UserControl_Terminate(); });
    page_->detach();
}

}  // namespace dravik
