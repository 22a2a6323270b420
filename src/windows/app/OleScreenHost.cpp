#include "windows/app/OleScreenHost.h"

namespace dravik::app {

OleScreenHost::OleScreenHost(HWND parent)
    : container_(parent, RECT{0, 0, 640, 760}), minimum_(container_.preferredSize()) {
    container_.tabbedOut = [this](bool) { left_ = true; };
}

SIZE OleScreenHost::minimumSize() const {
    return minimum_;
}

void OleScreenHost::setBounds(const RECT& bounds) {
    container_.setBounds(bounds);
}

// The control sees the display scale of its window itself.
void OleScreenHost::setDpi(int) {
    minimum_ = container_.preferredSize();
}

void OleScreenHost::systemChanged() {
    container_.ambientChanged();
}

void OleScreenHost::focus(bool) {
    container_.focus();
}

bool OleScreenHost::restoreFocus() {
    container_.focus();
    return true;
}

bool OleScreenHost::translate(MSG& message, bool& left) {
    left_ = false;
    const bool used = container_.translate(message);
    left = left_;
    return used && !left_;
}

void OleScreenHost::close() {
    container_.close();
}

}  // namespace dravik::app
