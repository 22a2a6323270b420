#include "qt/Peer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCursor>
#include <QFocusEvent>
#include <QHash>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTimer>
#include <QToolTip>

#include "qt/QtConversions.h"
#include "ui/Lengths.h"

namespace dravik::qt {
namespace {

QHash<const ui::Widget*, Peer*>& peers() {
    static QHash<const ui::Widget*, Peer*> map;
    return map;
}

int buttonsOf(Qt::MouseButtons buttons) {
    return (buttons & Qt::LeftButton ? ui::kLeftButton : 0) |
           (buttons & Qt::RightButton ? ui::kRightButton : 0) |
           (buttons & Qt::MiddleButton ? ui::kMiddleButton : 0);
}

// A list that drops down or another window in front is not a loss of focus to the operator.
bool movesFocus(const QEvent* event) {
    const auto reason = static_cast<const QFocusEvent*>(event)->reason();
    return reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason;
}

}  // namespace

int virtualKey(int key) {
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9)) return key;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return 112 + key - Qt::Key_F1;
    switch (key) {
        case Qt::Key_Backspace:
            return 8;
        case Qt::Key_Tab:
            return 9;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return 13;
        case Qt::Key_Shift:
            return 16;
        case Qt::Key_Control:
            return 17;
        case Qt::Key_Escape:
            return 27;
        case Qt::Key_Space:
            return 32;
        case Qt::Key_PageUp:
            return 33;
        case Qt::Key_PageDown:
            return 34;
        case Qt::Key_End:
            return 35;
        case Qt::Key_Home:
            return 36;
        case Qt::Key_Left:
            return 37;
        case Qt::Key_Up:
            return 38;
        case Qt::Key_Right:
            return 39;
        case Qt::Key_Down:
            return 40;
        case Qt::Key_Insert:
            return ui::kKeyInsert;
        case Qt::Key_Delete:
            return ui::kKeyDelete;
        default:
            return 0;
    }
}

int buttonCode(Qt::MouseButton button) {
    switch (button) {
        case Qt::LeftButton:
            return ui::kLeftButton;
        case Qt::RightButton:
            return ui::kRightButton;
        case Qt::MiddleButton:
            return ui::kMiddleButton;
        default:
            return 0;
    }
}

int shiftState(Qt::KeyboardModifiers modifiers) {
    return (modifiers & Qt::ShiftModifier ? ui::kShiftMask : 0) |
           (modifiers & Qt::ControlModifier ? ui::kCtrlMask : 0) |
           (modifiers & Qt::AltModifier ? ui::kAltMask : 0);
}

Peer::Peer(ui::Widget& model, QWidget& view) : QObject(&view), model_(model), view_(view) {
    view.setObjectName(qtText(model.name()));
    peers().insert(&model, this);
}

Peer::~Peer() {
    if (attached_ && peers().value(&model_) == this) peers().remove(&model_);
}

Peer* Peer::of(const ui::Widget& model) {
    return peers().value(&model);
}

void Peer::start() {
    for (const ui::Change change : {ui::Change::Caption, ui::Change::Items, ui::Change::Value,
                                    ui::Change::Selection, ui::Change::Appearance, ui::Change::Enabled,
                                    ui::Change::Visible, ui::Change::ToolTip, ui::Change::Name})
        show(change);
    changed_ = model_.changed.connect([this](ui::Change change) { guarded([&] { show(change); }); });
    view_.installEventFilter(this);
}

void Peer::detach() noexcept {
    if (!attached_) return;
    changed_.disconnect();
    if (peers().value(&model_) == this) peers().remove(&model_);
    attached_ = false;
    letGo();
}

QPointF Peer::toView(double x, double y) const {
    return QPointF(x, y) / ui::twips(1);
}

QPointF Peer::fromView(QPointF place) const {
    return {ui::twips(place.x()), ui::twips(place.y())};
}

void Peer::show(ui::Change change) {
    switch (change) {
        case ui::Change::Enabled:
            view_.setEnabled(model_.enabled());
            break;
        case ui::Change::Visible:
            view_.setVisible(model_.visible());
            break;
        case ui::Change::ToolTip:
            view_.setToolTip(qtText(model_.toolTip()));
            if (QToolTip::isVisible() && view_.underMouse())
                QToolTip::showText(QCursor::pos(), view_.toolTip(), &view_);
            break;
        case ui::Change::Name:
            view_.setAccessibleName(qtText(model_.accessibleName()));
            break;
        case ui::Change::Focus:
            giveFocus();
            break;
        case ui::Change::Appearance:
            if (view_.font().bold() != model_.bold()) {
                QFont font = view_.font();
                font.setBold(model_.bold());
                view_.setFont(font);
            }
            break;
        default:
            break;
    }
}

void Peer::giveFocus() {
    if (qobject_cast<QAbstractButton*>(&view_) && qobject_cast<QLineEdit*>(QApplication::focusWidget()))
        typedAhead_.begin();
    if (view_.isEnabled() && view_.isVisible()) {
        view_.setFocus(Qt::OtherFocusReason);
        return;
    }
    // The procedure that asks for the focus may enable or show the control only later.
    QTimer::singleShot(0, this, [this] {
        if (view_.isEnabled() && view_.isVisible()) view_.setFocus(Qt::OtherFocusReason);
    });
}

bool Peer::isTypedAhead(const QKeyEvent& key) {
    const bool isTyping = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter ||
                          (!key.text().isEmpty() && key.text().at(0).isPrint());
    return isTyping && typedAhead_.drops();
}

void Peer::fireMouseDown(int button, Qt::KeyboardModifiers modifiers, QPointF viewPlace) {
    const QPointF place = fromView(viewPlace);
    act([&] { model_.mouseDown({button, shiftState(modifiers), place.x(), place.y()}); });
}

void Peer::fireMouseMove(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers, QPointF viewPlace) {
    const QPointF place = fromView(viewPlace);
    act([&] { model_.mouseMove({buttonsOf(buttons), shiftState(modifiers), place.x(), place.y()}); });
}

bool Peer::eventFilter(QObject* watched, QEvent* event) {
    if (watched != &view_ || !attached_) return false;
    const QPointer<Peer> self(this);
    switch (event->type()) {
        case QEvent::FocusIn:
            if (movesFocus(event)) act([&] { model_.gotFocus(); });
            break;
        case QEvent::FocusOut:
            if (movesFocus(event)) act([&] { model_.lostFocus(); });
            break;
        case QEvent::MouseButtonPress: {
            const auto* mouse = static_cast<const QMouseEvent*>(event);
            fireMouseDown(buttonCode(mouse->button()), mouse->modifiers(), mouse->position());
            break;
        }
        case QEvent::MouseMove: {
            const auto* mouse = static_cast<const QMouseEvent*>(event);
            fireMouseMove(mouse->buttons(), mouse->modifiers(), mouse->position());
            break;
        }
        case QEvent::KeyPress: {
            const auto* key = static_cast<const QKeyEvent*>(event);
            if (isTypedAhead(*key)) return true;
            const int code = virtualKey(key->key());
            if (code != 0) act([&] { model_.keyDown(code, shiftState(key->modifiers())); });
            break;
        }
        default:
            break;
    }
    return self.isNull();  // an event that took its own view away goes no further
}

}  // namespace dravik::qt
