#include "qt/ToolbarKeys.h"

#include <QKeyEvent>
#include <QToolBar>

namespace dravik::qt {

ToolbarKeys::ToolbarKeys(QToolBar& bar) : QObject(&bar) {}

void ToolbarKeys::add(QWidget& button) {
    button.setFocusPolicy(buttons_.isEmpty() ? Qt::TabFocus : Qt::NoFocus);
    button.installEventFilter(this);
    buttons_ << &button;
}

void ToolbarKeys::setTabStop(QWidget& button) {
    for (QWidget* each : std::as_const(buttons_))
        each->setFocusPolicy(each == &button ? Qt::TabFocus : Qt::NoFocus);
}

bool ToolbarKeys::eventFilter(QObject* watched, QEvent* event) {
    auto* button = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::FocusIn && button) setTabStop(*button);
    if (event->type() != QEvent::KeyPress || !button) return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    int step = 0;
    qsizetype index = buttons_.indexOf(button);
    if (key == Qt::Key_Right || key == Qt::Key_Home) step = 1;
    if (key == Qt::Key_Left || key == Qt::Key_End) step = -1;
    if (step == 0) return false;
    if (key == Qt::Key_Home) index = -1;
    if (key == Qt::Key_End) index = buttons_.size();
    for (index += step; index >= 0 && index < buttons_.size(); index += step)
        if (buttons_[index]->isEnabled() && buttons_[index]->isVisible()) {
            buttons_[index]->setFocus(Qt::OtherFocusReason);
            break;
        }
    return true;
}

}  // namespace dravik::qt
