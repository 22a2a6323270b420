#include "qt/FormPage.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>

#include "qt/AccessibleRoles.h"
#include "qt/FormLayout.h"
#include "qt/Peer.h"
#include "qt/QtConversions.h"
#include "qt/TimerPeer.h"

namespace dravik::qt {

FormPage::FormPage(ui::Form& form, QWidget* parent) : QWidget(parent), form_(form) {
    installAccessibleRoles();
    setObjectName(qtText(form.name()));
    inside_ = new FormLayout(*this, form.layout());
    for (ui::Timer* timer : form.timers) timers_.push_back(new TimerPeer(*timer, this));
    if (form.defaultButton)
        if (Peer* peer = Peer::of(*form.defaultButton))
            if (auto* button = qobject_cast<QPushButton*>(&peer->view())) button->setDefault(true);
}

std::vector<Peer*> FormPage::peers() const {
    std::vector<Peer*> found;
    for (const QWidget* view : findChildren<QWidget*>())
        for (QObject* child : view->children())
            if (auto* peer = dynamic_cast<Peer*>(child)) found.push_back(peer);
    return found;
}

void FormPage::detach() noexcept {
    attached_ = false;
    inside_->detach();
    for (TimerPeer* timer : timers_) delete timer;
    timers_.clear();
    for (Peer* peer : peers()) peer->detach();
}

void FormPage::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (attached_ && event->type() == QEvent::PaletteChange)
        for (Peer* peer : peers()) peer->showColors();
}

void FormPage::keyPressEvent(QKeyEvent* event) {
    if (!answerKey(*event)) QWidget::keyPressEvent(event);
}

bool FormPage::isDefaultField(const QWidget* focused) const {
    if (!form_.defaultField) return true;
    const Peer* peer = Peer::of(*form_.defaultField);
    return peer && &peer->view() == focused;
}

bool FormPage::answerKey(const QKeyEvent& event) {
    const bool enter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    const bool escape = event.key() == Qt::Key_Escape;
    if (!attached_ || (!enter && !escape)) return false;
    if (enter) {
        // A button that has the focus is the one that Enter presses.
        if (auto* focused = qobject_cast<QPushButton*>(focusWidget()); focused && focused->hasFocus())
            focused->click();
        else if (form_.defaultButton && isDefaultField(focusWidget()))
            guarded([&] { form_.defaultButton->press(); });
        else if (qobject_cast<QLineEdit*>(focusWidget()))
            form_.defaultField->setFocus();
    } else if (form_.cancelButton) {
        guarded([&] { form_.cancelButton->press(); });
    } else {
        Q_EMIT escaped();
    }
    return true;
}

}  // namespace dravik::qt
